#include "app/Explanation.h"

#include "platform/Format.h"
#include "sensors/SensorGrouping.h"
#include "sensors/SensorRules.h"
#include "smc/SmcDecode.h"

#include <algorithm>

namespace calorivo {

namespace {

constexpr SensorKey ambient = "TA0P";
constexpr SensorKey ambientTwin = "TA0p";

std::optional<double> decoded(const SmcValue& value) {
    const auto bytes = smcDataBytes(value);
    if (bytes.empty()) return std::nullopt;
    if (value.hasType("ui8 ") || value.hasType("ui16") || value.hasType("ui32"))
        return smcUnsignedFromBytes(bytes);
    if (value.hasType("fpe2")) return static_cast<double>(smcFpe2FromBytes(bytes, 2));
    if (value.hasType("sp78")) return smcSp78FromBytes(value.bytes[0], value.bytes[1]);
    return std::nullopt;
}

bool hasOwnName(SensorKey key, const SensorLists& lists) {
    return lists.customSensorsToReadableNamesMap.count(key) != 0;
}

const Area* areaThatShows(SensorKey key, const SensorLists& lists) {
    for (KeyList SensorLists::*const list : validSensorOrder)
        if ((lists.*list).containsString(key)) return &areaOf(list);
    return nullptr;
}

std::string namingOf(SensorKey key, const ExplanationParts& parts) {
    if (const int row = parts.naming.namingRow(key); row != 0)
        return format("row %d of the naming rules", row);
    return parts.lists.isUsingCustomSensorNames ? "the table of this model"
                                                : "the naming rules for this machine";
}

std::vector<std::string> groupingOf(SensorKey key, const SensorLists& lists) {
    if (hasOwnName(key, lists))
        return {lists.isUsingCustomSensorNames ? "the table of this model"
                                               : "the naming rules for this machine"};
    if (lists.isUsingCustomSensorNames) return {};
    std::vector<std::string> grouping;
    for (const GroupingMatch& match : groupingRulesFor(key))
        grouping.push_back(format("grouping rule %d: %@", match.rule, areaOf(match.list).name));
    if (key == ambientTwin && lists.logicBoardSensorNames.containsString(key))
        grouping.emplace_back("grouping rule 20: Logic Board, because it reads hotter than TA0P");
    return grouping;
}

/// Why the search for sensors passed the key over.
std::string reasonOfTheScan(const Explanation& explanation, const SensorLists& lists) {
    const SmcValue& value = explanation.value;
    if (value.dataSize == 0) return "It gives no data now.";
    if (!value.hasType("sp78"))
        return format("Its type is \"%@\", not \"sp78\": only that type is a temperature.",
                      std::string_view(value.dataType.data()));
    if (lists.isUsingKeysFile)
        return "In a keys file only whole degrees above 0 and below 120 count, or GPU sensors.";
    return "It did not read above 0 °C when the sensors were sought.";
}

/// Why no area has it although it was found.
std::string reasonOfTheGrouping(SensorKey key, const SensorLists& lists) {
    if (key[3] == 'G' || key[3] == 'g') return "Keys that end in G or g are left out by grouping rule 0.";
    if (key == ambient || key == ambientTwin) {
        const SensorKey other = key == ambient ? ambientTwin : ambient;
        if (lists.logicBoardSensorNames.containsString(other))
            return format("%@ is shown in its place: it read hotter.", other.view());
    }
    for (const GroupingMatch& match : groupingRulesFor(key)) {
        SensorKey upper = key;
        for (std::size_t i = 0; i < 4; ++i)
            if (key[i] >= 'a' && key[i] <= 'z') upper = upper.with(i, static_cast<char>(key[i] - 'a' + 'A'));
        if (upper != key && (lists.*match.list).containsString(upper))
            return format("Its twin in upper case, %@, is shown in its place.", upper.view());
    }
    return "No grouping rule takes it into an area.";
}

std::string hiddenReason(const Explanation& explanation, const SensorLists& lists) {
    const SensorKey key = explanation.key;
    if (key[0] != 'T') return "It is no temperature: the keys of temperatures begin with T.";
    if (lists.isUsingCustomSensorNames) return "The table of this model does not list it.";
    if (!lists.tempSensorNames.containsString(key)) return reasonOfTheScan(explanation, lists);
    return reasonOfTheGrouping(key, lists);
}

}  // namespace

std::optional<Explanation> explain(SensorKey key, const ExplanationParts& parts) {
    const SensorLists& lists = parts.lists;
    Explanation result;
    result.key = key;
    result.isShown = lists.validSensorNames.containsString(key);
    const bool isFound = result.isShown || lists.tempSensorNames.containsString(key);
    const auto origin = parts.provider.originOf(key.view());
    smcReadKey(key.view(), result.value);
    if (!origin && result.value.dataSize == 0 && !isFound) return std::nullopt;

    result.source = parts.provider.sourceName();
    result.origin = origin.value_or(KeyOrigin{});
    result.decoded = decoded(result.value);
    if (isFound || (key[0] == 'T' && result.value.hasType("sp78"))) {
        const double reading = parts.reader.getTemperatureForSensor(key);
        result.reading = reading;
        result.readingText = parts.reader.convertDegreesToString(reading);
        result.isValid = isTempValid(reading);
    }
    if (key[0] == 'T') {
        result.name = parts.naming.convertKeyNameToHumanString(key);
        result.naming = namingOf(key, parts);
        result.grouping = groupingOf(key, lists);
        result.area = areaThatShows(key, lists);
    }
    if (!result.isShown) result.hiddenReason = hiddenReason(result, lists);
    return result;
}

}  // namespace calorivo
