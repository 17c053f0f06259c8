#include "platform/linux/UDisks.h"

#include "platform/linux/DriveScan.h"

#include <cerrno>
#include <cmath>
#include <string_view>
#include <utility>

namespace calorivo {

namespace {

using std::chrono::seconds;

constexpr const char* blockFolder = "/org/freedesktop/UDisks2/block_devices/";
constexpr const char* blockInterface = "org.freedesktop.UDisks2.Block";
constexpr const char* driveInterface = "org.freedesktop.UDisks2.Drive";
constexpr const char* ataInterface = "org.freedesktop.UDisks2.Drive.Ata";
constexpr const char* nvmeInterface = "org.freedesktop.UDisks2.NVMe.Controller";
constexpr const char* noUserInteraction = "auth.no_user_interaction";

/// Younger than this a temperature is the present one; older than that it is none.
constexpr seconds freshFor{30};
constexpr seconds usableFor{15 * 60};

/// The errno for what the service answered instead; EINPROGRESS for a drive that sleeps.
int errorOf(const BusReply& reply) {
    constexpr std::string_view prefix = "org.freedesktop.";
    if (reply.error == ENOTCONN || reply.error == ECONNRESET) return ENOENT;
    if (reply.error != EREMOTEIO) return reply.error;
    std::string_view name = reply.errorName;
    if (!name.starts_with(prefix)) return EIO;
    name.remove_prefix(prefix.size());
    for (const char* absent :
         {"DBus.Error.ServiceUnknown", "DBus.Error.NameHasNoOwner", "DBus.Error.UnknownObject",
          "DBus.Error.UnknownInterface", "DBus.Error.UnknownMethod", "DBus.Error.InvalidArgs"})
        if (name == absent) return ENOENT;
    if (name == "DBus.Error.NoReply") return ETIMEDOUT;
    if (name == "UDisks2.Error.WouldWakeup") return EINPROGRESS;
    if (name == "DBus.Error.AccessDenied" || name.starts_with("UDisks2.Error.NotAuthorized")) return EACCES;
    return EIO;
}

template <typename Value>
const Value* find(const BusReply& reply, std::string_view name) {
    const auto found = reply.properties.find(name);
    return found != reply.properties.end() ? std::get_if<Value>(&found->second) : nullptr;
}

/// What a property says; where it is absent, the one that UDisks2 has is `otherwise`.
bool flagOf(const BusReply& smart, std::string_view name, bool otherwise) {
    const bool* const value = find<bool>(smart, name);
    return value != nullptr ? *value : otherwise;
}

/// How old the temperature is. One from the future, after the clock was set back, counts as very old.
seconds ageOf(const BusReply& smart) {
    const auto* const updated = find<std::uint64_t>(smart, "SmartUpdated");
    if (updated == nullptr || *updated == 0) return seconds::max();
    const auto now = std::chrono::duration_cast<seconds>(std::chrono::system_clock::now().time_since_epoch());
    const auto then = static_cast<std::uint64_t>(now.count());
    return then >= *updated ? seconds(static_cast<seconds::rep>(then - *updated)) : seconds::max();
}

int firstError(std::initializer_list<int> errors) {
    for (const int error : errors)
        if (error != 0) return error;
    return 0;
}

void setTemperature(UDisksReading& reading, const BusReply& smart) {
    constexpr double zeroCelsius = 273.15;
    constexpr double lowest = 200;
    constexpr double highest = 450;
    double kelvin = 0;
    if (const auto* const real = find<double>(smart, "SmartTemperature"))
        kelvin = *real;
    else if (const auto* const whole = find<std::uint64_t>(smart, "SmartTemperature"))
        kelvin = static_cast<double>(*whole);
    else
        reading.error = EPROTO;
    if (reading.error != 0) return;
    if (kelvin >= lowest && kelvin <= highest)
        reading.celsius = static_cast<int>(std::lround(kelvin - zeroCelsius));
    else
        reading.error = ENODATA;
}

}  // namespace

UDisks::UDisks(UDisksOptions options) : options_(std::move(options)), bus_(options_.sharedLibrary) {}

template <typename Ask>
BusReply UDisks::ask(Clock::time_point& silentUntil, Ask ask) const {
    BusReply reply;
    reply.error = ETIMEDOUT;
    if (Clock::now() < silentUntil) return reply;
    reply = ask();
    reply.error = errorOf(reply);
    if (reply.error == ETIMEDOUT) silentUntil = Clock::now() + options_.pause;
    return reply;
}

BusReply UDisks::properties(const std::string& path, const std::string& interface) {
    return ask(silentUntil_, [&] { return bus_.properties(path, interface, options_.patience); });
}

BusReply UDisks::update(const std::string& drive, const std::string& interface) {
    return ask(updatesSilentUntil_, [&] {
        return bus_.call(drive, interface, "SmartUpdate", {"nowakeup", noUserInteraction},
                         options_.updatePatience);
    });
}

std::string UDisks::driveOf(const std::string& block, int& error) {
    const BusReply reply = properties(blockFolder + block, blockInterface);
    error = reply.error;
    const auto* const drive = find<std::string>(reply, "Drive");
    if (drive != nullptr && *drive != "/") return *drive;
    if (error == 0) error = drive != nullptr ? ENOENT : EPROTO;
    return {};
}

bool UDisks::isInStandby(const std::string& block) {
    constexpr std::uint8_t standby = 0x00;
    int error = 0;
    const std::string drive = driveOf(block, error);
    if (error != 0) return false;
    const BusReply state = ask(silentUntil_, [&] {
        return bus_.call(drive, ataInterface, "PmGetState", {noUserInteraction}, options_.patience);
    });
    return state.error == 0 && state.byte == standby;
}

UDisksReading UDisks::read(const std::string& block) {
    UDisksReading reading;
    const std::string drive = driveOf(block, reading.error);
    if (reading.error != 0) return reading;
    reading = temperatureOf(drive, isNvmeName(block) ? nvmeInterface : ataInterface);
    if (reading.error != 0) return reading;
    const BusReply names = properties(drive, driveInterface);
    if (const auto* const model = find<std::string>(names, "Model")) reading.model = *model;
    if (const auto* const serial = find<std::string>(names, "Serial")) reading.serial = *serial;
    return reading;
}

UDisksReading UDisks::temperatureOf(const std::string& drive, const std::string& interface) {
    UDisksReading reading;
    BusReply smart = properties(drive, interface);
    reading.error = smart.error;
    if (reading.error != 0) return reading;
    // An NVMe drive has no such switches: it always tells.
    if (!flagOf(smart, "SmartSupported", true)) {
        reading.error = ENOENT;
        return reading;
    }
    reading.isSwitchedOn = flagOf(smart, "SmartEnabled", true);
    if (!reading.isSwitchedOn) return reading;
    if (ageOf(smart) > freshFor) {
        const int error = update(drive, interface).error;
        reading.isAsleep = error == EINPROGRESS;
        if (reading.isAsleep) return reading;
        if (error == 0) smart = properties(drive, interface);
        // Also who may not have the drive asked may read what UDisks2 asked it for others.
        const bool isUsable = smart.error == 0 && error != ENOENT && ageOf(smart) <= usableFor;
        if (!isUsable) reading.error = firstError({error, smart.error, ENODATA});
        if (!isUsable) return reading;
    }
    setTemperature(reading, smart);
    return reading;
}

}  // namespace calorivo
