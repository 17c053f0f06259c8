#include "platform/Utf8.h"

#include <gtest/gtest.h>

#include <optional>

namespace calorivo {
namespace {

TEST(Text, FindsTheFirstByteThatIsNoUTF8) {
    EXPECT_EQ(firstInvalidByte("47°C 温度 🔥"), std::nullopt);
    EXPECT_EQ(firstInvalidByte(""), std::nullopt);
    EXPECT_EQ(firstInvalidByte("ab\xFF"), 2U);
    EXPECT_EQ(firstInvalidByte("°\xC2"), 2U);
}

}  // namespace
}  // namespace calorivo
