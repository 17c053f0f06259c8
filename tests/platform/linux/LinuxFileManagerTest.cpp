#include "platform/linux/LinuxFileManager.h"

#include "platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <string>

namespace calorivo {
namespace {

constexpr std::size_t limit = 100'000;

FileContents readFile(const std::string& path) { return LinuxFileManager().contentsAtPath(path, limit); }

TEST(LinuxFileManager, ReadsAWholeFile) {
    const TemporaryFolder folder;
    for (const std::size_t size : {std::size_t{0}, std::size_t{1}, std::size_t{65536}, limit}) {
        SCOPED_TRACE(size);
        const std::string text(size, 'x');
        const FileContents contents = readFile(folder.write("file", text));
        EXPECT_TRUE(contents.isRead()) << contents.problem;
        EXPECT_EQ(contents.text, text);
    }
}

TEST(LinuxFileManager, ReadsAFileThatDoesNotTellItsSize) {
    const FileContents contents = readFile("/proc/self/status");
    EXPECT_TRUE(contents.isRead()) << contents.problem;
    EXPECT_NE(contents.text.find("Pid:"), std::string::npos);
}

TEST(LinuxFileManager, SaysWhyAFileCannotBeRead) {
    const TemporaryFolder folder;
    ASSERT_EQ(mkfifo(folder.path("fifo").c_str(), 0600), 0);
    std::filesystem::create_symlink("loop", folder.path("loop"));
    const std::string huge = folder.write("huge", "");
    std::filesystem::resize_file(huge, std::uintmax_t{1} << 30);
    struct Row {
        std::string path;
        std::string problem;
    };
    const Row rows[] = {
        {folder.path("absent"), "No such file or directory"},
        {folder.path(), "Is a directory"},
        {folder.path("fifo"), "Not a regular file"},
        {"/dev/null", "Not a regular file"},
        {folder.path("loop"), "Too many levels of symbolic links"},
        {huge, "Larger than 100000 bytes, the most that is read"},
        {folder.write("long", std::string(limit + 1, 'x')),
         "Larger than 100000 bytes, the most that is read"},
        {"", "No such file or directory"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.path);
        const FileContents contents = readFile(row.path);
        EXPECT_EQ(contents.problem, row.problem);
        EXPECT_EQ(contents.text, "");
    }
}

}  // namespace
}  // namespace calorivo
