#include "platform/qt/DBusNotifications.h"

#include "output/OverLimitAlerts.h"
#include "platform/qt/FakeNotificationServer.h"
#include "support/Machine.h"
#include "support/QtPrivateBus.h"
#include "support/RecordingPlatform.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QSignalSpy>

#include <chrono>
#include <memory>
#include <string>
#include <vector>

namespace calorivo {
namespace {

using test::FakeNotificationServer;
using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;

const QStringList everything{QStringLiteral("actions"), QStringLiteral("body"),
                             QStringLiteral("body-markup")};

struct RecordingDelegate final : GrowlApplicationBridgeDelegate {
    [[nodiscard]] GrowlDictionary registrationDictionaryForGrowl() const override {
        return {{"ApplicationName", "Example"}};
    }
    void growlNotificationWasClicked(const std::string& clickContext) override {
        clicks.push_back(clickContext);
    }
    std::vector<std::string> clicks;
};

struct DBusNotificationsTest : testing::Test {
    DBusNotificationsTest() {
        notifications->setGrowlDelegate(&delegate);
        QObject::connect(notifications.get(), &DBusNotifications::clicked, [this](const QString& token) {
            delegate.clicks.push_back("token " + token.toStdString());
        });
    }
    void startServer(const QStringList& capabilities = everything) {
        server =
            std::make_unique<FakeNotificationServer>(bus.connect(QStringLiteral("server")), capabilities);
    }
    void load() {
        notifications->load([this](const std::string& name, const std::string& version) {
            loaded.push_back(name + ' ' + version);
        });
    }
    /// With a server that answered.
    void start(const QStringList& capabilities = everything) {
        startServer(capabilities);
        load();
        ASSERT_TRUE(QTest::qWaitFor([this] { return notifications->isAvailable(); }));
    }
    void post(const GrowlNotification& notification = {.title = "Title", .clickContext = "context"}) {
        const auto before = server->shown.size();
        notifications->notify(notification);
        ASSERT_TRUE(
            QTest::qWaitFor([&] { return server->shown.size() > before && notifications->pending() == 0; }));
    }
    void settleAll() { settle(client); }

