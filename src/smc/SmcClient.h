#pragma once

#include "platform/IOKit.h"
#include "smc/SmcRecord.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

// The connection to the System Management Controller: one for the process, opened at start-up, closed at the
// end. Every call belongs to the main thread.

namespace calorivo {

/// The result of one key read. Cleared (size 0, empty texts) when the read failed.
struct SmcValue {
    /// NUL-terminated, like `dataType`; a trailing blank is part of the code ("ui8 ").
    std::array<char, 5> key{};
    /// As the controller reported it; 0 means no data. Never trust it beyond the 32 bytes that there are.
    std::uint32_t dataSize = 0;
    std::array<char, 5> dataType{};
    /// Most significant byte first.
    std::array<std::uint8_t, 32> bytes{};

    [[nodiscard]] bool hasType(std::string_view type) const {
        return type == std::string_view(dataType.data(), 4);
    }
    /// Both up to the NUL, without it.
    [[nodiscard]] std::string_view keyText() const { return text(key); }
    [[nodiscard]] std::string_view typeText() const { return text(dataType); }
    friend bool operator==(const SmcValue&, const SmcValue&) = default;

  private:
    static std::string_view text(const std::array<char, 5>& code) {
        return {code.begin(), std::find(code.begin(), code.end(), '\0')};
    }
};

/// The provider that the calls go to; it must live until another one is set. Null is a machine without a
/// controller: every call fails with io_return::notOpen.
void smcSetIOKit(IOKit* ioKit);
/// Where messages and dumps are printed; standard output unless set. Null sets standard output again.
void smcSetOutput(std::FILE* output);
[[nodiscard]] std::FILE* smcOutput();

/// 0 on success, 1 on any failure, whose message has then been printed; no connection is left behind.
int smcOpen();
/// The result of closing. Every later call goes to no connection and fails.
kern_return_t smcClose();
kern_return_t smcCall(std::uint32_t selector, const SMCKeyData& input, SMCKeyData& output);
/// Reads the first four characters of `key`, a missing one counting as code 0. The result byte of the record
/// is not looked at: an unknown key usually succeeds with `dataSize` 0.
kern_return_t smcReadKey(std::string_view key, SmcValue& value);
/// The key at `index`, packed; other results than 0 leave `key` as it was.
kern_return_t smcReadKeyByIndex(std::uint32_t index, std::uint32_t& key);
/// Writes only over a value of the same size; in every other case it does nothing. Nothing is reported.
void smcWriteKey(const SmcValue& value);

/// The sum of the first `size` characters, the first one in the most significant byte. With base 16
/// characters count as signed, with any other base as unsigned. A character past the end of `text` counts as
/// code 0.
[[nodiscard]] std::uint32_t smcKeyFromString(std::string_view text, int size, int base);
[[nodiscard]] std::string smcKeyToString(std::uint32_t key);

}  // namespace calorivo
