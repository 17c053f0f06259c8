#include "platform/qt/DBusMenuExporter.h"

#include "SignalRecorder.h"
#include "support/QtPrivateBus.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QDBusArgument>
#include <QDBusVariant>
#include <QMenu>
#include <QSignalSpy>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace calorivo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const QString menuName = QStringLiteral("com.canonical.dbusmenu");
const QString invalidArgs = QStringLiteral("org.freedesktop.DBus.Error.InvalidArgs");

QString text(const char* utf8) { return QString::fromUtf8(utf8); }

/// A layout as one line: "0{children-display=submenu}[1{label=Open} 2{type=separator}]".
std::string printed(const MenuLayout& layout) {
    std::string line = std::to_string(layout.id) + "{";
    for (auto property = layout.properties.constBegin(); property != layout.properties.constEnd();
         ++property) {
        if (line.back() != '{') line += ' ';
        line += property.key().toStdString() + "=" + property.value().toString().toStdString();
    }
    line += "}";
    if (layout.children.isEmpty()) return line;
    line += "[";
    for (const QVariant& child : layout.children) {
        if (line.back() != '[') line += ' ';
        line += printed(qdbus_cast<MenuLayout>(
            child.canConvert<QDBusVariant>() ? child.value<QDBusVariant>().variant() : child));
    }
    return line + "]";
}

class DBusMenuExporterTest : public testing::Test {
  protected:
    DBusMenuExporterTest() {
        menu_->addSeparator();
        units_->addAction(text("°C"))->setCheckable(true);
        menu_->addAction(text("Quit"))->setEnabled(false);
        exporter_.setMenu(menu_.get());
        settle(panel_);
        recorder_.take();
    }

    QDBusMessage call(const char* method, const QVariantList& arguments = {}) {
        return ask(panel_, server_.baseService(), exporter_.path(), menuName, QString::fromLatin1(method),
                   arguments);
    }
    std::string layout(int parent = 0, int depth = -1, const QStringList& names = {}) {
        const QDBusMessage answer = call("GetLayout", {parent, depth, names});
        if (answer.type() != QDBusMessage::ReplyMessage) return answer.errorMessage().toStdString();
        return printed(qdbus_cast<MenuLayout>(answer.arguments().at(1)));
    }
    uint revision() { return call("GetLayout", {0, 0, QStringList()}).arguments().at(0).toUInt(); }
    QDBusMessage event(int id, const char* name) {
        return call("Event", {id, QString::fromLatin1(name), QVariant::fromValue(QDBusVariant(0)), 0U});
    }
    std::vector<std::string> signalsAfter(const std::function<void()>& change) {
        change();
        settle(panel_);
        return recorder_.takeNames();
    }
    static MenuEvent clicked(int id) { return {id, text("clicked"), QDBusVariant(0), 0}; }

    PrivateBus bus_;
    QDBusConnection server_ = bus_.connect(QStringLiteral("server"));
    QDBusConnection panel_ = bus_.connect(QStringLiteral("panel"));
    std::unique_ptr<QMenu> menu_ = std::make_unique<QMenu>();
    QAction* open_ = menu_->addAction(text("&Open_it"));
    QMenu* units_ = menu_->addMenu(text("Units"));
    DBusMenuExporter exporter_{server_};
    SignalRecorder recorder_{panel_, server_.baseService(), exporter_.path(), menuName};
};

TEST_F(DBusMenuExporterTest, GivesTheWholeLayout) {
    EXPECT_EQ(
        layout(),
        "0{children-display=submenu}[1{label=_Open__it} 2{children-display=submenu label=Units}"
        "[3{label=°C toggle-state=0 toggle-type=checkmark}] 4{type=separator} 5{enabled=false label=Quit}]");
}

TEST_F(DBusMenuExporterTest, GivesAsManyLevelsAndPropertiesAsAskedFor) {
    EXPECT_EQ(layout(0, 1, {text("label"), text("type")}),
              "0{}[1{label=_Open__it} 2{label=Units} 4{type=separator} 5{label=Quit}]");
    EXPECT_EQ(layout(2, -1, {text("label")}), "2{label=Units}[3{label=°C}]");
    EXPECT_EQ(layout(0, 0), "0{children-display=submenu}");
    EXPECT_EQ(layout(99), "No menu entry 99");
    EXPECT_EQ(layout(-1), "No menu entry -1");
}

TEST_F(DBusMenuExporterTest, GivesPropertiesOfManyEntries) {
    const auto ids = [](QList<int> list) { return QVariant::fromValue(list); };
    const QDBusMessage some = call("GetGroupProperties", {ids({1, 99, 5}), QStringList{text("enabled")}});
    EXPECT_EQ(qdbus_cast<QList<MenuEntryProperties>>(some.arguments().value(0)),
              (QList<MenuEntryProperties>{{1, {}}, {5, {{text("enabled"), false}}}}));
    const QDBusMessage all = call("GetGroupProperties", {ids({}), QStringList{text("type")}});
    EXPECT_EQ(qdbus_cast<QList<MenuEntryProperties>>(all.arguments().value(0)),
              (QList<MenuEntryProperties>{
                  {0, {}}, {1, {}}, {2, {}}, {3, {}}, {4, {{text("type"), text("separator")}}}, {5, {}}}));
}

