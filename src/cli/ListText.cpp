#include "cli/ListText.h"

#include "cli/DrivesText.h"
#include "cli/Text.h"
#include "platform/Format.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace calorivo {

namespace {

struct Line {
    std::string name;
    std::string key;
    std::string value;
    Level level = Level::normal;
    /// Beside the value.
    std::string note;
};
struct Group {
    std::string heading;
    std::vector<Line> lines;
};

/// The drives that the engine lists; one that sleeps says so.
std::vector<Line> driveLines(const Snapshot& snapshot) {
    std::vector<Line> lines;
    for (const DriveRow& drive : snapshot.drives) {
        const DriveDetails& details = drive.details;
        if (!details.isListed) continue;
        lines.push_back({cleanText(descriptionOf(details)),
                         {},
                         drive.text,
                         levelOf(details.celsius.value_or(0)),
                         details.isAsleep ? "asleep" : details.trouble});
    }
    return lines;
}

/// It is among the drives, whose own line tells the same.
bool isShownAsDrive(const SensorReading& sensor, const Snapshot& snapshot) {
    return !sensor.drive.empty() && std::ranges::any_of(snapshot.drives, [&](const DriveRow& drive) {
        return drive.details.isListed && drive.details.serial == sensor.drive;
    });
}

std::vector<Group> areaGroups(const Snapshot& snapshot, std::optional<std::int32_t> areaTag) {
    std::vector<Group> groups;
    for (const Area& area : areas) {
        if (areaTag && *areaTag != area.tag) continue;
        Group group{std::string(area.name), {}};
        if (area.tag == hardDriveAreaTag) group.lines = driveLines(snapshot);
        for (const SensorReading& sensor : snapshot.sensors)
            if (sensor.area == &area && !isShownAsDrive(sensor, snapshot))
                group.lines.push_back({cleanText(sensor.name),
                                       cleanText(sensor.key.view()),
                                       sensor.text,
                                       levelOf(sensor.celsius),
                                       {}});
        if (!group.lines.empty()) groups.push_back(std::move(group));
    }
    return groups;
}

Group averageGroup(const Snapshot& snapshot) {
    const auto line = [](const char* name, const AverageReading& average) {
        return Line{name, {}, average.text, levelOf(average.celsius), {}};
    };
    return {"Averages", {line("CPU", snapshot.cpuAverage), line("All sensors", snapshot.allAverage)}};
}

/// A limit of 0 is one that nobody knows: it says nothing.
std::string limitsOf(const FanModel& fan) {
    std::string text;
    if (fan.minRPM != 0) text = format("min %d", fan.minRPM);
    if (fan.maxRPM != 0) text += format(text.empty() ? "max %d" : ", max %d", fan.maxRPM);
    return text;
}

Group fanGroup(const Snapshot& snapshot) {
    Group group{"Fans", {}};
    for (const FanModel& fan : snapshot.fans)
        group.lines.push_back({cleanText(fan.name), fan.actualRPMSensorName, fan.actualRPMAsString,
                               levelOf(fan), limitsOf(fan)});
    if (group.lines.size() > 1)
        group.lines.push_back({"Average", {}, snapshot.averageRPMText, Level::normal, {}});
    return group;
}

struct Widths {
    std::size_t name = 0;
    std::size_t value = 0;
};
constexpr std::size_t indent = 2;
constexpr std::size_t gap = 3;
constexpr std::size_t keyWidth = 4;
constexpr std::size_t markWidth = 4;

Widths widthsOf(const std::vector<Group>& groups, std::size_t columns) {
    Widths widths{24, 4};
    for (const Group& group : groups)
        for (const Line& line : group.lines) {
            widths.name = std::max(widths.name, displayWidth(line.name));
            widths.value = std::max(widths.value, displayWidth(line.value));
        }
    const std::size_t others = indent + gap + keyWidth + gap + widths.value + markWidth;
    if (columns > others) widths.name = std::min(widths.name, columns - others);
    return widths;
}

void appendLine(std::string& text, const Line& line, const Widths& widths, const Style& style) {
    text.append(indent, ' ');
    appendFitted(text, line.name, widths.name);
    text.append(gap, ' ');
    std::string key;
    appendFitted(key, line.key, keyWidth);
    style.append(text, key, Ink::faint);
    text.append(gap, ' ');
    std::string value;
    appendFitted(value, line.value, widths.value, Align::right);
    if (const std::string_view mark = markOf(line.level); !mark.empty()) value.append(" ").append(mark);
    style.append(text, value, inkOf(line.level));
    if (!line.note.empty()) {
        text.append(gap, ' ');
        style.append(text, line.note, Ink::faint);
    }
    text += '\n';
}

}  // namespace

std::string titleOf(const std::optional<std::string>& model, std::string_view source) {
    std::string title = model ? cleanText(*model) : "Unknown model";
    return title.append(" (").append(source).append(")");
}

std::string listText(const Snapshot& snapshot, const ListLook& look) {
    std::optional<std::int32_t> area = look.areaTag;
    if (area == allAreasTag) area.reset();
    std::vector<Group> groups = areaGroups(snapshot, area);
    if (!area) {
        if (!snapshot.sensors.empty()) groups.push_back(averageGroup(snapshot));
        if (!snapshot.fans.empty()) groups.push_back(fanGroup(snapshot));
    }
    if (groups.empty()) return {};
    const Widths widths = widthsOf(groups, look.columns);
    std::string text;
    look.style.append(text, titleOf(snapshot.model, snapshot.source), Ink::title);
    text += '\n';
    for (const Group& group : groups) {
        text += '\n';
        look.style.append(text, group.heading, Ink::heading);
        text += '\n';
        for (const Line& line : group.lines) appendLine(text, line, widths, look.style);
    }
    return text;
}

}  // namespace calorivo
