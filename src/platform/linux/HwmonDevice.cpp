#include "platform/linux/HwmonDevice.h"

#include "platform/linux/Sysfs.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>

namespace calorivo {

namespace {

using std::chrono::nanoseconds;
using std::chrono::seconds;

/// How often a device that went away is looked for.
constexpr nanoseconds searchInterval = seconds(2);

/// A broken sensor reads at the end of its range or jumps: only then is it worth asking for its fault file.
bool isSuspicious(long value, const Reading& last) {
    constexpr long top = 110000;
    constexpr long jump = 15000;
    return value <= 0 || value >= top || !last.wasRead || last.error != 0 ||
           std::abs(value - last.value) >= jump;
}

}  // namespace

std::size_t HwmonDevice::itemOf(std::string_view file) const {
    const auto found = items_.find(file);
    return found != items_.end() ? found->second : none;
}

std::string HwmonDevice::place() const {
    const std::lock_guard lock(placeMutex_);
    return located_.rawDevicePath.empty() ? located_.name : located_.name + " at " + located_.rawDevicePath;
}

std::string HwmonDevice::pathOf(std::size_t item) const {
    const std::lock_guard lock(placeMutex_);
    return sys_ + located_.folder + "/" + files_[item].name;
}

void HwmonDevice::addFile(std::string name, FirstPass firstPass) {
    if (!std::binary_search(names_.begin(), names_.end(), name)) return;
    items_.emplace(name, addItem(firstPass));
    files_.emplace_back().name = std::move(name);
}

void HwmonDevice::addChannel(const HwmonChannel& channel) {
    addFile(channelFile(channel, "input"), FirstPass::read);
    File& input = files_.back();
    if (!channel.label.empty()) {
        input.labelName = channelFile(channel, "label");
        input.label = channel.label;
    }
    const std::string fault = channelFile(channel, "fault");
    if (std::binary_search(names_.begin(), names_.end(), fault)) input.faultName = fault;
    if (channel.kind != HwmonChannel::Kind::fan) return;
    for (const char* const suffix : {"min", "max"}) addFile(channelFile(channel, suffix), FirstPass::read);
    for (const char* const suffix : {"safe", "target", "output", "manual"})
        addFile(channelFile(channel, suffix), FirstPass::leave);
}

bool HwmonDevice::describe() {
    folder_ = located_.files;
    DescribedChip described = describeHwmonChip(sys_, located_);
    chip_ = std::move(described.chip);
    names_ = std::move(described.files);
    files_.reserve(names_.size());
    constexpr std::uint32_t displayClass = 0x03;
    if (chip_.pciClass >> 8 == displayClass) openRuntimePower();
    for (const HwmonChannel& channel : chip_.channels) addChannel(channel);
    return !chip_.channels.empty();
}

void HwmonDevice::openRuntimePower() {
    const FileDescriptor device = openFolder(sys_ + located_.rawDevicePath);
    if (device.isOpen()) runtimePower_.open(device.get());
}

void HwmonDevice::firstPassEnded() {
    for (HwmonChannel& channel : chip_.channels) {
        const std::size_t item = itemOf(channelFile(channel, "input"));
        const Reading first = peek(item);
        channel.wasRead = first.wasRead && !first.isAsleep && first.error == 0;
        channel.firstValue = first.value;
        channel.isFaulty = first.error == ENODATA && !files_[item].faultName.empty();
        if (channel.kind != HwmonChannel::Kind::fan) continue;
        if (const std::size_t minimum = itemOf(channelFile(channel, "min")); minimum != none)
            channel.minimum = peek(minimum).value;
    }
}

int HwmonDevice::openFile(File& file) {
    if (!file.descriptor.isOpen()) file.descriptor = openAttribute(folder_->get(), file.name.c_str());
    return file.descriptor.get();
}

bool HwmonDevice::isFaulty(const File& file) const {
    return !file.faultName.empty() &&
           readAttributeNumber(folder_->get(), file.faultName.c_str()).value_or(0) != 0;
}

void HwmonDevice::machineHasSlept() {
    for (File& file : files_) file.descriptor.reset();
    // The open folder is the chip itself: as long as its name is there, no other chip can have taken its
    // place, and chips that are told apart by counting only need not be looked for.
    if (!isLost_) loseIfGone();
    nextSearch_ = {};
    if (!isLost_ && runtimePower_.isOpen()) openRuntimePower();
}

HwmonDevice::Pass HwmonDevice::beginPass() {
    if (isLost_ && sinceBoot() >= nextSearch_) {
        nextSearch_ = sinceBoot() + searchInterval;
        isLost_ = !findAgain();
    }
    if (!runtimePower_.isOpen()) return Pass::read;
    switch (runtimePower_.advice(sinceBoot())) {
        case RuntimePower::Advice::read:
            return Pass::read;
        case RuntimePower::Advice::wait:
            return Pass::keep;
        case RuntimePower::Advice::leave:
            break;
    }
    return Pass::leaveAsleep;
}

void HwmonDevice::readItem(std::size_t item, const Reading& last, Reading& reading) {
    File& file = files_[item];
    if (isLost_) {
        reading.error = ENODEV;
        return;
    }
    const int descriptor = openFile(file);
    if (descriptor < 0) {
        reading.error = errno;
        loseIfGone();
        return;
    }
    const AttributeReading now = readOpenNumber(descriptor);
    reading.value = now.value;
    reading.error = now.error;
    if (now.error == ENODEV) {
        file.descriptor.reset();
        loseIfGone();
    } else if (now.error == 0 && !file.faultName.empty() && isSuspicious(now.value, last) && isFaulty(file)) {
        reading.error = ENODATA;
    }
}

/// A driver may say "no such device" of one sensor as well: the chip is gone only when its folder is.
void HwmonDevice::loseIfGone() {
    if (faccessat(folder_->get(), "name", F_OK, 0) == 0) return;
    isLost_ = true;
    nextSearch_ = {};
    folder_.reset();
    for (File& file : files_) file.descriptor.reset();
}

bool HwmonDevice::findAgain() {
    const std::vector<LocatedChip> chips = locateHwmonChips(sys_);
    const auto isSame = [&](const LocatedChip& chip) {
        return chip.name == located_.name && chip.devicePath == located_.devicePath;
    };
    const auto found = std::find_if(chips.begin(), chips.end(), isSame);
    if (found == chips.end()) return false;
    // Chips that are told apart by counting only cannot be told apart after one of them went.
    const auto alikes = std::count_if(chips.begin(), chips.end(),
                                      [&](const LocatedChip& chip) { return chip.name == located_.name; });
    if (!located_.isPathUnique && (alikes > 1 || located_.devicePath != located_.name)) return false;

    const DescribedChip described = describeHwmonChip(sys_, *found);
    const bool isOtherDrive = described.chip.driveModel != chip_.driveModel ||  // in the same slot
                              described.chip.driveSerial != chip_.driveSerial;
    if (isOtherDrive) return false;
    for (const File& file : files_)
        if (!file.labelName.empty() &&
            readAttribute(found->files->get(), file.labelName.c_str()) != file.label)
            return false;
    folder_ = found->files;
    {
        const std::lock_guard lock(placeMutex_);
        located_ = *found;
    }
    if (runtimePower_.isOpen()) openRuntimePower();
    return true;
}

}  // namespace calorivo
