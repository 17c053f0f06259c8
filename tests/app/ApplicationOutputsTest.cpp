// The controller with its log and its notifications.

#include "app/PyroluxAppDelegate.h"

#include "support/Application.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace calorivo {
namespace {

using test::Application;
using testing::Contains;
using testing::ElementsAre;
using namespace std::chrono_literals;

TEST(ApplicationOutputs, WritesItsLogWhileTheUserWantsOne) {
    Application application;
    application.configuration.documentDirectories = {"/docs"};
    PyroluxAppDelegate& delegate = application.start();
    test::VirtualDispatch& time = application.machine.dispatch.time;
    const std::string& text = application.machine.fileHandles.files["/docs/Calorivo Log.csv"];
    delegate.keys().setValueForKey(true, "logTemperatures");
    EXPECT_EQ(text, "");
    delegate.keys().setValueForKey(true, "logToFile");
    time.run();
    EXPECT_EQ(text, "Date,Time,CPU Proximity  (C),CPU Average (C),Computer Average(C)\n");
    time.advance(7s);
    const std::string row = "1970-01-01,00:00:07,40,40,40\n";
    EXPECT_TRUE(text.ends_with(")\n" + row + row)) << text;
    delegate.keys().setValueForKey(1, "tempUnit");
    time.run();
    EXPECT_TRUE(text.starts_with("Date,Time,CPU Proximity  (F)")) << text;
    delegate.keys().setValueForKey(false, "logToFile");
    const std::string before = text;
    time.advance(7s);
    EXPECT_EQ(text, before);
}

TEST(ApplicationOutputs, TellsTheSystemLogAndTheUserOfALogThatCannotBeMade) {
    Application application;
    PyroluxAppDelegate& delegate = application.start();
    application.machine.fileHandles.createProblem = "Permission denied";
    delegate.keys().setValueForKey(true, "logToFile");
    EXPECT_THAT(application.machine.calls,
                ElementsAre("runModal Calorivo was not able to create the log file."));
    application.machine.calls.clear();
    application.machine.dispatch.time.advance(7s);
    EXPECT_THAT(application.machine.calls,
                Contains("log Unable to log because of error No such file or directory"));
}

TEST(ApplicationOutputs, ShowsItsLog) {
    Application application;
    PyroluxAppDelegate& delegate = application.start();
    delegate.logger().revealLogFileInFinder();
    delegate.logger().openLogFile();
    EXPECT_THAT(application.machine.calls,
                ElementsAre("openURL file:///home/u/My%20Documents/",
                            "openURL file:///home/u/My%20Documents/Calorivo%20Log.csv"));
}

TEST(ApplicationOutputs, NotifiesOfAReadingAboveItsLimitAndComesForwardWhenThatIsClicked) {
    Application application;
    application.store("showAlerts", true);
    application.store("limitForSpecificArea", 90);
    application.store("limitForAverage", 120);
    application.store("useStickyAlerts", true);
    application.start();
    application.machine.ioKit.smc.setTemperature("TC0P", 95);
    application.machine.dispatch.time.advance(7s);
    ASSERT_EQ(application.machine.growl.posted.size(), 1U);
    EXPECT_EQ(application.machine.growl.posted[0].title, "CPU Proximity  is 95°C");
    EXPECT_TRUE(application.machine.growl.posted[0].isSticky);
    application.machine.calls.clear();
    application.machine.growl.delegate->growlNotificationWasClicked("showAlertForOverlimitArea");
    EXPECT_THAT(application.machine.calls,
                ElementsAre("activateIgnoringOtherApps", "window makeKeyAndOrderFront"));
}

}  // namespace
}  // namespace calorivo
