#pragma once

#include <optional>
#include <string_view>

namespace calorivo {

/// What the kernel's switch between two graphics processors ("vgaswitcheroo") says of itself.
struct VgaSwitch {
    /// The discrete one drives the displays, or it works for the one that does.
    bool isDiscreteInUse = false;
    /// The kernel powers the discrete one up and down by itself.
    bool isDynamic = false;
    friend bool operator==(const VgaSwitch&, const VgaSwitch&) = default;
};

/// The text of the switch's file, one line for each device:
///
///     0:IGD:+:Pwr:0000:00:02.0
///     1:DIS: :DynOff:0000:01:00.0
///     2:DIS-Audio: :DynOff:0000:01:00.1
///
/// None unless every line is like these, and exactly one of the graphics processors, the integrated one
/// ("IGD") among them, has the outputs ("+").
[[nodiscard]] std::optional<VgaSwitch> parseVgaSwitch(std::string_view text);

}  // namespace calorivo
