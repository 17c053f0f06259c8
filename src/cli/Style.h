#pragma once

#include "monitor/FanModel.h"

#include <optional>
#include <string>
#include <string_view>

namespace calorivo {

/// How much attention a value deserves.
enum class Level { none, normal, warning, critical };

/// From 80 °C on a warning, from 90 °C on critical; none for an invalid temperature.
[[nodiscard]] Level levelOf(double celsius);
/// By the fan's own limits; normal for one without a maximum.
[[nodiscard]] Level levelOf(const FanModel& fan);
/// Says the level without colour: "", "!" or "!!".
[[nodiscard]] std::string_view markOf(Level level);

/// What a piece of text is, for its colour.
enum class Ink { plain, title, heading, faint, warning, critical };
[[nodiscard]] Ink inkOf(Level level);

/// Colours, or none at all.
class Style {
  public:
    explicit Style(bool isColoured) : isColoured_(isColoured) {}
    /// Appends the text, which must be clean, in this ink.
    void append(std::string& out, std::string_view text, Ink ink) const;

  private:
    bool isColoured_;
};

/// Colours belong on a terminal only, and not where NO_COLOR is set (to anything but the empty text) or TERM
/// is "dumb".
[[nodiscard]] bool isColourWanted(bool isTerminal, const std::optional<std::string>& noColor,
                                  const std::optional<std::string>& term);

}  // namespace calorivo
