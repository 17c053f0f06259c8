#include "platform/linux/LinuxFileHandle.h"

#include "output/LogFile.h"
#include "platform/FileURL.h"
#include "platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <numeric>
#include <random>
#include <sstream>
#include <string>
#include <vector>

namespace calorivo {
namespace {

std::string textOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

struct LinuxFileHandleTest : testing::Test {
    [[nodiscard]] FileProblem append(const std::string& line) {
        OpenedFile file = files.fileHandleForWritingToURL(fileURLWithPath(path));
        return file.handle != nullptr ? appendLine(*file.handle, line) : file.problem;
    }
    TemporaryFolder folder;
    const std::string path = folder.path() + "/Calorivo Log 50%.csv";
    LinuxFileHandles files;
};

TEST_F(LinuxFileHandleTest, MakesAppendsAndEmptiesAFile) {
    EXPECT_FALSE(files.fileExistsAtPath(path));
    EXPECT_EQ(files.createFileAtPath(path), "");
    EXPECT_TRUE(files.fileExistsAtPath(path));
    EXPECT_EQ(append("one"), "");
    EXPECT_EQ(append("two"), "");
    EXPECT_EQ(textOf(path), "one\ntwo\n");
    EXPECT_EQ(files.createFileAtPath(path), "");
    EXPECT_EQ(textOf(path), "");
}

TEST_F(LinuxFileHandleTest, MakesNoFileWhenItOpensOne) {
    EXPECT_EQ(append("lost"), "No such file or directory");
    EXPECT_FALSE(files.fileExistsAtPath(path));
    EXPECT_EQ(files.fileHandleForWritingToURL("").problem, "No such file or directory");
    EXPECT_EQ(files.fileHandleForWritingToURL("https:///a").problem, "No such file or directory");
}

TEST_F(LinuxFileHandleTest, FollowsNoLink) {
    const std::string target = folder.path() + "/precious";
    std::ofstream(target) << "precious";
    std::filesystem::create_symlink(target, path);
    EXPECT_EQ(append("x"), "Is a symbolic link");
    EXPECT_EQ(files.createFileAtPath(path), "Is a symbolic link");
    EXPECT_EQ(textOf(target), "precious");
    std::filesystem::remove(target);
    EXPECT_EQ(files.createFileAtPath(path), "Is a symbolic link");
    EXPECT_FALSE(files.fileExistsAtPath(target));
    EXPECT_TRUE(files.fileExistsAtPath(path)) << "a link to nowhere is something too";
}

TEST_F(LinuxFileHandleTest, FollowsALinkToTheFolder) {
    const std::string link = folder.path() + "/Documents";
    std::filesystem::create_directory_symlink(folder.path(), link);
    EXPECT_EQ(files.createFileAtPath(link + "/log"), "");
    EXPECT_TRUE(files.fileExistsAtPath(folder.path() + "/log"));
}

TEST_F(LinuxFileHandleTest, WaitsForNoFifo) {
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    EXPECT_EQ(append("x"), "Not a regular file");
    EXPECT_EQ(files.createFileAtPath(path), "Not a regular file");
}

TEST_F(LinuxFileHandleTest, TouchesNoDeviceAndNoFolder) {
    EXPECT_EQ(files.fileHandleForWritingToURL("file:///dev/null").problem, "Not a regular file");
    EXPECT_EQ(files.createFileAtPath("/dev/null"), "Not a regular file");
    EXPECT_EQ(files.createFileAtPath(folder.path()), "Is a directory");
}

TEST_F(LinuxFileHandleTest, TouchesNobodyElsesFile) {
    ASSERT_EQ(files.createFileAtPath(path), "");
    std::ofstream(path) << "theirs";
    constexpr uid_t somebody = 12345;
    if (chown(path.c_str(), somebody, static_cast<gid_t>(-1)) != 0)
        GTEST_SKIP() << "only root can give a file away";
    EXPECT_EQ(append("x"), "The file belongs to another user");
    EXPECT_EQ(files.createFileAtPath(path), "The file belongs to another user");
    EXPECT_EQ(textOf(path), "theirs");
}

TEST_F(LinuxFileHandleTest, WritesAtTheEndWhereverItHasMovedTo) {
    ASSERT_EQ(files.createFileAtPath(path), "");
    ASSERT_EQ(append("a long first line"), "");
    OpenedFile file = files.fileHandleForWritingToURL(fileURLWithPath(path));
    EXPECT_EQ(file.handle->seekToEndOfFile(), "");
    ASSERT_EQ(files.createFileAtPath(path), "");
    EXPECT_EQ(file.handle->writeData("x\n"), "");
    EXPECT_EQ(textOf(path), "x\n") << "and leaves no hole";
}

TEST_F(LinuxFileHandleTest, EndsALineThatWasCutOff) {
    std::ofstream(path) << "one\ntw";
    EXPECT_EQ(append("three"), "");
    EXPECT_EQ(textOf(path), "one\ntw\nthree\n");
}

TEST_F(LinuxFileHandleTest, AppendsToAFileThatCannotBeRead) {
    std::ofstream(path) << "one\n";
    std::filesystem::permissions(path, std::filesystem::perms::owner_write);
    EXPECT_EQ(append("two"), "");
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    EXPECT_EQ(textOf(path), "one\ntwo\n");
}

TEST_F(LinuxFileHandleTest, TakesBackWhatAFullDiskTookOfALine) {
    ASSERT_EQ(files.createFileAtPath(path), "");
    ASSERT_EQ(append("whole"), "");
    // A limit of the size of files stands for the end of the disk: the write is cut off there.
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit full{10, before.rlim_max};
    struct sigaction ignoring {};
    struct sigaction former {};
    ignoring.sa_handler = SIG_IGN;
    sigaction(SIGXFSZ, &ignoring, &former);
    setrlimit(RLIMIT_FSIZE, &full);
    const FileProblem problem = append("cut off");
    setrlimit(RLIMIT_FSIZE, &before);
    sigaction(SIGXFSZ, &former, nullptr);
    EXPECT_EQ(problem, "File too large");
    EXPECT_EQ(textOf(path), "whole\n");
    EXPECT_EQ(append("next"), "");
    EXPECT_EQ(textOf(path), "whole\nnext\n");
}

/// The line of this number in this run: its length tells whether it is whole. Some are longer than a page.
std::string lineOf(std::size_t run, std::uint32_t number) {
    std::string line = std::to_string(run) + ',' + std::to_string(number) + ',';
    const std::size_t length = 20 + (number * 2654435761U) % (number % 16 == 0 ? 9000 : 200);
    line.append(length, '.');
    return line + std::to_string(length);
}

/// What is known of a run from outside: how many of its lines were on the disk when it was killed.
using Counter = std::atomic<std::uint32_t>;
static_assert(Counter::is_always_lock_free);

TEST_F(LinuxFileHandleTest, LosesNothingButTheLineThatIsBeingWrittenWhenItIsKilled) {
    constexpr std::size_t runs = 1000;
    ASSERT_EQ(files.createFileAtPath(path), "");
    void* const memory =
        mmap(nullptr, runs * sizeof(Counter), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(memory, MAP_FAILED);
    auto* const written = static_cast<Counter*>(memory);
    std::minstd_rand random(1);
    std::uniform_int_distribution<useconds_t> lifetime(0, 3000);
    for (std::size_t killed = 0; killed < runs; ++killed) {
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) {
            for (std::uint32_t number = 0; append(lineOf(killed, number)).empty(); ++number)
                ++written[killed];
            _exit(1);
        }
        usleep(lifetime(random));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status)) << "a line could not be written";
    }
    std::vector<std::uint32_t> seen(runs);
    std::istringstream text(textOf(path));
    std::size_t run = 0;
    int cutOff = 0;
    for (std::string line; std::getline(text, line);) {
        // The runs come one after another; what is no line of this one is the first of a later one.
        while (run < seen.size() && !lineOf(run, seen[run]).starts_with(line)) ++run;
        ASSERT_LT(run, seen.size()) << line;
        if (line == lineOf(run, seen[run])) {
            ++seen[run];
        } else {
            ++cutOff;
            ++run;  // that was its last
        }
    }
    RecordProperty("linesCutOff", cutOff);
    EXPECT_GT(std::accumulate(seen.begin(), seen.end(), 0U), runs / 10) << "hardly anything was written";
    for (std::size_t i = 0; i < seen.size(); ++i) EXPECT_GE(seen[i], written[i].load()) << i;
    munmap(memory, runs * sizeof(Counter));
}

}  // namespace
}  // namespace calorivo
