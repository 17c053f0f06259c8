#pragma once

#include "sensors/SensorKey.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string_view>

// What a rule asks of a key, as data: which keys by name, or which characters at each position.

namespace calorivo {

/// The characters allowed at one position, written as "DPH"; any character when nothing is written.
class CharacterSet {
  public:
    constexpr CharacterSet() { words_.fill(~std::uint64_t{0}); }
    // NOLINTNEXTLINE(google-explicit-constructor): a literal is a set of characters.
    constexpr CharacterSet(const char* characters) {
        for (const char c : std::string_view(characters)) add(c);
    }

    constexpr void add(char c) { words_[word(c)] |= bit(c); }
    [[nodiscard]] constexpr bool accepts(char c) const { return (words_[word(c)] & bit(c)) != 0; }

  private:
    static constexpr std::size_t word(char c) { return static_cast<unsigned char>(c) / 64U; }
    static constexpr std::uint64_t bit(char c) {
        return std::uint64_t{1} << (static_cast<unsigned char>(c) % 64U);
    }

    std::array<std::uint64_t, 4> words_{};
};

/// A handful of keys, written as "TC0C TC0P".
class KeySet {
  public:
    constexpr KeySet() = default;
    // NOLINTNEXTLINE(google-explicit-constructor): a literal is a set of keys.
    constexpr KeySet(const char* keys) {
        for (std::string_view rest(keys); !rest.empty(); rest.remove_prefix(rest.size() > 5 ? 5 : 4)) {
            if (rest.size() < 4 || rest.size() == 5 || (rest.size() > 5 && rest[4] != ' '))
                throw std::invalid_argument("keys of four characters, one blank between");
            packed_.at(count_++) = SensorKey(rest).packed();
            components_.add(rest[1]);
        }
    }

    [[nodiscard]] constexpr bool isEmpty() const { return count_ == 0; }
    [[nodiscard]] constexpr bool contains(SensorKey key) const {
        // Most keys are told apart by their component alone, and the rules are many.
        if (!components_.accepts(key[1])) return false;
        const std::uint32_t packedKey = key.packed();
        for (std::size_t i = 0; i < count_; ++i)
            if (packed_[i] == packedKey) return true;
        return false;
    }

  private:
    std::array<std::uint32_t, 12> packed_{};
    std::size_t count_ = 0;
    CharacterSet components_{""};
};

/// Matches a key when every part that is given matches; an empty pattern matches every key.
struct KeyPattern {
    /// One of these keys.
    KeySet keys{};
    /// None of these keys.
    KeySet except{};
    CharacterSet start{};
    CharacterSet component{};
    CharacterSet instance{};
    CharacterSet kind{};

    [[nodiscard]] constexpr bool matches(SensorKey key) const {
        return component.accepts(key[1]) && (keys.isEmpty() || keys.contains(key)) && kind.accepts(key[3]) &&
               instance.accepts(key[2]) && start.accepts(key[0]) && !except.contains(key);
    }
};

/// The instances that count in hexadecimal.
inline constexpr const char* hexadecimalInstances = "0123456789ABCDEF";
inline constexpr const char* decimalInstances = "0123456789";

}  // namespace calorivo
