#pragma once

#include "cli/Snapshot.h"
#include "cli/Style.h"

#include <cstdint>
#include <optional>
#include <string>

namespace calorivo {

/// How the list is to look.
struct ListLook {
    Style style{false};
    /// The columns of the terminal; 0 for no limit.
    std::size_t columns = 0;
    /// Only this area, without averages and fans.
    std::optional<std::int32_t> areaTag;
};

/// The list as text: the areas in the order of the source list, each with its sensors, then averages and
/// fans.
[[nodiscard]] std::string listText(const Snapshot& snapshot, const ListLook& look);

/// The heading of a list: model and source.
[[nodiscard]] std::string titleOf(const std::optional<std::string>& model, std::string_view source);

}  // namespace calorivo
