#include "platform/linux/SensorNames.h"

#include "platform/linux/Glob.h"
#include "platform/linux/SensorText.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <string_view>

namespace calorivo {
namespace {

/// Stand for a number until it is known how many names are equal otherwise. No cleaned text holds them.
constexpr char numberMark = '\1';
constexpr char optionalNumberMark = '\2';

/// Names with underscores read as with blanks: "cpu_fan".
std::string readableLabel(const HwmonChannel& channel) {
    std::string text = channel.label;
    std::ranges::replace(text, '_', ' ');
    return cleanedText(text);
}

std::string labelOrChannel(const NameRequest& request) {
    std::string label = readableLabel(*request.channel);
    if (!label.empty() || request.channel->kind == HwmonChannel::Kind::fan) return label;
    return channelName(*request.channel);
}

/// "Battery Hotspot Temp" is a temperature anyway.
std::string labelOfPart(const NameRequest& request) {
    constexpr std::array<std::string_view, 2> endings{" Temperature", " Temp"};
    std::string label = labelOrChannel(request);
    for (const std::string_view ending : endings)
        if (label.size() > ending.size() && label.ends_with(ending)) {
            label.resize(label.size() - ending.size());
            break;
        }
    return label;
}

std::string numberAtEnd(std::string_view text) {
    const std::size_t last = text.find_last_not_of("0123456789");
    return std::string(last == std::string_view::npos ? text : text.substr(last + 1));
}

std::string firstNonEmpty(std::string text, std::string otherwise) {
    return text.empty() ? std::move(otherwise) : std::move(text);
}

/// Fills templates. It remembers how many packages there have been.
class Expander {
  public:
    explicit Expander(PciNames& pciNames) : pciNames_(pciNames) {}

    /// The name with number marks.
    std::string expand(const NameRequest& request) {
        std::string result;
        std::string_view rest = request.rule->name;
        while (!rest.empty()) {
            const std::size_t begin = std::min(rest.find('{'), rest.size());
            result += cleanedPart(rest.substr(0, begin));
            rest.remove_prefix(begin);
            const std::size_t end = rest.find('}');
            if (end == std::string_view::npos) break;
            result += value(rest.substr(0, end + 1), request);
            rest.remove_prefix(end + 1);
        }
        return result;
    }

  private:
    /// Without control characters that a rule file might hold; blanks at the ends stay.
    static std::string cleanedPart(std::string_view text) {
        std::string result(text);
        std::ranges::replace_if(
            result, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
        return result;
    }

    std::string value(std::string_view placeholder, const NameRequest& request) {
        const HwmonChip& chip = *request.chip;
        if (placeholder == "{n}") return {numberMark};
        if (placeholder == "{n?}") return {optionalNumberMark};
        if (placeholder == "{label}") return labelOrChannel(request);
        if (placeholder == "{part}") return labelOfPart(request);
        if (placeholder == "{channel}") return std::to_string(request.channel->number);
        if (placeholder == "{package}") return packages_++ == 0 ? "" : numberAtEnd(request.channel->label);
        if (placeholder == "{gpu}") return gpuName(chip);
        if (placeholder == "{drive}") return firstNonEmpty(cleanedText(chip.driveModel), "Drive");
        if (placeholder == "{interface}")
            return firstNonEmpty(cleanedText(chip.interfaceName), chipName(chip));
        return chipName(chip);
    }

    static std::string chipName(const HwmonChip& chip) {
        return firstNonEmpty(cleanedText(steadyName(chip)), "Sensor");
    }

    /// The same file is searched once for each GPU, not for each of its channels.
    std::string gpuName(const HwmonChip& chip) {
        const auto [found, isNew] = gpuNames_.try_emplace(&chip);
        if (isNew) found->second = pciNames_.gpuName(chip);
        return found->second;
    }

    PciNames& pciNames_;
    std::map<const HwmonChip*, std::string> gpuNames_;
    int packages_ = 0;
};

/// Puts numbers in the place of the marks.
void number(std::vector<std::string>& names) {
    constexpr std::array marks{numberMark, optionalNumberMark};
    const auto isNumbered = [&marks](const std::string& name) {
        return std::ranges::find_first_of(name, marks) != name.end();
    };
    std::map<std::string, int> totals;
    for (const std::string& name : names)
        if (isNumbered(name)) ++totals[name];
    std::map<std::string, int> counts;
    for (std::string& name : names) {
        if (!isNumbered(name)) continue;
        const bool isOnly = totals.at(name) == 1;
        const std::string count = std::to_string(++counts[name]);
        std::string result;
        for (const char c : name) {
            if (c == numberMark || (c == optionalNumberMark && !isOnly))
                result += count;
            else if (c != optionalNumberMark)
                result += c;
        }
        name = std::move(result);
    }
}

}  // namespace

std::vector<std::string> sensorNames(const std::vector<NameRequest>& requests, PciNames& pciNames) {
    Expander expander(pciNames);
    std::vector<std::string> names;
    names.reserve(requests.size());
    for (const NameRequest& request : requests) names.push_back(expander.expand(request));
    number(names);
    std::vector<std::string*> temperatures;
    std::vector<std::string*> fans;
    for (std::size_t i = 0; i < names.size(); ++i) {
        names[i] = cleanedText(names[i]);
        const bool isFan = requests[i].channel->kind == HwmonChannel::Kind::fan;
        if (names[i].empty() && !isFan) names[i] = channelName(*requests[i].channel);
        (isFan ? fans : temperatures).push_back(&names[i]);
    }
    makeUnique(temperatures);
    makeUnique(fans);
    return names;
}

}  // namespace calorivo
