#include "platform/linux/FileOperationsCopy.h"

#include "platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <filesystem>

namespace calorivo {
namespace {

namespace fs = std::filesystem;

mode_t modeOf(const std::string& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
}

TEST(FileOperationsCopy, CopiesAFolderWithLinksModesAndTimes) {
    const TemporaryFolder folder;
    fs::create_directories(folder.path("a/bin"));
    fs::create_directories(folder.path("a/empty"));
    folder.write("a/bin/run", std::string(200'000, 'x'));
    fs::permissions(folder.path("a/bin/run"), fs::perms{04755});
    fs::permissions(folder.path("a/empty"), fs::perms{0500});
    fs::create_symlink("bin/run", folder.path("a/link"));
    fs::create_symlink("/nowhere", folder.path("a/dangling"));
    const fs::file_time_type time = fs::last_write_time(folder.path("a/bin/run")) - std::chrono::hours(50);
    fs::last_write_time(folder.path("a/bin/run"), time);

    EXPECT_EQ(copyTree(folder.path("a"), folder.path("b")), 0);
    EXPECT_EQ(folder.read("b/bin/run"), std::string(200'000, 'x'));
    // A program that runs with its owner's rights does not do so as a copy.
    EXPECT_EQ(modeOf(folder.path("b/bin/run")), 0755U);
    EXPECT_EQ(modeOf(folder.path("b/empty")), 0500U);
    EXPECT_EQ(fs::last_write_time(folder.path("b/bin/run")), time);
    EXPECT_EQ(fs::read_symlink(folder.path("b/link")), "bin/run");
    EXPECT_EQ(fs::read_symlink(folder.path("b/dangling")), "/nowhere");
    EXPECT_EQ(treeSize(folder.path("b")), 200'000U);
    EXPECT_EQ(treeSize(folder.path("b/bin/run")), 200'000U);
    EXPECT_EQ(treeSize(folder.path("missing")), 0U);
}

TEST(FileOperationsCopy, CopiesALinkAsALink) {
    const TemporaryFolder folder;
    fs::create_symlink("/nowhere", folder.path("link"));
    EXPECT_EQ(copyTree(folder.path("link"), folder.path("copy")), 0);
    EXPECT_EQ(fs::read_symlink(folder.path("copy")), "/nowhere");
}

TEST(FileOperationsCopy, FailsWithoutLeavingAnything) {
    const TemporaryFolder folder;
    fs::create_directories(folder.path("withFifo/before"));
    folder.write("withFifo/file", "x");
    ASSERT_EQ(::mkfifo(folder.path("withFifo/fifo").c_str(), 0600), 0);
    folder.write("file", "x");
    folder.write("taken", "old");
    fs::create_symlink("/nowhere", folder.path("dangling"));
    fs::create_directories(folder.path("a/b"));
    fs::create_symlink(folder.path("a"), folder.path("toA"));
    struct Row {
        std::string source;
        std::string destination;
        int error;
    };
    const Row rows[] = {{"missing", "copy", ENOENT},    {"file", "nowhere/copy", ENOENT},
                        {"withFifo", "copy", ENOTSUP},  {"withFifo/fifo", "copy", ENOTSUP},
                        {"file", "file/copy", ENOTDIR}, {"a", "a/copy", EINVAL},
                        {"a", "a/b/copy", EINVAL},      {"a", "toA/copy", EINVAL}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.source + " to " + row.destination);
        EXPECT_EQ(copyTree(folder.path(row.source), folder.path(row.destination)), row.error);
        EXPECT_FALSE(fs::exists(fs::symlink_status(folder.path(row.destination))));
    }
    EXPECT_EQ(copyTree(folder.path("file"), folder.path("taken")), EEXIST);
    EXPECT_EQ(folder.read("taken"), "old");
    EXPECT_EQ(copyTree(folder.path("file"), folder.path("dangling")), EEXIST);
    EXPECT_TRUE(fs::is_symlink(folder.path("dangling")));
}

// A limit on the size of files stands for a disk without room.
TEST(FileOperationsCopy, LeavesNothingOfAFileThatDidNotFit) {
    const TemporaryFolder folder;
    fs::create_directories(folder.path("a"));
    folder.write("a/large", std::string(100'000, 'x'));
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    const rlimit small{50'000, before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const int error = copyTree(folder.path("a"), folder.path("b"));
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(error, EFBIG);
    EXPECT_FALSE(fs::exists(folder.path("b")));
}

TEST(FileOperationsCopy, RemovesLinksButNotWhatTheyLeadTo) {
    const TemporaryFolder folder;
    fs::create_directories(folder.path("kept"));
    folder.write("kept/file", "x");
    fs::create_directories(folder.path("a/b"));
    fs::create_directory_symlink(folder.path("kept"), folder.path("a/b/link"));
    EXPECT_EQ(removeTree(folder.path("a")), 0);
    EXPECT_FALSE(fs::exists(folder.path("a")));
    EXPECT_EQ(folder.read("kept/file"), "x");
    EXPECT_EQ(removeTree(folder.path("a")), ENOENT);
}

}  // namespace
}  // namespace calorivo
