#include "ui/qt/Appearance.h"

#include <array>

namespace calorivo {

namespace {

struct RoleColor {
    QPalette::ColorRole role;
    QRgb light;
    QRgb dark;
};

constexpr std::array<RoleColor, 18> colors{{
    {QPalette::Window, 0xfff3f4f6, 0xff25282d},
    {QPalette::WindowText, 0xff1d2127, 0xffe6e8ec},
    {QPalette::Base, 0xffffffff, 0xff1b1e22},
    {QPalette::AlternateBase, 0xfff6f7f9, 0xff20242a},
    {QPalette::ToolTipBase, 0xffffffff, 0xff2f343b},
    {QPalette::ToolTipText, 0xff1d2127, 0xffe6e8ec},
    {QPalette::Text, 0xff1d2127, 0xffe6e8ec},
    {QPalette::PlaceholderText, 0xff777e88, 0xff8b939e},
    {QPalette::Button, 0xffeceef1, 0xff31363d},
    {QPalette::ButtonText, 0xff1d2127, 0xffe6e8ec},
    {QPalette::BrightText, 0xffffffff, 0xffffffff},
    {QPalette::Light, 0xffffffff, 0xff3d434b},
    {QPalette::Midlight, 0xfff5f6f8, 0xff363b43},
    {QPalette::Mid, 0xffc3c8cf, 0xff1f2227},
    {QPalette::Dark, 0xff9ba2ac, 0xff17191d},
    {QPalette::Shadow, 0xff6f767f, 0xff0d0e10},
    {QPalette::Link, 0xff0b63c4, 0xff6cb1ff},
    {QPalette::LinkVisited, 0xff6b4ba3, 0xffb59cf0},
}};

constexpr RoleColor highlight{QPalette::Highlight, 0xff2a6fc9, 0xff3a78c2};
constexpr RoleColor disabledText{QPalette::Text, 0xff9097a1, 0xff767d87};

QPalette paletteOf(QRgb RoleColor::*shade) {
    QPalette palette;
    for (const RoleColor& color : colors) palette.setColor(color.role, QColor(color.*shade));
    palette.setColor(QPalette::Highlight, QColor(highlight.*shade));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    for (const auto role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, QColor(disabledText.*shade));
    return palette;
}

}  // namespace

QPalette lightPalette() { return paletteOf(&RoleColor::light); }

QPalette darkPalette() { return paletteOf(&RoleColor::dark); }

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

QPalette paletteFor(ColorScheme choice, const QPalette& desktop, bool isDesktopDark) {
    switch (choice) {
        case ColorScheme::light:
            return isDark(desktop) ? lightPalette() : desktop;
        case ColorScheme::dark:
            return isDark(desktop) ? desktop : darkPalette();
        case ColorScheme::automatic:
            break;
    }
    return isDesktopDark && !isDark(desktop) ? darkPalette() : desktop;
}

}  // namespace calorivo
