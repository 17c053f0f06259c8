#include "smc/SmcService.h"

#include <utility>

namespace calorivo {

namespace {

// Object numbers as opaque to callers as the system's own.
constexpr mach_port_t masterPortNumber = 0x303;
constexpr task_port_t taskNumber = 0x103;
constexpr io_iterator_t iteratorNumber = 0x1002;
constexpr io_service_t serviceNumber = 0x1003;
constexpr io_connect_t connectionNumber = 0x1004;

}  // namespace

kern_return_t SmcService::IOMasterPort(mach_port_t /*bootstrapPort*/, mach_port_t& masterPort) {
    masterPort = masterPortNumber;
    return io_return::success;
}

kern_return_t SmcService::IOServiceGetMatchingServices(mach_port_t /*masterPort*/,
                                                       const MatchingDictionary& matching,
                                                       io_iterator_t& services) {
    nextService_ = matching.className == "AppleSMC" && isPresent() ? serviceNumber : 0;
    services = iteratorNumber;
    return io_return::success;
}

io_object_t SmcService::IOIteratorNext(io_iterator_t iterator) {
    return iterator == iteratorNumber ? std::exchange(nextService_, 0) : 0;
}

kern_return_t SmcService::IOObjectRelease(io_object_t /*object*/) { return io_return::success; }

task_port_t SmcService::machTaskSelf() const { return taskNumber; }

kern_return_t SmcService::IOServiceOpen(io_service_t service, task_port_t /*owningTask*/,
                                        std::uint32_t /*type*/, io_connect_t& connection) {
    if (service != serviceNumber) return io_return::badArgument;
    const kern_return_t result = open();
    if (result == io_return::success) connection = connection_ = connectionNumber;
    return result;
}

kern_return_t SmcService::IOServiceClose(io_connect_t connection) {
    if (connection == 0 || connection != connection_) return io_return::notOpen;
    connection_ = 0;
    close();
    return io_return::success;
}

kern_return_t SmcService::IOConnectCallStructMethod(io_connect_t connection, std::uint32_t selector,
                                                    const void* input, std::size_t inputSize, void* output,
                                                    std::size_t& outputSize) {
    if (connection == 0 || connection != connection_) return io_return::notOpen;
    if (selector != smcStructMethodSelector || inputSize != sizeof(SMCKeyData) ||
        outputSize != sizeof(SMCKeyData))
        return io_return::badArgument;
    // Used where they stand: this is called twice for each sensor of each check.
    auto& record = *static_cast<SMCKeyData*>(output);
    record = {};
    return answer(*static_cast<const SMCKeyData*>(input), record);
}

kern_return_t SmcService::answer(const SMCKeyData& input, SMCKeyData& output) {
    switch (static_cast<SmcCommand>(input.data8)) {
        case SmcCommand::readKeyInformation: {
            SmcKeyInformation information;
            const kern_return_t result = keyInformation(input.key, information);
            if (result != io_return::success) return result;
            output.keyInfo.dataSize = information.dataSize;
            output.keyInfo.dataType = information.dataType;
            return result;
        }
        case SmcCommand::readBytes: {
            const kern_return_t result = readBytes(input.key, output.bytes);
            if (result != io_return::success) output.bytes = {};
            return result;
        }
        case SmcCommand::readKeyByIndex: {
            const auto key = keyAt(input.data32);
            if (!key) return io_return::notFound;
            output.key = *key;
            return io_return::success;
        }
        case SmcCommand::writeBytes:
            ++writes_;
            return io_return::notPermitted;
    }
    return io_return::unsupported;
}

}  // namespace calorivo
