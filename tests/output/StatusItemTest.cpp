#include "output/StatusItem.h"

#include "support/Machine.h"
#include "support/RecordingPlatform.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace calorivo {
namespace {

const DriveDictionary disk{"Disk", "A1", 37};

/// A machine whose averages are 45 and 52 degrees and 1200 RPM, with a status item.
///
/// The temperature menus: 0 average, 1 separator, 2 CPU average, 3 "TC0P" (61 degrees), 4 a drive (37). The
/// fan menu: 0 average, 1 separator, 2 "F0Ac" (1800 RPM), 3 a fan that cannot be read.
class StatusItemTest : public testing::Test {
  protected:
    StatusItemTest() {
        machine.averages.avgTempAsString = "45°C";
        machine.averages.avgCPUTempAsString = "52°C";
        machine.fans.avgRPMAsString = "1200 RPM";
        machine.cpu("TC0P", 61).fan(1800, 1200, 6000, "Left");
        smartInfo.assign({disk});
        const PopUpButton::Menu temperatures{{"Average Temperature"},
                                             PopUpItem::separatorItem(),
                                             {"Average CPU Temperature"},
                                             {"CPU", SensorKey("TC0P")},
                                             {"Disk (A1)", disk}};
        first.setMenu(temperatures);
        second.setMenu(temperatures);
        FanModel gone;
        gone.actualRPMSensorName = "F7Ac";
        fan.setMenu({{"Average RPM"},
                     PopUpItem::separatorItem(),
                     {"Left", machine.fans.fansArray().front()},
                     {"Gone", gone}});
        preferences.menuBarTemp2SensorIndex = 2;
    }

    void show(bool temperature, bool temperature2, bool fanSpeed) {
        preferences.showTempInMenuBar = temperature;
        preferences.showTemp2InMenuBar = temperature2;
        preferences.showFanInMenuBar = fanSpeed;
    }
    [[nodiscard]] std::string reading(std::int32_t index) {
        return statusItem.getStringForSensorPopupButtonAtItemIndex(&first, index);
    }
    [[nodiscard]] std::string fanTitle(std::int32_t index) {
        show(false, false, true);
        preferences.menuBarFanSensorIndex = index;
        return statusItem.title();
    }

