#include "sensors/SensorDiscovery.h"

#include "sensors/Areas.h"
#include "sensors/SensorGrouping.h"
#include "smc/SmcClient.h"
#include "smc/SmcReaders.h"

#include <algorithm>
#include <array>
#include <utility>

namespace calorivo {

namespace {

/// The order in which the lists are sorted. Names may depend on the lists, so it is fixed.
constexpr std::array<KeyList SensorLists::*, 16> sortingOrder{
    &SensorLists::cpuSensorNames,         &SensorLists::cpuRelativeSensorNames,
    &SensorLists::gpuSensorNames,         &SensorLists::batterySensorNames,
    &SensorLists::hdSensorNames,          &SensorLists::memorySensorNames,
    &SensorLists::opticalSensorNames,     &SensorLists::lcdSensorNames,
    &SensorLists::northBridgeSensorNames, &SensorLists::powerSupplySensorNames,
    &SensorLists::airportSensorNames,     &SensorLists::palmRestSensorNames,
    &SensorLists::pciSensorNames,         &SensorLists::thunderBoltSensorNames,
    &SensorLists::logicBoardSensorNames,  &SensorLists::enclosureSensorNames,
};

/// The value of `option` when it stands at `position` and a value follows.
std::optional<std::string> optionAt(const ProcessArguments& arguments, std::size_t position,
                                    std::string_view option) {
    if (arguments.size() < position + 2 || arguments[position] != option) return std::nullopt;
    return arguments[position + 1];
}

/// GPU sensors read 0 while the GPU sleeps, and the scan is never repeated.
bool maySleep(SensorKey key) { return key[1] == 'G' && (key[3] == 'D' || key[3] == 'P' || key[3] == 'd'); }

}  // namespace

std::optional<std::string> getMacModelString(SysCtl& sysCtl) {
    constexpr std::string_view name = "hw.model";
    std::size_t size = 0;
    sysCtl.sysctlbyname(name, nullptr, size);
    if (size == 0) return std::nullopt;
    std::string model(size, '\0');
    if (sysCtl.sysctlbyname(name, model.data(), size) != 0) return std::nullopt;
    return model.substr(0, model.find('\0'));
}

std::optional<std::string> modelNameFor(const ProcessArguments& arguments, SysCtl& sysCtl) {
    if (auto model = optionAt(arguments, 1, "-custommodel")) return model;
    return getMacModelString(sysCtl);
}

std::optional<std::string> keysFilePath(const ProcessArguments& arguments) {
    if (auto path = optionAt(arguments, 3, "-keysfile")) return path;
    return optionAt(arguments, 1, "-keysfile");
}

void SensorDiscovery::getAllSensors(const ProcessArguments& arguments, const DiscoverySteps& steps) {
    lists_.numFans = smcFanCount();
    getAllTempSensorNames(arguments);
    if (steps.getAllFanSensors) steps.getAllFanSensors();
    findValidSensorNamesForModel(lists_.modelName, steps);
    // Kept: the lists are sorted while `validSensorNames` is still empty, so the order is that of the names
    // without the numbers that depend on other sensors. It is the order in which users know their sensors.
    for (const auto list : sortingOrder) sortSensorNamesAndRemoveDuplicates(lists_.*list, lists_, naming_);
    for (const auto list : validSensorOrder) lists_.validSensorNames.append(lists_.*list);
    if (steps.setupSourceList) steps.setupSourceList();
    if (!lists_.hasCustomCellMap) return;
    // Kept: a cell restored from the last run is replaced, so that recorded maxima start afresh.
    for (const SensorKey key : lists_.validSensorNames)
        lists_.sensorNameToCustomCellMap[key.text()] = lists_.customCell;
}

void SensorDiscovery::getAllTempSensorNames(const ProcessArguments& arguments) {
    if (const auto path = keysFilePath(arguments))
        scanKeysFile(*path);
    else
        scanLive();
}

void SensorDiscovery::scanKeysFile(const std::string& path) {
    lists_.isUsingKeysFile = true;
    const FileContents contents = files_.contentsAtPath(path, keysFileLimit);
    keysFileProblem_ = contents.problem;
    if (!contents.isRead()) return;
    KeysFile file = parseKeysFile(contents.text);
    for (const KeysFileEntry& entry : file.entries) {
        lists_.tempSensorNames.append(entry.key);
        lists_.fakeSensorToTempMap[entry.key] = entry.temperature;
    }
    lineProblems_ = std::move(file.problems);
}

void SensorDiscovery::scanLive() {
    const int count = smcKeyCount();
    for (int index = 0; index < count; ++index) {
        std::uint32_t code = 0;
        if (smcReadKeyByIndex(static_cast<std::uint32_t>(index), code) != io_return::success) continue;
        const SensorKey key(smcKeyToString(code));
        if (key[0] != 'T') continue;
        SmcValue value;
        if (smcReadKey(key.view(), value) != io_return::success) continue;
        if (smcTemperature(key.view()) > 0.0 || maySleep(key)) lists_.tempSensorNames.append(key);
    }
}

void SensorDiscovery::findValidSensorNamesForModel(const std::optional<std::string>& model,
                                                   const DiscoverySteps& steps) {
    const auto add = [this](const ModelTableEntry& entry) {
        const Area* const area = areaNamed(entry.area);
        if (area == nullptr || entry.key.size() != 4) return;
        addSensorWithNameToArray(SensorKey(entry.key), entry.name, lists_.*area->sensors);
    };

    const auto table = std::find_if(modelTables_.begin(), modelTables_.end(),
                                    [&](const ModelTable& t) { return model && t.identifier == *model; });
    if (table != modelTables_.end()) {
        lists_.isUsingCustomSensorNames = true;
        // Kept: the table decides, not the scan: a sensor that did not answer at start-up is listed too.
        std::for_each(table->entries.begin(), table->entries.end(), add);
        return;
    }
    // A keys file was dumped on another machine, where the same key stands for another sensor.
    if (!lists_.isUsingKeysFile)
        for (const ModelTableEntry& sensor : steps.machineSensors)
            if (lists_.tempSensorNames.containsString(SensorKey(sensor.key))) add(sensor);
    groupSensors(lists_, steps.getTemperatureForSensor);
}

void SensorDiscovery::addSensorWithNameToArray(SensorKey key, std::string name, KeyList& array) {
    lists_.customSensorsToReadableNamesMap[key] = std::move(name);
    array.append(key);
}

}  // namespace calorivo
