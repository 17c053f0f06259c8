#pragma once

#include "platform/linux/KeySlots.h"

#include <array>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

// The text of a rule file, which says what each channel of a chip is. Its format is described at the top of
// data/hwmon-names.conf.

namespace calorivo {

/// One line of a rule file. Patterns are those of Glob.h.
struct NamingRule {
    /// Names of chips, or classes of them: "@battery".
    std::string chips;
    /// "temp1", "temp*", "fan2".
    std::string channels;
    /// "-" for none, "*" for any or none, "key:" and a pattern for the controller's own key of the label.
    std::string labels;
    KeyFamily family = KeyFamily::other;
    /// The key of a literal family.
    std::string key;
    /// The name of an area of the source list; empty for fans and for what is skipped.
    std::string area;
    /// With placeholders.
    std::string name;
    /// Chips of which none may be present; empty: no condition.
    std::string unless;
    /// A label that another channel of the chip must have; empty: no condition.
    std::string with;
    friend bool operator==(const NamingRule&, const NamingRule&) = default;
};

/// The names of the source list's areas, without "All".
inline constexpr std::array<std::string_view, 16> ruleAreas{
    "CPU", "CPU Relative", "GPU",         "Battery",     "Enclosure",     "Hard Drive",
    "LCD", "Logic Board",  "Memory",      "Northbridge", "Optical Drive", "Palm Rest",
    "PCI", "Power Supply", "Thunderbolt", "Wireless",
};

/// What a name may hold: {label} the channel's label, or "temp3" without one; {part} the same without a
/// closing "Temperature"; {channel} 3 of temp3; {n} a number from 1 on that tells equal names apart; {n?} the
/// same, but nothing for the only one; {package} the number at the end of the label, but nothing for the
/// first; {chip}, {gpu}, {drive}, {interface} what the device is called.
inline constexpr std::array<std::string_view, 10> rulePlaceholders{
    "{label}", "{part}", "{channel}", "{n}", "{n?}", "{package}", "{chip}", "{gpu}", "{drive}", "{interface}",
};

/// Says whether a chip column is of use. Rules for other chips are not even parsed.
using ChipFilter = std::function<bool(std::string_view chips)>;

/// The rules in `text` whose chips pass the filter. Each line that is no rule is passed over and described in
/// `problems` as "file:line: reason".
[[nodiscard]] std::vector<NamingRule> parseNamingRules(std::string_view text, const std::string& file,
                                                       const ChipFilter& isWanted,
                                                       std::vector<std::string>& problems);

}  // namespace calorivo
