#include "ui/QZRoundedCornersView.h"

namespace calorivo {

std::optional<PanelDrawing> QZRoundedCornersView::drawRect(const Rectangle& dirty,
                                                           const Rectangle& bounds) const {
    // Kept: a redraw of a part draws nothing. The outline follows the redrawn rectangle, so that a part would
    // get corners of its own in the middle of the panel.
    if (bounds.height > dirty.height) return std::nullopt;

    constexpr Color borderGrey{0.56, 0.56, 0.56, 1.0};
    constexpr double cornerRadius = 10.0;
    const double inset = margin_;
    const Rectangle inner{dirty.x + inset, dirty.y + inset, dirty.width - 2.0 * inset,
                          dirty.height - 2.0 * inset};
    return PanelDrawing{.outline = RoundedCorners::bezierPathWithRoundedRectWithCornersCornerRadiusCornerMask(
                            inner, cornerRadius, roundedCorners_),
                        .borderColor = borderGrey,
                        .lineWidth = inset,
                        .fill = {.startColor = Color::white(0.85),
                                 .endColor = Color::white(1.0),
                                 .startPoint = {0.0, 0.0},
                                 .endPoint = {0.0, bounds.height}}};
}

}  // namespace calorivo
