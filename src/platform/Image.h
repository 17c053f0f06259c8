#pragma once

#include <string>

namespace calorivo {

/// An image by its resource name.
struct Image {
    std::string name;
    /// Drawn in the colour of the text around it: only its shape counts.
    bool isTemplate = false;

    friend bool operator==(const Image&, const Image&) = default;
};

}  // namespace calorivo
