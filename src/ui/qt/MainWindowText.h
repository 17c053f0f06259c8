#pragma once

#include <QFont>
#include <QString>

#include <string_view>

namespace calorivo {

/// A text of the engine, which is UTF-8, as the toolkit holds it.
[[nodiscard]] inline QString asQString(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

/// Whether its size is given in points or in pixels.
[[nodiscard]] inline QFont scaledFont(QFont font, double factor) {
    if (font.pointSizeF() > 0)
        font.setPointSizeF(font.pointSizeF() * factor);
    else
        font.setPixelSize(static_cast<int>(font.pixelSize() * factor));
    return font;
}

}  // namespace calorivo
