#pragma once

#include <functional>
#include <optional>
#include <string>

namespace calorivo {

/// A variable of the environment; none when it is not set.
using Environment = std::function<std::optional<std::string>(const char* name)>;
[[nodiscard]] std::optional<std::string> processEnvironment(const char* name);

/// The folders that belong to this program. Each may be empty: then there is none.
struct LinuxPaths {
    /// The user's own additions: "$XDG_CONFIG_HOME/calorivo".
    std::string userFolder;
    /// What the program remembers between two runs: "$XDG_STATE_HOME/calorivo".
    std::string stateFolder;
    /// What the program came with.
    std::string dataFolder;
    friend bool operator==(const LinuxPaths&, const LinuxPaths&) = default;
};

/// Variables that are unset, empty or not absolute count as unset. The data folder stands beside the
/// program's own folder, as "../share/calorivo": where it is installed and where it is built; without one
/// there, it is sought in the folders of XDG_DATA_DIRS. `executable` is the program's real path, empty when
/// it is not known.
[[nodiscard]] LinuxPaths linuxPaths(const Environment& environment, const std::string& executable);

/// What is wrong with a folder that somebody named ("No such file or directory"); empty when nothing is.
[[nodiscard]] std::string folderProblem(const std::string& path);

/// The path of the running program; empty when the system does not tell.
[[nodiscard]] std::string executablePath();

}  // namespace calorivo
