#pragma once

#include "sensors/SensorLists.h"

#include <string>
#include <vector>

namespace calorivo {

/// What a check needs to know of one sensor besides its reading.
struct PlannedSensor {
    SensorKey key;
    bool isGPU;
    bool isCPU;
    /// Relative to the processor's limit, not a temperature.
    bool isRelative;
    /// The key as the cells are named.
    std::string cellName;
};

/// The valid sensors in their order, each with its memberships looked up once. Main thread.
class SensorPlan {
  public:
    /// The plan for the lists as they are now. It stands until the next call.
    const std::vector<PlannedSensor>& sensorsOf(const SensorLists& lists);

  private:
    [[nodiscard]] bool isFor(const SensorLists& lists) const;

    std::vector<PlannedSensor> sensors_;
    // The lists that the plan was made from. Comparing their contents costs little and, unlike a counter of
    // changes, cannot miss one.
    std::vector<SensorKey> valid_;
    std::vector<SensorKey> gpu_;
    std::vector<SensorKey> cpu_;
};

}  // namespace calorivo
