#pragma once

#include <nlohmann/json.hpp>

#include <optional>
#include <string>
#include <string_view>

namespace calorivo {

using JSON = nlohmann::ordered_json;

/// The text of an object, with a line end. Bytes that are no UTF-8 are replaced: what comes out is always
/// valid.
[[nodiscard]] inline std::string textOf(const JSON& object) {
    return object.dump(2, ' ', false, JSON::error_handler_t::replace) + "\n";
}

/// null for none.
template <typename T>
[[nodiscard]] JSON orNull(const std::optional<T>& value) {
    return value ? JSON(*value) : JSON(nullptr);
}

}  // namespace calorivo
