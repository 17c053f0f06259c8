#pragma once

#include "cli/Session.h"
#include "platform/Dispatch.h"

#include <string>
#include <vector>

namespace calorivo {

/// The whole program, for these arguments (without the program's name): writes its answer and its messages to
/// the streams, unflushed, and returns the exit code.
[[nodiscard]] int runProgram(const std::vector<std::string>& arguments, Surroundings& surroundings);

/// Every command but `watch` and `log`. `dispatch` gives the time and must run everything at once.
[[nodiscard]] int runCommand(const Options& options, Surroundings& surroundings, Dispatch& dispatch);

}  // namespace calorivo
