#include "support/QtPrivateBus.h"

#include <gtest/gtest.h>

#include <QDBusConnectionInterface>

namespace calorivo {
namespace {

TEST(PrivateBus, CarriesCallsBetweenItsConnections) {
    PrivateBus bus;
    const QDBusConnection one = bus.connect(QStringLiteral("one"));
    const QDBusConnection other = bus.connect(QStringLiteral("other"));
    ASSERT_TRUE(one.isConnected());
    ASSERT_TRUE(other.isConnected());
    EXPECT_NE(one.baseService(), other.baseService());
    EXPECT_EQ(bus.connect(QStringLiteral("one")).baseService(), one.baseService());

    const QDBusMessage answer = ask(one, other.baseService(), QStringLiteral("/"),
                                    QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping"));
    EXPECT_EQ(answer.type(), QDBusMessage::ReplyMessage) << answer.errorMessage().toStdString();
}

TEST(PrivateBus, ClosesAConnectionByItsName) {
    PrivateBus bus;
    const QDBusConnection one = bus.connect(QStringLiteral("one"));
    const QString name = bus.connect(QStringLiteral("other")).baseService();
    EXPECT_TRUE(one.interface()->isServiceRegistered(name).value());
    bus.disconnect(QStringLiteral("other"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return !one.interface()->isServiceRegistered(name).value(); }));
}

TEST(PrivateBus, LeavesItsClientsAliveWhenItStops) {
    PrivateBus bus;
    const QDBusConnection one = bus.connect(QStringLiteral("one"));
    bus.stop();
    EXPECT_TRUE(QTest::qWaitFor([&one] { return !one.isConnected(); }));
}

}  // namespace
}  // namespace calorivo
