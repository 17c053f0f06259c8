#include "platform/linux/UDisks.h"

#include "DriveTrees.h"
#include "FakeUDisks.h"
#include "platform/linux/DriveBlocks.h"
#include "platform/linux/DriveReaderPool.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <ctime>
#include <filesystem>
#include <limits>
#include <ostream>

namespace calorivo {

static void PrintTo(const UDisksReading& reading, std::ostream* out) {
    *out << "error " << reading.error << ", " << reading.celsius << " °C"
         << (reading.isAsleep ? ", asleep" : "") << (reading.isSwitchedOn ? ", on, " : ", off, ")
         << reading.model << " (" << reading.serial << ")";
}

namespace {

using std::chrono::hours;
using std::chrono::milliseconds;
using test::FakeUDisks;
using Calls = std::vector<std::string>;
using Properties = FakeUDisks::Properties;
using Manners = FakeUDisks::Manners;

constexpr const char* noAuthority = "org.freedesktop.UDisks2.Error.NotAuthorizedCanObtain";
constexpr double celsius38 = 273.15 + 38;
const Calls oneUpdate{"SmartUpdate nowakeup auth.no_user_interaction"};
const Calls noCalls;

/// The time so many seconds ago, as UDisks2 tells times.
std::uint64_t ago(int seconds) { return static_cast<std::uint64_t>(std::time(nullptr) - seconds); }

Properties smart(std::uint64_t updated, FakeUDisks::Value temperature = celsius38) {
    return {{"SmartSupported", true},
            {"SmartEnabled", true},
            {"SmartUpdated", updated},
            {"SmartTemperature", std::move(temperature)}};
}

UDisksReading told(int celsius) {
    UDisksReading reading;
    reading.celsius = celsius;
    reading.model = "SAMPLE DISK";
    reading.serial = "A1";
    return reading;
}

UDisksReading untold(int error) {
    UDisksReading reading;
    reading.error = error;
    return reading;
}

class UDisksTest : public testing::Test {
  protected:
    static constexpr milliseconds ample{60'000};
    static constexpr milliseconds brief{50};

    static UDisksOptions options(milliseconds patience = ample, milliseconds pause = hours(1)) {
        UDisksOptions options;
        options.patience = options.updatePatience = patience;
        options.pause = pause;
        return options;
    }

    test::PrivateSystemBus bus;
    FakeUDisks service;
    UDisks udisks{options()};
};

TEST_F(UDisksTest, TakesAFreshTemperatureWithoutAskingTheDrive) {
    service.addDisk(smart(ago(5)));
    EXPECT_EQ(udisks.read("sda"), told(38));
    EXPECT_EQ(service.calls(), noCalls);
}

TEST_F(UDisksTest, HasTheDriveAskedForAnOldTemperature) {
    service.addDisk(smart(ago(100)));
    service.change([](Manners& manners) {
        manners.update = {{"SmartUpdated", ago(0)}, {"SmartTemperature", celsius38 + 3}};
    });
    EXPECT_EQ(udisks.read("sda"), told(41));
    EXPECT_EQ(service.calls(), oneUpdate);
    EXPECT_EQ(udisks.read("sda"), told(41));
    EXPECT_EQ(service.calls(), oneUpdate);
}

TEST_F(UDisksTest, HasTheDriveAskedWhenTheTemperatureIsFromTheFuture) {
    service.addDisk(smart(ago(-7200)));
    service.change([](Manners& manners) { manners.update = smart(ago(0), celsius38 + 1); });
    EXPECT_EQ(udisks.read("sda"), told(39));
}

TEST_F(UDisksTest, WakesNoDrive) {
    service.addDisk(smart(ago(100)));
    service.setError("SmartUpdate", "org.freedesktop.UDisks2.Error.WouldWakeup");
    UDisksReading asleep;
    asleep.isAsleep = true;
    asleep.model = "SAMPLE DISK";
    asleep.serial = "A1";
    EXPECT_EQ(udisks.read("sda"), asleep);
    EXPECT_EQ(service.calls(), oneUpdate);
}

TEST_F(UDisksTest, TakesTheTemperatureThatOthersHadAskedForWhereThisUserMayNot) {
    service.addDisk(smart(ago(800)));
    service.setError("SmartUpdate", noAuthority);
    EXPECT_EQ(udisks.read("sda"), told(38));
    service.addDisk(smart(ago(1000)));
    EXPECT_EQ(udisks.read("sda"), untold(EACCES));
    service.addDisk(smart(0));
    EXPECT_EQ(udisks.read("sda"), untold(EACCES));
    service.setError("SmartUpdate", "org.freedesktop.UDisks2.Error.NotAuthorized");
    EXPECT_EQ(udisks.read("sda"), untold(EACCES));
    service.setError("SmartUpdate", "org.freedesktop.DBus.Error.AccessDenied");
    EXPECT_EQ(udisks.read("sda"), untold(EACCES));
}

TEST_F(UDisksTest, TakesTheTemperatureFromBeforeWhenTheDriveFails) {
    service.addDisk(smart(ago(100)));
    service.setError("SmartUpdate", "org.freedesktop.UDisks2.Error.Failed");
    EXPECT_EQ(udisks.read("sda"), told(38));
    service.addDisk(smart(ago(1000)));
    EXPECT_EQ(udisks.read("sda"), untold(EIO));
}

TEST_F(UDisksTest, BelievesNothingBeforeTheFirstUpdate) {
    service.addDisk(smart(0));
    EXPECT_EQ(udisks.read("sda"), untold(ENODATA));
    EXPECT_EQ(service.calls(), oneUpdate);
    service.change([](Manners& manners) { manners.update = smart(ago(0)); });
    EXPECT_EQ(udisks.read("sda"), told(38));
}

TEST_F(UDisksTest, HasNoTemperatureWhereTheDriveTellsNone) {
    service.addDisk(smart(ago(5), 0.0));
    EXPECT_EQ(udisks.read("sda"), untold(ENODATA));
    service.addDisk(smart(ago(5), -1.0));
    EXPECT_EQ(udisks.read("sda"), untold(ENODATA));
    service.addDisk(smart(ago(5), std::numeric_limits<double>::quiet_NaN()));
    EXPECT_EQ(udisks.read("sda"), untold(ENODATA));
    service.addDisk(smart(ago(5), 1e300));
    EXPECT_EQ(udisks.read("sda"), untold(ENODATA));
}

TEST_F(UDisksTest, RoundsToWholeDegrees) {
    service.addDisk(smart(ago(5), 273.15 + 37.6));
    EXPECT_EQ(udisks.read("sda").celsius, 38);
    service.addDisk(smart(ago(5), 273.15 - 4.6));
    EXPECT_EQ(udisks.read("sda").celsius, -5);
}

TEST_F(UDisksTest, NeverAsksADriveWhoseSMARTIsOff) {
    Properties off = smart(ago(100));
    off["SmartEnabled"] = false;
    service.addDisk(off);
    UDisksReading reading = told(0);
    reading.isSwitchedOn = false;
    EXPECT_EQ(udisks.read("sda"), reading);
    off["SmartSupported"] = false;
    service.addDisk(off);
    EXPECT_EQ(udisks.read("sda"), untold(ENOENT));
    EXPECT_EQ(service.calls(), noCalls);
}

TEST_F(UDisksTest, ReadsAnNVMeDriveByItsController) {
    service.change([](Manners& manners) {
        manners.objects["/org/freedesktop/UDisks2/block_devices/nvme0n1"]["org.freedesktop.UDisks2.Block"] = {
            {"Drive", FakeUDisks::ObjectPath{FakeUDisks::drivePath}}};
        manners.objects[FakeUDisks::drivePath] = {
            {FakeUDisks::nvme, {{"SmartUpdated", ago(100)}, {"SmartTemperature", std::uint16_t{300}}}},
            {"org.freedesktop.UDisks2.Drive",
             {{"Model", std::string("SAMPLE DISK")}, {"Serial", std::string("A1")}}}};
        manners.update = {{"SmartUpdated", ago(0)}, {"SmartTemperature", std::uint16_t{311}}};
    });
    EXPECT_EQ(udisks.read("nvme0n1"), told(38));
    EXPECT_EQ(service.calls(), oneUpdate);
}

TEST_F(UDisksTest, KnowsNoDriveThatTheServiceDoesNotKnow) {
    EXPECT_EQ(udisks.read("sda"), untold(ENOENT));
    service.addDisk(smart(ago(5)));
    EXPECT_EQ(udisks.read("sdb"), untold(ENOENT));
    EXPECT_EQ(udisks.read("no path!"), untold(EINVAL));
    service.change([](Manners& manners) {
        manners.objects["/org/freedesktop/UDisks2/block_devices/sda"]["org.freedesktop.UDisks2.Block"] = {
            {"Drive", FakeUDisks::ObjectPath{"/"}}};
    });
    EXPECT_EQ(udisks.read("sda"), untold(ENOENT));  // a device that belongs to no drive
}

TEST_F(UDisksTest, KnowsNoTemperatureOfADriveWithoutSMART) {
    service.addDisk({});
    service.change([](Manners& manners) { manners.objects[FakeUDisks::drivePath].erase(FakeUDisks::ata); });
    EXPECT_EQ(udisks.read("sda"), untold(ENOENT));
    EXPECT_FALSE(udisks.isInStandby("sdb"));
}

TEST_F(UDisksTest, KnowsNothingOfADriveThatGoesMeanwhile) {
    service.addDisk(smart(ago(100)));
    service.change([](Manners& manners) { manners.isGoing = true; });
    EXPECT_EQ(udisks.read("sda"), untold(ENOENT));
    service.addDisk(smart(ago(100)));
    service.setError("SmartUpdate", "org.freedesktop.DBus.Error.UnknownMethod");
    EXPECT_EQ(udisks.read("sda"), untold(ENOENT));
}

TEST_F(UDisksTest, BelievesNoValueOfAnotherType) {
    service.addDisk(smart(ago(5), std::string("warm")));
    EXPECT_EQ(udisks.read("sda"), untold(EPROTO));
    Properties odd = smart(ago(5));
    odd["SmartUpdated"] = std::string("today");
    service.addDisk(odd);
    EXPECT_EQ(udisks.read("sda"), untold(ENODATA));
    service.change([](Manners& manners) {
        manners.objects["/org/freedesktop/UDisks2/block_devices/sda"]["org.freedesktop.UDisks2.Block"] = {
            {"Drive", true}};
    });
    EXPECT_EQ(udisks.read("sda"), untold(EPROTO));
}

TEST_F(UDisksTest, TellsWhichDisksAreInStandby) {
    service.addDisk(smart(ago(5)));
    const auto standsAt = [this](FakeUDisks::Value state) {
        service.change([&](Manners& manners) { manners.powerState = std::move(state); });
        return udisks.isInStandby("sda");
    };
    EXPECT_TRUE(standsAt(std::uint8_t{0x00}));
    EXPECT_FALSE(standsAt(std::uint8_t{0x80}));
    EXPECT_FALSE(standsAt(std::uint8_t{0xFF}));
    EXPECT_FALSE(standsAt(std::string("asleep")));
    service.setError("PmGetState", noAuthority);
    EXPECT_FALSE(standsAt(std::uint8_t{0x00}));
    EXPECT_EQ(service.calls(), Calls(5, "PmGetState auth.no_user_interaction"));
}

TEST_F(UDisksTest, DoesWithoutAServiceAndNeverStartsIt) {
    const test::PrivateSystemBus other;
    EXPECT_EQ(UDisks(options()).read("sda"), untold(ENOENT));
    EXPECT_FALSE(UDisks(options()).isInStandby("sda"));
    EXPECT_FALSE(other.hasStartedService());
}

TEST_F(UDisksTest, DoesWithoutABusAndFindsALaterOne) {
    setenv("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=/nowhere/bus", 1);
    EXPECT_EQ(udisks.read("sda"), untold(ENOENT));
    const test::PrivateSystemBus later;
    FakeUDisks laterService;
    laterService.addDisk(smart(ago(5)));
    EXPECT_EQ(udisks.read("sda"), told(38));
}

TEST_F(UDisksTest, DoesWithoutTheLibrary) {
    service.addDisk(smart(ago(5)));
    UDisksOptions without = options();
    without.sharedLibrary = "libnowhere.so.0";
    EXPECT_EQ(UDisks(without).read("sda"), untold(ENOENT));
    without.sharedLibrary = "libc.so.6";  // which lacks the functions
    EXPECT_EQ(UDisks(without).read("sda"), untold(ENOENT));
}

TEST_F(UDisksTest, SurvivesTheEndOfTheBusAndOfTheService) {
    service.addDisk(smart(ago(5)));
    EXPECT_EQ(udisks.read("sda"), told(38));
    bus.stop();
    EXPECT_EQ(udisks.read("sda"), untold(ENOENT));
    EXPECT_EQ(udisks.read("sda"), untold(ENOENT));
}

TEST_F(UDisksTest, LeavesAServiceAloneThatDoesNotAnswer) {
    service.addDisk(smart(ago(5)));
    service.setError("GetAll", "silence");
    UDisks hurried(options(brief));
    EXPECT_EQ(hurried.read("sda"), untold(ETIMEDOUT));
    EXPECT_EQ(hurried.read("sda"), untold(ETIMEDOUT));
    EXPECT_FALSE(hurried.isInStandby("sda"));
    EXPECT_EQ(service.messageCount(), 1);
}

TEST_F(UDisksTest, AsksAServiceAgainAfterAPause) {
    service.addDisk(smart(ago(5)));
    service.setError("GetAll", "silence");
    UDisks hurried(options(brief, milliseconds(0)));
    EXPECT_EQ(hurried.read("sda"), untold(ETIMEDOUT));
    EXPECT_EQ(hurried.read("sda"), untold(ETIMEDOUT));
    EXPECT_EQ(service.messageCount(), 2);
}

TEST_F(UDisksTest, TakesTheTemperatureFromBeforeOfADriveThatDoesNotAnswer) {
    service.addDisk(smart(ago(100)));
    service.setError("SmartUpdate", "silence");
    UDisksOptions hurried = options();
    hurried.updatePatience = brief;
    UDisks udisksOfHurried(hurried);
    for (int time = 0; time < 3; ++time) EXPECT_EQ(udisksOfHurried.read("sda"), told(38));
    EXPECT_EQ(service.calls(), oneUpdate);
}

TEST_F(UDisksTest, GivesUpABusThatDoesNotAnswer) {
    bus.freeze();
    UDisks hurried(options(brief));
    EXPECT_EQ(hurried.read("sda"), untold(ETIMEDOUT));
    EXPECT_EQ(hurried.read("sda"), untold(ETIMEDOUT));
}

TEST_F(UDisksTest, IsAskedByTheReaderOfDrives) {
    test::FakeTree tree;
    const test::FakeDisk disk;
    test::addDisk(tree, disk);
    tree.folder("dev");
    service.addDisk(smart(ago(5)));
    DriveReaderPool pool({.command = driveReaderCommand("/proc/self/exe", {tree.root(), tree.path("dev")}),
                          .patience = ample});
    const std::vector<DriveRequest> requests{{"sda", "A1"}};
    std::vector<DriveAnswer> answers = pool.read(requests);
    ASSERT_EQ(answers.size(), 1U);
    EXPECT_EQ(answers[0].state, DriveAnswer::State::read);
    EXPECT_EQ(answers[0].reading.source, DriveSource::udisks);
    EXPECT_EQ(answers[0].reading.smart, temperatureBlock(38));
    service.change([](Manners& manners) { manners.powerState = std::uint8_t{0}; });
    answers = pool.read(requests);
    EXPECT_TRUE(answers.at(0).reading.isAsleep);
}

std::ptrdiff_t openDescriptors() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

TEST_F(UDisksTest, LeavesNoDescriptorOpen) {
    service.addDisk(smart(ago(5)));
    EXPECT_EQ(udisks.read("sda"), told(38));
    const std::ptrdiff_t before = openDescriptors();
    constexpr int rounds = 100;
    for (int round = 0; round < rounds; ++round) EXPECT_EQ(UDisks(options()).read("sda"), told(38));
    bus.freeze();
    for (int round = 0; round < 3; ++round)
        EXPECT_EQ(UDisks(options(milliseconds(1))).read("sda"), untold(ETIMEDOUT));
    EXPECT_EQ(openDescriptors(), before);
}

}  // namespace
}  // namespace calorivo
