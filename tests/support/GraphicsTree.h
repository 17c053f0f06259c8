#pragma once

#include "support/FakeTree.h"

#include <string>
#include <string_view>

namespace calorivo::test {

/// A tree of sysfs with graphics processors on PCI, as the kernel shows them.
class GraphicsTree : public FakeTree {
  public:
    /// A device of PCI at "devices/pci0000:00/ADDRESS", by its class ("0x030000"), vendor and number.
    /// Returns its folder, below the root.
    std::string pci(const std::string& address, std::string_view deviceClass, std::string_view vendor,
                    std::string_view number);
    /// A graphics processor with its card: "card1".
    std::string gpu(const std::string& address, std::string_view vendor, std::string_view number,
                    const std::string& card);
    /// The card goes, and its device with it.
    void unplug(const std::string& address, const std::string& card);
    /// What the kernel does with the device: "active", and "auto" where it may suspend it or "on".
    void power(const std::string& address, std::string_view status, std::string_view control = "auto");
    /// A connector of a graphics processor's card: "eDP-1", "connected", "enabled".
    void connector(const std::string& address, const std::string& card, const std::string& name,
                   std::string_view status, std::string_view enabled);
    void vgaSwitch(std::string_view text) { file(switchFile, text); }

    static constexpr const char* switchFile = "kernel/debug/vgaswitcheroo/switch";

    // Machines. The integrated processor is 0000:00:02.0 with card0, the discrete one 0000:01:00.0 with
    // card1; both are awake, and the integrated one drives the panel, if the machine has one.

    /// A Mac whose panel either of them may drive; neither is ever suspended.
    void macWithMux();
    /// A notebook whose panel belongs to the integrated one, with a discrete one that the kernel suspends.
    void hybridNotebook();

    static constexpr const char* integrated = "0000:00:02.0";
    static constexpr const char* discrete = "0000:01:00.0";
};

}  // namespace calorivo::test