TEST_F(DBusMenuExporterTest, GivesAPropertyOrItsDefault) {
    const auto property = [this](int id, const char* name) {
        const QDBusMessage answer = call("GetProperty", {id, text(name)});
        return answer.type() == QDBusMessage::ReplyMessage
                   ? answer.arguments().at(0).value<QDBusVariant>().variant()
                   : QVariant(answer.errorName());
    };
    EXPECT_EQ(property(5, "enabled"), QVariant(false));
    EXPECT_EQ(property(1, "enabled"), QVariant(true));
    EXPECT_EQ(property(1, "toggle-state"), QVariant(-1));
    EXPECT_EQ(property(1, "price"), QVariant(invalidArgs));
    EXPECT_EQ(property(99, "enabled"), QVariant(invalidArgs));
}

TEST_F(DBusMenuExporterTest, TriggersTheClickedEntryAfterItsAnswer) {
    bool isAnswered = false;
    int triggered = 0;
    QObject::connect(open_, &QAction::triggered, open_, [&] {
        ++triggered;
        // An action that waits, as an alert does: the answer comes all the same.
        EXPECT_TRUE(QTest::qWaitFor([&isAnswered] { return isAnswered; }));
    });
    QDBusMessage message =
        QDBusMessage::createMethodCall(server_.baseService(), exporter_.path(), menuName, text("Event"));
    message.setArguments({1, text("clicked"), QVariant::fromValue(QDBusVariant(0)), 0U});
    const QDBusPendingCall pending = panel_.asyncCall(message);
    QDBusPendingCallWatcher watcher(pending);
    QObject::connect(&watcher, &QDBusPendingCallWatcher::finished, open_,
                     [&isAnswered] { isAnswered = true; });
    EXPECT_TRUE(QTest::qWaitFor([&triggered] { return triggered == 1; }));
    EXPECT_FALSE(pending.isError());
}

TEST_F(DBusMenuExporterTest, TriggersOnlyWhatCanBeChosen) {
    QSignalSpy quit(menu_->actions().last(), &QAction::triggered);
    QSignalSpy units(units_->menuAction(), &QAction::triggered);
    QSignalSpy celsius(units_->actions().first(), &QAction::triggered);
    for (const int id : {0, 2, 3, 4, 5}) EXPECT_EQ(event(id, "clicked").errorName(), QString()) << id;
    for (const char* const name : {"hovered", "opened", "closed", "x-other", ""})
        EXPECT_EQ(event(1, name).errorName(), QString()) << name;
    settle(panel_);
    EXPECT_EQ(quit.size(), 0) << "not enabled";
    EXPECT_EQ(units.size(), 0) << "a menu of its own";
    EXPECT_EQ(celsius.size(), 1);
    EXPECT_TRUE(units_->actions().first()->isChecked());
    EXPECT_EQ(event(99, "clicked").errorName(), invalidArgs);
}

TEST_F(DBusMenuExporterTest, DropsAClickOnAnActionThatIsGoneByThen) {
    auto doomed = std::make_unique<QAction>(text("Doomed"));
    menu_->addAction(doomed.get());
    settle(panel_);
    QObject::connect(open_, &QAction::triggered, open_, [&doomed] { doomed.reset(); });
    call("EventGroup", {QVariant::fromValue(QList<MenuEvent>{clicked(1), clicked(6)})});
    settle(panel_);
    EXPECT_EQ(doomed, nullptr);
    EXPECT_EQ(layout(6), "No menu entry 6");
}

TEST_F(DBusMenuExporterTest, TakesManyEventsAtOnce) {
    QSignalSpy open(open_, &QAction::triggered);
    const auto group = [this](QList<MenuEvent> events) {
        return call("EventGroup", {QVariant::fromValue(events)});
    };
    const QDBusMessage some = group({clicked(98), clicked(1), clicked(99), clicked(1)});
    EXPECT_EQ(qdbus_cast<QList<int>>(some.arguments().value(0)), (QList<int>{98, 99}));
    settle(panel_);
    EXPECT_EQ(open.size(), 2);
    EXPECT_EQ(group({clicked(98)}).errorName(), invalidArgs);
    EXPECT_EQ(group({}).errorName(), QString());
}

