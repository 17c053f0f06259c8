#include "platform/linux/DriveReaderPool.h"

#include "DriveTrees.h"
#include "platform/linux/DriveBlocks.h"
#include "support/DriveReaderStart.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <filesystem>
#include <thread>

namespace calorivo {
namespace {

using std::chrono::hours;
using std::chrono::milliseconds;
using test::FakeTree;
using State = DriveAnswer::State;

const test::DriveReaderStart readerStart;

// A second kind of reader, for drives that misbehave: ask "hang" and it never answers, "gate" and it answers
// once a file of that name is in the folder, telling how often it was asked as an error, "die" and it ends,
// "number" and it tells its process as an error.
constexpr const char* oddReader = "--odd-drive-reader";

std::unique_ptr<AtaDevice> openOddDrive(const std::string& path, int& error) {
    const std::string name = path.substr(path.rfind('/') + 1);
    while (name == "hang") pause();
    while (name == "gate" && !std::filesystem::exists(path)) std::this_thread::sleep_for(milliseconds(1));
    if (name == "die") std::_Exit(3);
    static int answered = 0;
    error = name == "number" ? getpid() : name == "gate" ? ++answered : EACCES;
    return nullptr;
}

struct OddReaderStart {
    OddReaderStart() {
        const auto arguments = test::processArguments();
        if (arguments.size() != 3 || arguments[1] != oddReader) return;
        serveDriveReadings(0, {arguments[2], arguments[2]}, {openOddDrive, readNvmeLog});
        std::_Exit(0);
    }
};
const OddReaderStart oddReaderStart;

class DriveReaderPoolTest : public testing::Test {
  protected:
    DriveReaderPoolTest() {
        for (const std::string name : {"sda", "hang", "hang2", "gate", "die", "number"})
            tree.folder("block/" + name + "/device");
    }
    DriveReaderOptions oddOptions(milliseconds patience) const {
        return {.command = {"/proc/self/exe", oddReader, tree.root()}, .patience = patience};
    }
    static std::vector<State> statesOf(DriveReaderPool& pool, const std::vector<std::string>& names) {
        std::vector<State> states;
        for (const DriveAnswer& answer : answersOf(pool, names)) states.push_back(answer.state);
        return states;
    }
    static std::vector<DriveAnswer> answersOf(DriveReaderPool& pool, const std::vector<std::string>& names) {
        std::vector<DriveRequest> requests;
        for (const std::string& name : names) requests.push_back({name, name + " itself"});
        return pool.read(requests);
    }

