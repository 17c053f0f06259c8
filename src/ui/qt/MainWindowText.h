#pragma once

#include <QString>

#include <string_view>

// Texts of the engine, which are UTF-8, as the toolkit holds them.

namespace calorivo {

[[nodiscard]] inline QString asQString(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

}  // namespace calorivo
