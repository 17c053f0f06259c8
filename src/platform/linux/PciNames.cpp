#include "platform/linux/PciNames.h"

#include "platform/Format.h"
#include "platform/linux/FileDescriptor.h"
#include "platform/linux/SensorText.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <utility>

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

/// A line that begins a vendor, "8086  Intel Corporation", or the list of classes behind the last one, "C 00
/// ...".
bool beginsVendor(std::string_view line) {
    if (line.starts_with("C ")) return true;
    return line.size() > 6 && line.substr(4, 2) == "  " && line.front() != '\t' && line.front() != '#';
}

std::size_t nextLine(std::string_view text, std::size_t at) {
    const std::size_t end = text.find('\n', at);
    return end == std::string_view::npos ? text.size() : end + 1;
}

/// Where the first vendor begins whose line begins at `from` or later; the text's size when there is none.
std::size_t nextVendor(std::string_view text, std::size_t from) {
    if (from > 0 && text[from - 1] != '\n') from = nextLine(text, from);
    while (from < text.size() && !beginsVendor(text.substr(from, 16))) from = nextLine(text, from);
    return from;
}

/// Where the first vendor begins that is not before this one. Vendors are in ascending order, so half of the
/// rest falls away at each step: the file has a megabyte, and this is looked up at every start.
std::size_t firstVendorFrom(std::string_view text, std::string_view vendor) {
    std::size_t low = 0;
    std::size_t high = text.size();
    while (low < high) {
        const std::size_t middle = low + (high - low) / 2;
        const std::size_t line = nextVendor(text, middle);
        const bool isBefore =
            line < high && !text.substr(line).starts_with("C ") && text.substr(line, 4) < vendor;
        if (isBefore)
            low = line + 1;
        else
            high = middle;
    }
    return nextVendor(text, low);
}

/// The vendor's own lines; empty when the vendor is unknown.
std::string_view sectionOf(std::string_view text, std::string_view vendor) {
    const std::size_t begin = firstVendorFrom(text, vendor);
    std::string_view section = text.substr(begin);
    if (!takeLine(section).starts_with(std::string(vendor) + "  ")) return {};
    return section;
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
    std::string_view rest = sectionOf(text, vendor);
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
    if (std::exchange(isRead_, true)) return;
    for (std::string_view rest = places_; !rest.empty();) {
        const std::string_view path = rest.substr(0, rest.find(':'));
        if (readFile(std::string(path))) return;
        rest.remove_prefix(std::min(rest.size(), path.size() + 1));
    }
}

bool PciNames::readFile(const std::string& path) {
    const FileDescriptor file(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | O_NOCTTY));
    struct stat status {};
    if (!file.isOpen() || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
    if (status.st_size > static_cast<off_t>(fileLimit)) return false;
    // A megabyte that is about to be overwritten is not cleared first.
    const auto room = static_cast<std::size_t>(status.st_size);
    buffer_ = std::make_unique_for_overwrite<char[]>(room);
    const ssize_t length = pread(file.get(), buffer_.get(), room, 0);
    if (length > 0) text_ = {buffer_.get(), static_cast<std::size_t>(length)};
    return !text_.empty();
}

std::string PciNames::gpuName(const PciIdentity& gpu) {
    if (gpu.vendor == 0) return "GPU";
    const auto* const maker = std::ranges::find(makers, gpu.vendor, &Maker::vendor);
    std::string result(maker == makers.end() ? "" : maker->name);
    read();
    const std::string subsystem =
        gpu.subvendor == apple ? hexadecimal(apple) + ' ' + hexadecimal(gpu.subdevice) : "";
    const std::string_view text =
        pciDeviceText(text_, hexadecimal(gpu.vendor), hexadecimal(gpu.device), subsystem);
    const std::string name = cleanedText(marketingName(text));
    if (name.empty()) return result + "GPU " + hexadecimal(gpu.device);
    return name.starts_with(result) ? name : result + name;
}

}  // namespace calorivo
