#pragma once

#include "platform/linux/AppleSmcDevice.h"
#include "platform/linux/DeviceThreads.h"
#include "platform/linux/HwmonDevice.h"
#include "platform/linux/HwmonNaming.h"
#include "platform/linux/KeyStore.h"
#include "platform/linux/LinuxSmc.h"
#include "platform/linux/SmcEncoding.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace calorivo {

/// The devices of a machine and the table of the keys that stand for them.
class LinuxSmc::Machine {
  public:
    explicit Machine(const LinuxSmcOptions& options);

    [[nodiscard]] bool isPresent() const { return isMac_ ? !table_.empty() : temperatures_ + fans_ > 0; }
    [[nodiscard]] std::string_view sourceName() const;
    [[nodiscard]] const std::vector<ModelTableEntry>& machineSensors() const { return machineSensors_; }
    [[nodiscard]] std::vector<std::string> problems() const { return problems_; }
    [[nodiscard]] std::optional<KeyOrigin> originOf(std::uint32_t key);
    [[nodiscard]] std::string driveMeasuredBy(std::uint32_t key);

    [[nodiscard]] std::optional<std::uint32_t> keyAt(std::uint32_t index) const;
    kern_return_t keyInformation(std::uint32_t key, SmcKeyInformation& information);
    kern_return_t readBytes(std::uint32_t key, std::span<std::uint8_t, 32> bytes);

  private:
    /// How a key's bytes come about.
    enum class Form {
        /// Always the same bytes.
        constant,
        /// The key exists for those who ask for it and cannot be read.
        failing,
        /// The controller's own bytes.
        raw,
        /// Thousandths of a degree.
        temperature,
        /// The same on a Mac, as the controller held them.
        macTemperature,
        /// Revolutions per minute.
        speed,
        /// One bit for each fan whose "manual" file says 1.
        forcedFans,
    };
    using Source = std::pair<std::size_t, std::size_t>;  // device, item
    struct Entry {
        std::uint32_t key = 0;
        std::uint32_t type = 0;
        Form form = Form::constant;
        /// The bytes of a constant, and of a speed between the two requests that read it.
        EncodedValue value;
        /// Several sources: the highest of them counts.
        std::vector<Source> sources;
        /// The place in the table of the key that was asked for after this one the last time.
        std::size_t followedBy = 0;
        bool isListed = true;
        bool hasPending = false;
    };
    struct Current {
        long value = 0;
        std::array<std::uint8_t, 32> bytes{};
        bool isAsleep = false;
    };

    void findDevices();
    void describeDevices();
    void buildTable();
    void addController();
    void addMacFiles();
    void addNamedChips();
    void addFan(int number, std::size_t device, const HwmonChannel& channel, std::string_view name);
    void addFanLimit(int number, char first, char second, Source source);
    void addSpeed(std::string_view key, Source source);
    Entry& addEntry(std::string_view key, std::string_view type, Form form);
    void replaceFloatingSpeeds();
    void finishTable();
    void sortTable();

    Entry* find(std::uint32_t key);
    const HwmonDevice& hwmonAt(std::size_t device) const;
    [[nodiscard]] Source itemOf(std::size_t device, const HwmonChannel& channel,
                                std::string_view suffix) const;
    Reading current(Source source);
    /// True when it has been.
    bool refreshIfDue(std::chrono::nanoseconds now, bool wasAsked);
    /// True after a sleep of the machine, once: values that were read before `now` do not count any more.
    bool hasSleptUntil(std::chrono::nanoseconds now);
    kern_return_t highest(const Entry& entry, Current& current);
    kern_return_t encode(Entry& entry, EncodedValue& value);
    [[nodiscard]] std::string describe(Source source, const Reading& reading) const;

    const LinuxSmcOptions options_;
    bool isMac_ = false;
    std::size_t temperatures_ = 0;
    std::size_t fans_ = 0;
    std::vector<std::shared_ptr<ReadingsDevice>> devices_;
    /// The same devices by what they are; null where the device is the controller's key space.
    std::vector<std::shared_ptr<HwmonDevice>> hwmon_;
    std::shared_ptr<AppleSmcDevice> controller_;
    std::size_t controllerDevice_ = 0;
    std::size_t macFilesDevice_ = 0;
    std::vector<std::size_t> described_;
    std::unique_ptr<DeviceThreads> threads_;
    KeyStore store_;
    std::vector<Entry> table_;
    /// The place of the entry that was asked for last.
    std::size_t lastFound_ = 0;
    /// The keys in the order in which they are walked.
    std::vector<std::uint32_t> order_;
    std::vector<ModelTableEntry> machineSensors_;
    std::vector<std::string> problems_;
    std::chrono::nanoseconds refreshedAt_{};
    /// Between the last two refreshes.
    std::chrono::nanoseconds interval_{};
    SleepWatch sleepWatch_;
    /// When the last sleep was noticed.
    std::chrono::nanoseconds awakeSince_{};
};

}  // namespace calorivo
