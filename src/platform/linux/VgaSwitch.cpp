#include "platform/linux/VgaSwitch.h"

#include <algorithm>
#include <array>

namespace calorivo {

namespace {

struct Client {
    bool isDiscrete = false;
    bool isAudio = false;
    bool hasOutputs = false;
    bool isDynamic = false;
    bool isOn = false;
};

/// The text up to the first colon, which goes as well.
std::string_view takeField(std::string_view& line) {
    const std::string_view field = line.substr(0, line.find(':'));
    line.remove_prefix(std::min(line.size(), field.size() + 1));
    return field;
}

template <std::size_t count>
bool isOneOf(std::string_view text, const std::array<std::string_view, count>& texts) {
    return std::ranges::find(texts, text) != texts.end();
}

std::optional<Client> parseClient(std::string_view line) {
    constexpr std::array<std::string_view, 4> devices{"IGD", "DIS", "IGD-Audio", "DIS-Audio"};
    constexpr std::array<std::string_view, 2> outputs{"+", " "};
    constexpr std::array<std::string_view, 4> powers{"Pwr", "Off", "DynPwr", "DynOff"};
    const std::string_view number = takeField(line);
    const std::string_view device = takeField(line);
    const std::string_view output = takeField(line);
    const std::string_view power = takeField(line);
    const bool isNumber = !number.empty() && number.find_first_not_of("0123456789") == std::string_view::npos;
    if (!isNumber || !isOneOf(device, devices) || !isOneOf(output, outputs) || !isOneOf(power, powers) ||
        line.empty())
        return std::nullopt;
    return Client{.isDiscrete = device.starts_with("DIS"),
                  .isAudio = device.ends_with("-Audio"),
                  .hasOutputs = output == "+",
                  .isDynamic = power.starts_with("Dyn"),
                  .isOn = power.ends_with("Pwr")};
}

}  // namespace

std::optional<VgaSwitch> parseVgaSwitch(std::string_view text) {
    VgaSwitch result;
    int integrated = 0;
    int discrete = 0;
    int active = 0;
    while (!text.empty()) {
        const std::size_t end = text.find('\n');
        if (end == std::string_view::npos) return std::nullopt;  // cut off
        const auto client = parseClient(text.substr(0, end));
        if (!client) return std::nullopt;
        text.remove_prefix(end + 1);
        if (client->isAudio) continue;
        ++(client->isDiscrete ? discrete : integrated);
        if (client->hasOutputs) ++active;
        if (!client->isDiscrete) continue;
        result.isDynamic |= client->isDynamic;
        result.isDiscreteInUse |= client->hasOutputs || (client->isDynamic && client->isOn);
    }
    if (integrated != 1 || discrete == 0 || active != 1) return std::nullopt;
    return result;
}

}  // namespace calorivo
