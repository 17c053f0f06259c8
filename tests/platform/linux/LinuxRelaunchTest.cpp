#include "platform/linux/LinuxRelaunch.h"

#include "platform/linux/SpawnedProcess.h"
#include "platform/linux/TemporaryFolder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <signal.h>

#include <filesystem>
#include <string>

namespace calorivo {
namespace {

namespace fs = std::filesystem;

class LinuxRelaunchTest : public testing::Test {
  protected:
    /// A program that writes down that it ran, in a folder with a hostile name.
    std::string hostileProgram() const {
        const std::string name = "a'; touch pwned; '$(touch pwned)";
        fs::create_directories(folder.path(name));
        std::string path = folder.write(name + "/run", "#!/bin/sh\necho ran >\"${0%/*}/ran\"\n");
        fs::permissions(path, fs::perms{0755});
        return path;
    }
    [[nodiscard]] bool hasRun(const std::string& program) const {
        return fs::exists(fs::path(program).parent_path() / "ran");
    }
    void expectNothingElseRan() const {
        EXPECT_FALSE(fs::exists("/pwned"));
        EXPECT_FALSE(fs::exists("pwned"));
        EXPECT_FALSE(fs::exists(folder.path("pwned")));
    }
    static std::optional<std::int32_t> endOf(const LinuxRelaunch& relaunch) {
        if (!relaunch.lastStarted()) return std::nullopt;
        const auto end = waitForChild(*relaunch.lastStarted());
        return end ? end->exitCode : std::nullopt;
    }
    void process(const std::string& number, const std::string& executable, const std::string& environ = {}) {
        fs::create_directories(folder.path("proc/" + number));
        if (!executable.empty()) fs::create_symlink(executable, folder.path("proc/" + number + "/exe"));
        folder.write("proc/" + number + "/environ", environ);
    }
    [[nodiscard]] LinuxRelaunch::Settings settings() const {
        return {folder.path("proc"), folder.path("unmount"), "0"};
    }
    const TemporaryFolder folder;
};

TEST_F(LinuxRelaunchTest, OpensTheNewCopyAfterThisProcessHasGone) {
    const std::string program = hostileProgram();
    const auto waitedFor = spawn("/bin/sleep", {"1000"}, Session::own);
    ASSERT_TRUE(waitedFor);
    LinuxRelaunch relaunch(ProgramBundle{program});
    relaunch.openAfterExit({*waitedFor, QuarantineRemoval::recursive, program, "rm -rf /never/run/this"});
    ASSERT_TRUE(relaunch.lastStarted());
    EXPECT_EQ(::kill(*relaunch.lastStarted(), 0), 0);
    EXPECT_FALSE(hasRun(program));
    EXPECT_EQ(::kill(*waitedFor, SIGKILL), 0);
    EXPECT_TRUE(waitForChild(*waitedFor));
    EXPECT_EQ(endOf(relaunch), 0);
    EXPECT_TRUE(hasRun(program));
    expectNothingElseRan();
}

TEST_F(LinuxRelaunchTest, DoesNotWaitForAParentThatNeverAsksForTheEndOfItsChild) {
    const std::string program = hostileProgram();
    const auto waitedFor = spawn("/bin/true", {}, Session::own);
    ASSERT_TRUE(waitedFor);
    LinuxRelaunch relaunch(ProgramBundle{program});
    relaunch.openAfterExit({*waitedFor, QuarantineRemoval::recursive, program, ""});
    EXPECT_EQ(endOf(relaunch), 0);
    EXPECT_TRUE(hasRun(program));
    EXPECT_TRUE(waitForChild(*waitedFor));
}

TEST_F(LinuxRelaunchTest, OpensAProgramThatIsAFolder) {
    const std::string program = hostileProgram();
    LinuxRelaunch relaunch(ProgramBundle{"/home/u/elsewhere", "run"});
    relaunch.open(fs::path(program).parent_path().string());
    EXPECT_EQ(endOf(relaunch), 0);
    EXPECT_TRUE(hasRun(program));
    expectNothingElseRan();
}

TEST_F(LinuxRelaunchTest, StartsNothingForAProgramThatIsMissing) {
    LinuxRelaunch relaunch(ProgramBundle{folder.path("x")});
    relaunch.open(folder.path("missing"));
    EXPECT_EQ(relaunch.lastStarted(), std::nullopt);
}

TEST_F(LinuxRelaunchTest, ListsRunningPrograms) {
    process("12", "/opt/Calorivo/bin/calorivo");
    process("13", "/opt/Old.AppImage (deleted)");
    process("14", "");
    process("15", "/tmp/.mount_1/usr/bin/calorivo",
            std::string("A=1\0APPDIR=/tmp/.mount_1\0APPIMAGE=/opt/Calorivo.AppImage\0", 56));
    process("16", "/usr/bin/bash", std::string("APPDIR=/tmp/.mount_1\0APPIMAGE=/opt/T.AppImage\0", 46));
    process("self", "/never");
    LinuxRelaunch relaunch(ProgramBundle{"/x"}, settings());
    EXPECT_THAT(relaunch.runningApplicationExecutablePaths(),
                testing::UnorderedElementsAre("/opt/Calorivo/bin/calorivo", "/opt/Old.AppImage",
                                              "/tmp/.mount_1/usr/bin/calorivo", "/opt/Calorivo.AppImage",
                                              "/usr/bin/bash"));
    EXPECT_TRUE(relaunch.isRunning({"/opt/Calorivo", "never run"}));
    EXPECT_TRUE(relaunch.isRunning({"/opt/Calorivo.AppImage", "never run"}));
    EXPECT_FALSE(relaunch.isRunning({"/opt/Calor", "never run"}));
}

TEST_F(LinuxRelaunchTest, ListsNothingWithoutProcesses) {
    LinuxRelaunch relaunch(ProgramBundle{"/x"}, settings());
    EXPECT_THAT(relaunch.runningApplicationExecutablePaths(), testing::IsEmpty());
}

TEST_F(LinuxRelaunchTest, GivesBackOnlyAReadOnlyDevice) {
    const std::string tool =
        folder.write("unmount", "#!/bin/sh\nprintf '%s|' \"$@\" >\"${0%/*}/unmounted\"\n");
    fs::permissions(tool, fs::perms{0755});
    fs::create_directories(folder.path("proc/self"));
    folder.write("proc/self/mountinfo",
                 "1 0 8:2 / / rw - ext4 /dev/sda2 rw\n"
                 "2 1 7:0 / /media/a';\\040b ro - iso9660 /dev/loop0 ro\n"
                 "3 1 8:3 / /media/stick rw - vfat /dev/sdb1 rw\n"
                 "4 1 0:9 / /media/fuse ro - fuse.x some ro\n");
    LinuxRelaunch relaunch(ProgramBundle{"/x"}, settings());
    for (const std::string path : {"/media/stick", "/media/fuse", "/home/u"})
        relaunch.detachLater({path, "touch /never"});
    EXPECT_EQ(relaunch.lastStarted(), std::nullopt);
    relaunch.detachLater({"/media/a'; b", "touch /never"});
    EXPECT_EQ(endOf(relaunch), 0);
    EXPECT_EQ(folder.read("unmounted"), "unmount|--no-user-interaction|--block-device|/dev/loop0|");
}

using LinuxRelaunchDeathTest = LinuxRelaunchTest;

TEST_F(LinuxRelaunchDeathTest, EndsTheProcess) {
    LinuxRelaunch relaunch(ProgramBundle{"/x"});
    EXPECT_EQ(relaunch.processIdentifier(), ::getpid());
    EXPECT_EXIT(relaunch.exit(7), testing::ExitedWithCode(7), "");
}

}  // namespace
}  // namespace calorivo
