#include "platform/linux/HwmonScan.h"

#include "platform/linux/Sysfs.h"

#include <algorithm>
#include <map>
#include <tuple>

namespace calorivo {

namespace {

constexpr std::string_view hwmonClass = "/class/hwmon";

/// Wireless drivers count their chips on with every reload: the number says nothing.
std::string withoutCounter(std::string name) {
    const std::size_t digits = name.find_last_not_of("0123456789") + 1;
    if (digits == name.size() || digits == 0) return name;
    const std::string_view stem = std::string_view(name).substr(0, digits);
    if (stem == "iwlwifi_") return "iwlwifi";
    if (stem.ends_with("_phy")) return std::string(stem);
    return name;
}

/// Takes class folders and counting numbers off the end of a device path, as far as they move:
/// ".../0000:02:00.0/nvme/nvme0" is the drive in that slot, whatever its number is.
std::string lastingPath(std::string path) {
    for (const std::string_view moving : {"/hwmon/hwmon", "/nvme/nvme", "/ieee80211/phy"}) {
        const std::string_view stem =
            std::string_view(path).substr(0, path.find_last_not_of("0123456789") + 1);
        if (stem.size() < path.size() && stem.ends_with(moving)) path.resize(stem.size() - moving.size());
    }
    // Zones are numbered in the order in which their drivers came; one chip stands for all zones of a type.
    if (lastComponent(path).starts_with("thermal_zone")) path.clear();
    return path;
}

/// The chip's own folder below the root, its class link followed:
/// "/devices/platform/coretemp.0/hwmon/hwmon3".
std::string realChipPath(int classFolder, const std::string& entry) {
    const auto link = linkTarget(classFolder, entry.c_str());
    return link ? joinedPath(hwmonClass, *link) : joinedPath(hwmonClass, entry);
}

std::string devicePathOf(int chipFolder, const std::string& chipPath) {
    if (const auto link = linkTarget(chipFolder, "device")) return joinedPath(chipPath, *link);
    // Without the link the place in the tree tells it, where the entry is a real one.
    if (!chipPath.starts_with("/devices/") || chipPath.starts_with("/devices/virtual/")) return {};
    const std::string parent = joinedPath(chipPath, "..");
    return lastComponent(parent) == "hwmon" ? joinedPath(parent, "..") : parent;
}

std::optional<LocatedChip> locateChip(int classFolder, const std::string& entry) {
    // The descriptor pins the folder first; only then is it asked whose it is.
    FileDescriptor folder = openFolderAt(classFolder, entry.c_str());
    if (!folder.isOpen()) return std::nullopt;
    LocatedChip chip;
    chip.folder = joinedPath(hwmonClass, entry);
    chip.rawDevicePath = devicePathOf(folder.get(), realChipPath(classFolder, entry));
    auto name = readAttribute(folder.get(), "name");
    if (!name) {
        // Drivers of the old registration have their files in the device's own folder.
        folder = openFolderAt(folder.get(), "device");
        if (!folder.isOpen()) return std::nullopt;
        name = readAttribute(folder.get(), "name");
        chip.folder += "/device";
    }
    if (!name || name->empty()) return std::nullopt;
    chip.name = withoutCounter(*name);
    chip.devicePath = lastingPath(chip.rawDevicePath);
    chip.isPathUnique = !chip.devicePath.empty();
    chip.files = std::make_shared<const FileDescriptor>(std::move(folder));
    return chip;
}

/// Chips that neither device nor name tells apart are counted: "iwlwifi", "iwlwifi#2".
void numberAlikes(std::vector<LocatedChip>& chips) {
    std::map<std::pair<std::string, std::string>, int> seen;
    for (LocatedChip& chip : chips) {
        if (!chip.isPathUnique) chip.devicePath = chip.name;
        const int count = ++seen[{chip.devicePath, chip.name}];
        if (count == 1) continue;
        chip.devicePath += "#" + std::to_string(count);
        chip.isPathUnique = false;
    }
}

}  // namespace

std::vector<LocatedChip> locateHwmonChips(const std::string& sys) {
    std::vector<LocatedChip> chips;
    const FileDescriptor classFolder = openFolder(sys + std::string(hwmonClass));
    if (!classFolder.isOpen()) return chips;
    for (const std::string& entry : namesInFolder(classFolder.get()))
        if (auto chip = locateChip(classFolder.get(), entry)) chips.push_back(std::move(*chip));
    numberAlikes(chips);
    std::sort(chips.begin(), chips.end(), [](const LocatedChip& a, const LocatedChip& b) {
        return std::tie(a.devicePath, a.name, a.folder) < std::tie(b.devicePath, b.name, b.folder);
    });
    return chips;
}

}  // namespace calorivo
