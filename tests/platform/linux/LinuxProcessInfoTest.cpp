#include "platform/linux/LinuxProcessInfo.h"

#include "platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace calorivo {
namespace {

/// The version string of a system with these files; an empty text stands for an absent file.
std::string versionOf(const std::string& etc, const std::string& usrLib, const std::string& kernel) {
    const TemporaryFolder root;
    for (const char* folder : {"etc", "usr/lib", "proc/sys/kernel"})
        std::filesystem::create_directories(root.path(folder));
    if (!etc.empty()) root.write("etc/os-release", etc);
    if (!usrLib.empty()) root.write("usr/lib/os-release", usrLib);
    if (!kernel.empty()) root.write("proc/sys/kernel/osrelease", kernel);
    return LinuxProcessInfo({}, root.path()).operatingSystemVersionString();
}

TEST(LinuxProcessInfo, TellsTheArgumentsAsTheyWereGiven) {
    const std::vector<std::string> arguments{"calorivo", "-custommodel", "Model 1,2", ""};
    EXPECT_EQ(LinuxProcessInfo(arguments).arguments(), arguments);
}

TEST(LinuxProcessInfo, NamesTheDistributionAndTheKernel) {
    struct Row {
        std::string etc;
        std::string usrLib;
        std::string kernel;
        std::string version;
    };
    const Row rows[] = {
        {"NAME=x\nPRETTY_NAME=\"Fakix 7 (bald)\"\n", "", "6.1.0-13-amd64\n",
         "Fakix 7 (bald), Linux 6.1.0-13-amd64"},
        {"", "PRETTY_NAME='Fakix 8'\n", "6.2.0\n", "Fakix 8, Linux 6.2.0"},
        // The two files are never mixed.
        {"NAME=Fakix\n", "PRETTY_NAME='Fakix 8'\n", "6.2.0\n", "Linux 6.2.0"},
        {"PRETTY_NAME=\"Fakix 9\"\n", "", "", "Fakix 9"},
        {"PRETTY_NAME=\"Fakix\x1B[31m 9\"\n", "", "6.2\n", "Fakix [31m 9, Linux 6.2"},
        {"", "", "6.3.0\n", "Linux 6.3.0"},
        {"PRETTY_NAME=Linux\n", "", "", "Linux"},
        {"", "", "", "Linux"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.etc + row.usrLib + row.kernel);
        EXPECT_EQ(versionOf(row.etc, row.usrLib, row.kernel), row.version);
    }
}

TEST(LinuxProcessInfo, ReadsValuesAsAShellWouldWithoutExpanding) {
    struct Row {
        std::string line;
        std::string value;
    };
    const Row rows[] = {
        {"KEY=bare", "bare"},
        {"KEY=bare words", "bare"},
        {"KEY=\"a \\\"b\\\" \\$c \\\\d \\`e \\f\"", "a \"b\" $c \\d `e \\f"},
        {"KEY='a \\b \"c\"'", "a \\b \"c\""},
        {"KEY=\"a\"'b'c\\ d", "abc d"},
        {"KEY=$HOME", "$HOME"},
        {"KEY=windows\r", "windows"},
        {"KEY=\"open", ""},
        {"KEY=", ""},
        {"KEY", ""},
        {"#KEY=x", ""},
        {"OTHERKEY=x\nKEYS=y", ""},
        {"KEY=1\nKEY=2\nKEY='", "2"},
        {"", ""},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.line);
        EXPECT_EQ(osReleaseValue(row.line, "KEY"), row.value);
    }
}

}  // namespace
}  // namespace calorivo
