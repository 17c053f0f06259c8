#pragma once

#include "platform/linux/FileDescriptor.h"

#include <chrono>

namespace calorivo {

/// Whether a device may be read that the kernel puts to sleep when nobody uses it. Reading one that sleeps
/// would wake it, and reading one that is idle begins its time to sleep anew: read at each check, it would
/// stay awake for the sake of its temperature. Finding out wakes nothing. One thread at a time.
class RuntimePower {
  public:
    enum class Advice {
        /// It is in use, or always on.
        read,
        /// It has had a reading so lately that its time to sleep would begin anew: what it read then holds.
        wait,
        /// It sleeps.
        leave,
    };

    /// Has it ask this device from now on, by the open folder of the device. Files that are not there leave
    /// those of before.
    void open(int deviceFolder);
    [[nodiscard]] bool isOpen() const { return status_.isOpen(); }

    /// `now` is the time since the machine was started. After `read` the device counts as read now.
    [[nodiscard]] Advice advice(std::chrono::nanoseconds now);

  private:
    [[nodiscard]] bool isHeldAwake() const;

    FileDescriptor status_;
    /// How many hold the device awake; only some kernels tell.
    FileDescriptor usage_;
    FileDescriptor control_;
    /// How long the device is idle before it falls asleep; empty for one that does not by itself.
    FileDescriptor delay_;
    std::chrono::nanoseconds readAt_{};
    bool wasRead_ = false;
};

}  // namespace calorivo
