#pragma once

#include "platform/IOKit.h"
#include "smc/SmcRecord.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace calorivo::test {

/// A controller in memory, with the keys that a test gives it, behind the real record exchange. While it
/// lives it is the SMC module's provider. Keys are walked in byte order; "#KEY" counts them unless a test
/// sets it.
class FakeSmc final : public IOKit {
  public:
    FakeSmc();
    ~FakeSmc() override;

    FakeSmc& set(std::string_view key, std::string_view type, std::vector<std::uint8_t> bytes);
    /// An "sp78" value that reads back as exactly this many degrees (a multiple of 0.25).
    FakeSmc& setTemperature(std::string_view key, double celsius);
    /// An "fpe2" value that reads back as exactly this speed.
    FakeSmc& setSpeed(std::string_view key, int rpm);
    /// A whole fan: speed, minimum, maximum and, unless it is empty, its name. "FNum" counts them.
    FakeSmc& addFan(int rpm, int minimum, int maximum, std::string_view name = {});
    FakeSmc& remove(std::string_view key);
    /// Makes every request for the key fail with `result`; 0 lets it answer again.
    FakeSmc& fail(std::string_view key, kern_return_t result = io_return::ioError);

    kern_return_t masterPortResult = 0;
    kern_return_t matchingResult = 0;
    kern_return_t openResult = 0;
    bool hasService = true;
    /// Every platform call but the requests, in order, as it would be written.
    std::vector<std::string> calls;
    /// Every request, as "command key".
    std::vector<std::string> requests;
    /// The records of the write commands.
    std::vector<SMCKeyData> writes;
    int reads = 0;

    kern_return_t IOMasterPort(mach_port_t bootstrapPort, mach_port_t& masterPort) override;
    kern_return_t IOServiceGetMatchingServices(mach_port_t masterPort, const MatchingDictionary& matching,
                                               io_iterator_t& services) override;
    [[nodiscard]] io_object_t IOIteratorNext(io_iterator_t iterator) override;
    kern_return_t IOObjectRelease(io_object_t object) override;
    [[nodiscard]] task_port_t machTaskSelf() const override { return 0x103; }
    kern_return_t IOServiceOpen(io_service_t service, task_port_t owningTask, std::uint32_t type,
                                io_connect_t& connection) override;
    kern_return_t IOServiceClose(io_connect_t connection) override;
    kern_return_t IOConnectCallStructMethod(io_connect_t connection, std::uint32_t selector,
                                            const void* input, std::size_t inputSize, void* output,
                                            std::size_t& outputSize) override;

  private:
    struct Entry {
        std::string type;
        std::vector<std::uint8_t> bytes;
        kern_return_t failure = 0;
        bool exists = false;
    };
    kern_return_t answer(const SMCKeyData& input, SMCKeyData& output);
    void countKeys();

    std::map<std::string, Entry, std::less<>> entries_;
    bool isKeyCountGiven_ = false;
    int fans_ = 0;
    io_connect_t connection_ = 0;
};

}  // namespace calorivo::test
