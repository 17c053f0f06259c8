#include "platform/linux/AtaSmartDrives.h"

#include "platform/linux/DriveBlocks.h"
#include "platform/linux/DriveRead.h"

#include <algorithm>
#include <set>
#include <utility>

namespace calorivo {

namespace {

constexpr std::string_view blockStorageClass = "IOATABlockStorageDevice";
/// Iterators have numbers of their own, above those of any service.
constexpr io_iterator_t firstIterator = 1U << 16U;

kern_return_t resultOf(bool isGood) { return isGood ? io_return::success : io_return::ioError; }

}  // namespace

/// One drive's plug-in and SMART interface in one, over a reading that does not change.
class AtaSmartDrives::PlugIn final : public IOCFPlugInInterface, public IOATASMARTInterface {
  public:
    explicit PlugIn(const DriveReading& reading) : reading_(reading) {}

    HRESULT QueryInterface(const CFUUIDBytes& interfaceID, IOATASMARTInterface*& interface) override {
        if (interfaceID != kIOATASMARTInterfaceID) return io_return::unsupported;
        interface = this;
        return 0;
    }
    // Nothing is ever switched: the drive would keep it for good, also for other programs. A drive whose
    // SMART is off answers as one that refuses.
    kern_return_t SMARTEnableDisableOperations(bool enable) override {
        return resultOf(!enable || reading_.isSwitchedOn);
    }
    kern_return_t SMARTEnableDisableAutosave(bool /*enable*/) override { return io_return::success; }
    kern_return_t SMARTReturnStatus(bool& exceededCondition) override {
        exceededCondition = false;
        return resultOf(reading_.hasStatus);
    }
    kern_return_t SMARTReadData(AtaBlock& data) override {
        if (reading_.hasData) data = reading_.smart;
        return resultOf(reading_.hasData);
    }
    kern_return_t SMARTValidateReadData(const AtaBlock& data) override {
        return resultOf(isChecksumRight(data));
    }
    kern_return_t GetATAIdentifyData(std::span<std::uint8_t> buffer, std::uint32_t& size) override {
        if (!reading_.hasIdentify) return io_return::ioError;
        const std::size_t count = std::min({buffer.size(), std::size_t{size}, reading_.identify.size()});
        std::copy_n(reading_.identify.begin(), count, buffer.begin());
        size = static_cast<std::uint32_t>(count);
        return io_return::success;
    }
    std::uint32_t Release() override { return 0; }

