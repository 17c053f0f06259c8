#pragma once

#include "ui/Geometry.h"
#include "ui/Path.h"

namespace calorivo {

/// A slider that shows its knob and its tick marks, and no track.
class MySliderCell {
  public:
    /// The outline of the track: none, wherever it would be.
    [[nodiscard]] static Path drawBarInsideFlipped(const Rectangle& /*frame*/, bool /*isFlipped*/) {
        return {};
    }
};

}  // namespace calorivo
