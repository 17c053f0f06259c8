#pragma once

#include "platform/KeyValueCoding.h"
#include "platform/Property.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace calorivo {

/// Shows numbers of degrees Celsius in the user's unit. Main thread.
class TemperatureFormatter {
  public:
    /// `tempUnit`: 0 Celsius, 1 Fahrenheit; it must outlive this object.
    explicit TemperatureFormatter(const Property<std::int32_t>& tempUnit) : tempUnit_(tempUnit) {}

    /// None for anything but a number. A fraction is cut first; a unit that there is not shows the bare
    /// number.
    [[nodiscard]] std::optional<std::string> stringForObjectValue(const Value& value) const;
    /// Always false: it is for display only and reads nothing.
    [[nodiscard]] static bool getObjectValueForStringErrorDescription(Value& value, std::string_view text,
                                                                      std::string& error);

  private:
    const Property<std::int32_t>& tempUnit_;
};

}  // namespace calorivo
