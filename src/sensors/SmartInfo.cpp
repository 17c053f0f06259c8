#include "sensors/SmartInfo.h"

#include "platform/Format.h"

#include <utility>

namespace calorivo {

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view whiteSpace = " \t\n\v\f\r";
    const std::size_t first = text.find_first_not_of(whiteSpace);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(whiteSpace) - first + 1);
}

std::optional<std::string> driveModelFromDictionary(const DriveDictionary* drive) {
    if (drive == nullptr) return std::nullopt;
    return std::string(trimmed(drive->model));
}

std::string driveDescriptionFromDictionary(const DriveDictionary* drive) {
    if (drive == nullptr) return {};
    return format("%@ (%@)", trimmed(drive->model), trimmed(drive->serial));
}

float driveTemperatureFromDictionary(const DriveDictionary* drive) {
    return drive != nullptr ? static_cast<float>(drive->temp) : 0.0F;
}

void SmartInfo::assign(std::vector<DriveDictionary> drives) {
    const std::lock_guard lock(monitor_);
    drives_ = std::move(drives);
}

std::size_t SmartInfo::count() const {
    const std::lock_guard lock(monitor_);
    return drives_.size();
}

std::optional<DriveDictionary> SmartInfo::drive(std::size_t index) const {
    const std::lock_guard lock(monitor_);
    if (index >= drives_.size()) return std::nullopt;
    return drives_[index];
}

std::vector<DriveDictionary> SmartInfo::drives() const {
    const std::lock_guard lock(monitor_);
    return drives_;
}

std::optional<std::int32_t> SmartInfo::temperatureOfDriveWithSerial(std::string_view serial) const {
    const std::lock_guard lock(monitor_);
    std::optional<std::int32_t> temperature;
    for (const DriveDictionary& drive : drives_)
        if (drive.serial == serial) temperature = drive.temp;
    return temperature;
}

}  // namespace calorivo
