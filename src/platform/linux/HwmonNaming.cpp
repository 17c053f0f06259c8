#include "platform/linux/HwmonNaming.h"

#include "platform/linux/Glob.h"
#include "platform/linux/GpuSlots.h"
#include "platform/linux/KeySlots.h"
#include "platform/linux/NamingRules.h"
#include "platform/linux/PciNames.h"
#include "platform/linux/SensorNames.h"

#include <algorithm>
#include <functional>
#include <numeric>
#include <set>
#include <string_view>
#include <tuple>
#include <unordered_set>

namespace calorivo {
namespace {

using Kind = HwmonChannel::Kind;

/// Chips whose inputs exist whether anything is connected to them or not.
constexpr std::string_view superIoChips = "nct*|it8*|w83*|f71*|f818*|sch5*|dme1737|pc87*|vt*";
constexpr std::string_view batteryMaximum = "battery|maximum";
constexpr std::string_view batteryMaximumKey = "TB0T";
constexpr long noThinkpadFan = 65535;
constexpr long lowestTemperature = 0;
constexpr long highestTemperature = 120000;

/// A channel on its way to a key.
struct Candidate {
    NamedChannel named;
    const HwmonChip* chip = nullptr;
    const HwmonChannel* channel = nullptr;
    const NamingRule* rule = nullptr;
    std::string identity;

