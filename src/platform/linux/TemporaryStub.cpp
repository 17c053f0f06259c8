#include "platform/linux/HwmonNaming.h"
namespace calorivo {
std::string identityOf(const HwmonChip&, const HwmonChannel&) { return {}; }
void KeyStore::load() {}
void KeyStore::save() {}
void KeyStore::reserve(std::string) {}
HwmonNames nameHwmonChannels(const std::vector<HwmonChip>& chips, KeyStore&, const std::vector<std::string>&,
                             const std::string&) {
    HwmonNames n;
    char c = 'A';
    int fan = 0;
    for (std::size_t i = 0; i < chips.size(); ++i)
        for (std::size_t j = 0; j < chips[i].channels.size(); ++j) {
            const auto& ch = chips[i].channels[j];
            if (ch.kind == HwmonChannel::Kind::fan) {
                n.channels.push_back({i, j, "F" + std::to_string(fan++), ch.label, "", {}});
                continue;
            }
            n.channels.push_back({i, j, std::string("TN") + c++ + "x", ch.label, "CPU", {}});
        }
    return n;
}
}  // namespace calorivo
