#include "platform/linux/NamingRules.h"

#include "platform/linux/Glob.h"
#include "platform/linux/SmallFile.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace calorivo {
namespace {

using LabelKey = std::pair<std::string, std::string>;

constexpr std::uint32_t networkClass = 0x02;
constexpr std::uint32_t wirelessClass = 0x0280;
constexpr std::uint32_t displayClass = 0x03;

bool isSupply(const HwmonChip& chip) { return !chip.supplyType.empty(); }

/// Batteries of mice and headsets have the scope "Device".
bool isBattery(const HwmonChip& chip) { return chip.supplyType == "Battery" && chip.supplyScope != "Device"; }

bool isNetwork(const HwmonChip& chip) {
    return !chip.interfaceName.empty() || chip.pciClass >> 8U == networkClass;
}

bool isWireless(const HwmonChip& chip) { return chip.pciClass == wirelessClass; }

bool isGPU(const HwmonChip& chip) { return chip.pciClass >> 8U == displayClass; }

struct ChipClass {
    std::string_view name;
    bool (*holds)(const HwmonChip&);
};
constexpr std::array<ChipClass, 5> chipClasses{{
    {"@battery", isBattery},
    {"@supply", isSupply},
    {"@network", isNetwork},
    {"@wireless", isWireless},
    {"@gpu", isGPU},
}};

std::string_view trimmed(std::string_view text) {
    const std::size_t begin = text.find_first_not_of(" \t");
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
}

bool isLabel(const HwmonChip& chip, const HwmonChannel& channel, std::string_view labels) {
    const std::string_view label = trimmed(channel.label);
    return anyPattern(labels, [&](std::string_view pattern) {
        constexpr std::string_view ownKey = "key:";
        if (pattern == "*") return true;
        if (pattern == "-" || label.empty()) return pattern == "-" && label.empty();
        if (!pattern.starts_with(ownKey)) return fitsOnePattern(label, pattern);
        const auto key = std::ranges::find(chip.labelKeys, channel.label, &LabelKey::first);
        return key != chip.labelKeys.end() && fitsOnePattern(key->second, pattern.substr(ownKey.size()));
    });
}

bool hasLabel(const HwmonChip& chip, std::string_view labels) {
    return std::ranges::any_of(chip.channels, [&chip, labels](const HwmonChannel& channel) {
        return isLabel(chip, channel, labels);
    });
}

/// What the chip column can tell apart. Every jc42 looks like the first.
bool isSameKind(const HwmonChip& a, const HwmonChip& b) {
    return a.name == b.name && std::ranges::all_of(chipClasses, [&a, &b](const ChipClass& chipClass) {
               return chipClass.holds(a) == chipClass.holds(b);
           });
}

}  // namespace

bool NamingRules::isChip(const HwmonChip& chip, std::string_view chips) {
    return anyPattern(chips, [&chip](std::string_view pattern) {
        if (!pattern.starts_with('@')) return fitsOnePattern(chip.name, pattern);
        const auto* const found = std::ranges::find(chipClasses, pattern, &ChipClass::name);
        return found != chipClasses.end() && found->holds(chip);
    });
}

bool NamingRules::isAnyPresent(std::string_view chips) const {
    return std::ranges::any_of(kinds_, [chips](const Kind& kind) { return isChip(*kind.chip, chips); });
}

NamingRules::NamingRules(const std::vector<HwmonChip>& chips, const std::vector<std::string>& files,
                         std::vector<std::string>& problems) {
    for (const HwmonChip& chip : chips)
        if (std::ranges::none_of(kinds_, [&chip](const Kind& kind) { return isSameKind(*kind.chip, chip); }))
            kinds_.push_back({&chip, {}});
    for (const std::string& file : files) {
        const SmallFile contents = readSmallFile(file, SymbolicLinks::followed);
        if (contents.state == SmallFile::State::unusable) problems.push_back(file + ": " + contents.reason);
        if (contents.state != SmallFile::State::read) continue;
        files_.push_back(parseNamingRules(
            contents.text, file, [this](std::string_view pattern) { return isAnyPresent(pattern); },
            problems));
    }
    for (Kind& kind : kinds_)
        for (auto file = files_.rbegin(); file != files_.rend(); ++file)
            for (const NamingRule& rule : *file)
                if (isChip(*kind.chip, rule.chips) && (rule.unless.empty() || !isAnyPresent(rule.unless)))
                    kind.rules.push_back(&rule);
}

std::vector<const NamingRule*> NamingRules::rulesOf(const HwmonChip& chip) const {
    const auto kind = std::ranges::find_if(kinds_, [&](const Kind& k) { return isSameKind(*k.chip, chip); });
    std::vector<const NamingRule*> rules;
    for (const NamingRule* rule : kind->rules)
        if (rule->with.empty() || hasLabel(chip, rule->with)) rules.push_back(rule);

    std::vector<const NamingRule*> result;
    for (const HwmonChannel& channel : chip.channels) {
        const std::string name = channelName(channel);
        const auto rule = std::ranges::find_if(rules, [&](const NamingRule* candidate) {
            return fits(name, candidate->channels) && isLabel(chip, channel, candidate->labels);
        });
        result.push_back(rule == rules.end() ? nullptr : *rule);
    }
    return result;
}

}  // namespace calorivo
