#include "PreferencesWindowFixture.h"

#include "ui/qt/LimitSlider.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSlider>

// The Alerts and the Log pane, and controls for what may be missing.

namespace calorivo::test {
namespace {

class PreferencesPanesTest : public PreferencesWindowFixture {};

TEST_F(PreferencesPanesTest, TheLimitSlidersAssignTheLimits) {
    start();
    for (const char* const key : {"limitForSpecificArea", "limitForAverage"}) {
        SCOPED_TRACE(key);
        auto& slider = control<QSlider>(key);
        assign(key, 70);
        EXPECT_EQ(slider.value(), 70);
        QTest::keyClick(&slider, Qt::Key_Right);
        EXPECT_EQ(valueOf(key), Value(71));
        QTest::keyClick(&slider, Qt::Key_Home);
        EXPECT_EQ(valueOf(key), Value(40));
        QTest::keyClick(&slider, Qt::Key_End);
        EXPECT_EQ(valueOf(key), Value(100));
    }
}

TEST_F(PreferencesPanesTest, ALimitIsDraggedWithTheMouse) {
    start();
    auto& slider = control<LimitSlider>("limitForAverage");
    assign("limitForAverage", 60);
    const int y = slider.height() / 2 - 4;
    QTest::mousePress(&slider, Qt::LeftButton, {}, QPoint(slider.xOfValue(60), y));
    QTest::mouseMove(&slider, QPoint(slider.xOfValue(85), y));
    QTest::mouseRelease(&slider, Qt::LeftButton, {}, QPoint(slider.xOfValue(85), y));
    EXPECT_EQ(valueOf("limitForAverage"), Value(85));
}

TEST_F(PreferencesPanesTest, TheLimitIsShownInDegreesCelsiusAndInTheUsersUnit) {
    start();
    assign("limitForSpecificArea", 90);
    EXPECT_EQ(control<QLabel>("limitForSpecificAreaValue").text(), QStringLiteral("90°C"));
    assign("tempUnit", 1);
    EXPECT_EQ(control<QLabel>("limitForSpecificAreaValue").text(), QStringLiteral("90°C (194°F)"));
    EXPECT_EQ(control<QSlider>("limitForSpecificArea").value(), 90);
}

TEST_F(PreferencesPanesTest, ALimitBeyondTheScaleIsShownAsItIs) {
    start();
    assign("limitForAverage", 30);
    EXPECT_EQ(control<QLabel>("limitForAverageValue").text(), QStringLiteral("30°C"));
    EXPECT_EQ(control<QSlider>("limitForAverage").value(), 40);
    EXPECT_EQ(valueOf("limitForAverage"), Value(30));
}

TEST_F(PreferencesPanesTest, TheScaleHasItsNumbersFromTheStartOn) {
    start();
    const auto text = [this](const char* name) { return control<QLabel>(name).text().toStdString(); };
    EXPECT_EQ(text("specificAreaLowLabel"), "40");
    EXPECT_EQ(text("specificAreaMedLabel"), "90");
    EXPECT_EQ(text("specificAreaHighLabel"), "100");
    EXPECT_EQ(text("averageLowLabel"), "40");
    EXPECT_EQ(text("averageMedLabel"), "90");
    EXPECT_EQ(text("averageHighLabel"), "100");
}

TEST_F(PreferencesPanesTest, EachLabelOfTheScalesIsSetByItself) {
    start();
    window.setIntValue(LimitLabel::averageMedLabel, 75);
    EXPECT_EQ(control<QLabel>("averageMedLabel").text(), QStringLiteral("75"));
    EXPECT_EQ(control<QLabel>("specificAreaMedLabel").text(), QStringLiteral("90"));
    EXPECT_EQ(control<QLabel>("averageLowLabel").text(), QStringLiteral("40"));
    EXPECT_EQ(control<QLabel>("averageHighLabel").text(), QStringLiteral("100"));
}

TEST_F(PreferencesPanesTest, ATestNotificationIsSentWhereAServiceAnswers) {
    start();
    click(control<QPushButton>("sendTestNotification"));
    EXPECT_EQ(asked, "test ");
    EXPECT_EQ(noteOf("notificationServiceNote"), QStringLiteral("Notifications are shown by the desktop."));
}

TEST_F(PreferencesPanesTest, WithoutANotificationServiceThereIsNoTestAndTheReason) {
    problem = "Nobody shows notifications.";
    start();
    auto& test = control<QPushButton>("sendTestNotification");
    EXPECT_FALSE(test.isEnabled());
    EXPECT_EQ(noteOf("notificationServiceNote"), QStringLiteral("Nobody shows notifications."));
    problem.clear();
    window.refreshPorts();
    EXPECT_TRUE(test.isEnabled());
    problem = "Gone again.";
    window.refreshPorts();
    EXPECT_FALSE(test.isEnabled());
    EXPECT_EQ(noteOf("notificationServiceNote"), QStringLiteral("Gone again."));
}

TEST_F(PreferencesPanesTest, DrivesThatCannotBeCheckedSaySo) {
    canCheckDrives = false;
    start();
    auto& box = control<QCheckBox>("checkDriveTemps");
    EXPECT_FALSE(box.isEnabled());
    EXPECT_EQ(noteOf("checkDriveTempsNote"),
              QStringLiteral("Not available: no drive of this computer tells its temperature."));
    canCheckDrives = true;
    window.refreshPorts();
    EXPECT_TRUE(box.isEnabled());
    EXPECT_EQ(noteOf("checkDriveTempsNote"),
              QStringLiteral(
                  "Drives appear beside the sensors, among the choices for the menu bar and in the log."));
}

TEST_F(PreferencesPanesTest, WithoutPortsTheControlsAreDisabledAndSayWhy) {
    ports = {};
    start();
    assign("logFileURL", "file:///home/user/Documents/Calorivo%20Log.csv");
    for (const char* const name : {"sendTestNotification", "openLog", "revealLog"})
        EXPECT_FALSE(control<QPushButton>(name).isEnabled()) << name;
    EXPECT_FALSE(control<QCheckBox>("checkDriveTemps").isEnabled());
    EXPECT_EQ(noteOf("notificationServiceNote"),
              QStringLiteral("Not available: this program cannot send notifications here."));
    EXPECT_EQ(noteOf("logFileURLNote"),
              QStringLiteral("Not available: this program cannot open files here."));
    EXPECT_EQ(noteOf("checkDriveTempsNote"),
              QStringLiteral("Not available: no drive of this computer tells its temperature."));
}

TEST_F(PreferencesPanesTest, TheLogFileIsShownOpenedAndRevealed) {
    start();
    assign("logFileURL", "file:///home/user/Documents/Calorivo%20Log.csv");
    EXPECT_EQ(control<QLineEdit>("logFileURL").text(),
              QStringLiteral("/home/user/Documents/Calorivo Log.csv"));
    EXPECT_EQ(noteOf("logFileURLNote"), QString());
    click(control<QPushButton>("openLog"));
    click(control<QPushButton>("revealLog"));
    EXPECT_EQ(asked, "open reveal ");
}

TEST_F(PreferencesPanesTest, APathIsShownAsItStands) {
    start();
    assign("logFileURL", "/home/user/Calorivo Log.csv");
    EXPECT_EQ(control<QLineEdit>("logFileURL").text(), QStringLiteral("/home/user/Calorivo Log.csv"));
}

TEST_F(PreferencesPanesTest, WithoutALogFileThereIsNothingToOpenAndTheReason) {
    application.configuration.documentDirectories.clear();
    start();
    EXPECT_EQ(control<QLineEdit>("logFileURL").text(), QString());
    EXPECT_FALSE(control<QPushButton>("openLog").isEnabled());
    EXPECT_FALSE(control<QPushButton>("revealLog").isEnabled());
    EXPECT_EQ(noteOf("logFileURLNote"),
              QStringLiteral("There is no log file, since there is no folder for documents."));
}

}  // namespace
}  // namespace calorivo::test
