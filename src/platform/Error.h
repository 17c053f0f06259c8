#pragma once

#include "platform/Format.h"
#include "platform/UserDefaults.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace calorivo {

/// The key of an error's words for the user.
inline constexpr std::string_view localizedDescriptionKey = "NSLocalizedDescription";
/// The domain of errors that the operating system numbers itself; the code is its error number.
inline constexpr std::string_view posixErrorDomain = "NSPOSIXErrorDomain";

/// Why something failed: a number within a domain, and what else is known.
struct Error {
    std::string domain;
    std::int32_t code = 0;
    PropertyList userInfo = {};

    /// The words for the user; empty when there are none.
    [[nodiscard]] std::string localizedDescription() const {
        for (const auto& [key, value] : userInfo)
            if (key == localizedDescriptionKey) return value.stringValue();
        return {};
    }
    /// The error as a log shows it.
    [[nodiscard]] std::string description() const {
        return format("Error Domain=%@ Code=%d \"%@\"", domain, code, localizedDescription());
    }
    friend bool operator==(const Error&, const Error&) = default;
};

}  // namespace calorivo
