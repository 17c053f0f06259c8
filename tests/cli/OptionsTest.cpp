#include "cli/Options.h"

#include "cli/Help.h"
#include "cli/OptionTable.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace calorivo {

void PrintTo(const Options& options, std::ostream* out) {
    *out << nameOf(options.command) << " key=" << options.key << " serial=" << options.serial
         << " interval=" << options.interval.count();
}

namespace {

using Arguments = std::vector<std::string>;

Options optionsOf(const Arguments& arguments) {
    const ParsedOptions parsed = parseOptions(arguments);
    EXPECT_EQ(parsed.problem, "");
    EXPECT_EQ(parsed.text, "");
    return parsed.options;
}

Options with(Command command, void (*change)(Options&)) {
    Options options;
    options.command = command;
    change(options);
    return options;
}

TEST(Options, ReadEveryOption) {
    struct Row {
        Arguments arguments;
        Options options;
    };
    const Row rows[] = {
        {{}, {}},
        {{"list"}, {}},
        {{"--json"}, with(Command::list, [](Options& o) { o.isJSON = true; })},
        {{"--json", "list", "--fahrenheit"},
         with(Command::list, [](Options& o) { o.isJSON = o.isFahrenheit = true; })},
        {{"list", "--area", "hard drive"}, with(Command::list, [](Options& o) { o.areaTag = 2; })},
        {{"list", "--area=All"}, with(Command::list, [](Options& o) { o.areaTag = 17; })},
        {{"--simulate"}, with(Command::list, [](Options& o) { o.simulationSeed = 1; })},
        {{"--simulate=7", "keys"}, with(Command::keys, [](Options& o) { o.simulationSeed = 7; })},
        {{"--simulate", "fans"}, with(Command::fans, [](Options& o) { o.simulationSeed = 1; })},
        {{"why", "--simulate", "TC0P"},
         with(Command::why,
              [](Options& o) {
                  o.simulationSeed = 1;
                  o.key = o.serial = "TC0P";
              })},
        {{"why", "FS!"},
         with(Command::why,
              [](Options& o) {
                  o.key = "FS! ";
                  o.serial = "FS!";
              })},
        {{"why", "--", "-abc"}, with(Command::why, [](Options& o) { o.key = o.serial = "-abc"; })},
        {{"why", "WX12-0042"}, with(Command::why, [](Options& o) { o.serial = "WX12-0042"; })},
        {{"drives", "--json", "--fahrenheit"},
         with(Command::drives, [](Options& o) { o.isJSON = o.isFahrenheit = true; })},
        {{"row", "--fans", "--keysfile", "list"},
         with(Command::row,
              [](Options& o) {
                  o.isWithFans = true;
                  o.keysFile = "list";
              })},
        {{"-custommodel", "MacPro6,1", "-keysfile", "dump.txt"},
         with(Command::list,
              [](Options& o) {
                  o.customModel = "MacPro6,1";
                  o.keysFile = "dump.txt";
              })},
        {{"keys", "-keysfile", "-keysfile"},
         with(Command::keys, [](Options& o) { o.keysFile = "-keysfile"; })},
        {{"--sys", "/tree", "--model-tables", "tables", "--all-chips"},
         with(Command::list,
              [](Options& o) {
                  o.sys = "/tree";
                  o.modelTables = "tables";
                  o.isUsingAllChips = true;
              })},
        {{"watch", "--interval", "0.25", "--cycles", "3", "--quiet"},
         with(Command::watch,
              [](Options& o) {
                  o.interval = std::chrono::milliseconds(250);
                  o.cycles = 3;
                  o.isQuiet = true;
              })},
        {{"--interval=0", "watch"}, with(Command::watch, [](Options& o) { o.interval = {}; })},
        {{"log"}, with(Command::log, [](Options&) {})},
        {{"log", "my log.csv", "--interval", "2", "--cycles=4", "--fans", "--drives", "--fahrenheit"},
         with(Command::log,
              [](Options& o) {
                  o.logFile = "my log.csv";
                  o.interval = std::chrono::seconds(2);
                  o.cycles = 4;
                  o.isWithFans = o.isWithDrives = o.isFahrenheit = true;
              })},
        {{"log", "--print"}, with(Command::log, [](Options& o) { o.isPrinting = true; })},
        {{"--simulate=1", "--simulate=2"}, with(Command::list, [](Options& o) { o.simulationSeed = 2; })},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.arguments));
        EXPECT_EQ(optionsOf(row.arguments), row.options);
    }
}

