#include "platform/qt/SessionEnd.h"

#include <gtest/gtest.h>

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QGuiApplication>
#include <QSessionManager>
#include <QTest>

#include <array>
#include <cstddef>
#include <vector>

namespace calorivo {
namespace {

using Reasons = std::vector<EndReason>;

/// Puts the handlers of these signals back as they were.
class SignalsAsTheyWere {
  public:
    SignalsAsTheyWere() {
        for (std::size_t i = 0; i < signals.size(); ++i) sigaction(signals.at(i), nullptr, &former_.at(i));
    }
    ~SignalsAsTheyWere() {
        for (std::size_t i = 0; i < signals.size(); ++i) sigaction(signals.at(i), &former_.at(i), nullptr);
    }
    SignalsAsTheyWere(const SignalsAsTheyWere&) = delete;
    SignalsAsTheyWere& operator=(const SignalsAsTheyWere&) = delete;

    static constexpr std::array<int, 3> signals{SIGTERM, SIGHUP, SIGINT};

  private:
    std::array<struct sigaction, 3> former_{};
};

/// What the application says when its loop ends.
void quit() { ASSERT_TRUE(QMetaObject::invokeMethod(qGuiApp, "aboutToQuit", Qt::DirectConnection)); }

sighandler_t handlerOf(int number) {
    struct sigaction action {};
    sigaction(number, nullptr, &action);
    return action.sa_handler;
}

TEST(SessionEnd, EverySignalOfAnEndIsTold) {
    const SignalsAsTheyWere signals;
    for (const int number : SignalsAsTheyWere::signals) {
        Reasons reasons;
        const SessionEnd end([&reasons](EndReason reason) { reasons.push_back(reason); });
        ASSERT_EQ(raise(number), 0);
        EXPECT_EQ(reasons, Reasons{}) << "inside the handler nothing may be done";
        EXPECT_TRUE(QTest::qWaitFor([&reasons] { return !reasons.empty(); }));
        EXPECT_EQ(reasons, Reasons{EndReason::signal});
    }
}

TEST(SessionEnd, TheEndIsToldOnce) {
    const SignalsAsTheyWere signals;
    Reasons reasons;
    const SessionEnd end([&reasons](EndReason reason) { reasons.push_back(reason); });
    raise(SIGTERM);
    raise(SIGHUP);
    raise(SIGTERM);
    EXPECT_TRUE(QTest::qWaitFor([&reasons] { return !reasons.empty(); }));
    QCoreApplication::processEvents();
    quit();
    EXPECT_EQ(reasons, Reasons{EndReason::signal});
}

TEST(SessionEnd, ASecondSignalHasItsUsualEffect) {
    const SignalsAsTheyWere signals;
    signal(SIGINT, SIG_DFL);
    bool isTold = false;
    sighandler_t during = nullptr;
    const SessionEnd end([&](EndReason) {
        isTold = true;
        during = handlerOf(SIGINT);
    });
    EXPECT_NE(handlerOf(SIGINT), SIG_DFL);
    raise(SIGINT);
    EXPECT_TRUE(QTest::qWaitFor([&isTold] { return isTold; }));
    EXPECT_EQ(during, SIG_DFL);
}

TEST(SessionEnd, SignalsThatWereIgnoredStaySo) {
    const SignalsAsTheyWere signals;
    signal(SIGHUP, SIG_IGN);
    Reasons reasons;
    const SessionEnd end([&reasons](EndReason reason) { reasons.push_back(reason); });
    EXPECT_EQ(handlerOf(SIGHUP), SIG_IGN);
    raise(SIGHUP);
    raise(SIGTERM);
    EXPECT_TRUE(QTest::qWaitFor([&reasons] { return !reasons.empty(); }));
    EXPECT_EQ(handlerOf(SIGHUP), SIG_IGN);
}

TEST(SessionEnd, LogoutIsToldBeforeItGoesOn) {
    Reasons reasons;
    const SessionEnd end([&reasons](EndReason reason) { reasons.push_back(reason); });
    // Only a session can make a manager; who hears of this one does not look at it.
    alignas(QSessionManager) std::array<std::byte, sizeof(QSessionManager)> place{};
    auto* const manager = static_cast<QSessionManager*>(static_cast<void*>(place.data()));
    std::array<void*, 2> arguments{nullptr, manager};
    const QMetaObject& type = QGuiApplication::staticMetaObject;
    const int number = type.indexOfSignal("commitDataRequest(QSessionManager&)");
    ASSERT_GE(number, 0);
    QMetaObject::activate(qGuiApp, number, arguments.data());
    EXPECT_EQ(reasons, Reasons{EndReason::logout});
}

TEST(SessionEnd, TheEndOfTheLoopIsTold) {
    Reasons reasons;
    const SessionEnd end([&reasons](EndReason reason) { reasons.push_back(reason); });
    quit();
    EXPECT_EQ(reasons, Reasons{EndReason::quit});
}

TEST(SessionEnd, LeavesNothingBehind) {
    const SignalsAsTheyWere signals;
    signal(SIGTERM, SIG_DFL);
    Reasons reasons;
    {
        const SessionEnd end([&reasons](EndReason reason) { reasons.push_back(reason); });
    }
    EXPECT_EQ(handlerOf(SIGTERM), SIG_DFL);
    quit();
    EXPECT_EQ(reasons, Reasons{});
}

}  // namespace
}  // namespace calorivo
