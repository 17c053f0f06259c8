#include "DriveReadFixture.h"

namespace calorivo {
namespace {

using test::addDisk;
using test::addDrivetemp;
using test::addNvme;
using test::addNvmeChip;
using test::FakeDisk;
using test::identifyData;
using test::smartData;
using Commands = test::Commands;

using DriveRead = test::DriveReadFixture;

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