    test::Machine machine;
    Preferences& preferences = machine.preferences;
    SmartInfo smartInfo;
    PopUpButton first;
    PopUpButton second;
    PopUpButton fan;
    StatusItem statusItem{
        {preferences, machine.averages, machine.fans, smartInfo, machine.reader, {&first, &second, &fan}}};
    test::Calls calls;
    test::RecordingStatusBar bar{calls};
};

TEST_F(StatusItemTest, ComposesWhatIsSwitchedOn) {
    struct Row {
        bool temperature, temperature2, fanSpeed;
        std::string title, shorterTitle;
    };
    const std::vector<Row> rows{
        {false, false, false, "", ""},
        {true, false, false, "45°C", "45"},
        {false, true, false, "", ""},  // the second temperature is never shown alone
        {true, true, false, "45°C / 52°C", "45 52"},
        {false, false, true, "1200 RPM", "1200"},
        {true, false, true, "45°C / 1200 RPM", "45 1200"},
        {false, true, true, "52°C / 1200 RPM", "52 1200"},
        {true, true, true, "45°C / 52°C / 1200 RPM", "45 52 1200"},
    };
    for (const Row& row : rows) {
        show(row.temperature, row.temperature2, row.fanSpeed);
        preferences.useShorterTitles = false;
        EXPECT_EQ(statusItem.title(), row.title);
        preferences.useShorterTitles = true;
        EXPECT_EQ(statusItem.title(), row.shorterTitle);
    }
}

TEST_F(StatusItemTest, ReadsWhatEachItemStandsFor) {
    EXPECT_EQ(reading(0), "45°C");
    EXPECT_EQ(reading(2), "52°C");
    EXPECT_EQ(reading(3), "61°C");
    EXPECT_EQ(reading(4), "37°C");
    preferences.tempUnit = 1;
    EXPECT_EQ(reading(3), "142°F");
    EXPECT_EQ(reading(4), "99°F");
}

TEST_F(StatusItemTest, TakesEachTemperatureFromItsOwnMenu) {
    show(true, true, false);
    preferences.menuBarTempSensorIndex = 3;
    preferences.menuBarTemp2SensorIndex = 3;
    second.setMenu({{"a"}, {"b"}, {"c"}, {"Disk", disk}});
    EXPECT_EQ(statusItem.title(), "61°C / 37°C");
}

TEST_F(StatusItemTest, TakesSensorsFromTheCache) {
    machine.check();
    machine.temperature("TC0P", 80);
    EXPECT_EQ(reading(3), "61°C");
}

TEST_F(StatusItemTest, ShowsNothingForIndexesOfNothing) {
    for (const std::int32_t index : {1, 5, -1, std::numeric_limits<std::int32_t>::min()})
        EXPECT_EQ(reading(index), "") << index;
    EXPECT_EQ(statusItem.getStringForSensorPopupButtonAtItemIndex(nullptr, 3), "");
}

TEST_F(StatusItemTest, PutsNoSeparatorAfterAnEmptyFirstPiece) {
    show(true, true, true);
    preferences.menuBarTempSensorIndex = 1;
    EXPECT_EQ(statusItem.title(), "52°C / 1200 RPM");
}

TEST_F(StatusItemTest, PutsASeparatorBeforeAnEmptyLaterPiece) {
    show(true, true, true);
    preferences.menuBarTemp2SensorIndex = 99;
    EXPECT_EQ(statusItem.title(), "45°C /  / 1200 RPM");
    preferences.menuBarFanSensorIndex = 99;
    EXPECT_EQ(statusItem.title(), "45°C /  / ");
}

TEST_F(StatusItemTest, ShowsTheDriveWithTheSameSerialTheLastOneWinning) {
    smartInfo.assign({{"Disk", "A1", 20}, {"Disk", "B2", 30}, {"Disk", "A1", 41}});
    EXPECT_EQ(reading(4), "41°C");
    smartInfo.assign({{"Disk", "A1", 0}});
    EXPECT_EQ(reading(4), "N/A");
}

TEST_F(StatusItemTest, ShowsZeroDegreesForADriveThatVanished) {
    smartInfo.clear();
    EXPECT_EQ(reading(4), "0°C");
    preferences.tempUnit = 1;
    EXPECT_EQ(reading(4), "32°F");
    preferences.useShorterTitles = true;
    EXPECT_EQ(reading(4), "32");
}

TEST_F(StatusItemTest, CutsShorterTitlesBeforeTheFirstDegreeSign) {
    preferences.useShorterTitles = true;
    machine.averages.avgTempAsString = "113°F";
    EXPECT_EQ(reading(0), "113");
    machine.averages.avgTempAsString = "N/A";
    EXPECT_EQ(reading(0), "N/A");
    machine.averages.avgTempAsString = "1°2°";
    EXPECT_EQ(reading(0), "1");
}

TEST_F(StatusItemTest, ReadsTheChosenFanAtTheMoment) {
    EXPECT_EQ(fanTitle(2), "1800 RPM");
    machine.smc.setSpeed("F0Ac", 2400);
    EXPECT_EQ(fanTitle(2), "2400 RPM");
    EXPECT_EQ(fanTitle(3), "-1 RPM");
    preferences.useShorterTitles = true;
    EXPECT_EQ(fanTitle(2), "2400");
}

TEST_F(StatusItemTest, ShowsTheAverageForFanIndexZeroEvenWithOneFan) { EXPECT_EQ(fanTitle(0), "1200 RPM"); }

TEST_F(StatusItemTest, ShowsNothingForAFanIndexOnTheSeparatorAndReadsNoKey) {
    const auto requests = machine.smc.requests.size();
    for (const std::int32_t index : {1, -1, 4}) EXPECT_EQ(fanTitle(index), "") << index;
    EXPECT_EQ(machine.smc.requests.size(), requests);
}

TEST_F(StatusItemTest, IsOfVariableLengthWithItsMenuAndHighlights) {
    statusItem.create(bar, "statusMenu");
    EXPECT_EQ(calls, (test::Calls{"statusItemWithLength -1", "statusItem setMenu statusMenu",
                                  "statusItem setHighlightMode YES"}));
}

TEST_F(StatusItemTest, ShowsItsTitlePlainOrWholeInTheSmallerFont) {
    statusItem.create(bar, "statusMenu");
    show(true, false, false);
    statusItem.updateStatusItem();
    EXPECT_EQ(bar.shown.title, "45°C");
    EXPECT_EQ(bar.shown.attributedTitle, std::nullopt);
    preferences.useSmallerMenuFont = true;
    statusItem.updateStatusItem();
    EXPECT_EQ(bar.shown.title, std::nullopt);
    EXPECT_EQ(bar.shown.attributedTitle, (AttributedString{"45°C", {{{0, 5}, {.font = MenuBarFont{12.0}}}}}));
}

TEST_F(StatusItemTest, DoesNothingBeforeItIsCreated) {
    show(true, true, true);
    statusItem.updateStatusItem();
    statusItem.setImage(Image{"icon", true});
    EXPECT_EQ(calls, test::Calls{});
}

TEST_F(StatusItemTest, ShowsAndRemovesItsImage) {
    statusItem.create(bar, "statusMenu");
    statusItem.setImage(Image{"icon", true});
    EXPECT_EQ(bar.shown.image, (Image{"icon", true}));
    statusItem.setImage(std::nullopt);
    EXPECT_EQ(bar.shown.image, std::nullopt);
}

}  // namespace
}  // namespace calorivo
