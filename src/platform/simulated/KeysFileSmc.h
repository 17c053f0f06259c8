#pragma once

#include "smc/SmcService.h"

#include <map>
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
    /// passed over. `fileName` is for messages.
    KeysFileSmc(std::string_view text, std::string fileName);

    [[nodiscard]] std::string_view sourceName() const override { return "keysfile"; }
    /// A dump does not tell its model.
    [[nodiscard]] std::optional<std::string> modelName() const override { return std::nullopt; }
    [[nodiscard]] std::optional<KeyOrigin> originOf(std::string_view key) override;

  protected:
    bool isPresent() override { return !keys_.empty(); }
    std::optional<std::uint32_t> keyAt(std::uint32_t index) override;
    kern_return_t keyInformation(std::uint32_t key, SmcKeyInformation& information) override;
    kern_return_t readBytes(std::uint32_t key, std::span<std::uint8_t, 32> bytes) override;

  private:
    struct Entry {
        std::uint32_t type;
        std::vector<std::uint8_t> bytes;
        std::size_t line;
        std::string text;
    };
    std::string fileName_;
    std::map<std::uint32_t, Entry> keys_;
};

}  // namespace calorivo
