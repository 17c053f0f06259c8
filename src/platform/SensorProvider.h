#pragma once

#include "platform/IOKit.h"
#include "platform/ModelTable.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace calorivo {

/// Where a key's value comes from, for people who ask. Every text may be empty.
struct KeyOrigin {
    /// The device: a chip's name and its place in the machine.
    std::string device;
    /// The file, or whatever else it is read from.
    std::string file;
    /// What stands there now, as text.
    std::string content;
    /// Why the value is not to be used, or what was done to it.
    std::string note;
};

/// A source of sensors behind the record exchange: the controller's own, or something that answers in its
/// place. Main thread.
class SensorProvider : public IOKit {
  public:
    /// "applesmc", "hwmon", "simulated", "keysfile" or "none"; settled once the connection is open.
    [[nodiscard]] virtual std::string_view sourceName() const = 0;
    /// The machine's model identifier; none when it is not known.
    [[nodiscard]] virtual std::optional<std::string> modelName() const = 0;
    /// The sensors for which the provider itself knows name and area, once the connection is open. Empty
    /// where the keys speak for themselves.
    [[nodiscard]] virtual std::vector<ModelTableEntry> machineSensors() const { return {}; }
    /// None for a key that the provider does not hold.
    [[nodiscard]] virtual std::optional<KeyOrigin> originOf(std::string_view key) = 0;
    /// The serial number of the drive whose temperature this key is; empty for every other key. In the list
    /// of drives, where there is one, the same temperature stands once more.
    [[nodiscard]] virtual std::string driveMeasuredBy(std::string_view /*key*/) { return {}; }
    /// What went wrong and can be mended by somebody, one line each ("file:line: reason").
    [[nodiscard]] virtual std::vector<std::string> problems() const { return {}; }
};

}  // namespace calorivo
