#pragma once

#include "platform/AttributedString.h"
#include "ui/Geometry.h"
#include "ui/Path.h"

#include <cstdint>
#include <optional>

namespace calorivo {

/// A straight run of colour between two points; nothing is painted before or behind them.
struct LinearGradient {
    Color startColor;
    Color endColor;
    Point startPoint;
    Point endPoint;
    friend bool operator==(const LinearGradient&, const LinearGradient&) = default;
};

/// What a painter does for the panel, in this order: stroke the outline, clip to it, fill the gradient.
struct PanelDrawing {
    Path outline;
    Color borderColor;
    double lineWidth;
    LinearGradient fill;
    friend bool operator==(const PanelDrawing&, const PanelDrawing&) = default;
};

/// A panel with selectively rounded corners, a gradient and a thin border. Setting a field asks for no
/// redraw.
class QZRoundedCornersView {
  public:
    [[nodiscard]] CornerMask roundedCorners() const { return roundedCorners_; }
    void setRoundedCorners(CornerMask corners) { roundedCorners_ = corners; }
    /// Inset of the border and its width, in points.
    [[nodiscard]] std::int32_t margin() const { return margin_; }
    void setMargin(std::int32_t margin) { margin_ = margin; }

    /// How the panel is drawn when `dirty` is to be redrawn; none when nothing of it is drawn.
    [[nodiscard]] std::optional<PanelDrawing> drawRect(const Rectangle& dirty, const Rectangle& bounds) const;

  private:
    CornerMask roundedCorners_ = topCorners;
    std::int32_t margin_ = 1;
};

}  // namespace calorivo
