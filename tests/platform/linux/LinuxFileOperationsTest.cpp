#include "platform/linux/LinuxFileOperations.h"

#include "platform/linux/TemporaryFolder.h"
#include "platform/linux/Trash.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

namespace calorivo {
namespace {

namespace fs = std::filesystem;

TEST(LinuxFileLinks, TellsWhatAnEntryIsAndWhereItLeads) {
    const TemporaryFolder folder;
    folder.write("file", "x");
    fs::create_symlink("file", folder.path("link"));
    const LinuxFileLinks links;
    EXPECT_EQ(links.lstat(folder.path()), FileType::directory);
    EXPECT_EQ(links.lstat(folder.path("file")), FileType::other);
    EXPECT_EQ(links.lstat(folder.path("link")), FileType::symbolicLink);
    EXPECT_EQ(links.lstat(folder.path("missing")), std::nullopt);
    EXPECT_EQ(links.destinationOfSymbolicLink(folder.path("link")), "file");
    EXPECT_EQ(links.destinationOfSymbolicLink(folder.path("file")), std::nullopt);
    EXPECT_EQ(links.destinationOfSymbolicLink(folder.path("missing")), std::nullopt);
    EXPECT_EQ(links.resolveAliasFile(folder.path("file")), std::nullopt);
}

class LinuxFileOperationsTest : public testing::Test {
  protected:
    const TemporaryFolder folder;
    const Trash trash{Trash::system(folder.path("data"))};
    LinuxFileOperations files{trash};
};

TEST_F(LinuxFileOperationsTest, LooksAtFilesAndFolders) {
    folder.write("file", "x");
    fs::create_symlink(folder.path("missing"), folder.path("dangling"));
    fs::create_directory_symlink(folder.path(), folder.path("loop"));
    EXPECT_TRUE(files.fileExistsAtPath(folder.path("file")));
    EXPECT_FALSE(files.fileExistsAtPath(folder.path("dangling")));
    EXPECT_TRUE(files.isDirectoryAtPath(folder.path("loop")));
    EXPECT_FALSE(files.isDirectoryAtPath(folder.path("file")));
    EXPECT_TRUE(files.isWritableFileAtPath(folder.path("file")));
    EXPECT_FALSE(files.isWritableFileAtPath(folder.path("missing")));
    EXPECT_THAT(files.contentsOfDirectoryAtPath(folder.path()),
                testing::UnorderedElementsAre("file", "dangling", "loop"));
    EXPECT_THAT(files.contentsOfDirectoryAtPath(folder.path("file")), testing::IsEmpty());
}

TEST_F(LinuxFileOperationsTest, CreatesFoldersOnTheWay) {
    EXPECT_EQ(files.createDirectoryAtPath(folder.path("a/b/c")), std::nullopt);
    EXPECT_EQ(files.createDirectoryAtPath(folder.path("a/b/c")), std::nullopt);
    EXPECT_TRUE(fs::is_directory(folder.path("a/b/c")));
    folder.write("file", "x");
    const auto error = files.createDirectoryAtPath(folder.path("file/c"));
    ASSERT_TRUE(error);
    EXPECT_EQ(error->description(), "Error Domain=NSPOSIXErrorDomain Code=20 \"Not a directory\"");
    EXPECT_TRUE(files.createDirectoryAtPath(folder.path("file")));
}

TEST_F(LinuxFileOperationsTest, CopiesAndRecycles) {
    folder.write("file", "x");
    EXPECT_EQ(files.copyItemAtPathToPath(folder.path("file"), folder.path("copy")), std::nullopt);
    const auto error = files.copyItemAtPathToPath(folder.path("file"), folder.path("copy"));
    ASSERT_TRUE(error);
    EXPECT_EQ(error->code, EEXIST);
    EXPECT_TRUE(files.recycle(folder.path(), "copy"));
    EXPECT_FALSE(files.recycle(folder.path(), "copy"));
    EXPECT_EQ(folder.read("data/Trash/files/copy"), "x");
}

}  // namespace
}  // namespace calorivo
