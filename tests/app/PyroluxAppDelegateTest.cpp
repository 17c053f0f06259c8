#include "app/PyroluxAppDelegate.h"

#include "support/Application.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>

namespace calorivo {
namespace {

using test::Application;
using test::Calls;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using namespace std::chrono_literals;

std::size_t countOf(const Calls& calls, const std::string& call) {
    return static_cast<std::size_t>(std::count(calls.begin(), calls.end(), call));
}

bool wasSaved(const Calls& calls) { return countOf(calls, "synchronize") == 1; }

TEST(PyroluxAppDelegate, TakesTheModelGivenInPlaceOfTheMachines) {
    struct Row {
        std::vector<std::string> arguments;
        std::string model;
    };
    const std::vector<Row> rows{{{"calorivo"}, "Model1,2"},
                                {{"calorivo", "-custommodel", "Other3,4"}, "Other3,4"},
                                {{"calorivo", "-custommodel"}, "Model1,2"},
                                {{"calorivo", "-other", "-custommodel", "Other3,4"}, "Model1,2"}};
    for (const Row& row : rows) {
        Application application;
        application.machine.processInfo.given = row.arguments;
        application.make().awakeFromNib();
        EXPECT_EQ(application.delegate().lists().modelName, row.model);
    }
}

TEST(PyroluxAppDelegate, SetsItsFirstValuesBeforeTheStoreIsRead) {
    Application application;
    PyroluxAppDelegate& delegate = application.make();
    delegate.awakeFromNib();
    const ApplicationState& state = delegate.state();
    EXPECT_TRUE(state.isStartingUp);
    EXPECT_FALSE(state.isShuttingDown);
    EXPECT_TRUE(state.didLaunchInNormalMode);
    EXPECT_TRUE(state.isOkToShowRate);
    EXPECT_EQ(state.osVersionString, "Fakix 7.5 (build 9)");
    EXPECT_TRUE(delegate.preferences().isFirstLaunch);
    EXPECT_EQ(delegate.keys().valueForKey("isOkToCheckGPUSensors"), Value(true));
    EXPECT_EQ(delegate.keys().valueForKey("currentGPUType"), Value(1));
    EXPECT_EQ(delegate.sourceList().sourceListSelectedIndexes.get(), SourceList::Indexes{1});
}

TEST(PyroluxAppDelegate, ClearsTheBookmarkTwice) {
    Application application;
    PyroluxAppDelegate& delegate = application.make();
    int told = 0;
    const Observation observation = delegate.keys().observe("logFileBookmarkData", [&] { ++told; });
    delegate.awakeFromNib();
    EXPECT_EQ(told, 2);
}

TEST(PyroluxAppDelegate, ReadsRegisteredDefaultsWhereNothingIsStored) {
    Application application;
    application.machine.bundle.defaults = PropertyList{{"limitForAverage", 66}, {"updateIntervalSecs", 30}};
    const PyroluxAppDelegate& delegate = application.start();
    EXPECT_EQ(delegate.preferences().limitForAverage, 66);
    EXPECT_EQ(delegate.preferences().updateIntervalSecs, 7);
}

TEST(PyroluxAppDelegate, ReadsAbsentPreferencesWithoutDefaults) {
    Application application;
    application.machine.bundle.defaults.reset();
    application.make().awakeFromNib();
    EXPECT_EQ(countOf(application.machine.calls, "registerDefaults of 0 keys"), 0U);
    application.delegate().applicationDidBecomeActive();
    EXPECT_EQ(application.delegate().preferences().limitForAverage, 0);
}

TEST(PyroluxAppDelegate, TakesTheIntegratedGPUWithoutASwitcher) {
    Application application;
    application.machine.gpuSwitcher.exists = false;
    application.make().awakeFromNib();
    EXPECT_EQ(application.delegate().keys().valueForKey("currentGPUType"), Value(0));
    EXPECT_THAT(application.machine.calls, Not(Contains("registerForGPUChangeNotifications")));

    Application integrated;
    integrated.machine.gpuSwitcher.isDiscrete = false;
    integrated.make().awakeFromNib();
    EXPECT_EQ(integrated.delegate().keys().valueForKey("currentGPUType"), Value(0));
    EXPECT_THAT(integrated.machine.calls, Contains("registerForGPUChangeNotifications"));
}

TEST(PyroluxAppDelegate, PausesGPUSensorsWhenTheSwitcherTellsOfAChange) {
    Application application;
    application.make().awakeFromNib();
    ASSERT_NE(application.machine.gpuSwitcher.observer, nullptr);
    application.machine.gpuSwitcher.observer->GPUDidChangeTo(0);
    application.machine.dispatch.time.run();
    const KeyValueCoding& keys = application.delegate().keys();
    EXPECT_EQ(keys.valueForKey("currentGPUType"), Value(0));
    EXPECT_EQ(keys.valueForKey("isOkToCheckGPUSensors"), Value(false));
    application.machine.dispatch.time.advance(std::chrono::seconds(2));
    EXPECT_EQ(keys.valueForKey("isOkToCheckGPUSensors"), Value(true));
}

TEST(PyroluxAppDelegate, StartsWithoutAnyOfThePartsThatMayBeLeftOut) {
    Application application;
    PyroluxAppDelegate& delegate = application.make(ApplicationPorts{});
    delegate.awakeFromNib();
    delegate.applicationDidBecomeActive();
    application.machine.dispatch.time.run();
    EXPECT_FALSE(delegate.state().isStartingUp);
    EXPECT_EQ(application.machine.statusBar.shown.title, "40°C");
}

TEST(PyroluxAppDelegate, FinishesOnceInNormalModeOnTheFirstActivation) {
    Application application;
    PyroluxAppDelegate& delegate = application.make();
    delegate.awakeFromNib();
    delegate.applicationDidFinishLaunching();
    EXPECT_TRUE(delegate.state().isStartingUp);
    delegate.applicationDidBecomeActive();
    EXPECT_FALSE(delegate.state().isStartingUp);
    application.machine.calls.clear();
    delegate.applicationDidBecomeActive();
    EXPECT_THAT(application.machine.calls, IsEmpty());
}

TEST(PyroluxAppDelegate, FinishesOnceInMenuOnlyModeAtTheEndOfLaunching) {
    Application application;
    application.store("appMode", 1);
    PyroluxAppDelegate& delegate = application.make();
    delegate.awakeFromNib();
    delegate.applicationDidFinishLaunching();
    EXPECT_FALSE(delegate.state().isStartingUp);
    EXPECT_FALSE(delegate.state().didLaunchInNormalMode);
    application.machine.calls.clear();
    delegate.applicationDidBecomeActive();
    EXPECT_THAT(application.machine.calls, IsEmpty());
}

TEST(PyroluxAppDelegate, FinishesOnceWhenItIsActivatedBeforeTheEndOfLaunching) {
    Application application;
    application.store("appMode", 1);
    PyroluxAppDelegate& delegate = application.make();
    delegate.awakeFromNib();
    delegate.applicationDidBecomeActive();
    delegate.applicationDidFinishLaunching();
    EXPECT_EQ(countOf(application.machine.calls, "IOServiceOpen"), 1U);
}

TEST(PyroluxAppDelegate, FinishesOnceWhenAnAlertHasItActivated) {
    Application application;
    application.store("launchOnLogin", true);
    application.machine.serviceManagement.fails = true;
    PyroluxAppDelegate& delegate = application.make();
    application.machine.alertPanel.meanwhile = [&] { delegate.applicationDidBecomeActive(); };
    delegate.awakeFromNib();
    delegate.applicationDidBecomeActive();
    EXPECT_EQ(countOf(application.machine.calls, "IOServiceOpen"), 1U);
    // Once for each of the two settings that register the login item.
    EXPECT_EQ(application.machine.alertPanel.alerts.size(), 2U);
}

TEST(PyroluxAppDelegate, WaitsForTheActivationInAModeThatThereIsNot) {
    Application application;
    application.store("appMode", 2);
    PyroluxAppDelegate& delegate = application.make();
    delegate.awakeFromNib();
    EXPECT_THAT(application.machine.calls, Contains("quitMenuItem setKeyEquivalent \"\""));
    delegate.applicationDidFinishLaunching();
    EXPECT_TRUE(delegate.state().isStartingUp);
    delegate.applicationDidBecomeActive();
    EXPECT_THAT(application.machine.calls, Not(Contains("window makeKeyAndOrderFront")));
}

TEST(PyroluxAppDelegate, AsksTheFirstLaunchQuestionInItsWords) {
    Application application;
    application.store("isFirstLaunch", true);
    application.machine.alertPanel.answers = {AlertAnswer::alternateButton};
    application.start();
    EXPECT_THAT(
        application.machine.alertPanel.alerts,
        ElementsAre(Alert{.message = "Launch on Startup",
                          .defaultButton = "Yes",
                          .alternateButton = "No",
                          .informativeText =
                              "Calorivo can be configured so it launches in the background when you start up "
                              "your computer. A status menu icon will be available in the menu bar in this "
                              "mode.\n\nWould you like to turn this on now? You can change this later in the "
                              "preferences."}));
}

TEST(PyroluxAppDelegate, TurnsMenuOnlyModeOnForAYesAtTheFirstLaunch) {
    Application application;
    application.store("isFirstLaunch", true);
    const PyroluxAppDelegate& delegate = application.start();
    EXPECT_TRUE(delegate.preferences().launchOnLogin);
    EXPECT_EQ(delegate.preferences().appMode, 1);
    EXPECT_FALSE(delegate.preferences().isFirstLaunch);
    const auto& stored = application.machine.userDefaults.stored;
    EXPECT_EQ(stored.at("launchOnLogin"), Value(true));
    EXPECT_EQ(stored.at("appMode"), Value(1));
    EXPECT_EQ(stored.at("isFirstLaunch"), Value(false));
}

TEST(PyroluxAppDelegate, ClearsOnlyTheMarkForANoAtTheFirstLaunch) {
    Application application;
    application.store("isFirstLaunch", true);
    application.machine.alertPanel.answers = {AlertAnswer::alternateButton};
    application.start();
    const auto& stored = application.machine.userDefaults.stored;
    EXPECT_EQ(stored.at("launchOnLogin"), Value(false));
    EXPECT_EQ(stored.at("appMode"), Value(0));
    EXPECT_EQ(stored.at("isFirstLaunch"), Value(false));
}

TEST(PyroluxAppDelegate, ForcesTheIconInAMenuOnlyLaunchWithoutValues) {
    Application application;
    application.store("appMode", 1);
    application.store("showTempInMenuBar", false);
    application.store("showAppIcon", false);
    PyroluxAppDelegate& delegate = application.start();
    EXPECT_EQ(application.machine.statusBar.shown.image, (Image{"NewIcon_16px", true}));
    EXPECT_FALSE(delegate.state().isShowAppIconEnabled);
    delegate.keys().setValueForKey(true, "showFanInMenuBar");
    EXPECT_TRUE(delegate.state().isShowAppIconEnabled);
}

TEST(PyroluxAppDelegate, SavesWhenThePreferencesWindowCloses) {
    Application application;
    PyroluxAppDelegate& delegate = application.start();
    delegate.windowWillClose(WindowName::window);
    delegate.windowWillClose(WindowName::vantixUpgradeWindow);
    EXPECT_THAT(application.machine.calls, IsEmpty());
    delegate.windowWillClose(WindowName::prefWindow);
    EXPECT_TRUE(wasSaved(application.machine.calls));
}

TEST(PyroluxAppDelegate, SavesAndClosesTheSMCAtTheEnd) {
    Application application;
    PyroluxAppDelegate& delegate = application.start();
    delegate.applicationWillTerminate();
    EXPECT_TRUE(delegate.state().isShuttingDown);
    EXPECT_TRUE(wasSaved(application.machine.calls));
    EXPECT_EQ(application.machine.calls.back(), "IOServiceClose");
    application.machine.calls.clear();
    delegate.windowWillClose(WindowName::prefWindow);
    EXPECT_THAT(application.machine.calls, IsEmpty());
}

TEST(PyroluxAppDelegate, HasTheFirstLaunchBehindItAfterAnyEnd) {
    Application application;
    PyroluxAppDelegate& delegate = application.start();
    delegate.keys().setValueForKey(true, "isFirstLaunch");
    delegate.applicationWillTerminate();
    EXPECT_EQ(application.machine.userDefaults.stored.at("isFirstLaunch"), Value(false));
}

TEST(PyroluxAppDelegate, EndsWithItsLastWindowInNormalModeOnly) {
    Application normal;
    PyroluxAppDelegate& delegate = normal.make();
    delegate.awakeFromNib();
    EXPECT_FALSE(delegate.applicationShouldTerminateAfterLastWindowClosed());
    delegate.applicationDidBecomeActive();
    EXPECT_TRUE(delegate.applicationShouldTerminateAfterLastWindowClosed());

    Application menuOnly;
    menuOnly.store("appMode", 1);
    EXPECT_FALSE(menuOnly.start().applicationShouldTerminateAfterLastWindowClosed());
}

TEST(PyroluxAppDelegate, ShowsItsWindows) {
    Application application;
    PyroluxAppDelegate& delegate = application.start();
    delegate.activateAndShowMainWindow();
    delegate.activateAndShowPreferences();
    delegate.preferencesToolbarItemClicked(3);
    EXPECT_THAT(
        application.machine.calls,
        ElementsAre("activateIgnoringOtherApps", "window makeKeyAndOrderFront", "activateIgnoringOtherApps",
                    "prefWindow center", "prefWindow makeKeyAndOrderFront",
                    "preferencesTabView selectTabViewItemAtIndex 3"));
}

TEST(PyroluxAppDelegate, ChecksAtItsIntervalAndShowsWhatItFound) {
    Application application;
    application.start();
    application.machine.ioKit.smc.setTemperature("TC0P", 55);
    application.machine.dispatch.time.advance(6s);
    EXPECT_EQ(application.machine.statusBar.shown.title, "40°C");
    application.machine.dispatch.time.advance(1s);
    EXPECT_EQ(application.machine.statusBar.shown.title, "55°C");
    EXPECT_EQ(application.delegate().averages().avgTempAsString.get(), "55°C");
}

TEST(PyroluxAppDelegate, FollowsTheSelectionOfTheSourceList) {
    Application application;
    PyroluxAppDelegate& delegate = application.start();
    delegate.sourceList().setSourceListSelectedIndexes({0});
    EXPECT_EQ(delegate.sourceList().activeAreaTag, allAreasTag);
    EXPECT_THAT(application.machine.calls, ElementsAre("cpuTableView reloadData"));
}

TEST(PyroluxAppDelegate, RestartsSensorsWithoutATickAndKeepsTheMaximumOfOthers) {
    Application application;
    CellMap cells;
    cells["TC0P"].setMaxUsedValue(95);
    cells["A1"].setMaxUsedValue(58);
    application.store("sensorNameToCustomCellMap", archivedCellMap(cells));
    const PyroluxAppDelegate& delegate = application.start();
    const CellMap& restored = delegate.lists().sensorNameToCustomCellMap;
    EXPECT_EQ(restored.at("TC0P").maxUsedValue(), 40.0F);
    EXPECT_EQ(restored.at("A1").maxUsedValue(), 58.0F);
}

TEST(PyroluxAppDelegate, RunsOnWithAnArchiveOfCellsThatCannotBeRead) {
    Application application;
    application.store("sensorNameToCustomCellMap", Data{1, 2, 3});
    PyroluxAppDelegate& delegate = application.start();
    EXPECT_FALSE(delegate.lists().hasCustomCellMap);
    ASSERT_NE(delegate.sensorTable().levelCellToPaint(0), nullptr);
    EXPECT_EQ(delegate.sensorTable().levelCellToPaint(0)->objectValue(), 40.0);
    EXPECT_TRUE(delegate.lists().sensorNameToCustomCellMap.empty());
}

}  // namespace
}  // namespace calorivo
