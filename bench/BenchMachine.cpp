#include "bench/BenchMachine.h"

#include "smc/SmcClient.h"

#include <algorithm>
#include <array>
#include <utility>

namespace calorivo::bench {

namespace {

/// ? runs through the instances. Small letters would be twins of the capitals, which grouping drops.
constexpr std::array<std::string_view, 18> families{"TC?c", "TG?D", "TG?P", "TG?H", "TG?T", "TM?D",
                                                    "TN?P", "TN?D", "TN?H", "TN?C", "TN?S", "TW?P",
                                                    "TW?D", "TW?H", "TL?P", "TO?P", "Ts?P", "Te?S"};
constexpr std::string_view instances = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";

}  // namespace

std::vector<SensorKey> temperatureKeys(std::size_t count) {
    std::vector<SensorKey> keys;
    for (std::size_t i = 0; keys.size() < count && i < families.size() * instances.size(); ++i)
        keys.push_back(SensorKey(families[i % families.size()]).with(2, instances[i / families.size()]));
    std::sort(keys.begin(), keys.end());
    return keys;
}

MemorySmc::MemorySmc(const std::vector<SensorKey>& keys) {
    const auto total = static_cast<std::uint32_t>(keys.size() + 1);
    entries_.push_back({smcCode("#KEY"), {4, smcCode("ui32")}, total});
    for (const SensorKey key : keys) {
        const auto degrees = static_cast<std::uint32_t>(30 + entries_.size() % 50);
        entries_.push_back({key.packed(), {2, smcCode("sp78")}, degrees << 24});
    }
    smcSetIOKit(this);
    smcOpen();
}

MemorySmc::~MemorySmc() {
    smcClose();
    smcSetIOKit(nullptr);
}

const MemorySmc::Entry* MemorySmc::find(std::uint32_t key) const {
    const auto found = std::ranges::lower_bound(entries_, key, {}, &Entry::key);
    return found != entries_.end() && found->key == key ? &*found : nullptr;
}

std::optional<std::uint32_t> MemorySmc::keyAt(std::uint32_t index) {
    return index < entries_.size() ? std::optional(entries_[index].key) : std::nullopt;
}

kern_return_t MemorySmc::keyInformation(std::uint32_t key, SmcKeyInformation& information) {
    if (const Entry* entry = find(key)) information = entry->information;
    return io_return::success;
}

kern_return_t MemorySmc::readBytes(std::uint32_t key, std::span<std::uint8_t, 32> bytes) {
    if (const Entry* entry = find(key))
        for (std::size_t i = 0; i < 4; ++i) bytes[i] = static_cast<std::uint8_t>(entry->value >> (24 - 8 * i));
    return io_return::success;
}

BenchEngine::BenchEngine(std::vector<ModelTableEntry> machineSensors) {
    engine_.discover({"bench"}, {}, std::move(machineSensors));
}

}  // namespace calorivo::bench
