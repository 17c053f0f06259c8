#pragma once

#include "platform/linux/LinuxPaths.h"

#include <optional>
#include <string>

namespace calorivo {

/// The program as its user has it: a single file, or a folder with everything in it.
struct ProgramBundle {
    std::string path;
    /// Of a folder: the program within it ("bin/calorivo"); empty for a single file.
    std::string executable = {};
    friend bool operator==(const ProgramBundle&, const ProgramBundle&) = default;

    /// The file to run when the bundle stands at `destination`.
    [[nodiscard]] std::string executableAt(const std::string& destination) const {
        return executable.empty() ? destination : destination + '/' + executable;
    }
};

/// The running program's bundle: the AppImage that it runs from, or the unpacked archive around "bin", known
/// by the empty file "portable" in it. None for everything else: a program that was installed, or just built,
/// is no matter of its user. `executablePath` is the program's real path.
[[nodiscard]] std::optional<ProgramBundle> programBundle(const Environment& environment,
                                                         const std::string& executablePath);

}  // namespace calorivo
