#include "desktop/DesktopOptions.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

using Arguments = std::vector<std::string>;

DesktopOptions parsed(const Arguments& arguments) {
    const ParsedDesktopOptions result = parseDesktopOptions(arguments);
    EXPECT_EQ(result.text, "");
    EXPECT_EQ(result.problem, "");
    return result.options;
}

TEST(DesktopOptions, AreEmptyWithoutArguments) { EXPECT_EQ(parsed({}), DesktopOptions{}); }

TEST(DesktopOptions, TakeEachOption) {
    DesktopOptions all;
    all.isStartedAtLogin = true;
    all.isShowingPreferences = true;
    all.isUsingAllChips = true;
    all.sys = "/tmp/sys";
    all.customModel = "Notebook9,9";
    all.modelTables = "/tmp/tables";
    EXPECT_EQ(parsed({"--login", "--preferences", "--all-chips", "--sys", "/tmp/sys",
                      "--custommodel=Notebook9,9", "--model-tables", "/tmp/tables"}),
              all);
}

TEST(DesktopOptions, KnowTheOldSpellingWithOneDash) {
    DesktopOptions options;
    options.keysFile = "dump.txt";
    options.customModel = "Model1,1";
    EXPECT_EQ(parsed({"-custommodel", "Model1,1", "-keysfile", "dump.txt"}), options);
    EXPECT_EQ(processArguments(options),
              (ProcessArguments{"calorivo", "-custommodel", "Model1,1", "-keysfile", "dump.txt"}));
}

TEST(DesktopOptions, PutTheKeysFileWhereTheEngineLooksForIt) {
    DesktopOptions options;
    options.keysFile = "dump.txt";
    EXPECT_EQ(processArguments(options), (ProcessArguments{"calorivo", "-keysfile", "dump.txt"}));
    EXPECT_EQ(processArguments({}), (ProcessArguments{"calorivo"}));
}

TEST(DesktopOptions, TakeASeedOnlyWithAnEqualsSign) {
    EXPECT_EQ(parsed({"--simulate"}).simulationSeed, 1U);
    EXPECT_EQ(parsed({"--simulate=77"}).simulationSeed, 77U);
    EXPECT_EQ(parsed({"--simulate", "--login"}).simulationSeed, 1U);
}

TEST(DesktopOptions, SayWhatIsWrong) {
    struct Row {
        Arguments arguments;
        std::string problem;
    };
    const Row rows[] = {
        {{"--simulate=x"}, "--simulate: a seed is a whole number from 0 on"},
        {{"--simulate", "--sys", "/tmp"}, "--keysfile, --simulate and --sys exclude one another"},
        {{"--keysfile", ""}, "--keysfile: an empty value"},
        {{"--colour"},
         "The following argument was not expected: --colour; calorivo --help lists the options"},
        {{"--keysfile"}, "--keysfile: 1 required value missing; calorivo --help lists the options"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.arguments.front());
        EXPECT_EQ(parseDesktopOptions(row.arguments).problem, row.problem);
    }
}

TEST(DesktopOptions, AnswerHelpAndVersionWhateverElseIsAsked) {
    EXPECT_EQ(parseDesktopOptions({"--sys", "/x", "--help"}).text.substr(0, 30),
              "Usage: calorivo [OPTION]...\nWa");
    EXPECT_EQ(parseDesktopOptions({"--version"}).text, "calorivo " CALORIVO_VERSION "\n");
}

}  // namespace
}  // namespace calorivo
