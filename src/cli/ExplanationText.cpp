#include "cli/ExplanationText.h"

#include "cli/JSONText.h"
#include "cli/Text.h"
#include "platform/Format.h"
#include "smc/SmcDecode.h"

#include <string_view>

namespace calorivo {

namespace {

std::string hexText(const SmcValue& value) {
    std::string text;
    for (const std::uint8_t byte : smcDataBytes(value))
        appendFormat(text, text.empty() ? "%02x" : " %02x", {byte});
    return text;
}

std::string_view typeOf(const SmcValue& value) { return value.dataType.data(); }

/// One aligned line; none for an empty text.
void appendField(std::string& out, std::string_view label, std::string_view text) {
    if (text.empty()) return;
    out += "  ";
    appendFitted(out, label, 9);
    out.append(cleanText(text)).append("\n");
}

std::string shortText(double number) {
    std::string text = shortestText(number);
    if (text.ends_with(".0")) text.resize(text.size() - 2);
    return text;
}

void appendReading(std::string& out, const Explanation& explanation) {
    const SmcValue& value = explanation.value;
    if (value.dataSize == 0) {
        appendField(out, "bytes", "no data");
    } else {
        appendField(out, "type", typeOf(value));
        appendField(out, "bytes", hexText(value));
    }
    if (explanation.decoded) appendField(out, "decoded", shortText(*explanation.decoded));
    if (explanation.reading)
        appendField(out, "reading",
                    format("%@ °C, %@", shortText(*explanation.reading),
                           explanation.isValid ? "valid: shown as " + explanation.readingText
                                               : std::string("not valid: shown as N/A")));
}

}  // namespace

std::string explanationText(const Explanation& explanation) {
    std::string text = cleanText(explanation.key.view());
    if (!explanation.name.empty()) text.append("  ").append(cleanText(explanation.name));
    text += "\n\n";
    appendField(text, "source", explanation.source);
    appendField(text, "device", explanation.origin.device);
    appendField(text, "file", explanation.origin.file);
    appendField(text, "content", explanation.origin.content);
    appendField(text, "note", explanation.origin.note);
    appendReading(text, explanation);
    if (!explanation.naming.empty()) appendField(text, "named by", explanation.naming);
    for (const std::string& rule : explanation.grouping) appendField(text, "put by", rule);
    if (explanation.area != nullptr) appendField(text, "area", explanation.area->name);
    appendField(text, "shown", explanation.isShown ? "yes" : "no. " + explanation.hiddenReason);
    return text;
}

std::string explanationJSON(const Explanation& explanation) {
    const auto orNone = [](const std::string& text) { return text.empty() ? JSON(nullptr) : JSON(text); };
    const SmcValue& value = explanation.value;
    JSON grouping = JSON::array();
    for (const std::string& rule : explanation.grouping) grouping.push_back(rule);
    const Area* const area = explanation.area;
    return textOf({{"key", explanation.key.view()},
                   {"source", explanation.source},
                   {"device", orNone(explanation.origin.device)},
                   {"file", orNone(explanation.origin.file)},
                   {"content", orNone(explanation.origin.content)},
                   {"note", orNone(explanation.origin.note)},
                   {"type", orNone(std::string(typeOf(value)))},
                   {"bytes", value.dataSize == 0 ? JSON(nullptr) : JSON(hexText(value))},
                   {"decoded", orNull(explanation.decoded)},
                   {"celsius", orNull(explanation.reading)},
                   {"text", orNone(explanation.readingText)},
                   {"valid", explanation.isValid},
                   {"name", orNone(explanation.name)},
                   {"naming", orNone(explanation.naming)},
                   {"grouping", std::move(grouping)},
                   {"area", area != nullptr ? JSON(area->name) : JSON(nullptr)},
                   {"areaTag", area != nullptr ? JSON(area->tag) : JSON(nullptr)},
                   {"shown", explanation.isShown},
                   {"hiddenReason", orNone(explanation.hiddenReason)}});
}

}  // namespace calorivo
