#include "DriveReadFixture.h"

// Drives that are read through UDisks2, where that runs.

namespace calorivo {
namespace {

using test::addDisk;
using test::addDrivetemp;
using test::addNvme;
using test::identifyData;
using Commands = test::Commands;

using DriveReadUDisks = test::DriveReadFixture;

TEST_F(DriveReadUDisks, AsksUDisksWhereNothingElseIsPermitted) {
    addDisk(tree, disk);
    fake.openError = EACCES;
    fake.udisks = {.celsius = 39, .model = "Another name", .serial = "B2"};
    EXPECT_EQ(read(), told(DriveSource::udisks, identifyData("SAMPLE DISK", "A1"), 39));
    EXPECT_EQ(fake.sent, (Commands{"open /d/sda", "standby sda", "udisks sda"}));
    fake.openError = 0;
    fake.errors = {{"power mode", EPERM}};
    EXPECT_EQ(read(), told(DriveSource::udisks, identifyData("SAMPLE DISK", "A1"), 39));
}

TEST_F(DriveReadUDisks, KnowsADriveByItsNameInUDisksWhereTheKernelHasNone) {
    addDisk(tree, disk);
    tree.remove(disk.device() + "/vpd_pg80").remove(disk.device() + "/vpd_pg89");
    fake.openError = EACCES;
    fake.udisks = {.celsius = 39, .model = "Another name", .serial = "B2"};
    EXPECT_EQ(read(), told(DriveSource::udisks, identifyData("Another name", "B2"), 39));
}

TEST_F(DriveReadUDisks, TellsWhyUDisksHasNoTemperature) {
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

TEST_F(DriveReadUDisks, LeavesADiskAloneThatIsInStandbyAsUDisksSays) {
    addDisk(tree, disk);
    addDrivetemp(tree, disk, "38000");
    fake.openError = EACCES;
    fake.isInStandby = true;
    DriveReading expected = unread(0);
    expected.isAsleep = true;
    EXPECT_EQ(read(), expected);
    EXPECT_EQ(fake.sent, (Commands{"open /d/sda", "standby sda"}));
}

TEST_F(DriveReadUDisks, AsksUDisksForTheStandbyOfRotatingDisksOnly) {
    addDisk(tree, disk);
    addDrivetemp(tree, disk, "38000");
    fake.openError = EACCES;
    fake.isInStandby = true;
    tree.file(disk.device() + "/block/sda/queue/rotational", "0\n");
    EXPECT_EQ(read(), told(DriveSource::drivetemp, identifyData("SAMPLE DISK", "A1"), 38));
    tree.file(disk.device() + "/block/sda/queue/rotational", "1\n");
    EXPECT_TRUE(read().isAsleep);
}

TEST_F(DriveReadUDisks, AsksUDisksNothingThatThePrivilegedMayAskTheDrive) {
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

TEST_F(DriveReadUDisks, AsksUDisksForAnNVMeDriveByItsNamespace) {
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

}  // namespace
}  // namespace calorivo
