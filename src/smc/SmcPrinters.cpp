#include "smc/SmcPrinters.h"

#include "platform/Format.h"
#include "smc/SmcDecode.h"
#include "smc/SmcReaders.h"

namespace calorivo {

namespace {

template <typename... Arguments>
void print(std::string_view pattern, const Arguments&... arguments) {
    const std::string text = format(pattern, arguments...);
    std::fwrite(text.data(), 1, text.size(), smcOutput());
}

double fpe2(const SmcValue& value) { return static_cast<double>(smcFpe2FromBytes(smcDataBytes(value), 2)); }

struct FanLine {
    std::string_view keyPattern;
    std::string_view linePattern;
};
constexpr FanLine fanLines[] = {
    {"F%dAc", "    Actual speed : %.0f\n"}, {"F%dMn", "    Minimum speed: %.0f\n"},
    {"F%dMx", "    Maximum speed: %.0f\n"}, {"F%dSf", "    Safe speed   : %.0f\n"},
    {"F%dTg", "    Target speed : %.0f\n"},
};

void printFan(int fan) {
    print("\nFan #%d:\n", fan);
    SmcValue value;
    for (const FanLine& line : fanLines) {
        // Kept: a key has room for four characters, so from fan 10 on the last one is cut off, and the key
        // that is left is read. It belongs to no fan.
        smcReadKey(format(line.keyPattern, fan).substr(0, 4), value);
        // Kept: neither result nor type is looked at; what cannot be read prints 0.
        print(line.linePattern, fpe2(value));
    }
    smcReadKey("FS! ", value);
    const unsigned forcedFans = value.bytes[0] * 256U + value.bytes[1];
    const bool isForced = fan < 16 && ((forcedFans >> fan) & 1U) != 0;
    print(isForced ? "    Mode         : forced\n" : "    Mode         : auto\n");
}

}  // namespace

void smcPrintValue(const SmcValue& value) {
    print("  %-4s  [%-4s]  ", value.keyText(), value.typeText());
    if (value.dataSize == 0) {
        print("no data\n");
        return;
    }
    if (value.hasType("ui8 ") || value.hasType("ui16") || value.hasType("ui32"))
        smcPrintUnsigned(value);
    else if (value.hasType("fpe2"))
        smcPrintFpe2(value);
    smcPrintBytes(value);
}

void smcPrintBytes(const SmcValue& value) {
    print("(bytes");
    for (const std::uint8_t byte : smcDataBytes(value)) print(" %02x", byte);
    print(")\n");
}

void smcPrintFpe2(const SmcValue& value) { print("%.0f ", fpe2(value)); }

void smcPrintUnsigned(const SmcValue& value) { print("%u ", smcUnsignedFromBytes(smcDataBytes(value))); }

int smcPrintAllKeys() {
    const int count = smcKeyCount();
    for (int index = 0; index < count; ++index) {
        std::uint32_t key = 0;
        if (smcReadKeyByIndex(static_cast<std::uint32_t>(index), key) != io_return::success) continue;
        SmcValue value;
        if (smcReadKey(smcKeyToString(key), value) == io_return::success) smcPrintValue(value);
    }
    return 0;
}

kern_return_t smcPrintFans() {
    SmcValue value;
    if (smcReadKey("FNum", value) != io_return::success) return io_return::error;
    const auto fans = static_cast<int>(smcUnsignedFromBytes(smcDataBytes(value)));
    print("Total fans in system: %d\n", fans);
    for (int fan = 0; fan < fans; ++fan) printFan(fan);
    return io_return::success;
}

}  // namespace calorivo
