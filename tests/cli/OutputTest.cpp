#include "cli/Output.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <string>
#include <thread>

namespace calorivo {
namespace {

struct Pipe {
    Pipe() { EXPECT_EQ(pipe(ends.data()), 0); }
    ~Pipe() {
        closeEnd(0);
        closeEnd(1);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    void closeEnd(std::size_t end) {
        if (ends[end] >= 0) close(ends[end]);
        ends[end] = -1;
    }
    std::array<int, 2> ends{-1, -1};
};

TEST(Output, WritesEverythingAlsoToAPipeThatTakesItBitByBit) {
    Pipe pipe;
    ASSERT_EQ(fcntl(pipe.ends[1], F_SETFL, O_NONBLOCK), 0);
    const std::string text(1 << 20, 'x');
    std::string received;
    std::thread reader([&] {
        std::array<char, 4096> part{};
        for (ssize_t got = 0; (got = read(pipe.ends[0], part.data(), part.size())) > 0;)
            received.append(part.data(), static_cast<std::size_t>(got));
    });
    Output output(pipe.ends[1]);
    EXPECT_TRUE(output.write(text).flush());
    EXPECT_EQ(output.text(), "");
    pipe.closeEnd(1);
    reader.join();
    EXPECT_EQ(received, text);
}

TEST(Output, AReaderThatWentAwayIsNoError) {
    const auto before = std::signal(SIGPIPE, SIG_IGN);
    Pipe pipe;
    pipe.closeEnd(0);
    Output output(pipe.ends[1]);
    EXPECT_TRUE(output.write("first").flush());
    EXPECT_TRUE(output.write("second").flush());
    EXPECT_EQ(output.problem(), "");
    std::signal(SIGPIPE, before);
}

TEST(Output, SaysWhyItCannotWrite) {
    const int full = open("/dev/full", O_WRONLY | O_CLOEXEC);
    ASSERT_GE(full, 0);
    Output output(full);
    EXPECT_FALSE(output.write("text").flush());
    EXPECT_EQ(output.problem(), "No space left on device");
    close(full);
}

TEST(Output, MessagesAreOneCleanLineEach) {
    Output errors;
    complain(errors, "file\n\033[2J: reason");
    EXPECT_EQ(errors.text(), "calorivo-cli: file [2J: reason\n");
}

TEST(Output, ShowsTwentyProblemsAndCountsTheOthers) {
    for (const int count : {0, 20, 21}) {
        Output errors;
        ProblemList problems(errors);
        std::string expected;
        for (int i = 0; i < count; ++i) {
            problems.add("wrong");
            if (i < 20) expected += "calorivo-cli: wrong\n";
        }
        problems.close();
        if (count == 21) expected += "calorivo-cli: and 1 more like these\n";
        EXPECT_EQ(errors.text(), expected);
    }
}

}  // namespace
}  // namespace calorivo