TEST_F(DBusMenuExporterTest, LetsAMenuFillItselfBeforeItIsShown) {
    QObject::connect(units_, &QMenu::aboutToShow, units_, [this] {
        if (units_->actions().size() == 1) units_->addAction(text("°F"));
    });
    EXPECT_EQ(call("AboutToShow", {0}).arguments(), QVariantList{false});
    EXPECT_EQ(call("AboutToShow", {2}).arguments(), QVariantList{true});
    EXPECT_EQ(layout(2, -1, {text("label")}), "2{label=Units}[3{label=°C} 6{label=°F}]");
    EXPECT_EQ(call("AboutToShow", {2}).arguments(), QVariantList{false});
    EXPECT_EQ(call("AboutToShow", {99}).errorName(), invalidArgs);

    delete units_->actions().last();
    const QDBusMessage group = call("AboutToShowGroup", {QVariant::fromValue(QList<int>{0, 2, 99})});
    ASSERT_EQ(group.arguments().size(), 2) << group.errorMessage().toStdString();
    EXPECT_EQ(qdbus_cast<QList<int>>(group.arguments().at(0)), QList<int>{2});
    EXPECT_EQ(qdbus_cast<QList<int>>(group.arguments().at(1)), QList<int>{99});
}

TEST_F(DBusMenuExporterTest, TellsAChangeOnceInAPassOfTheEventLoop) {
    const auto changeProperties = [this] {
        for (int i = 0; i < 100; ++i) open_->setText(QString::number(i));
        units_->actions().first()->setChecked(true);
    };
    EXPECT_THAT(signalsAfter(changeProperties), ElementsAre("ItemsPropertiesUpdated"));
    const uint before = revision();
    const auto changeLayout = [this] {
        for (int i = 0; i < 10; ++i) units_->addAction(QString::number(i));
    };
    changeLayout();
    settle(panel_);
    const std::vector<QDBusMessage> messages = recorder_.take();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0].member(), QStringLiteral("LayoutUpdated"));
    EXPECT_EQ(messages[0].arguments(), (QVariantList{before + 1, 2}));
    EXPECT_EQ(revision(), before + 1);
}

TEST_F(DBusMenuExporterTest, TellsNothingWhenAllIsAsBefore) {
    const auto thereAndBack = [this] {
        open_->setText(text("Other"));
        open_->setText(text("&Open_it"));
        open_->setData(5);
        menu_->addAction(menu_->actions().last());
    };
    EXPECT_THAT(signalsAfter(thereAndBack), IsEmpty());
}

TEST_F(DBusMenuExporterTest, AnswersWithWhatJustChanged) {
    menu_->addAction(text("New"));
    EXPECT_EQ(layout(6), "6{label=New}");
}

TEST_F(DBusMenuExporterTest, WatchesMenusThatCameLater) {
    QMenu* const late = menu_->addMenu(text("Late"));
    settle(panel_);
    recorder_.take();
    EXPECT_THAT(signalsAfter([late] { late->addAction(text("Entry")); }), ElementsAre("LayoutUpdated"));
}

TEST_F(DBusMenuExporterTest, ShowsAnEmptyMenuAfterTheMenusEnd) {
    EXPECT_THAT(signalsAfter([this] { menu_.reset(); }), ElementsAre("LayoutUpdated"));
    EXPECT_EQ(layout(), "0{children-display=submenu}");
    EXPECT_EQ(event(1, "clicked").errorName(), invalidArgs);
}

TEST_F(DBusMenuExporterTest, RefusesCallsOfOtherTypes) {
    EXPECT_EQ(call("GetLayout").errorName(), invalidArgs);
    EXPECT_EQ(call("GetLayout", {text("0"), -1, QStringList()}).errorName(), invalidArgs);
    EXPECT_EQ(call("Event", {1, text("clicked"), 0, 0U}).errorName(), invalidArgs);
    EXPECT_EQ(call("EventGroup", {QStringList{text("clicked")}}).errorName(), invalidArgs);
    EXPECT_EQ(call("AboutToShow", {1U}).errorName(), invalidArgs);
    EXPECT_EQ(layout(1), "1{label=_Open__it}") << "and is alive";
}

TEST_F(DBusMenuExporterTest, TellsItsVersionAndDirection) {
    const QDBusMessage answer =
        ask(panel_, server_.baseService(), exporter_.path(),
            QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("GetAll"), {menuName});
    EXPECT_EQ(qdbus_cast<QVariantMap>(answer.arguments().value(0)),
              (QVariantMap{{text("Version"), 3U},
                           {text("Status"), text("normal")},
                           {text("TextDirection"), text("ltr")},
                           {text("IconThemePath"), QStringList()}}));
}

TEST(DBusMenuExporter, DoesNothingWithoutABus) {
    DBusMenuExporter exporter(QDBusConnection(QStringLiteral("no such connection")));
    QMenu menu;
    exporter.setMenu(&menu);
    menu.addAction(text("Open"));
    QCoreApplication::processEvents();
}

}  // namespace
}  // namespace calorivo
