#pragma once

#include "cli/Session.h"

namespace calorivo {

/// Checks again and again until a key, a signal or the number of cycles ends it, then prints a summary.
/// Returns the exit code.
[[nodiscard]] int runWatch(const Options& options, Surroundings& surroundings);

}  // namespace calorivo
