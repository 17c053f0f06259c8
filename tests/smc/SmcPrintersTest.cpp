#include "smc/SmcPrinters.h"

#include "platform/Format.h"
#include "support/FakeSmc.h"
#include "support/GoldenFile.h"
#include "support/PrintedText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace calorivo {
namespace {

using test::FakeSmc;
using test::goldenFile;
using test::PrintedText;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;

std::string printed(const std::function<void()>& print) {
    PrintedText text;
    print();
    return text.text();
}

SmcValue valueOf(const char* key, const char* type, const std::vector<std::uint8_t>& bytes) {
    SmcValue value;
    std::copy_n(key, 4, value.key.begin());
    std::copy_n(type, 4, value.dataType.begin());
    value.dataSize = static_cast<std::uint32_t>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), value.bytes.begin());
    return value;
}

TEST(SmcPrintAllKeys, PrintsEveryKeyThatReads) {
    FakeSmc smc;
    smc.set("BATP", "flag", {0x01})
        .set("F0Ac", "fpe2", {0x1f, 0x40})
        .set("F0ID", "{fds", {0x00, 0xff, 0x01, 0x00, 'E', 'x', 'h', 'a', 'u', 's', 't', ' '})
        .set("F1Ac", "fpe2", {0xc0, 0x00})
        .set("FNum", "ui8 ", {0xff})
        .set("MSDW", "ui16", {0xff, 0xf0})
        .set("TB0T", "sp78", {0x1e, 0xc0})
        .set("TF0P", "sp78", {0x20, 0x00})
        .set("TN0P", "sp78", {})
        .set("VERS", "ui32", {0xfe, 0xdc, 0xba, 0x98})
        .set("k%s!", "c%n*", {0x25, 0x73})
        .fail("TF0P");
    int result = -1;
    EXPECT_EQ(printed([&] { result = smcPrintAllKeys(); }), goldenFile("smc-keys.txt"));
    EXPECT_EQ(result, 0);
}

TEST(SmcPrintAllKeys, WalksTheIndexesAndSkipsThoseThatFail) {
    FakeSmc smc;
    smc.set("TB0T", "sp78", {0x1e, 0x00}).set("#KEY", "ui8 ", {3});
    EXPECT_EQ(printed([] { smcPrintAllKeys(); }),
              "  #KEY  [ui8 ]  3 (bytes 03)\n"
              "  TB0T  [sp78]  (bytes 1e 00)\n");
    EXPECT_THAT(smc.requests, ElementsAre("9 #KEY", "5 #KEY", "8 #0", "9 #KEY", "5 #KEY", "8 #1", "9 TB0T",
                                          "5 TB0T", "8 #2"));
}

TEST(SmcPrintAllKeys, PrintsNothingForACountOfZeroOrLess) {
    for (const std::uint8_t byte : std::initializer_list<std::uint8_t>{0x00, 0xff}) {
        FakeSmc smc;
        smc.set("#KEY", "ui32", {byte, byte, byte, byte}).set("TB0T", "sp78", {0x1e, 0x00});
        int result = -1;
        EXPECT_EQ(printed([&] { result = smcPrintAllKeys(); }), "");
        EXPECT_EQ(result, 0);
        EXPECT_THAT(smc.requests, ElementsAre("9 #KEY", "5 #KEY"));
    }
}

TEST(SmcPrintValue, SaysSoWhenThereIsNoData) {
    EXPECT_EQ(printed([] { smcPrintValue({}); }), "        [    ]  no data\n");
    EXPECT_EQ(printed([] { smcPrintValue(valueOf("TC0P", "ui8 ", {})); }), "  TC0P  [ui8 ]  no data\n");
}

TEST(SmcPrintValue, FillsShortKeysAndTypesToFourCharacters) {
    SmcValue value{{"K"}, 1, {"a"}, {}};
    EXPECT_EQ(printed([&] { smcPrintValue(value); }), "  K     [a   ]  (bytes 00)\n");
}

TEST(SmcPrintValue, RecognisesTypesByAllFourCharacters) {
    for (const char* type : {"ui8\0", "UI8 ", "ui64", "fpe1"})
        EXPECT_THAT(printed([&] { smcPrintValue(valueOf("Keys", type, {0x07})); }),
                    EndsWith("]  (bytes 07)\n"));
}

TEST(SmcPrintBytes, PrintsTwoDigitsForEachByte) {
    EXPECT_EQ(printed([] {
                  smcPrintBytes(valueOf("Keys", "hex_", {0x00, 0x0a, 0x80, 0xff}));
              }),
              "(bytes 00 0a 80 ff)\n");
    EXPECT_EQ(printed([] { smcPrintBytes({}); }), "(bytes)\n");
}

TEST(SmcPrintBytes, PrintsNeverMoreThanThe32BytesThatThereAre) {
    SmcValue value = valueOf("Keys", "ui32", std::vector<std::uint8_t>(32, 0x11));
    value.dataSize = 0xffffffff;
    std::string bytes;
    for (int i = 0; i < 32; ++i) bytes += " 11";
    EXPECT_EQ(printed([&] { smcPrintValue(value); }), "  Keys  [ui32]  286331153 (bytes" + bytes + ")\n");
}

TEST(SmcPrintFpe2, PrintsWholeRevolutionsWhateverTheType) {
    EXPECT_EQ(printed([] { smcPrintFpe2(valueOf("Keys", "sp78", {0x1f, 0x43})); }), "2000 ");
}

TEST(SmcPrintUnsigned, PrintsTheNumberWhateverTheType) {
    EXPECT_EQ(printed([] {
                  smcPrintUnsigned(valueOf("Keys", "sp78", {0xff, 0xff, 0xff, 0xff}));
              }),
              "4294967295 ");
}

