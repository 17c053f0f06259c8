#include "cli/CommandRun.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdlib>
#include <fstream>
#include <ostream>
#include <sstream>
#include <string>
#include <vector>

// Whole outputs against the files in tests/golden/cli. With CALORIVO_UPDATE_GOLDEN set the files are written
// anew: look at what changed before it is kept.

namespace calorivo {
namespace {

struct GoldenRow {
    const char* file;
    std::vector<std::string> arguments;
};
void PrintTo(const GoldenRow& row, std::ostream* out) { *out << row.file; }

const GoldenRow goldenRows[] = {
    {"list-simulated.txt", {"--simulate=7"}},
    {"list-simulated-fahrenheit.txt", {"list", "--simulate=7", "--fahrenheit"}},
    {"list-simulated-battery.txt", {"list", "--area", "battery", "--simulate=7"}},
    {"list-simulated.json", {"list", "--simulate=7", "--json"}},
    {"list-simulated-table.txt", {"list", "--simulate=7", "--custommodel", "MacBookPro11,5"}},
    {"keys-simulated.txt", {"keys", "--simulate=7"}},
    {"fans-simulated.txt", {"fans", "--simulate=7"}},
    {"row-simulated.csv", {"row", "--simulate=7"}},
    {"row-simulated-fans.csv", {"row", "--simulate=7", "--fans", "--fahrenheit"}},
    {"why-simulated-TC0P.txt", {"why", "TC0P", "--simulate=7"}},
    {"why-simulated-TA0P.txt", {"why", "TA0P", "--simulate=7"}},
    {"why-simulated-F0Ac.txt", {"why", "F0Ac", "--simulate=7"}},
    {"why-simulated-TG1D.json", {"why", "TG1D", "--simulate=7", "--json"}},
};

struct Golden : testing::TestWithParam<GoldenRow> {};

TEST_P(Golden, OutputIsAsKept) {
    const std::string path = std::string(CALORIVO_SOURCE_DIR "/tests/golden/cli/") + GetParam().file;
    const test::CommandAnswer answer = test::runCommandLine(GetParam().arguments);
    EXPECT_EQ(answer.code, exitAnswered);
    EXPECT_EQ(answer.errors, "");
    if (std::getenv("CALORIVO_UPDATE_GOLDEN") != nullptr) std::ofstream(path) << answer.out;
    std::ostringstream kept;
    kept << std::ifstream(path).rdbuf();
    EXPECT_EQ(answer.out, kept.str());
}

INSTANTIATE_TEST_SUITE_P(Program, Golden, testing::ValuesIn(goldenRows), [](const auto& row) {
    std::string name = row.param.file;
    for (char& c : name)
        if (std::isalnum(static_cast<unsigned char>(c)) == 0) c = '_';
    return name;
});

}  // namespace
}  // namespace calorivo
