#include "platform/linux/LinuxMachine.h"

#include "platform/Format.h"

#include <algorithm>
#include <cstring>

// How requests are answered from the table.

namespace calorivo {

namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using std::chrono::seconds;

/// A value of a device that no longer answers expires at this age, and not before the second refresh that it
/// has missed: a long check interval alone does not make it old.
constexpr seconds expiryAge{10};
constexpr long absoluteZero = -273150;

}  // namespace

std::string_view LinuxSmc::Machine::sourceName() const {
    if (!isPresent()) return "none";
    return isMac_ ? "applesmc" : "hwmon";
}

std::optional<std::uint32_t> LinuxSmc::Machine::keyAt(std::uint32_t index) const {
    return index < order_.size() ? std::optional(order_[index]) : std::nullopt;
}

LinuxSmc::Machine::Entry* LinuxSmc::Machine::find(std::uint32_t key) {
    if (lastFound_ < table_.size()) {
        // A value is asked for twice: for what it is, and for its bytes.
        Entry& last = table_[lastFound_];
        if (last.key == key) return &last;
        // Each check asks for the same keys in the same order.
        if (table_[last.followedBy].key == key) return &table_[lastFound_ = last.followedBy];
    }
    const auto found =
        std::lower_bound(table_.begin(), table_.end(), key,
                         [](const Entry& entry, std::uint32_t wanted) { return entry.key < wanted; });
    if (found == table_.end() || found->key != key) return nullptr;
    const auto place = static_cast<std::size_t>(found - table_.begin());
    if (lastFound_ < table_.size()) table_[lastFound_].followedBy = place;
    lastFound_ = place;
    return &*found;
}

kern_return_t LinuxSmc::Machine::keyInformation(std::uint32_t key, SmcKeyInformation& information) {
    Entry* const entry = find(key);
    if (entry == nullptr) return io_return::success;
    information.dataType = entry->type;
    switch (entry->form) {
        case Form::failing:
            return io_return::notFound;
        case Form::constant:
        case Form::raw:
            information.dataSize = entry->value.size;
            return io_return::success;
        case Form::temperature:
        case Form::macTemperature:
        case Form::forcedFans:
            information.dataSize = 2;
            return io_return::success;
        case Form::speed: {
            // How many bytes a speed takes depends on it: what is told now is what is read next.
            const kern_return_t result = encode(*entry, entry->value);
            if (result != io_return::success) return result;
            entry->hasPending = true;
            information.dataSize = entry->value.size;
            return result;
        }
    }
    return io_return::error;
}

kern_return_t LinuxSmc::Machine::readBytes(std::uint32_t key, std::span<std::uint8_t, 32> bytes) {
    Entry* const entry = find(key);
    if (entry == nullptr) return io_return::success;
    EncodedValue value;
    if (std::exchange(entry->hasPending, false)) {
        value = entry->value;
    } else if (const kern_return_t result = encode(*entry, value); result != io_return::success) {
        return result;
    }
    std::memcpy(bytes.data(), value.bytes.data(), bytes.size());
    return io_return::success;
}

kern_return_t LinuxSmc::Machine::encode(Entry& entry, EncodedValue& value) {
    if (entry.form == Form::constant) {
        value = entry.value;
        return io_return::success;
    }
    if (entry.form == Form::failing) return io_return::notFound;
    if (entry.form == Form::forcedFans) {
        std::uint32_t mask = 0;
        for (std::size_t fan = 0; fan < entry.sources.size(); ++fan) {
            const Reading reading = current(entry.sources[fan]);
            if (reading.wasRead && reading.error == 0 && reading.value == 1) mask |= 1U << fan;
        }
        value = encodeUnsigned(mask, 2);
        return io_return::success;
    }

    Current now;
    if (const kern_return_t result = highest(entry, now); result != io_return::success) return result;
    // Zero bytes keep a sleeping GPU among the sensors without waking it.
    if (now.isAsleep)
        value = EncodedValue{{}, 2};
    else if (entry.form == Form::temperature)
        value = encodeCompensatedSp78(now.value);
    else if (entry.form == Form::macTemperature)
        value = encodeFaithfulSp78(now.value);
    else if (entry.form == Form::speed)
        value = encodeFpe2(now.value);
    else
        value = {now.bytes, entry.value.size};
    return io_return::success;
}

