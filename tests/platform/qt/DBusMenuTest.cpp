#include "platform/qt/DBusMenuProperties.h"
#include "platform/qt/DBusMenuTree.h"

#include <gtest/gtest.h>

#include <QAction>
#include <QActionGroup>
#include <QIcon>
#include <QKeySequence>
#include <QMenu>

#include <memory>
#include <utility>

namespace calorivo {
namespace {

QString text(const char* utf8) { return QString::fromUtf8(utf8); }

TEST(DBusMenuProperties, MarksTheAccessKeyAsTheProtocolDoes) {
    const std::pair<const char*, const char*> rows[] = {
        {"Quit", "Quit"},
        {"&Quit", "_Quit"},
        {"Save &As", "Save _As"},
        {"R&&D", "R&D"},
        {"TC0P_1", "TC0P__1"},
        {"&a_b && &c", "_a__b & c"},
        {"Quit\tCtrl+Q", "Quit"},
        {"&", ""},
        {"45°C / &Fan", "45°C / _Fan"},
        {"", ""},
    };
    for (const auto& [label, expected] : rows) EXPECT_EQ(menuLabelOf(text(label)), text(expected)) << label;
}

TEST(DBusMenuProperties, NamesTheKeysOfAShortcut) {
    const std::pair<const char*, MenuShortcut> rows[] = {
        {"", {}},
        {"Ctrl+Q", {{text("Control"), text("q")}}},
        {"Ctrl+Alt+Shift+Meta+Del",
         {{text("Control"), text("Alt"), text("Shift"), text("Super"), text("Delete")}}},
        {"F5", {{text("F5")}}},
        {"Ctrl++", {{text("Control"), text("plus")}}},
        {"Ctrl+,", {{text("Control"), text("comma")}}},
        {"Ctrl+K, Ctrl+S", {{text("Control"), text("k")}, {text("Control"), text("s")}}},
    };
    for (const auto& [keys, expected] : rows)
        EXPECT_EQ(menuShortcutOf(QKeySequence(text(keys), QKeySequence::PortableText)), expected) << keys;
}

TEST(DBusMenuProperties, SendsOnlyWhatIsNotTheDefault) {
    QAction action(text("Open"));
    EXPECT_EQ(menuPropertiesOf(action), (QVariantMap{{text("label"), text("Open")}}));

    action.setEnabled(false);
    action.setCheckable(true);
    action.setShortcut(QKeySequence(text("F5")));
    EXPECT_EQ(menuPropertiesOf(action),
              (QVariantMap{{text("label"), text("Open")},
                           {text("enabled"), false},
                           {text("toggle-type"), text("checkmark")},
                           {text("toggle-state"), 0},
                           {text("shortcut"), QVariant::fromValue(MenuShortcut{{text("F5")}})}}));

    QActionGroup group(nullptr);
    group.addAction(&action);
    action.setChecked(true);
    action.setVisible(false);
    action.setShortcut({});
    EXPECT_EQ(menuPropertiesOf(action), (QVariantMap{{text("label"), text("Open")},
                                                     {text("enabled"), false},
                                                     {text("visible"), false},
                                                     {text("toggle-type"), text("radio")},
                                                     {text("toggle-state"), 1}}));

    QAction separator;
    separator.setSeparator(true);
    EXPECT_EQ(menuPropertiesOf(separator), (QVariantMap{{text("type"), text("separator")}}));
}

TEST(DBusMenuTree, IsAnEmptyMenuAtFirst) {
    const DBusMenuTree tree;
    EXPECT_EQ(tree.ids(), QList<int>{0});
    EXPECT_EQ(tree.properties(0), (QVariantMap{{text("children-display"), text("submenu")}}));
    EXPECT_FALSE(tree.contains(1));
    EXPECT_EQ(tree.action(1), nullptr);
}

class DBusMenuTreeTest : public testing::Test {
  protected:
    DBusMenuTreeTest() { tree_.read(&menu_); }

