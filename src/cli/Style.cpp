#include "cli/Style.h"

#include "sensors/SensorRules.h"

#include <array>

namespace calorivo {

namespace {

struct InkCode {
    Ink ink;
    std::string_view code;
};
// The sixteen colours of the terminal's own theme, so that they suit light and dark backgrounds.
constexpr std::array<InkCode, 6> inkCodes{{
    {Ink::plain, ""},
    {Ink::title, "\033[1m"},
    {Ink::heading, "\033[1;36m"},
    {Ink::faint, "\033[2m"},
    {Ink::warning, "\033[33m"},
    {Ink::critical, "\033[1;31m"},
}};

struct LevelRow {
    Level level;
    std::string_view mark;
    Ink ink;
};
constexpr std::array<LevelRow, 4> levelRows{{
    {Level::none, "", Ink::faint},
    {Level::normal, "", Ink::plain},
    {Level::warning, "!", Ink::warning},
    {Level::critical, "!!", Ink::critical},
}};

constexpr double warningCelsius = 80;
constexpr double criticalCelsius = 90;

}  // namespace

Level levelOf(double celsius) {
    if (!isTempValid(celsius)) return Level::none;
    if (celsius >= criticalCelsius) return Level::critical;
    return celsius >= warningCelsius ? Level::warning : Level::normal;
}

Level levelOf(const FanModel& fan) {
    if (fan.maxRPM <= 0) return Level::normal;
    const auto rpm = static_cast<float>(fan.actualRPM);
    if (rpm >= fan.criticalRPM) return Level::critical;
    return rpm >= fan.warningRPM ? Level::warning : Level::normal;
}

std::string_view markOf(Level level) { return levelRows[static_cast<std::size_t>(level)].mark; }
Ink inkOf(Level level) { return levelRows[static_cast<std::size_t>(level)].ink; }

void Style::append(std::string& out, std::string_view text, Ink ink) const {
    if (!isColoured_ || ink == Ink::plain) {
        out += text;
        return;
    }
    out.append(inkCodes[static_cast<std::size_t>(ink)].code).append(text).append("\033[0m");
}

bool isColourWanted(bool isTerminal, const std::optional<std::string>& noColor,
                    const std::optional<std::string>& term) {
    return isTerminal && noColor.value_or("").empty() && term != "dumb";
}

}  // namespace calorivo
