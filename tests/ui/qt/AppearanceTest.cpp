#include "ui/qt/Appearance.h"

#include "Contrast.h"

#include <gtest/gtest.h>

#include <utility>

namespace calorivo {
namespace {

TEST(Appearance, ChoosesThePaletteByTheUsersWishAndTheDesktops) {
    struct Row {
        ColorScheme choice;
        bool isPaletteDark;
        bool isDesktopDark;
        bool expectsDark;
        bool expectsDesktops;
    };
    constexpr Row rows[] = {
        {ColorScheme::automatic, false, false, false, true},
        {ColorScheme::automatic, false, true, true, false},
        {ColorScheme::automatic, true, false, true, true},
        {ColorScheme::automatic, true, true, true, true},
        {ColorScheme::light, false, true, false, true},
        {ColorScheme::light, true, true, false, false},
        {ColorScheme::dark, false, false, true, false},
        {ColorScheme::dark, true, false, true, true},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(&row - rows);
        QPalette desktop = row.isPaletteDark ? darkPalette() : lightPalette();
        desktop.setColor(QPalette::Highlight, Qt::green);  // to be known by
        const QPalette chosen = paletteFor(row.choice, desktop, row.isDesktopDark);
        EXPECT_EQ(isDark(chosen), row.expectsDark);
        EXPECT_EQ(chosen == desktop, row.expectsDesktops);
    }
}

TEST(Appearance, KeepsTextReadable) {
    for (const QPalette& palette : {lightPalette(), darkPalette()}) {
        SCOPED_TRACE(isDark(palette) ? "dark" : "light");
        const std::pair<QPalette::ColorRole, QPalette::ColorRole> pairs[] = {
            {QPalette::WindowText, QPalette::Window},        {QPalette::Text, QPalette::Base},
            {QPalette::Text, QPalette::AlternateBase},       {QPalette::ButtonText, QPalette::Button},
            {QPalette::ToolTipText, QPalette::ToolTipBase},  {QPalette::Link, QPalette::Window},
            {QPalette::HighlightedText, QPalette::Highlight}};
        for (const auto& [text, ground] : pairs)
            EXPECT_GE(test::contrast(palette.color(text), palette.color(ground)), 4.5) << text;
    }
}

}  // namespace
}  // namespace calorivo
