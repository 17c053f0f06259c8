#include "host/Drives.h"

#include "monitor/ISPSmartController.h"
#include "platform/linux/AtaSmartDrives.h"
#include "platform/linux/LinuxMountedVolumes.h"
#include "support/DriveReaderStart.h"

#include "../platform/linux/DriveTrees.h"

#include <gtest/gtest.h>

#include <ostream>

namespace calorivo {

static void PrintTo(const DriveDetails& drive, std::ostream* out) {
    *out << drive.model << " (" << drive.serial << ") " << drive.device << " " << drive.celsius.value_or(0)
         << " " << drive.source << (drive.isAsleep ? " asleep" : "") << (drive.isListed ? " listed " : " ")
         << drive.trouble;
}

namespace {

using test::FakeTree;
using Dictionaries = std::vector<DriveDictionary>;
using Details = std::vector<DriveDetails>;

const test::DriveReaderStart readerStart;
constexpr const char* thisProgram = "/proc/self/exe";
constexpr std::chrono::seconds ample{60};

SourceOptions recorded(const FakeTree& tree) {
    SourceOptions options;
    options.sys = tree.root();
    return options;
}

std::string filled(std::string serial) {
    serial.resize(20, ' ');
    return serial;
}

TEST(Drives, AreReadFromTheFileToTheDictionary) {
    FakeTree tree;
    const test::FakeDisk disk;
    test::addDisk(tree, disk);
    test::addDrivetemp(tree, disk, "45000");
    test::addDisk(tree, {.name = "sdb", .address = "1:0:0:0", .serial = "B2"});
    test::addNvme(tree, {});
    test::addNvmeChip(tree, {}, "37850");
    const auto drives = makeDrives(recorded(tree), thisProgram, ample);
    ASSERT_NE(drives, nullptr);
    drives->update();
    EXPECT_EQ(drives->allDisks(),
              (Dictionaries{{"SAMPLE DISK", filled("A1"), 45}, {"SAMPLE NVME", filled("N1"), 38}}));
    const std::string noModule =
        "the kernel module drivetemp is not loaded, and only root may ask the drive itself";
    EXPECT_EQ(drives->details(), (Details{{"SAMPLE DISK", "A1", "sda", 45, "drivetemp", false, true, ""},
                                          {"SAMPLE DISK", "B2", "sdb", {}, "", false, false, noModule},
                                          {"SAMPLE NVME", "N1", "nvme0", 38, "nvme", false, true, ""}}));
}

TEST(Drives, KeepTheValueOfOneThatFallsAsleep) {
    FakeTree tree;
    const test::FakeDisk disk;
    test::addDisk(tree, disk);
    test::addDrivetemp(tree, disk, "45000");
    const auto drives = makeDrives(recorded(tree), thisProgram, ample);
    drives->update();
    tree.file(disk.device() + "/power/runtime_status", "suspended\n");
    drives->update();
    EXPECT_EQ(drives->allDisks(), (Dictionaries{{"SAMPLE DISK", filled("A1"), 45}}));
    EXPECT_EQ(drives->details(), (Details{{"SAMPLE DISK", "A1", "sda", 45, "drivetemp", true, true, ""}}));
}

TEST(Drives, SayWhyThereIsNoTemperature) {
    FakeTree tree;
    const test::FakeDisk disk;
    test::addDisk(tree, disk);
    test::addDrivetemp(tree, disk, "0");
    const auto drives = makeDrives(recorded(tree), thisProgram, ample);
    drives->update();
    EXPECT_EQ(drives->details(),
              (Details{{"SAMPLE DISK", "A1", "sda", {}, "", false, false, "it has no temperature"}}));
    FakeTree chipless;
    test::addNvme(chipless, {});
    const auto nvme = makeDrives(recorded(chipless), thisProgram, ample);
    nvme->update();
    EXPECT_EQ(nvme->details(),
              (Details{{"SAMPLE NVME",
                        "N1",
                        "nvme0",
                        {},
                        "",
                        false,
                        false,
                        "the kernel gives no reading of it, and only root may ask the drive itself"}}));
    tree.file(disk.device() + "/power/runtime_status", "suspended\n");
    const auto others = makeDrives(recorded(tree), thisProgram, ample);
    others->update();
    EXPECT_EQ(others->details(), (Details{{"SAMPLE DISK", "A1", "sda", {}, "", true, false, "it sleeps"}}));
    const auto unread = makeDrives(recorded(tree), "/nowhere/reader", ample);
    unread->update();
    EXPECT_EQ(unread->details(),
              (Details{{"SAMPLE DISK", "A1", "sda", {}, "", false, false, "the reader of drives failed"}}));
    EXPECT_EQ(unread->allDisks(), Dictionaries{});
}

TEST(Drives, AreNoneWithoutSMART) {
    FakeTree tree;
    const test::FakeDisk disk;
    test::addDisk(tree, disk);
    test::addDrivetemp(tree, disk, "45000");
    std::string page(60 + 512, '\0');
    tree.file(disk.device() + "/vpd_pg89", page);
    tree.file("block/sdb/device/vendor", "Stick   \n");
    const auto drives = makeDrives(recorded(tree), thisProgram, ample);
    drives->update();
    EXPECT_EQ(drives->allDisks(), Dictionaries{});
    EXPECT_EQ(drives->details(), Details{});
}

TEST(Drives, AreTheDisksOfTheVolumesOnThem) {
    FakeTree tree;
    tree.file("devices/sda/diskseq", "3\n").file("devices/sda/sda1/partition", "1\n");
    tree.file("devices/sda/sda2/partition", "2\n");
    tree.link("dev/block/8:1", "../../devices/sda/sda1").link("dev/block/8:2", "../../devices/sda/sda2");
    tree.file(
        "self/mountinfo",
        "22 1 8:1 / / rw - ext4 /dev/sda1 rw\n23 1 8:1 / /media/ann/Back\\040up rw - ext4 /dev/sda1 rw\n"
        "24 1 8:2 / /run/media/ann/Films rw - ext4 /dev/sda2 rw\n");
    LinuxMountedVolumes volumes(tree.root(), tree.root());
    AtaSmartDrives ataSmart(tree.root(), nullptr);
    ISPSmartController controller(ataSmart, &volumes);
    controller.getPartitions();
    const std::map<std::string, std::vector<std::string>> expected{{"disk3", {"Back up", "Films"}}};
    EXPECT_EQ(controller.partitionData, expected);
}

TEST(Drives, BelongToTheMachineAndToRecordedOnes) {
    SourceOptions options;
    EXPECT_NE(makeDrives(options, thisProgram), nullptr);
    options.simulationSeed = 1;
    EXPECT_EQ(makeDrives(options, thisProgram), nullptr);
    SourceOptions dump;
    dump.keysFile = "dump.txt";
    EXPECT_EQ(makeDrives(dump, thisProgram), nullptr);
}

TEST(DriveReaderProgram, IsTheTerminalProgramBesideThisOne) {
    const std::string program = driveReaderProgram();
    EXPECT_TRUE(program == thisProgram || program.ends_with("/calorivo-cli")) << program;
}

}  // namespace
}  // namespace calorivo
