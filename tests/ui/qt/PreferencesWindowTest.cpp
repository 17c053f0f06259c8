#include "PreferencesWindowFixture.h"

#include "app/PreferenceTable.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <QToolBar>
#include <QToolButton>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

// How the preferences window as a whole behaves: every key has its control, panes, closing.

namespace calorivo::test {
namespace {

class PreferencesWindowTest : public PreferencesWindowFixture {
  protected:
    void SetUp() override { start(); }
    [[nodiscard]] QToolButton& toolBarButton(const char* identifier) {
        auto* const toolBar = window.findChild<QToolBar*>(QStringLiteral("preferencesToolbar"));
        auto* const action = window.findChild<QAction*>(QLatin1String(identifier));
        return *qobject_cast<QToolButton*>(toolBar->widgetForAction(action));
    }
    /// The pane that is shown, and the item that is checked.
    [[nodiscard]] std::string shownPane() {
        std::string text = std::to_string(panes().currentIndex());
        for (const char* const identifier : {"Temperature", "MenuBar", "Alerts", "Log", "General"})
            if (toolBarButton(identifier).isChecked()) text += std::string(" ") + identifier;
        return text;
    }
};

TEST_F(PreferencesWindowTest, HasAControlForEveryKeyThatTheUserMaySet) {
    std::vector<std::string_view> withoutControl;
    for (const PreferenceKey& row : preferenceTable)
        if (window.findChild<QObject*>(QString::fromStdString(std::string(row.key))) == nullptr)
            withoutControl.push_back(row.key);
    EXPECT_EQ(withoutControl, (std::vector<std::string_view>{"isFirstLaunch", "sensorNameToCustomCellMap",
                                                             "logFileBookmarkData", "hideVantixView"}));
}

TEST_F(PreferencesWindowTest, EachCheckBoxAssignsItsKey) {
    for (const char* const key :
         {"showTempInMenuBar", "showTemp2InMenuBar", "showFanInMenuBar", "launchOnLogin", "hideOnLaunch",
          "checkDriveTemps", "useSmallerMenuFont", "showAppIcon", "useShorterTitles", "showAlerts",
          "useStickyAlerts", "logToFile", "logTemperatures", "logFanSpeeds", "logAlerts", "useSameLogFile"}) {
        SCOPED_TRACE(key);
        auto& box = control<QCheckBox>(key);
        const bool before = valueOf(key).boolValue();
        EXPECT_EQ(box.isChecked(), before);
        click(box);
        EXPECT_EQ(valueOf(key), Value(!before));
        EXPECT_EQ(box.isChecked(), !before);
        QTest::keyClick(&box, Qt::Key_Space);
        EXPECT_EQ(valueOf(key), Value(before));
        assign(key, !before);
        EXPECT_EQ(box.isChecked(), !before);
    }
}

TEST_F(PreferencesWindowTest, AnAlertOnTheLoginItemLeavesTheCheckBoxAsTheKeySays) {
    application.machine.serviceManagement.fails = true;
    auto& box = control<QCheckBox>("launchOnLogin");
    click(box);
    EXPECT_EQ(application.machine.takeCalls(),
              "SMLoginItemSetEnabled org.example.calorivo.login-helper YES\n"
              "runModal Calorivo was not able to add itself to the login item list.\n");
    EXPECT_TRUE(valueOf("launchOnLogin").boolValue());
    EXPECT_TRUE(box.isChecked());
}

TEST_F(PreferencesWindowTest, TheUnitIsOneOfTwo) {
    auto& celsius = control<QRadioButton>("tempUnit0");
    auto& fahrenheit = control<QRadioButton>("tempUnit1");
    EXPECT_TRUE(celsius.isChecked());
    click(fahrenheit);
    EXPECT_EQ(valueOf("tempUnit"), Value(1));
    QTest::keyClick(&fahrenheit, Qt::Key_Up);
    EXPECT_EQ(valueOf("tempUnit"), Value(0));
    assign("tempUnit", 1);
    EXPECT_TRUE(fahrenheit.isChecked());
    assign("tempUnit", 0);
    EXPECT_TRUE(celsius.isChecked());
    assign("tempUnit", 7);
    EXPECT_TRUE(fahrenheit.isChecked());
}

TEST_F(PreferencesWindowTest, ChoosingTheUnitThatThereIsDoesNothing) {
    click(control<QRadioButton>("tempUnit0"));
    EXPECT_EQ(application.machine.takeCalls(), "");
}

TEST_F(PreferencesWindowTest, TheIntervalIsTypedOrDragged) {
    auto& seconds = control<QSpinBox>("updateIntervalSecs");
    auto& slider = control<QSlider>("updateIntervalSecsSlider");
    EXPECT_EQ(seconds.value(), 7);
    EXPECT_EQ(slider.value(), 7);
    seconds.setFocus();
    seconds.selectAll();
    QTest::keyClicks(&seconds, QStringLiteral("45"));
    EXPECT_EQ(valueOf("updateIntervalSecs"), Value(7)) << "half a number is none";
    QTest::keyClick(&seconds, Qt::Key_Return);
    EXPECT_EQ(valueOf("updateIntervalSecs"), Value(45));
    EXPECT_EQ(slider.value(), 45);
    QTest::keyClick(&slider, Qt::Key_Left);
    EXPECT_EQ(valueOf("updateIntervalSecs"), Value(44));
    EXPECT_EQ(seconds.value(), 44);
    assign("updateIntervalSecs", 3);
    EXPECT_EQ(seconds.value(), 3);
    EXPECT_EQ(slider.value(), 3);
}

TEST_F(PreferencesWindowTest, AnIntervalBeyondTheSliderIsKept) {
    assign("updateIntervalSecs", 600);
    EXPECT_EQ(control<QSpinBox>("updateIntervalSecs").value(), 600);
    EXPECT_EQ(control<QSlider>("updateIntervalSecsSlider").value(), 60);
    EXPECT_EQ(valueOf("updateIntervalSecs"), Value(600));
}

TEST_F(PreferencesWindowTest, OnlyTheIntervalAtWhichTheKnobIsLetGoCounts) {
    auto& seconds = control<QSpinBox>("updateIntervalSecs");
    auto& slider = control<QSlider>("updateIntervalSecsSlider");
    slider.setSliderDown(true);
    slider.setSliderPosition(20);
    slider.setSliderPosition(30);
    EXPECT_EQ(seconds.value(), 30);
    EXPECT_EQ(valueOf("updateIntervalSecs"), Value(7));
    application.machine.calls.clear();
    slider.setSliderDown(false);
    EXPECT_EQ(valueOf("updateIntervalSecs"), Value(30));
    const auto& calls = application.machine.calls;
    EXPECT_EQ(std::count(calls.begin(), calls.end(), "scheduleTimer 30 s repeating"), 1);
}

TEST_F(PreferencesWindowTest, MenuOnlyModeAlsoStartsAtLoginAndSaysSo) {
    click(control<QRadioButton>("appMode1"));
    EXPECT_EQ(valueOf("appMode"), Value(1));
    EXPECT_EQ(application.machine.takeCalls(),
              "SMLoginItemSetEnabled org.example.calorivo.login-helper YES\n"
              "SMLoginItemSetEnabled org.example.calorivo.login-helper YES\n"
              "runModal Menu Only Mode\n");
    EXPECT_TRUE(control<QCheckBox>("launchOnLogin").isChecked());
    EXPECT_TRUE(control<QCheckBox>("hideOnLaunch").isChecked());
    click(control<QRadioButton>("appMode1"));
    EXPECT_EQ(application.machine.takeCalls(), "") << "the mode is that already";
    QTest::keyClick(&control<QRadioButton>("appMode1"), Qt::Key_Up);
    EXPECT_EQ(application.machine.takeCalls(), "runModal Normal Mode\n");
    EXPECT_EQ(valueOf("appMode"), Value(0));
    assign("appMode", 1);
    EXPECT_TRUE(control<QRadioButton>("appMode1").isChecked());
}

TEST_F(PreferencesWindowTest, TheDesktopsOwnSettingsAreKeptBesideTheKeys) {
    auto& place = control<QComboBox>("titlePlace");
    QTest::keyClick(&place, Qt::Key_End);
    EXPECT_EQ(settings.titlePlace.get(), 2);
    settings.titlePlace = 1;
    EXPECT_EQ(place.currentIndex(), 1);
    auto& scheme = control<QComboBox>("colorScheme");
    QTest::keyClick(&scheme, Qt::Key_Down);
    EXPECT_EQ(settings.colorScheme.get(), 1);
    settings.colorScheme = 2;
    EXPECT_EQ(scheme.currentIndex(), 2);
}

TEST_F(PreferencesWindowTest, ResettingTheMaximumsClearsThem) {
    const auto& cells = delegate().lists().sensorNameToCustomCellMap;
    EXPECT_EQ(cells.begin()->second.maxUsedValue(), 40.0F);
    click(control<QPushButton>("resetMaximums"));
    EXPECT_EQ(cells.begin()->second.maxUsedValue(), 0.0F);
}

TEST_F(PreferencesWindowTest, OpensOnTheTemperatures) { EXPECT_EQ(shownPane(), "0 Temperature"); }

TEST_F(PreferencesWindowTest, TheToolBarChoosesThePane) {
    click(toolBarButton("MenuBar"));
    EXPECT_EQ(shownPane(), "1 MenuBar");
    click(toolBarButton("Alerts"));
    EXPECT_EQ(shownPane(), "2 Alerts");
    click(toolBarButton("Log"));
    EXPECT_EQ(shownPane(), "3 Log");
    QTest::keyClick(&toolBarButton("General"), Qt::Key_Space);
    EXPECT_EQ(shownPane(), "4 General");
    click(toolBarButton("General"));
    EXPECT_EQ(shownPane(), "4 General");
}

TEST_F(PreferencesWindowTest, ThePaneIsChosenByIdentifierAndByIndex) {
    window.setSelectedItemIdentifier("Log");
    EXPECT_EQ(shownPane(), "3 Log");
    window.setSelectedItemIdentifier("Logs");
    EXPECT_EQ(shownPane(), "3 Log");
    window.selectTabViewItemAtIndex(2);
    EXPECT_EQ(shownPane(), "2 Alerts");
    window.selectTabViewItemAtIndex(5);
    window.selectTabViewItemAtIndex(-1);
    EXPECT_EQ(shownPane(), "2 Alerts");
}

TEST_F(PreferencesWindowTest, TheKeyboardGoesToTheNextPaneAndStopsAtTheLast) {
    for (int count = 0; count < 2; ++count) QTest::keyClick(&window, Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(shownPane(), "2 Alerts");
    for (int count = 0; count < 3; ++count) QTest::keyClick(&window, Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(shownPane(), "4 General");
    for (int count = 0; count < 6; ++count) QTest::keyClick(&window, Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(shownPane(), "0 Temperature");
}

TEST_F(PreferencesWindowTest, TheKeyboardGoesToThePanesFirstControlUnlessItWalksAlongTheToolBar) {
    EXPECT_EQ(window.focusWidget()->objectName(), QStringLiteral("tempUnit0"));
    QTest::keyClick(&window, Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(window.focusWidget()->objectName(), QStringLiteral("showTempInMenuBar"));
    toolBarButton("Log").setFocus();
    QTest::keyClick(&toolBarButton("Log"), Qt::Key_Space);
    EXPECT_EQ(window.focusWidget(), &toolBarButton("Log"));
}

TEST_F(PreferencesWindowTest, DoesNotChangeItsSizeWithThePane) {
    const QSize size = window.size();
    for (int index = 0; index < panes().count(); ++index) {
        window.selectTabViewItemAtIndex(index);
        QTest::qWait(0);
        EXPECT_EQ(window.size(), size);
    }
}

TEST_F(PreferencesWindowTest, CannotBeSmallerThanItsContents) {
    window.resize(10, 10);
    QTest::qWait(0);
    EXPECT_GE(panes().width(), panes().minimumSizeHint().width());
    EXPECT_GE(panes().height(), panes().minimumSizeHint().height());
}

TEST_F(PreferencesWindowTest, EscapeAndControlWCloseIt) {
    const QSignalSpy closed(&window, &PreferencesWindow::closed);
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(closed.count(), 1);
    window.show();
    static_cast<void>(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(closed.count(), 2);
}

TEST_F(PreferencesWindowTest, TakesTheNumberThatIsBeingTypedBeforeItSaysThatItClosed) {
    auto& seconds = control<QSpinBox>("updateIntervalSecs");
    seconds.selectAll();
    QTest::keyClicks(&seconds, QStringLiteral("33"));
    Value atClose;
    QObject::connect(&window, &PreferencesWindow::closed, &window,
                     [&] { atClose = valueOf("updateIntervalSecs"); });
    window.close();
    EXPECT_EQ(atClose, Value(33));
}

}  // namespace
}  // namespace calorivo::test
