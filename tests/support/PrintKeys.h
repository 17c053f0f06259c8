#pragma once

#include "sensors/KeyList.h"
#include "sensors/KeysFile.h"

#include <ostream>

// How keys are shown when a test fails.

namespace calorivo {

inline void PrintTo(const SensorKey& key, std::ostream* out) { *out << key.view(); }

inline void PrintTo(const KeyList& list, std::ostream* out) {
    *out << '{';
    for (const SensorKey key : list) *out << ' ' << key.view();
    *out << " }";
}

inline void PrintTo(const KeysFileEntry& entry, std::ostream* out) {
    *out << entry.key.view() << ' ' << entry.temperature;
}

inline void PrintTo(const KeysFileProblem& problem, std::ostream* out) {
    *out << problem.line << ": " << problem.reason;
}

}  // namespace calorivo
