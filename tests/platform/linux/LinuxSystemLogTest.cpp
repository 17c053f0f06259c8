#include "platform/linux/LinuxSystemLog.h"

#include "platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace calorivo {
namespace {

/// A log daemon that answers nobody.
class LogSocket {
  public:
    explicit LogSocket(const std::string& path)
        : descriptor_(socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK, 0)) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::memcpy(address.sun_path, path.data(), path.size());
        const auto* const where = static_cast<const sockaddr*>(static_cast<const void*>(&address));
        if (bind(descriptor_.get(), where, sizeof address) != 0) throw std::runtime_error("no socket");
    }
    /// The next line without its time and process, which no test can know; empty when there is none.
    [[nodiscard]] std::string takeLine() const {
        std::array<char, 8192> buffer{};
        const ssize_t length = recv(descriptor_.get(), buffer.data(), buffer.size(), 0);
        if (length <= 0) return {};
        std::string line(buffer.data(), static_cast<std::size_t>(length));
        constexpr std::size_t afterPriority = 4;
        constexpr std::size_t timeLength = 16;
        line.erase(afterPriority, timeLength);
        const std::string process = std::to_string(getpid());
        if (const auto at = line.find(process); at != std::string::npos)
            line.replace(at, process.size(), "PID");
        return line;
    }

  private:
    FileDescriptor descriptor_;
};

/// A standard error stream that is read by nobody but the test.
class Stream {
  public:
    Stream() {
        std::array<int, 2> ends{};
        if (pipe2(ends.data(), O_NONBLOCK | O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
        output_ = FileDescriptor(ends[0]);
        input = FileDescriptor(ends[1]);
    }
    [[nodiscard]] std::string take() const {
        std::string text(1 << 20, '\0');
        const ssize_t length = read(output_.get(), text.data(), text.size());
        text.resize(length > 0 ? static_cast<std::size_t>(length) : 0);
        return text;
    }
    void closeReader() { output_.reset(); }

    FileDescriptor input;

  private:
    FileDescriptor output_;
};

TEST(LinuxSystemLog, SendsALineToTheLogSocketAndNothingElse) {
    const TemporaryFolder folder;
    const LogSocket socket(folder.path("log"));
    const Stream error;
    LinuxSystemLog log({.socket = folder.path("log"), .standardError = error.input.get()});
    log.log("the \"%s\" fan");
    EXPECT_EQ(socket.takeLine(), "<14>calorivo[PID]: the \"%s\" fan");
    EXPECT_EQ(error.take(), "");
}

TEST(LinuxSystemLog, PrintsWhereTheSystemHasNoLog) {
    const Stream error;
    LinuxSystemLog log({.socket = "/nowhere/log", .standardError = error.input.get()});
    log.log("first\nline");
    log.log("second");
    EXPECT_EQ(error.take(), "calorivo: first line\ncalorivo: second\n");
}

TEST(LinuxSystemLog, PrintsOnceWhereTheStreamGoesIntoTheJournalAlready) {
    const TemporaryFolder folder;
    const LogSocket socket(folder.path("log"));
    const Stream error;
    struct stat status {};
    ASSERT_EQ(fstat(error.input.get(), &status), 0);
    LinuxSystemLog log(
        {.socket = folder.path("log"),
         .standardError = error.input.get(),
         .journalStream = std::to_string(status.st_dev) + ':' + std::to_string(status.st_ino)});
    log.log("warm");
    EXPECT_EQ(error.take(), "<6>warm\n");
    EXPECT_EQ(socket.takeLine(), "");
}

TEST(LinuxSystemLog, DoesNotTakeAnotherStreamForTheJournals) {
    const TemporaryFolder folder;
    const LogSocket socket(folder.path("log"));
    const Stream error;
    LinuxSystemLog log(
        {.socket = folder.path("log"), .standardError = error.input.get(), .journalStream = "1:2"});
    log.log("warm");
    EXPECT_EQ(error.take(), "");
    EXPECT_EQ(socket.takeLine(), "<14>calorivo[PID]: warm");
}

TEST(LinuxSystemLog, FindsALogThatWasStartedAnew) {
    const TemporaryFolder folder;
    const Stream error;
    LinuxSystemLog log({.socket = folder.path("log"), .standardError = error.input.get()});
    {
        const LogSocket first(folder.path("log"));
        log.log("one");
        EXPECT_EQ(first.takeLine(), "<14>calorivo[PID]: one");
    }
    std::filesystem::remove(folder.path("log"));
    const LogSocket second(folder.path("log"));
    log.log("two");
    EXPECT_EQ(second.takeLine(), "<14>calorivo[PID]: two");
    EXPECT_EQ(error.take(), "");
}

TEST(LinuxSystemLog, NeverBlocks) {
    const TemporaryFolder folder;
    const LogSocket deaf(folder.path("log"));
    const Stream unread;
    LinuxSystemLog log({.socket = folder.path("log"), .standardError = unread.input.get()});
    // Far more than socket and pipe hold; the descriptors that the log opened itself must not wait either.
    for (int i = 0; i < 2000; ++i) log.log(std::string(1000, 'x'));
    EXPECT_EQ(deaf.takeLine(), "<14>calorivo[PID]: " + std::string(1000, 'x'));
}

TEST(LinuxSystemLog, OutlivesTheReaderOfItsStream) {
    Stream error;
    LinuxSystemLog log({.socket = "", .standardError = error.input.get()});
    error.closeReader();
    log.log("to nobody");  // else a signal ends the test
}

TEST(LinuxSystemLog, WritesCleanLines) {
    struct Row {
        std::string text;
        std::string line;
    };
    const Row rows[] = {
        {"", ""},
        {"50 °C", "50 °C"},
        {"a\nb\r\tc\x1B[31m\x7F", "a b  c [31m "},
        {std::string("a\0b", 3), "a b"},
        {"a\xC2\x85z\u2028", "a z "},
        {"a\xFFz", "a\uFFFDz"},
        {"%s%n", "%s%n"},
        {std::string(5000, 'x'), std::string(2000, 'x')},
        {std::string(1999, 'x') + "°", std::string(1999, 'x')},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(systemLogLine(row.text), row.line);
    }
}

}  // namespace
}  // namespace calorivo
