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
constexpr ZoneColors onDark{0xFF3FA7C9, 0xFFF5BD3D, 0xFFFF5D8F};

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

QColor troughColor(const QPalette& palette) {
    constexpr int textShare = 12;  // in percent
    const QColor ground = palette.color(QPalette::Base);
    const QColor text = palette.color(QPalette::Text);
    const auto mixed = [](int base, int over) { return (base * (100 - textShare) + over * textShare) / 100; };
    return QColor(mixed(ground.red(), text.red()), mixed(ground.green(), text.green()),
                  mixed(ground.blue(), text.blue()));
}

}  // namespace calorivo
