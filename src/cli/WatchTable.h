#pragma once

#include "cli/Style.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace calorivo {

class Engine;
class WatchStatistics;

/// One line of a table with three values; a heading has a name only.
struct WatchRow {
    std::string name;
    std::string key;
    std::string first;
    std::string second;
    std::string third;
    Level level = Level::normal;
    bool isHeading = false;
    friend bool operator==(const WatchRow&, const WatchRow&) = default;
};

/// Every drive, sensor and fan by area with its value now, its minimum and its maximum, then the averages. A
/// drive that sleeps has no value now.
[[nodiscard]] std::vector<WatchRow> watchRows(const Engine& engine, const WatchStatistics& statistics);
/// Every drive that was seen, every sensor and fan by area with its minimum, average and maximum.
[[nodiscard]] std::vector<WatchRow> summaryRows(const Engine& engine, const WatchStatistics& statistics);

/// The rows as lines of at most `columns` columns, colours not counted, below a first line of titles. Columns
/// of the table that find no room are left out, the keys first.
[[nodiscard]] std::vector<std::string> tableLines(const std::vector<WatchRow>& rows, const WatchRow& titles,
                                                  std::size_t columns, const Style& style);

}  // namespace calorivo
