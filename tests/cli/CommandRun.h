#pragma once

#include "cli/InlineDispatch.h"
#include "cli/Program.h"
#include "platform/linux/LinuxFileManager.h"

#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

namespace calorivo::test {

/// What a command answered.
struct CommandAnswer {
    int code = 0;
    std::string out;
    std::string errors;
    friend bool operator==(const CommandAnswer&, const CommandAnswer&) = default;
};

inline void PrintTo(const CommandAnswer& answer, std::ostream* stream) {
    *stream << "exit " << answer.code << "\n--- out\n" << answer.out << "--- errors\n" << answer.errors;
}

/// Runs a command in this process, with the data of the source tree and the clock at 2024-03-05 14:07:09 UTC.
inline CommandAnswer runCommandLine(const std::vector<std::string>& arguments,
                                    LinuxPaths paths = {{}, {}, CALORIVO_SOURCE_DIR "/data"}) {
    const ParsedOptions parsed = parseOptions(arguments);
    if (!parsed.problem.empty() || !parsed.text.empty()) throw std::invalid_argument(parsed.problem);
    Output out;
    Output errors;
    LinuxFileManager files;
    Surroundings surroundings{files, std::move(paths), {out, errors}};
    InlineDispatch dispatch{WallTime(std::chrono::seconds(1709647629))};
    const int code = runCommand(parsed.options, surroundings, dispatch);
    return {code, out.text(), errors.text()};
}

}  // namespace calorivo::test
