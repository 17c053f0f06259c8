#include "ui/QZRoundedCornersView.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

PanelDrawing expected(const Rectangle& outline, CornerMask corners, double lineWidth, double height) {
    return {.outline = RoundedCorners::bezierPathWithRoundedRectWithCornersCornerRadiusCornerMask(outline, 10,
                                                                                                  corners),
            .borderColor = {0.56, 0.56, 0.56, 1},
            .lineWidth = lineWidth,
            .fill = {{0.85, 0.85, 0.85, 1}, {1, 1, 1, 1}, {0, 0}, {0, height}}};
}

TEST(QZRoundedCornersView, RoundsTheTopCornersWithAMarginOfOneAtFirst) {
    const QZRoundedCornersView view;
    EXPECT_EQ(view.roundedCorners(), 12);
    EXPECT_EQ(view.margin(), 1);
}

TEST(QZRoundedCornersView, DrawsInsideOfWhatIsRedrawn) {
    const QZRoundedCornersView view;
    EXPECT_EQ(view.drawRect({0, 0, 200, 60}, {0, 0, 200, 60}), expected({1, 1, 198, 58}, 12, 1, 60));
}

TEST(QZRoundedCornersView, FollowsItsMarginAndItsCorners) {
    QZRoundedCornersView view;
    view.setMargin(3);
    view.setRoundedCorners(allCorners);
    EXPECT_EQ(view.drawRect({5, 7, 100, 80}, {0, 0, 200, 60}), expected({8, 10, 94, 74}, 15, 3, 60));
}

TEST(QZRoundedCornersView, DrawsNothingWhenAPartOfItsHeightIsRedrawn) {
    const QZRoundedCornersView view;
    EXPECT_EQ(view.drawRect({0, 0, 200, 59.5}, {0, 0, 200, 60}), std::nullopt);
    EXPECT_NE(view.drawRect({0, 0, 50, 60}, {0, 0, 200, 60}), std::nullopt);
}

}  // namespace
}  // namespace calorivo
