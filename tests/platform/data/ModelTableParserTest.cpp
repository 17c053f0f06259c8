#include "platform/data/ModelTableFiles.h"

#include "platform/data/AreaNames.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace calorivo::test {
namespace {

using Entries = std::vector<ModelTableEntry>;
using Texts = std::vector<std::string>;

ModelTableFiles parsed(std::string_view text) { return parseModelTable(text, "t.json", areaNames); }

std::string withSensors(const std::string& sensors) {
    return R"({"identifier": "Box1,2", "sensors": [)" + sensors + "]}";
}

constexpr const char* goodSensor = R"({"key": "TC7C", "name": "Core Seven", "area": "CPU"})";

TEST(ModelTableParser, ReadsATable) {
    const ModelTableFiles files = parsed(R"({
        "comment": "of our own",
        "identifier": "Box1,2",
        "sensors": [
            {"key": "TC7C", "name": "Core Seven", "area": "CPU"},
            {"area": "Hard Drive", "name": "\u00c4u\u00dferes Laufwerk", "key": "TH 9"}
        ]})");
    EXPECT_EQ(files.problems, Texts{});
    const ModelTable table{"Box1,2",
                           {{"TC7C", "Core Seven", "CPU"}, {"TH 9", "Äußeres Laufwerk", "Hard Drive"}}};
    EXPECT_EQ(files.tables, std::vector{table});
}

struct Broken {
    std::string text;
    std::string problem;
};

/// Each gives no table and this one problem.
void expectProblems(const std::vector<Broken>& table) {
    for (const Broken& broken : table) {
        SCOPED_TRACE(broken.text.substr(0, 200));
        const ModelTableFiles files = parsed(broken.text);
        EXPECT_EQ(files.problems, Texts{broken.problem});
        EXPECT_TRUE(files.tables.empty());
    }
}

TEST(ModelTableParser, TellsWhereATextIsNotJson) {
    expectProblems(
        {Broken{"",
                "t.json:1:1: syntax error while parsing value - unexpected end of input; expected '[', '{', "
                "or a literal"},
         Broken{"{\n  \"identifier\": x\n}",
                "t.json:2:17: syntax error while parsing value - invalid literal"},
         Broken{"{}\n{}",
                "t.json:2:1: syntax error while parsing value - unexpected '{'; expected end of input"},
         Broken{"{\"identifier\": \"\xff\"}",
                "t.json:1:17: syntax error while parsing value - invalid string: ill-formed UTF-8 byte"},
         Broken{"{\"identifier\": \"a\nb\"}",
                "t.json:1:18: syntax error while parsing value - invalid string: control character U+000A "
                "(LF) must be escaped to \\u000A or \\n"},
         Broken{R"({"identifier": "a", "identifier": "b"})", R"(t.json: member "identifier" given twice)"},
         Broken{withSensors(R"({"key": "TC7C", "key": "TC8C"})"), R"(t.json: member "key" given twice)"},
         Broken{withSensors(R"({"key": [[]]})"), "t.json: nested too deeply"},
         Broken{std::string(100000, '['), "t.json: nested too deeply"}});
}

