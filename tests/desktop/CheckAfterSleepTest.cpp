#include "desktop/CheckAfterSleep.h"

#include "support/Machine.h"
#include "support/QtPrivateBus.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace calorivo {
namespace {

using namespace std::chrono_literals;
using test::RecordedAlert;

/// A machine that is checked every five seconds, and whose login manager is the test.
class CheckAfterSleepTest : public testing::Test {
  protected:
    CheckAfterSleepTest() {
        EXPECT_TRUE(manager.registerService(QStringLiteral("org.freedesktop.login1")));
        settle(own);
        keys.define("currentAvgTmp", machine.averages.currentAvgTmp);
        machine.cpu("TC0D", 95).cpu("TC1C", 45).logging();
        machine.cycle.setUpdateIntervalSecs(5);
        machine.dispatch.run();
        checkAfterSleep.emplace(own, machine.cycle, keys, [this] { return asleep; });
    }
    void sleep(std::chrono::nanoseconds duration) { asleep += duration; }
    /// The login manager says so.
    void wake() {
        QDBusMessage signal = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/login1"),
                                                         QStringLiteral("org.freedesktop.login1.Manager"),
                                                         QStringLiteral("PrepareForSleep"));
        signal << false;
        EXPECT_TRUE(manager.send(signal));
        settle(manager);
        settle(own);
        machine.dispatch.run();
    }
    /// What the display was told since the last question.
    std::vector<std::string> shown() { return std::exchange(machine.display.calls, {}); }

    const std::vector<std::string> nothing;
    const std::vector<std::string> oneCheck{"reloadData", "updateStatusItem"};
    PrivateBus bus;
    QDBusConnection own = bus.connect(QStringLiteral("own"));
    QDBusConnection manager = bus.connect(QStringLiteral("manager"));
    test::Machine machine;
    KeyValueCoding keys;
    std::chrono::nanoseconds asleep = 7min;
    std::optional<CheckAfterSleep> checkAfterSleep;
};

TEST_F(CheckAfterSleepTest, ChecksAtOnceAndAgainAPeriodLater) {
    EXPECT_EQ(shown(), oneCheck);
    machine.dispatch.advance(3s);
    sleep(1h);
    wake();
    EXPECT_EQ(shown(), oneCheck);
    machine.dispatch.advance(4999ms);
    EXPECT_EQ(shown(), nothing);
    machine.dispatch.advance(1ms);
    EXPECT_EQ(shown(), oneCheck);
}

TEST_F(CheckAfterSleepTest, DoesNotCheckAgainWhenTheTimerWasFaster) {
    machine.dispatch.advance(3s);
    sleep(1h);
    machine.dispatch.advance(2s);
    static_cast<void>(shown());
    wake();
    EXPECT_EQ(shown(), nothing);
    machine.dispatch.advance(5s);
    EXPECT_EQ(shown(), oneCheck) << "the period is not begun anew either";
}

TEST_F(CheckAfterSleepTest, ChecksOnceHoweverOftenItIsTold) {
    static_cast<void>(shown());
    sleep(1h);
    wake();
    wake();
    EXPECT_EQ(shown(), oneCheck);
}

TEST_F(CheckAfterSleepTest, ChecksOnceWhoeverTellsFirst) {
    static_cast<void>(shown());
    sleep(1h);
    checkAfterSleep->check();
    machine.dispatch.run();
    EXPECT_EQ(shown(), oneCheck);
    wake();
    checkAfterSleep->check();
    EXPECT_EQ(shown(), nothing);
}

TEST_F(CheckAfterSleepTest, DoesNotCheckAfterASleepThatCameToNothing) {
    static_cast<void>(shown());
    wake();
    EXPECT_EQ(shown(), nothing);
}

TEST_F(CheckAfterSleepTest, ItsAlertsAndItsRowAreOfTheTemperaturesAfterTheSleep) {
    machine.alerting(80, 200);
    machine.log.lines.clear();
    sleep(1h);
    machine.temperature("TC0D", 30).temperature("TC1C", 90);
    wake();
    EXPECT_EQ(machine.alerts.posted,
              (std::vector<RecordedAlert>{{90, machine.naming.convertKeyNameToHumanString("TC1C")}}));
    EXPECT_EQ(machine.log.lines, (std::vector<std::string>(2, "2024-03-05,14:07:09,30,ALERT:90,60,60")));
}

TEST_F(CheckAfterSleepTest, SensorsThatAreHeldWhileTheGPUsChangeOverAreHeldAtWhatTheyReadAfterTheSleep) {
    machine.gpu("TG0D", 95).check();
    machine.alerting(80, 200);
    machine.gpuState.isOkToCheckGPUSensors = false;
    sleep(1h);
    machine.temperature("TC0D", 30).temperature("TG0D", 35);
    wake();
    EXPECT_EQ(machine.alerts.posted, std::vector<RecordedAlert>{});
    EXPECT_EQ(machine.cell("TG0D").objectValue(), 35.0F);
    machine.temperature("TG0D", 110);
    machine.dispatch.advance(5s);
    EXPECT_EQ(machine.cell("TG0D").objectValue(), 35.0F) << "they are still held";
}

TEST_F(CheckAfterSleepTest, TheyAreFromTheSecondCheckOnWhenTheTimerWasFaster) {
    machine.gpu("TG0D", 95).check();
    machine.gpuState.isOkToCheckGPUSensors = false;
    machine.dispatch.advance(3s);
    sleep(1h);
    machine.temperature("TG0D", 35);
    machine.dispatch.advance(7s);  // the tick at 5 s, and the next one
    EXPECT_EQ(machine.cell("TG0D").objectValue(), 35.0F);
}

}  // namespace
}  // namespace calorivo
