#include "platform/linux/HwmonChip.h"

#include <string_view>

namespace calorivo {
namespace {

/// The text without a counting number that a driver hands out anew at each load: "iwlwifi_1", "mt7921_phy0".
std::string_view withoutCount(std::string_view text) {
    const std::size_t end = text.find_last_not_of("0123456789");
    if (end == std::string_view::npos || end + 1 == text.size()) return text;
    const std::string_view head = text.substr(0, end + 1);
    if (head.size() > 1 && head.back() == '_') return head.substr(0, head.size() - 1);
    if (head.ends_with("_phy")) return head;
    return text;
}

}  // namespace

std::string steadyName(const HwmonChip& chip) { return std::string(withoutCount(chip.name)); }

std::string steadyPath(const HwmonChip& chip) {
    if (chip.devicePath.starts_with('/')) return chip.devicePath;
    // Without a device it is a name.
    return chip.devicePath == chip.name ? steadyName(chip) : chip.devicePath;
}

std::string channelName(const HwmonChannel& channel) {
    return (channel.kind == HwmonChannel::Kind::fan ? "fan" : "temp") + std::to_string(channel.number);
}

std::string channelFile(const HwmonChannel& channel, std::string_view suffix) {
    return channelName(channel).append("_").append(suffix);
}

std::string identityOf(const HwmonChip& chip, const HwmonChannel& channel) {
    return steadyPath(chip) + '|' + steadyName(chip) + '|' + channelName(channel) + '|' + channel.label;
}

}  // namespace calorivo
