#include "sensors/SensorGrouping.h"

#include "sensors/GroupingTable.h"
#include "sensors/SensorNaming.h"

#include <algorithm>
#include <string>
#include <utility>

namespace calorivo {

namespace {

constexpr SensorKey ambientKey = "TA0P";
constexpr SensorKey otherAmbientKey = "TA0p";

bool isNamedAlready(const SensorLists& lists, SensorKey key) {
    return lists.customSensorsToReadableNamesMap.contains(key);
}

/// Machines with both ambient sensors have one that is not connected: the hotter one is real.
SensorKey ambientSensor(const SensorLists& lists, const std::function<double(SensorKey)>& temperatureOf) {
    if (!lists.tempSensorNames.containsString(otherAmbientKey) || isNamedAlready(lists, otherAmbientKey))
        return ambientKey;
    const auto read = [&](SensorKey key) { return temperatureOf ? temperatureOf(key) : 0.0; };
    return read(ambientKey) > read(otherAmbientKey) ? ambientKey : otherAmbientKey;
}

constexpr char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
constexpr char lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

SensorKey upperCase(SensorKey key) {
    for (std::size_t i = 0; i < 4; ++i) key = key.with(i, upper(key[i]));
    return key;
}

std::string lowerCase(std::string text) {
    for (char& c : text) c = lower(c);
    return text;
}

void removeLowerCaseTwins(KeyList& list, const SensorLists& lists) {
    std::vector<SensorKey> kept;
    for (const SensorKey key : list) {
        const SensorKey twin = upperCase(key);
        if (twin == key || !list.containsString(twin) || isNamedAlready(lists, key)) kept.push_back(key);
    }
    list.assign(std::move(kept));
}

}  // namespace

void groupSensors(SensorLists& lists, const std::function<double(SensorKey)>& temperatureOf) {
    for (const SensorKey key : lists.tempSensorNames) {
        if (isNamedAlready(lists, key)) continue;
        for (const GroupingRule& rule : groupingRules) {
            if (!rule.takes(key)) continue;
            if (rule.list == nullptr) break;
            const SensorKey taken = key == ambientKey ? ambientSensor(lists, temperatureOf) : key;
            (lists.*rule.list).append(taken);
        }
    }
}

std::vector<GroupingMatch> groupingRulesFor(SensorKey key) {
    std::vector<GroupingMatch> matches;
    for (const GroupingRule& rule : groupingRules) {
        if (!rule.takes(key)) continue;
        if (rule.list == nullptr) break;
        matches.push_back({rule.number, rule.list});
    }
    return matches;
}

void sortSensorNamesAndRemoveDuplicates(KeyList& list, const SensorLists& lists, const SensorNaming& naming) {
    if (!lists.isUsingCustomSensorNames) removeLowerCaseTwins(list, lists);

    std::vector<std::pair<std::string, SensorKey>> named;
    named.reserve(list.count());
    for (const SensorKey key : list)
        named.emplace_back(lowerCase(naming.convertKeyNameToHumanString(key)), key);
    std::stable_sort(named.begin(), named.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });

    std::vector<SensorKey> sorted;
    sorted.reserve(named.size());
    for (const auto& [name, key] : named) sorted.push_back(key);
    list.assign(std::move(sorted));
}

}  // namespace calorivo
