#include "smc/SmcReaders.h"

#include "smc/SmcClient.h"
#include "smc/SmcDecode.h"

namespace calorivo {

namespace {

constexpr int fpe2FractionBits = 2;

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
    return read("FNum", "ui8 ", value) ? static_cast<signed char>(value.bytes[0]) : 0;
}

int smcFanSpeed(std::string_view key) {
    SmcValue value;
    return read(key, "fpe2", value)
               ? static_cast<int>(smcFpe2FromBytes(smcDataBytes(value), fpe2FractionBits))
               : -1;
}

void smcSetFanSpeed(std::string_view key, int rpm) {
    SmcValue value;
    key.copy(value.key.data(), 4);
    value.dataSize = 2;
    const auto quarters = static_cast<std::int32_t>(static_cast<std::uint32_t>(rpm) * 4U);
    value.bytes[0] = static_cast<std::uint8_t>(quarters / 256);
    value.bytes[1] = static_cast<std::uint8_t>(quarters);
    smcWriteKey(value);
}

}  // namespace calorivo
