#include "host/Drives.h"

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
