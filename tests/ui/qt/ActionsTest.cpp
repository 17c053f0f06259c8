#include "ui/qt/Actions.h"

#include "support/Application.h"
#include "ui/qt/Menus.h"

#include <gtest/gtest.h>

#include <QKeySequence>
#include <QMainWindow>
#include <QSet>
#include <QSignalSpy>
#include <QTest>

#include <string>

namespace calorivo::test {
namespace {

class ActionsTest : public testing::Test {
  protected:
    ActionsTest() { actions.attach(application.start()); }
    /// What the program does when the action is triggered.
    [[nodiscard]] std::string callsOf(QAction* action) {
        application.machine.calls.clear();
        action->trigger();
        return application.machine.takeCalls();
    }
    /// The menu's items, a line for each; separators as a dash, shortcuts behind a bar.
    [[nodiscard]] static std::string itemsOf(const QMenu& menu) {
        std::string text;
        for (const QAction* const action : menu.actions()) {
            text += action->isSeparator() ? "-" : action->text().toStdString();
            if (!action->shortcut().isEmpty()) text += " | " + action->shortcut().toString().toStdString();
            text += "\n";
        }
        return text;
    }

    Application application;
    Actions actions;
};

TEST_F(ActionsTest, LinksAndMailsGoToTheWorkspace) {
    EXPECT_EQ(callsOf(actions.help), "openURL https://example.org/support\n");
    EXPECT_EQ(callsOf(actions.rate), "openURL https://example.org/store/calorivo?at=affiliate\n");
    EXPECT_EQ(callsOf(actions.follow), "openURL https://example.org/social\n");
    EXPECT_EQ(callsOf(actions.moreApps), "openURL store://example.org/artist\n");
    EXPECT_EQ(callsOf(actions.newsletter), "openURL https://example.org/newsletter\n");
    EXPECT_EQ(callsOf(actions.feedback),
              "openURL mailto:support@example.org?subject=Feedback%20for%20Calorivo%203.1%20beta&body=%0A%0A"
              "-----------------%0A%0AModel:%20Model1,2%0AOS%20X:%20Fakix%207.5%20(build%209)\n");
}

TEST_F(ActionsTest, WindowsComeToTheFront) {
    EXPECT_EQ(callsOf(actions.showMainWindow), "activateIgnoringOtherApps\nwindow makeKeyAndOrderFront\n");
    EXPECT_EQ(callsOf(actions.preferences),
              "activateIgnoringOtherApps\nprefWindow center\nprefWindow makeKeyAndOrderFront\n");
}

TEST_F(ActionsTest, MaximumsAreReset) {
    const auto& cells = application.delegate().lists().sensorNameToCustomCellMap;
    EXPECT_EQ(cells.begin()->second.maxUsedValue(), 40.0F);
    actions.resetMaximums->trigger();
    EXPECT_EQ(cells.begin()->second.maxUsedValue(), 0.0F);
}

TEST_F(ActionsTest, TheUnitIsChosenAndFollowed) {
    EXPECT_TRUE(actions.celsius->isChecked());
    actions.fahrenheit->trigger();
    EXPECT_EQ(application.delegate().preferences().tempUnit.get(), 1);
    EXPECT_TRUE(actions.fahrenheit->isChecked());
    EXPECT_FALSE(actions.celsius->isChecked());
    actions.celsius->trigger();
    EXPECT_EQ(application.delegate().preferences().tempUnit.get(), 0);
    application.delegate().keys().setValueForKey(1, "tempUnit");
    EXPECT_TRUE(actions.fahrenheit->isChecked());
    application.delegate().keys().setValueForKey(0, "tempUnit");
    EXPECT_TRUE(actions.celsius->isChecked());
}

TEST_F(ActionsTest, ChoosingTheUnitThatThereIsDoesNothing) { EXPECT_EQ(callsOf(actions.celsius), ""); }

TEST_F(ActionsTest, TheLogCanBeOpenedWhileThereIsOne) {
    EXPECT_TRUE(actions.openLog->isEnabled());
    EXPECT_TRUE(actions.revealLog->isEnabled());
    application.delegate().keys().setValueForKey("", "logFileURL");
    EXPECT_FALSE(actions.openLog->isEnabled());
    EXPECT_FALSE(actions.revealLog->isEnabled());
}

TEST_F(ActionsTest, EveryActionIsNamedAsItsMember) {
    const std::vector<std::pair<QAction*, const char*>> members{{actions.showMainWindow, "showMainWindow"},
                                                                {actions.preferences, "preferences"},
                                                                {actions.resetMaximums, "resetMaximums"},
                                                                {actions.copyRows, "copyRows"},
                                                                {actions.findSensor, "findSensor"},
                                                                {actions.showDetails, "showDetails"},
                                                                {actions.celsius, "celsius"},
                                                                {actions.fahrenheit, "fahrenheit"},
                                                                {actions.closeWindow, "closeWindow"},
                                                                {actions.quit, "quit"},
                                                                {actions.statusQuit, "statusQuit"},
                                                                {actions.about, "about"},
                                                                {actions.statusAbout, "statusAbout"},
                                                                {actions.help, "help"},
                                                                {actions.feedback, "feedback"},
                                                                {actions.rate, "rate"},
                                                                {actions.follow, "follow"},
                                                                {actions.moreApps, "moreApps"},
                                                                {actions.newsletter, "newsletter"},
                                                                {actions.openLog, "openLog"},
                                                                {actions.revealLog, "revealLog"}};
    EXPECT_EQ(actions.findChildren<QAction*>().size(), static_cast<qsizetype>(members.size()));
    for (const auto& [action, name] : members) {
        EXPECT_EQ(action->objectName(), QLatin1String(name));
        EXPECT_EQ(action->parent(), &actions) << name;
    }
    EXPECT_TRUE(actions.showDetails->isCheckable());
}

TEST_F(ActionsTest, TheMenuBarHasEveryCommand) {
    QMainWindow window;
    const QMenuBar* const bar = makeMenuBar(actions, &window);
    std::string text;
    for (const QAction* const title : bar->actions())
        text += "[" + title->text().toStdString() + "]\n" + itemsOf(*title->menu());
    EXPECT_EQ(text,
              "[&File]\n&Open Log File\nShow Log File in &Folder\n-\n&Close Window | Ctrl+W\n&Quit | Ctrl+Q\n"
              "[&Edit]\n&Copy | Ctrl+C\n&Find Sensor… | Ctrl+F\n-\n&Reset Maximums | Ctrl+R\n-\n"
              "&Preferences… | Ctrl+,\n"
              "[&View]\n&Celsius\n&Fahrenheit\n-\nShow &Details | Ctrl+I\n"
              "[&Help]\nCalorivo &Help | F1\n-\n&Send Feedback…\n&Rate Calorivo\n&Follow the Makers\n"
              "Subscribe to the &Newsletter\n&More from the Makers\n-\n&About Calorivo\n");
}

TEST_F(ActionsTest, TextsMnemonicsAndShortcutsOfAMenuAreTheirOwn) {
    QMainWindow window;
    const QMenuBar* const bar = makeMenuBar(actions, &window);
    QSet<QString> shortcuts;
    QSet<QString> texts;
    for (const QAction* const title : bar->actions()) {
        QSet<QString> mnemonics;
        for (const QAction* const action : title->menu()->actions()) {
            if (action->isSeparator()) continue;
            const QString mnemonic = QKeySequence::mnemonic(action->text()).toString();
            EXPECT_FALSE(mnemonic.isEmpty() || mnemonics.contains(mnemonic)) << action->text().toStdString();
            mnemonics.insert(mnemonic);
            EXPECT_FALSE(texts.contains(action->text())) << action->text().toStdString();
            texts.insert(action->text());
            const QString shortcut = action->shortcut().toString();
            EXPECT_TRUE(shortcut.isEmpty() || !shortcuts.contains(shortcut)) << action->text().toStdString();
            shortcuts.insert(shortcut);
        }
    }
}

TEST_F(ActionsTest, TheStatusMenuHasItsName) {
    const auto menu = makeStatusMenu(actions);
    EXPECT_EQ(menu->objectName(), QStringLiteral("statusMenu"));
    actions.setStatusAboutMenuItemTitle("Calorivo 3.1");
    EXPECT_EQ(itemsOf(*menu),
              "Calorivo 3.1\n-\nShow &Main Window\n&Preferences… | Ctrl+,\n-\n&Quit Calorivo | Ctrl+Q\n");
}

TEST_F(ActionsTest, TheAboutItemsTitleIsReadAsItStands) {
    actions.setStatusAboutMenuItemTitle("Calorivo 3 & 4");
    EXPECT_EQ(actions.statusAbout->text(), QStringLiteral("Calorivo 3 && 4"));
}

TEST_F(ActionsTest, TheQuitItemsShortcutIsSetAndRemoved) {
    actions.setQuitMenuItemKeyEquivalent("");
    EXPECT_TRUE(actions.statusQuit->shortcut().isEmpty());
    EXPECT_EQ(actions.quit->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_Q)) << "the window's own stays";
    actions.setQuitMenuItemKeyEquivalent("k");
    EXPECT_EQ(actions.statusQuit->shortcut(), QKeySequence(Qt::CTRL | Qt::Key_K));
}

TEST_F(ActionsTest, OneShortcutInTwoMenusIsNotAmbiguous) {
    QMainWindow window;
    window.setMenuBar(makeMenuBar(actions, &window));
    const auto menu = makeStatusMenu(actions);
    const QSignalSpy quit(actions.quit, &QAction::triggered);
    window.show();
    window.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_Q, Qt::ControlModifier);
    EXPECT_EQ(quit.count(), 1);
}

}  // namespace
}  // namespace calorivo::test
