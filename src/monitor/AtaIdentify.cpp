#include "monitor/AtaIdentify.h"

#include "platform/Utf8.h"

#include <cstddef>
#include <numeric>
#include <string>
#include <string_view>
#include <utility>

namespace calorivo {

namespace {

/// A text field, in bytes from the beginning of the block.
struct TextField {
    std::size_t begin;
    std::size_t end;
};
constexpr TextField serialField{20, 40};
constexpr TextField modelField{54, 94};
constexpr std::size_t commandSetByte = 164;  // the low byte of word 82
constexpr std::uint8_t smartSupported = 0x01;
constexpr std::size_t signatureByte = 510;
constexpr std::uint8_t checksumSignature = 0xA5;

/// Drives store the two characters of each word the other way round.
void swapBytesOfWords(AtaBlock& data, const TextField& field) {
    for (std::size_t i = field.begin; i < field.end; i += 2) std::swap(data[i], data[i + 1]);
}

/// The text up to its first zero; none when it is not UTF-8.
std::optional<std::string> textAt(const AtaBlock& data, std::size_t begin) {
    std::string text;
    for (std::size_t i = begin; i < data.size() && data[i] != 0; ++i) text += static_cast<char>(data[i]);
    if (firstInvalidByte(text)) return std::nullopt;
    return text;
}

}  // namespace

std::optional<DriveDictionary> driveFromIdentifyData(AtaBlock data) {
    data[modelField.end] = 0;
    data[serialField.end] = 0;
    swapBytesOfWords(data, modelField);
    swapBytesOfWords(data, serialField);
    const auto model = textAt(data, modelField.begin);
    const auto serial = textAt(data, serialField.begin);
    if (!model || !serial || (data[commandSetByte] & smartSupported) == 0) return std::nullopt;
    return DriveDictionary{std::string(trimmed(*model)), *serial, 0};
}

std::uint8_t checkedIdentifyData(const AtaBlock& data) {
    if (data[signatureByte] != checksumSignature) return 255;
    return static_cast<std::uint8_t>(std::accumulate(data.begin(), data.end(), 0U));
}

}  // namespace calorivo