TEST(ModelTableParser, RefusesAnotherShape) {
    expectProblems({Broken{"[]", "t.json: not an object"}, Broken{"null", "t.json: not an object"},
                    Broken{"{}", "t.json: identifier is missing"},
                    Broken{R"({"sensors": []})", "t.json: identifier is missing"},
                    Broken{R"({"identifier": 7})", "t.json: identifier is not a text"},
                    Broken{R"({"identifier": ""})", "t.json: identifier is empty"},
                    Broken{R"({"identifier": "a\nb"})", "t.json: identifier has control characters"},
                    Broken{R"({"identifier": "a"})", "t.json: sensors is missing"},
                    Broken{R"({"identifier": "a", "sensors": {}})", "t.json: sensors is not a list"},
                    Broken{R"({"identifier": "a", "sensors": []})", "t.json: sensors is empty"},
                    Broken{R"({"identifier": "a", "sensor": []})", R"(t.json: unknown member "sensor")"},
                    Broken{R"({"identifier": "a", "\u001b[2J": 1})", R"(t.json: unknown member "?[2J")"},
                    Broken{R"({"identifier": "a", "comment": 1})", "t.json: comment is not a text"}});
}

TEST(ModelTableParser, TellsTheEntryThatIsWrong) {
    expectProblems(
        {Broken{withSensors("1"), "t.json: entry 1: not an object"},
         Broken{withSensors("{}"), "t.json: entry 1: key is missing"},
         Broken{withSensors(R"({"key": 4})"), "t.json: entry 1: key is not a text"},
         Broken{withSensors(std::string(goodSensor) + R"(, {"key": "TC0"})"),
                R"(t.json: entry 2 (key "TC0"): the key is not four printable ASCII characters)"},
         Broken{withSensors(R"({"key": "TC0PX"})"),
                R"(t.json: entry 1 (key "TC0PX"): the key is not four printable ASCII characters)"},
         Broken{withSensors(R"({"key": "T\u0007xy"})"),
                R"(t.json: entry 1 (key "T?xy"): the key is not four printable ASCII characters)"},
         Broken{withSensors(R"({"key": "T\u00e4x"})"),
                R"(t.json: entry 1 (key "T??x"): the key is not four printable ASCII characters)"},
         Broken{withSensors(R"({"key": "F0Ac"})"),
                R"(t.json: entry 1 (key "F0Ac"): the key does not begin with T)"},
         Broken{withSensors(R"({"key": "tC0P"})"),
                R"(t.json: entry 1 (key "tC0P"): the key does not begin with T)"},
         Broken{withSensors(R"({"key": "TC7C"})"), R"(t.json: entry 1 (key "TC7C"): name is missing)"},
         Broken{withSensors(R"({"key": "TC7C", "name": null})"),
                R"(t.json: entry 1 (key "TC7C"): name is not a text)"},
         Broken{withSensors(R"({"key": "TC7C", "name": " "})"),
                R"(t.json: entry 1 (key "TC7C"): name is empty)"},
         Broken{withSensors(R"({"key": "TC7C", "name": "a\tb"})"),
                R"(t.json: entry 1 (key "TC7C"): name has control characters)"},
         Broken{withSensors(R"({"key": "TC7C", "name": "a\u0085b"})"),
                R"(t.json: entry 1 (key "TC7C"): name has control characters)"},
         Broken{withSensors(R"({"key": "TC7C", "name": ")" + std::string(101, 'n') + "\"}"),
                R"(t.json: entry 1 (key "TC7C"): name is longer than 100 bytes)"},
         Broken{withSensors(R"({"key": "TC7C", "name": "n"})"),
                R"(t.json: entry 1 (key "TC7C"): area is missing)"},
         Broken{withSensors(R"({"key": "TC7C", "name": "n", "area": []})"),
                R"(t.json: entry 1 (key "TC7C"): area is not a text)"},
         Broken{withSensors(R"({"key": "TC7C", "name": "n", "area": "cpu"})"),
                R"(t.json: entry 1 (key "TC7C"): unknown area "cpu")"},
         Broken{withSensors(R"({"key": "TC7C", "name": "n", "area": "All"})"),
                R"(t.json: entry 1 (key "TC7C"): unknown area "All")"},
         Broken{withSensors(R"({"key": "TC7C", "name": "n", "area": ")" + std::string(50, 'a') + "\"}"),
                R"(t.json: entry 1 (key "TC7C"): unknown area ")" + std::string(40, 'a') + "...\""},
         Broken{withSensors(R"({"key": "TC7C", "name": "n", "area": "CPU", "unit": "F"})"),
                R"(t.json: entry 1 (key "TC7C"): unknown member "unit")"},
         Broken{withSensors(std::string(goodSensor) + "," + goodSensor),
                R"(t.json: entry 2 (key "TC7C"): the key is given twice)"}});
}

TEST(ModelTableParser, TakesAThousandEntriesAndNotOneMore) {
    std::string sensors = R"({"key": "TTTT", "name": "n", "area": "PCI"})";
    for (int i = 1; i < 1000; ++i)
        sensors +=
            R"(, {"key": "T)" + std::to_string(1000 + i).substr(1) + R"(", "name": "n", "area": "PCI"})";
    EXPECT_EQ(parsed(withSensors(sensors)).tables.at(0).entries.size(), 1000U);
    const ModelTableFiles files = parsed(withSensors(sensors + ", " + goodSensor));
    EXPECT_EQ(files.problems, Texts{"t.json: sensors has more than 1000 entries"});
    EXPECT_TRUE(files.tables.empty());
}

TEST(ModelTableParser, TakesANameOfAHundredBytes) {
    const std::string name(100, 'n');
    const ModelTableFiles files =
        parsed(withSensors(R"({"key": "TC7C", "name": ")" + name + R"(", "area": "LCD"})"));
    EXPECT_EQ(files.problems, Texts{});
    EXPECT_EQ(files.tables.at(0).entries, (Entries{{"TC7C", name, "LCD"}}));
}

}  // namespace
}  // namespace calorivo::test
