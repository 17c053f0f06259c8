#pragma once

#include "cli/Session.h"

namespace calorivo {

/// Appends one row after another to a file, or prints them, until a signal, the number of cycles or a reader
/// that goes away ends it. Returns the exit code.
[[nodiscard]] int runLog(const Options& options, Surroundings& surroundings);

}  // namespace calorivo
