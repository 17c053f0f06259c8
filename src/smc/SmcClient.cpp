#include "smc/SmcClient.h"

#include "platform/Format.h"

namespace calorivo {

namespace {

/// The module's only state.
struct Connection {
    IOKit* ioKit = nullptr;
    io_connect_t handle = 0;
    std::FILE* output = nullptr;
};
Connection SmcConnection;

template <typename... Arguments>
int failedToOpen(std::string_view message, const Arguments&... arguments) {
    const std::string line = format(message, arguments...);
    std::fwrite(line.data(), 1, line.size(), smcOutput());
    return 1;
}

std::array<char, 5> unpacked(std::uint32_t code) {
    return {static_cast<char>(code >> 24), static_cast<char>(code >> 16), static_cast<char>(code >> 8),
            static_cast<char>(code), '\0'};
}

SMCKeyData request(SmcCommand command) {
    SMCKeyData record{};
    record.data8 = static_cast<std::uint8_t>(command);
    return record;
}

}  // namespace

void smcSetIOKit(IOKit* ioKit) {
    SmcConnection.ioKit = ioKit;
    SmcConnection.handle = 0;
}

void smcSetOutput(std::FILE* output) { SmcConnection.output = output; }

std::FILE* smcOutput() { return SmcConnection.output != nullptr ? SmcConnection.output : stdout; }

int smcOpen() {
    IOKit* const ioKit = SmcConnection.ioKit;
    if (ioKit == nullptr) return failedToOpen("Error: no SMC found\n");

    mach_port_t masterPort = 0;
    kern_return_t result = ioKit->IOMasterPort(0, masterPort);
    if (result != io_return::success) return failedToOpen("Error: IOMasterPort() = %08x\n", result);

    io_iterator_t services = 0;
    result = ioKit->IOServiceGetMatchingServices(masterPort, ioKit->IOServiceMatching("AppleSMC"), services);
    if (result != io_return::success)
        return failedToOpen("Error: IOServiceGetMatchingServices() = %08x\n", result);

    const io_object_t service = ioKit->IOIteratorNext(services);
    ioKit->IOObjectRelease(services);
    if (service == 0) return failedToOpen("Error: no SMC found\n");

    io_connect_t connection = 0;
    result = ioKit->IOServiceOpen(service, ioKit->machTaskSelf(), 0, connection);
    ioKit->IOObjectRelease(service);
    if (result != io_return::success) return failedToOpen("Error: IOServiceOpen() = %08x\n", result);
    SmcConnection.handle = connection;
    return 0;
}

kern_return_t smcClose() {
    if (SmcConnection.ioKit == nullptr) return io_return::notOpen;
    const kern_return_t result = SmcConnection.ioKit->IOServiceClose(SmcConnection.handle);
    SmcConnection.handle = 0;
    return result;
}

kern_return_t smcCall(std::uint32_t selector, const SMCKeyData& input, SMCKeyData& output) {
    if (SmcConnection.ioKit == nullptr) return io_return::notOpen;
    std::size_t outputSize = sizeof output;
    return SmcConnection.ioKit->IOConnectCallStructMethod(SmcConnection.handle, selector, &input,
                                                          sizeof input, &output, outputSize);
}

kern_return_t smcReadKey(std::string_view key, SmcValue& value) {
    SMCKeyData input = request(SmcCommand::readKeyInformation);
    SMCKeyData output{};
    // Both before the value is cleared: the key may be the text of the value itself.
    input.key = smcKeyFromString(key, 4, 16);
    std::array<char, 5> keyText{};
    // The key is copied, never used as a format: it may come from the hardware.
    key.copy(keyText.data(), 4);
    value = {};

    kern_return_t result = smcCall(smcStructMethodSelector, input, output);
    if (result != io_return::success) return result;
    const std::uint32_t dataSize = output.keyInfo.dataSize;
    const std::uint32_t dataType = output.keyInfo.dataType;

    input.keyInfo.dataSize = dataSize;
    input.data8 = static_cast<std::uint8_t>(SmcCommand::readBytes);
    result = smcCall(smcStructMethodSelector, input, output);
    if (result != io_return::success) return result;

    // Kept: neither the result byte of the record nor the size is looked at. A key that the controller does
    // not know usually succeeds with size 0, and every caller takes that for "no data".
    value.key = keyText;
    value.dataSize = dataSize;
    value.dataType = unpacked(dataType);
    value.bytes = output.bytes;
    return io_return::success;
}

kern_return_t smcReadKeyByIndex(std::uint32_t index, std::uint32_t& key) {
    SMCKeyData input = request(SmcCommand::readKeyByIndex);
    SMCKeyData output{};
    input.data32 = index;
    const kern_return_t result = smcCall(smcStructMethodSelector, input, output);
    if (result == io_return::success) key = output.key;
    return result;
}

void smcWriteKey(const SmcValue& value) {
    const std::string_view key(value.key.data(), 4);
    SmcValue present;
    if (smcReadKey(key, present) != io_return::success || present.dataSize != value.dataSize) return;

    SMCKeyData input = request(SmcCommand::writeBytes);
    SMCKeyData output{};
    input.key = smcKeyFromString(key, 4, 16);
    input.keyInfo.dataSize = value.dataSize;
    input.bytes = value.bytes;
    smcCall(smcStructMethodSelector, input, output);
}

std::uint32_t smcKeyFromString(std::string_view text, int size, int base) {
    // Kept: with base 16 a character above 0x7f is negative and takes one from the character before it. Keys
    // are packed this way throughout; no real key holds such a character.
    const auto code = [base](char character) {
        return base == 16 ? static_cast<std::uint32_t>(static_cast<signed char>(character))
                          : static_cast<std::uint32_t>(static_cast<unsigned char>(character));
    };
    // As every key is: packed for each reading of each check.
    if (size == 4 && text.size() >= 4)
        return (code(text[0]) << 24) + (code(text[1]) << 16) + (code(text[2]) << 8) + code(text[3]);

    std::uint32_t key = 0;
    // What stands before the last four characters is shifted out.
    for (int position = size > 4 ? size - 4 : 0; position < size; ++position) {
        const auto at = static_cast<std::size_t>(position);
        key += code(at < text.size() ? text[at] : '\0') << (8 * (size - 1 - position));
    }
    return key;
}

std::string smcKeyToString(std::uint32_t key) {
    const std::array<char, 5> text = unpacked(key);
    return {text.data()};
}

}  // namespace calorivo
