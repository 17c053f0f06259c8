#include "ui/qt/LevelBarColors.h"

#include "ui/qt/Appearance.h"

namespace calorivo {

namespace {

struct ZoneColors {
    QRgb normal;
    QRgb warning;
    QRgb critical;
};

constexpr ZoneColors onLight{0xFF2A86A8, 0xFFE3A008, 0xFFA3123F};
constexpr ZoneColors onDark{0xFF2F87A8, 0xFFF5BD3D, 0xFFFF6F9C};

/// So many percent of the text's colour, the rest of the ground's.
QColor mixed(const QPalette& palette, int percent) {
    const QColor ground = palette.color(QPalette::Base);
    const QColor text = palette.color(QPalette::Text);
    const auto mix = [percent](int base, int over) {
        return (base * (100 - percent) + over * percent) / 100;
    };
    return {mix(ground.red(), text.red()), mix(ground.green(), text.green()),
            mix(ground.blue(), text.blue())};
}

}  // namespace

QColor levelColor(LevelZone zone, const QPalette& palette) {
    const ZoneColors& colors = isDark(palette) ? onDark : onLight;
    switch (zone) {
        case LevelZone::critical:
            return QColor::fromRgb(colors.critical);
        case LevelZone::warning:
            return QColor::fromRgb(colors.warning);
        case LevelZone::normal:
            break;
    }
    return QColor::fromRgb(colors.normal);
}

QColor hatchColor(const QPalette& palette) {
    QColor color = palette.color(QPalette::Base);
    color.setAlpha(150);
    return color;
}

QColor troughColor(const QPalette& palette) { return mixed(palette, 12); }

QColor mutedTextColor(const QPalette& palette) { return mixed(palette, 65); }

}  // namespace calorivo
