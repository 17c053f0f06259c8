// The whole move with real files, a script in the place of pkexec, and everything started for real.

#include "app/MoveToApplicationsFolder.h"

#include "app/MoveFixture.h"
#include "platform/linux/LinuxFileOperations.h"
#include "platform/linux/LinuxRelaunch.h"
#include "platform/linux/LinuxSearchPath.h"
#include "platform/linux/Pkexec.h"
#include "platform/linux/TemporaryFolder.h"
#include "platform/linux/Trash.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace calorivo {
namespace {

namespace fs = std::filesystem;
using test::Calls;
using test::MoveFixture;

constexpr const char* hostileName = "a'; touch pwned; '$(touch pwned).AppImage";

class MoveOnLinuxTest : public testing::Test {
  protected:
    MoveOnLinuxTest() {
        fs::create_directories(root + "/downloads");
        fs::create_directories(root + "/programs");
        folder.write(std::string("downloads/") + hostileName, "program");
        const std::string tool = folder.write("pkexec", "#!/bin/sh\nexec \"$@\"\n");
        fs::permissions(tool, fs::perms{0755});
        fixture.searchPath.folders[{SearchPathDirectory::applications, SearchPathDomainMask::local}] = {
            root + "/programs"};
        configuration.bundlePath = root + "/downloads/" + hostileName;
        configuration.appKitVersion = 1038;
        configuration.bundleEndings = {".AppImage"};
    }

    /// Everything real but the questions, the store and the restart, which is written down.
    Calls offer(FileOperations& operations) {
        MoveParts parts{
            fixture.userDefaults, fixture.log, fixture.strings, fixture.question, fixture.alertPanel,
            fixture.searchPath,   links,       operations,      pkexec,           fixture.relaunch,
            [] { return true; },  [] {}};
        MoveToApplicationsFolder(parts, configuration).offerToMove();
        return fixture.calls;
    }
    void expectMoved() {
        EXPECT_EQ(folder.read(std::string("programs/") + hostileName), "program");
        EXPECT_FALSE(fs::exists(configuration.bundlePath));
        EXPECT_EQ(folder.read(std::string("data/Trash/files/") + hostileName), "program");
        EXPECT_FALSE(fs::exists("pwned"));
        EXPECT_FALSE(fs::exists(root + "/programs/pwned"));
        EXPECT_EQ(fixture.calls.back(), "exit 0");
    }

    const TemporaryFolder folder;
    const std::string root = fs::canonical(folder.path()).string();
    MoveFixture fixture;
    MoveConfiguration configuration;
    const LinuxFileLinks links;
    const Trash trash{Trash::system(root + "/data")};
    LinuxFileOperations files{trash};
    Pkexec pkexec{{root + "/pkexec"}};
};

TEST_F(MoveOnLinuxTest, MovesAProgramWithAHostileName) {
    offer(files);
    expectMoved();
}

/// Says of the programs' folder that it cannot be written.
class Protected final : public FileOperations {
  public:
    Protected(FileOperations& files, std::string folder) : files_(files), folder_(std::move(folder)) {}
    [[nodiscard]] bool fileExistsAtPath(const std::string& path) const override {
        return files_.fileExistsAtPath(path);
    }
    [[nodiscard]] bool isDirectoryAtPath(const std::string& path) const override {
        return files_.isDirectoryAtPath(path);
    }
    [[nodiscard]] bool isWritableFileAtPath(const std::string& path) const override {
        return path != folder_ && files_.isWritableFileAtPath(path);
    }
    [[nodiscard]] std::vector<std::string> contentsOfDirectoryAtPath(const std::string& path) const override {
        return files_.contentsOfDirectoryAtPath(path);
    }
    std::optional<Error> createDirectoryAtPath(const std::string& path) override {
        return files_.createDirectoryAtPath(path);
    }
    std::optional<Error> copyItemAtPathToPath(const std::string& source,
                                              const std::string& destination) override {
        return files_.copyItemAtPathToPath(source, destination);
    }
    bool recycle(const std::string& folder, const std::string& name) override {
        return files_.recycle(folder, name);
    }

  private:
    FileOperations& files_;
    const std::string folder_;
};

TEST_F(MoveOnLinuxTest, MovesAProgramWithAHostileNameByPkexec) {
    folder.write(std::string("programs/") + hostileName, "an older one");
    Protected protectedFiles(files, root + "/programs");
    offer(protectedFiles);
    expectMoved();
}

TEST_F(MoveOnLinuxTest, LeavesEverythingWhereItWasWhenTheDialogIsDismissed) {
    folder.write("pkexec", "#!/bin/sh\nexit 126\n");
    folder.write(std::string("programs/") + hostileName, "an older one");
    Protected protectedFiles(files, root + "/programs");
    const Calls calls = offer(protectedFiles);
    EXPECT_EQ(calls.back(), "log INFO -- Not moving because user canceled authorization");
    EXPECT_EQ(folder.read(std::string("programs/") + hostileName), "an older one");
    EXPECT_EQ(folder.read(std::string("downloads/") + hostileName), "program");
}

}  // namespace
}  // namespace calorivo