    PrivateBus bus;
    QDBusConnection client = bus.connect(QStringLiteral("client"));
    RecordingDelegate delegate;
    std::unique_ptr<FakeNotificationServer> server;
    DBusNotificationsOptions options{.patience = 60s};
    std::unique_ptr<DBusNotifications> notifications = std::make_unique<DBusNotifications>(client, options);
    std::vector<std::string> loaded;
};

TEST_F(DBusNotificationsTest, TellsOfTheServerThatIsThere) {
    const QSignalSpy availability(notifications.get(), &DBusNotifications::availabilityChanged);
    start();
    EXPECT_THAT(loaded, ElementsAre("Fake Server 1.5"));
    EXPECT_EQ(availability, QList<QVariantList>{{true}});
    EXPECT_TRUE(notifications->respondsToNotify());
}

TEST_F(DBusNotificationsTest, PostsWithEveryField) {
    start();
    post({.title = "A & <b>B</b> is 95°C",
          .description = "Cool <it> & \"wait\"",
          .notificationName = "SpecificTemperature",
          .clickContext = "context"});
    const test::ShownNotification& shown = server->shown.front();
    EXPECT_EQ(shown.applicationName, QStringLiteral("Example"));
    EXPECT_EQ(shown.replaces, 0U);
    EXPECT_EQ(shown.icon, QStringLiteral("calorivo"));
    EXPECT_EQ(shown.title, QString::fromUtf8("A & <b>B</b> is 95°C"));
    EXPECT_EQ(shown.body, QStringLiteral("Cool &lt;it&gt; &amp; \"wait\""));
    EXPECT_EQ(shown.actions, (QStringList{QStringLiteral("default"), QStringLiteral("Open")}));
    EXPECT_EQ(shown.hints,
              (QVariantMap{{QStringLiteral("urgency"), QVariant::fromValue(uchar{1})},
                           {QStringLiteral("desktop-entry"), QStringLiteral("calorivo")},
                           {QStringLiteral("category"), QStringLiteral("device")},
                           {QStringLiteral("x-calorivo-kind"), QStringLiteral("SpecificTemperature")}}));
    EXPECT_EQ(shown.hints.value(QStringLiteral("urgency")).metaType().id(), QMetaType::UChar);
    EXPECT_EQ(shown.timeout, -1);
}

TEST_F(DBusNotificationsTest, EscapesNothingForAServerWithoutMarkup) {
    start({QStringLiteral("body"), QStringLiteral("actions")});
    post({.title = "A & B", .description = "Cool <it> & wait"});
    EXPECT_EQ(server->shown.front().title, QStringLiteral("A & B"));
    EXPECT_EQ(server->shown.front().body, QStringLiteral("Cool <it> & wait"));
}

TEST_F(DBusNotificationsTest, OffersNoActionWhereThereAreNone) {
    start({QStringLiteral("body")});
    post();
    EXPECT_EQ(server->shown.front().actions, QStringList());
}

TEST_F(DBusNotificationsTest, LeavesAStickyOneThere) {
    start();
    post({.title = "Hot", .isSticky = true});
    EXPECT_EQ(server->shown.front().timeout, 0);
    EXPECT_EQ(server->shown.front().hints.value(QStringLiteral("urgency")), QVariant::fromValue(uchar{2}));
}

TEST_F(DBusNotificationsTest, TellsOfAClickWithItsTokenFirst) {
    start();
    post({.title = "One", .clickContext = "first"});
    post({.title = "Two", .clickContext = "second"});
    server->giveToken(2, QStringLiteral("T-17"));
    server->invoke(2, QStringLiteral("default"));
    server->invoke(1, QStringLiteral("default"));
    settleAll();
    EXPECT_THAT(delegate.clicks, ElementsAre("token T-17", "second", "token ", "first"));
}

TEST_F(DBusNotificationsTest, IgnoresClicksThatAreNotOurs) {
    start();
    post();
    server->giveToken(7, QStringLiteral("theirs"));
    server->invoke(7, QStringLiteral("default"));
    server->invoke(1, QStringLiteral("settings"));
    server->close(1);
    server->invoke(1, QStringLiteral("default"));
    settleAll();
    EXPECT_THAT(delegate.clicks, IsEmpty());
}

TEST_F(DBusNotificationsTest, BelievesNobodyButTheServer) {
    start();
    post();
    QDBusMessage forged = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/Notifications"),
                                                     QStringLiteral("org.freedesktop.Notifications"),
                                                     QStringLiteral("ActionInvoked"));
    forged.setArguments({uint{1}, QStringLiteral("default")});
    bus.connect(QStringLiteral("stranger")).send(forged);
    settle(bus.connect(QStringLiteral("stranger")));
    settleAll();
    EXPECT_THAT(delegate.clicks, IsEmpty());
}

TEST_F(DBusNotificationsTest, ForgetsItsNumbersWhenTheServerStartsAgain) {
    start();
    post({.title = "Old", .clickContext = "old"});
    server.reset();
    startServer({});
    ASSERT_TRUE(
        QTest::qWaitFor([this] { return notifications->isAvailable() && server->calls.size() == 2; }));
    server->invoke(1, QStringLiteral("default"));
    settleAll();
    EXPECT_THAT(delegate.clicks, IsEmpty()) << "the number is somebody else's now";
    post({.title = "New", .description = "<", .clickContext = "new"});
    EXPECT_EQ(server->shown.front().body, QStringLiteral("<")) << "what this one can do was read again";
    server->invoke(1, QStringLiteral("default"));
    settleAll();
    EXPECT_THAT(delegate.clicks, ElementsAre("token ", "new"));
    EXPECT_THAT(loaded, ElementsAre("Fake Server 1.5")) << "the same one again is no news";
}

TEST_F(DBusNotificationsTest, TellsOfAnotherServer) {
    start();
    server.reset();
    startServer();
    server->name = QStringLiteral("Other Server");
    ASSERT_TRUE(QTest::qWaitFor([this] { return loaded.size() == 2; }));
    EXPECT_THAT(loaded, ElementsAre("Fake Server 1.5", "Other Server 1.5"));
}

TEST_F(DBusNotificationsTest, WaitsForAServerThatComesLater) {
    load();
    settleAll();
    EXPECT_FALSE(notifications->respondsToNotify());
    notifications->notify({.title = "Lost"});
    EXPECT_EQ(notifications->pending(), 0);
    startServer();
    ASSERT_TRUE(QTest::qWaitFor([this] { return notifications->isAvailable(); }));
    EXPECT_THAT(loaded, ElementsAre("Fake Server 1.5"));
    post();
    EXPECT_EQ(server->shown.size(), 1);
}

TEST_F(DBusNotificationsTest, NoticesThatTheServerLeft) {
    start();
    const QSignalSpy availability(notifications.get(), &DBusNotifications::availabilityChanged);
    server.reset();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !notifications->isAvailable(); }));
    EXPECT_EQ(availability, QList<QVariantList>{{false}});
    EXPECT_FALSE(notifications->respondsToNotify());
}

