#include "platform/linux/AtaCommand.h"

#include <cstddef>

namespace calorivo {

std::array<std::uint8_t, 16> passThroughOf(const AtaCommand& command) {
    constexpr std::uint8_t noData = 3U << 1U;
    constexpr std::uint8_t pioIn = 4U << 1U;
    constexpr std::uint8_t wantsRegisters = 1U << 5U;
    constexpr std::uint8_t blocksInCountFromDevice = 0x0E;  // t_dir, byte_block, t_length: count
    std::array<std::uint8_t, 16> bytes{};
    bytes[0] = 0x85;
    bytes[1] = command.isReadingBlock ? pioIn : noData;
    bytes[2] = command.isReadingBlock ? blocksInCountFromDevice : wantsRegisters;
    bytes[4] = command.feature;
    bytes[6] = command.isReadingBlock ? 1 : 0;
    bytes[10] = command.lbaMid;
    bytes[12] = command.lbaHigh;
    bytes[14] = command.command;
    return bytes;
}

std::optional<AtaRegisters> registersInSense(std::span<const std::uint8_t> sense) {
    constexpr std::uint8_t fixedFormat = 0x70;
    constexpr std::uint8_t descriptorFormat = 0x72;
    constexpr std::uint8_t ataDescriptor = 0x09;
    constexpr std::size_t header = 8;
    constexpr std::size_t fixedSize = 14;
    if (sense.size() < header) return std::nullopt;
    const std::uint8_t format = sense[0] & 0x7FU;
    // Only under the code that says so these bytes are registers: in a refusal they mean something else, and
    // would be taken for a disk in standby.
    if (format == fixedFormat && sense.size() >= fixedSize && sense[12] == 0x00 && sense[13] == 0x1D)
        return AtaRegisters{.error = sense[3],
                            .count = sense[6],
                            .lbaLow = sense[9],
                            .lbaMid = sense[10],
                            .lbaHigh = sense[11],
                            .device = sense[5],
                            .status = sense[4]};
    if (format < descriptorFormat) return std::nullopt;
    // Descriptors follow one another, each with its own length.
    for (std::size_t at = header; at + 2 <= sense.size(); at += 2U + sense[at + 1]) {
        const auto descriptor = sense.subspan(at);
        if (descriptor[0] != ataDescriptor || descriptor[1] != 12 || descriptor.size() < 14) continue;
        return AtaRegisters{.error = descriptor[3],
                            .count = descriptor[5],
                            .lbaLow = descriptor[7],
                            .lbaMid = descriptor[9],
                            .lbaHigh = descriptor[11],
                            .device = descriptor[12],
                            .status = descriptor[13]};
    }
    return std::nullopt;
}

bool isFailure(const AtaRegisters& registers) {
    constexpr std::uint8_t errorOrFault = 0x21;
    return (registers.status & errorOrFault) != 0;
}

bool isStandby(const AtaRegisters& registers) {
    constexpr std::uint8_t standby = 0x00;
    constexpr std::uint8_t standbyY = 0x01;
    constexpr std::uint8_t spunDownWithCache = 0x40;
    return registers.count == standby || registers.count == standbyY || registers.count == spunDownWithCache;
}

}  // namespace calorivo
