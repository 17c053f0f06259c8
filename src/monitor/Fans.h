#pragma once

#include "monitor/FanModel.h"
#include "platform/Property.h"
#include "platform/UserDefaults.h"
#include "sensors/SensorLists.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace calorivo {

/// The fans: found once at start-up, their speeds refreshed on every check. Fans are shown, never set. Main
/// thread.
class Fans {
  public:
    /// Both must outlive this object; `numFans` is read from the lists.
    Fans(const SensorLists& lists, UserDefaults& userDefaults) : lists_(lists), userDefaults_(userDefaults) {}

    /// Builds the list anew. A fan whose limits cannot be read has -1 for them.
    void getAllFanSensors();
    /// Reads every speed, -1 where it cannot be read, and the average; 0 when there are no fans.
    void updateFans();

    [[nodiscard]] const std::vector<FanModel>& fansArray() const { return fansArray_; }
    void setFansArray(std::vector<FanModel> fans);
    /// An index past the end appends.
    void insertObjectInFansArrayAtIndex(FanModel fan, std::size_t index);
    /// An index past the end does nothing.
    void removeObjectFromFansArrayAtIndex(std::size_t index);
    /// Told when the list of fans changes, and once for every update of their speeds.
    [[nodiscard]] Observation observeFansArray(std::function<void()> tell) {
        return fansArrayObservers_.add(std::move(tell));
    }

    Property<std::int32_t> avgRPM;
    Property<std::string> avgRPMAsString;

  private:
    const SensorLists& lists_;
    UserDefaults& userDefaults_;
    std::vector<FanModel> fansArray_;
    Observers fansArrayObservers_;
};

}  // namespace calorivo
