#include "sensors/SensorNaming.h"

#include "platform/Format.h"
#include "sensors/NamingTable.h"
#include "sensors/SensorRules.h"

#include <optional>

namespace calorivo {

namespace {

bool isDigit(char c) { return c >= '0' && c <= '9'; }

constexpr KeySet driveBayKeys = "TH0P TH1P TH2P TH3P TH4P TH5P TH6P TH7P TH8P";

/// Zero-based instances are shown counted from one. Processor cores count from zero only where there is a
/// core 0, and drive bays carry their printed number.
bool isShifted(const KeyList& valid, SensorKey key) {
    if (key[1] == 'C') return valid.containsString("TC0C") || valid.containsString("TC0c");
    return !driveBayKeys.contains(key);
}

/// A name for the discrete GPU is used only beside one for the integrated GPU: alone, it could stand for
/// either.
std::optional<std::string> discreteName(GPUNames& names) {
    return names.integratedGPUName() ? names.discreteGPUName() : std::nullopt;
}

std::string gpuName(const NamingRow& row, const std::optional<std::string>& name) {
    return name ? format(row.knownText, *name) : std::string(row.text);
}

}  // namespace

std::string SensorNaming::indexText(SensorKey key) const {
    const KeyList& valid = lists_.validSensorNames;
    const auto hasInstance = [&](char instance) { return valid.containsString(key.with(2, instance)); };
    const char c = key[2];

    std::string index = isDigit(c) && isShifted(valid, key) ? format("%d", c - '0' + 1) : std::string(1, c);
    if (c == '0' && !hasInstance('1')) index.clear();
    if (c == '1' && !hasInstance('0')) index.clear();
    // Kept: with instances 0, 1 and 2, both 0 and 1 are shown as "1". Existing logs and alerts know the
    // sensors by these names.
    if (c == '1' && hasInstance('2')) index = "1";
    return index;
}

std::string SensorNaming::convertKeyNameToHumanString(SensorKey key) const {
    const auto custom = lists_.customSensorsToReadableNamesMap.find(key);
    if (custom != lists_.customSensorsToReadableNamesMap.end()) return custom->second;

    const NamingRow& row = namingRowFor(key, lists_);
    switch (row.wording) {
        case Wording::withIndex:
            return format(row.text, indexText(key));
        case Wording::withInstance:
            return format(row.text, std::string(1, key[2]));
        case Wording::withKey:
            return format(row.text, key.view());
        case Wording::discreteGPU:
            return gpuName(row, discreteName(gpuNames_));
        case Wording::integratedGPU:
            return gpuName(row, gpuNames_.integratedGPUName());
        case Wording::analogGPUDiode:
            return format(hasDualGPUSensors(lists_) ? row.knownText : row.text, indexText(key));
        case Wording::battery:
            return std::string(lists_.batterySensorNames.count() == 1 ? row.knownText : row.text);
        case Wording::fixed:
            break;
    }
    return std::string(row.text);
}

int SensorNaming::namingRow(SensorKey key) const {
    return lists_.customSensorsToReadableNamesMap.contains(key) ? 0 : namingRowFor(key, lists_).number;
}

}  // namespace calorivo
