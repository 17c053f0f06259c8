#include "output/LogHeader.h"

#include "platform/Format.h"

#include <string_view>

namespace calorivo {

std::string logHeader(const SensorLists& lists, const SensorNaming& naming, std::span<const FanModel> fans,
                      const Preferences& preferences) {
    const std::string_view unit = preferences.tempUnit == 1 ? "F" : "C";
    std::string header = "Date,Time,";
    if (preferences.logTemperatures) {
        for (const SensorKey key : lists.validSensorNames)
            appendFormat(header, "%@ (%@),", {naming.convertKeyNameToHumanString(key), unit});
        // Kept: no space in the second title, because the logs that people have carry it so.
        appendFormat(header, "CPU Average (%@),Computer Average(%@),", {unit, unit});
    }
    if (preferences.logFanSpeeds) {
        for (const FanModel& fan : fans) appendFormat(header, "%@ (RPM),", {fan.name});
        header += "Fan Average (RPM),";
    }
    if (header.ends_with(',')) header.pop_back();
    return header;
}

}  // namespace calorivo