    QMenu menu_;
    QAction* open_ = menu_.addAction(text("Open"));       // 1
    QMenu* drives_ = menu_.addMenu(text("Drives"));       // 2
    QAction* first_ = drives_->addAction(text("First"));  // 3
    QAction* quit_ = menu_.addAction(text("Quit"));       // 4
    DBusMenuTree tree_;
};

TEST_F(DBusMenuTreeTest, NumbersTheEntriesInTheirOrder) {
    EXPECT_EQ(tree_.ids(), (QList<int>{0, 1, 2, 3, 4}));
    EXPECT_EQ(tree_.action(3), first_);
    EXPECT_EQ(tree_.menu(0), &menu_);
    EXPECT_EQ(tree_.menu(2), drives_);
    EXPECT_EQ(tree_.menu(4), nullptr);
    EXPECT_EQ(tree_.menus(), (QList<QMenu*>{&menu_, drives_}));
    EXPECT_EQ(tree_.layout(0, 0, {}).children.size(), 0);
    EXPECT_EQ(tree_.layout(0, 1, {}).children.at(1).value<MenuLayout>().children.size(), 0);
    EXPECT_EQ(tree_.layout(0, 2, {}).children.at(1).value<MenuLayout>().children.size(), 1);
    EXPECT_EQ(tree_.layout(0, -1, {}).children.at(1).value<MenuLayout>().children.size(), 1);
}

TEST_F(DBusMenuTreeTest, SeesNoChangeWhereThereIsNone) { EXPECT_TRUE(tree_.read(&menu_).isEmpty()); }

TEST_F(DBusMenuTreeTest, TellsPropertiesThatAreNewOrGone) {
    open_->setText(text("Close"));
    first_->setEnabled(false);
    const DBusMenuChanges off = tree_.read(&menu_);
    EXPECT_EQ(off.layoutParent, std::nullopt);
    EXPECT_EQ(off.updated, (QList<MenuEntryProperties>{{1, {{text("label"), text("Close")}}},
                                                       {3, {{text("enabled"), false}}}}));
    EXPECT_EQ(off.removed, QList<MenuEntryKeys>());
    first_->setEnabled(true);
    const DBusMenuChanges on = tree_.read(&menu_);
    EXPECT_EQ(on.updated, QList<MenuEntryProperties>());
    EXPECT_EQ(on.removed, (QList<MenuEntryKeys>{{3, {text("enabled")}}}));
}

TEST_F(DBusMenuTreeTest, TellsTheLowestEntryAboveAllThatMoved) {
    drives_->addAction(text("Second"));
    EXPECT_EQ(tree_.read(&menu_).layoutParent, std::optional(2));
    drives_->removeAction(first_);
    EXPECT_EQ(tree_.read(&menu_).layoutParent, std::optional(2));
    drives_->addAction(text("Third"));
    menu_.removeAction(quit_);
    EXPECT_EQ(tree_.read(&menu_).layoutParent, std::optional(0));
}

TEST_F(DBusMenuTreeTest, KeepsTheNumberOfAnActionThatMoves) {
    menu_.removeAction(quit_);
    menu_.insertAction(open_, quit_);
    tree_.read(&menu_);
    EXPECT_EQ(tree_.action(4), quit_);
    EXPECT_EQ(tree_.layout(0, 1, {}).children.at(0).value<MenuLayout>().id, 4);
}

TEST_F(DBusMenuTreeTest, NeverUsesANumberTwice) {
    int last = 4;
    for (int i = 0; i < 50; ++i) {
        const auto action = std::make_unique<QAction>(text("Often at the same address"));
        menu_.addAction(action.get());
        tree_.read(&menu_);
        EXPECT_EQ(tree_.ids().last(), last + 1);
        last = tree_.ids().last();
    }
}

TEST_F(DBusMenuTreeTest, SurvivesAMenuInsideItself) {
    drives_->addAction(drives_->menuAction());
    drives_->addAction(menu_.menuAction());
    tree_.read(&menu_);
    EXPECT_TRUE(tree_.contains(4));
}

TEST_F(DBusMenuTreeTest, ForgetsActionsThatDie) {
    delete quit_;
    EXPECT_EQ(tree_.action(4), nullptr);
    tree_.read(nullptr);
    EXPECT_EQ(tree_.ids(), QList<int>{0});
}

}  // namespace
}  // namespace calorivo
