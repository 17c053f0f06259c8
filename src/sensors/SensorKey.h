#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace calorivo {

/// The four ASCII characters that name one sensor, for example "TC0P": position 0 "T" for temperatures,
/// position 1 the component class, position 2 the instance, position 3 the kind. Compared case-sensitively.
class SensorKey {
  public:
    constexpr SensorKey() = default;
    // NOLINTNEXTLINE(google-explicit-constructor): a literal of four characters is a key.
    consteval SensorKey(const char (&text)[5]) : characters_{text[0], text[1], text[2], text[3]} {}
    /// The first four characters of `text`; the key is filled up with NULs when there are fewer.
    constexpr explicit SensorKey(std::string_view text) {
        for (std::size_t i = 0; i < characters_.size() && i < text.size(); ++i) characters_[i] = text[i];
    }

    [[nodiscard]] constexpr char operator[](std::size_t position) const { return characters_[position]; }
    /// The same key with another character at `position`.
    [[nodiscard]] constexpr SensorKey with(std::size_t position, char character) const {
        SensorKey other = *this;
        other.characters_[position] = character;
        return other;
    }
    /// The characters, without closing NULs. The view lives as long as this key.
    [[nodiscard]] constexpr std::string_view view() const {
        std::size_t length = characters_.size();
        while (length > 0 && characters_[length - 1] == '\0') --length;
        return {characters_.data(), length};
    }
    [[nodiscard]] std::string text() const { return std::string(view()); }
    /// The first character in the most significant byte.
    [[nodiscard]] constexpr std::uint32_t packed() const {
        std::uint32_t value = 0;
        for (const char c : characters_) value = (value << 8) | static_cast<unsigned char>(c);
        return value;
    }

    friend constexpr bool operator==(const SensorKey&, const SensorKey&) = default;
    friend constexpr auto operator<=>(const SensorKey&, const SensorKey&) = default;

  private:
    std::array<char, 4> characters_{};
};

}  // namespace calorivo

template <>
struct std::hash<calorivo::SensorKey> {
    std::size_t operator()(const calorivo::SensorKey& key) const noexcept {
        // A multiplicative hash: the upper bits mix all four characters.
        return static_cast<std::size_t>((key.packed() * std::uint64_t{0x9E3779B97F4A7C15}) >> 32);
    }
};
