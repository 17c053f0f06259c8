#include "platform/linux/KeySlots.h"

#include <gtest/gtest.h>

#include <set>

namespace calorivo {
namespace {

std::vector<std::string> slotsOf(std::string_view words) {
    std::vector<std::string> keys;
    SlotCursor cursor(words);
    while (std::optional<std::string> key = cursor.next()) keys.push_back(*key);
    return keys;
}

TEST(KeySlots, GoesThroughSetsOfCharacters) {
    EXPECT_EQ(slotsOf("TC[1-3]C TCXr T[AB][0x]P"),
              (std::vector<std::string>{"TC1C", "TC2C", "TC3C", "TCXr", "TA0P", "TAxP", "TB0P", "TBxP"}));
    EXPECT_EQ(slotsOf(""), std::vector<std::string>{});
}

TEST(KeySlots, HasOnlyValidKeysAndNoneTwiceInAFamily) {
    for (const KeyFamilyRow& row : keyFamilies) {
        const std::vector<std::string> keys = slotsOf(row.slots);
        EXPECT_EQ(std::set<std::string>(keys.begin(), keys.end()).size(), keys.size()) << row.name;
        for (const std::string& key : keys) EXPECT_TRUE(isTemperatureKey(key)) << key;
    }
    const std::vector<std::string> keys = slotsOf(overflowSlots);
    EXPECT_EQ(std::set<std::string>(keys.begin(), keys.end()).size(), 3720U);
    EXPECT_EQ(keys.size(), 3720U);
    for (const std::string& key : keys) EXPECT_TRUE(isTemperatureKey(key)) << key;
}

TEST(KeySlots, HasKeysForFiftyEightCores) {
    const std::vector<std::string> keys = slotsOf(keyFamilyNamed("cpu-core")->slots);
    EXPECT_EQ(keys.size(), 58U);
    EXPECT_EQ(keys[8], "TC9C");
    EXPECT_EQ(keys[9], "TCAc");
    EXPECT_EQ(keys[57], "TCzc");
    for (const std::string& key : keys) {
        EXPECT_NE(key[2], 'G');
        EXPECT_NE(key[2], 'S');
        EXPECT_NE(key[2], 'X');
    }
}

TEST(KeySlots, TakesTheLowestFreeKeyAndGoesOnAmongOtherKeys) {
    KeyStore store("");
    store.assign("TPCD", "a");
    store.reserve("TN0x");
    KeySlots slots(store);
    const auto taken = [&store](std::string key) {
        store.assign(key, "sensor of " + key);
        return key;
    };
    EXPECT_EQ(taken(slots.take(KeyFamily::ambient)), "TA0P");
    EXPECT_EQ(taken(slots.take(KeyFamily::board)), "TS0p");
    EXPECT_EQ(taken(slots.take(KeyFamily::ambient)), "TS2p");
    EXPECT_EQ(taken(slots.take(KeyFamily::ambient)), "TN1x");
    EXPECT_EQ(taken(slots.take(KeyFamily::chipset)), "TN2x");
    EXPECT_EQ(taken(slots.takeLiteral("TC7H")), "TC7H");
    EXPECT_EQ(taken(slots.takeLiteral("TC7H")), "TN3x");
    EXPECT_EQ(taken(slots.take(KeyFamily::other)), "TN4x");
}

TEST(KeySlots, KnowsWhichKeysSensorsCanHave) {
    for (const char* key : {"TC0P", "TN0x", "Te1S", "TCXC", "TCaC"})
        EXPECT_TRUE(isTemperatureKey(key)) << key;
    for (const char* key :
         {"", "TC0", "TC0PP", "FC0P", "TeGG", "TC0g", "TC0C", "TC0c", "TCAC", "TCBC", "T 0P", "TC0\n"})
        EXPECT_FALSE(isTemperatureKey(key)) << key;
    for (const char* key : {"F0", "F9"}) EXPECT_TRUE(isFanKey(key)) << key;
    for (const char* key : {"", "F", "F10", "FA", "T0"}) EXPECT_FALSE(isFanKey(key)) << key;
}

}  // namespace
}  // namespace calorivo
