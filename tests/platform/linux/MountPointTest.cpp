#include "platform/linux/MountPoint.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

constexpr std::string_view mountInfo =
    "22 1 8:2 / / rw,relatime shared:1 - ext4 /dev/sda2 rw,errors=remount-ro\n"
    "23 22 0:21 / /proc rw,nosuid - proc proc rw\n"
    "40 22 7:0 / /run/media/u/My\\040Image ro,nosuid shared:5 master:1 - iso9660 /dev/loop0 ro\n"
    "41 22 8:17 / /run/media/u/stick rw,nosuid - vfat /dev/sdb1 rw\n"
    "42 22 8:18 / /mnt/half rw - ext4 /dev/sdb2 ro\n"
    "nonsense\n"
    "43 22 8:19 / /mnt/short rw - ext4\n"
    "44 22 8:19 / /run/media/u/stick rw - ext4 /dev/sdc1 rw\n";

TEST(MountPoint, ReadsTheKernelsListOfMounts) {
    const std::vector<Mount> expected{{"/", "/dev/sda2", false, "8:2"},
                                      {"/proc", "proc", false, "0:21"},
                                      {"/run/media/u/My Image", "/dev/loop0", true, "7:0"},
                                      {"/run/media/u/stick", "/dev/sdb1", false, "8:17"},
                                      {"/mnt/half", "/dev/sdb2", true, "8:18"},
                                      {"/run/media/u/stick", "/dev/sdc1", false, "8:19"}};
    EXPECT_EQ(parseMounts(mountInfo), expected);
    EXPECT_EQ(parseMounts(""), std::vector<Mount>{});
}

TEST(MountPoint, FindsTheInnermostMountOfAPath) {
    const std::vector<Mount> mounts = parseMounts(mountInfo);
    struct Row {
        std::string path;
        std::string source;
    };
    const Row rows[] = {{"/", "/dev/sda2"},
                        {"/home/u/a", "/dev/sda2"},
                        {"/proc", "proc"},
                        {"/procession", "/dev/sda2"},
                        {"/run/media/u/My Image/Calorivo.AppImage", "/dev/loop0"},
                        // The later mount hides the earlier one.
                        {"/run/media/u/stick/a", "/dev/sdc1"}};
    for (const Row& row : rows) {
        const auto mount = mountOf(row.path, mounts);
        ASSERT_TRUE(mount) << row.path;
        EXPECT_EQ(mount->source, row.source) << row.path;
    }
    EXPECT_EQ(mountOf("/a", {}), std::nullopt);
}

TEST(MountPoint, LeavesABackslashThatBeginsNoNumber) {
    EXPECT_EQ(parseMounts("1 0 8:1 / /a\\09\\134\\b rw - ext4 /dev/x rw").at(0).point, "/a\\09\\\\b");
}

}  // namespace
}  // namespace calorivo