TEST_F(DBusNotificationsTest, DoesNotPileUpBeforeAServerThatHangs) {
    start();
    server->hangs = true;
    for (int count = 0; count < 20; ++count) notifications->notify({.title = "Hot", .clickContext = "hot"});
    settleAll();
    EXPECT_EQ(server->calls.count(QStringLiteral("Notify")), 8);
    EXPECT_EQ(notifications->pending(), 8);
    EXPECT_FALSE(notifications->respondsToNotify());
    EXPECT_TRUE(notifications->isAvailable()) << "it is there, after all";
    server->wakeUp();
    ASSERT_TRUE(QTest::qWaitFor([this] { return notifications->respondsToNotify(); }));
    server->invoke(3, QStringLiteral("default"));
    settleAll();
    EXPECT_THAT(delegate.clicks, ElementsAre("token ", "hot"));
}

TEST_F(DBusNotificationsTest, ForgetsWhatAServerTookWithIt) {
    start();
    server->hangs = true;
    for (int count = 0; count < 8; ++count) notifications->notify({.title = "Hot"});
    settleAll();
    server.reset();
    startServer();
    ASSERT_TRUE(QTest::qWaitFor([this] { return notifications->respondsToNotify(); }));
    EXPECT_EQ(notifications->pending(), 0);
}

TEST_F(DBusNotificationsTest, GivesUpACallThatIsNeverAnswered) {
    options.patience = 20ms;
    notifications = std::make_unique<DBusNotifications>(client, options);
    start();
    server->hangs = true;
    notifications->notify({.title = "Hot"});
    EXPECT_EQ(notifications->pending(), 1);
    ASSERT_TRUE(QTest::qWaitFor([this] { return notifications->pending() == 0; }));
    EXPECT_TRUE(notifications->isAvailable());
}

TEST_F(DBusNotificationsTest, AsksAgainAServerThatHangsAtTheStart) {
    options.patience = 20ms;
    notifications = std::make_unique<DBusNotifications>(client, options);
    startServer();
    server->hangs = true;
    load();
    ASSERT_TRUE(QTest::qWaitFor([this] { return server->calls.size() >= 3; }));
    EXPECT_FALSE(notifications->isAvailable());
    server->hangs = false;
    ASSERT_TRUE(QTest::qWaitFor([this] { return notifications->isAvailable(); }));
}

