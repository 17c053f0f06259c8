#include "output/LogWriter.h"

#include "output/LogFixture.h"

#include <gmock/gmock.h>

#include <chrono>

namespace calorivo {
namespace {

using test::Calls;
using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;

class LogWriterTest : public test::LogFixture {
  protected:
    LogWriterTest() {
        setLogFileURL(url);
        files.files[path] = "";
    }
};

TEST_F(LogWriterTest, OpensSeeksWritesSynchronizesAndClosesForEachLine) {
    write("one");
    write("two");
    EXPECT_THAT(files.steps, ElementsAre("open", "seek", "write", "synchronize", "close", "open", "seek",
                                         "write", "synchronize", "close"));
    EXPECT_EQ(text(), "one\ntwo\n");
}

TEST_F(LogWriterTest, ReturnsAtOnceAndWritesOnItsQueueInOrder) {
    hold();
    for (const char* line : {"one", "two", "three"})
        writer.logStringIncludeDateTime(std::string(line), IncludeDateTime::no);
    EXPECT_THAT(files.steps, IsEmpty());
    EXPECT_EQ(machine.dispatch.pending("log"), 3U);
    release();
    EXPECT_EQ(text(), "one\ntwo\nthree\n");
}

TEST_F(LogWriterTest, PutsTheDateAndTimeOfTheWritingBeforeALine) {
    hold();
    writer.logStringIncludeDateTime(std::string("Hello, it is 5 % late"), IncludeDateTime::yes);
    machine.dispatch.advance(62s);
    release();
    EXPECT_EQ(text(), "2024-03-05 14:08:11 Hello, it is 5 % late\n");
}

TEST_F(LogWriterTest, TakesTheTextOfARowWhenItIsWritten) {
    const auto row = std::make_shared<CSVRow>("a,");
    hold();
    writer.logStringIncludeDateTime(row, IncludeDateTime::no);
    row->append("b");
    release();
    EXPECT_EQ(text(), "a,b\n");
}

TEST_F(LogWriterTest, DropsALineWhileTheFileIsBeingChanged) {
    ASSERT_TRUE(logURLLock.tryLock());
    write("lost");
    logURLLock.unlock();
    write("written");
    EXPECT_EQ(text(), "written\n");
    EXPECT_THAT(platform.calls, IsEmpty()) << "silently";
    EXPECT_EQ(writer.failedLines(), 0U);
}

TEST_F(LogWriterTest, KeepsTheFileFromBeingChangedWhileItWrites) {
    files.whileOpening = [this] { setLogFileURL("file:///other"); };
    write("one");
    EXPECT_EQ(logFileURL.get(), url);
    files.whileOpening = {};
    setLogFileURL("file:///other");
    EXPECT_EQ(logFileURL.get(), "file:///other");
}

TEST_F(LogWriterTest, DoesNothingWithoutAFileAndLetsTheLockGo) {
    setLogFileURL("");
    write("lost");
    EXPECT_THAT(files.steps, IsEmpty());
    EXPECT_THAT(platform.calls, IsEmpty());
    EXPECT_TRUE(logURLLock.tryLock());
}

TEST_F(LogWriterTest, TellsWhyALineIsLostAtEachStepAndGoesOn) {
    for (FileProblem test::FakeFileHandles::*step :
         {&test::FakeFileHandles::openProblem, &test::FakeFileHandles::seekProblem,
          &test::FakeFileHandles::writeProblem, &test::FakeFileHandles::synchronizeProblem}) {
        platform.calls.clear();
        files.files[path] = "";
        files.*step = "No space left on device";
        write("lost");
        EXPECT_EQ(platform.calls, Calls{"log Unable to log because of error No space left on device"});
        files.*step = "";
        machine.dispatch.advance(1min);
        write("written");
        EXPECT_TRUE(text().ends_with("written\n"));
        EXPECT_TRUE(logURLLock.tryLock());
        logURLLock.unlock();
    }
    EXPECT_EQ(writer.failedLines(), 4U);
}

TEST_F(LogWriterTest, TellsEachCauseOnceAMinute) {
    files.openProblem = "Read-only file system";
    for (int second = 0; second < 121; ++second) {
        write("lost");
        machine.dispatch.advance(1s);
    }
    EXPECT_EQ(platform.calls, Calls(3, "log Unable to log because of error Read-only file system"));
    EXPECT_EQ(writer.failedLines(), 121U);
    files.openProblem = "No such file or directory";
    write("lost");
    EXPECT_EQ(platform.calls.back(), "log Unable to log because of error No such file or directory");
}

TEST_F(LogWriterTest, EndsALineThatACrashCutOff) {
    files.files[path] = "one\n2024-03-0";
    write("three");
    EXPECT_EQ(text(), "one\n2024-03-0\nthree\n");
}

TEST_F(LogWriterTest, DropsAndCountsWhatComesOnTopOfAThousandWaitingLines) {
    hold();
    for (int line = 1; line <= 1002; ++line)
        writer.logStringIncludeDateTime(std::to_string(line), IncludeDateTime::no);
    EXPECT_EQ(writer.droppedLines(), 2U);
    EXPECT_EQ(machine.dispatch.pending("log"), 1000U);
    const std::string message = "log Unable to log because of error the disk is too slow: ";
    EXPECT_EQ(platform.calls, Calls{message + "1 lines dropped so far"});
    machine.dispatch.advance(1min);
    writer.logStringIncludeDateTime(std::string("1003"), IncludeDateTime::no);
    EXPECT_EQ(platform.calls.back(), message + "3 lines dropped so far");
    release();
    EXPECT_TRUE(text().starts_with("1\n2\n3\n"));
    EXPECT_TRUE(text().ends_with("\n999\n1000\n"));
    write("1004");
    EXPECT_TRUE(text().ends_with("\n1000\n1004\n"));
    EXPECT_EQ(writer.droppedLines(), 3U);
}

}  // namespace
}  // namespace calorivo