    FakeTree tree;
    static constexpr milliseconds ample{60000};
};

TEST_F(DriveReaderPoolTest, ReadsDrivesInAnotherProcess) {
    const test::FakeDisk disk;
    test::addDisk(tree.remove("block/sda"), disk);
    test::addDrivetemp(tree, disk, "38000");
    test::addNvme(tree, {});
    test::addNvmeChip(tree, {}, "44850");
    DriveReaderPool pool(
        {.command = driveReaderCommand("/proc/self/exe", {tree.root(), ""}), .patience = ample});
    const auto answers = answersOf(pool, {"sda", "nvme0", "sdx"});
    ASSERT_EQ(answers.size(), 3U);
    EXPECT_EQ(answers[0].state, State::read);
    EXPECT_EQ(answers[0].reading, readDrive("sda", {tree.root(), ""}, systemDriveDevices()));
    EXPECT_EQ(answers[0].reading.smart, temperatureBlock(38));
    EXPECT_EQ(answers[1].reading.smart, temperatureBlock(45));
    EXPECT_EQ(answers[2].reading.error, ENODEV);
}

TEST_F(DriveReaderPoolTest, StartsNothingUntilThereIsADrive) {
    DriveReaderPool pool(oddOptions(ample));
    EXPECT_TRUE(answersOf(pool, {}).empty());
    EXPECT_EQ(pool.processCount(), 0U);
}

TEST_F(DriveReaderPoolTest, UsesItsReadersAgain) {
    DriveReaderOptions options = oddOptions(ample);
    options.atOnce = 1;
    DriveReaderPool pool(options);
    const auto first = answersOf(pool, {"number", "number"});
    const auto second = answersOf(pool, {"number"});
    EXPECT_EQ(pool.processCount(), 1U);
    EXPECT_EQ(first[0].reading.error, first[1].reading.error);
    EXPECT_EQ(first[0].reading.error, second[0].reading.error);
    EXPECT_NE(first[0].reading.error, getpid());
}

TEST_F(DriveReaderPoolTest, ReadsTheOthersWhileOneHangs) {
    DriveReaderOptions options = oddOptions(milliseconds(20));
    options.atOnce = 1;
    options.deadline = hours(1);
    DriveReaderPool pool(options);
    EXPECT_EQ(statesOf(pool, {"hang", "sda", "number"}),
              (std::vector{State::late, State::late, State::late}));
    // The reader that hangs keeps its drive to itself; on a busy machine the others may be late for once.
    const std::vector expected{State::late, State::read, State::read};
    while (statesOf(pool, {"hang", "sda", "number"}) != expected) {
    }
    EXPECT_GE(pool.processCount(), 2U);
    EXPECT_LE(pool.processCount(), 3U);
}

TEST_F(DriveReaderPoolTest, TakesAnAnswerThatComesLateInTheNextRound) {
    DriveReaderPool pool(oddOptions(milliseconds(1)));
    EXPECT_EQ(statesOf(pool, {"gate"}), std::vector{State::late});
    tree.file("gate", "");
    std::vector<State> states;
    do states = statesOf(pool, {"gate"});
    while (states == std::vector{State::late});
    EXPECT_EQ(states, std::vector{State::read});
    EXPECT_EQ(pool.processCount(), 1U);
}

TEST_F(DriveReaderPoolTest, AsksAgainWhatItAskedBeforeASleepOfTheMachine) {
    std::chrono::nanoseconds asleep(0);
    DriveReaderOptions options = oddOptions(milliseconds(1));
    options.asleep = [&asleep] { return asleep; };
    DriveReaderPool pool(options);
    EXPECT_EQ(statesOf(pool, {"gate"}), std::vector{State::late});
    tree.file("gate", "");
    asleep += hours(8);
    std::vector<DriveAnswer> answers;
    do answers = answersOf(pool, {"gate"});
    while (answers[0].state == State::late);
    EXPECT_EQ(answers[0].state, State::read);
    EXPECT_EQ(answers[0].reading.error, 2) << "the second answer, by the same reader";
    EXPECT_EQ(pool.processCount(), 1U);
}

TEST_F(DriveReaderPoolTest, ReadsAgainWhenTheMachineSleptInTheMiddle) {
    DriveReaderOptions options = oddOptions(ample);
    // Looked at when the pool is made, and at the beginning and at the end of a reading.
    options.asleep = [looks = 0]() mutable { return hours(++looks <= 2 ? 0 : 8); };
    DriveReaderPool pool(options);
    tree.file("gate", "");
    EXPECT_EQ(answersOf(pool, {"gate"})[0].reading.error, 2);
    EXPECT_EQ(answersOf(pool, {"gate"})[0].reading.error, 3);
}

TEST_F(DriveReaderPoolTest, GivesADriveUpAfterItsDeadlineAndTriesAgainWhenItsReaderIsDead) {
    DriveReaderOptions options = oddOptions(milliseconds(1));
    options.deadline = milliseconds(0);
    DriveReaderPool pool(options);
    EXPECT_EQ(statesOf(pool, {"hang"}), std::vector{State::hung});
    // Every round either finds the reader dying, or starts another one that hangs in its turn.
    for (int round = 0; round < 20; ++round) {
        EXPECT_EQ(statesOf(pool, {"hang"}), std::vector{State::hung});
        EXPECT_EQ(pool.processCount(), 1U);
    }
}

TEST_F(DriveReaderPoolTest, KillsTheReaderOfADriveThatHasGone) {
    DriveReaderOptions options = oddOptions(milliseconds(1));
    options.deadline = milliseconds(0);
    DriveReaderPool pool(options);
    EXPECT_EQ(statesOf(pool, {"hang"}), std::vector{State::hung});
    while (pool.processCount() > 0) EXPECT_TRUE(statesOf(pool, {}).empty());
}

TEST_F(DriveReaderPoolTest, SurvivesAReaderThatDies) {
    DriveReaderPool pool(oddOptions(ample));
    EXPECT_EQ(statesOf(pool, {"die", "sda"}), (std::vector{State::failed, State::read}));
    EXPECT_EQ(statesOf(pool, {"sda", "die"}), (std::vector{State::read, State::failed}));
}

TEST_F(DriveReaderPoolTest, FailsWhereNoReaderCanBeStarted) {
    DriveReaderPool absent({.command = {"/nowhere/reader"}, .patience = ample});
    EXPECT_EQ(statesOf(absent, {"sda"}), std::vector{State::failed});
    EXPECT_EQ(absent.processCount(), 0U);
    DriveReaderPool other({.command = {"/bin/true"}, .patience = ample});
    EXPECT_EQ(statesOf(other, {"sda"}), std::vector{State::failed});
}

TEST_F(DriveReaderPoolTest, GivesItsReadersNothingButTheirSocket) {
    // A pipe that somebody waits on must end although a reader hangs.
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    {
        DriveReaderPool pool(oddOptions(milliseconds(100)));
        EXPECT_EQ(statesOf(pool, {"hang"}), std::vector{State::late});
        close(ends[1]);
        char byte = 0;
        EXPECT_EQ(read(ends[0], &byte, 1), 0);
    }
    close(ends[0]);
}

TEST_F(DriveReaderPoolTest, LeavesNoReaderBehind) {
    pid_t reader = 0;
    {
        DriveReaderPool pool(oddOptions(ample));
        reader = answersOf(pool, {"number"})[0].reading.error;
        ASSERT_EQ(kill(reader, 0), 0);
    }
    while (waitpid(reader, nullptr, 0) > 0) {
    }
    EXPECT_EQ(kill(reader, 0), -1);
}

std::ptrdiff_t openDescriptors() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

TEST_F(DriveReaderPoolTest, LeavesNoDescriptorOpenInTenThousandRoundsOfDrivesThatComeAndGo) {
    DriveReaderPool pool(oddOptions(ample));
    EXPECT_EQ(statesOf(pool, {"sda"}), std::vector{State::read});
    const std::ptrdiff_t before = openDescriptors();
    constexpr int rounds = 10'000;
    for (int round = 0; round < rounds; ++round) {
        // Now and then a drive is there that ends its reader, and another takes the reader's place.
        if (round % 500 == 250) {
            EXPECT_EQ(statesOf(pool, {"die"}), std::vector{State::failed});
        }
        const std::string name = round % 100 < 50 ? "sda" : "number";
        ASSERT_EQ(statesOf(pool, {name}), std::vector{State::read}) << round;
    }
    EXPECT_EQ(openDescriptors(), before);
}

TEST(DriveReaderProcess, EndsWhenItsOwnerHasGone) {
    std::array<int, 2> ends{};
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_SEQPACKET, 0, ends.data()), 0);
    close(ends[0]);
    EXPECT_TRUE(serveDriveReadings(ends[1], {"/nowhere", ""}, systemDriveDevices()));
    close(ends[1]);
    EXPECT_FALSE(serveDriveReadings(-1, {"/nowhere", ""}, systemDriveDevices()));
}

