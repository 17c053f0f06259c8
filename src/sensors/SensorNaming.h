#pragma once

#include "sensors/GPUNames.h"
#include "sensors/SensorLists.h"

#include <string>
#include <string_view>

namespace calorivo {

/// Turns sensor keys into readable names, by the model's own table or by a fixed decision list over the key's
/// characters and the sensors that the machine has.
class SensorNaming {
  public:
    /// Both must outlive this object.
    SensorNaming(const SensorLists& lists, GPUNames& gpuNames) : lists_(lists), gpuNames_(gpuNames) {}

    /// Never fails: a key that no rule knows is "Unknown Name - " and the key.
    [[nodiscard]] std::string convertKeyNameToHumanString(SensorKey key) const;

    /// Which rule names the key: 0 for the model's own table, else the row of the decision list, 1 to 73.
    [[nodiscard]] int namingRow(SensorKey key) const;
    /// The instance number as it is shown: empty for a lone sensor.
    [[nodiscard]] std::string indexText(SensorKey key) const;

  private:
    const SensorLists& lists_;
    GPUNames& gpuNames_;
};

}  // namespace calorivo
