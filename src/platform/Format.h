#pragma once

#include <concepts>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace calorivo {

/// One value for a placeholder of `format`. It borrows texts: it must not outlive the call.
class FormatArgument {
  public:
    // NOLINTBEGIN(google-explicit-constructor): values are passed as they are.
    FormatArgument(std::string_view text) : kind_(Kind::text), text_(text) {}
    FormatArgument(const std::string& text) : kind_(Kind::text), text_(text) {}
    FormatArgument(const char* text) : kind_(Kind::text), text_(text != nullptr ? text : "(null)") {}
    FormatArgument(std::floating_point auto number) : kind_(Kind::fraction), fraction_(number) {}
    FormatArgument(std::integral auto number)
        : kind_(Kind::whole), whole_(static_cast<std::int64_t>(number)) {}
    // NOLINTEND(google-explicit-constructor)

  private:
    friend class Formatter;
    enum class Kind { text, whole, fraction };
    Kind kind_;
    std::string_view text_;
    std::int64_t whole_ = 0;
    double fraction_ = 0;
};

/// Fills the placeholders of a fixed text in order and appends the result to `out`.
///
/// Placeholders: %@ and %s (text), %d (32-bit signed), %u, %x and %X (32-bit unsigned; all four with l or ll
/// 64-bit), %.Nf (fraction, rounded as printf rounds, N up to 40), %c (one character), %% (a percent sign),
/// each with an optional minus sign (left-justified), 0 (filled with zeros) and width (up to 999). A
/// placeholder without a value, of the wrong kind, or unknown is copied as it stands, and the value is left
/// for the next one. Values are copied as they are, percent signs and all; `pattern` must be a text of the
/// program: never text from a file, a device or a user.
void appendFormat(std::string& out, std::string_view pattern,
                  std::initializer_list<FormatArgument> arguments);

template <typename... Arguments>
[[nodiscard]] std::string format(std::string_view pattern, const Arguments&... arguments) {
    std::string out;
    appendFormat(out, pattern, {FormatArgument(arguments)...});
    return out;
}

/// The shortest decimal text that reads back as the same number.
[[nodiscard]] std::string shortestText(double number);

}  // namespace calorivo
