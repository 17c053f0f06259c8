#include "smc/SmcReaders.h"

#include "smc/SmcClient.h"
#include "smc/SmcDecode.h"

namespace calorivo {

namespace {

constexpr int fpe2FractionBits = 2;
constexpr int unreadableSpeed = -1;

/// Reads the key; true when it holds data of this type.
bool read(std::string_view key, std::string_view type, SmcValue& value) {
    return smcReadKey(key, value) == io_return::success && value.dataSize != 0 && value.hasType(type);
}

}  // namespace

int smcKeyCount() {
    SmcValue value;
    smcReadKey("#KEY", value);
    return static_cast<int>(smcUnsignedFromBytes(smcDataBytes(value)));
}

double smcTemperature(std::string_view key) {
    SmcValue value;
    return read(key, "sp78", value) ? smcSp78FromBytes(value.bytes[0], value.bytes[1]) : 0.0;
}

int smcFanCount() {
    SmcValue value;
    // Kept: the byte counts as signed; a count above 127 is negative, which is no fan to every caller.
    return read("FNum", "ui8 ", value) ? static_cast<signed char>(value.bytes[0]) : 0;
}

int smcFanSpeed(std::string_view key) {
    SmcValue value;
    if (!read(key, "fpe2", value)) return unreadableSpeed;
    const float rpm = smcFpe2FromBytes(smcDataBytes(value), fpe2FractionBits);
    // A value too long to be a speed may be too large for an int.
    return rpm > -2147483648.0F && rpm < 2147483648.0F ? static_cast<int>(rpm) : unreadableSpeed;
}

void smcSetFanSpeed(std::string_view key, int rpm) {
    SmcValue value;
    key.copy(value.key.data(), 4);
    value.dataSize = 2;
    const auto quarters = static_cast<std::int32_t>(static_cast<std::uint32_t>(rpm) * 4U);
    // Kept: a signed division; a negative speed leaves its first byte rounded toward zero.
    value.bytes[0] = static_cast<std::uint8_t>(quarters / 256);
    value.bytes[1] = static_cast<std::uint8_t>(quarters);
    smcWriteKey(value);
}

}  // namespace calorivo
