#include "ui/qt/DetailsPanel.h"

#include "MainWindowFixture.h"
#include "ui/qt/Appearance.h"
#include "ui/qt/LevelBarColors.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QMenu>
#include <QTextBrowser>
#include <QToolButton>

#include <algorithm>

namespace calorivo {
namespace {

Explanation explanationOfCore() {
    Explanation core;
    core.key = SensorKey("TC0C");
    core.source = "hwmon";
    core.origin = {"coretemp.0", "/sys/class/hwmon/hwmon3/temp2_input", "61250", "rounded"};
    core.value.dataSize = 2;
    const std::string_view type = "sp78";
    std::copy(type.begin(), type.end(), core.value.dataType.begin());
    core.value.bytes[0] = 0x3D;
    core.value.bytes[1] = 0x40;
    core.decoded = 61.25;
    core.reading = 61.25;
    core.readingText = "61°C";
    core.isValid = true;
    core.name = "CPU Core 1";
    core.naming = "row 3 of the naming rules";
    core.grouping = {"grouping rule 2: CPU", "grouping rule 9: CPU"};
    core.area = areaNamed("CPU");
    core.isShown = true;
    return core;
}

Fact fact(const char* caption, const char* text) {
    return {QString::fromUtf8(caption), QString::fromUtf8(text)};
}

TEST(Details, TellEverythingThatIsKnown) {
    const Details details = detailsOf(explanationOfCore());
    EXPECT_EQ(details.title, QStringLiteral("CPU Core 1"));
    EXPECT_EQ(details.facts,
              (QList{fact("Key", "TC0C"), fact("Source", "hwmon"), fact("Device", "coretemp.0"),
                     fact("File", "/sys/class/hwmon/hwmon3/temp2_input"), fact("Content", "61250"),
                     fact("Note", "rounded"), fact("Type", "sp78"), fact("Bytes", "3d 40"),
                     fact("Decoded", "61.25"), fact("Reading", "61.25 °C, shown as 61°C"),
                     fact("Named by", "row 3 of the naming rules"),
                     fact("Put into its area by", "grouping rule 2: CPU\ngrouping rule 9: CPU"),
                     fact("Area", "CPU")}));
}

TEST(Details, LeaveOutWhatIsNotKnownAndSayWhyAKeyIsHidden) {
    Explanation unknown;
    unknown.key = SensorKey("TX0X");
    unknown.source = "applesmc";
    unknown.reading = 0.0;
    unknown.hiddenReason = "It gives no data now.";
    const Details details = detailsOf(unknown);
    EXPECT_EQ(details.title, QStringLiteral("TX0X"));
    EXPECT_EQ(details.facts,
              (QList{fact("Key", "TX0X"), fact("Source", "Apple SMC"), fact("Bytes", "No data"),
                     fact("Reading", "0 °C, which no sensor means: shown as N/A"),
                     fact("Not shown", "It gives no data now.")}));
}

TEST(DriveDetails, TellTheSourceOfATemperature) {
    const auto sourceOf = [](const char* source) {
        return detailsOfDrive({}, {}, {}, DriveExplanation{"", source, false, ""}).facts.value(0).text;
    };
    EXPECT_EQ(sourceOf("drivetemp"), QStringLiteral("The kernel's own reading (drivetemp)"));
    EXPECT_EQ(sourceOf("nvme"), QStringLiteral("The kernel's own reading (nvme)"));
    EXPECT_EQ(sourceOf("smart"), QStringLiteral("The drive itself, which measures its temperature (SMART)"));
    EXPECT_EQ(sourceOf("nvme log"), QStringLiteral("The drive's health log"));
    EXPECT_EQ(sourceOf("udisks2"), QStringLiteral("The service UDisks2, which asks the drive"));
}

TEST(DriveDetails, TellThatADriveSleeps) {
    const Details details =
        detailsOfDrive(QStringLiteral("Disk (A1)"), QStringLiteral("   A1 "), QStringLiteral("37°C"),
                       DriveExplanation{"sda", "drivetemp", true, ""});
    EXPECT_EQ(details.title, QStringLiteral("Disk (A1)"));
    EXPECT_EQ(details.facts,
              (QList{fact("Serial number", "A1"), fact("Device", "sda"),
                     fact("Source", "The kernel's own reading (drivetemp)"), fact("Reading", "37°C"),
                     fact("Note", "The drive is asleep and is not woken: this is its value from before.")}));
}

TEST(DriveDetails, TellWhyThereIsNoTemperature) {
    const Details details =
        detailsOfDrive(QStringLiteral("Disk (A1)"), QStringLiteral("A1"), QStringLiteral("N/A"),
                       DriveExplanation{"sda", "", false, "its SMART is switched off"});
    EXPECT_EQ(details.facts,
              (QList{fact("Serial number", "A1"), fact("Device", "sda"), fact("Reading", "N/A"),
                     fact("No temperature", "its SMART is switched off")}));
}

class DetailsPanelTest : public test::MainWindowFixture {
  protected:
    void SetUp() override {
        smc().setTemperature("TC0C", 61.25).setTemperature("TG0D", 70);
        drives = {{"Disk", "A1", 37}};
        explanations = {explanationOfCore()};
        start();
        choose("All");
        show();
    }
    [[nodiscard]] DetailsPanel& panel() const { return child<DetailsPanel>("detailsPanel"); }
    [[nodiscard]] bool tells(const char* text) const {
        return panel().plainText().contains(QString::fromUtf8(text));
    }
};

TEST_F(DetailsPanelTest, IsMadeWhenItIsShownFirst) {
    EXPECT_FALSE(panel().isVisible());
    EXPECT_EQ(window->findChild<QTextBrowser*>(), nullptr);
    QTest::mouseClick(&child<QToolButton>("detailsButton"), Qt::LeftButton);
    EXPECT_TRUE(panel().isVisible());
    EXPECT_TRUE(settings.showsDetails.get());
    EXPECT_EQ(panel().plainText(), QStringLiteral("Select a sensor to see where its value comes from."));
}

TEST_F(DetailsPanelTest, FollowsTheSelectedRow) {
    window->setDetailsShown(true);
    table().selectRow(0);
    EXPECT_TRUE(tells("CPU Core 1\nKey\nTC0C\nSource\nhwmon")) << panel().plainText().toStdString();
    table().selectRow(1);
    EXPECT_EQ(panel().plainText(), QStringLiteral("Nothing is known about this sensor."));
    table().selectRow(2);
    EXPECT_TRUE(tells("SMART"));
    EXPECT_TRUE(tells("37°C"));
}

TEST_F(DetailsPanelTest, ExplainsADriveBesideItsRow) {
    driveExplanation = DriveExplanation{"sda", "udisks2", false, ""};
    window->setDetailsShown(true);
    table().selectRow(2);
    EXPECT_EQ(askedDrive, "A1");
    EXPECT_TRUE(tells("Device\nsda\nSource\nThe service UDisks2")) << panel().plainText().toStdString();
    driveExplanation->isAsleep = true;
    check();
    EXPECT_TRUE(tells("asleep"));
}

TEST_F(DetailsPanelTest, IsRefreshedWithEachReloadWhileItIsSeen) {
    window->setDetailsShown(true);
    table().selectRow(0);
    explanations.front().origin.content = "63500";
    check();
    EXPECT_TRUE(tells("63500"));
    window->setDetailsShown(false);
    explanations.front().origin.content = "70000";
    check();
    EXPECT_TRUE(tells("63500"));
    window->setDetailsShown(true);
    EXPECT_TRUE(tells("70000"));
}

TEST_F(DetailsPanelTest, LeavesWhatTheUserSelectedAlone) {
    window->setDetailsShown(true);
    table().selectRow(0);
    auto& text = child<QTextBrowser>("detailsText");
    text.selectAll();
    explanations.front().origin.content = "63500";
    check();
    EXPECT_TRUE(text.textCursor().hasSelection());
    EXPECT_FALSE(tells("63500"));
    table().selectRow(2);
    EXPECT_TRUE(tells("SMART"));
}

TEST_F(DetailsPanelTest, TakesOnTheColoursOfAnotherPalette) {
    window->setDetailsShown(true);
    table().selectRow(0);
    for (const QPalette& palette : {darkPalette(), lightPalette()}) {
        window->setPalette(palette);
        EXPECT_TRUE(child<QTextBrowser>("detailsText").toHtml().contains(mutedTextColor(palette).name()));
    }
}

TEST_F(DetailsPanelTest, ShowsMarkupAsText) {
    explanations.front().origin.content = "<b>& \"1\"\n2";
    window->setDetailsShown(true);
    table().selectRow(0);
    EXPECT_TRUE(tells("<b>& \"1\"\n2")) << panel().plainText().toStdString();
}

TEST_F(DetailsPanelTest, OpensFromTheMenuOfARowAndClosesWithEscape) {
    table().selectRow(0);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {}, {});
    QApplication::sendEvent(&table(), &event);
    auto& menu = child<QMenu>("sensorMenu");
    ASSERT_EQ(menu.actions().size(), 2);
    EXPECT_EQ(menu.actions().at(0)->text(), QStringLiteral("Copy"));
    EXPECT_EQ(menu.actions().at(1)->text(), QStringLiteral("Why This Value?"));
    menu.actions().at(1)->trigger();
    menu.close();
    EXPECT_TRUE(panel().isVisible());
    EXPECT_TRUE(child<QToolButton>("detailsButton").isChecked());
    auto& text = child<QTextBrowser>("detailsText");
    text.setFocus();
    QTest::keyClick(&text, Qt::Key_Escape);
    EXPECT_FALSE(panel().isVisible());
    EXPECT_EQ(window->focusWidget(), &table());
    EXPECT_FALSE(child<QToolButton>("detailsButton").isChecked());
}

}  // namespace
}  // namespace calorivo
