#pragma once

#include "platform/AtaSmart.h"
#include "support/DriveData.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace calorivo::test {

/// What a fake drive answers; a call that is named in `failing` fails.
struct FakeDrive {
    AtaBlock identify{};
    AtaBlock smart{};
    std::vector<std::string> failing;
};

/// Drives from memory that write down every call.
class FakeAtaSmart final : public AtaSmart {
  public:
    /// Those with "SMART Capable", and those of the class for block storage.
    std::vector<FakeDrive> capable;
    std::vector<FakeDrive> blockStorage;
    /// Services that do not match at all: the request fails.
    bool isMatchingFailing = false;
    /// Each call with its arguments, as "call argument".
    std::vector<std::string> calls;

    kern_return_t IOServiceGetMatchingServices(mach_port_t masterPort, const DriveMatching& matching,
                                               io_iterator_t& services) override;
    [[nodiscard]] io_object_t IOIteratorNext(io_iterator_t iterator) override;
    kern_return_t IOObjectRelease(io_object_t object) override;
    kern_return_t IOCreatePlugInInterfaceForService(io_service_t service, const CFUUIDBytes& pluginType,
                                                    const CFUUIDBytes& interfaceType,
                                                    IOCFPlugInInterface*& plugIn) override;
    kern_return_t IODestroyPlugInInterface(IOCFPlugInInterface* plugIn) override;

  private:
    struct PlugIn;
    [[nodiscard]] const std::vector<FakeDrive>& drivesOf(io_iterator_t iterator) const;

    std::map<io_iterator_t, std::size_t> positions_;
    std::vector<std::shared_ptr<PlugIn>> plugIns_;
};

}  // namespace calorivo::test
