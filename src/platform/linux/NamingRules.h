#pragma once

#include "platform/linux/HwmonChip.h"
#include "platform/linux/RuleParser.h"

#include <string>
#include <string_view>
#include <vector>

namespace calorivo {

/// Reads rule files and picks the rule of a channel.
class NamingRules {
  public:
    /// Reads the rules for these chips. A file that is absent is passed over; one that cannot be used is
    /// described in `problems`. Borrows `chips`.
    NamingRules(const std::vector<HwmonChip>& chips, const std::vector<std::string>& files,
                std::vector<std::string>& problems);

    /// Does the chip column stand for this chip?
    [[nodiscard]] static bool isChip(const HwmonChip& chip, std::string_view chips);

    /// For each channel of one of the chips its rule, or null: the first that fits of the last file in which
    /// one fits. The pointers live as long as this object.
    [[nodiscard]] std::vector<const NamingRule*> rulesOf(const HwmonChip& chip) const;

  private:
    [[nodiscard]] bool isAnyPresent(std::string_view chips) const;

    /// A machine has many chips of few kinds.
    struct Kind {
        /// The first chip of the kind, which looks like all others to the chip column.
        const HwmonChip* chip;
        /// The rules for this kind only, those of the last file first.
        std::vector<const NamingRule*> rules;
    };
    std::vector<Kind> kinds_;
    std::vector<std::vector<NamingRule>> files_;
};

}  // namespace calorivo
