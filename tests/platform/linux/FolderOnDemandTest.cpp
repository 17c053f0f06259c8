#include "platform/linux/FolderOnDemand.h"

#include "platform/linux/LinuxFileOperations.h"
#include "platform/linux/TemporaryFolder.h"
#include "platform/linux/Trash.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace calorivo {
namespace {

namespace fs = std::filesystem;

class FolderOnDemandTest : public testing::Test {
  protected:
    const TemporaryFolder root;
    const std::string folder = root.path("Applications");
    const LinuxFileLinks links{};
    const Trash trash{Trash::system(root.path("data"))};
    LinuxFileOperations files{trash};
    FolderOnDemand onDemand{folder, links, files};
};

TEST_F(FolderOnDemandTest, CountsAsThereWhileNothingIs) {
    EXPECT_EQ(onDemand.lstat(folder), FileType::directory);
    EXPECT_TRUE(onDemand.isWritableFileAtPath(folder));
    EXPECT_FALSE(onDemand.isDirectoryAtPath(folder));
    EXPECT_EQ(onDemand.lstat(root.path("Other")), std::nullopt);
    EXPECT_FALSE(onDemand.isWritableFileAtPath(root.path("Other")));
    EXPECT_FALSE(fs::exists(folder));
}

TEST_F(FolderOnDemandTest, IsMadeForWhatIsCopiedIntoIt) {
    const std::string program = root.write("program", "program");
    EXPECT_EQ(onDemand.copyItemAtPathToPath(program, folder + "/copy"), std::nullopt);
    EXPECT_EQ(root.read("Applications/copy"), "program");
}

TEST_F(FolderOnDemandTest, GoesAgainWhenTheCopyFails) {
    EXPECT_NE(onDemand.copyItemAtPathToPath(root.path("missing"), folder + "/copy"), std::nullopt);
    EXPECT_FALSE(fs::exists(folder));
}

TEST_F(FolderOnDemandTest, LeavesAFolderThatWasThere) {
    fs::create_directory(folder);
    EXPECT_NE(onDemand.copyItemAtPathToPath(root.path("missing"), folder + "/copy"), std::nullopt);
    EXPECT_TRUE(fs::is_directory(folder));
    EXPECT_TRUE(onDemand.isWritableFileAtPath(folder));
}

TEST_F(FolderOnDemandTest, IsAFileWhereOneTookItsName) {
    root.write("Applications", "a file");
    EXPECT_EQ(onDemand.lstat(folder), FileType::other);
}

TEST_F(FolderOnDemandTest, IsNotMadeInAFolderThatIsMissingItself) {
    const std::string deep = root.path("nowhere/Applications");
    FolderOnDemand nowhere(deep, links, files);
    EXPECT_EQ(nowhere.lstat(deep), std::nullopt);
    EXPECT_FALSE(nowhere.isWritableFileAtPath(deep));
    EXPECT_NE(nowhere.copyItemAtPathToPath(root.write("program", ""), deep + "/copy"), std::nullopt);
    EXPECT_FALSE(fs::exists(root.path("nowhere")));
}

TEST_F(FolderOnDemandTest, MayBeNone) {
    FolderOnDemand none("", links, files);
    EXPECT_EQ(none.lstat(folder), std::nullopt);
    EXPECT_EQ(none.lstat(""), std::nullopt);
}

}  // namespace
}  // namespace calorivo
