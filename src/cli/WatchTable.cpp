#include "cli/WatchTable.h"

#include "cli/DrivesText.h"
#include "cli/Engine.h"
#include "cli/Text.h"
#include "cli/WatchStatistics.h"
#include "platform/Format.h"

#include <algorithm>
#include <cmath>
#include <functional>

namespace calorivo {

namespace {

using TextOf = std::function<std::string(double)>;

WatchRow heading(std::string_view name) {
    WatchRow row;
    row.name = name;
    row.isHeading = true;
    return row;
}

void fillNow(WatchRow& row, const Extent& extent, const std::string& now, const TextOf& textOf) {
    row.first = now;
    row.second = extent.count > 0 ? textOf(extent.minimum) : "";
    row.third = extent.count > 0 ? textOf(extent.maximum) : "";
}

void fillSummary(WatchRow& row, const Extent& extent, const std::string& /*now*/, const TextOf& textOf) {
    if (extent.count == 0) {
        row.first = row.second = row.third = "N/A";
        return;
    }
    row.first = textOf(extent.minimum);
    row.second = textOf(extent.average());
    row.third = textOf(extent.maximum);
}

using Fill = void (*)(WatchRow&, const Extent&, const std::string&, const TextOf&);

/// The rows of one table.
struct RowMaker {
    const Engine& engine;
    const WatchStatistics& statistics;
    Fill fill;
    /// The table shows what is now, not all that was.
    bool isNow;
    TextOf degrees = [&reader = engine.reader](double celsius) {
        return reader.convertDegreesToString(celsius);
    };

