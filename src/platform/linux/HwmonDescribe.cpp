#include "platform/linux/HwmonScan.h"
#include "platform/linux/Sysfs.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <span>

namespace calorivo {

namespace {

/// "temp12_label" as its parts: temp, 12, label.
struct AttributeName {
    HwmonChannel::Kind kind;
    int number;
    std::string_view suffix;
    const char* file;

    [[nodiscard]] bool isOfSameChannel(const AttributeName& other) const {
        return kind == other.kind && number == other.number;
    }
};

std::optional<AttributeName> parseAttributeName(const std::string& file) {
    std::string_view name = file;
    HwmonChannel::Kind kind{};
    if (name.starts_with("temp")) {
        kind = HwmonChannel::Kind::temperature;
        name.remove_prefix(4);
    } else if (name.starts_with("fan")) {
        kind = HwmonChannel::Kind::fan;
        name.remove_prefix(3);
    } else {
        return std::nullopt;
    }
    int number = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
    if (error != std::errc() || number < 0 || end == name.data() + name.size() || *end != '_')
        return std::nullopt;
    return AttributeName{kind, number, name.substr(static_cast<std::size_t>(end - name.data()) + 1),
                         file.c_str()};
}

/// The channels that these files make up. Labels only are read: they are constants, even of a chip that
/// sleeps.
std::vector<HwmonChannel> channelsOf(const std::vector<std::string>& names, int folder) {
    std::vector<AttributeName> attributes;
    attributes.reserve(names.size());
    for (const std::string& name : names)
        if (const auto attribute = parseAttributeName(name)) attributes.push_back(*attribute);
    std::ranges::stable_sort(attributes, [](const AttributeName& a, const AttributeName& b) {
        return std::pair(a.kind, a.number) < std::pair(b.kind, b.number);
    });

    std::vector<HwmonChannel> channels;
    for (auto first = attributes.begin(); first != attributes.end();) {
        const auto last = std::find_if(first, attributes.end(), [&](const AttributeName& other) {
            return !other.isOfSameChannel(*first);
        });
        const std::span<const AttributeName> files(first, last);
        first = last;
        if (std::ranges::find(files, "input", &AttributeName::suffix) == files.end()) continue;
        HwmonChannel& channel = channels.emplace_back();
        channel.kind = files.front().kind;
        channel.number = files.front().number;
        if (const auto label = std::ranges::find(files, "label", &AttributeName::suffix);
            label != files.end())
            channel.label = readAttribute(folder, label->file).value_or("");
    }
    return channels;
}

bool isPciAddress(std::string_view text) {
    // "0000:01:00.0"
    return text.size() == 12 && text[4] == ':' && text[7] == ':' && text[10] == '.';
}

void describePciDevice(HwmonChip& chip, int device) {
    constexpr std::uint32_t displayClass = 0x03;
    constexpr std::uint32_t networkClass = 0x02;
    chip.pciClass = readAttributeHex(device, "class") >> 8;
    if (chip.pciClass >> 8 == displayClass) {
        chip.pciVendor = readAttributeHex(device, "vendor");
        chip.pciDevice = readAttributeHex(device, "device");
        chip.pciSubvendor = readAttributeHex(device, "subsystem_vendor");
        chip.pciSubdevice = readAttributeHex(device, "subsystem_device");
        chip.isBootVGA = readAttributeNumber(device, "boot_vga").value_or(0) == 1;
        chip.isAsleep = isAsleepStatus(readAttribute(device, "power/runtime_status").value_or(""));
    } else if (chip.pciClass >> 8 == networkClass) {
        const FileDescriptor net = openFolderAt(device, "net");
        if (!net.isOpen()) return;
        const auto interfaces = namesInFolder(net.get());
        if (!interfaces.empty()) chip.interfaceName = interfaces.front();
    }
}

std::string trimmed(std::string text) {
    const std::size_t last = text.find_last_not_of(" \t\n");
    text.resize(last == std::string::npos ? 0 : last + 1);
    const std::size_t first = text.find_first_not_of(" \t\n");
    return first == std::string::npos ? std::string() : text.substr(first);
}

/// A text of the device tree: closed by a NUL.
std::string deviceTreeText(int folder, const char* name) {
    std::string text = readAttribute(folder, name).value_or("");
    text.resize(std::min(text.find('\0'), text.size()));
    return text;
}

void describeControllerKeys(HwmonChip& chip, int device) {
    const FileDescriptor nodes = openFolderAt(device, "of_node");
    if (!nodes.isOpen()) return;
    for (const std::string& name : namesInFolder(nodes.get())) {
        if (!name.starts_with("temperature-")) continue;
        const FileDescriptor node = openFolderAt(nodes.get(), name.c_str());
        if (!node.isOpen()) continue;
        std::string label = deviceTreeText(node.get(), "label");
        std::string key = deviceTreeText(node.get(), "apple,key-id");
        if (!label.empty() && key.size() == 4) chip.labelKeys.emplace_back(std::move(label), std::move(key));
    }
}

void describeDevice(HwmonChip& chip, const LocatedChip& located, const std::string& sys) {
    const std::string_view last = lastComponent(located.rawDevicePath);
    const bool isSupply = located.rawDevicePath.find("/power_supply/") != std::string::npos;
    if (!isPciAddress(last) && chip.name != "nvme" && !isSupply && chip.name != "macsmc_hwmon") return;
    const FileDescriptor device = openFolder(sys + located.rawDevicePath);
    if (!device.isOpen()) return;
    if (isPciAddress(last)) {
        chip.pciAddress = std::string(last);
        describePciDevice(chip, device.get());
    } else if (chip.name == "nvme") {
        chip.driveModel = trimmed(readAttribute(device.get(), "model").value_or(""));
        chip.driveSerial = trimmed(readAttribute(device.get(), "serial").value_or(""));
    } else if (isSupply) {
        chip.supplyType = readAttribute(device.get(), "type").value_or("");
        chip.supplyScope = readAttribute(device.get(), "scope").value_or("");
    } else {
        describeControllerKeys(chip, device.get());
    }
}

}  // namespace

bool isAsleepStatus(std::string_view status) {
    // A device in an unknown state is left alone as well. Without power management there is no status.
    return !status.empty() && status != "active" && status != "unsupported";
}

DescribedChip describeHwmonChip(const std::string& sys, const LocatedChip& located) {
    const int folder = located.files->get();
    DescribedChip described;
    described.files = namesInFolder(folder);
    HwmonChip& chip = described.chip;
    chip.name = located.name;
    chip.devicePath = located.devicePath;
    chip.folder = sys + located.folder;
    if (std::binary_search(described.files.begin(), described.files.end(), "label"))
        chip.label = readAttribute(folder, "label").value_or("");
    if (!located.rawDevicePath.empty()) describeDevice(chip, located, sys);
    chip.channels = channelsOf(described.files, folder);
    return described;
}

}  // namespace calorivo