TEST(Options, WrongUseIsNamed) {
    struct Row {
        Arguments arguments;
        std::string problem;
    };
    const Row rows[] = {
        {{"lsit"}, "unknown command \"lsit\"; calorivo-cli --help lists them"},
        {{"why"}, "why needs a key, for example TC0P, or the serial number of a drive"},
        {{"why", ""}, "a key has four characters"},
        {{"--simulate=x"}, "--simulate: a seed is a whole number from 0 on"},
        {{"--simulate=-1"}, "--simulate: a seed is a whole number from 0 on"},
        {{"--json=yes"}, "--json: takes no value"},
        {{"--keysfile", ""}, "--keysfile: an empty value"},
        {{"watch", "--interval", "-1"}, "--interval: an interval is a number of seconds from 0 to 86400"},
        {{"watch", "--interval", "nan"}, "--interval: an interval is a number of seconds from 0 to 86400"},
        {{"watch", "--interval", "86401"}, "--interval: an interval is a number of seconds from 0 to 86400"},
        {{"watch", "--interval", "5s"}, "--interval: an interval is a number of seconds from 0 to 86400"},
        {{"watch", "--cycles", "0"}, "--cycles: a number of cycles is a whole number from 1 on"},
        {{"log", "--interval", "0"}, "--interval: log needs a pause between two rows"},
        {{"log", ""}, "an empty file name"},
        {{"log", "--print", "file"}, "--print and a file exclude one another"},
        {{"--simulate", "--sys", "/x"}, "--keysfile, --simulate and --sys exclude one another"},
        {{"--keysfile", "f", "--simulate"}, "--keysfile, --simulate and --sys exclude one another"},
        {{"--area", "Basement"},
         "--area: unknown area \"Basement\"; the areas are: All, CPU, CPU Relative, GPU, Battery, Enclosure, "
         "Hard Drive, LCD, Logic Board, Memory, Northbridge, Optical Drive, Palm Rest, PCI, Power Supply, "
         "Thunderbolt, Wireless"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(testing::PrintToString(row.arguments));
        EXPECT_EQ(parseOptions(row.arguments).problem, row.problem);
    }
}

TEST(Options, UnknownAndMisplacedOptionsAreWrongUse) {
    for (const Arguments& arguments :
         {Arguments{"--colour"}, Arguments{"keys", "--json"}, Arguments{"list", "--interval", "3"},
          Arguments{"--keysfile"}, Arguments{"list", "extra"}, Arguments{"why", "TC0P", "TC1P"},
          Arguments{"-x"}})
        EXPECT_NE(parseOptions(arguments).problem, "") << testing::PrintToString(arguments);
}

TEST(Options, HelpAndVersionArePrintedInPlaceOfAnAnswer) {
    for (const Arguments& arguments :
         {Arguments{"--help"}, Arguments{"watch", "-h"}, Arguments{"why", "--help"}})
        EXPECT_EQ(parseOptions(arguments).text, helpText());
    EXPECT_EQ(parseOptions({"--version"}).text, versionText());
    EXPECT_EQ(versionText().substr(0, 13), "calorivo-cli ");
}

TEST(Options, HelpNamesEveryCommandAndOptionWithinEightyColumns) {
    const std::string help = helpText();
    for (const CommandRow& command : commandRows()) {
        EXPECT_NE(help.find(std::string("\n  ") + command.name), std::string::npos) << command.name;
        for (const OptionRow& row : command.options)
            EXPECT_NE(help.find(std::string("\n    ") + row.name), std::string::npos) << row.name;
    }
    for (const OptionRow& row : commonOptionRows())
        EXPECT_NE(help.find(std::string("\n  ") + row.name), std::string::npos) << row.name;
    for (std::size_t at = 0; at < help.size();) {
        const std::size_t end = help.find('\n', at);
        EXPECT_LE(end - at, 80U) << help.substr(at, end - at);
        at = end + 1;
    }
}

TEST(Options, TheTableOfCommandsIsInTheOrderOfTheEnumeration) {
    std::size_t position = 0;
    for (const CommandRow& row : commandRows()) EXPECT_EQ(static_cast<std::size_t>(row.command), position++);
}

}  // namespace
}  // namespace calorivo
