#pragma once

#include "monitor/FanModel.h"
#include "platform/Property.h"
#include "platform/UserDefaults.h"
#include "sensors/SensorLists.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace calorivo {

/// The fans: found once at start-up, their speeds refreshed on every check. Fans are shown, never set. Main
/// thread.
class Fans {
  public:
    /// Both must outlive this object; `numFans` is read from the lists.
    Fans(const SensorLists& lists, UserDefaults& userDefaults) : lists_(lists), userDefaults_(userDefaults) {}

    void getAllFanSensors();
    void updateFans();

    [[nodiscard]] const std::vector<FanModel>& fansArray() const { return fansArray_.get(); }
    void setFansArray(std::vector<FanModel> fans) { fansArray_.set(std::move(fans)); }
    void insertObjectInFansArrayAtIndex(FanModel fan, std::size_t index);
    void removeObjectFromFansArrayAtIndex(std::size_t index);
    /// Told when the list of fans or a fan's speed changes.
    [[nodiscard]] Observation observeFansArray(std::function<void()> tell) {
        return fansArray_.observe(std::move(tell));
    }

    Property<std::int32_t> avgRPM;
    Property<std::string> avgRPMAsString;

  private:
    const SensorLists& lists_;
    UserDefaults& userDefaults_;
    Property<std::vector<FanModel>> fansArray_;
};

}  // namespace calorivo
