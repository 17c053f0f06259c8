#include "monitor/ISPSmartController.h"

#include "monitor/AtaIdentify.h"
#include "monitor/SmartData.h"
#include "platform/Format.h"

namespace calorivo {

namespace {

void switchOff(IOATASMARTInterface& smart) {
    smart.SMARTEnableDisableAutosave(false);
    smart.SMARTEnableDisableOperations(false);
}

/// None when the data cannot be read, is damaged or has no temperature.
std::optional<std::int32_t> readTemperature(IOATASMARTInterface& smart) {
    AtaBlock data{};
    if (smart.SMARTReadData(data) != io_return::success) return std::nullopt;
    if (smart.SMARTValidateReadData(data) != io_return::success) return std::nullopt;
    return temperatureInSMARTData(data);
}

}  // namespace

void ISPSmartController::update() {
    diskData.clear();
    getSMARTDataOfMatching({{}, {{"SMART Capable", true}}});
    if (diskData.empty()) getSMARTDataOfMatching(ataSmart_.IOServiceMatching("IOATABlockStorageDevice"));
    latestData = diskData;
}

void ISPSmartController::getSMARTDataOfMatching(const DriveMatching& matching) {
    io_iterator_t services = 0;
    if (ataSmart_.IOServiceGetMatchingServices(kIOMasterPortDefault, matching, services) !=
        io_return::success)
        return;
    while (const io_service_t service = ataSmart_.IOIteratorNext(services)) {
        getSMARTData(service);
        ataSmart_.IOObjectRelease(service);
    }
    ataSmart_.IOObjectRelease(services);
}

void ISPSmartController::getSMARTData(io_service_t service) {
    IOCFPlugInInterface* plugIn = nullptr;
    if (ataSmart_.IOCreatePlugInInterfaceForService(service, kIOATASMARTUserClientTypeID,
                                                    kIOCFPlugInInterfaceID, plugIn) != io_return::success)
        return;
    IOATASMARTInterface* smart = nullptr;
    if (plugIn->QueryInterface(kIOATASMARTInterfaceID, smart) == 0) {
        if (auto info = getDiskInfo(*smart)) {
            if (const auto temperature = getSMARTTempForInterface(*smart)) {
                info->temp = *temperature;
                diskData.push_back(std::move(*info));
            }
        }
        smart->Release();
    }
    ataSmart_.IODestroyPlugInInterface(plugIn);
}

std::optional<DriveDictionary> ISPSmartController::getDiskInfo(IOATASMARTInterface& smart) {
    AtaBlock data{};
    auto size = static_cast<std::uint32_t>(data.size());
    if (smart.GetATAIdentifyData(data, size) != io_return::success) return std::nullopt;
    return driveFromIdentifyData(data);
}

std::optional<std::int32_t> ISPSmartController::getSMARTTempForInterface(IOATASMARTInterface& smart) {
    // Kept: a drive that refuses SMART is listed at 0 °C, one that has no temperature is not listed at all.
    if (smart.SMARTEnableDisableOperations(true) != io_return::success) {
        switchOff(smart);
        return 0;
    }
    bool isThresholdExceeded = false;
    if (smart.SMARTEnableDisableAutosave(true) != io_return::success ||
        smart.SMARTReturnStatus(isThresholdExceeded) != io_return::success) {
        switchOff(smart);
        return 0;
    }
    const auto temperature = readTemperature(smart);
    switchOff(smart);
    return temperature && *temperature >= 1 ? temperature : std::nullopt;
}

std::uint8_t ISPSmartController::VerifyIdentifyData(const AtaBlock& data) {
    return checkedIdentifyData(data);
}

void ISPSmartController::getPartitions() {
    partitionData.clear();
    if (volumes_ == nullptr) return;
    for (const std::string& path : volumes_->mountedLocalVolumePaths()) {
        if (path.find("/Volumes/") == std::string::npos) continue;
        const std::string disk = wholeDiskName(volumes_->BSDNameOfVolume(path));
        if (!disk.empty()) partitionData[disk].push_back(volumes_->displayNameAtPath(path));
    }
}

std::string wholeDiskName(std::string_view bsdName) {
    constexpr std::string_view prefix = "disk";
    if (!bsdName.starts_with(prefix)) return {};
    const std::string_view number = bsdName.substr(prefix.size());
    if (number.empty() || number.front() < '0' || number.front() > '9') return {};
    return format("disk%@", number.substr(0, number.find('s')));
}

}  // namespace calorivo
