#include "ui/Path.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

namespace calorivo {
namespace {

using Segments = std::vector<Path::Segment>;
using Move = Path::Move;
using Line = Path::Line;
using Arc = Path::Arc;
using Close = Path::Close;

Segments rounded(const Rectangle& rectangle, double radius, CornerMask mask) {
    return RoundedCorners::bezierPathWithRoundedRectWithCornersCornerRadiusCornerMask(rectangle, radius, mask)
        .segments;
}

TEST(RoundedCorners, AreNoneWithMaskZero) {
    EXPECT_EQ(rounded({10, 20, 100, 50}, 7, 0), (Segments{Move{{10, 20}}, Line{{10, 70}}, Line{{110, 70}},
                                                          Line{{110, 20}}, Line{{10, 20}}, Close{}}));
}

TEST(RoundedCorners, AreAllFourClockwiseFromBottomLeft) {
    EXPECT_EQ(rounded({10, 20, 100, 50}, 7, allCorners),
              (Segments{Move{{10, 27}}, Line{{10, 63}}, Arc{{17, 63}, 7, 180, 90}, Line{{103, 70}},
                        Arc{{103, 63}, 7, 90, 0}, Line{{110, 27}}, Arc{{103, 27}, 7, 0, 270}, Line{{17, 20}},
                        Arc{{17, 27}, 7, 270, 180}, Close{}}));
}

TEST(RoundedCorners, AreTheTopOnesWithMaskTwelve) {
    EXPECT_EQ(rounded({0, 0, 100, 50}, 7, 12),
              (Segments{Move{{0, 0}}, Line{{0, 43}}, Arc{{7, 43}, 7, 180, 90}, Line{{93, 50}},
                        Arc{{93, 43}, 7, 90, 0}, Line{{100, 0}}, Line{{0, 0}}, Close{}}));
}

TEST(RoundedCorners, HaveOneBitEach) {
    struct Row {
        CornerMask mask;
        Arc arc;
    };
    const std::vector<Row> rows{{bottomLeftCorner, {{7, 7}, 7, 270, 180}},
                                {bottomRightCorner, {{93, 7}, 7, 0, 270}},
                                {topLeftCorner, {{7, 43}, 7, 180, 90}},
                                {topRightCorner, {{93, 43}, 7, 90, 0}}};
    for (const Row& row : rows) {
        std::vector<Arc> arcs;
        for (const Path::Segment& segment : rounded({0, 0, 100, 50}, 7, row.mask))
            if (const auto* arc = std::get_if<Arc>(&segment)) arcs.push_back(*arc);
        EXPECT_EQ(arcs, std::vector<Arc>{row.arc}) << row.mask;
    }
}

TEST(RoundedCorners, MakeACircleOfASquareWithALargeRadius) {
    EXPECT_EQ(rounded({0, 0, 30, 30}, 99, allCorners),
              (Segments{Move{{0, 15}}, Line{{0, 15}}, Arc{{15, 15}, 15, 180, 90}, Line{{15, 30}},
                        Arc{{15, 15}, 15, 90, 0}, Line{{30, 15}}, Arc{{15, 15}, 15, 0, 270}, Line{{15, 0}},
                        Arc{{15, 15}, 15, 270, 180}, Close{}}));
}

TEST(RoundedCorners, AreAtMostHalfTheShorterSide) {
    EXPECT_EQ(rounded({0, 0, 40, 10}, 8, topLeftCorner),
              (Segments{Move{{0, 0}}, Line{{0, 5}}, Arc{{5, 5}, 5, 180, 90}, Line{{40, 10}}, Line{{40, 0}},
                        Line{{0, 0}}, Close{}}));
}

}  // namespace
}  // namespace calorivo
