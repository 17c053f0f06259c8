#pragma once

#include "platform/Property.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace calorivo {

using Data = std::vector<std::uint8_t>;

/// A value under a text key: nil, a flag, a whole number, a fraction, a text or a block of bytes.
/// Reading it as another kind follows the conversions of a preferences store: nil reads as 0, NO and empty.
class Value {
  public:
    Value() = default;
    // NOLINTBEGIN(google-explicit-constructor): a plain value is a Value.
    Value(bool flag) : held_(flag) {}
    Value(std::int32_t number) : held_(number) {}
    Value(double number) : held_(number) {}
    Value(std::string text) : held_(std::move(text)) {}
    Value(const char* text) : held_(std::string(text)) {}
    Value(Data data) : held_(std::move(data)) {}
    // NOLINTEND(google-explicit-constructor)

    [[nodiscard]] bool isNil() const { return std::holds_alternative<std::monostate>(held_); }
    /// A flag, a whole number or a fraction.
    [[nodiscard]] bool isNumber() const {
        return std::holds_alternative<bool>(held_) || std::holds_alternative<std::int32_t>(held_) ||
               std::holds_alternative<double>(held_);
    }
    /// A number other than 0, or a text that begins with Y, y, T, t or a digit 1 to 9.
    [[nodiscard]] bool boolValue() const;
    /// Fractions are cut toward zero; what does not fit in 32 bits becomes the nearest that does; texts are
    /// read as decimal numbers up to the first character that is none.
    [[nodiscard]] std::int32_t intValue() const;
    [[nodiscard]] double doubleValue() const;
    /// Numbers as decimal text, flags as "1" and "0", nil and data as the empty text.
    [[nodiscard]] std::string stringValue() const;
    /// Empty for everything that is not data.
    [[nodiscard]] Data dataValue() const;

    friend bool operator==(const Value&, const Value&) = default;

  private:
    std::variant<std::monostate, bool, std::int32_t, double, std::string, Data> held_;
};

/// Access to properties by their names, for the preferences store and for bound controls. Main thread only.
class KeyValueCoding {
  public:
    using Getter = std::function<Value()>;
    using Setter = std::function<void(const Value&)>;
    using Observer = std::function<Observation(std::function<void()>)>;

    void define(std::string key, Getter getter, Setter setter, Observer observer);

    /// A plain key: the property itself is read, assigned and observed. `property` must outlive this object.
    template <typename T>
    void define(std::string key, Property<T>& property) {
        define(std::move(key), property, [&property](T value) { property.set(std::move(value)); });
    }
    /// A key with side effects: assigning runs `setter` instead.
    template <typename T, typename Set>
    void define(std::string key, Property<T>& property, Set setter) {
        define(
            std::move(key), [&property] { return Value(property.get()); },
            [setter = std::move(setter)](const Value& value) { setter(as<T>(value)); },
            [&property](std::function<void()> tell) { return property.observe(std::move(tell)); });
    }

    /// These three throw std::out_of_range, naming the key, for a key that is not defined.
    [[nodiscard]] Value valueForKey(std::string_view key) const;
    void setValueForKey(const Value& value, std::string_view key) const;
    [[nodiscard]] Observation observe(std::string_view key, std::function<void()> tell) const;

    [[nodiscard]] bool hasKey(std::string_view key) const { return entries_.find(key) != entries_.end(); }

  private:
    struct Entry {
        Getter getter;
        Setter setter;
        Observer observer;
    };
    [[nodiscard]] const Entry& entry(std::string_view key) const;

    template <typename T>
    static T as(const Value& value) {
        if constexpr (std::is_same_v<T, bool>)
            return value.boolValue();
        else if constexpr (std::is_integral_v<T>)
            return value.intValue();
        else if constexpr (std::is_floating_point_v<T>)
            return static_cast<T>(value.doubleValue());
        else if constexpr (std::is_same_v<T, Data>)
            return value.dataValue();
        else
            return value.stringValue();
    }

    std::map<std::string, Entry, std::less<>> entries_;
};

}  // namespace calorivo