    [[nodiscard]] bool isFan() const { return channel->kind == Kind::fan; }
    [[nodiscard]] bool isOfGPU() const {
        return rule->family == KeyFamily::gpuEdge || rule->family == KeyFamily::gpuHotspot ||
               rule->family == KeyFamily::gpuMemory;
    }
    [[nodiscard]] bool needsKey() const { return named.key.empty(); }
};

template <typename Item, typename Before>
std::vector<std::size_t> sortedIndexes(const std::vector<Item>& items, Before before) {
    std::vector<std::size_t> order(items.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::ranges::stable_sort(order, [&](std::size_t a, std::size_t b) { return before(items[a], items[b]); });
    return order;
}

std::vector<std::size_t> chipOrder(const std::vector<HwmonChip>& chips) {
    using Place = std::tuple<std::string, std::string, std::string_view, std::string_view>;
    std::vector<Place> places;
    places.reserve(chips.size());
    for (const HwmonChip& chip : chips)
        places.emplace_back(steadyPath(chip), steadyName(chip), chip.pciAddress, chip.name);
    return sortedIndexes(places, std::less<>());
}

std::vector<std::size_t> channelOrder(const HwmonChip& chip) {
    return sortedIndexes(chip.channels, [](const HwmonChannel& a, const HwmonChannel& b) {
        return std::pair(a.kind, a.number) < std::pair(b.kind, b.number);
    });
}

/// zenpower reads the same registers as k10temp, and more of them.
bool isDoubled(const HwmonChip& chip, const std::vector<HwmonChip>& chips) {
    return chip.name == "k10temp" && std::ranges::any_of(chips, [&chip](const HwmonChip& other) {
               return other.name == "zenpower" && other.devicePath == chip.devicePath;
           });
}

/// Values that an input without a sensor shows. `isKnown`: it had a key before, so there is one.
bool isUnconnected(const HwmonChip& chip, const HwmonChannel& channel, bool isKnown) {
    const bool isThinkpad = chip.name == "thinkpad";
    const long value = channel.firstValue;
    if (isThinkpad && channel.kind == Kind::fan && channel.wasRead && value == noThinkpadFan) return true;
    if (channel.isFaulty && (channel.kind == Kind::fan || !isKnown)) return true;
    if (isKnown) return false;
    if (isThinkpad && channel.kind == Kind::temperature && !channel.wasRead) return true;
    if (!channel.wasRead || !fits(chip.name, superIoChips)) return false;
    if (channel.kind == Kind::temperature) return value <= lowestTemperature || value >= highestTemperature;
    return value == 0 && channel.label.empty() && channel.minimum == 0;
}

/// Carries out the naming, one step per function.
class Naming {
  public:
    Naming(const std::vector<HwmonChip>& chips, KeyStore& store, const std::vector<std::string>& ruleFiles)
        : chips_(chips), store_(store), rules_(chips, ruleFiles, names_.problems), slots_(store) {
        maximumRule_.name = "Battery Maximum";
    }

    /// May be called once.
    HwmonNames run(PciNames& pciNames) {
        collect();
        combineBatteries();
        assignGPUs();
        assignTemperatures();
        assignFans();
        name(pciNames);
        return std::move(names_);
    }

  private:
    void collect();
    void collectChip(std::size_t chip);
    std::string newIdentity(const HwmonChip& chip, const HwmonChannel& channel);
    void combineBatteries();
    void assignGPUs();
    void assignTemperatures();
    void assignFans();
    std::string freeFanKey(const std::set<std::string_view>& present);
    void assign(Candidate& candidate, const std::string& key);
    void name(PciNames& pciNames);

    const std::vector<HwmonChip>& chips_;
    KeyStore& store_;
    HwmonNames names_;
    NamingRules rules_;
    KeySlots slots_;
    std::vector<Candidate> candidates_;
    std::unordered_set<std::string> identities_;
    NamingRule maximumRule_;
};

/// Two equal devices that nothing tells apart get different identities by their order.
std::string Naming::newIdentity(const HwmonChip& chip, const HwmonChannel& channel) {
    const std::string base = identityOf(chip, channel);
    std::string identity = base;
    for (int count = 2; !identities_.insert(identity).second; ++count)
        identity = base + '|' + std::to_string(count);
    return identity;
}

void Naming::collect() {
    for (const std::size_t chip : chipOrder(chips_))
        if (!isDoubled(chips_[chip], chips_)) collectChip(chip);
}

void Naming::collectChip(std::size_t index) {
    const HwmonChip& chip = chips_[index];
    const std::vector<const NamingRule*> rules = rules_.rulesOf(chip);
    for (const std::size_t i : channelOrder(chip)) {
        const HwmonChannel& channel = chip.channels[i];
        if (rules[i] == nullptr || rules[i]->family == KeyFamily::skip) continue;
        Candidate candidate;
        candidate.identity = newIdentity(chip, channel);
        candidate.named.chip = index;
        candidate.named.channel = i;
        candidate.named.key = store_.keyOf(candidate.identity);
        candidate.named.area = rules[i]->area;
        if (isUnconnected(chip, channel, !candidate.named.key.empty())) continue;
        candidate.chip = &chip;
        candidate.channel = &channel;
        candidate.rule = rules[i];
        candidates_.push_back(std::move(candidate));
    }
}

/// One battery stands under the key of the maximum. Several have keys of their own beside it, which they keep
/// when one of them is taken out.
void Naming::combineBatteries() {
    const auto isBattery = [](const Candidate& c) { return c.rule->family == KeyFamily::battery; };
    const auto first = std::ranges::find_if(candidates_, isBattery);
    if (first == candidates_.end()) return;
    if (store_.keyOf(batteryMaximum).empty()) {
        if (store_.isTaken(batteryMaximumKey)) return;
        store_.assign(std::string(batteryMaximumKey), std::string(batteryMaximum));
    }
    if (std::ranges::count_if(candidates_, isBattery) == 1 && first->needsKey()) {
        first->named.key = store_.keyOf(batteryMaximum);
        return;
    }
    Candidate maximum = *first;
    maximum.identity = batteryMaximum;
    maximum.named.key = store_.keyOf(batteryMaximum);
    maximum.rule = &maximumRule_;
    for (auto other = first + 1; other != candidates_.end(); ++other)
        if (isBattery(*other)) maximum.named.maximumOf.emplace_back(other->named.chip, other->named.channel);
    candidates_.insert(first, std::move(maximum));
}

void Naming::assign(Candidate& candidate, const std::string& key) {
    if (key.empty()) return;
    candidate.named.key = key;
    store_.assign(key, candidate.identity);
}

void Naming::assignGPUs() {
    std::vector<GpuSlot> gpus;
    std::vector<const HwmonChip*> gpuChips;
    for (const Candidate& candidate : candidates_) {
        if (!candidate.isOfGPU()) continue;
        if (gpus.empty() || gpus.back().chip != candidate.named.chip) {
            gpus.emplace_back().chip = candidate.named.chip;
            gpuChips.push_back(candidate.chip);
        }
        if (gpus.back().slot == '\0')
            gpus.back().slot = gpuSlotOf(candidate.rule->family, candidate.named.key);
    }
    for (GpuSlot& gpu : gpus) gpu.isIntegrated = isIntegratedGPU(chips_[gpu.chip], gpuChips);
    chooseGpuSlots(gpus, store_);
    for (Candidate& candidate : candidates_) {
        if (!candidate.isOfGPU() || !candidate.needsKey()) continue;
        const char slot = std::ranges::find(gpus, candidate.named.chip, &GpuSlot::chip)->slot;
        if (slot == '\0') continue;
        // A second sensor of the same kind takes any free key of the area, with all others.
        if (std::string key = gpuKey(candidate.rule->family, slot); !store_.isTaken(key))
            assign(candidate, key);
    }
}

void Naming::assignTemperatures() {
    for (Candidate& candidate : candidates_) {
        if (candidate.isFan() || !candidate.needsKey()) continue;
        assign(candidate, candidate.rule->family == KeyFamily::literal
                              ? slots_.takeLiteral(candidate.rule->key)
                              : slots_.take(candidate.rule->family));
        if (candidate.needsKey()) names_.problems.push_back("there is no free key for " + candidate.identity);
    }
}

/// The ten numbers of fans are few: the number of one that has gone is given away when all are used.
std::string Naming::freeFanKey(const std::set<std::string_view>& present) {
    std::string gone;
    for (const char digit : std::string_view("0123456789")) {
        std::string key{'F', digit};
        if (!store_.isTaken(key)) return key;
        const std::string owner = store_.identityOf(key);
        if (gone.empty() && !owner.empty() && !present.contains(owner)) gone = key;
    }
    store_.release(gone);
    return gone;
}

void Naming::assignFans() {
    std::set<std::string_view> present;
    for (const Candidate& candidate : candidates_)
        if (candidate.isFan()) present.insert(candidate.identity);
    for (Candidate& candidate : candidates_) {
        if (!candidate.isFan() || !candidate.needsKey()) continue;
        const std::string key = freeFanKey(present);
        if (key.empty()) return;  // and none for the rest
        assign(candidate, key);
    }
}

void Naming::name(PciNames& pciNames) {
    std::erase_if(candidates_, [](const Candidate& candidate) { return candidate.needsKey(); });
    std::vector<NameRequest> requests;
    for (const Candidate& candidate : candidates_)
        requests.push_back({candidate.chip, candidate.channel, candidate.rule});
    const std::vector<std::string> names = sensorNames(requests, pciNames);
    auto next = names.begin();
    for (Candidate& candidate : candidates_) {
        candidate.named.name = *next++;
        names_.channels.push_back(std::move(candidate.named));
    }
}

}  // namespace

HwmonNames nameHwmonChannels(const std::vector<HwmonChip>& chips, KeyStore& store,
                             const std::vector<std::string>& ruleFiles, const std::string& pciIds) {
    PciNames pciNames(pciIds);
    return Naming(chips, store, ruleFiles).run(pciNames);
}

}  // namespace calorivo
