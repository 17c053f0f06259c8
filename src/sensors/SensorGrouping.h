#pragma once

#include "sensors/SensorLists.h"

#include <functional>
#include <vector>

namespace calorivo {

class SensorNaming;

/// Sorts keys into the areas by their characters. `temperatureOf` reads a sensor now: it decides between the
/// two ambient sensors that some machines have.
void groupSensors(SensorLists& lists, const std::function<double(SensorKey)>& temperatureOf);

/// A rule that takes a key into an area, for explaining: its number and the list.
struct GroupingMatch {
    int rule;
    KeyList SensorLists::*list;
};
/// Every rule that takes this key, in order; empty when the key is left out. For the ambient rule it answers
/// for a machine with that key alone.
[[nodiscard]] std::vector<GroupingMatch> groupingRulesFor(SensorKey key);

/// Drops lower-case twins (unless the model has a table of its own) and sorts by readable name, without
/// regard to case. Exact duplicates stay.
void sortSensorNamesAndRemoveDuplicates(KeyList& list, const SensorLists& lists, const SensorNaming& naming);

}  // namespace calorivo
