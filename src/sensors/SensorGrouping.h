#pragma once

#include "sensors/SensorLists.h"

#include <functional>
#include <vector>

namespace calorivo {

class SensorNaming;

/// Sorts the found keys into the areas by their characters. A key that has a name of its own is in its area
/// already and is passed over. `temperatureOf` reads a sensor now: it decides between the two ambient sensors
/// that some machines have; when it is empty both count as 0.
void groupSensors(SensorLists& lists, const std::function<double(SensorKey)>& temperatureOf);

/// A rule that takes a key into an area, for explaining: its number and the list.
struct GroupingMatch {
    int rule;
    KeyList SensorLists::*list;
};
/// Every rule that takes this key, in order; empty when the key is left out. For the ambient rule it answers
/// for a machine with that key alone.
[[nodiscard]] std::vector<GroupingMatch> groupingRulesFor(SensorKey key);

/// Drops lower-case twins ("TC0c" beside "TC0C"), except where the model has a table of its own or the twin a
/// name of its own, and sorts by readable name without regard to ASCII case. Equal names keep their order,
/// exact duplicates stay.
void sortSensorNamesAndRemoveDuplicates(KeyList& list, const SensorLists& lists, const SensorNaming& naming);

}  // namespace calorivo
