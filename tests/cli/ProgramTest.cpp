#include "cli/CommandRun.h"
#include "platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace calorivo {
namespace {

using test::CommandAnswer;
using test::runCommandLine;
using Arguments = std::vector<std::string>;

constexpr const char* oneSensor = "  TC1C  [sp78]  (bytes 28 00)\n";

TEST(Program, AKeysFileThatCannotBeUsedIsNoAnswer) {
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo(folder.path("fifo").c_str(), 0600), 0);
    std::filesystem::resize_file(folder.write("huge", ""), std::uintmax_t{1} << 30);
    folder.write("latin1", "  TC1C  [sp78]  (bytes 28 00)\n  T\xE9\n");
    struct Row {
        std::string file;
        std::string reason;
    };
    const Row rows[] = {
        {"absent", ": No such file or directory"},
        {"", ": Is a directory"},
        {"fifo", ": Not a regular file"},
        {"huge", ": Larger than 4194304 bytes, the most that is read"},
        {"latin1", ":2: not UTF-8 text (byte 34)"},
    };
    for (const Row& row : rows)
        for (const char* command : {"list", "row", "keys", "fans", "why"}) {
            SCOPED_TRACE(row.file + " " + command);
            Arguments arguments{command, "--keysfile", folder.path(row.file)};
            if (std::string_view(command) == "why") arguments.emplace_back("TC1C");
            EXPECT_EQ(runCommandLine(arguments),
                      (CommandAnswer{exitNoAnswer, "",
                                     "calorivo-cli: " + folder.path(row.file) + row.reason + "\n"}));
        }
}

TEST(Program, ReportsTheLinesOfAKeysFileThatCannotBeUsedUpToTwenty) {
    const TemporaryFolder folder;
    std::string dump = oneSensor;
    for (int i = 0; i < 25; ++i) dump += "  TC2C  [sp78]  (bytes zz)\n";
    const CommandAnswer answer = runCommandLine({"list", "--keysfile", folder.write("dump", dump)});
    EXPECT_EQ(answer.code, exitAnswered);
    const std::string begin = "calorivo-cli: " + folder.path("dump") + ":2: ";
    EXPECT_EQ(answer.errors.substr(0, begin.size()), begin);
    EXPECT_EQ(std::count(answer.errors.begin(), answer.errors.end(), '\n'), 21);
    EXPECT_TRUE(answer.errors.ends_with("\ncalorivo-cli: and 5 more like these\n")) << answer.errors;
}

TEST(Program, AMachineWithoutSensorsIsAnAnswer) {
    const TemporaryFolder folder;
    const std::string dump = folder.write("dump", "nothing\n");
    EXPECT_EQ(
        runCommandLine({"list", "--keysfile", dump}),
        (CommandAnswer{exitAnswered, "", "calorivo-cli: " + dump + ": no temperatures in this keys file\n"}));
    EXPECT_EQ(runCommandLine({"row", "--keysfile", dump}).out,
              "Date,Time,CPU Average (C),Computer Average(C)\n2024-03-05,14:07:09,0,0\n");
    EXPECT_EQ(runCommandLine({"keys", "--keysfile", dump}), (CommandAnswer{exitAnswered, "", ""}));
    EXPECT_EQ(runCommandLine({"fans", "--keysfile", dump}),
              (CommandAnswer{exitNoAnswer, "", "calorivo-cli: the number of fans cannot be read\n"}));
}

TEST(Program, AnAreaWithoutSensorsIsAnAnswer) {
    EXPECT_EQ(runCommandLine({"list", "--area", "LCD", "--simulate=7"}),
              (CommandAnswer{exitAnswered, "", "calorivo-cli: no sensors in this area on this machine\n"}));
}

TEST(Program, AnUnknownKeyIsNoAnswer) {
    EXPECT_EQ(runCommandLine({"why", "Tz9z", "--simulate=7"}),
              (CommandAnswer{exitNoAnswer, "", "calorivo-cli: the key \"Tz9z\" is not known here\n"}));
}

TEST(Program, AFolderForSysThatIsNotThereIsNoAnswer) {
    EXPECT_EQ(runCommandLine({"list", "--sys", "/nowhere"}),
              (CommandAnswer{exitNoAnswer, "", "calorivo-cli: /nowhere: No such file or directory\n"}));
}

TEST(Program, BrokenModelTablesAreReportedAndNotFatal) {
    const TemporaryFolder folder;
    folder.write("broken.json", "{");
    folder.write("fine.json",
                 R"({"identifier": "Mine", "sensors": [{"key": "TC1C", "name": "Mine, 1", "area": "CPU"}]})");
    const CommandAnswer answer =
        runCommandLine({"row", "--simulate=7", "--custommodel", "Mine", "--model-tables", folder.path()});
    EXPECT_EQ(answer.code, exitAnswered);
    EXPECT_EQ(answer.out.substr(0, answer.out.find('\n')),
              "Date,Time,Mine, 1 (C),CPU Average (C),Computer Average(C)");
    EXPECT_TRUE(answer.errors.starts_with("calorivo-cli: " + folder.path("broken.json"))) << answer.errors;
}

TEST(Program, AFolderOfModelTablesThatIsNotThereIsReported) {
    const CommandAnswer answer = runCommandLine({"list", "--simulate=7", "--model-tables", "/nowhere"});
    EXPECT_EQ(answer.code, exitAnswered);
    EXPECT_EQ(answer.errors, "calorivo-cli: /nowhere: No such file or directory\n");
}

TEST(Program, TheUsersOwnModelTableWins) {
    const TemporaryFolder folder;
    std::filesystem::create_directory(folder.path("model-tables"));
    folder.write(
        "model-tables/mine.json",
        R"({"identifier": "MacBookPro11,5", "sensors": [{"key": "TC1C", "name": "Mine", "area": "CPU"}]})");
    const CommandAnswer answer = runCommandLine({"row", "--simulate=7", "--custommodel", "MacBookPro11,5"},
                                                {folder.path(), {}, CALORIVO_SOURCE_DIR "/data"});
    EXPECT_EQ(answer.out.substr(0, answer.out.find('\n')),
              "Date,Time,Mine (C),CPU Average (C),Computer Average(C)");
}

TEST(Program, NamesFromFilesCannotSteerTheTerminal) {
    const TemporaryFolder folder;
    folder.write("odd.json", R"({"identifier": "Odd", "sensors": [
        {"key": "TC1C", "name": "a\u001b[2Jb\nc", "area": "CPU"}]})");
    for (const char* command : {"list", "row", "why"}) {
        Arguments arguments{command, "--simulate=7", "--custommodel", "Odd", "--model-tables", folder.path()};
        if (std::string_view(command) == "why") arguments.emplace_back("TC1C");
        const CommandAnswer answer = runCommandLine(arguments);
        EXPECT_EQ(answer.out.find('\033'), std::string::npos) << answer.out;
    }
    EXPECT_EQ(runCommandLine({"list", "--simulate", "--custommodel", "X\033[2J"}).out.find('\033'),
              std::string::npos);
}

TEST(Program, TheDumpOfAllKeysIsAKeysFile) {
    const TemporaryFolder folder;
    const CommandAnswer dump = runCommandLine({"keys", "--simulate=7"});
    const std::string file = folder.write("dump", dump.out);
    EXPECT_EQ(runCommandLine({"keys", "--keysfile", file}), dump);
    EXPECT_EQ(runCommandLine({"fans", "--keysfile", file}), runCommandLine({"fans", "--simulate=7"}));
}

}  // namespace
}  // namespace calorivo
