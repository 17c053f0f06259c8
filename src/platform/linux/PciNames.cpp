#include "platform/linux/PciNames.h"

#include "platform/Format.h"
#include "platform/linux/SensorText.h"
#include "platform/linux/SmallFile.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

namespace calorivo {
namespace {

constexpr std::size_t fileLimit = std::size_t{16} << 20U;
constexpr std::uint32_t apple = 0x106b;

struct Maker {
    std::uint32_t vendor;
    std::string_view name;
};
constexpr std::array<Maker, 3> makers{{{0x8086, "Intel "}, {0x10de, "NVIDIA "}, {0x1002, "AMD "}}};

std::string hexadecimal(std::uint32_t number) { return format("%04x", number); }

/// Takes one line off, without its end.
std::string_view takeLine(std::string_view& text) {
    const void* const end = text.empty() ? nullptr : std::memchr(text.data(), '\n', text.size());
    const std::size_t length =
        end == nullptr ? text.size() : static_cast<std::size_t>(static_cast<const char*>(end) - text.data());
    const std::string_view line = text.substr(0, length);
    text.remove_prefix(std::min(length + 1, text.size()));
    return line;
}

/// What follows the vendor's line, up to the end of the text; empty when the vendor is unknown.
std::string_view afterVendor(std::string_view text, std::string_view vendor) {
    std::string line = '\n' + std::string(vendor) + "  ";
    if (text.starts_with(std::string_view(line).substr(1))) {
        takeLine(text);
        return text;
    }
    const void* const found = ::memmem(text.data(), text.size(), line.data(), line.size());
    if (found == nullptr) return {};
    text.remove_prefix(static_cast<std::size_t>(static_cast<const char*>(found) - text.data()) + 1);
    takeLine(text);
    return text;
}

/// The text of a line "<prefix>  text"; empty for any other line.
std::string_view textAfter(std::string_view line, std::string_view prefix) {
    if (!line.starts_with(prefix) || !line.substr(prefix.size()).starts_with("  ")) return {};
    return line.substr(prefix.size() + 2);
}

/// The name by which people know it stands in the last square brackets: "Navi 21 [Radeon RX 6800]".
std::string_view marketingName(std::string_view text) {
    const std::size_t end = text.rfind(']');
    const std::size_t begin = text.rfind('[', end);
    if (end == std::string_view::npos || begin == std::string_view::npos || end < begin + 2) return text;
    return text.substr(begin + 1, end - begin - 1);
}

}  // namespace

std::string_view pciDeviceText(std::string_view text, std::string_view vendor, std::string_view device,
                               std::string_view subsystem) {
    std::string_view rest = afterVendor(text, vendor);
    const std::string devicePrefix = '\t' + std::string(device);
    const std::string subsystemPrefix = "\t\t" + std::string(subsystem);
    std::string_view name;
    while (!rest.empty()) {
        const std::string_view line = takeLine(rest);
        if (line.empty() || line.front() == '#') continue;
        // The next vendor, or the list of classes.
        if (line.front() != '\t') break;
        if (name.empty()) {
            name = textAfter(line, devicePrefix);
            if (!name.empty() && subsystem.empty()) break;
        } else {
            if (!line.starts_with("\t\t")) break;
            if (const std::string_view own = textAfter(line, subsystemPrefix); !own.empty()) return own;
        }
    }
    return name;
}

void PciNames::read() {
    if (isRead_) return;
    isRead_ = true;
    if (!file_.empty()) text_ = readSmallFile(file_, SymbolicLinks::followed, fileLimit).text;
}

std::string PciNames::gpuName(const HwmonChip& chip) {
    if (chip.pciVendor == 0) return "GPU";
    const auto* const maker = std::ranges::find(makers, chip.pciVendor, &Maker::vendor);
    std::string result(maker == makers.end() ? "" : maker->name);
    read();
    const std::string subsystem =
        chip.pciSubvendor == apple ? hexadecimal(apple) + ' ' + hexadecimal(chip.pciSubdevice) : "";
    const std::string_view text =
        pciDeviceText(text_, hexadecimal(chip.pciVendor), hexadecimal(chip.pciDevice), subsystem);
    const std::string name = cleanedText(marketingName(text));
    if (name.empty()) return result + "GPU " + hexadecimal(chip.pciDevice);
    return name.starts_with(result) ? name : result + name;
}

}  // namespace calorivo
