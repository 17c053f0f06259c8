#pragma once

#include "monitor/CyclePorts.h"
#include "monitor/TemperatureReader.h"
#include "sensors/SmartInfo.h"

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace calorivo {

/// Reads the drives. One thread at a time.
class SmartController {
  public:
    SmartController() = default;
    SmartController(const SmartController&) = delete;
    SmartController& operator=(const SmartController&) = delete;
    virtual ~SmartController() = default;

    /// Looks for the drives that are there now and reads each; may take long.
    virtual void update() = 0;
    /// What the last update found.
    [[nodiscard]] virtual std::vector<DriveDictionary> allDisks() const = 0;
};

using MakeSmartController = std::function<std::unique_ptr<SmartController>()>;

/// In the user's unit, or "N/A"; empty for no drive.
[[nodiscard]] std::string driveTemperatureStringFromDictionary(const DriveDictionary* drive,
                                                               const TemperatureReader& reader);

/// Keeps the list of drives up to date. Any thread.
class DriveTemperatures final : public CycleDrives {
  public:
    /// `smartInfo` must outlive this object. Without `makeController`, or when it gives none, there are no
    /// drives. `isWanted` is asked at each reading, on its thread; always wanted without it.
    DriveTemperatures(SmartInfo& smartInfo, MakeSmartController makeController,
                      std::function<bool()> isWanted = {})
        : smartInfo_(smartInfo), makeController_(std::move(makeController)), isWanted_(std::move(isWanted)) {}

    /// Does nothing the second time.
    void createSmartController();
    /// Replaces the list by what is read now, if that is wanted. Who comes while drives are being read waits.
    void getDiskTemps() override;
    [[nodiscard]] std::vector<float> driveTemperatures() override;

  private:
    SmartInfo& smartInfo_;
    MakeSmartController makeController_;
    const std::function<bool()> isWanted_;
    std::mutex reading_;
    std::unique_ptr<SmartController> smartController_;
};

}  // namespace calorivo