    [[nodiscard]] WatchRow rowOf(const WatchStatistics::Sensor& sensor) const {
        const double celsius = sensor.celsius != nullptr ? *sensor.celsius : 0;
        WatchRow row;
        row.name = cleanText(engine.naming.convertKeyNameToHumanString(sensor.key));
        row.key = cleanText(sensor.key.view());
        row.level = levelOf(isNow ? celsius : sensor.extent.maximum);
        fill(row, sensor.extent, degrees(celsius), degrees);
        return row;
    }
    [[nodiscard]] WatchRow rowOf(const WatchStatistics::Drive& drive) const {
        const double celsius = drive.details.celsius.value_or(0);
        WatchRow row;
        row.name = cleanText(descriptionOf(drive.details));
        row.level = levelOf(isNow ? celsius : drive.extent.maximum);
        if (isNow && drive.details.isAsleep) row.level = Level::none;
        fill(row, drive.extent, drive.details.isAsleep ? "asleep" : degrees(celsius), degrees);
        return row;
    }
    /// It is among the drives, whose own row tells the same.
    [[nodiscard]] bool isShownAsDrive(const WatchStatistics::Sensor& sensor) const {
        return !sensor.drive.empty() &&
               std::ranges::any_of(statistics.drives(), [&](const WatchStatistics::Drive& drive) {
                   return (drive.isThere || !isNow) && drive.details.serial == sensor.drive;
               });
    }
    void appendArea(const Area& area, std::vector<WatchRow>& rows) const {
        const std::size_t begin = rows.size();
        if (area.tag == hardDriveAreaTag)
            for (const WatchStatistics::Drive& drive : statistics.drives())
                if (drive.isThere || !isNow) rows.push_back(rowOf(drive));
        for (const WatchStatistics::Sensor& sensor : statistics.sensors())
            if (sensor.area == &area && !isShownAsDrive(sensor)) rows.push_back(rowOf(sensor));
        if (rows.size() > begin)
            rows.insert(rows.begin() + static_cast<std::ptrdiff_t>(begin), heading(area.name));
    }
};

std::vector<WatchRow> rowsOf(const Engine& engine, const WatchStatistics& statistics, Fill fill, bool isNow) {
    std::vector<WatchRow> rows;
    const RowMaker maker{engine, statistics, fill, isNow};
    for (const Area& area : areas) maker.appendArea(area, rows);
    const std::vector<FanModel>& fans = engine.fans.fansArray();
    if (!fans.empty()) rows.push_back(heading("Fans"));
    const TextOf speed = [](double rpm) { return format("%d RPM", std::lround(rpm)); };
    for (std::size_t i = 0; i < fans.size() && i < statistics.fans().size(); ++i) {
        WatchRow row;
        row.name = cleanText(fans[i].name);
        row.key = fans[i].actualRPMSensorName;
        row.level = isNow ? levelOf(fans[i]) : Level::normal;
        fill(row, statistics.fans()[i], fans[i].actualRPMAsString, speed);
        rows.push_back(std::move(row));
    }
    return rows;
}

// Widths of the columns; "12345 RPM" fits into a value.
constexpr std::size_t indent = 2;
constexpr std::size_t gap = 2;
constexpr std::size_t keyWidth = 4;
constexpr std::size_t valueWidth = 9;
constexpr std::size_t markWidth = 3;
constexpr std::size_t longestName = 44;

struct Columns {
    std::size_t name;
    bool hasKey;
    bool hasAll;
};

Columns columnsFor(const std::vector<WatchRow>& rows, std::size_t columns) {
    constexpr std::size_t shortestName = 12;
    constexpr std::size_t one = indent + gap + valueWidth + markWidth;
    constexpr std::size_t three = one + 2 * (gap + valueWidth);
    constexpr std::size_t all = three + gap + keyWidth;
    Columns result{0, columns >= all + shortestName, columns >= three + shortestName};
    const std::size_t others = result.hasKey ? all : result.hasAll ? three : one;
    for (const WatchRow& row : rows) result.name = std::max(result.name, displayWidth(row.name));
    result.name = std::min({result.name, longestName, columns > others ? columns - others : 1});
    return result;
}

std::string lineOf(const WatchRow& row, const Columns& columns, const Style& style, Ink ink) {
    std::string line;
    if (row.isHeading) {
        std::string name;
        appendFitted(name, row.name, std::min(displayWidth(row.name), columns.name + indent));
        style.append(line, name, Ink::heading);
        return line;
    }
    std::string name(indent, ' ');
    appendFitted(name, row.name, columns.name);
    style.append(line, name, ink);
    if (columns.hasKey) {
        std::string key(gap, ' ');
        appendFitted(key, row.key, keyWidth);
        style.append(line, key, Ink::faint);
    }
    std::string value(gap, ' ');
    appendFitted(value, row.first, valueWidth, Align::right);
    value += ' ';
    appendFitted(value, markOf(row.level), markWidth - 1);
    style.append(line, value, ink == Ink::plain ? inkOf(row.level) : ink);
    if (columns.hasAll) {
        std::string others;
        for (const std::string* text : {&row.second, &row.third}) {
            others.append(gap, ' ');
            appendFitted(others, *text, valueWidth, Align::right);
        }
        style.append(line, others, ink);
    }
    return line;
}

}  // namespace

std::vector<WatchRow> watchRows(const Engine& engine, const WatchStatistics& statistics) {
    std::vector<WatchRow> rows = rowsOf(engine, statistics, fillNow, true);
    if (statistics.sensors().empty()) return rows;
    rows.push_back(heading("Averages"));
    rows.push_back({"CPU", {}, engine.averages.avgCPUTempAsString, {}, {}});
    rows.push_back({"All sensors", {}, engine.averages.avgTempAsString, {}, {}});
    return rows;
}

std::vector<WatchRow> summaryRows(const Engine& engine, const WatchStatistics& statistics) {
    return rowsOf(engine, statistics, fillSummary, false);
}

std::vector<std::string> tableLines(const std::vector<WatchRow>& rows, const WatchRow& titles,
                                    std::size_t columns, const Style& style) {
    const Columns widths = columnsFor(rows, columns);
    std::vector<std::string> lines;
    lines.reserve(rows.size() + 1);
    lines.push_back(lineOf(titles, widths, style, Ink::faint));
    for (const WatchRow& row : rows) lines.push_back(lineOf(row, widths, style, Ink::plain));
    return lines;
}

}  // namespace calorivo