TEST(SmcPrintFans, PrintsEveryFan) {
    FakeSmc smc;
    smc.set("FNum", "ui8 ", {3})
        .set("FS! ", "ui16", {0x00, 0x02})
        .setSpeed("F0Ac", 2000)
        .setSpeed("F0Mn", 1200)
        .setSpeed("F0Mx", 6156)
        .setSpeed("F0Sf", 1800)
        .setSpeed("F0Tg", 2500)
        .setSpeed("F1Ac", 9000)
        .set("F1Mn", "fpe2", {})
        .set("F1Mx", "fpe2", {0x80, 0x00})
        .setSpeed("F1Sf", 3000)
        .set("F1Tg", "fpe2", {0xc0, 0x00})
        .fail("F1Sf");
    kern_return_t result = -1;
    EXPECT_EQ(printed([&] { result = smcPrintFans(); }), goldenFile("smc-fans.txt"));
    EXPECT_EQ(result, io_return::success);
}

TEST(SmcPrintFans, LooksAtNeitherTypeNorResultOfASpeed) {
    FakeSmc smc;
    smc.set("FNum", "flag", {1}).set("F0Ac", "hex_", {0x1f, 0x40});
    EXPECT_THAT(printed([] { smcPrintFans(); }),
                HasSubstr("    Actual speed : 2000\n    Minimum speed: 0\n"));
}

TEST(SmcPrintFans, ReadsTheKeysOfAFanInTheirOrder) {
    FakeSmc smc;
    smc.set("FNum", "ui8 ", {1});
    printed([] { smcPrintFans(); });
    EXPECT_THAT(smc.requests,
                ElementsAre("9 FNum", "5 FNum", "9 F0Ac", "5 F0Ac", "9 F0Mn", "5 F0Mn", "9 F0Mx", "5 F0Mx",
                            "9 F0Sf", "5 F0Sf", "9 F0Tg", "5 F0Tg", "9 FS! ", "5 FS! "));
}

TEST(SmcPrintFans, TakesTheModeFromOneBitOfTheMaskForEachFan) {
    FakeSmc smc;
    smc.set("FNum", "ui8 ", {34}).set("FS! ", "ui16", {0x81, 0x05});
    std::string expected = "Total fans in system: 34\n";
    for (int fan = 0; fan < 34; ++fan) {
        const bool isForced = fan == 0 || fan == 2 || fan == 8 || fan == 15;
        expected += format("\nFan #%d:\n", fan) +
                    "    Actual speed : 0\n    Minimum speed: 0\n    Maximum speed: 0\n"
                    "    Safe speed   : 0\n    Target speed : 0\n" +
                    (isForced ? "    Mode         : forced\n" : "    Mode         : auto\n");
    }
    EXPECT_EQ(printed([] { smcPrintFans(); }), expected);
}

TEST(SmcPrintFans, TakesModesThatCannotBeReadForAutomatic) {
    FakeSmc smc;
    smc.set("FNum", "ui8 ", {1}).set("FS! ", "ui16", {0xff, 0xff}).fail("FS! ");
    EXPECT_THAT(printed([] { smcPrintFans(); }), EndsWith("    Mode         : auto\n"));
}

TEST(SmcPrintFans, CutsTheKeysFromTheEleventhFanOn) {
    FakeSmc smc;
    smc.set("FNum", "ui8 ", {11}).setSpeed("F10A", 1234);
    EXPECT_THAT(printed([] { smcPrintFans(); }),
                EndsWith("\nFan #10:\n    Actual speed : 1234\n    Minimum speed: 0\n"
                         "    Maximum speed: 0\n    Safe speed   : 0\n    Target speed : 0\n"
                         "    Mode         : auto\n"));
    const std::vector<std::string> last(smc.requests.end() - 12, smc.requests.end() - 2);
    EXPECT_THAT(last, ElementsAre("9 F10A", "5 F10A", "9 F10M", "5 F10M", "9 F10M", "5 F10M", "9 F10S",
                                  "5 F10S", "9 F10T", "5 F10T"));
}

TEST(SmcPrintFans, WalksAsManyFansAsTheControllerSays) {
    FakeSmc smc;
    smc.set("FNum", "ui8 ", {255});
    const std::string text = printed([] { smcPrintFans(); });
    EXPECT_EQ(text.substr(0, text.find('\n')), "Total fans in system: 255");
    EXPECT_THAT(text, HasSubstr("\nFan #254:\n"));
    EXPECT_EQ(text.find("Fan #255"), std::string::npos);
}

TEST(SmcPrintFans, WalksNoneForANumberThatIsNegative) {
    FakeSmc smc;
    smc.set("FNum", "ui32", {0xff, 0xff, 0xff, 0xff});
    EXPECT_EQ(printed([] { smcPrintFans(); }), "Total fans in system: -1\n");
}

TEST(SmcPrintFans, PrintsZeroFansForANumberWithoutData) {
    FakeSmc smc;
    kern_return_t result = -1;
    EXPECT_EQ(printed([&] { result = smcPrintFans(); }), "Total fans in system: 0\n");
    EXPECT_EQ(result, io_return::success);
}

TEST(SmcPrintFans, FailsWhenTheNumberOfFansCannotBeRead) {
    FakeSmc smc;
    smc.set("FNum", "ui8 ", {2}).fail("FNum", io_return::timeout);
    kern_return_t result = 0;
    EXPECT_EQ(printed([&] { result = smcPrintFans(); }), "");
    EXPECT_EQ(static_cast<std::uint32_t>(result), 0xe00002bcU);
}

}  // namespace
}  // namespace calorivo
