#include "ui/Path.h"

#include <algorithm>

namespace calorivo {

namespace {

/// Moves the points of one segment.
struct Translation {
    double x;
    double y;

    void operator()(Path::Move& move) const { shift(move.to); }
    void operator()(Path::Line& line) const { shift(line.to); }
    void operator()(Path::Arc& arc) const { shift(arc.center); }
    void operator()(Path::Close& /*close*/) const {}

  private:
    void shift(Point& point) const {
        point.x += x;
        point.y += y;
    }
};

}  // namespace

void Path::translate(double x, double y) {
    for (Segment& segment : segments) std::visit(Translation{x, y}, segment);
}

namespace RoundedCorners {

Path bezierPathWithRoundedRectWithCornersCornerRadiusCornerMask(const Rectangle& rectangle,
                                                                double cornerRadius, CornerMask cornerMask) {
    const double w = rectangle.width;
    const double h = rectangle.height;
    const double r = std::min(cornerRadius, std::min(w, h) / 2.0);
    const bool isBottomLeft = (cornerMask & bottomLeftCorner) != 0;
    const bool isBottomRight = (cornerMask & bottomRightCorner) != 0;
    const bool isTopLeft = (cornerMask & topLeftCorner) != 0;
    const bool isTopRight = (cornerMask & topRightCorner) != 0;

    Path path;
    auto& segments = path.segments;
    segments.emplace_back(Path::Move{{0.0, isBottomLeft ? r : 0.0}});
    segments.emplace_back(Path::Line{{0.0, isTopLeft ? h - r : h}});
    if (isTopLeft) segments.emplace_back(Path::Arc{{r, h - r}, r, 180.0, 90.0});
    segments.emplace_back(Path::Line{{isTopRight ? w - r : w, h}});
    if (isTopRight) segments.emplace_back(Path::Arc{{w - r, h - r}, r, 90.0, 0.0});
    segments.emplace_back(Path::Line{{w, isBottomRight ? r : 0.0}});
    if (isBottomRight) segments.emplace_back(Path::Arc{{w - r, r}, r, 0.0, 270.0});
    segments.emplace_back(Path::Line{{isBottomLeft ? r : 0.0, 0.0}});
    if (isBottomLeft) segments.emplace_back(Path::Arc{{r, r}, r, 270.0, 180.0});
    segments.emplace_back(Path::Close{});
    path.translate(rectangle.x, rectangle.y);
    return path;
}

}  // namespace RoundedCorners

}  // namespace calorivo
