#pragma once

#include "platform/linux/DeviceThreads.h"
#include "platform/linux/SleepWatch.h"

#include <array>
#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <utility>
#include <vector>

namespace calorivo {

/// The last reading of one item.
struct Reading {
    /// A number, in the item's own unit.
    long value = 0;
    /// Or raw bytes, of items that are such.
    std::array<std::uint8_t, 32> bytes{};
    /// 0, or the errno of the failure.
    int error = 0;
    bool wasRead = false;
    /// The device slept and was left asleep.
    bool isAsleep = false;
    /// Since the machine was started: when its pass began.
    std::chrono::nanoseconds at{};
    /// The pass in which it was read.
    unsigned pass = 0;
    /// Somebody asked for it since it was read.
    bool wasAsked = false;
    /// It was read in the last pass.
    bool isCurrent = false;
};

/// A device with a list of items, of which each pass reads those that somebody asked for lately.
class ReadingsDevice : public Device {
  public:
    explicit ReadingsDevice(MachineClocks clocks) : clocks_(std::move(clocks)), sleepWatch_(clocks_.asleep) {}

    /// The last reading of the item; notes that it was asked for. Owner's thread.
    [[nodiscard]] Reading ask(std::size_t item);
    /// As ask(), but nothing is noted.
    [[nodiscard]] Reading peek(std::size_t item) const;
    /// Has the next refreshRequested job read the item.
    void request(std::size_t item);
    /// True when describing has ended and found the device usable.
    [[nodiscard]] bool isDescribed() const;

    void perform(DeviceJob job) final;

  protected:
    /// Finds the items with addItem(); false when the device is of no use. Reader thread.
    virtual bool describe() = 0;
    /// Called after the first pass, before the device counts as described. Reader thread.
    virtual void firstPassEnded() {}
    /// Called before the first pass after the machine slept: what is kept open is to be opened anew, and the
    /// device looked for again if it is no longer there. It must not wake the device. Reader thread.
    virtual void machineHasSlept() {}
    enum class Pass {
        read,
        /// What the last pass read holds; only what it did not read is read now.
        keep,
        /// Nothing may be read, because the device sleeps.
        leaveAsleep,
    };
    /// Called before a series of readItem().
    virtual Pass beginPass() { return Pass::read; }
    /// Reads one item now. `last` is the reading before; none was before a sleep. Reader thread.
    virtual void readItem(std::size_t item, const Reading& last, Reading& reading) = 0;
    enum class FirstPass { leave, read };
    /// Only in describe(); `firstPass` says whether the item is read at once or only when it is asked for.
    std::size_t addItem(FirstPass firstPass);
    /// Time since the machine was started.
    [[nodiscard]] std::chrono::nanoseconds sinceBoot() const { return clocks_.sinceBoot(); }

  private:
    /// So long ago that no pass reads the item.
    static constexpr unsigned neverAsked = 0;
    struct Item {
        Reading reading;
        unsigned askedInPass = neverAsked;
        bool isRequested = false;
    };
    void takeOver();
    void choose(DeviceJob job);
    void readItems();
    void publish();

    const MachineClocks clocks_;
    /// The job's own.
    SleepWatch sleepWatch_;
    mutable std::mutex mutex_;
    std::vector<Item> items_;
    unsigned pass_ = 10;
    bool isDescribed_ = false;
    /// How many jobs have published what they read.
    std::atomic<unsigned> published_ = 0;
    /// The owner's own: what was published up to `takenOver_`. It takes all readings at once, because each
    /// check asks for all of them.
    std::vector<Reading> readings_;
    unsigned takenOver_ = 0;
    /// The job's own: which items it reads, and what it read last of all.
    std::vector<std::size_t> chosen_;
    std::vector<Reading> results_;
    /// When the last pass began that did not keep what was read before it.
    std::chrono::nanoseconds fullPassAt_{};
};

}  // namespace calorivo
