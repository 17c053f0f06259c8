#include "support/FakeSmc.h"

#include "platform/Format.h"
#include "smc/SmcClient.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace calorivo::test {

namespace {

constexpr io_iterator_t iteratorObject = 0x501;
constexpr io_service_t serviceObject = 0x502;
constexpr io_connect_t openConnection = 0x503;

std::uint8_t byteOf(int value, int shift) { return static_cast<std::uint8_t>(value >> shift); }

}  // namespace

FakeSmc::FakeSmc() { smcSetIOKit(this); }

FakeSmc::~FakeSmc() {
    smcSetIOKit(nullptr);
    smcSetOutput(nullptr);
}

FakeSmc& FakeSmc::set(std::string_view key, std::string_view type, std::vector<std::uint8_t> bytes) {
    if (key == "#KEY") isKeyCountGiven_ = true;
    Entry& entry = entries_[std::string(key)];
    entry.type = std::string(type);
    entry.bytes = std::move(bytes);
    entry.exists = true;
    countKeys();
    return *this;
}

FakeSmc& FakeSmc::setTemperature(std::string_view key, double celsius) {
    const int sixtyFourths = static_cast<int>(std::lround(celsius * 256));
    const auto low = static_cast<std::int8_t>(sixtyFourths);
    return set(key, "sp78", {byteOf((sixtyFourths - low) / 256, 0), static_cast<std::uint8_t>(low)});
}

FakeSmc& FakeSmc::setSpeed(std::string_view key, int rpm) {
    if (rpm < 8192) return set(key, "fpe2", {byteOf(rpm * 4, 8), byteOf(rpm * 4, 0)});
    return set(key, "fpe2", {byteOf(rpm, 12), byteOf(rpm % 4096 / 64, 0), byteOf(rpm % 64 * 4, 0)});
}

FakeSmc& FakeSmc::addFan(int rpm, int minimum, int maximum, std::string_view name) {
    const std::string fan = format("F%d", fans_++);
    setSpeed(fan + "Ac", rpm).setSpeed(fan + "Mn", minimum).setSpeed(fan + "Mx", maximum);
    if (!name.empty()) {
        std::vector<std::uint8_t> bytes(16);
        std::copy_n(name.begin(), std::min<std::size_t>(name.size(), 11), bytes.begin() + 4);
        set(fan + "ID", "{fds", bytes);
    } else {
        fail(fan + "ID");
    }
    return set("FNum", "ui8 ", {byteOf(fans_, 0)});
}

FakeSmc& FakeSmc::remove(std::string_view key) {
    if (const auto found = entries_.find(key); found != entries_.end()) entries_.erase(found);
    countKeys();
    return *this;
}

FakeSmc& FakeSmc::fail(std::string_view key, kern_return_t result) {
    entries_[std::string(key)].failure = result;
    return *this;
}

void FakeSmc::countKeys() {
    if (isKeyCountGiven_) return;
    Entry& own = entries_["#KEY"];
    own.type = "ui32";
    own.exists = true;
    const auto count = static_cast<int>(
        std::count_if(entries_.begin(), entries_.end(), [](const auto& e) { return e.second.exists; }));
    own.bytes = {byteOf(count, 24), byteOf(count, 16), byteOf(count, 8), byteOf(count, 0)};
}

kern_return_t FakeSmc::IOMasterPort(mach_port_t bootstrapPort, mach_port_t& masterPort) {
    calls.push_back(format("IOMasterPort(%u)", bootstrapPort));
    masterPort = 0x303;
    return masterPortResult;
}

kern_return_t FakeSmc::IOServiceGetMatchingServices(mach_port_t masterPort,
                                                    const MatchingDictionary& matching,
                                                    io_iterator_t& services) {
    calls.push_back(format("IOServiceGetMatchingServices(%x, %@)", masterPort, matching.className));
    services = iteratorObject;
    return matchingResult;
}

io_object_t FakeSmc::IOIteratorNext(io_iterator_t iterator) {
    calls.push_back(format("IOIteratorNext(%x)", iterator));
    return hasService ? serviceObject : 0;
}

kern_return_t FakeSmc::IOObjectRelease(io_object_t object) {
    calls.push_back(format("IOObjectRelease(%x)", object));
    return io_return::success;
}

kern_return_t FakeSmc::IOServiceOpen(io_service_t service, task_port_t owningTask, std::uint32_t type,
                                     io_connect_t& connection) {
    calls.push_back(format("IOServiceOpen(%x, %x, %u)", service, owningTask, type));
    if (openResult != io_return::success) return openResult;
    connection = connection_ = openConnection;
    return io_return::success;
}

kern_return_t FakeSmc::IOServiceClose(io_connect_t connection) {
    calls.push_back(format("IOServiceClose(%x)", connection));
    if (connection == 0 || connection != connection_) return io_return::notOpen;
    connection_ = 0;
    return io_return::success;
}

kern_return_t FakeSmc::IOConnectCallStructMethod(io_connect_t /*connection*/, std::uint32_t selector,
                                                 const void* input, std::size_t inputSize, void* output,
                                                 std::size_t& outputSize) {
    if (selector != smcStructMethodSelector || inputSize != sizeof(SMCKeyData) ||
        outputSize != sizeof(SMCKeyData))
        return io_return::badArgument;
    SMCKeyData in;
    SMCKeyData out{};
    std::memcpy(&in, input, sizeof in);
    const kern_return_t result = answer(in, out);
    std::memcpy(output, &out, sizeof out);
    return result;
}

kern_return_t FakeSmc::answer(const SMCKeyData& input, SMCKeyData& output) {
    const auto command = static_cast<SmcCommand>(input.data8);
    const std::string key = smcKeyToString(input.key);
    requests.push_back(format("%d %@", input.data8,
                              command == SmcCommand::readKeyByIndex ? format("#%u", input.data32) : key));
    if (command == SmcCommand::readKeyByIndex) {
        std::uint32_t index = 0;
        for (const auto& [name, entry] : entries_) {
            if (!entry.exists || index++ != input.data32) continue;
            output.key = smcKeyFromString(name, 4, 16);
            return io_return::success;
        }
        return io_return::notFound;
    }
    const auto found = entries_.find(key);
    if (found != entries_.end() && found->second.failure != io_return::success) return found->second.failure;
    if (command == SmcCommand::writeBytes) {
        writes.push_back(input);
        return io_return::success;
    }
    if (found == entries_.end()) return io_return::success;
    const Entry& entry = found->second;
    if (command == SmcCommand::readKeyInformation) {
        output.keyInfo.dataSize = static_cast<std::uint32_t>(entry.bytes.size());
        output.keyInfo.dataType = smcKeyFromString(entry.type, 4, 16);
    } else if (command == SmcCommand::readBytes) {
        ++reads;
        std::copy_n(entry.bytes.begin(), std::min(entry.bytes.size(), output.bytes.size()),
                    output.bytes.begin());
    }
    return io_return::success;
}

}  // namespace calorivo::test
