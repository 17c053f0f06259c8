#pragma once

#include "platform/linux/PciNames.h"

#include <string>
#include <vector>

namespace calorivo {

/// One graphics processor on PCI.
struct GraphicsCard {
    /// "0000:01:00.0"
    std::string address;
    PciIdentity identity;
    /// The firmware's first display.
    bool isBootVGA = false;
    /// The one that saves power, beside a discrete one that is fast; see chooseIntegratedCards().
    bool isIntegrated = false;
    friend bool operator==(const GraphicsCard&, const GraphicsCard&) = default;
};

/// The display devices below the root of sysfs, in the order of their addresses. Reads only what the kernel
/// knows by heart: no device wakes.
[[nodiscard]] std::vector<GraphicsCard> findGraphicsCards(const std::string& sys);

/// Marks the integrated ones: those in a processor or a chip set. Where none is known as such, as with a
/// processor that is newer than this program, the one that shows the start of the machine takes the part.
void chooseIntegratedCards(std::vector<GraphicsCard>& cards);

/// A machine whose graphics can change over: an integrated and a discrete one.
[[nodiscard]] bool canSwitchGraphics(const std::vector<GraphicsCard>& cards);

/// Whether the device works; false for one that sleeps, falls asleep, is just being woken, or is gone. No
/// device wakes.
[[nodiscard]] bool isCardAwake(const std::string& sys, const std::string& address);

/// Whether the kernel puts the device to sleep whenever nobody uses it.
[[nodiscard]] bool isCardPowerManaged(const std::string& sys, const std::string& address);

}  // namespace calorivo
