#include "cli/CommandRun.h"
#include "platform/Format.h"
#include "platform/linux/TemporaryFolder.h"
#include "sensors/Areas.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

// The form of the object is a contract with scripts: names, order and kinds stay.

namespace calorivo {
namespace {

using JSON = nlohmann::ordered_json;
using Names = std::vector<std::string>;

JSON listed(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"list", "--json"});
    const test::CommandAnswer answer = test::runCommandLine(arguments);
    EXPECT_EQ(answer.code, exitAnswered);
    return JSON::parse(answer.out);
}

Names namesOf(const JSON& object) {
    Names names;
    for (const auto& [name, value] : object.items()) names.push_back(name);
    return names;
}

Names each(const JSON& array, const char* name) {
    Names texts;
    for (const JSON& element : array) texts.push_back(element[name]);
    return texts;
}

JSON listedDump(std::string_view dump, std::vector<std::string> arguments = {}) {
    const TemporaryFolder folder;
    arguments.insert(arguments.end(), {"--keysfile", folder.write("dump", dump)});
    return listed(arguments);
}

TEST(ListJSON, HasTheNamesOfTheContractInTheirOrder) {
    const JSON list = listed({"--simulate=7"});
    EXPECT_EQ(namesOf(list), (Names{"model", "source", "unit", "sensors", "averages", "fans", "drives"}));
    EXPECT_EQ(namesOf(list["averages"]), (Names{"all", "cpu", "rpm"}));
    EXPECT_EQ(namesOf(list["averages"]["all"]), (Names{"celsius", "text"}));
    EXPECT_EQ(namesOf(list["averages"]["cpu"]), (Names{"celsius", "text"}));
    EXPECT_EQ(namesOf(list["averages"]["rpm"]), (Names{"value", "text"}));
    ASSERT_FALSE(list["sensors"].empty());
    for (const JSON& sensor : list["sensors"])
        EXPECT_EQ(namesOf(sensor), (Names{"key", "name", "area", "areaTag", "celsius", "text", "valid"}));
    ASSERT_EQ(list["fans"].size(), 2U);
    for (const JSON& fan : list["fans"])
        EXPECT_EQ(namesOf(fan), (Names{"number", "name", "key", "rpm", "minRPM", "maxRPM", "warningRPM",
                                       "criticalRPM", "text"}));
}

TEST(ListJSON, HasTheKindsOfTheContract) {
    const JSON list = listed({"--simulate=7"});
    EXPECT_TRUE(list["model"].is_string());
    EXPECT_EQ(list["source"], "simulated");
    EXPECT_EQ(list["unit"], "C");
    for (const JSON& sensor : list["sensors"]) {
        for (const char* name : {"key", "name", "area", "text"}) EXPECT_TRUE(sensor[name].is_string());
        EXPECT_TRUE(sensor["areaTag"].is_number_integer());
        EXPECT_TRUE(sensor["celsius"].is_number_float());
        EXPECT_TRUE(sensor["valid"].is_boolean());
        EXPECT_EQ(areaNamed(sensor["area"].get<std::string>())->tag, sensor["areaTag"].get<int>());
    }
    for (const JSON& fan : list["fans"]) {
        for (const char* name : {"name", "key", "text"}) EXPECT_TRUE(fan[name].is_string());
        for (const char* name : {"number", "rpm", "minRPM", "maxRPM"})
            EXPECT_TRUE(fan[name].is_number_integer());
        for (const char* name : {"warningRPM", "criticalRPM"}) EXPECT_TRUE(fan[name].is_number_float());
    }
    EXPECT_TRUE(list["averages"]["all"]["celsius"].is_number_float());
    EXPECT_TRUE(list["averages"]["rpm"]["value"].is_number_integer());
}

