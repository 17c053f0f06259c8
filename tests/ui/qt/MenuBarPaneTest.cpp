#include "PreferencesWindowFixture.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QWheelEvent>

#include <string>

namespace calorivo::test {
namespace {

class MenuBarPaneTest : public PreferencesWindowFixture {
  protected:
    void SetUp() override {
        application.machine.ioKit.smc.setTemperature("TG0P", 50)
            .addFan(1800, 1200, 6000, "Right")
            .addFan(1800, 1200, 6000, "Rear");
        start();
    }
    [[nodiscard]] QComboBox& popUp(const char* key) { return control<QComboBox>(key); }
    /// What the items are, a line for each; separators as a dash.
    [[nodiscard]] static std::string itemsOf(const QComboBox& box) {
        std::string text;
        for (int index = 0; index < box.count(); ++index) {
            const bool isSeparator =
                box.itemData(index, Qt::AccessibleDescriptionRole).toString() == QLatin1String("separator");
            text += (isSeparator ? "-" : box.itemText(index).toStdString()) + "\n";
        }
        return text;
    }
    static void turnWheel(QComboBox& box, int steps) {
        constexpr int oneStep = 120;
        QWheelEvent event(QPointF(5, 5), box.mapToGlobal(QPointF(5, 5)), {}, QPoint(0, -steps * oneStep),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(&box, &event);
    }
    std::string preview() {
        control<QComboBox>("titlePlace");
        QApplication::processEvents();
        const bool hasIcon = window.findChild<QLabel*>(QStringLiteral("titlePreviewIcon"))->isVisible();
        auto* const text = window.findChild<QLabel*>(QStringLiteral("titlePreviewText"));
        return (hasIcon ? "[icon] " : "") + text->text().toStdString();
    }
};

TEST_F(MenuBarPaneTest, ThePopUpsHaveTheItemsOfTheMenusAtTheSameIndexes) {
    const std::string temperatures =
        "Average Temperature\n-\nAverage CPU Temperature\nCPU Proximity \n-\nGPU Proximity \n";
    EXPECT_EQ(itemsOf(popUp("menuBarTempSensorIndex")), temperatures);
    EXPECT_EQ(itemsOf(popUp("menuBarTemp2SensorIndex")), temperatures);
    EXPECT_EQ(itemsOf(popUp("menuBarFanSensorIndex")), "Average RPM\n-\nLeft\nRight\nRear\n");
}

TEST_F(MenuBarPaneTest, ThePopUpsShowAndAssignTheIndexes) {
    for (const char* const key : {"menuBarTempSensorIndex", "menuBarTemp2SensorIndex"}) {
        SCOPED_TRACE(key);
        QComboBox& box = popUp(key);
        assign(key, 5);
        EXPECT_EQ(box.currentText(), QStringLiteral("GPU Proximity "));
        QTest::keyClick(&box, Qt::Key_Home);
        EXPECT_EQ(valueOf(key), Value(0));
        QTest::keyClick(&box, Qt::Key_End);
        EXPECT_EQ(valueOf(key), Value(5));
    }
}

TEST_F(MenuBarPaneTest, AnItemIsChosenInTheOpenMenu) {
    QComboBox& box = popUp("menuBarTempSensorIndex");
    assign("menuBarTempSensorIndex", 3);
    QTest::keyClick(&box, Qt::Key_Space);
    ASSERT_TRUE(box.view()->isVisible());
    QTest::keyClick(box.view(), Qt::Key_Down);
    QTest::keyClick(box.view(), Qt::Key_Return);
    EXPECT_FALSE(box.view()->isVisible());
    EXPECT_EQ(valueOf("menuBarTempSensorIndex"), Value(5));
    EXPECT_EQ(box.currentText(), QStringLiteral("GPU Proximity "));
}

TEST_F(MenuBarPaneTest, KeyboardAndWheelPassOverSeparators) {
    QComboBox& box = popUp("menuBarTempSensorIndex");
    assign("menuBarTempSensorIndex", 0);
    QTest::keyClick(&box, Qt::Key_Down);
    EXPECT_EQ(valueOf("menuBarTempSensorIndex"), Value(2));
    QTest::keyClick(&box, Qt::Key_Up);
    EXPECT_EQ(valueOf("menuBarTempSensorIndex"), Value(0));
    turnWheel(box, 1);
    EXPECT_EQ(valueOf("menuBarTempSensorIndex"), Value(2));
    turnWheel(box, -1);
    EXPECT_EQ(valueOf("menuBarTempSensorIndex"), Value(0));
}

TEST_F(MenuBarPaneTest, ASeparatorThatIsAssignedBecomesTheCPUAverage) {
    for (const char* const key : {"menuBarTempSensorIndex", "menuBarTemp2SensorIndex"}) {
        assign(key, 4);
        EXPECT_EQ(popUp(key).currentIndex(), 2);
        EXPECT_EQ(popUp(key).currentText(), QStringLiteral("Average CPU Temperature"));
    }
}

TEST_F(MenuBarPaneTest, TheFanPopUpShowsWhatTheKeySaysAfterAChoice) {
    QComboBox& box = popUp("menuBarFanSensorIndex");
    QTest::keyClick(&box, Qt::Key_Down);
    EXPECT_EQ(valueOf("menuBarFanSensorIndex"), Value(2));
    EXPECT_EQ(box.currentText(), QStringLiteral("Left"));
    QTest::keyClick(&box, Qt::Key_End);
    EXPECT_EQ(valueOf("menuBarFanSensorIndex"), Value(2))
        << "there are three fans: the index is bounded by that";
    EXPECT_EQ(box.currentText(), QStringLiteral("Left"));
}

TEST_F(MenuBarPaneTest, AnIndexOfNoItemShowsThatThereIsNone) {
    QComboBox& temperature = popUp("menuBarTempSensorIndex");
    assign("menuBarTempSensorIndex", 99);
    EXPECT_EQ(temperature.currentIndex(), -1);
    EXPECT_EQ(temperature.placeholderText(), QStringLiteral("Not available"));
    EXPECT_EQ(valueOf("menuBarTempSensorIndex"), Value(99)) << "the sensor may come back";
    QComboBox& fan = popUp("menuBarFanSensorIndex");
    assign("menuBarFanSensorIndex", -1);
    EXPECT_EQ(fan.currentIndex(), -1);
    EXPECT_EQ(fan.placeholderText(), QStringLiteral("No fan"));
}

TEST_F(MenuBarPaneTest, AnotherMenuIsTakenOverWithTheSameIndex) {
    assign("menuBarTempSensorIndex", 5);
    PopUpButton::Menu menu = delegate().popUps().menuBarTempPopupButton->menu();
    menu.insert(menu.begin() + 3, PopUpItem{"New", {}});
    delegate().popUps().menuBarTempPopupButton->setMenu(menu);
    EXPECT_EQ(itemsOf(popUp("menuBarTempSensorIndex")),
              "Average Temperature\n-\nAverage CPU Temperature\nNew\nCPU Proximity \n-\nGPU Proximity \n");
    EXPECT_EQ(valueOf("menuBarTempSensorIndex"), Value(5));
    EXPECT_EQ(popUp("menuBarTempSensorIndex").currentIndex(), -1) << "a separator stands there now";
    menu.pop_back();
    menu.pop_back();
    menu.push_back({"Last", {}});
    delegate().popUps().menuBarTempPopupButton->setMenu(menu);
    EXPECT_EQ(popUp("menuBarTempSensorIndex").currentText(), QStringLiteral("Last"));
}

TEST_F(MenuBarPaneTest, TheSameMenuLeavesAnOpenOneAlone) {
    QComboBox& box = popUp("menuBarTempSensorIndex");
    const QSignalSpy rebuilt(box.model(), &QAbstractItemModel::rowsInserted);
    assign("checkDriveTemps", true);
    EXPECT_EQ(rebuilt.count(), 0);
}

TEST_F(MenuBarPaneTest, PreviewsTheTitleWithEverySetting) {
    EXPECT_EQ(preview(), "[icon] 40°C");
    assign("showFanInMenuBar", true);
    EXPECT_EQ(preview(), "[icon] 40°C / 1800 RPM");
    assign("useShorterTitles", true);
    EXPECT_EQ(preview(), "[icon] 40 1800");
    assign("tempUnit", 1);
    EXPECT_EQ(preview(), "[icon] 104 1800");
    settings.titlePlace = 2;
    EXPECT_EQ(preview(), "104");
    settings.titlePlace = 0;
    assign("showAppIcon", false);
    EXPECT_EQ(preview(), "104 1800");
    assign("showFanInMenuBar", false);
    assign("showTempInMenuBar", false);
    EXPECT_EQ(preview(), "[icon] ") << "an item is never empty";
}

TEST_F(MenuBarPaneTest, ThePreviewFollowsTheReadings) {
    EXPECT_EQ(preview(), "[icon] 40°C");
    application.machine.ioKit.smc.setTemperature("TC0P", 77);
    delegate().checkCycle().checkTimerFired();
    EXPECT_EQ(preview(), "[icon] 77°C");
}

TEST_F(MenuBarPaneTest, InsideTheIconThePreviewShowsTheFirstNumber) {
    settings.titlePlace = 2;
    assign("showFanInMenuBar", true);
    application.machine.ioKit.smc.setTemperature("TC0P", 0);
    delegate().checkCycle().checkTimerFired();
    EXPECT_EQ(preview(), "1800") << "of N/A / 1800 RPM";
    assign("showFanInMenuBar", false);
    EXPECT_EQ(preview(), "[icon] ");
}

TEST_F(MenuBarPaneTest, ThePreviewShowsTheSmallerFont) {
    preview();
    auto* const text = window.findChild<QLabel*>(QStringLiteral("titlePreviewText"));
    const double before = text->font().pointSizeF();
    assign("useSmallerMenuFont", true);
    preview();
    EXPECT_LT(text->font().pointSizeF(), before);
}

TEST_F(MenuBarPaneTest, APreviewThatIsNotSeenReadsNothing) {
    assign("showFanInMenuBar", true);
    assign("menuBarFanSensorIndex", 2);
    window.hide();
    application.machine.calls.clear();
    assign("useSmallerMenuFont", true);
    QApplication::processEvents();
    EXPECT_EQ(application.machine.takeCalls(),
              "read F0Ac\nstatusItem setAttributedTitle \"40°C / 1800 RPM\"\n")
        << "once, for the menu bar itself";
}

class MenuBarPaneInMenuOnlyModeTest : public PreferencesWindowFixture {};

TEST_F(MenuBarPaneInMenuOnlyModeTest, TheIconThatCannotBeSwitchedOffSaysWhy) {
    application.store("appMode", 1);
    start();
    auto& icon = control<QCheckBox>("showAppIcon");
    EXPECT_TRUE(icon.isEnabled());
    EXPECT_EQ(noteOf("showAppIconNote"), QString());
    click(control<QCheckBox>("showTempInMenuBar"));
    EXPECT_FALSE(icon.isEnabled());
    EXPECT_TRUE(icon.isChecked());
    EXPECT_EQ(noteOf("showAppIconNote"),
              QStringLiteral("Without readings beside it, the icon is the only way to reach Calorivo."));
    click(control<QCheckBox>("showFanInMenuBar"));
    EXPECT_TRUE(icon.isEnabled());
    EXPECT_EQ(noteOf("showAppIconNote"), QString());
}

}  // namespace
}  // namespace calorivo::test
