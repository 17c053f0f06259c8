#include "platform/linux/DriveScan.h"

#include "platform/linux/Sysfs.h"

#include <algorithm>
#include <optional>
#include <tuple>

namespace calorivo {

namespace {

constexpr std::string_view blockFolder = "/block";
constexpr std::string_view nvmeFolder = "/class/nvme";

/// Where the entry's link leads, below the root: "/devices/pci0000:00/.../block/sda".
std::string realPath(int folder, std::string_view folderPath, const std::string& entry) {
    const auto link = linkTarget(folder, entry.c_str());
    return joinedPath(folderPath, link ? *link : entry);
}

/// The parts one after another, so that no two lists of parts give the same text.
std::string identityOf(std::initializer_list<std::optional<std::string>> parts) {
    std::string identity;
    for (const auto& part : parts) identity.append(part.value_or("")).append("|");
    return identity;
}

std::optional<LocatedDrive> locateDisk(int blocks, const std::string& name) {
    const FileDescriptor folder = openFolderAt(blocks, name.c_str());
    const FileDescriptor device = folder.isOpen() ? openFolderAt(folder.get(), "device") : FileDescriptor();
    if (!device.isOpen()) return std::nullopt;
    LocatedDrive drive;
    drive.name = name;
    // A translated disk has no vendor of its own; any other that knows ATA has a page that says so.
    drive.isSmartCapable = readAttribute(device.get(), "vendor").value_or("").starts_with("ATA ") ||
                           openAttribute(device.get(), "vpd_pg89").isOpen();
    drive.identity =
        identityOf({realPath(blocks, blockFolder, name), readAttribute(folder.get(), "diskseq"),
                    readAttribute(device.get(), "model"), readAttribute(device.get(), "vpd_pg80")});
    return drive;
}

std::optional<LocatedDrive> locateNvme(int drives, const std::string& name) {
    const FileDescriptor folder = openFolderAt(drives, name.c_str());
    if (!folder.isOpen()) return std::nullopt;
    return LocatedDrive{name,
                        identityOf({realPath(drives, nvmeFolder, name), readAttribute(folder.get(), "model"),
                                    readAttribute(folder.get(), "serial")}),
                        true};
}

template <typename Locate>
void append(std::vector<LocatedDrive>& drives, const std::string& path, std::string_view prefix,
            Locate locate) {
    const FileDescriptor folder = openFolder(path);
    if (!folder.isOpen()) return;
    std::vector<std::string> names = namesInFolder(folder.get());
    std::erase_if(names, [prefix](const std::string& name) { return !name.starts_with(prefix); });
    std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
        return std::tuple(a.size(), a) < std::tuple(b.size(), b);
    });
    for (const std::string& name : names)
        if (auto drive = locate(folder.get(), name)) drives.push_back(std::move(*drive));
}

}  // namespace

bool isNvmeName(std::string_view name) { return name.starts_with("nvme"); }

std::vector<LocatedDrive> locateDrives(const std::string& sys) {
    std::vector<LocatedDrive> drives;
    append(drives, sys + std::string(blockFolder), "sd", locateDisk);
    append(drives, sys + std::string(nvmeFolder), "nvme", locateNvme);
    return drives;
}

}  // namespace calorivo