TEST(ListJSON, KeepsTheOrderOfTheEngineAndItsDoubleEntries) {
    // Two rules take TCXc into the CPU area: it is listed twice and counts twice. Drives come last, not where
    // the source list has them.
    const JSON list = listedDump(
        "  TH0A  [sp78]  (bytes 1e 00)\n"
        "  TCXc  [sp78]  (bytes 28 00)\n"
        "  TB0T  [sp78]  (bytes 14 00)\n"
        "  TM0P  [sp78]  (bytes 14 00)\n");
    EXPECT_EQ(each(list["sensors"], "key"), (Names{"TCXc", "TCXc", "TB0T", "TM0P", "TH0A"}));
    EXPECT_EQ(each(list["sensors"], "area"), (Names{"CPU", "CPU", "Battery", "Memory", "Hard Drive"}));
    EXPECT_EQ(list["averages"]["all"],
              (JSON{{"celsius", (40.0 + 40.0 + 20.0 + 20.0 + 30.0) / 5}, {"text", "30°C"}}));
}

TEST(ListJSON, NamesAreExactAndReadingsUnconverted) {
    const JSON list = listedDump("  TC0P  [sp78]  (bytes 3c 40)\n", {"--fahrenheit"});
    const JSON expected = {{"key", "TC0P"},   {"name", "CPU Proximity "}, {"area", "CPU"}, {"areaTag", 0},
                           {"celsius", 60.0}, {"text", "140°F"},          {"valid", true}};
    EXPECT_EQ(list["sensors"], JSON::array({expected}));
    EXPECT_EQ(list["unit"], "F");
    EXPECT_EQ(list["model"], nullptr);
    EXPECT_EQ(list["source"], "keysfile");
}

TEST(ListJSON, AGPUSensorThatReadsZeroIsListed) {
    const JSON list = listedDump("  TG0D  [sp78]  (bytes 00 00)\n");
    EXPECT_EQ(list["sensors"][0]["celsius"], 0.0);
    EXPECT_EQ(list["sensors"][0]["text"], "N/A");
    EXPECT_EQ(list["sensors"][0]["valid"], false);
    EXPECT_EQ(list["averages"]["all"], (JSON{{"celsius", 0.0}, {"text", "N/A"}}));
}

TEST(ListJSON, IsWholeWithoutAnySensor) {
    const JSON list = listedDump("no values here\n");
    EXPECT_EQ(list["sensors"], JSON::array());
    EXPECT_EQ(list["fans"], JSON::array());
    EXPECT_EQ(list["averages"]["cpu"], (JSON{{"celsius", 0.0}, {"text", "N/A"}}));
    EXPECT_EQ(list["averages"]["rpm"]["value"], 0);
}

TEST(ListJSON, ShowsOneAreaWithTheAveragesOfAll) {
    const JSON all = listed({"--simulate=7"});
    const JSON battery = listed({"--simulate=7", "--area", "Battery"});
    EXPECT_EQ(each(battery["sensors"], "key"), (Names{"TB1T", "TB2T", "TB0T"}));
    EXPECT_EQ(battery["averages"], all["averages"]);
    EXPECT_EQ(listed({"--simulate=7", "--area", "all"}), all);
}

TEST(ListJSON, AveragesSayTheSameAsNumberAndAsText) {
    for (const char* file : {"imac.txt", "intel-laptop.txt", "mac-pro.txt"}) {
        const JSON list =
            listed({"--keysfile", std::string(CALORIVO_SOURCE_DIR "/tests/data/keysfiles/") + file});
        for (const char* name : {"all", "cpu"}) {
            const JSON& average = list["averages"][name];
            EXPECT_EQ(average["text"], format("%.0f\u00B0C", average["celsius"].get<double>())) << file;
        }
    }
}

TEST(ListJSON, StaysValidWithHostileNames) {
    const TemporaryFolder folder;
    folder.write("odd.json", R"({"identifier": "Odd", "sensors": [
        {"key": "TC0P", "name": "a\"b\\c\u001b[2J\n\u2028", "area": "CPU"}]})");
    const JSON list = listed({"--simulate=7", "--custommodel", "Odd", "--model-tables", folder.path()});
    EXPECT_EQ(list["model"], "Odd");
    EXPECT_NO_THROW((void)list.dump());
}

}  // namespace
}  // namespace calorivo
