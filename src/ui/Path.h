#pragma once

#include "ui/Geometry.h"

#include <cstdint>
#include <variant>
#include <vector>

namespace calorivo {

/// An outline as steps that a painter follows one after another.
struct Path {
    struct Move {
        Point to;
        friend bool operator==(const Move&, const Move&) = default;
    };
    struct Line {
        Point to;
        friend bool operator==(const Line&, const Line&) = default;
    };
    /// Clockwise; angles in degrees, counter-clockwise from the right.
    struct Arc {
        Point center;
        double radius;
        double startAngle;
        double endAngle;
        friend bool operator==(const Arc&, const Arc&) = default;
    };
    struct Close {
        friend bool operator==(const Close&, const Close&) = default;
    };
    using Segment = std::variant<Move, Line, Arc, Close>;

    std::vector<Segment> segments;

    /// Moves the whole path.
    void translate(double x, double y);
    friend bool operator==(const Path&, const Path&) = default;
};

/// Which corners are meant: a sum of these.
using CornerMask = std::int32_t;

inline constexpr CornerMask bottomLeftCorner = 1;
inline constexpr CornerMask bottomRightCorner = 2;
inline constexpr CornerMask topLeftCorner = 4;
inline constexpr CornerMask topRightCorner = 8;
inline constexpr CornerMask topCorners = topLeftCorner + topRightCorner;
inline constexpr CornerMask allCorners = 15;

namespace RoundedCorners {

/// A closed path around the rectangle whose masked corners are rounded, the radius being at most half the
/// shorter side.
[[nodiscard]] Path bezierPathWithRoundedRectWithCornersCornerRadiusCornerMask(const Rectangle& rectangle,
                                                                              double cornerRadius,
                                                                              CornerMask cornerMask);

}  // namespace RoundedCorners

}  // namespace calorivo
