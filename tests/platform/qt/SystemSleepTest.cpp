#include "platform/qt/SystemSleep.h"

#include "support/QtPrivateBus.h"

#include <gtest/gtest.h>

#include <memory>

namespace calorivo {
namespace {

QString service() { return QStringLiteral("org.freedesktop.login1"); }
QString path() { return QStringLiteral("/org/freedesktop/login1"); }

class SystemSleepTest : public testing::Test {
  protected:
    void listen() {
        sleep = std::make_unique<SystemSleep>(own);
        QObject::connect(sleep.get(), &SystemSleep::didWake, sleep.get(), [this] { ++wakes; });
    }
    [[nodiscard]] QDBusConnection startManager(const QString& name) {
        QDBusConnection manager = bus.connect(name);
        EXPECT_TRUE(manager.registerService(service()));
        settle(own);
        return manager;
    }
    /// Says so as the login manager does, and has it arrive.
    void tell(const QDBusConnection& from, const QVariant& isComing,
              const QString& member = QStringLiteral("PrepareForSleep")) {
        QDBusMessage signal =
            QDBusMessage::createSignal(path(), QStringLiteral("org.freedesktop.login1.Manager"), member);
        signal << isComing;
        EXPECT_TRUE(from.send(signal));
        settle(from);
        settle(own);
    }

    PrivateBus bus;
    QDBusConnection own = bus.connect(QStringLiteral("own"));
    std::unique_ptr<SystemSleep> sleep;
    int wakes = 0;
};

TEST_F(SystemSleepTest, TellsOfTheWakeAndNotOfTheSleep) {
    const QDBusConnection manager = startManager(QStringLiteral("manager"));
    listen();
    tell(manager, true);
    EXPECT_EQ(wakes, 0);
    tell(manager, false);
    EXPECT_EQ(wakes, 1);
    tell(manager, true);
    tell(manager, false);
    EXPECT_EQ(wakes, 2);
}

TEST_F(SystemSleepTest, TellsOfEachWakeWhateverCameBeforeIt) {
    const QDBusConnection manager = startManager(QStringLiteral("manager"));
    listen();
    tell(manager, false);
    tell(manager, false);
    EXPECT_EQ(wakes, 2);
    tell(manager, true);
    tell(manager, true);
    EXPECT_EQ(wakes, 2);
    tell(manager, false);
    EXPECT_EQ(wakes, 3);
}

TEST_F(SystemSleepTest, HearsAManagerThatComesLaterAndOneThatTakesItsPlace) {
    listen();
    {
        const QDBusConnection first = startManager(QStringLiteral("first"));
        tell(first, true);
    }
    bus.disconnect(QStringLiteral("first"));
    settle(own);
    const QDBusConnection second = startManager(QStringLiteral("second"));
    tell(second, false);
    EXPECT_EQ(wakes, 1);
}

TEST_F(SystemSleepTest, BelievesNobodyElse) {
    const QDBusConnection manager = startManager(QStringLiteral("manager"));
    listen();
    tell(bus.connect(QStringLiteral("stranger")), false);
    EXPECT_EQ(wakes, 0);
    tell(manager, false, QStringLiteral("PrepareForShutdown"));
    tell(manager, QStringLiteral("no"));
    EXPECT_EQ(wakes, 0);
}

TEST_F(SystemSleepTest, IsSilentWithoutABusAndWhenTheBusGoes) {
    const SystemSleep nowhere(QDBusConnection(QStringLiteral("no such bus")));
    listen();
    bus.stop();
    QCoreApplication::processEvents();
    EXPECT_EQ(wakes, 0);
}

}  // namespace
}  // namespace calorivo
