#pragma once

#include <chrono>
#include <cstddef>
#include <memory>
#include <span>
#include <vector>

namespace calorivo {

/// What a device is asked to do on a reader thread.
enum class DeviceJob {
    /// Find out what there is, and read it once.
    describe,
    /// Read everything that was asked for lately.
    refresh,
    /// Read only what was asked for and was never read, or not for long.
    refreshRequested,
};

/// Something whose reading may take long, or for ever.
class Device {
  public:
    Device() = default;
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;
    virtual ~Device() = default;
    /// Called on a reader thread, one job at a time.
    virtual void perform(DeviceJob job) = 0;
};

/// Reads devices on threads of their own accord: one thread serves all that answer quickly; a device that
/// holds it for longer than its deadline keeps that thread for itself and another one serves the rest. So a
/// dead device costs the others one deadline, once.
///
/// All calls belong to one thread. Destroying it leaves a thread that hangs in the kernel to itself: it
/// touches nothing but its own device, which lives as long as it does.
class DeviceThreads {
  public:
    using Duration = std::chrono::nanoseconds;

    /// `deadline` is for one job of one device.
    DeviceThreads(std::vector<std::shared_ptr<Device>> devices, Duration deadline);
    ~DeviceThreads();
    DeviceThreads(const DeviceThreads&) = delete;
    DeviceThreads& operator=(const DeviceThreads&) = delete;

    /// Has these devices, by their places in the list, do the job. Returns when they have, or after
    /// `patience`. A device that is still at an earlier job is left out.
    void run(DeviceJob job, std::span<const std::size_t> devices, Duration patience);
    /// True while the device is at a job that run() has given up waiting for.
    [[nodiscard]] bool isBusy(std::size_t device) const;
    /// How many threads there are now.
    [[nodiscard]] std::size_t threadCount() const;

  private:
    struct State;
    std::shared_ptr<State> state_;
};

}  // namespace calorivo
