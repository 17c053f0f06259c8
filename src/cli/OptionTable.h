#pragma once

#include "cli/Options.h"

#include <array>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace calorivo {

/// One option as the help shows it and the parser takes it.
struct OptionRow {
    const char* name;
    /// What its value is called; empty for a flag. In brackets when it may be left out, and then it is
    /// joined by "=".
    const char* value;
    const char* help;
    /// Stores the value, which is empty for a flag; what is wrong with it, empty when nothing is.
    std::string (*store)(Options& options, const std::string& value);

    [[nodiscard]] bool isFlag() const { return *value == '\0'; }
    [[nodiscard]] bool hasOptionalValue() const { return *value == '['; }
};

struct CommandRow {
    Command command;
    const char* name;
    const char* help;
    std::span<const OptionRow> options;
};

/// Every command, in the order of the enumeration.
[[nodiscard]] std::span<const CommandRow> commandRows();
/// The options of every command.
[[nodiscard]] std::span<const OptionRow> commonOptionRows();

}  // namespace calorivo
