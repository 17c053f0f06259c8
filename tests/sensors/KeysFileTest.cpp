#include "sensors/KeysFile.h"

#include "support/PrintKeys.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace calorivo {
namespace {

using namespace std::string_view_literals;
using Entries = std::vector<KeysFileEntry>;
using Problems = std::vector<KeysFileProblem>;

Entries entries(std::string_view text) { return parseKeysFile(text).entries; }

/// The temperature of a GPU sensor, which is kept whatever it is.
int degrees(std::string_view bytes) {
    const Entries found = entries("TG0D [sp78] (bytes " + std::string(bytes) + ")");
    return found.size() == 1 ? found.front().temperature : -999;
}

TEST(KeysFile, ReadsTheTemperaturesOfADump) {
    constexpr std::string_view dump =
        "  #KEY  [ui32]  261 (bytes 00 00 01 05)\n"
        "  F0Ac  [fpe2]  2000 (bytes 1f 40)\n"
        "  TC0P  [sp78]  (bytes 3c 40)\n"
        "  TC0c  [sp78]  (bytes 41 80)\n"
        "  TNTM  [ui8 ]  5 (bytes 05)\n"
        "  Th1H  [sp78]  (bytes 2b 00)\n"
        "  B0Te  [sp78]  (bytes 2b 00)\n";
    const KeysFile file = parseKeysFile(dump);
    EXPECT_EQ(file.entries, (Entries{{"TC0P", 60}, {"TC0c", 64}, {"Th1H", 43}}));
    EXPECT_EQ(file.problems, Problems{});
}

TEST(KeysFile, KeepsInvalidTemperaturesOfTheFourGPUKeysOnly) {
    for (const std::string_view key : {"TG0D", "TG0P", "TG1D", "TG1P"}) {
        EXPECT_EQ(entries(std::string(key) + "  [sp78]  (bytes 00 00)"), (Entries{{SensorKey(key), 0}}));
        EXPECT_EQ(entries(std::string(key) + "  [sp78]  (bytes 80 00)"), (Entries{{SensorKey(key), -128}}));
        EXPECT_EQ(entries(std::string(key) + "  [sp78]  (bytes 7f 00)"), (Entries{{SensorKey(key), 127}}));
    }
    for (const std::string key : {"TC0P", "TG0T", "TG2D", "TG0d"})
        for (const std::string bytes : {"00 00", "80 00", "7f 00", "78 00", "00 7f"})
            EXPECT_EQ(entries(key + "  [sp78]  (bytes " + bytes + ")"), Entries{}) << key << bytes;
}

TEST(KeysFile, KeepsTemperaturesFrom1To119) {
    EXPECT_EQ(entries("TC0P [sp78] (bytes 01 00)\nTC1P [sp78] (bytes 77 7f)\n"),
              (Entries{{"TC0P", 1}, {"TC1P", 119}}));
}

TEST(KeysFile, DropsTheFractionTowardZero) {
    EXPECT_EQ(degrees("3c 40"), 60);
    EXPECT_EQ(degrees("3c 7f"), 60);
    EXPECT_EQ(degrees("ff 40"), 0);
    EXPECT_EQ(degrees("fe 40"), -1);
}

TEST(KeysFile, TakesTheLowByteAsSigned) {
    EXPECT_EQ(degrees("32 80"), 49);
    EXPECT_EQ(degrees("32 ff"), 49);
    EXPECT_EQ(degrees("33 00"), 51);
}

TEST(KeysFile, ReadsHexadecimalNumbersAsScanningDoes) {
    struct Row {
        std::string_view bytes;
        int degrees;
    };
    const std::array rows{
        Row{"3c40", 60},
        Row{"3C 4F", 60},
        Row{"  3 c 4  0 ", 60},
        Row{"3c\t40", 60},
        Row{"0x3c40", 60},
        Row{"0X3c 40", 60},
        Row{"+3c40", 60},
        Row{"-3c40", -61},
        Row{"+0x3c40", 60},
        Row{"3c 40 zz 12", 60},
        Row{"3c", 0},
        Row{"0x", 0},
        Row{"0xzz", 0},
        Row{"11 22 3c 40", 60},
        Row{"11 22 33 44 55 66 77 88 99 aa bb cc dd ee ff 00 11 22 3c 40", 60},
    };
    for (const Row& row : rows) EXPECT_EQ(degrees(row.bytes), row.degrees) << row.bytes;
}

TEST(KeysFile, TrimsEveryLineAndTakesEitherKindOfLineEnd) {
    EXPECT_EQ(entries("TC0P [sp78] (bytes 3c 00)\r\n \t TC1P [sp78] (bytes 3d 00) \t\r\n\r\n\n"
                      "TC2P [sp78] (bytes 3e 00)\rTC3P [sp78] (bytes 3f 00)"),
              (Entries{{"TC0P", 60}, {"TC1P", 61}, {"TC2P", 62}, {"TC3P", 63}}));
}

TEST(KeysFile, PassesOverLinesOfAnyOtherKind) {
    const KeysFile file = parseKeysFile(
        "\n \nhello\ntC0P [sp78] (bytes 3c 00)\nTC0P [SP78] (bytes 3c 00)\nTC0P sp78 (bytes 3c 00)\n"
        "TC0P [fpe2] (bytes 3c 00)\n# TC0P [sp78] (bytes 3c 00)\nT\n[sp78]\n");
    EXPECT_EQ(file.entries, Entries{});
    EXPECT_EQ(file.problems, Problems{});
}

TEST(KeysFile, TakesTheFirstBytesAndTheFirstClosingBracket) {
    EXPECT_EQ(entries("TC0P [sp78] (bytes 3c 00) (bytes 41 00)"), (Entries{{"TC0P", 60}}));
    EXPECT_EQ(entries("TC0P bytes 3c 00) [sp78]"), (Entries{{"TC0P", 60}}));
}

TEST(KeysFile, TakesAKeyFoundTwiceTwice) {
    EXPECT_EQ(entries("TC0P [sp78] (bytes 3c 00)\nTC0P [sp78] (bytes 3d 00)\n"),
              (Entries{{"TC0P", 60}, {"TC0P", 61}}));
}

TEST(KeysFile, TellsWhichLinesCouldNotBeUsed) {
    const KeysFile file = parseKeysFile(
        "TC0P [sp78] (bytes 3c 00)\r\n"
        "TC1P [sp78] no data\r\n"
        "TC2P [sp78] (bytes 3c 00\n"
        "\r\n"
        "TC3P [sp78] (bytes zz)\n"
        "TC4P [sp78] (bytes )\n"
        "TC5P (old) [sp78] (bytes 3c 00)\n"
        "TC\xc3\xa9 [sp78] (bytes 3c 00)\n");
    EXPECT_EQ(file.entries, (Entries{{"TC0P", 60}}));
    EXPECT_EQ(file.problems, (Problems{{2, "no \"bytes \""},
                                       {3, "no \")\""},
                                       {5, "no hexadecimal digits after \"bytes \""},
                                       {6, "no hexadecimal digits after \"bytes \""},
                                       {7, "the first \")\" stands before the bytes"},
                                       {8, "the key is not four ASCII characters"}}));
}

TEST(KeysFile, CountsAGPUSensorWithoutAValueAs0) {
    const KeysFile file = parseKeysFile("TG1D [sp78] no data\nTG0P [sp78] (bytes ?)\n");
    EXPECT_EQ(file.entries, (Entries{{"TG1D", 0}, {"TG0P", 0}}));
    EXPECT_EQ(file.problems.size(), 2U);
}

TEST(KeysFile, PassesOverAByteOrderMark) {
    EXPECT_EQ(entries("\xEF\xBB\xBFTC0P [sp78] (bytes 3c 00)"), (Entries{{"TC0P", 60}}));
}

TEST(KeysFile, IsNotHarmedByBytesThatAreNoText) {
    constexpr std::string_view text =
        "TC0P [sp78] \xff\xfe\0 (bytes 3c 00)\n"
        "\0\0\x80\n"
        "TC\0P [sp78] (bytes 3c 00)\n"
        "TC1P [sp78] (bytes 3d 00) \xc3\n"sv;
    const KeysFile file = parseKeysFile(text);
    EXPECT_EQ(file.entries, (Entries{{"TC0P", 60}, {"TC1P", 61}}));
    EXPECT_EQ(file.problems, (Problems{{3, "the key is not four ASCII characters"}}));
}

TEST(KeysFile, FindsNothingInAnEmptyText) {
    EXPECT_EQ(entries(""), Entries{});
    EXPECT_EQ(entries("\n"), Entries{});
}

std::string repeated(std::string_view text, std::size_t size) {
    std::string all;
    while (all.size() + text.size() <= size) all += text;
    return all;
}

TEST(KeysFile, ReadsLongFilesOfEveryShape) {
    // Long enough that more than one pass for each line or character would be noticed.
    constexpr std::size_t size = keysFileLimit / 4;
    const std::string line = "TC0P [sp78] (bytes " + repeated("3c 40 ", size - 64) + ")";
    EXPECT_EQ(entries(line), (Entries{{"TC0P", 60}}));
    EXPECT_EQ(entries(repeated("\n", size)), Entries{});
    EXPECT_EQ(entries(repeated("T[sp78bytes (", size)), Entries{});
    EXPECT_EQ(parseKeysFile(repeated("TC0P[sp78]\n", size)).problems.size(), size / 11);
    EXPECT_EQ(entries(repeated("TC0P[sp78]bytes 3c40)\n", size)).size(), size / 22);
}

}  // namespace
}  // namespace calorivo
