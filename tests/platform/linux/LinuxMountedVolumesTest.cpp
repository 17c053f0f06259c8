#include "platform/linux/LinuxMountedVolumes.h"

#include "support/FakeTree.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

using Texts = std::vector<std::string>;

/// A machine with disks and a list of mounts.
class LinuxMountedVolumesTest : public testing::Test {
  protected:
    LinuxMountedVolumesTest() {
        addDisk("sda", "8:0", "3");
        addPartition("sda", "sda2", "8:2", "2");
        addDisk("nvme0n1", "259:0", "5");
        addPartition("nvme0n1", "nvme0n1p12", "259:12", "12");
    }
    /// An empty sequence is a kernel that gives none.
    void addDisk(const std::string& name, const std::string& device, const std::string& sequence) {
        const std::string folder = "devices/" + name;
        tree.file(folder + "/dev", device + "\n");
        if (!sequence.empty()) tree.file(folder + "/diskseq", sequence + "\n");
        tree.link("dev/block/" + device, "../../" + folder);
        tree.link("class/block/" + name, "../../" + folder);
    }
    void addPartition(const std::string& disk, const std::string& name, const std::string& device,
                      const std::string& number) {
        const std::string folder = "devices/" + disk + "/" + name;
        tree.file(folder + "/partition", number + "\n");
        tree.file(folder + "/dev", device + "\n");
        tree.link("dev/block/" + device, "../../" + folder);
        tree.link("class/block/" + name, "../../" + folder);
    }
    void mount(const std::string& device, const std::string& point, const std::string& source = "/dev/x") {
        list += "36 25 " + device + " / " + point + " rw,relatime shared:1 - ext4 " + source + " rw\n";
        tree.file("self/mountinfo", list);
    }
    /// "path device name" of each volume.
    Texts volumes() {
        Texts texts;
        for (const std::string& path : mounted.mountedLocalVolumePaths())
            texts.push_back(path + " " + mounted.BSDNameOfVolume(path) + " " +
                            mounted.displayNameAtPath(path));
        return texts;
    }

    test::FakeTree tree;
    std::string list;
    LinuxMountedVolumes mounted{tree.root(), tree.root()};
};

TEST_F(LinuxMountedVolumesTest, AreThoseOnDisksWithTheirPartitions) {
    mount("8:2", "/");
    mount("259:12", "/home");
    mount("259:0", "/srv");
    EXPECT_EQ(volumes(), (Texts{"/ disk3s2 ", "/home disk5s12 home", "/srv disk5 srv"}));
}

TEST_F(LinuxMountedVolumesTest, AreVolumesWhereTheDesktopMountedThem) {
    mount("8:2", "/media/ann/Back\\040up");
    mount("259:12", "/run/media/ann/K\\134R");
    mount("259:0", "/run/media/ann/K\\134R/inner");
    mount("259:0", "/media/cdrom");
    mount("259:0", "/media/ann");
    mount("259:0", "/media/ann/");
    EXPECT_EQ(volumes(), (Texts{"/Volumes/Back up disk3s2 Back up", "/Volumes/K\\R disk5s12 K\\R",
                                "/Volumes/K\\R/inner disk5 inner", "/media/cdrom disk5 cdrom",
                                "/media/ann disk5 ann", "/media/ann/ disk5 "}));
}

TEST_F(LinuxMountedVolumesTest, AreNumberedWhereSeveralHaveTheSameName) {
    mount("8:2", "/media/ann/Data");
    mount("259:12", "/media/bob/Data");
    mount("259:0", "/media/bob/Data\\0401");
    mount("259:0", "/run/media/ann/Data");
    EXPECT_EQ(volumes(), (Texts{"/Volumes/Data disk3s2 Data", "/Volumes/Data 1 disk5s12 Data",
                                "/Volumes/Data 1 1 disk5 Data 1", "/Volumes/Data 2 disk5 Data"}));
}

TEST_F(LinuxMountedVolumesTest, AreOnDisksOfTheirOwnNumbersWhereTheKernelGivesNoRunningOnes) {
    addDisk("sdb", "8:16", "");
    addPartition("sdb", "sdb1", "8:17", "1");
    mount("8:17", "/media/ann/Old");
    EXPECT_EQ(volumes(), Texts{"/Volumes/Old disk8388624s1 Old"});
}

TEST_F(LinuxMountedVolumesTest, AreOnTheDiskBelowAnEncryptedDevice) {
    addDisk("dm-0", "254:0", "9");
    tree.link("devices/dm-0/slaves/sda2", "../../sda/sda2");
    mount("254:0", "/media/ann/Secret");
    EXPECT_EQ(volumes(), Texts{"/Volumes/Secret disk3s2 Secret"});
    tree.link("devices/dm-0/slaves/nvme0n1", "../../nvme0n1");
    EXPECT_EQ(volumes(), Texts{"/Volumes/Secret disk9 Secret"});
}

TEST_F(LinuxMountedVolumesTest, AreKnownByTheirSourceWhereTheirNumberIsNoDevices) {
    mount("0:40", "/media/ann/Butter", "/dev/sda2");
    mount("0:41", "/media/ann/Mapped", "/dev/mapper/sda2");
    mount("0:42", "/media/ann/Up", "/dev/..");
    EXPECT_EQ(volumes(), Texts{"/Volumes/Butter disk3s2 Butter"});
}

TEST_F(LinuxMountedVolumesTest, AreNotThoseOfOtherMachinesAndOfTheKernel) {
    mount("0:21", "/proc", "proc");
    mount("0:50", "/media/ann/Share", "server:/export");
    mount("99:99", "/media/ann/Gone");
    EXPECT_EQ(volumes(), Texts{});
}

TEST_F(LinuxMountedVolumesTest, SurviveAnyListOfMounts) {
    EXPECT_EQ(volumes(), Texts{});
    for (const std::string line :
         {"", "-", "36 25 8:2 / /media/ann/A", "36 25 ../../devices/sda / /media/ann/A rw - ext4 /dev/x rw",
          "36 25  /  rw - ext4 /dev/sda2 rw", "36 25 8:2 / \\ rw - ext4 /dev/sda2 rw"})
        list += line + std::string("\n");
    list += std::string("\0\n", 2) + std::string(100'000, ' ') + "\n" + std::string(100'000, 'x');
    tree.file("self/mountinfo", list);
    EXPECT_EQ(volumes(), Texts{"\\ disk3s2 \\"});
    EXPECT_EQ(mounted.BSDNameOfVolume("/nowhere"), "");
    EXPECT_EQ(mounted.displayNameAtPath("/nowhere"), "");
}

TEST_F(LinuxMountedVolumesTest, SurviveAnyTextOfTheKernels) {
    mount("8:2", "/media/ann/A");
    tree.file("devices/sda/diskseq", "three\n").file("devices/sda/dev", "8\n");
    EXPECT_EQ(volumes(), Texts{});
    tree.file("devices/sda/dev", "-8:0\n");
    EXPECT_EQ(volumes(), Texts{});
    tree.file("devices/sda/dev", "99999999999:0\n");
    EXPECT_EQ(volumes(), Texts{});
    tree.file("devices/sda/dev", "8:0\n");
    EXPECT_EQ(volumes(), Texts{"/Volumes/A disk8388608s2 A"});
    // A device that stands on itself.
    tree.link("devices/sda/sda2/slaves/sda2", "../../sda2");
    EXPECT_EQ(volumes(), Texts{"/Volumes/A disk8388608s2 A"});
}

}  // namespace
}  // namespace calorivo
