#include "output/Logger.h"

#include "output/LogFixture.h"
#include "support/GoldenFile.h"

#include <gmock/gmock.h>

#include <chrono>

namespace calorivo {
namespace {

using test::Calls;
using test::goldenFile;
using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;

class LoggerTest : public test::LogFixture {
  protected:
    /// A check, and the time to the next one.
    void checkOnce() {
        check();
        machine.dispatch.advance(5s);
    }
};

// Whole files.

TEST_F(LoggerTest, WritesCelsius) {
    logger->setupLogger();
    checkOnce();
    machine.temperature("TC1C", 0).temperature("TG0D", 0);
    checkOnce();
    EXPECT_EQ(text(), goldenFile("log-celsius.csv"));
}

TEST_F(LoggerTest, WritesFahrenheitWithMarks) {
    machine.fahrenheit().alerting(50, 45).preferences.logAlerts = true;
    logger->setupLogger();
    checkOnce();
    EXPECT_EQ(text(), goldenFile("log-fahrenheit-alerts.csv"));
}

TEST_F(LoggerTest, WritesTemperaturesAlone) {
    machine.preferences.logFanSpeeds = false;
    logger->setupLogger();
    checkOnce();
    EXPECT_EQ(text(), goldenFile("log-temperatures.csv"));
}

TEST_F(LoggerTest, WritesFansAlone) {
    machine.preferences.logTemperatures = false;
    logger->setupLogger();
    checkOnce();
    EXPECT_EQ(text(), goldenFile("log-fans.csv"));
}

TEST_F(LoggerTest, WritesDateAndTimeAlone) {
    machine.preferences.logTemperatures = false;
    machine.preferences.logFanSpeeds = false;
    logger->setupLogger();
    checkOnce();
    EXPECT_EQ(text(), goldenFile("log-nothing.csv"));
}

TEST_F(LoggerTest, StartsAFreshFileForAnotherUnit) {
    logger->setupLogger();
    checkOnce();
    machine.fahrenheit();
    logger->setupLogger();
    checkOnce();
    EXPECT_EQ(text(), goldenFile("log-restart.csv"));
}

TEST_F(LoggerTest, GoesOnUnderTheOldHeaderInTheSameFile) {
    logger->setupLogger();
    checkOnce();
    machine.preferences.useSameLogFile = true;
    machine.fahrenheit();
    machine.preferences.logFanSpeeds = false;
    logger->setupLogger();
    checkOnce();
    EXPECT_EQ(text(), goldenFile("log-same-file.csv"));
}

TEST_F(LoggerTest, BeginsTheSameFileWhenThereIsNone) {
    machine.preferences.useSameLogFile = true;
    logger->setupLogger();
    checkOnce();
    EXPECT_EQ(text(), goldenFile("log-one-check.csv"));
}

TEST_F(LoggerTest, HasARowThatWaitedWhileTheFileWasEmptiedBeforeItsHeader) {
    logger->setupLogger();
    checkOnce();
    hold();
    check();
    logger->restartLogFile();
    release();
    EXPECT_EQ(text(), goldenFile("log-row-before-header.csv"));
}

TEST_F(LoggerTest, HasBothHandOversOfARowWithDrivesWhenTheWriterIsFaster) {
    machine.drive(38).drive(41);
    logger->setupLogger();
    machine.dispatch.hold("check");
    check();
    machine.dispatch.release("check");
    machine.dispatch.run();
    EXPECT_EQ(text(), goldenFile("log-drives-written-first.csv"));
}

TEST_F(LoggerTest, HasTheDrivesInBothHandOversWhenTheyAreFaster) {
    machine.drive(38).drive(41);
    logger->setupLogger();
    hold();
    check();
    release();
    EXPECT_EQ(text(), goldenFile("log-drives-read-first.csv"));
}

TEST_F(LoggerTest, HasOneOfTwoCommasLeft) {
    logger->setupLogger();
    const auto row = std::make_shared<CSVRow>(createCSVRowPrefix(machine.dispatch.wallTime()) + ",");
    row->removeCommaSuffix();
    writer.logStringIncludeDateTime(row, IncludeDateTime::no);
    machine.dispatch.run();
    EXPECT_EQ(text(), goldenFile("log-two-commas.csv"));
}

// The steps of setting up.

TEST_F(LoggerTest, ChangesNothingWithABookmark) {
    machine.preferences.logFileBookmarkData = Data{1};
    logger->setupLogger();
    EXPECT_TRUE(files.files.empty());
    EXPECT_EQ(logFileURL.get(), "");
    EXPECT_THAT(platform.calls, IsEmpty());
}

TEST_F(LoggerTest, TellsThatThereIsNoDocumentsFolder) {
    documentDirectories = {""};
    logger->setupLogger();
    EXPECT_EQ(platform.calls.size(), 1U);
    platform.calls.clear();
    documentDirectories.clear();
    logger->setupLogger();
    EXPECT_EQ(platform.calls,
              Calls{"log The log file couldn't be created because the Documents folder for this user is not "
                    "available."});
    EXPECT_EQ(logFileURL.get(), "");
    write("lost");
    EXPECT_THAT(files.steps, IsEmpty());
}

TEST_F(LoggerTest, SetsTheFileButMakesNoneWhileLoggingIsOff) {
    machine.preferences.logToFile = false;
    logger->setupLogger();
    EXPECT_EQ(logFileURL.get(), url);
    EXPECT_TRUE(files.files.empty());
}

TEST_F(LoggerTest, AlertsWhenTheFileCannotBeMadeAndKeepsTrying) {
    files.createProblem = files.openProblem = "Permission denied";
    logger->setupLogger();
    machine.dispatch.run();
    EXPECT_THAT(platform.alertPanel.alerts,
                ElementsAre(Alert{.message = "Calorivo was not able to create the log file.",
                                  .defaultButton = "OK",
                                  .informativeText =
                                      "Please make sure the path to /home/u/My Documents/Calorivo Log.csv is "
                                      "writable and re-launch Calorivo."}));
    EXPECT_EQ(logFileURL.get(), url);
    EXPECT_EQ(writer.failedLines(), 0U) << "no header for a file that is not there";
    check();
    EXPECT_EQ(platform.calls.back(), "log Unable to log because of error Permission denied");
    EXPECT_EQ(platform.alertPanel.alerts.size(), 1U);
}

TEST_F(LoggerTest, BeginsAgainByItselfWhenTheFileIsGone) {
    logger->setupLogger();
    checkOnce();
    files.files.clear();
    write("lost");
    EXPECT_EQ(platform.calls, Calls{"log Unable to log because of error No such file or directory"});
    checkOnce();
    EXPECT_EQ(text(), goldenFile("log-made-again.csv"));
}

TEST_F(LoggerTest, MakesAMissingFileAgainWithItsHeader) {
    logger->setupLogger();
    machine.dispatch.run();
    const std::string header = text();
    files.files.clear();
    write("lost");
    EXPECT_EQ(text(), header);
    write("written");
    EXPECT_EQ(text(), header + "written\n");
}

TEST_F(LoggerTest, MakesNoMissingFileOnceLoggingIsOff) {
    logger->setupLogger();
    machine.dispatch.run();
    files.files.clear();
    machine.preferences.logToFile = false;
    write("lost");
    EXPECT_TRUE(files.files.empty());
}

TEST_F(LoggerTest, LeavesAFileAloneThatCannotBeWrittenNow) {
    logger->setupLogger();
    checkOnce();
    const std::string before = text();
    files.writeProblem = "No space left on device";
    checkOnce();
    EXPECT_EQ(text(), before);
    EXPECT_THAT(platform.alertPanel.alerts, IsEmpty());
}

TEST_F(LoggerTest, ForgetsAFailureThatComesAfterItsEnd) {
    logger->setupLogger();
    machine.dispatch.run();
    files.files.clear();
    logger->writerFailed();
    logger.reset();
    machine.dispatch.run();
    EXPECT_TRUE(files.files.empty());
}

TEST_F(LoggerTest, ShowsTheFolderAndOpensTheFile) {
    logger->revealLogFileInFinder();
    logger->openLogFile();
    EXPECT_THAT(platform.calls, IsEmpty()) << "there is no file yet";
    logger->setupLogger();
    logger->revealLogFileInFinder();
    logger->openLogFile();
    EXPECT_THAT(platform.calls, ElementsAre("openURL file:///home/u/My%20Documents/", "openURL " + url));
}

TEST_F(LoggerTest, ChoosesNoOtherFile) {
    logger->setupLogger();
    machine.dispatch.run();
    files.steps.clear();
    logger->chooseLogFile();
    machine.dispatch.run();
    EXPECT_EQ(logFileURL.get(), url);
    EXPECT_THAT(files.steps, IsEmpty());
    EXPECT_THAT(platform.calls, IsEmpty());
}

}  // namespace
}  // namespace calorivo
