#include "platform/linux/DriveScan.h"

#include "DriveTrees.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

using test::addDisk;
using test::addNvme;
using test::FakeDisk;
using test::FakeNvme;
using test::FakeTree;
using Names = std::vector<std::string>;

Names namesIn(const FakeTree& tree) {
    Names names;
    for (const LocatedDrive& drive : locateDrives(tree.root()))
        names.push_back(drive.name + (drive.isSmartCapable ? "" : " tried last"));
    return names;
}

std::string identityIn(const FakeTree& tree) {
    const auto drives = locateDrives(tree.root());
    return drives.size() == 1 ? drives.front().identity : "not one drive";
}

TEST(DriveScan, FindsDisksThenNVMeDrivesInTheOrderOfTheirNames) {
    FakeTree tree;
    addNvme(tree, {.name = "nvme10"});
    addNvme(tree, {.name = "nvme2"});
    addDisk(tree, {.name = "sdaa", .address = "3:0:0:0"});
    addDisk(tree, {.name = "sdb", .address = "2:0:0:0"});
    for (const char* const other : {"loop0", "zram0", "dm-0", "md0", "sr0", "nvme0n1", "mmcblk0"})
        tree.file("block/" + std::string(other) + "/device/vendor", "ATA     \n");
    EXPECT_EQ(namesIn(tree), (Names{"sdb", "sdaa", "nvme2", "nvme10"}));
}

TEST(DriveScan, FindsNothingWhereNothingIs) {
    const FakeTree tree;
    EXPECT_EQ(namesIn(tree), Names{});
    EXPECT_EQ(locateDrives("/nowhere"), std::vector<LocatedDrive>{});
}

TEST(DriveScan, TriesDisksLastThatDoNotSpeakATA) {
    FakeTree tree;
    tree.file("block/sda/device/vendor", "Stick   \n");
    tree.file("block/sdb/device/vendor", "Bridge  \n").file("block/sdb/device/vpd_pg89", "page");
    tree.folder("block/sdc");  // going away just now
    EXPECT_EQ(namesIn(tree), (Names{"sda tried last", "sdb"}));
}

TEST(DriveScan, TellsADriveFromTheNextOneInItsPlace) {
    const auto identityOf = [](const FakeDisk& disk) {
        FakeTree tree;
        addDisk(tree, disk);
        return identityIn(tree);
    };
    const std::string identity = identityOf({});
    EXPECT_EQ(identityOf({}), identity);
    EXPECT_NE(identityOf({.address = "1:0:0:0"}), identity);
    EXPECT_NE(identityOf({.model = "OTHER"}), identity);
    EXPECT_NE(identityOf({.serial = "B2"}), identity);
    EXPECT_NE(identityOf({.sequence = "8"}), identity);  // the same drive, plugged in again
}

TEST(DriveScan, TellsAnNVMeDriveFromTheNextOneInItsPlace) {
    const auto identityOf = [](const FakeNvme& drive) {
        FakeTree tree;
        addNvme(tree, drive);
        return identityIn(tree);
    };
    const std::string identity = identityOf({});
    EXPECT_EQ(identityOf({}), identity);
    EXPECT_NE(identityOf({.model = "OTHER"}), identity);
    EXPECT_NE(identityOf({.serial = "N2"}), identity);
}

}  // namespace
}  // namespace calorivo
