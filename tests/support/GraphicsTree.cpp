#include "support/GraphicsTree.h"

namespace calorivo::test {

namespace {

std::string folderOf(const std::string& address) { return "devices/pci0000:00/" + address; }

std::string line(std::string_view text) { return std::string(text) + '\n'; }

}  // namespace

std::string GraphicsTree::pci(const std::string& address, std::string_view deviceClass,
                              std::string_view vendor, std::string_view number) {
    const std::string folder = folderOf(address);
    file(folder + "/class", line(deviceClass)).file(folder + "/vendor", line(vendor));
    file(folder + "/device", line(number));
    file(folder + "/subsystem_vendor", "0x106b\n").file(folder + "/subsystem_device", "0x017a\n");
    link("bus/pci/devices/" + address, "../../../" + folder);
    return folder;
}

std::string GraphicsTree::gpu(const std::string& address, std::string_view vendor, std::string_view number,
                              const std::string& card) {
    std::string folder = pci(address, "0x030000", vendor, number);
    file(folder + "/boot_vga", address == integrated ? "1\n" : "0\n");
    link(folder + "/drm/" + card + "/device", "../../../" + address);
    link("class/drm/" + card, "../../" + folder + "/drm/" + card);
    power(address, "active", "on");
    return folder;
}

void GraphicsTree::unplug(const std::string& address, const std::string& card) {
    remove("class/drm/" + card).remove("bus/pci/devices/" + address).remove(folderOf(address));
}

void GraphicsTree::power(const std::string& address, std::string_view status, std::string_view control) {
    file(folderOf(address) + "/power/runtime_status", line(status));
    file(folderOf(address) + "/power/control", line(control));
}

void GraphicsTree::connector(const std::string& address, const std::string& card, const std::string& name,
                             std::string_view status, std::string_view enabled) {
    const std::string entry = card + '-' + name;
    const std::string folder = folderOf(address) + "/drm/" + card + '/' + entry;
    file(folder + "/status", line(status)).file(folder + "/enabled", line(enabled));
    link("class/drm/" + entry, "../../" + folder);
}

void GraphicsTree::macWithMux() {
    gpu(integrated, "0x8086", "0x3e9b", "card0");
    gpu(discrete, "0x1002", "0x67ef", "card1");
    connector(integrated, "card0", "eDP-1", "connected", "enabled");
    connector(integrated, "card0", "DP-1", "disconnected", "disabled");
    connector(discrete, "card1", "eDP-2", "disconnected", "disabled");
    connector(discrete, "card1", "DP-2", "disconnected", "disabled");
}

void GraphicsTree::hybridNotebook() {
    gpu(integrated, "0x8086", "0x3e9b", "card0");
    gpu(discrete, "0x10de", "0x1f91", "card1");
    power(discrete, "active", "auto");
    connector(integrated, "card0", "eDP-1", "connected", "enabled");
    connector(discrete, "card1", "HDMI-A-1", "disconnected", "disabled");
}

}  // namespace calorivo::test
