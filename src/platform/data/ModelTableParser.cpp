#include "platform/Format.h"
#include "platform/data/ModelTableFiles.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <initializer_list>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace calorivo {

namespace {

using Json = nlohmann::json;

constexpr std::size_t mostEntries = 1000;
constexpr std::size_t longestText = 100;
constexpr std::size_t longestQuote = 40;
/// The table's own object, the list in it, the entries in that, and one level for a value of a wrong kind.
constexpr int deepest = 4;

/// Why the file gives no table, without the file's name. Never leaves this file.
class Invalid : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

bool isControl(std::string_view text, std::size_t i) {
    const auto code = static_cast<unsigned char>(text[i]);
    if (code < 0x20 || code == 0x7F) return true;
    // The second half of the control characters, U+0080 to U+009F, as UTF-8 spells them.
    return code == 0xC2 && i + 1 < text.size() && static_cast<unsigned char>(text[i + 1]) < 0xA0;
}

/// A text from a file inside a message: of a bounded length, and harmless to a terminal.
std::string inQuotes(std::string_view text) {
    std::string shown = "\"";
    for (std::size_t i = 0; i < std::min(text.size(), longestQuote); ++i) {
        const auto code = static_cast<unsigned char>(text[i]);
        shown += code < 0x20 || code >= 0x7F ? '?' : text[i];
    }
    return shown + (text.size() > longestQuote ? "...\"" : "\"");
}

/// Where a byte of the text stands, as "LINE:COLUMN", both from 1.
std::string placeOf(std::string_view text, std::size_t byte) {
    const std::string_view before = text.substr(0, byte == 0 ? 0 : byte - 1);
    const std::size_t lineBegin = before.rfind('\n');
    const std::size_t column =
        lineBegin == std::string_view::npos ? before.size() : before.size() - lineBegin - 1;
    return format("%llu:%llu", std::ranges::count(before, '\n') + 1, column + 1);
}

/// What the parser says without its own place and number: "syntax error while parsing value - ...".
std::string parserReason(std::string_view message) {
    const std::size_t place = message.find("column ");
    const std::size_t begin = message.find(": ", place == std::string_view::npos ? 0 : place);
    if (begin != std::string_view::npos) message.remove_prefix(begin + 2);
    std::string reason(message.substr(0, message.find("; last read")));
    std::ranges::replace_if(
        reason, [](char c) { return c < ' ' || c > '~'; }, '?');
    return reason;
}

/// What the parser itself lets pass: members given twice, and depths that no table has.
class Guard {
  public:
    bool operator()(int depth, Json::parse_event_t event, Json& parsed) {
        using Event = Json::parse_event_t;
        if (event == Event::object_start) members_.emplace_back();
        if (event == Event::object_end) members_.pop_back();
        if ((event == Event::object_start || event == Event::array_start) && depth >= deepest)
            throw Invalid("nested too deeply");
        if (event == Event::key && !members_.back().insert(parsed.get<std::string>()).second)
            throw Invalid(format("member %@ given twice", inQuotes(parsed.get_ref<const std::string&>())));
        return true;
    }

