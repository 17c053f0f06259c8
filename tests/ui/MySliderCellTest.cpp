#include "ui/MySliderCell.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

TEST(MySliderCell, HasNoTrack) {
    for (const bool isFlipped : {false, true})
        EXPECT_EQ(MySliderCell::drawBarInsideFlipped({2, 3, 100, 8}, isFlipped), Path{});
}

}  // namespace
}  // namespace calorivo
