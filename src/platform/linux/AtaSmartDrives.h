#pragma once

#include "platform/AtaSmart.h"
#include "platform/linux/DriveReaders.h"
#include "platform/linux/DriveScan.h"
#include "platform/linux/SleepWatch.h"

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace calorivo {

/// What is known of one drive beside its dictionary.
struct DriveStatus {
    /// "sda", "nvme0".
    std::string name;
    bool isSmartCapable = false;
    DriveAnswer::State state = DriveAnswer::State::late;
    /// What the plug-in answers from: for a drive that sleeps or is late, what it told last.
    DriveReading reading;
};

/// The SMART plug-in on Linux: it answers from readings that were taken when its services were matched, so
/// that no call to a drive's interface waits for a drive. A drive that sleeps keeps the values that it had,
/// but not over a sleep of the machine.
class AtaSmartDrives final : public AtaSmart {
  public:
    AtaSmartDrives(std::string sys, std::unique_ptr<DriveReaders> readers,
                   MachineClocks::Clock asleep = timeAsleep);
    ~AtaSmartDrives() override;

    /// Matching by property looks for the drives that are there now and reads them; matching by class then
    /// reads the disks that were left out.
    kern_return_t IOServiceGetMatchingServices(mach_port_t masterPort, const DriveMatching& matching,
                                               io_iterator_t& services) override;
    [[nodiscard]] io_object_t IOIteratorNext(io_iterator_t iterator) override;
    kern_return_t IOObjectRelease(io_object_t object) override;
    kern_return_t IOCreatePlugInInterfaceForService(io_service_t service, const CFUUIDBytes& pluginType,
                                                    const CFUUIDBytes& interfaceType,
                                                    IOCFPlugInInterface*& plugIn) override;
    kern_return_t IODestroyPlugInInterface(IOCFPlugInInterface* plugIn) override;

    /// Every drive that was read since drives were last matched by property.
    [[nodiscard]] std::vector<DriveStatus> statuses() const;

  private:
    class PlugIn;
    struct ListedDrive {
        LocatedDrive located;
        DriveStatus status;
        bool isRead = false;
    };
    struct Iterator {
        std::vector<io_service_t> services;
        std::size_t next = 0;
    };

    void rescan();
    /// Those of these services that were not read since the drives were looked for.
    void read(const std::vector<io_service_t>& services);
    void take(ListedDrive& drive, const DriveAnswer& answer);

    std::string sys_;
    std::unique_ptr<DriveReaders> readers_;
    /// A service is the place of its drive in here, counted from 1.
    std::vector<ListedDrive> drives_;
    SleepWatch sleepWatch_;
    /// What each drive that is there told last since the machine woke, by its identity.
    std::map<std::string, DriveReading> remembered_;
    std::map<io_iterator_t, Iterator> iterators_;
    io_iterator_t lastIterator_;
    std::vector<std::unique_ptr<PlugIn>> plugIns_;
};

}  // namespace calorivo