  private:
    std::vector<std::set<std::string>> members_;
};

Json parsedJson(std::string_view text, const std::string& fileName) {
    try {
        Guard guard;
        return Json::parse(text, [&guard](int depth, Json::parse_event_t event, Json& parsed) {
            return guard(depth, event, parsed);
        });
    } catch (const Json::parse_error& error) {
        throw Invalid(format("%@:%@: %@", fileName, placeOf(text, error.byte), parserReason(error.what())));
    } catch (const Invalid& reason) {
        throw Invalid(format("%@: %@", fileName, reason.what()));
    }
}

void checkMembers(const Json& object, std::initializer_list<std::string_view> known) {
    for (const auto& [member, value] : object.items())
        if (std::ranges::find(known, member) == known.end())
            throw Invalid(format("unknown member %@", inQuotes(member)));
}

const Json& memberOf(const Json& object, const char* name) {
    const auto found = object.find(name);
    if (found == object.end()) throw Invalid(format("%@ is missing", name));
    return *found;
}

std::string textOf(const Json& object, const char* name) {
    const Json& value = memberOf(object, name);
    if (!value.is_string()) throw Invalid(format("%@ is not a text", name));
    return value.get<std::string>();
}

/// A text that people read: not blank, of one line and of a bounded length.
std::string readableText(const Json& object, const char* name) {
    std::string text = textOf(object, name);
    if (text.find_first_not_of(' ') == std::string::npos) throw Invalid(format("%@ is empty", name));
    if (text.size() > longestText) throw Invalid(format("%@ is longer than 100 bytes", name));
    for (std::size_t i = 0; i < text.size(); ++i)
        if (isControl(text, i)) throw Invalid(format("%@ has control characters", name));
    return text;
}

std::string keyOf(const Json& sensor) {
    std::string key = textOf(sensor, "key");
    const bool isPrintable = std::ranges::all_of(key, [](char c) { return c >= ' ' && c <= '~'; });
    if (key.size() != 4 || !isPrintable) throw Invalid("the key is not four printable ASCII characters");
    if (key.front() != 'T') throw Invalid("the key does not begin with T");
    return key;
}

ModelTableEntry entryOf(const Json& sensor, std::span<const std::string_view> areas) {
    if (!sensor.is_object()) throw Invalid("not an object");
    checkMembers(sensor, {"key", "name", "area"});
    ModelTableEntry entry{.key = keyOf(sensor), .name = readableText(sensor, "name"), .area = {}};
    entry.area = textOf(sensor, "area");
    if (std::ranges::find(areas, entry.area) == areas.end())
        throw Invalid(format("unknown area %@", inQuotes(entry.area)));
    return entry;
}

/// `entry N (key "TC0P")`, or without the key when there is none.
std::string entryName(std::size_t number, const Json& sensor) {
    const bool hasKey = sensor.is_object() && sensor.contains("key") && sensor["key"].is_string();
    const std::string name = format("entry %llu", number);
    return hasKey ? format("%@ (key %@)", name, inQuotes(sensor["key"].get_ref<const std::string&>())) : name;
}

std::vector<ModelTableEntry> entriesOf(const Json& sensors, std::span<const std::string_view> areas) {
    std::vector<ModelTableEntry> entries;
    std::set<std::string> keys;
    for (const Json& sensor : sensors) {
        try {
            entries.push_back(entryOf(sensor, areas));
            if (!keys.insert(entries.back().key).second) throw Invalid("the key is given twice");
        } catch (const Invalid& reason) {
            throw Invalid(format("%@: %@", entryName(keys.size() + 1, sensor), reason.what()));
        }
    }
    return entries;
}

ModelTable tableOf(const Json& json, std::span<const std::string_view> areas) {
    if (!json.is_object()) throw Invalid("not an object");
    checkMembers(json, {"comment", "identifier", "sensors"});
    if (json.contains("comment")) textOf(json, "comment");
    ModelTable table{.identifier = readableText(json, "identifier"), .entries = {}};
    const Json& sensors = memberOf(json, "sensors");
    if (!sensors.is_array()) throw Invalid("sensors is not a list");
    if (sensors.empty()) throw Invalid("sensors is empty");
    if (sensors.size() > mostEntries) throw Invalid("sensors has more than 1000 entries");
    table.entries = entriesOf(sensors, areas);
    return table;
}

}  // namespace

ModelTableFiles parseModelTable(std::string_view text, const std::string& fileName,
                                std::span<const std::string_view> areas) {
    ModelTableFiles result;
    try {
        const Json json = parsedJson(text, fileName);
        try {
            result.tables.push_back(tableOf(json, areas));
        } catch (const Invalid& reason) {
            result.problems.push_back(format("%@: %@", fileName, reason.what()));
        }
    } catch (const Invalid& problem) {
        result.problems.emplace_back(problem.what());
    }
    return result;
}

}  // namespace calorivo
