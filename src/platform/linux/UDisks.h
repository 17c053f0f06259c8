#pragma once

#include "platform/linux/UDisksBus.h"

#include <chrono>
#include <cstdint>
#include <string>

namespace calorivo {

/// What UDisks2 tells of a drive.
struct UDisksReading {
    /// 0, or why there is no temperature, an errno: ENOENT where UDisks2 does not run or knows no SMART of
    /// the drive, EACCES where it refuses this user, ETIMEDOUT where it does not answer, ENODATA where it has
    /// no temperature, EIO where the drive failed it, EPROTO where it does not talk as expected.
    int error = 0;
    /// °C.
    int celsius = 0;
    bool isAsleep = false;
    /// SMART is switched on; without it there is no temperature.
    bool isSwitchedOn = true;
    std::string model{};
    std::string serial{};
    friend bool operator==(const UDisksReading&, const UDisksReading&) = default;
};

struct UDisksOptions {
    std::string sharedLibrary = "libsystemd.so.0";
    /// How long it may take to say what it knows already.
    std::chrono::milliseconds patience{400};
    /// How long it may take to ask a drive.
    std::chrono::milliseconds updatePatience{6000};
    /// For how long it is not asked again after it has not answered.
    std::chrono::milliseconds pause{60'000};
};

/// Drives as the service UDisks2 knows them, which may ask them on behalf of ordinary users. Only where it
/// runs already. A call takes at most the patience, and where the drive must be asked the update's patience,
/// a few times over. One thread.
class UDisks {
  public:
    explicit UDisks(UDisksOptions options = {});

    /// True when the disk of this block device ("sda") has stopped itself. Wakes nothing. False when UDisks2
    /// cannot or may not tell.
    [[nodiscard]] bool isInStandby(const std::string& block);
    /// The temperature of the drive of this block device ("sda", "nvme0n1"), not older than half a minute
    /// where UDisks2 may ask the drive for it, and than a quarter of an hour otherwise.
    [[nodiscard]] UDisksReading read(const std::string& block);

  private:
    using Clock = std::chrono::steady_clock;

    /// Asks, unless there was no answer lately; the error of the reply is one of UDisksReading's.
    template <typename Ask>
    [[nodiscard]] BusReply ask(Clock::time_point& silentUntil, Ask ask) const;
    [[nodiscard]] BusReply properties(const std::string& path, const std::string& interface);
    [[nodiscard]] BusReply update(const std::string& drive, const std::string& interface);
    /// The path of the drive's object; empty when there is none, with the reason in `error`.
    [[nodiscard]] std::string driveOf(const std::string& block, int& error);
    [[nodiscard]] UDisksReading temperatureOf(const std::string& drive, const std::string& interface);

    UDisksOptions options_;
    UDisksBus bus_;
    Clock::time_point silentUntil_{};
    Clock::time_point updatesSilentUntil_{};
};

}  // namespace calorivo
