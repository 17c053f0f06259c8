#pragma once

#include "platform/UserDefaults.h"

#include <optional>
#include <string>
#include <string_view>

namespace calorivo {

/// What is installed together with the program. Main thread.
class Bundle {
  public:
    Bundle() = default;
    Bundle(const Bundle&) = delete;
    Bundle& operator=(const Bundle&) = delete;
    virtual ~Bundle() = default;

    /// The dictionary in the resource of this name and type; none when it is missing or damaged.
    [[nodiscard]] virtual std::optional<PropertyList> dictionaryForResource(std::string_view name,
                                                                            std::string_view type) const = 0;
    /// A fact about the program ("CFBundleVersion", "CFBundleShortVersionString"); empty when unknown.
    [[nodiscard]] virtual std::string objectForInfoDictionaryKey(std::string_view key) const = 0;
};

}  // namespace calorivo
