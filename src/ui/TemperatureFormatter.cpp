#include "ui/TemperatureFormatter.h"

#include "platform/Format.h"

namespace calorivo {

std::optional<std::string> TemperatureFormatter::stringForObjectValue(const Value& value) const {
    if (!value.isNumber()) return std::nullopt;
    constexpr std::string_view degreeSign = "\u00B0";
    const std::int32_t degrees = value.intValue();
    switch (tempUnit_) {
        case 0:
            return format("%d%@C", degrees, degreeSign);
        case 1:
            return format("%.0f%@F", static_cast<float>(degrees) * 1.8F + 32.0F, degreeSign);
        default:
            return format("%d", degrees);
    }
}

bool TemperatureFormatter::getObjectValueForStringErrorDescription(Value& /*value*/,
                                                                   std::string_view /*text*/,
                                                                   std::string& /*error*/) {
    return false;
}

}  // namespace calorivo
