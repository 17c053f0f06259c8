#pragma once

// Points and rectangles, in points, y upwards.

namespace calorivo {

struct Point {
    double x = 0.0;
    double y = 0.0;
    friend bool operator==(const Point&, const Point&) = default;
};

struct Rectangle {
    double x = 0.0;
    double y = 0.0;
    double width = 0.0;
    double height = 0.0;
    friend bool operator==(const Rectangle&, const Rectangle&) = default;
};

}  // namespace calorivo
