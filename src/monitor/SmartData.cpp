#include "monitor/SmartData.h"

#include <cstddef>

namespace calorivo {

std::optional<std::uint8_t> temperatureInSMARTData(const AtaBlock& data) {
    constexpr std::size_t tableBegin = 2;
    constexpr std::size_t entrySize = 12;
    constexpr std::size_t entryCount = 30;
    constexpr std::size_t rawValue = 5;  // its lowest byte, in the entry
    constexpr std::uint8_t temperature = 194;
    constexpr std::uint8_t otherTemperature = 231;
    for (std::size_t entry = 0; entry < entryCount; ++entry) {
        const std::size_t begin = tableBegin + entry * entrySize;
        // Kept: on many solid-state drives 231 is the life that is left, yet others have their temperature
        // nowhere else. Who knows which drive it is shows this table without it.
        if (data[begin] == temperature || data[begin] == otherTemperature) return data[begin + rawValue];
    }
    return std::nullopt;
}

}  // namespace calorivo
