#pragma once

#include "cli/Engine.h"
#include "cli/InlineDispatch.h"
#include "sensors/SensorKey.h"
#include "smc/SmcService.h"
#include "support/FakeFileManager.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace calorivo::bench {

/// So many different temperature keys of all the areas that have room for them, in byte order.
[[nodiscard]] std::vector<SensorKey> temperatureKeys(std::size_t count);

/// A controller in memory with these temperature keys and "#KEY". While it lives it is the connected provider.
class MemorySmc final : public SmcService {
  public:
    explicit MemorySmc(const std::vector<SensorKey>& keys);
    ~MemorySmc() override;

    [[nodiscard]] std::string_view sourceName() const override { return "memory"; }
    [[nodiscard]] std::optional<std::string> modelName() const override { return std::nullopt; }
    [[nodiscard]] std::optional<KeyOrigin> originOf(std::string_view /*key*/) override { return std::nullopt; }

  protected:
    bool isPresent() override { return true; }
    std::optional<std::uint32_t> keyAt(std::uint32_t index) override;
    kern_return_t keyInformation(std::uint32_t key, SmcKeyInformation& information) override;
    kern_return_t readBytes(std::uint32_t key, std::span<std::uint8_t, 32> bytes) override;

  private:
    struct Entry {
        std::uint32_t key;
        SmcKeyInformation information;
        std::uint32_t value;  // its bytes, most significant first, at the upper end
    };
    [[nodiscard]] const Entry* find(std::uint32_t key) const;
    std::vector<Entry> entries_;
};

/// The whole engine over the provider that is connected, its sensors found.
class BenchEngine {
  public:
    /// `machineSensors`: what the provider itself knows of its sensors.
    explicit BenchEngine(std::vector<ModelTableEntry> machineSensors = {});

    void check() { engine_.cycle.checkTimerFired(); }
    [[nodiscard]] const SensorLists& lists() const { return engine_.lists; }

  private:
    InlineDispatch dispatch_{WallTime{}};
    InlineQueue queue_;
    test::FakeFileManager files_;
    Engine engine_{dispatch_, queue_, files_, {}};
};

}  // namespace calorivo::bench
