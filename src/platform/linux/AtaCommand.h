#pragma once

#include "platform/AtaSmart.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>

// Commands to an ATA drive inside SCSI commands, byte by byte. Pure but for AtaDevice.

namespace calorivo {

/// One command. Only those below are ever sent: none of them changes anything in the drive.
struct AtaCommand {
    std::uint8_t command = 0;
    std::uint8_t feature = 0;
    std::uint8_t lbaMid = 0;
    std::uint8_t lbaHigh = 0;
    /// It reads one block; otherwise it answers in the registers.
    bool isReadingBlock = false;
    friend bool operator==(const AtaCommand&, const AtaCommand&) = default;
};

inline constexpr AtaCommand ataIdentifyDevice{.command = 0xEC, .isReadingBlock = true};
/// Answered in the count register; wakes nothing.
inline constexpr AtaCommand ataCheckPowerMode{.command = 0xE5};
inline constexpr AtaCommand ataSmartReadData{
    .command = 0xB0, .feature = 0xD0, .lbaMid = 0x4F, .lbaHigh = 0xC2, .isReadingBlock = true};
inline constexpr AtaCommand ataSmartReturnStatus{
    .command = 0xB0, .feature = 0xDA, .lbaMid = 0x4F, .lbaHigh = 0xC2};

/// The drive's registers after a command.
struct AtaRegisters {
    std::uint8_t error = 0;
    std::uint8_t count = 0;
    std::uint8_t lbaLow = 0;
    std::uint8_t lbaMid = 0;
    std::uint8_t lbaHigh = 0;
    std::uint8_t device = 0;
    std::uint8_t status = 0;
    friend bool operator==(const AtaRegisters&, const AtaRegisters&) = default;
};

/// The SCSI command, ATA PASS-THROUGH (16), that carries it.
[[nodiscard]] std::array<std::uint8_t, 16> passThroughOf(const AtaCommand& command);
/// The registers in the sense data that such a command leaves, of either format; none when they are not
/// there.
[[nodiscard]] std::optional<AtaRegisters> registersInSense(std::span<const std::uint8_t> sense);
/// The drive refused or failed the command.
[[nodiscard]] bool isFailure(const AtaRegisters& registers);
/// Whether reading it would spin the drive up, by its answer to ataCheckPowerMode.
[[nodiscard]] bool isStandby(const AtaRegisters& registers);

/// One drive that takes commands. Calls may block for as long as the drive likes.
class AtaDevice {
  public:
    AtaDevice() = default;
    AtaDevice(const AtaDevice&) = delete;
    AtaDevice& operator=(const AtaDevice&) = delete;
    virtual ~AtaDevice() = default;

    /// Reads one block; an errno, 0 for success. A block that comes short is EIO.
    virtual int read(const AtaCommand& command, AtaBlock& data) = 0;
    /// Sends a command that is answered in the registers; an errno, 0 for success. ENODATA: the drive did it,
    /// but what stands between keeps the registers to itself.
    virtual int ask(const AtaCommand& command, AtaRegisters& registers) = 0;
};

}  // namespace calorivo
