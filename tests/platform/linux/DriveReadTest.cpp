#include "platform/linux/DriveRead.h"

#include "DriveTrees.h"
#include "platform/linux/DriveBlocks.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <map>
#include <ostream>

namespace calorivo {

static void PrintTo(const DriveReading& reading, std::ostream* out) {
    *out << "source " << static_cast<int>(reading.source) << (reading.hasIdentify ? " identify" : "")
         << (reading.isSwitchedOn ? " on" : "") << (reading.hasStatus ? " status" : "")
         << (reading.hasData ? " data" : "") << (reading.isAsleep ? " asleep" : "") << " error "
         << reading.error << " at byte 7: " << static_cast<int>(reading.smart[7]);
}

namespace {

using test::addDisk;
using test::addDrivetemp;
using test::addNvme;
using test::addNvmeChip;
using test::FakeDisk;
using test::FakeNvme;
using test::FakeTree;
using test::identifyData;
using test::smartData;
using Commands = std::vector<std::string>;

std::string nameOf(const AtaCommand& command) {
    if (command == ataIdentifyDevice) return "identify";
    if (command == ataCheckPowerMode) return "power mode";
    if (command == ataSmartReadData) return "read data";
    return command == ataSmartReturnStatus ? "return status" : "?";
}

/// The machine's disks and NVMe drives behind their device files.
struct FakeDevices {
    AtaBlock identify = identifyData("WHOLE MODEL OF THE DISK", "A1");
    AtaBlock smart = smartData({{194, {41}}});
    NvmeSmartLog log{};
    std::uint8_t powerMode = 0xFF;
    int openError = 0;
    int logError = 0;
    /// What UDisks2 tells; where it does not run it knows nothing.
    UDisksReading udisks{.error = ENOENT};
    bool isInStandby = false;
    /// What a command is answered with, if not with success.
    std::map<std::string, int> errors;
    /// Every command and every device that was opened.
    Commands sent;

    struct Disk final : AtaDevice {
        explicit Disk(FakeDevices& owner) : devices(owner) {}
        int answer(const AtaCommand& command) const {
            devices.sent.push_back(nameOf(command));
            const auto error = devices.errors.find(nameOf(command));
            return error == devices.errors.end() ? 0 : error->second;
        }
        int read(const AtaCommand& command, AtaBlock& data) override {
            const int error = answer(command);
            data = command == ataIdentifyDevice ? devices.identify : devices.smart;
            if (error != 0) data.fill(0x3F);  // a failing drive may leave anything there
            return error;
        }
        int ask(const AtaCommand& command, AtaRegisters& registers) override {
            const int error = answer(command);
            if (error == 0) registers.count = devices.powerMode;
            return error;
        }
        FakeDevices& devices;
    };

    DriveDevices devices() {
        return {[this](const std::string& path, int& error) -> std::unique_ptr<AtaDevice> {
                    sent.push_back("open " + path);
                    error = openError;
                    if (openError != 0) return nullptr;
                    return std::make_unique<Disk>(*this);
                },
                [this](const std::string& path, NvmeSmartLog& read) {
                    sent.push_back("log " + path);
                    read = log;
                    return logError;
                },
                [this](const std::string& block) {
                    sent.push_back("standby " + block);
                    return isInStandby;
                },
                [this](const std::string& block) {
                    sent.push_back("udisks " + block);
                    return udisks;
                }};
    }
};

class DriveRead : public testing::Test {
  protected:
    DriveReading read(const std::string& name = "sda") {
        return readDrive(name, {tree.root(), "/d"}, fake.devices());
    }
    /// A reading from a temperature that the kernel or the log told.
    static DriveReading told(DriveSource source, const AtaBlock& identify, int celsius) {
        DriveReading reading;
        reading.identify = identify;
        reading.smart = temperatureBlock(celsius);
        reading.source = source;
        reading.hasIdentify = reading.isSwitchedOn = reading.hasStatus = reading.hasData = true;
        return reading;
    }
    /// A disk that was identified and gave no temperature.
    static DriveReading unread(int error) {
        DriveReading reading;
        reading.identify = identifyData("SAMPLE DISK", "A1");
        reading.hasIdentify = true;
        reading.error = error;
        return reading;
    }

