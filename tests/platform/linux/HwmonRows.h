#pragma once

#include "HwmonMachines.h"
#include "TemporaryFolder.h"
#include "platform/linux/HwmonNaming.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

// Naming a machine by the shipped rules, and results as rows that are easy to compare.

namespace calorivo {

inline const std::string shippedRules = CALORIVO_SOURCE_DIR "/data/hwmon-names.conf";
inline constexpr std::string_view pciIds =
    "# comment\n"
    "1002  Advanced Micro Devices\n"
    "\t1638  Cezanne [Radeon Vega 8]\n"
    "\t67ef  Baffin [Radeon RX 460/560D]\n"
    "\t73bf  Navi 21 [Radeon RX 6800/6900 XT]\n"
    "8086  Intel Corporation\n"
    "\t3e9b  CoffeeLake-H GT2 [UHD Graphics 630]\n"
    "C 03  Display controller\n";

using Rows = std::vector<std::string>;

/// "KEY | area | name" for each channel.
inline Rows rowsOf(const HwmonNames& names) {
    Rows rows;
    for (const NamedChannel& channel : names.channels)
        rows.push_back(channel.key + " | " + channel.area + " | " + channel.name);
    return rows;
}

inline HwmonNames named(const std::vector<HwmonChip>& chips, KeyStore& store) {
    const TemporaryFolder folder;
    HwmonNames names = nameHwmonChannels(chips, store, {shippedRules}, folder.write("pci.ids", pciIds));
    EXPECT_THAT(names.problems, testing::IsEmpty());
    return names;
}

inline Rows rowsOf(const std::vector<HwmonChip>& chips) {
    KeyStore store("");
    return rowsOf(named(chips, store));
}

}  // namespace calorivo
