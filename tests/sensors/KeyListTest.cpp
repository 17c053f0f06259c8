#include "sensors/KeyList.h"

#include "support/PrintKeys.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

TEST(KeyList, KeepsOrderAndDuplicates) {
    KeyList list{"TC1C", "TC0C"};
    list.append("TC1C");
    list.append(KeyList{"TG0D", "TC0C"});
    EXPECT_EQ(list.keys(), (std::vector<SensorKey>{"TC1C", "TC0C", "TC1C", "TG0D", "TC0C"}));
    EXPECT_EQ(list.count(), 5U);
}

TEST(KeyList, ContainsWholeKeysCaseSensitively) {
    const KeyList list{"TC0C"};
    EXPECT_TRUE(list.containsString("TC0C"));
    EXPECT_FALSE(list.containsString("TC0c"));
    EXPECT_FALSE(list.containsString("TC0D"));
    EXPECT_FALSE(list.containsString(SensorKey(std::string_view("TC0"))));
}

TEST(KeyList, ForgetsWhatItHeldWhenItIsAssigned) {
    KeyList list{"TC0C", "TC1C"};
    list.assign({"TG0D"});
    EXPECT_EQ(list, (KeyList{"TG0D"}));
    EXPECT_FALSE(list.containsString("TC0C"));
    EXPECT_TRUE(list.containsString("TG0D"));
    list.clear();
    EXPECT_TRUE(list.isEmpty());
    EXPECT_FALSE(list.containsString("TG0D"));
}

}  // namespace
}  // namespace calorivo
