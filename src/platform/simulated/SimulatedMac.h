#pragma once

#include "platform/Dispatch.h"
#include "smc/SmcService.h"

#include <cstdint>
#include <memory>

namespace calorivo {

/// A whole Intel laptop in memory: two GPUs, two fans, battery, memory, palm rest, wireless. Its load rises
/// and falls, its temperatures and fans follow. The same seed and the same moments give the same values.
class SimulatedMac final : public SmcService {
  public:
    /// `dispatch` gives the time, counted from the construction on, and must outlive this object.
    SimulatedMac(const Dispatch& dispatch, std::uint64_t seed);
    ~SimulatedMac() override;

    [[nodiscard]] std::string_view sourceName() const override { return "simulated"; }
    [[nodiscard]] std::optional<std::string> modelName() const override;
    [[nodiscard]] std::optional<KeyOrigin> originOf(std::string_view key) override;

  protected:
    bool isPresent() override { return true; }
    std::optional<std::uint32_t> keyAt(std::uint32_t index) override;
    kern_return_t keyInformation(std::uint32_t key, SmcKeyInformation& information) override;
    kern_return_t readBytes(std::uint32_t key, std::span<std::uint8_t, 32> bytes) override;

  private:
    class Model;
    std::unique_ptr<Model> model_;
};

}  // namespace calorivo
