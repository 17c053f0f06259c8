#include "platform/simulated/KeysFileSmc.h"

#include "platform/Format.h"
#include "platform/simulated/Connection.h"
#include "platform/simulated/SimulatedMac.h"
#include "smc/SmcReaders.h"
#include "support/VirtualDispatch.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace calorivo::test {
namespace {

using namespace std::string_view_literals;

std::string recorded(const std::string& name) {
    std::ifstream file(std::string(CALORIVO_SOURCE_DIR) + "/tests/data/keysfiles/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// All keys of a dump, as they are printed again.
std::string printedAgain(std::string_view dump) {
    KeysFileSmc smc(dump, "dump.txt");
    return Connection(smc).printedKeys();
}

TEST(KeysFileSmc, PrintsTheSimulatedMacAgainAsItWasPrinted) {
    VirtualDispatch dispatch;
    SimulatedMac mac(dispatch, 123);
    const std::string dump = Connection(mac).printedKeys();
    ASSERT_GT(dump.size(), 2000U);
    EXPECT_EQ(printedAgain(dump), dump);
}

struct Recording {
    const char* file;
    int keys;
    std::vector<int> fans;
    std::vector<std::pair<const char*, double>> temperatures;
};

// Values of .5 and .75 degrees read one degree lower: their low byte counts as signed.
const std::vector<Recording> recordings{
    Recording{"intel-laptop.txt",
              65,
              {2164, 2003},
              {{"TC0P", 50.5},
               {"TC1C", 60},
               {"TCXr", -39.5},
               {"TG1D", 0},
               {"TG1P", 45.75},
               {"TH0C", 0},
               {"TH0D", 0},
               {"TH0B", -127},
               {"TC0J", 0},
               {"TM0S", 47.25}}},
    Recording{
        "imac.txt",
        55,
        {1199, 1098, 939},
        {{"TA0P", 23.75}, {"TC2C", 42}, {"TM2S", -127}, {"TH1P", 0}, {"TO0x", 0}, {"TS0C", 0}, {"TN0D", 61}}},
    Recording{"mac-pro.txt",
              81,
              {799, 601, 599, 600, 801, 800},
              {{"TCAC", -48},
               {"TM1P", 38.25},
               {"TM2P", 37.5},
               {"TM4P", 39},
               {"TG0D", 0},
               {"TeGG", -127},
               {"TpPS", 0},
               {"TMA1", 49}}}};

TEST(KeysFileSmc, PrintsRecordedMachinesAgainAsTheyWerePrinted) {
    for (const Recording& recording : recordings) {
        const std::string dump = recorded(recording.file);
        ASSERT_FALSE(dump.empty()) << recording.file;
        EXPECT_EQ(printedAgain(dump), dump);
    }
}

TEST(KeysFileSmc, ReadsRecordedMachinesAsTheyWere) {
    for (const Recording& recording : recordings) {
        SCOPED_TRACE(recording.file);
        KeysFileSmc smc(recorded(recording.file), recording.file);
        const Connection connection(smc);
        EXPECT_EQ(smcKeyCount(), recording.keys);
        std::vector<int> fans;
        for (int fan = 0; fan < smcFanCount(); ++fan) fans.push_back(smcFanSpeed(format("F%dAc", fan)));
        EXPECT_EQ(fans, recording.fans);
        for (const auto& [key, celsius] : recording.temperatures)
            EXPECT_EQ(smcTemperature(key), celsius) << key;
    }
}

TEST(KeysFileSmc, KeepsTheBlankThatEndsAKeyOrAType) {
    KeysFileSmc smc("  FS!   [ui16]  3 (bytes 00 03)\n  FNum  [ui8 ]  7 (bytes 07)\n", "f");
    const Connection connection(smc);
    EXPECT_EQ(smcFanCount(), 7);
    SmcValue value;
    smcReadKey("FS! ", value);
    EXPECT_EQ(value.dataSize, 2U);
    EXPECT_EQ(value.bytes[1], 3);
}

struct Line {
    const char* text;
    /// What it is printed as when it is the only line; empty when it is passed over.
    const char* printed;
};

void expectPrinted(const std::vector<Line>& table) {
    for (const auto& [text, printed] : table) {
        const std::string count = "  #KEY  [ui32]  2 (bytes 00 00 00 02)\n";
        EXPECT_EQ(printedAgain(text), *printed == 0 ? "Error: no SMC found\n" : count + printed) << text;
    }
}

TEST(KeysFileSmc, ReadsAValueInSeveralForms) {
    expectPrinted({Line{"TC0P  [sp78]  (bytes 3c 40)", "  TC0P  [sp78]  (bytes 3c 40)\n"},
                   Line{"\t TC0P [sp78] (bytes 3c40)\r\n", "  TC0P  [sp78]  (bytes 3c 40)\n"},
                   Line{"FS!   [ui16]  0 (bytes 00 00)", "  FS!   [ui16]  0 (bytes 00 00)\n"},
                   Line{"FS! [ui16]  0 (bytes 00 00)", "  FS!   [ui16]  0 (bytes 00 00)\n"},
                   Line{"  A  B  [ch8*]  (bytes 41)", "  A  B  [ch8*]  (bytes 41)\n"},
                   Line{"  FNum  [ui8]  99 (bytes 02)", "  FNum  [ui8 ]  2 (bytes 02)\n"},
                   Line{"  F0Ac  [fpe2]  1 (bytes 1F 40)", "  F0Ac  [fpe2]  2000 (bytes 1f 40)\n"},
                   Line{"  TH0D  [    ]  no data", "  TH0D  [    ]  no data\n"},
                   Line{"  TH0C  [sp78]  no data  ", "  TH0C  [sp78]  no data\n"},
                   Line{"  TH0C  [sp78]  (bytes)", "  TH0C  [sp78]  no data\n"},
                   Line{"  T%d0  [sp78]  (bytes 01 00)", "  T%d0  [sp78]  (bytes 01 00)\n"},
                   Line{"\n\n  TC0P  [sp78]  (bytes 00 00)\nTC0P  [sp78]  (bytes 3c 40)\n",
                        "  TC0P  [sp78]  (bytes 3c 40)\n"}});
}

TEST(KeysFileSmc, PassesOverWhatIsNoValue) {
    expectPrinted({Line{"", ""}, Line{"\n\r\n  \n", ""}, Line{"TC0P 60", ""},
                   Line{"[sp78] (bytes 3c 40)", ""}, Line{"TC0P [sp78", ""},
                   Line{"TC0P sp78] (bytes 3c 40)", ""}, Line{"TC0P [sp78] 3c 40", ""},
                   Line{"TC0P [] (bytes 3c 40)", ""}, Line{"TC0P [sp78x] (bytes 3c 40)", ""},
                   Line{"TC0PX [sp78] (bytes 3c 40)", ""}, Line{"a b [sp78] (bytes 3c 40)", ""},
                   Line{"see TC0P  [sp78]  (bytes 3c 40)", ""}, Line{"TC0P [sp78] (bytes 3c 4)", ""},
                   Line{"TC0P [sp78] (bytes 3c zz)", ""}, Line{"TC0P [sp78] (bytes -1 +2)", ""},
                   Line{"TC0P [sp78] (bytes 3c 40", ""},
                   Line{"T\xC3\xA4"
                        "0P [sp78] (bytes 3c 40)",
                        ""},
                   Line{"T\x1b"
                        "0P [sp78] (bytes 3c 40)",
                        ""},
                   Line{"TC0P [sp\x7f"
                        "8] (bytes 3c 40)",
                        ""}});
}

TEST(KeysFileSmc, TakesThirtyTwoBytesAndNotOneMore) {
    std::string bytes;
    for (int i = 0; i < 32; ++i) bytes += format(" %02x", i + 0xA0);
    const std::string line = "  WKTP  [{wkt]  (bytes" + bytes + ")\n";
    EXPECT_EQ(printedAgain(line), "  #KEY  [ui32]  2 (bytes 00 00 00 02)\n" + line);
    EXPECT_EQ(printedAgain("  WKTP  [{wkt]  (bytes" + bytes + " ff)\n"), "Error: no SMC found\n");
}

TEST(KeysFileSmc, CountsItsKeysItself) {
    const std::string dump =
        "#KEY [ui16] 900 (bytes 03 84)\nTC0P [sp78] (bytes 3c 40)\nTB0T [sp78] no data\n";
    EXPECT_EQ(printedAgain(dump),
              "  #KEY  [ui32]  3 (bytes 00 00 00 03)\n"
              "  TB0T  [sp78]  no data\n"
              "  TC0P  [sp78]  (bytes 3c 40)\n");
}

TEST(KeysFileSmc, IsNoSourceWithoutKeys) {
    KeysFileSmc smc("nothing here\n", "f");
    Connection connection(smc);
    EXPECT_EQ(connection.openResult, 1);
    EXPECT_EQ(connection.printed(), "Error: no SMC found\n");
}

TEST(KeysFileSmc, HoldsNoMoreKeysThanAMachineCouldHave) {
    std::string dump;
    for (int i = 0; i < 9999; ++i) dump += format("%04d [ui8 ] 1 (bytes 01)\n", i);
    dump += "0001 [ui8 ] 2 (bytes 02)\n";
    KeysFileSmc smc(dump, "f");
    const Connection connection(smc);
    EXPECT_EQ(smcKeyCount(), 4097);
    SmcValue value;
    smcReadKey("4095", value);
    EXPECT_EQ(value.dataSize, 1U);
    smcReadKey("4096", value);
    EXPECT_EQ(value.dataSize, 0U);
    smcReadKey("0001", value);
    EXPECT_EQ(value.bytes[0], 2);
}

TEST(KeysFileSmc, ReadsOnlyTheFirstPartOfAnEndlessText) {
    std::string dump = "TC0P [sp78] (bytes 3c 40)\n";
    dump.append(KeysFileSmc::mostBytes, ' ');
    dump += "\nTB0T [sp78] (bytes 1e 00)\n";
    EXPECT_EQ(printedAgain(dump), "  #KEY  [ui32]  2 (bytes 00 00 00 02)\n  TC0P  [sp78]  (bytes 3c 40)\n");
}

TEST(KeysFileSmc, TakesAnyBytesWithoutHarm) {
    constexpr std::string_view alphabet = "T0CP []()bytes3c\n\r\t\x00\x1b\xff no data"sv;
    std::mt19937 random(4711);
    for (int round = 0; round < 2000; ++round) {
        std::string text;
        for (auto i = random() % 120; i > 0; --i) text += alphabet[random() % alphabet.size()];
        const std::string printed = printedAgain(text);
        if (printed != "Error: no SMC found\n") {
            EXPECT_EQ(printedAgain(printed), printed) << text;
        }
    }
}

TEST(KeysFileSmc, RefusesAndCountsEveryWrite) {
    KeysFileSmc smc("F0Mn [fpe2] 2000 (bytes 1f 40)\n", "f");
    const Connection connection(smc);
    smcSetFanSpeed("F0Mn", 4321);
    EXPECT_EQ(smc.writeCount(), 1U);
    EXPECT_EQ(smcFanSpeed("F0Mn"), 2000);
}

TEST(KeysFileSmc, TellsTheLineThatAValueComesFrom) {
    KeysFileSmc smc("a dump\nTC0P  [sp78]  (bytes 3c 40) \x1b[2J\nTB0T [sp78] no data\n", "some/dump.txt");
    const auto origin = smc.originOf("TC0P");
    ASSERT_TRUE(origin);
    EXPECT_EQ(origin->device, "keys file");
    EXPECT_EQ(origin->file, "some/dump.txt:2");
    EXPECT_EQ(origin->content, "TC0P  [sp78]  (bytes 3c 40) ?[2J");
    EXPECT_EQ(origin->note, "");
    EXPECT_EQ(smc.originOf("#KEY")->file, "some/dump.txt");
    EXPECT_EQ(smc.originOf("#KEY")->note, "counted: the keys of this file");
    EXPECT_FALSE(smc.originOf("TC1P"));
    EXPECT_FALSE(smc.originOf("TC0"));
    EXPECT_EQ(smc.sourceName(), "keysfile");
    EXPECT_EQ(smc.modelName(), std::nullopt);
}

}  // namespace
}  // namespace calorivo::test
