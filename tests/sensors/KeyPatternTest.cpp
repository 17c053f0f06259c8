#include "sensors/KeyPattern.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

TEST(KeyPattern, MatchesEveryKeyWhenItIsEmpty) {
    EXPECT_TRUE(KeyPattern{}.matches("TC0P"));
    EXPECT_TRUE(KeyPattern{}.matches(SensorKey(std::string_view("T\xff\x80"))));
}

TEST(KeyPattern, MatchesOnlyTheKeysItNames) {
    constexpr KeyPattern pattern{.keys = "TH0A TH0B"};
    EXPECT_TRUE(pattern.matches("TH0A"));
    EXPECT_TRUE(pattern.matches("TH0B"));
    EXPECT_FALSE(pattern.matches("TH0C"));
    EXPECT_FALSE(pattern.matches("TH0b"));
    EXPECT_FALSE(pattern.matches("H0A "));
}

TEST(KeyPattern, MatchesWhenEveryPositionDoes) {
    constexpr KeyPattern pattern{
        .except = "TC1D", .start = "T", .component = "CG", .instance = "01", .kind = "Dd"};
    EXPECT_TRUE(pattern.matches("TC0D"));
    EXPECT_TRUE(pattern.matches("TG1d"));
    EXPECT_FALSE(pattern.matches("TC1D"));
    EXPECT_FALSE(pattern.matches("FC0D"));
    EXPECT_FALSE(pattern.matches("TM0D"));
    EXPECT_FALSE(pattern.matches("TC2D"));
    EXPECT_FALSE(pattern.matches("TC0P"));
}

TEST(KeyPattern, AcceptsNoCharacterBeyondASCIIUnlessAnyMayStand) {
    constexpr KeyPattern pattern{.kind = "P"};
    EXPECT_FALSE(pattern.matches(SensorKey(std::string_view("TC0\xd0"))));
    EXPECT_TRUE(pattern.matches(SensorKey(std::string_view("TC\xd0P"))));
}

TEST(KeyPattern, RefusesKeysOfAnotherLength) {
    EXPECT_THROW(KeySet("TC0"), std::invalid_argument);
    EXPECT_THROW(KeySet("TC0P "), std::invalid_argument);
    EXPECT_THROW(KeySet("TC0P,TC0D"), std::invalid_argument);
}

}  // namespace
}  // namespace calorivo
