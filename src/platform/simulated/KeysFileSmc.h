#pragma once

#include "smc/SmcService.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace calorivo {

/// Answers the record exchange from a dump of values, so that fans and every other key of the recorded
/// machine can be read as they were.
class KeysFileSmc final : public SmcService {
  public:
    /// `text` is the dump, one value a line as the value printer writes them; lines of any other form are
    /// passed over. Of a key that stands there twice the last line counts, and "#KEY" counts the keys held,
    /// whatever its line says. `fileName` is for people.
    KeysFileSmc(std::string_view text, std::string fileName);

    [[nodiscard]] std::string_view sourceName() const override { return "keysfile"; }
    /// A dump does not tell its model.
    [[nodiscard]] std::optional<std::string> modelName() const override { return std::nullopt; }
    [[nodiscard]] std::optional<KeyOrigin> originOf(std::string_view key) override;

    /// What lies beyond these bounds is passed over; no dump of a machine comes near them.
    static constexpr std::size_t mostBytes = std::size_t{4} * 1024 * 1024;
    static constexpr std::size_t mostKeys = 4096;

  protected:
    bool isPresent() override { return !keys_.empty(); }
    std::optional<std::uint32_t> keyAt(std::uint32_t index) override;
    kern_return_t keyInformation(std::uint32_t key, SmcKeyInformation& information) override;
    kern_return_t readBytes(std::uint32_t key, std::span<std::uint8_t, 32> bytes) override;

  private:
    struct Entry {
        std::uint32_t key = 0;
        std::uint32_t type = 0;
        std::vector<std::uint8_t> bytes;
        /// 0 for a key of no line.
        std::size_t line = 0;
        std::string text;
    };
    static std::optional<Entry> parse(std::string_view line);
    void countKeys();
    [[nodiscard]] const Entry* find(std::uint32_t key) const;

    std::string fileName_;
    /// In byte order of their keys.
    std::vector<Entry> keys_;
};

}  // namespace calorivo
