#include "cli/DrivesJSON.h"

#include <utility>

namespace calorivo {

namespace {

JSON driveObject(const DriveRow& drive) {
    const auto orNone = [](const std::string& text) { return text.empty() ? JSON(nullptr) : JSON(text); };
    const DriveDetails& details = drive.details;
    return {
        {"model", details.model},   {"serial", details.serial},         {"celsius", orNull(details.celsius)},
        {"text", drive.text},       {"source", orNone(details.source)}, {"asleep", details.isAsleep},
        {"device", details.device}, {"listed", details.isListed},       {"problem", orNone(details.trouble)}};
}

}  // namespace

JSON driveObjects(const std::vector<DriveRow>& drives) {
    JSON objects = JSON::array();
    for (const DriveRow& drive : drives) objects.push_back(driveObject(drive));
    return objects;
}

std::string drivesJSON(const std::vector<DriveRow>& drives, bool isFahrenheit) {
    return textOf({{"unit", isFahrenheit ? "F" : "C"}, {"drives", driveObjects(drives)}});
}

std::string driveExplanationJSON(const DriveRow& drive) { return textOf(driveObject(drive)); }

}  // namespace calorivo
