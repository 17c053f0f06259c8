#include "platform/simulated/SimulatedMac.h"

#include "platform/Format.h"
#include "platform/simulated/SimulatedKeys.h"
#include "smc/SmcClient.h"
#include "smc/SmcDecode.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <ratio>

namespace calorivo {

namespace {

/// What the bytes say, as text; empty for types that are not read.
std::string contentOf(const SimulatedKey& key, std::span<const std::uint8_t, 32> bytes) {
    const auto data = bytes.first(simulatedKeySize(key));
    if (key.type == "sp78") return shortestText(smcSp78FromBytes(bytes[0], bytes[1]));
    if (key.type == "fpe2") return format("%.0f", smcFpe2FromBytes(data, 2));
    if (key.type.starts_with("ui")) return format("%u", smcUnsignedFromBytes(data));
    return {};
}

}  // namespace

class SimulatedMac::Model {
  public:
    Model(const Dispatch& dispatch, std::uint64_t seed)
        : dispatch_(dispatch), start_(dispatch.now()), seed_(seed), thermals_(seed) {}

    [[nodiscard]] std::uint64_t seed() const { return seed_; }

    const SimulatedState& now() {
        using Steps = std::chrono::duration<SimulatedStep, std::ratio<1, simulatedStepsPerSecond>>;
        const auto elapsed = std::chrono::duration_cast<Steps>(dispatch_.now() - start_);
        return thermals_.at(std::max<SimulatedStep>(elapsed.count(), 0));
    }
    void fill(std::size_t index, std::span<std::uint8_t, 32> bytes) {
        fillSimulatedValue(index, now(), thermals_.loads(), bytes);
    }

  private:
    const Dispatch& dispatch_;
    Moment start_;
    std::uint64_t seed_;
    SimulatedThermals thermals_;
};

SimulatedMac::SimulatedMac(const Dispatch& dispatch, std::uint64_t seed)
    : model_(std::make_unique<Model>(dispatch, seed)) {}

SimulatedMac::~SimulatedMac() = default;

std::optional<std::string> SimulatedMac::modelName() const { return "MacBookPro11,3"; }

std::optional<KeyOrigin> SimulatedMac::originOf(std::string_view key) {
    const auto index = key.size() == 4 ? simulatedKeyIndex(smcCode(key)) : std::nullopt;
    if (!index) return std::nullopt;
    const SimulatedKey& row = simulatedKeys()[*index];
    std::array<std::uint8_t, 32> bytes{};
    model_->fill(*index, bytes);
    KeyOrigin origin{.device = format("simulated Mac, seed %llu", model_->seed()),
                     .file = {},
                     .content = contentOf(row, bytes),
                     .note = {}};
    if (row.value == SimulatedValue::discreteTemperature && !model_->now().isDiscreteAwake)
        origin.note = "the discrete graphics unit sleeps";
    return origin;
}

std::optional<std::uint32_t> SimulatedMac::keyAt(std::uint32_t index) {
    if (index >= simulatedKeys().size()) return std::nullopt;
    return smcCode(simulatedKeys()[index].key);
}

kern_return_t SimulatedMac::keyInformation(std::uint32_t key, SmcKeyInformation& information) {
    if (const auto index = simulatedKeyIndex(key)) {
        const SimulatedKey& row = simulatedKeys()[*index];
        information = {.dataSize = simulatedKeySize(row), .dataType = smcCode(row.type)};
    }
    return io_return::success;
}

kern_return_t SimulatedMac::readBytes(std::uint32_t key, std::span<std::uint8_t, 32> bytes) {
    if (const auto index = simulatedKeyIndex(key)) model_->fill(*index, bytes);
    return io_return::success;
}

}  // namespace calorivo
