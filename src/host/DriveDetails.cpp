#include "host/DriveDetails.h"

#include "monitor/AtaIdentify.h"
#include "monitor/SmartData.h"
#include "platform/Format.h"
#include "platform/linux/AtaSmartDrives.h"
#include "platform/linux/DriveBlocks.h"
#include "platform/linux/DriveScan.h"
#include "platform/linux/SmallFile.h"
#include "sensors/SensorRules.h"
#include "sensors/SmartInfo.h"

#include <cerrno>

namespace calorivo {

namespace {

const char* nameOf(DriveSource source) {
    switch (source) {
        case DriveSource::none:
            return "";
        case DriveSource::drivetemp:
            return "drivetemp";
        case DriveSource::nvme:
            return "nvme";
        case DriveSource::smart:
            return "smart";
        case DriveSource::smartLog:
            return "nvme log";
        case DriveSource::udisks:
            return "udisks2";
    }
    return "";
}

std::optional<std::int32_t> celsiusIn(const DriveReading& reading) {
    if (!reading.hasData || !isChecksumRight(reading.smart)) return std::nullopt;
    const auto celsius = temperatureInSMARTData(reading.smart);
    return celsius && *celsius > 0 ? std::optional<std::int32_t>(*celsius) : std::nullopt;
}

/// What stands in the way of a reading that failed with this error.
std::string troubleText(const DriveStatus& status) {
    const DriveReading& reading = status.reading;
    const bool isOfUDisks = reading.failed == DriveSource::udisks;
    switch (reading.error) {
        case EACCES:
        case EPERM:
        case ENOENT:
            if (isOfUDisks) return "UDisks2 does not ask the drive for this user";
            if (isNvmeName(status.name))
                return "the kernel gives no reading of it, and only root may ask the drive itself";
            return "the kernel module drivetemp is not loaded, and only root may ask the drive itself";
        case ETIMEDOUT:
            return isOfUDisks ? "UDisks2 does not answer" : errorText(reading.error);
        case ENODATA:
            return isOfUDisks ? "UDisks2 knows no temperature of it" : errorText(reading.error);
        case 0:
            return "it has no temperature";
        default:
            return errorText(reading.error);
    }
}

std::string troubleOf(const DriveStatus& status) {
    const DriveReading& reading = status.reading;
    switch (status.state) {
        case DriveAnswer::State::hung:
            return "it does not answer";
        case DriveAnswer::State::failed:
            return "the reader of drives failed";
        case DriveAnswer::State::late:
            return "it has not answered yet";
        case DriveAnswer::State::read:
            break;
    }
    if (reading.isAsleep) return "it sleeps";
    if (reading.source != DriveSource::none && !reading.isSwitchedOn) return "its SMART is switched off";
    if (reading.hasData && !isChecksumRight(reading.smart)) return "its SMART data is damaged";
    return troubleText(status);
}

}  // namespace

std::optional<DriveDetails> detailsOf(const DriveStatus& status) {
    const DriveReading& reading = status.reading;
    DriveDetails details;
    details.device = status.name;
    if (reading.hasIdentify) {
        const auto dictionary = driveFromIdentifyData(reading.identify);
        if (!dictionary) return std::nullopt;
        details.model = dictionary->model;
        details.serial = trimmed(dictionary->serial);
    }
    details.celsius = celsiusIn(reading);
    // One that answered is listed, also when it was tried only because no other drive has a temperature.
    if (!details.celsius && !status.isSmartCapable && reading.source == DriveSource::none)
        return std::nullopt;
    details.isAsleep = reading.isAsleep;
    if (details.celsius) details.source = nameOf(reading.source);
    if (!details.celsius)
        details.trouble = troubleOf(status);
    else if (!isTempValid(*details.celsius))
        details.trouble = format("it tells %d °C, and only what is below 120 °C counts", *details.celsius);
    return details;
}

}  // namespace calorivo
