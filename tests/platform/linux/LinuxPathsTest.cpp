#include "platform/linux/LinuxPaths.h"

#include "platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <ostream>
#include <string>

namespace calorivo {

void PrintTo(const LinuxPaths& paths, std::ostream* out) {
    *out << "user " << paths.userFolder << ", state " << paths.stateFolder << ", data " << paths.dataFolder;
}

namespace {

Environment environment(std::map<std::string, std::string> variables) {
    return [variables = std::move(variables)](const char* name) {
        const auto found = variables.find(name);
        return found == variables.end() ? std::nullopt : std::optional(found->second);
    };
}

/// Folders that hold no data, so that the system's own are not seen.
constexpr const char* nowhere = "/nowhere";

TEST(LinuxPaths, AreInTheHomeFolderUnlessTheEnvironmentSaysOtherwise) {
    EXPECT_EQ(linuxPaths(environment({{"HOME", "/home/ada"}, {"XDG_DATA_DIRS", nowhere}}), ""),
              (LinuxPaths{"/home/ada/.config/calorivo", "/home/ada/.local/state/calorivo", ""}));
    EXPECT_EQ(linuxPaths(environment({{"HOME", "/home/ada"},
                                      {"XDG_CONFIG_HOME", "/etc/ada"},
                                      {"XDG_STATE_HOME", "/var/ada"},
                                      {"XDG_DATA_DIRS", nowhere}}),
                         ""),
              (LinuxPaths{"/etc/ada/calorivo", "/var/ada/calorivo", ""}));
}

TEST(LinuxPaths, VariablesThatAreEmptyOrRelativeCountAsUnset) {
    EXPECT_EQ(linuxPaths(environment({{"HOME", "/home/ada"},
                                      {"XDG_CONFIG_HOME", ""},
                                      {"XDG_STATE_HOME", "state"},
                                      {"XDG_DATA_DIRS", "share:./share"}}),
                         ""),
              (LinuxPaths{"/home/ada/.config/calorivo", "/home/ada/.local/state/calorivo", ""}));
    EXPECT_EQ(linuxPaths(environment({{"HOME", "ada"}, {"XDG_DATA_DIRS", nowhere}}), ""), LinuxPaths{});
}

TEST(LinuxPaths, DataStandsBesideTheProgramsFolder) {
    const TemporaryFolder folder;
    const std::string program = folder.path("usr/bin/calorivo-cli");
    const auto variables = environment({{"XDG_DATA_DIRS", nowhere}});
    EXPECT_EQ(linuxPaths(variables, program).dataFolder, "");
    std::filesystem::create_directories(folder.path("usr/share/calorivo"));
    EXPECT_EQ(linuxPaths(variables, program).dataFolder, folder.path("usr/share/calorivo"));
}

TEST(LinuxPaths, DataIsSoughtInTheSharedFoldersInOrder) {
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder.path("b/calorivo"));
    std::filesystem::create_directories(folder.path("c/calorivo"));
    const auto variables = environment(
        {{"XDG_DATA_DIRS", folder.path("a") + "::" + folder.path("b") + ":" + folder.path("c") + ":"}});
    EXPECT_EQ(linuxPaths(variables, "/nowhere/bin/calorivo-cli").dataFolder, folder.path("b/calorivo"));
}

TEST(LinuxPaths, SaysWhatIsWrongWithAFolder) {
    const TemporaryFolder folder;
    EXPECT_EQ(folderProblem(folder.path()), "");
    EXPECT_EQ(folderProblem(folder.path("absent")), "No such file or directory");
    EXPECT_EQ(folderProblem(folder.write("file", "text")), "Not a directory");
}

TEST(LinuxPaths, KnowsTheRunningProgram) {
    EXPECT_EQ(executablePath(), std::filesystem::canonical("/proc/self/exe").string());
}

}  // namespace
}  // namespace calorivo
