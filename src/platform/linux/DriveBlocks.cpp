#include "platform/linux/DriveBlocks.h"

#include <cstddef>
#include <cstdint>
#include <numeric>

namespace calorivo {

namespace {

constexpr std::size_t checksumByte = ataBlockSize - 1;
constexpr std::size_t serialByte = 20;
constexpr std::size_t serialLength = 20;
constexpr std::size_t modelByte = 54;
constexpr std::size_t modelLength = 40;
constexpr std::size_t supportedByte = 164;  // the low bytes of words 82 and 85: bit 0 is SMART
constexpr std::size_t enabledByte = 170;
constexpr std::size_t rotationByte = 434;  // word 217
constexpr std::size_t signatureByte = 510;

constexpr std::size_t tableBegin = 2;
constexpr std::size_t entrySize = 12;
constexpr std::size_t tableEnd = tableBegin + 30 * entrySize;
constexpr std::size_t valueInEntry = 3;
constexpr std::size_t rawInEntry = 5;
constexpr std::size_t rawLength = 6;
constexpr std::uint8_t temperature = 194;
constexpr std::uint8_t airTemperature = 190;
constexpr std::uint8_t lifeLeft = 231;

void seal(AtaBlock& data) {
    data[checksumByte] = 0;
    data[checksumByte] = static_cast<std::uint8_t>(0U - std::accumulate(data.begin(), data.end(), 0U));
}

/// Drives store the two characters of each word the other way round.
void putText(AtaBlock& data, std::size_t begin, std::size_t length, std::string_view text) {
    for (std::size_t i = 0; i < length; ++i)
        data[begin + (i ^ 1U)] = static_cast<std::uint8_t>(i < text.size() ? text[i] : ' ');
}

bool isWithoutMovingParts(const AtaBlock& identify) {
    return identify[rotationByte] == 1 && identify[rotationByte + 1] == 0;
}

/// The place of the attribute's entry; 0 when there is none.
std::size_t entryOf(const AtaBlock& smart, std::uint8_t identifier) {
    for (std::size_t entry = tableBegin; entry < tableEnd; entry += entrySize)
        if (smart[entry] == identifier) return entry;
    return 0;
}

bool isPercentage(const AtaBlock& smart, std::size_t entry) {
    const std::uint8_t raw = smart[entry + rawInEntry];
    if (raw > 100 || raw != smart[entry + valueInEntry]) return false;
    // A temperature mostly has its extremes in the bytes above.
    for (std::size_t i = 1; i < rawLength; ++i)
        if (smart[entry + rawInEntry + i] != 0) return false;
    return true;
}

}  // namespace

bool isChecksumRight(const AtaBlock& data) {
    return std::accumulate(data.begin(), data.end(), 0U) % 256 == 0;
}

AtaBlock identifyBlock(std::string_view model, std::string_view serial) {
    AtaBlock data{};
    putText(data, serialByte, serialLength, serial);
    putText(data, modelByte, modelLength, model);
    data[supportedByte] = 1;
    data[enabledByte] = 1;
    data[signatureByte] = 0xA5;
    seal(data);
    return data;
}

bool isSmartSwitchedOn(const AtaBlock& identify) { return (identify[enabledByte] & 1U) != 0; }

AtaBlock temperatureBlock(int celsius) {
    AtaBlock data{};
    data[tableBegin] = temperature;
    if (celsius > 0 && celsius <= 255) data[tableBegin + rawInEntry] = static_cast<std::uint8_t>(celsius);
    seal(data);
    return data;
}

AtaBlock withoutWearAttribute(const AtaBlock& identify, AtaBlock smart) {
    const std::size_t wear = entryOf(smart, lifeLeft);
    if (wear == 0 || !isWithoutMovingParts(identify) || !isChecksumRight(smart) || !isPercentage(smart, wear))
        return smart;
    smart[wear] = 0;
    if (const std::size_t air = entryOf(smart, airTemperature); air != 0 && entryOf(smart, temperature) == 0)
        smart[air] = temperature;
    seal(smart);
    return smart;
}

}  // namespace calorivo
