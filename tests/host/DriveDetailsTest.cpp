#include "host/DriveDetails.h"

#include "platform/linux/AtaSmartDrives.h"
#include "platform/linux/DriveBlocks.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace calorivo {
namespace {

using State = DriveAnswer::State;

DriveStatus statusOf(const DriveReading& reading, const std::string& name = "sda",
                     State state = State::read) {
    return {name, true, state, reading};
}

/// A drive that is known by name and gave no temperature.
DriveReading untold(int error, DriveSource failed = DriveSource::none) {
    DriveReading reading;
    reading.identify = identifyBlock("SAMPLE DISK", "A1");
    reading.hasIdentify = true;
    reading.error = error;
    reading.failed = failed;
    return reading;
}

DriveReading told(DriveSource source, std::uint8_t celsius = 38) {
    DriveReading reading = untold(0);
    reading.source = source;
    reading.smart = temperatureBlock(celsius);
    reading.isSwitchedOn = reading.hasStatus = reading.hasData = true;
    return reading;
}

std::string troubleOf(const DriveStatus& status) {
    const auto details = detailsOf(status);
    EXPECT_TRUE(details && !details->celsius && details->source.empty());
    return details ? details->trouble : "";
}

TEST(DriveDetails, NameTheSourceOfATemperature) {
    const auto sourceOf = [](DriveSource source) { return detailsOf(statusOf(told(source)))->source; };
    EXPECT_EQ(sourceOf(DriveSource::drivetemp), "drivetemp");
    EXPECT_EQ(sourceOf(DriveSource::nvme), "nvme");
    EXPECT_EQ(sourceOf(DriveSource::smart), "smart");
    EXPECT_EQ(sourceOf(DriveSource::smartLog), "nvme log");
    EXPECT_EQ(sourceOf(DriveSource::udisks), "udisks2");
    const DriveDetails expected{"SAMPLE DISK", "A1", "sda", 38, "udisks2", false, false, ""};
    EXPECT_EQ(detailsOf(statusOf(told(DriveSource::udisks))), expected);
}

TEST(DriveDetails, SayWhatTheKernelAndTheDriveRefuse) {
    for (const int error : {EACCES, EPERM, ENOENT}) {
        EXPECT_EQ(troubleOf(statusOf(untold(error))),
                  "the kernel module drivetemp is not loaded, and only root may ask the drive itself");
        EXPECT_EQ(troubleOf(statusOf(untold(error), "nvme0")),
                  "the kernel gives no reading of it, and only root may ask the drive itself");
    }
    EXPECT_EQ(troubleOf(statusOf(untold(EIO))), "Input/output error");
    EXPECT_EQ(troubleOf(statusOf(untold(0))), "it has no temperature");
}

TEST(DriveDetails, SayWhatUDisksRefuses) {
    const auto trouble = [](int error) { return troubleOf(statusOf(untold(error, DriveSource::udisks))); };
    EXPECT_EQ(trouble(EACCES), "UDisks2 does not ask the drive for this user");
    EXPECT_EQ(trouble(ETIMEDOUT), "UDisks2 does not answer");
    EXPECT_EQ(trouble(ENODATA), "UDisks2 knows no temperature of it");
    EXPECT_EQ(trouble(EPROTO), "Protocol error");
}

TEST(DriveDetails, SayWhenSMARTIsOff) {
    DriveReading off = untold(0);
    off.source = DriveSource::udisks;
    EXPECT_EQ(troubleOf(statusOf(off)), "its SMART is switched off");
}

TEST(DriveDetails, SayWhyATemperatureThatWasToldIsNotShown) {
    EXPECT_EQ(detailsOf(statusOf(told(DriveSource::smart, 119)))->trouble, "");
    const auto details = detailsOf(statusOf(told(DriveSource::smart, 120)));
    EXPECT_EQ(details->trouble, "it tells 120 °C, and only what is below 120 °C counts");
    EXPECT_EQ(details->celsius, 120);
    EXPECT_EQ(details->source, "smart");
}

TEST(DriveDetails, AreThereForADiskThatWasTriedLastAndHasItsSMARTOff) {
    DriveReading off = untold(0);
    off.source = DriveSource::smart;
    const auto details = detailsOf({"sda", false, State::read, off});
    ASSERT_TRUE(details);
    EXPECT_EQ(details->trouble, "its SMART is switched off");
    EXPECT_EQ(detailsOf({"sda", false, State::read, untold(0)}), std::nullopt);
}

TEST(DriveDetails, SayHowTheReadingWent) {
    EXPECT_EQ(troubleOf(statusOf(untold(0), "sda", State::hung)), "it does not answer");
    EXPECT_EQ(troubleOf(statusOf(untold(0), "sda", State::failed)), "the reader of drives failed");
    EXPECT_EQ(troubleOf(statusOf(untold(0), "sda", State::late)), "it has not answered yet");
    DriveReading asleep = untold(0);
    asleep.isAsleep = true;
    EXPECT_EQ(troubleOf(statusOf(asleep)), "it sleeps");
}

}  // namespace
}  // namespace calorivo
