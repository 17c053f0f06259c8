#include "monitor/CSVRow.h"

#include "monitor/LocalTime.h"

namespace calorivo {

std::string createCSVRowPrefix(WallTime time) {
    // One conversion for both fields: they belong to the same day.
    const std::tm local = localTime(time);
    return format("%d-%02d-%02d,%02d:%02d:%02d,", local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                  local.tm_hour, local.tm_min, local.tm_sec);
}

}  // namespace calorivo
