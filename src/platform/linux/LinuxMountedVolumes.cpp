#include "platform/linux/LinuxMountedVolumes.h"

#include "platform/linux/MountPoint.h"
#include "platform/linux/SmallFile.h"
#include "platform/linux/Sysfs.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace calorivo {

namespace {

constexpr std::string_view anonymousDevice = "0:";

/// The number that tells the disk from all others: the kernel's running one, where it gives them, and
/// otherwise that of its device. Empty for what is no disk.
std::string numberOfDisk(int disk) {
    if (const auto sequence = readAttributeNumber(disk, "diskseq"); sequence && *sequence > 0)
        return std::to_string(*sequence);
    const std::string device = readAttribute(disk, "dev").value_or("");
    const std::size_t colon = device.find(':');
    const auto major = parseAttributeNumber(device.substr(0, colon));
    const auto minor = parseAttributeNumber(colon != std::string::npos ? device.substr(colon + 1) : "");
    constexpr long minors = 1L << 20U;
    if (!major || !minor || *major < 0 || *major > minors || *minor < 0 || *minor >= minors) return {};
    return std::to_string(*major * minors + *minor);
}

/// What stands below a device of the device mapper, an encrypted one for instance, when that is one device.
FileDescriptor belowMapping(FileDescriptor device) {
    constexpr int deepest = 8;
    for (int depth = 0; depth < deepest; ++depth) {
        const FileDescriptor folder = openFolderAt(device.get(), "slaves");
        const auto names = folder.isOpen() ? namesInFolder(folder.get()) : std::vector<std::string>();
        if (names.size() != 1) break;
        FileDescriptor below = openFolderAt(folder.get(), names.front().c_str());
        if (!below.isOpen()) break;
        device = std::move(below);
    }
    return device;
}

/// "disk7s2"; empty for what is on no disk.
std::string diskName(FileDescriptor device) {
    constexpr std::string_view prefix = "disk";
    device = belowMapping(std::move(device));
    const auto partition = readAttributeNumber(device.get(), "partition");
    const std::string number =
        partition ? numberOfDisk(openFolderAt(device.get(), "..").get()) : numberOfDisk(device.get());
    if (number.empty()) return {};
    std::string name = std::string(prefix) + number;
    if (partition) name.append("s").append(std::to_string(*partition));
    return name;
}

/// The block device of a mount. Some file systems, btrfs for one, have a number of their own, which is none
/// of a device, and are known by what was mounted.
FileDescriptor deviceOf(const Mount& mount, const std::string& sys) {
    constexpr std::string_view devices = "/dev/";
    if (mount.device.find_first_not_of("0123456789:") != std::string::npos) return {};
    if (!mount.device.starts_with(anonymousDevice)) return openFolder(sys + "/dev/block/" + mount.device);
    if (!mount.source.starts_with(devices)) return {};
    const std::string name = mount.source.substr(devices.size());
    return name.find('/') == std::string::npos ? openFolder(sys + "/class/block/" + name) : FileDescriptor();
}

/// The folder as the system's other programs would call it.
std::string volumePath(const std::string& point) {
    for (const std::string_view folder : {"/media/", "/run/media/"}) {
        if (!point.starts_with(folder)) continue;
        const std::size_t user = point.find('/', folder.size());
        if (user != std::string::npos && user + 1 < point.size()) return "/Volumes" + point.substr(user);
    }
    return point;
}

}  // namespace

LinuxMountedVolumes::LinuxMountedVolumes(std::string proc, std::string sys)
    : proc_(std::move(proc)), sys_(std::move(sys)) {}

std::vector<std::string> LinuxMountedVolumes::mountedLocalVolumePaths() {
    std::vector<std::string> paths;
    for (Volume& volume : volumes()) paths.push_back(std::move(volume.path));
    return paths;
}

std::string LinuxMountedVolumes::BSDNameOfVolume(const std::string& path) { return volumeAt(path).device; }

std::string LinuxMountedVolumes::displayNameAtPath(const std::string& path) { return volumeAt(path).name; }

std::vector<LinuxMountedVolumes::Volume> LinuxMountedVolumes::volumes() const {
    std::vector<Volume> found;
    const SmallFile mounts = readSmallFile(proc_ + "/self/mountinfo", SymbolicLinks::followed);
    for (const Mount& mount : parseMounts(mounts.text)) {
        FileDescriptor device = deviceOf(mount, sys_);
        std::string disk = device.isOpen() ? diskName(std::move(device)) : std::string();
        if (disk.empty()) continue;
        const std::string path = volumePath(mount.point);
        std::string unusedPath = path;
        const auto isUsed = [&] { return std::ranges::count(found, unusedPath, &Volume::path) != 0; };
        for (int number = 1; isUsed(); ++number) unusedPath = path + " " + std::to_string(number);
        std::string name(lastComponent(mount.point));
        found.push_back({std::move(unusedPath), std::move(disk), std::move(name)});
    }
    return found;
}

LinuxMountedVolumes::Volume LinuxMountedVolumes::volumeAt(const std::string& path) const {
    for (Volume& volume : volumes())
        if (volume.path == path) return std::move(volume);
    return {};
}

}  // namespace calorivo