TEST_F(DBusNotificationsTest, RemembersTheLastOnesForAServerThatNeverClosesAny) {
    options.mostPending = 100;
    notifications = std::make_unique<DBusNotifications>(client, options);
    notifications->setGrowlDelegate(&delegate);
    start();
    for (int count = 0; count < 257; ++count) {
        // The bus itself allows no more than 128 waiting calls.
        if (!notifications->respondsToNotify()) {
            ASSERT_TRUE(QTest::qWaitFor([this] { return notifications->pending() == 0; }));
        }
        notifications->notify({.title = "Hot", .clickContext = std::to_string(count)});
    }
    ASSERT_TRUE(QTest::qWaitFor([this] { return notifications->pending() == 0; }));
    server->invoke(1, QStringLiteral("default"));
    server->invoke(2, QStringLiteral("default"));
    settleAll();
    EXPECT_THAT(delegate.clicks, ElementsAre("1"));
}

TEST_F(DBusNotificationsTest, ShowsATest) {
    notifications->sendTest();
    start();
    notifications->sendTest();
    ASSERT_TRUE(QTest::qWaitFor([this] { return notifications->pending() == 0; }));
    ASSERT_EQ(server->shown.size(), 1);
    EXPECT_EQ(server->shown.front().title, QStringLiteral("Notifications work"));
    EXPECT_EQ(server->shown.front().body,
              QStringLiteral("This is how a temperature above its limit is announced."));
}

TEST_F(DBusNotificationsTest, IsSilentWithoutASessionBus) {
    DBusNotifications alone(QDBusConnection(QStringLiteral("no such connection")));
    alone.setGrowlDelegate(&delegate);
    alone.load([this](const std::string&, const std::string&) { loaded.emplace_back("loaded"); });
    alone.notify({.title = "Lost"});
    alone.sendTest();
    QCoreApplication::processEvents();
    EXPECT_FALSE(alone.isAvailable());
    EXPECT_FALSE(alone.respondsToNotify());
    EXPECT_THAT(loaded, IsEmpty());
}

TEST_F(DBusNotificationsTest, IsSilentWhenTheSessionBusEnds) {
    start();
    bus.stop();
    ASSERT_TRUE(QTest::qWaitFor([this] { return !client.isConnected(); }));
    EXPECT_FALSE(notifications->respondsToNotify());
    notifications->notify({.title = "Lost"});
    EXPECT_EQ(notifications->pending(), 0);
}

TEST_F(DBusNotificationsTest, HearsNothingMoreWithoutADelegate) {
    start();
    post();
    notifications->setGrowlDelegate(nullptr);
    server->invoke(1, QStringLiteral("default"));
    settleAll();
    EXPECT_THAT(delegate.clicks, ElementsAre("token "));
}

TEST_F(DBusNotificationsTest, CarriesAlertsAboveTheLimitOnceThereIsAServer) {
    test::Machine machine;
    test::Calls calls;
    test::RecordingSystemLog systemLog(calls);
    OverLimitAlerts alerts({machine.dispatch, machine.preferences, machine.reader, *notifications, systemLog,
                            [&calls] { calls.emplace_back("activateAndShowMainWindow"); }});
    alerts.initGrowl();
    settleAll();
    alerts.showAlertForOverlimitAreaWithName(95, "CPU Core 1");
    startServer();
    ASSERT_TRUE(QTest::qWaitFor([this] { return notifications->isAvailable(); }));
    alerts.showAlertForOverlimitAreaWithName(96, "CPU Core 1");
    alerts.showAlertForOverlimitAreaWithName(97, "CPU Core 1");
    ASSERT_TRUE(QTest::qWaitFor([this] { return notifications->pending() == 0; }));
    ASSERT_EQ(server->shown.size(), 1);
    EXPECT_EQ(server->shown.front().applicationName, QStringLiteral("Calorivo"));
    EXPECT_EQ(server->shown.front().title, QString::fromUtf8("CPU Core 1 is 96°C"));
    server->invoke(1, QStringLiteral("default"));
    settleAll();
    EXPECT_THAT(calls,
                ElementsAre("log Using Growl.framework Fake Server (1.5)", "activateAndShowMainWindow"));
}

}  // namespace
}  // namespace calorivo
