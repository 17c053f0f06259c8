#include "platform/linux/SmcEncoding.h"

#include <algorithm>

namespace calorivo {

namespace {

constexpr long coldest = -40000;
constexpr long hottest = 150000;
constexpr long validTop = 120000;
constexpr long largestSp78 = 127000;
constexpr long quarter = 250;

std::uint8_t byte(long value) { return static_cast<std::uint8_t>(value); }

long roundedQuarters(long milli) {
    const long quarters = (milli >= 0 ? milli + quarter / 2 : milli - quarter / 2) / quarter;
    if (milli > 0 && milli < validTop) return std::clamp(quarters, 1L, validTop / quarter - 1);
    return quarters;
}

}  // namespace

bool isPlausibleTemperature(long milli) {
    const bool isErrorNumber = milli < 0 && milli > -134;
    return milli >= coldest && milli <= hottest && !isErrorNumber;
}

EncodedValue encodeCompensatedSp78(long milli) {
    const long value = 64 * roundedQuarters(std::clamp(milli, coldest, largestSp78));
    const auto low = static_cast<std::int8_t>(value);
    return {{byte((value - low) / 256), byte(value)}, 2};
}

EncodedValue encodeFaithfulSp78(long milli) {
    // The driver has rounded down to quarters of a degree; this shifts them back to where they stood.
    const long quarters = milli >= 0 ? milli / quarter : -((-milli + quarter - 1) / quarter);
    const long value = 64 * quarters;
    return {{byte(value >> 8), byte(value)}, 2};
}

EncodedValue encodeFpe2(long rpm) {
    rpm = std::clamp(rpm, 0L, 500000L);
    if (rpm < 8192) return {{byte(rpm >> 6), byte(rpm << 2)}, 2};
    return {{byte(rpm / 4096), byte(rpm % 4096 / 64), byte(rpm % 64 * 4)}, 3};
}

EncodedValue encodeFanName(std::string_view name) {
    constexpr std::size_t fillerSize = 4;
    std::size_t length = std::min<std::size_t>(name.size(), 27);
    while (length > 0 && length < name.size() && (static_cast<unsigned char>(name[length]) & 0xC0U) == 0x80U)
        --length;
    EncodedValue value;
    std::copy_n(name.begin(), length, value.bytes.begin() + fillerSize);
    value.size = static_cast<std::uint32_t>(std::max<std::size_t>(fillerSize + length + 1, 16));
    return value;
}

EncodedValue encodeUnsigned(std::uint32_t value, std::uint32_t size) {
    EncodedValue encoded;
    encoded.size = size;
    for (std::uint32_t i = 0; i < size; ++i)
        encoded.bytes[i] = static_cast<std::uint8_t>(value >> (8 * (size - 1 - i)));
    return encoded;
}

}  // namespace calorivo
