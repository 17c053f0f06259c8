#include "platform/KeyValueCoding.h"

#include "platform/Format.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <stdexcept>
#include <system_error>

namespace calorivo {

namespace {

std::int32_t clampedToInt(double number) {
    using Limits = std::numeric_limits<std::int32_t>;
    if (std::isnan(number)) return 0;
    if (number <= Limits::min()) return Limits::min();
    if (number >= Limits::max()) return Limits::max();
    return static_cast<std::int32_t>(number);
}

/// Text as a number, whatever the locale's decimal point is: digits, one point, digits.
double numberFromText(const std::string& text) {
    const std::size_t sign = text.find_first_not_of(" \t\n");
    if (sign == std::string::npos) return 0;
    const bool isNegative = text[sign] == '-';
    const std::size_t first = isNegative || text[sign] == '+' ? sign + 1 : sign;
    const std::size_t end = std::min(text.find_first_not_of("0123456789.", first), text.size());
    double number = 0;
    const auto result =
        std::from_chars(text.data() + first, text.data() + end, number, std::chars_format::fixed);
    // Out of range is far too large, or so small that it is 0.
    const bool isTooLarge = result.ec == std::errc::result_out_of_range &&
                            text.find_first_not_of('0', first) < text.find('.', first);
    if (isTooLarge) number = std::numeric_limits<double>::infinity();
    return isNegative ? -number : number;
}

template <typename... Handlers>
struct Overloaded : Handlers... {
    using Handlers::operator()...;
};
template <typename... Handlers>
Overloaded(Handlers...) -> Overloaded<Handlers...>;

}  // namespace

bool Value::boolValue() const {
    return std::visit(
        Overloaded{[](std::monostate) { return false; }, [](bool flag) { return flag; },
                   [](std::int32_t number) { return number != 0; }, [](double number) { return number != 0; },
                   [](const std::string& text) {
                       return !text.empty() &&
                              std::string_view("YyTt123456789").find(text.front()) != std::string_view::npos;
                   },
                   [](const Data&) { return false; }},
        held_);
}

std::int32_t Value::intValue() const {
    if (const auto* number = std::get_if<std::int32_t>(&held_)) return *number;
    return clampedToInt(doubleValue());
}

double Value::doubleValue() const {
    return std::visit(
        Overloaded{[](std::monostate) { return 0.0; }, [](bool flag) { return flag ? 1.0 : 0.0; },
                   [](std::int32_t number) { return static_cast<double>(number); },
                   [](double number) { return number; },
                   [](const std::string& text) { return numberFromText(text); },
                   [](const Data&) { return 0.0; }},
        held_);
}

std::string Value::stringValue() const {
    return std::visit(
        Overloaded{[](std::monostate) { return std::string(); },
                   [](bool flag) { return std::string(flag ? "1" : "0"); },
                   [](std::int32_t number) { return std::to_string(number); },
                   [](double number) { return shortestText(number); },
                   [](const std::string& text) { return text; }, [](const Data&) { return std::string(); }},
        held_);
}

Data Value::dataValue() const {
    const auto* data = std::get_if<Data>(&held_);
    return data != nullptr ? *data : Data{};
}

void KeyValueCoding::define(std::string key, Getter getter, Setter setter, Observer observer) {
    entries_.insert_or_assign(std::move(key),
                              Entry{std::move(getter), std::move(setter), std::move(observer)});
}

const KeyValueCoding::Entry& KeyValueCoding::entry(std::string_view key) const {
    const auto found = entries_.find(key);
    if (found == entries_.end())
        throw std::out_of_range("no property under the key \"" + std::string(key) + "\"");
    return found->second;
}

Value KeyValueCoding::valueForKey(std::string_view key) const { return entry(key).getter(); }

void KeyValueCoding::setValueForKey(const Value& value, std::string_view key) const {
    entry(key).setter(value);
}

Observation KeyValueCoding::observe(std::string_view key, std::function<void()> tell) const {
    return entry(key).observer(std::move(tell));
}

}  // namespace calorivo
