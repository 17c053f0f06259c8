#include "sensors/KeysFile.h"

#include "sensors/SensorRules.h"

#include <algorithm>
#include <cstdint>
#include <iterator>
#include <optional>

namespace calorivo {

namespace {

constexpr std::string_view blanksAndNewlines = " \t\n\v\f\r";

std::string_view trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(blanksAndNewlines);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(blanksAndNewlines) - begin + 1);
}

/// Cuts the first line off the front of `text`. A line ends at LF, CR, or CR LF.
std::string_view nextLine(std::string_view& text) {
    const std::size_t end = std::min(text.find_first_of("\n\r"), text.size());
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end);
    if (!text.empty()) text.remove_prefix(text.starts_with("\r\n") ? 2 : 1);
    return line;
}

int hexadecimalDigit(char c) {
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

/// The number at the front of the text as "%x" reads it, blanks left out: an optional sign, an optional "0x",
/// and digits up to the first other character. Of a number that is too long the low 32 bits count, so that
/// the last two bytes are right. None when there is no digit.
std::optional<std::uint32_t> hexadecimalValue(std::string_view text) {
    std::string digits;
    std::copy_if(text.begin(), text.end(), std::back_inserter(digits),
                 [](char c) { return c != ' ' && c != '\t'; });
    std::string_view rest = digits;
    const bool isNegative = rest.starts_with('-');
    if (isNegative || rest.starts_with('+')) rest.remove_prefix(1);
    if (rest.size() > 2 && (rest.starts_with("0x") || rest.starts_with("0X")) &&
        hexadecimalDigit(rest[2]) >= 0)
        rest.remove_prefix(2);
    if (rest.empty() || hexadecimalDigit(rest.front()) < 0) return std::nullopt;

    std::uint32_t value = 0;
    for (const char c : rest) {
        const int digit = hexadecimalDigit(c);
        if (digit < 0) break;
        value = value * 16 + static_cast<std::uint32_t>(digit);
    }
    return isNegative ? 0U - value : value;
}

/// Kept: both bytes count as signed, as everywhere for this type of value, and the fraction is dropped toward
/// zero, so that a dump gives whole degrees.
int wholeDegrees(std::uint32_t value) {
    const int fixedPoint = static_cast<std::int8_t>(value >> 8) * 256 + static_cast<std::int8_t>(value);
    return (fixedPoint >> 2) / 64;
}

/// A machine's GPU sensors are listed even when they were dumped while the GPU slept.
bool isGPUKey(SensorKey key) { return key == "TG0D" || key == "TG0P" || key == "TG1D" || key == "TG1P"; }

/// The text between "bytes " and the first ")" of the line; `problem` says why there is none.
std::string_view hexadecimalText(std::string_view line, std::string_view& problem) {
    constexpr std::string_view opening = "bytes ";
    const std::size_t bytes = line.find(opening);
    const std::size_t closing = line.find(')');
    if (bytes == std::string_view::npos)
        problem = "no \"bytes \"";
    else if (closing == std::string_view::npos)
        problem = "no \")\"";
    else if (closing < bytes + opening.size())
        problem = "the first \")\" stands before the bytes";
    else
        return line.substr(bytes + opening.size(), closing - bytes - opening.size());
    return {};
}

bool isKey(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return c >= ' ' && c <= '~'; });
}

void parseLine(std::string_view line, std::size_t number, KeysFile& file) {
    if (!line.starts_with('T') || line.find("[sp78]") == std::string_view::npos) return;
    if (!isKey(line.substr(0, 4))) {
        file.problems.push_back({number, "the key is not four ASCII characters"});
        return;
    }
    std::string_view problem;
    const std::optional<std::uint32_t> value = hexadecimalValue(hexadecimalText(line, problem));
    if (!value && problem.empty()) problem = "no hexadecimal digits after \"bytes \"";
    if (!problem.empty()) file.problems.push_back({number, std::string(problem)});

    const KeysFileEntry entry{SensorKey(line), wholeDegrees(value.value_or(0))};
    if (isTempValid(entry.temperature) || isGPUKey(entry.key)) file.entries.push_back(entry);
}

}  // namespace

KeysFile parseKeysFile(std::string_view text) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    KeysFile file;
    for (std::size_t number = 1; !text.empty(); ++number) parseLine(trimmed(nextLine(text)), number, file);
    return file;
}

}  // namespace calorivo
