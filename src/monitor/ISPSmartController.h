#pragma once

#include "monitor/DriveTemperatures.h"
#include "platform/AtaSmart.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace calorivo {

/// Reads the temperature of every SMART drive through the platform's plug-in. A failure leaves the drive out,
/// or lists it at 0 °C, without a word. One thread at a time.
class ISPSmartController final : public SmartController {
  public:
    /// Both must outlive it. Without `volumes` there are no partitions.
    explicit ISPSmartController(AtaSmart& ataSmart, MountedVolumes* volumes = nullptr)
        : ataSmart_(ataSmart), volumes_(volumes) {}

    void update() override;
    [[nodiscard]] std::vector<DriveDictionary> allDisks() const override { return diskData; }

    /// Appends the drive's dictionary to `diskData`, if the drive has identify data and a temperature.
    void getSMARTData(io_service_t service);
    /// Model and serial number; none for a drive without SMART or identify data.
    [[nodiscard]] static std::optional<DriveDictionary> getDiskInfo(IOATASMARTInterface& smart);
    /// °C: 0 when SMART cannot be switched on, none when the drive has no temperature.
    [[nodiscard]] static std::optional<std::int32_t> getSMARTTempForInterface(IOATASMARTInterface& smart);
    /// 0 for a valid block of identify data, 255 for one without a checksum, else what its bytes add up to.
    [[nodiscard]] static std::uint8_t VerifyIdentifyData(const AtaBlock& data);
    /// Fills `partitionData`.
    void getPartitions();

    /// The drives of the update that runs, or ran last.
    std::vector<DriveDictionary> diskData;
    /// The drives of the last update that is done.
    std::vector<DriveDictionary> latestData;
    // Kept: part of the controller's data, and always empty.
    std::vector<std::int32_t> temps;
    std::vector<std::string> disksStatus;
    /// The names of the volumes on each whole disk: "disk1" -> "Backup".
    std::map<std::string, std::vector<std::string>> partitionData;

  private:
    void getSMARTDataOfMatching(const DriveMatching& matching);

    AtaSmart& ataSmart_;
    MountedVolumes* volumes_;
};

/// The disk that a slice belongs to: "disk1" for "disk1s2".
[[nodiscard]] std::string wholeDiskName(std::string_view bsdName);

}  // namespace calorivo