  private:
    DriveReading reading_;
};

AtaSmartDrives::AtaSmartDrives(std::string sys, std::unique_ptr<DriveReaders> readers,
                               MachineClocks::Clock asleep)
    : sys_(std::move(sys)),
      readers_(std::move(readers)),
      sleepWatch_(std::move(asleep)),
      lastIterator_(firstIterator) {}

AtaSmartDrives::~AtaSmartDrives() = default;

kern_return_t AtaSmartDrives::IOServiceGetMatchingServices(mach_port_t masterPort,
                                                           const DriveMatching& matching,
                                                           io_iterator_t& services) {
    if (masterPort != kIOMasterPortDefault) return io_return::badArgument;
    const bool isByProperty = matching == DriveMatching{{}, {{"SMART Capable", true}}};
    const bool isByClass = matching == DriveMatching{std::string(blockStorageClass), {}};
    if (isByProperty) rescan();
    Iterator found;
    for (std::size_t i = 0; i < drives_.size(); ++i) {
        const LocatedDrive& drive = drives_[i].located;
        const bool isMatching =
            (isByProperty && drive.isSmartCapable) || (isByClass && !isNvmeName(drive.name));
        if (isMatching) found.services.push_back(static_cast<io_service_t>(i + 1));
    }
    read(found.services);
    services = ++lastIterator_;
    iterators_[services] = std::move(found);
    return io_return::success;
}

void AtaSmartDrives::rescan() {
    drives_.clear();
    std::set<std::string> present;
    for (LocatedDrive& drive : locateDrives(sys_)) {
        present.insert(drive.identity);
        DriveStatus status{drive.name, drive.isSmartCapable, {}, {}};
        drives_.push_back({std::move(drive), std::move(status)});
    }
    std::erase_if(remembered_, [&](const auto& entry) { return !present.contains(entry.first); });
}

void AtaSmartDrives::read(const std::vector<io_service_t>& services) {
    std::vector<DriveRequest> requests;
    std::vector<ListedDrive*> drives;
    for (const io_service_t service : services) {
        ListedDrive& drive = drives_[service - 1];
        if (std::exchange(drive.isRead, true)) continue;
        requests.push_back({drive.located.name, drive.located.identity});
        drives.push_back(&drive);
    }
    if (requests.empty()) return;
    const std::vector<DriveAnswer> answers = readers_->read(requests);
    if (sleepWatch_.hasSlept()) remembered_.clear();
    for (std::size_t i = 0; i < drives.size(); ++i) take(*drives[i], answers.at(i));
}

void AtaSmartDrives::take(ListedDrive& drive, const DriveAnswer& answer) {
    const std::string& identity = drive.located.identity;
    drive.status.state = answer.state;
    DriveReading& shown = drive.status.reading;
    const bool isGivenUp =
        answer.state == DriveAnswer::State::hung || answer.state == DriveAnswer::State::failed;
    if (isGivenUp) remembered_.erase(identity);
    const bool isRead = answer.state == DriveAnswer::State::read;
    if (isRead && !answer.reading.isAsleep) remembered_[identity] = answer.reading;
    if (const auto last = remembered_.find(identity); last != remembered_.end()) {
        // One that is late now was asleep or awake as it was last.
        if (isRead) last->second.isAsleep = answer.reading.isAsleep;
        shown = last->second;
    } else {
        shown = answer.reading;
    }
    if (shown.hasIdentify) return;
    // Also one that does not answer should be called by its name.
    const auto identify = identifyDrive(drive.located.name, sys_);
    shown.hasIdentify = identify.has_value();
    if (identify) shown.identify = *identify;
}

io_object_t AtaSmartDrives::IOIteratorNext(io_iterator_t iterator) {
    const auto found = iterators_.find(iterator);
    if (found == iterators_.end() || found->second.next == found->second.services.size()) return 0;
    return found->second.services[found->second.next++];
}

kern_return_t AtaSmartDrives::IOObjectRelease(io_object_t object) {
    if (object < firstIterator) return io_return::success;  // services are not counted
    return iterators_.erase(object) != 0 ? io_return::success : io_return::badArgument;
}

kern_return_t AtaSmartDrives::IOCreatePlugInInterfaceForService(io_service_t service,
                                                                const CFUUIDBytes& pluginType,
                                                                const CFUUIDBytes& interfaceType,
                                                                IOCFPlugInInterface*& plugIn) {
    if (pluginType != kIOATASMARTUserClientTypeID || interfaceType != kIOCFPlugInInterfaceID)
        return io_return::unsupported;
    if (service == 0 || service > drives_.size()) return io_return::badArgument;
    const DriveReading& reading = drives_[service - 1].status.reading;
    // A drive that nobody may ask is none here: as one that refuses SMART it would be listed at 0 °C.
    if (!reading.hasIdentify || reading.source == DriveSource::none) return io_return::noDevice;
    plugIns_.push_back(std::make_unique<PlugIn>(reading));
    plugIn = plugIns_.back().get();
    return io_return::success;
}

kern_return_t AtaSmartDrives::IODestroyPlugInInterface(IOCFPlugInInterface* plugIn) {
    const auto isIt = [plugIn](const std::unique_ptr<PlugIn>& made) { return made.get() == plugIn; };
    return std::erase_if(plugIns_, isIt) != 0 ? io_return::success : io_return::badArgument;
}

std::vector<DriveStatus> AtaSmartDrives::statuses() const {
    std::vector<DriveStatus> statuses;
    for (const ListedDrive& drive : drives_)
        if (drive.isRead) statuses.push_back(drive.status);
    return statuses;
}

}  // namespace calorivo