TEST(DriveReaderProcess, RefusesTheAnswerOfAnotherVersion) {
    for (const char* const answer :
         {"head -c 100 /dev/zero >&0; sleep 60", "head -c 5000 /dev/zero >&0; sleep 60"}) {
        auto process = DriveReaderProcess::start({"/bin/sh", "-c", answer});
        ASSERT_TRUE(process);
        EXPECT_TRUE(process->ask("sda"));
        std::array<char, 1> byte{};
        ASSERT_EQ(recv(process->socket(), byte.data(), 1, MSG_PEEK), 1);
        EXPECT_FALSE(process->receive());
    }
}

TEST(DriveReaderArguments, MakeAReaderOnlyInTheirOwnForm) {
    std::vector<std::string> words{"calorivo-cli", "list", "--json", "--drive-reader"};
    std::vector<char*> arguments;
    for (std::string& word : words) arguments.push_back(word.data());
    EXPECT_EQ(runAsDriveReader(4, arguments.data()), std::nullopt);
    EXPECT_EQ(runAsDriveReader(1, arguments.data()), std::nullopt);
    EXPECT_EQ(driveReaderCommand("/p", {"/s", "/d"}),
              (std::vector<std::string>{"/p", "--drive-reader", "/s", "/d"}));
}

}  // namespace
}  // namespace calorivo
