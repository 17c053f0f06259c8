#include "platform/Format.h"
#include "platform/linux/LinuxMachine.h"
#include "platform/linux/Sysfs.h"

#include <algorithm>
#include <map>

// How the table of keys is built: once, when the machine is opened.

namespace calorivo {

namespace {

using std::chrono::milliseconds;

/// How long the first look at all devices may take. What has not answered by then is left out.
constexpr milliseconds openingPatience{3000};
/// A device that takes longer than this for one job gets a thread of its own.
constexpr milliseconds deviceDeadline{25};
/// Room for so many open files is made at once: what a chip may have, and what a process usually may.
constexpr std::size_t filesOfChip = 16;
constexpr std::size_t mostFiles = 4096;
/// The fan keys have room for one digit.
constexpr int mostFans = 10;
/// Drives are read in ways that do not wake them; the driver's own reading may.
constexpr std::string_view driveChip = "drivetemp";
constexpr std::string_view macChip = "applesmc";

std::string fanKey(int number, std::string_view suffix) { return format("F%d%@", number, suffix); }

bool isFanSpeedKey(std::uint32_t key) {
    const auto suffix = static_cast<std::uint16_t>(key);
    return key >> 24 == 'F' &&
           (suffix == ('A' << 8 | 'c') || suffix == ('M' << 8 | 'n') || suffix == ('M' << 8 | 'x') ||
            suffix == ('S' << 8 | 'f') || suffix == ('T' << 8 | 'g'));
}

}  // namespace

LinuxSmc::Machine::Machine(const LinuxSmcOptions& options)
    : options_(options), store_(options.stateFolder), sleepWatch_(options.clocks.asleep) {
    findDevices();
    describeDevices();
    buildTable();
    refreshedAt_ = options_.clocks.sinceBoot();
}

void LinuxSmc::Machine::findDevices() {
    const std::vector<LocatedChip> chips = locateHwmonChips(options_.sys);
    if (!chips.empty())
        makeRoomForDescriptors(chips.front().files->get(), std::min(chips.size() * filesOfChip, mostFiles));
    const auto mac =
        std::find_if(chips.begin(), chips.end(), [](const LocatedChip& c) { return c.name == macChip; });
    isMac_ = mac != chips.end();
    const auto add = [this](std::shared_ptr<ReadingsDevice> device, std::shared_ptr<HwmonDevice> chip) {
        devices_.push_back(std::move(device));
        hwmon_.push_back(std::move(chip));
        return devices_.size() - 1;
    };
    if (isMac_) {
        const std::string folder = options_.sys + mac->folder;
        if (openSmcKeyWindow(folder)) {
            const auto open = [sys = options_.sys]() -> std::unique_ptr<SmcKeyWindow> {
                for (const LocatedChip& chip : locateHwmonChips(sys))
                    if (chip.name == macChip) return openSmcKeyWindow(sys + chip.folder);
                return nullptr;
            };
            controller_ = std::make_shared<AppleSmcDevice>(open, options_.clocks);
            controllerDevice_ = add(controller_, nullptr);
        }
        auto files = std::make_shared<HwmonDevice>(options_.sys, *mac, options_.clocks);
        macFilesDevice_ = add(files, files);
    }
    if (isMac_ && !options_.isUsingAllChips) return;
    for (const LocatedChip& chip : chips) {
        if (chip.name == driveChip || chip.name == macChip) continue;
        auto device = std::make_shared<HwmonDevice>(options_.sys, chip, options_.clocks);
        add(device, device);
    }
}

void LinuxSmc::Machine::describeDevices() {
    std::vector<std::size_t> wanted;
    for (std::size_t i = 0; i < devices_.size(); ++i) {
        // With the key space at hand the driver's text files only repeat it.
        const bool isRepeating = isMac_ && controller_ && i == macFilesDevice_;
        if (!isRepeating) wanted.push_back(i);
    }
    if (wanted.empty()) return;
    threads_ = std::make_unique<DeviceThreads>(
        std::vector<std::shared_ptr<Device>>(devices_.begin(), devices_.end()), deviceDeadline);
    threads_->run(DeviceJob::describe, wanted, openingPatience);
    for (const std::size_t i : wanted) {
        if (devices_[i]->isDescribed())
            described_.push_back(i);
        else if (threads_->isBusy(i))
            problems_.push_back(format("%@: no answer within %d seconds; left out until the next start",
                                       hwmon_[i] ? hwmon_[i]->place() : std::string(macChip),
                                       openingPatience.count() / 1000));
        else if (devices_[i] == controller_)
            problems_.push_back(
                format("%@: no answer from the controller; left out until the next start", macChip));
    }
}

void LinuxSmc::Machine::buildTable() {
    if (isMac_ && controller_)
        addController();
    else if (isMac_)
        addMacFiles();
    if (!isMac_ || options_.isUsingAllChips) addNamedChips();
    finishTable();
}

LinuxSmc::Machine::Entry& LinuxSmc::Machine::addEntry(std::string_view key, std::string_view type,
                                                      Form form) {
    Entry& entry = table_.emplace_back();
    entry.key = smcCode(key);
    entry.type = smcCode(type);
    entry.form = form;
    return entry;
}

void LinuxSmc::Machine::addController() {
    if (!controller_->isDescribed()) return;
    bool hasFloatingSpeeds = false;
    for (std::size_t item = 0; item < controller_->keys().size(); ++item) {
        const AppleSmcDevice::Key& key = controller_->keys()[item];
        Entry& entry = table_.emplace_back();
        entry.key = key.key;
        entry.type = key.type;
        entry.form = Form::raw;
        entry.value.size = key.length;
        entry.sources = {{controllerDevice_, item}};
        hasFloatingSpeeds = hasFloatingSpeeds || (key.type == smcCode("flt ") && isFanSpeedKey(key.key));
    }
    if (hasFloatingSpeeds) replaceFloatingSpeeds();
}

/// Newer controllers hold speeds as floating-point numbers, which the readers do not know: the driver's text
/// files give them as whole revolutions.
void LinuxSmc::Machine::replaceFloatingSpeeds() {
    const std::array files{macFilesDevice_};
    threads_->run(DeviceJob::describe, files, openingPatience);
    if (!devices_[macFilesDevice_]->isDescribed()) return;
    described_.push_back(macFilesDevice_);
    for (Entry& entry : table_) {
        if (entry.type != smcCode("flt ") || !isFanSpeedKey(entry.key)) continue;
        static constexpr std::array<std::pair<std::string_view, std::string_view>, 5> suffixes{
            {{"Ac", "input"}, {"Mn", "min"}, {"Mx", "max"}, {"Sf", "safe"}, {"Tg", "output"}}};
        for (const auto& [suffix, file] : suffixes) {
            if (smcCode(fanKey(0, suffix)) << 16 != entry.key << 16) continue;
            const int fan = static_cast<int>((entry.key >> 16) & 0xFF) - '0' + 1;
            const std::size_t item = hwmonAt(macFilesDevice_).itemOf(format("fan%d_%@", fan, file));
            if (item == HwmonDevice::none) continue;
            entry.type = smcCode("fpe2");
            entry.form = Form::speed;
            entry.sources = {{macFilesDevice_, item}};
        }
    }
}

void LinuxSmc::Machine::addMacFiles() {
    if (!devices_[macFilesDevice_]->isDescribed()) return;
    Entry forced;
    for (const HwmonChannel& channel : hwmonAt(macFilesDevice_).chip().channels) {
        if (channel.kind == HwmonChannel::Kind::temperature) {
            // The label is the controller's own key.
            if (channel.label.size() != 4 || channel.label.front() != 'T') continue;
            addEntry(channel.label, "sp78", Form::macTemperature).sources = {
                itemOf(macFilesDevice_, channel, "input")};
        } else if (channel.number >= 1 && channel.number <= mostFans) {
            addFan(channel.number - 1, macFilesDevice_, channel, channel.label);
            const Source manual = itemOf(macFilesDevice_, channel, "manual");
            if (manual.second != HwmonDevice::none) forced.sources.push_back(manual);
        }
    }
    addEntry("FS! ", "ui16", Form::forcedFans).sources = forced.sources;
    fans_ = std::min<std::size_t>(fans_, mostFans);
}

void LinuxSmc::Machine::addNamedChips() {
    std::vector<HwmonChip> chips;
    std::vector<std::size_t> deviceOf;
    for (const std::size_t device : described_) {
        if (!hwmon_[device] || (isMac_ && device == macFilesDevice_)) continue;
        chips.push_back(hwmonAt(device).chip());
        deviceOf.push_back(device);
    }
    store_.load();
    for (const Entry& entry : table_)
        store_.reserve(format("%c%c%c%c", entry.key >> 24, (entry.key >> 16) & 0xFF, (entry.key >> 8) & 0xFF,
                              entry.key & 0xFF));
    HwmonNames names = nameHwmonChannels(chips, store_, options_.namingFiles, options_.pciIds);
    store_.save();
    problems_.insert(problems_.end(), names.problems.begin(), names.problems.end());
    problems_.insert(problems_.end(), store_.problems().begin(), store_.problems().end());

    std::map<std::string, const NamedChannel*> fans;
    for (const NamedChannel& named : names.channels) {
        const HwmonChannel& channel = chips[named.chip].channels[named.channel];
        if (channel.kind == HwmonChannel::Kind::fan) {
            fans.emplace(named.key, &named);
            continue;
        }
        Entry& entry = addEntry(named.key, "sp78", Form::temperature);
        entry.sources = {itemOf(deviceOf[named.chip], channel, "input")};
        for (const auto& [chip, other] : named.maximumOf)
            entry.sources.push_back(itemOf(deviceOf[chip], chips[chip].channels[other], "input"));
        ++temperatures_;
        machineSensors_.push_back({named.key, named.name, named.area});
    }
    if (isMac_) return;  // there the fans are the controller's
    // Fans are counted without gaps, in the order of their keys: a fan that is gone leaves no empty one
    // behind.
    int number = 0;
    for (const auto& [key, fan] : fans)
        addFan(number++, deviceOf[fan->chip], chips[fan->chip].channels[fan->channel], fan->name);
}

void LinuxSmc::Machine::addFan(int number, std::size_t device, const HwmonChannel& channel,
                               std::string_view name) {
    fans_ = std::max(fans_, static_cast<std::size_t>(number) + 1);
    addSpeed(fanKey(number, "Ac"), itemOf(device, channel, "input"));
    for (const auto& [suffix, file] : {std::pair("Mn", "min"), std::pair("Mx", "max")}) {
        const Source source = itemOf(device, channel, file);
        // A limit that the driver does not know is 0: a failure would be shown as a limit of −1.
        if (source.second == HwmonDevice::none)
            addEntry(fanKey(number, suffix), "fpe2", Form::constant).value = encodeFpe2(0);
        else
            addSpeed(fanKey(number, suffix), source);
    }
    addSpeed(fanKey(number, "Sf"), itemOf(device, channel, "safe"));
    const Source target = itemOf(device, channel, "target");
    addSpeed(fanKey(number, "Tg"),
             target.second != HwmonDevice::none ? target : itemOf(device, channel, "output"));
    if (name.empty()) {
        Entry& none = addEntry(fanKey(number, "ID"), "{fds", Form::failing);
        none.isListed = false;
    } else {
        addEntry(fanKey(number, "ID"), "{fds", Form::constant).value = encodeFanName(name);
    }
}

void LinuxSmc::Machine::addSpeed(std::string_view key, Source source) {
    if (source.second == HwmonDevice::none) return;
    addEntry(key, "fpe2", Form::speed).sources = {source};
}

void LinuxSmc::Machine::finishTable() {
    const bool hasFans = fans_ > 0 || temperatures_ > 0 || !table_.empty();
    if (!controller_ && hasFans) {
        addEntry("FNum", "ui8 ", Form::constant).value = encodeUnsigned(static_cast<std::uint32_t>(fans_), 1);
        if (!isMac_) addEntry("FS! ", "ui16", Form::constant).value = encodeUnsigned(0, 2);
    }
    if (table_.empty()) return;
    if (const auto own = std::find_if(table_.begin(), table_.end(),
                                      [](const Entry& e) { return e.key == smcCode("#KEY"); });
        own != table_.end())
        table_.erase(own);
    addEntry("#KEY", "ui32", Form::constant);
    sortTable();
    const auto sameKey = [](const Entry& a, const Entry& b) { return a.key == b.key; };
    table_.erase(std::unique(table_.begin(), table_.end(), sameKey), table_.end());
    for (const Entry& entry : table_)
        if (entry.isListed) order_.push_back(entry.key);
    find(smcCode("#KEY"))->value = encodeUnsigned(static_cast<std::uint32_t>(order_.size()), 4);
}

/// An entry is large: the keys are sorted, then each entry is moved once.
void LinuxSmc::Machine::sortTable() {
    std::vector<std::pair<std::uint32_t, std::size_t>> places;
    places.reserve(table_.size());
    for (const Entry& entry : table_) places.emplace_back(entry.key, places.size());
    std::sort(places.begin(), places.end());
    std::vector<Entry> sorted;
    sorted.reserve(table_.size());
    for (const auto& [key, place] : places) sorted.push_back(std::move(table_[place]));
    table_ = std::move(sorted);
}

LinuxSmc::Machine::Source LinuxSmc::Machine::itemOf(std::size_t device, const HwmonChannel& channel,
                                                    std::string_view suffix) const {
    return {device, hwmonAt(device).itemOf(channelFile(channel, suffix))};
}

const HwmonDevice& LinuxSmc::Machine::hwmonAt(std::size_t device) const { return *hwmon_[device]; }

}  // namespace calorivo