    FakeTree tree;
    FakeDevices fake;
    const FakeDisk disk{};
    const FakeNvme nvme{};
};

TEST_F(DriveRead, AsksTheKernelWithoutAnyPrivilege) {
    addDisk(tree, disk);
    addDrivetemp(tree, disk, "38000");
    fake.openError = EACCES;
    EXPECT_EQ(read(), told(DriveSource::drivetemp, identifyData("SAMPLE DISK", "A1"), 38));
    EXPECT_EQ(fake.sent, (Commands{"open /d/sda", "standby sda"}));
}

TEST_F(DriveRead, AsksTheKernelOfADriveThatIsAwake) {
    addDisk(tree, disk);
    addDrivetemp(tree, disk, "38000");
    EXPECT_EQ(read(), told(DriveSource::drivetemp, identifyData("SAMPLE DISK", "A1"), 38));
    EXPECT_EQ(fake.sent, (Commands{"open /d/sda", "power mode"}));
}

TEST_F(DriveRead, OpensNoDeviceOfARecordedMachine) {
    addDisk(tree, disk);
    addDrivetemp(tree, disk, "38000");
    EXPECT_EQ(readDrive("sda", {tree.root(), ""}, fake.devices()).smart, temperatureBlock(38));
    tree.remove(disk.device() + "/hwmon");
    EXPECT_EQ(readDrive("sda", {tree.root(), ""}, fake.devices()), unread(ENOENT));
    addNvme(tree, nvme);
    EXPECT_EQ(readDrive("nvme0", {tree.root(), ""}, fake.devices()).error, ENOENT);
    EXPECT_EQ(fake.sent, Commands{});
}

TEST_F(DriveRead, AsksTheDriveWhereTheKernelDoesNot) {
    addDisk(tree, disk);
    DriveReading expected;
    expected.identify = fake.identify;
    expected.smart = smartData({{194, {41}}});
    expected.source = DriveSource::smart;
    expected.hasIdentify = expected.isSwitchedOn = expected.hasStatus = expected.hasData = true;
    EXPECT_EQ(read(), expected);
    EXPECT_EQ(fake.sent, (Commands{"open /d/sda", "power mode", "identify", "return status", "read data"}));
}

TEST_F(DriveRead, AsksTheDriveWhenTheKernelFails) {
    addDisk(tree, disk);
    addDrivetemp(tree, disk, "no number");
    EXPECT_EQ(read().source, DriveSource::smart);
    addDrivetemp(tree, disk, "-41000");
    EXPECT_EQ(read().source, DriveSource::smart);
    addDrivetemp(tree, disk, "16385000");
    EXPECT_EQ(read().source, DriveSource::smart);
}

TEST_F(DriveRead, HasNoTemperatureWhereNothingIsPermitted) {
    addDisk(tree, disk);
    fake.openError = EACCES;
    EXPECT_EQ(read(), unread(EACCES));
    fake.openError = 0;
    fake.errors = {{"power mode", EPERM}};
    EXPECT_EQ(read(), unread(EPERM));
}

TEST_F(DriveRead, LeavesASuspendedDriveAloneWithoutOpeningIt) {
    addDisk(tree, disk);
    addDrivetemp(tree, disk, "38000");
    tree.file(disk.device() + "/power/runtime_status", "suspended\n");
    DriveReading expected = unread(0);
    expected.isAsleep = true;
    EXPECT_EQ(read(), expected);
    EXPECT_EQ(fake.sent, Commands{});
}

TEST_F(DriveRead, LeavesADriveInStandbyAlone) {
    addDisk(tree, disk);
    addDrivetemp(tree, disk, "38000");
    fake.powerMode = 0x00;
    DriveReading expected = unread(0);
    expected.isAsleep = true;
    EXPECT_EQ(read(), expected);
    EXPECT_EQ(fake.sent, (Commands{"open /d/sda", "power mode"}));
}

TEST_F(DriveRead, ReadsADriveThatDoesNotTellItsPowerMode) {
    addDisk(tree, disk);
    fake.errors = {{"power mode", EIO}};
    EXPECT_EQ(read().smart, smartData({{194, {41}}}));
}

TEST_F(DriveRead, NeverSwitchesSMARTOn) {
    addDisk(tree, disk);
    fake.identify[170] = 0;
    const DriveReading reading = read();
    EXPECT_FALSE(reading.isSwitchedOn);
    EXPECT_EQ(fake.sent, (Commands{"open /d/sda", "power mode", "identify"}));
}

TEST_F(DriveRead, TellsWhichCommandFailed) {
    addDisk(tree, disk);
    fake.errors = {{"read data", EIO}};
    DriveReading reading = read();
    EXPECT_TRUE(reading.hasStatus && !reading.hasData);
    fake.errors = {{"return status", EIO}};
    reading = read();
    EXPECT_TRUE(reading.isSwitchedOn && !reading.hasStatus && !reading.hasData);
    fake.errors = {{"return status", ENODATA}};  // a bridge that keeps the registers to itself
    reading = read();
    EXPECT_TRUE(reading.hasStatus && reading.hasData);
    fake.errors = {{"identify", EIO}};
    EXPECT_EQ(read(), unread(EIO));
}

TEST_F(DriveRead, PutsTheTemperatureInThePlaceOfTheWear) {
    addDisk(tree, disk);
    fake.identify[434] = 1;
    fake.smart = smartData({{231, {96}, 96}, {194, {35}}});
    EXPECT_EQ(read().smart, smartData({{0, {96}, 96}, {194, {35}}}));
}

TEST_F(DriveRead, KnowsADiskByOtherFilesWhereItsIdentifyDataIsNotKept) {
    addDisk(tree, disk);
    addDrivetemp(tree, disk, "38000");
    tree.remove(disk.device() + "/vpd_pg89");
    EXPECT_EQ(read(), told(DriveSource::drivetemp, identifyData("SAMPLE DISK", "A1"), 38));
    tree.file(disk.device() + "/vpd_pg89", std::string(571 - 1, 'x'));  // cut off
    EXPECT_EQ(read(), told(DriveSource::drivetemp, identifyData("SAMPLE DISK", "A1"), 38));
    tree.remove(disk.device() + "/vpd_pg80");
    tree.remove(disk.device() + "/vpd_pg89");
    fake.openError = EACCES;
    EXPECT_FALSE(read().hasIdentify);
}

TEST_F(DriveRead, TakesIdentifyDataWholeWhateverItsLastByteIs) {
    addDisk(tree, disk);
    addDrivetemp(tree, disk, "38000");
    std::string page(60, '\0');
    AtaBlock identify = identifyData("SAMPLE DISK", "A1");
    identify[511] = '\n';
    page.append(identify.begin(), identify.end());
    tree.file(disk.device() + "/vpd_pg89", page);
    EXPECT_EQ(read().identify, identify);
}

TEST_F(DriveRead, IdentifiesDrivesWithoutAskingThem) {
    addDisk(tree, disk);
    addNvme(tree, nvme);
    EXPECT_EQ(identifyDrive("sda", tree.root()), identifyData("SAMPLE DISK", "A1"));
    EXPECT_EQ(identifyDrive("nvme0", tree.root()), identifyData("SAMPLE NVME", "N1"));
    EXPECT_EQ(identifyDrive("sdb", tree.root()), std::nullopt);
    EXPECT_EQ(identifyDrive("nvme1", tree.root()), std::nullopt);
}

TEST_F(DriveRead, KnowsNothingOfADriveThatIsGone) {
    DriveReading gone;
    gone.error = ENODEV;
    EXPECT_EQ(read(), gone);
    EXPECT_EQ(read("nvme0"), gone);
    EXPECT_EQ(fake.sent, Commands{});
}

TEST_F(DriveRead, AsksTheKernelForAnNVMeDriveAndRoundsToWholeDegrees) {
    addNvme(tree, nvme);
    addNvmeChip(tree, nvme, "37850");
    EXPECT_EQ(read("nvme0"), told(DriveSource::nvme, identifyData("SAMPLE NVME", "N1"), 38));
    EXPECT_EQ(fake.sent, Commands{});
}

TEST_F(DriveRead, FindsAnNVMeChipInTheFolderOfItsSlotToo) {
    addNvme(tree, nvme);
    tree.file(nvme.device() + "/hwmon/hwmon9/name", "nvme\n");
    tree.file(nvme.device() + "/hwmon/hwmon9/temp1_input", "44850\n");
    EXPECT_EQ(read("nvme0"), told(DriveSource::nvme, identifyData("SAMPLE NVME", "N1"), 45));
}

TEST_F(DriveRead, ReadsTheLogOfAnNVMeDriveWithoutAChip) {
    addNvme(tree, nvme);
    fake.log[1] = 0x40;
    fake.log[2] = 0x01;
    EXPECT_EQ(read("nvme0"), told(DriveSource::smartLog, identifyData("SAMPLE NVME", "N1"), 47));
    EXPECT_EQ(fake.sent, Commands{"log /d/nvme0"});
    fake.logError = EACCES;
    DriveReading refused;
    refused.identify = identifyData("SAMPLE NVME", "N1");
    refused.hasIdentify = true;
    refused.error = EACCES;
    EXPECT_EQ(read("nvme0"), refused);
}

TEST_F(DriveRead, AsksUDisksWhereNothingElseIsPermitted) {
    addDisk(tree, disk);
    fake.openError = EACCES;
    fake.udisks = {.celsius = 39, .model = "Another name", .serial = "B2"};
    EXPECT_EQ(read(), told(DriveSource::udisks, identifyData("SAMPLE DISK", "A1"), 39));
    EXPECT_EQ(fake.sent, (Commands{"open /d/sda", "standby sda", "udisks sda"}));
    fake.openError = 0;
    fake.errors = {{"power mode", EPERM}};
    EXPECT_EQ(read(), told(DriveSource::udisks, identifyData("SAMPLE DISK", "A1"), 39));
}

TEST_F(DriveRead, KnowsADriveByItsNameInUDisksWhereTheKernelHasNone) {
    addDisk(tree, disk);
    tree.remove(disk.device() + "/vpd_pg80").remove(disk.device() + "/vpd_pg89");
    fake.openError = EACCES;
    fake.udisks = {.celsius = 39, .model = "Another name", .serial = "B2"};
    EXPECT_EQ(read(), told(DriveSource::udisks, identifyData("Another name", "B2"), 39));
}

TEST_F(DriveRead, TellsWhyUDisksHasNoTemperature) {
    addDisk(tree, disk);
    fake.openError = EACCES;
    fake.udisks = {.error = ETIMEDOUT};
    DriveReading expected = unread(ETIMEDOUT);
    expected.failed = DriveSource::udisks;
    EXPECT_EQ(read(), expected);
    fake.udisks = {.isAsleep = true};
    expected = unread(0);
    expected.isAsleep = true;
    EXPECT_EQ(read(), expected);
    fake.udisks = {.isSwitchedOn = false};
    expected = unread(0);
    expected.source = DriveSource::udisks;
    EXPECT_EQ(read(), expected);
}

TEST_F(DriveRead, LeavesADiskAloneThatIsInStandbyAsUDisksSays) {
    addDisk(tree, disk);
    addDrivetemp(tree, disk, "38000");
    fake.openError = EACCES;
    fake.isInStandby = true;
    DriveReading expected = unread(0);
    expected.isAsleep = true;
    EXPECT_EQ(read(), expected);
    EXPECT_EQ(fake.sent, (Commands{"open /d/sda", "standby sda"}));
}

TEST_F(DriveRead, AsksUDisksForTheStandbyOfRotatingDisksOnly) {
    addDisk(tree, disk);
    addDrivetemp(tree, disk, "38000");
    fake.openError = EACCES;
    fake.isInStandby = true;
    tree.file(disk.device() + "/block/sda/queue/rotational", "0\n");
    EXPECT_EQ(read(), told(DriveSource::drivetemp, identifyData("SAMPLE DISK", "A1"), 38));
    tree.file(disk.device() + "/block/sda/queue/rotational", "1\n");
    EXPECT_TRUE(read().isAsleep);
}

TEST_F(DriveRead, AsksUDisksNothingThatThePrivilegedMayAskTheDrive) {
    addDisk(tree, disk);
    addNvme(tree, nvme);
    tree.folder(nvme.folder() + "/nvme0n1");
    fake.udisks = {.celsius = 39};
    fake.errors = {{"read data", EIO}};
    fake.logError = EIO;
    EXPECT_EQ(read().error, EIO);
    EXPECT_EQ(read("nvme0").error, EIO);
    EXPECT_EQ(fake.sent, (Commands{"open /d/sda", "power mode", "identify", "return status", "read data",
                                   "log /d/nvme0"}));
}

TEST_F(DriveRead, AsksUDisksForAnNVMeDriveByItsNamespace) {
    addNvme(tree, nvme);
    fake.logError = EACCES;
    fake.udisks = {.celsius = 40};
    EXPECT_EQ(read("nvme0").error, EACCES);  // it has no namespace
    tree.folder(nvme.folder() + "/ng0n1").folder(nvme.folder() + "/nvme0n1");
    EXPECT_EQ(read("nvme0"), told(DriveSource::udisks, identifyData("SAMPLE NVME", "N1"), 40));
    EXPECT_EQ(fake.sent.back(), "udisks nvme0n1");
    tree.remove(nvme.folder() + "/nvme0n1").folder(nvme.folder() + "/nvme3c0n2");
    EXPECT_EQ(read("nvme0"), told(DriveSource::udisks, identifyData("SAMPLE NVME", "N1"), 40));
    EXPECT_EQ(fake.sent.back(), "udisks nvme3n2");
}

TEST_F(DriveRead, LeavesAnNVMeDriveAloneThatSleepsOrIsBeingReset) {
    addNvme(tree, nvme);
    addNvmeChip(tree, nvme, "37850");
    DriveReading expected;
    expected.identify = identifyData("SAMPLE NVME", "N1");
    expected.hasIdentify = true;
    expected.error = ENODEV;
    tree.file(nvme.folder() + "/state", "resetting\n");
    EXPECT_EQ(read("nvme0"), expected);
    tree.file(nvme.device() + "/power/runtime_status", "suspended\n");
    expected.error = 0;
    expected.isAsleep = true;
    EXPECT_EQ(read("nvme0"), expected);
    EXPECT_EQ(fake.sent, Commands{});
}

}  // namespace
}  // namespace calorivo
