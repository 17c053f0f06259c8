#include "support/Application.h"
#include "support/GoldenFile.h"

#include <gtest/gtest.h>

#include <string>

// The order of every call that start-up makes to the platform, compared whole.

namespace calorivo {
namespace {

using test::Application;
using test::goldenFile;

/// The calls from the first stage to the end of the second one, each part under a heading.
std::string callsOfStartUp(Application& application) {
    PyroluxAppDelegate& delegate = application.make();
    test::RecordingPlatform& machine = application.machine;
    // Assigned when the log is set up, and before that when it is cleared.
    const Observation logFile = delegate.keys().observe("logFileURL", [&] {
        machine.calls.push_back("logFileURL \"" + delegate.state().logFileURL.get() + '"');
    });
    std::string text = "* awakeFromNib\n";
    delegate.awakeFromNib();
    text += machine.takeCalls() + "* applicationDidFinishLaunching\n";
    delegate.applicationDidFinishLaunching();
    text += machine.takeCalls() + "* applicationDidBecomeActive\n";
    delegate.applicationDidBecomeActive();
    text += machine.takeCalls() + "* the check queue, and what it asks of the main queue\n";
    machine.dispatch.time.run();
    return text + machine.takeCalls();
}

TEST(StartUp, TakesItsStepsInOrderInNormalMode) {
    Application application;
    EXPECT_EQ(callsOfStartUp(application), goldenFile("startup-normal.txt"));
}

TEST(StartUp, TakesItsStepsInOrderInMenuOnlyMode) {
    Application application;
    application.store("appMode", 1);
    EXPECT_EQ(callsOfStartUp(application), goldenFile("startup-menu-only.txt"));
}

TEST(StartUp, AsksAtTheFirstLaunchAndFollowsAYes) {
    Application application;
    application.store("isFirstLaunch", true);
    application.machine.alertPanel.answers = {AlertAnswer::defaultButton};
    EXPECT_EQ(callsOfStartUp(application), goldenFile("startup-first-launch-yes.txt"));
}

TEST(StartUp, AsksAtTheFirstLaunchAndFollowsANo) {
    Application application;
    application.store("isFirstLaunch", true);
    application.machine.alertPanel.answers = {AlertAnswer::alternateButton};
    EXPECT_EQ(callsOfStartUp(application), goldenFile("startup-first-launch-no.txt"));
}

TEST(StartUp, GoesOnWithoutAController) {
    Application application;
    application.machine.ioKit.smc.hasService = false;
    EXPECT_EQ(callsOfStartUp(application), goldenFile("startup-no-smc.txt"));
    EXPECT_EQ(application.printed.text(), "Error: no SMC found\n");
}

}  // namespace
}  // namespace calorivo
