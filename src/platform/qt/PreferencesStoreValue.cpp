// Values of preferences as texts, and back.

#include "platform/Format.h"
#include "platform/Utf8.h"
#include "platform/qt/PreferencesStoreText.h"

#include <QByteArray>
#include <QtGlobal>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <system_error>

namespace calorivo {

namespace {

constexpr std::string_view dataBegin = "@Data(";

std::string fractionText(double number) {
    if (std::isnan(number)) return "nan";
    if (std::isinf(number)) return number < 0 ? "-inf" : "inf";
    std::string text = shortestText(number);
    if (text.find_first_of(".e") == std::string::npos) text += ".0";
    return text;
}

std::string inQuotes(std::string_view text) {
    std::string out = "\"";
    while (!text.empty()) {
        const Utf8Character next = firstCharacter(text);
        const auto byte = static_cast<unsigned char>(text.front());
        const bool isEscapedByte = !next.isValid || byte < ' ' || byte == 0x7F;
        if (byte == '"' || byte == '\\')
            (out += '\\') += text.front();
        else if (byte == '\n')
            out += "\\n";
        else if (isEscapedByte)
            appendFormat(out, "\\x%02X", {byte});
        else
            out += text.substr(0, next.length);
        text.remove_prefix(next.length);
    }
    return out + '"';
}

std::string dataText(const Data& data) {
    const auto* const bytes = static_cast<const char*>(static_cast<const void*>(data.data()));
    return std::string(dataBegin) +
           QByteArray::fromRawData(bytes, static_cast<qsizetype>(data.size())).toBase64().toStdString() + ')';
}

std::optional<Value> dataOf(std::string_view base64) {
    const auto [bytes, status] = QByteArray::fromBase64Encoding(
        QByteArray::fromRawData(base64.data(), static_cast<qsizetype>(base64.size())),
        QByteArray::AbortOnBase64DecodingErrors);
    // Four characters for three bytes: a missing piece shows.
    if (status != QByteArray::Base64DecodingStatus::Ok || base64.size() % 4 != 0) return std::nullopt;
    return Data(bytes.begin(), bytes.end());
}

/// The byte of "HH"; -1 for anything else.
int byteOf(std::string_view digits) {
    int byte = -1;
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
    const bool isByte = digits.size() == 2 && result.ptr == digits.data() + 2 && digits.front() != '-';
    return isByte ? byte : -1;
}

/// `text` is what stands between the quotes.
std::optional<Value> unquoted(std::string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '"') return std::nullopt;
        if (text[i] != '\\') {
            out += text[i];
            continue;
        }
        if (++i == text.size()) return std::nullopt;
        if (text[i] == '"' || text[i] == '\\') {
            out += text[i];
        } else if (text[i] == 'n') {
            out += '\n';
        } else if (text[i] == 'x') {
            const int byte = byteOf(text.substr(std::min(i + 1, text.size()), 2));
            if (byte < 0) return std::nullopt;
            out += static_cast<char>(byte);
            i += 2;
        } else {
            return std::nullopt;
        }
    }
    return Value(std::move(out));
}

/// The whole text as a number of this type.
template <typename Number>
std::optional<Value> numberOf(std::string_view text) {
    Number number{};
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    if (result.ec != std::errc() || result.ptr != text.data() + text.size()) return std::nullopt;
    return Value(number);
}

}  // namespace

std::string preferenceText(const Value& value) {
    if (value.isNil()) return {};
    if (value == Value(true)) return "true";
    if (value == Value(false)) return "false";
    if (value == Value(value.intValue())) return value.stringValue();
    if (value.isNumber()) return fractionText(value.doubleValue());
    if (value == Value(value.dataValue())) return dataText(value.dataValue());
    return inQuotes(value.stringValue());
}

std::optional<Value> preferenceValue(std::string_view text) {
    using Limits = std::numeric_limits<double>;
    if (text == "true" || text == "false") return Value(text == "true");
    if (text == "nan") return Value(Limits::quiet_NaN());
    if (text == "inf" || text == "-inf")
        return Value(text == "inf" ? Limits::infinity() : -Limits::infinity());
    if (text.size() >= 2 && text.front() == '"' && text.back() == '"')
        return unquoted(text.substr(1, text.size() - 2));
    if (text.starts_with(dataBegin) && text.back() == ')')
        return dataOf(text.substr(dataBegin.size(), text.size() - dataBegin.size() - 1));
    if (text.starts_with('@') && !text.starts_with(dataBegin)) return Value();
    if (text.find_first_not_of("+-.0123456789eE") != std::string_view::npos) return std::nullopt;
    const bool isWhole = text.find_first_of(".eE") == std::string_view::npos;
    return isWhole ? numberOf<std::int32_t>(text) : numberOf<double>(text);
}

}  // namespace calorivo
