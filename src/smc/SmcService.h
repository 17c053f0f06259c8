#pragma once

#include "platform/SensorProvider.h"
#include "smc/SmcRecord.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace calorivo {

/// Size and type of a key; both 0 for a key that does not exist.
struct SmcKeyInformation {
    std::uint32_t dataSize = 0;
    std::uint32_t dataType = 0;
};

/// Answers the platform calls and the record exchange in place of the controller's own driver. A provider
/// says only what keys it has and what they hold. Nothing is ever written: write requests are refused and
/// counted. Main thread.
class SmcService : public SensorProvider {
  public:
    kern_return_t IOMasterPort(mach_port_t bootstrapPort, mach_port_t& masterPort) final;
    kern_return_t IOServiceGetMatchingServices(mach_port_t masterPort, const MatchingDictionary& matching,
                                               io_iterator_t& services) final;
    [[nodiscard]] io_object_t IOIteratorNext(io_iterator_t iterator) final;
    kern_return_t IOObjectRelease(io_object_t object) final;
    [[nodiscard]] task_port_t machTaskSelf() const final;
    kern_return_t IOServiceOpen(io_service_t service, task_port_t owningTask, std::uint32_t type,
                                io_connect_t& connection) final;
    kern_return_t IOServiceClose(io_connect_t connection) final;
    /// badArgument unless selector and sizes are the record's; notOpen without a connection. `input` and
    /// `output` are two records, aligned as such.
    kern_return_t IOConnectCallStructMethod(io_connect_t connection, std::uint32_t selector,
                                            const void* input, std::size_t inputSize, void* output,
                                            std::size_t& outputSize) final;

    /// How many write requests came; each was refused.
    [[nodiscard]] std::uint64_t writeCount() const { return writes_; }

  protected:
    /// True when there is anything to read; asked once, before the connection is opened.
    virtual bool isPresent() = 0;
    virtual kern_return_t open() { return io_return::success; }
    virtual void close() {}

    /// The key at this place in the order of the keys; none past the last one.
    virtual std::optional<std::uint32_t> keyAt(std::uint32_t index) = 0;
    /// Success with size 0 for a key that does not exist; any other result is a failed read.
    virtual kern_return_t keyInformation(std::uint32_t key, SmcKeyInformation& information) = 0;
    /// Fills `bytes`, which come cleared, and stay so for a key that does not exist.
    virtual kern_return_t readBytes(std::uint32_t key, std::span<std::uint8_t, 32> bytes) = 0;

  private:
    kern_return_t answer(const SMCKeyData& input, SMCKeyData& output);

    io_service_t nextService_ = 0;
    io_connect_t connection_ = 0;
    std::uint64_t writes_ = 0;
};

/// A four-character code packed as the record carries it, the first character in the most significant byte.
[[nodiscard]] constexpr std::uint32_t smcCode(std::string_view text) {
    std::uint32_t code = 0;
    for (std::size_t i = 0; i < 4; ++i)
        code = (code << 8) | (i < text.size() ? static_cast<unsigned char>(text[i]) : 0U);
    return code;
}

}  // namespace calorivo
