#pragma once

#include <array>
#include <string_view>

namespace calorivo::test {

/// The names that an entry's area may have: those of the source list, without "All".
inline constexpr std::array<std::string_view, 16> areaNames{
    "CPU", "CPU Relative", "GPU",         "Battery",     "Enclosure",     "Hard Drive",
    "LCD", "Logic Board",  "Memory",      "Northbridge", "Optical Drive", "Palm Rest",
    "PCI", "Power Supply", "Thunderbolt", "Wireless",
};

}  // namespace calorivo::test