/// The highest of the entry's sources that has a usable value.
kern_return_t LinuxSmc::Machine::highest(const Entry& entry, Current& result) {
    bool isFound = false;
    for (const Source& source : entry.sources) {
        const Reading reading = current(source);
        if (reading.isAsleep) {
            if (!isFound) result.isAsleep = true;
            continue;
        }
        const bool isUsable = reading.wasRead && reading.error == 0 &&
                              (entry.form != Form::temperature || isPlausibleTemperature(reading.value));
        if (!isUsable || (isFound && reading.value <= result.value)) continue;
        isFound = true;
        result = {reading.value, reading.bytes, false};
    }
    return isFound || result.isAsleep ? io_return::success : io_return::ioError;
}

Reading LinuxSmc::Machine::current(Source source) {
    ReadingsDevice& device = *devices_[source.first];
    const nanoseconds now = options_.clocks.sinceBoot();
    Reading reading = device.ask(source.second);
    if (refreshIfDue(now, reading.wasAsked)) reading = device.ask(source.second);
    if (!reading.isCurrent && !threads_->isBusy(source.first)) {
        // The last pass left it out, because nobody had asked for it for a while.
        device.request(source.second);
        const std::array one{source.first};
        threads_->run(DeviceJob::refreshRequested, one, options_.patience);
        reading = device.peek(source.second);
    }
    const nanoseconds expiry = std::max<nanoseconds>(expiryAge, interval_ + interval_ / 2);
    if (now > reading.at + expiry || reading.at < awakeSince_) reading.wasRead = false;
    return reading;
}

bool LinuxSmc::Machine::refreshIfDue(nanoseconds now, bool wasAsked) {
    const nanoseconds age = now - refreshedAt_;
    // In less time there was no sleep: most requests come together and need not look.
    const bool hasSlept = age >= SleepWatch::shortest && hasSleptUntil(now);
    const bool isDue = options_.minimumAge.count() > 0 ? age >= options_.minimumAge : wasAsked;
    if (!isDue && !hasSlept) return false;
    interval_ = age;
    do {
        threads_->run(DeviceJob::refresh, described_, options_.patience);
        refreshedAt_ = options_.clocks.sinceBoot();
    } while (hasSleptUntil(refreshedAt_));  // in the middle of it: what was read before is worth nothing
    return true;
}

bool LinuxSmc::Machine::hasSleptUntil(nanoseconds now) {
    if (!sleepWatch_.hasSlept()) return false;
    awakeSince_ = now;
    return true;
}

std::string LinuxSmc::Machine::driveMeasuredBy(std::uint32_t key) {
    const Entry* const entry = find(key);
    if (entry == nullptr || entry->sources.size() != 1) return {};
    const auto& chip = hwmon_[entry->sources.front().first];
    return chip ? chip->chip().driveSerial : std::string();
}

std::optional<KeyOrigin> LinuxSmc::Machine::originOf(std::uint32_t key) {
    Entry* const entry = find(key);
    if (entry == nullptr) return std::nullopt;
    KeyOrigin origin;
    if (entry->sources.empty()) {
        origin.note =
            entry->form == Form::failing ? "The driver does not tell this." : "The same for every reading.";
        return origin;
    }
    const Source source = entry->sources.front();
    const Reading reading = current(source);
    if (const auto& chip = hwmon_[source.first]) {
        origin.device = chip->place();
        origin.file = chip->pathOf(source.second);
        if (reading.wasRead && reading.error == 0 && !reading.isAsleep)
            origin.content = std::to_string(reading.value);
    } else {
        origin.device = "applesmc, the controller's own keys";
        origin.file = format("key_at_index_data, index %u", controller_->keys()[source.second].index);
        for (std::size_t i = 0; i < entry->value.size; ++i)
            appendFormat(origin.content, i == 0 ? "%02x" : " %02x", {reading.bytes[i]});
    }
    origin.note = describe(source, reading);
    if (entry->sources.size() > 1)
        origin.note += format("The highest of %d sensors. ", entry->sources.size());
    if (entry->form == Form::temperature && reading.error == 0 && !isPlausibleTemperature(reading.value))
        origin.note += reading.value < absoluteZero ? "Colder than anything can be: not used."
                                                    : "No plausible temperature: not used.";
    return origin;
}

std::string LinuxSmc::Machine::describe(Source source, const Reading& reading) const {
    if (reading.isAsleep) return "The device sleeps and is left asleep. ";
    if (threads_->isBusy(source.first)) return "The device is slow to answer; the value is its last one. ";
    if (!reading.wasRead) return "The device has not answered for a while. ";
    if (reading.error != 0) return format("Reading failed: %@. ", std::strerror(reading.error));
    return {};
}

}  // namespace calorivo
