#include "app/SensorPopups.h"

#include "support/Machine.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace calorivo {
namespace {

using Titles = std::vector<std::string>;

class SensorPopupsTest : public testing::Test {
  protected:
    /// The menu's titles, "-" for a separator.
    [[nodiscard]] static Titles titles(const PopUpButton& button) {
        Titles all;
        for (const PopUpItem& item : button.menu()) all.push_back(item.isSeparatorItem ? "-" : item.title);
        return all;
    }
    [[nodiscard]] std::string name(SensorKey key) const {
        return machine.naming.convertKeyNameToHumanString(key);
    }
    [[nodiscard]] SensorPopups popupsFor(const MenuBarPopUps& buttons) {
        return {machine.lists, machine.naming, smartInfo, machine.fans, buttons};
    }

    test::Machine machine;
    SmartInfo smartInfo;
    PopUpButton first;
    PopUpButton second;
    PopUpButton fan;
    SensorPopups popups = popupsFor({&first, &second, &fan});
};

TEST_F(SensorPopupsTest, HaveOnlyTheAveragesWithoutSensorsDrivesAndFans) {
    popups.fillInSensorPopups();
    EXPECT_EQ(titles(first), (Titles{"Average Temperature", "-", "Average CPU Temperature"}));
    EXPECT_EQ(titles(second), titles(first));
    EXPECT_EQ(titles(fan), (Titles{"Average RPM"}));
}

TEST_F(SensorPopupsTest, ListEveryGroupInItsOrderAfterASeparator) {
    const DriveDictionary disk{" Disk", "A1 ", 30};
    smartInfo.assign({disk});
    SensorLists& lists = machine.lists;
    lists.cpuSensorNames = {"TC0P", "TC1C"};
    lists.gpuSensorNames = {"TG0D"};
    lists.batterySensorNames = {"TB0T"};
    lists.enclosureSensorNames = {"TA1P"};
    lists.lcdSensorNames = {"TL0P"};
    lists.logicBoardSensorNames = {"TS0P"};
    lists.memorySensorNames = {"TM0P"};
    lists.northBridgeSensorNames = {"TN0P"};
    lists.opticalSensorNames = {"TO0P"};
    lists.palmRestSensorNames = {"Ts0P"};
    lists.pciSensorNames = {"Te1P"};
    lists.powerSupplySensorNames = {"Tp0P"};
    lists.thunderBoltSensorNames = {"TI0P"};
    lists.airportSensorNames = {"TW0P"};
    // Neither of these has a place in the menus.
    lists.cpuRelativeSensorNames = {"TC0c"};
    lists.hdSensorNames = {"TH0A"};
    popups.fillInSensorPopups();

    PopUpButton::Menu expected{{"Average Temperature"},
                               PopUpItem::separatorItem(),
                               {"Average CPU Temperature"},
                               {name("TC0P"), SensorKey("TC0P")},
                               {name("TC1C"), SensorKey("TC1C")}};
    const auto group = [&](SensorKey key) {
        expected.push_back(PopUpItem::separatorItem());
        expected.push_back({name(key), key});
    };
    for (const SensorKey key : {SensorKey("TG0D"), SensorKey("TB0T"), SensorKey("TA1P")}) group(key);
    expected.push_back(PopUpItem::separatorItem());
    expected.push_back({"Disk (A1)", disk});
    for (const SensorKey key :
         {SensorKey("TL0P"), SensorKey("TS0P"), SensorKey("TM0P"), SensorKey("TN0P"), SensorKey("TO0P"),
          SensorKey("Ts0P"), SensorKey("Te1P"), SensorKey("Tp0P"), SensorKey("TI0P"), SensorKey("TW0P")})
        group(key);
    EXPECT_EQ(first.menu(), expected);
    EXPECT_EQ(second.menu(), expected);
}

TEST_F(SensorPopupsTest, HaveNoSeparatorForAGroupWithoutSensors) {
    machine.lists.cpuSensorNames = {"TC0P"};
    machine.lists.batterySensorNames = {"TB0T"};
    popups.fillInSensorPopups();
    EXPECT_EQ(titles(first), (Titles{"Average Temperature", "-", "Average CPU Temperature", name("TC0P"), "-",
                                     name("TB0T")}));
}

TEST_F(SensorPopupsTest, ListTheFansWhatTheyAre) {
    machine.fan(1800, 1200, 6000, "Left").fan(1900, 1200, 6000, "Right");
    popups.fillInSensorPopups();
    EXPECT_EQ(fan.menu(), (PopUpButton::Menu{{"Average RPM"},
                                             PopUpItem::separatorItem(),
                                             {"Left", machine.fans.fansArray()[0]},
                                             {"Right", machine.fans.fansArray()[1]}}));
}

TEST_F(SensorPopupsTest, AreBuiltAnewEachTime) {
    machine.lists.cpuSensorNames = {"TC0P"};
    smartInfo.assign({{"Disk", "A1", 30}});
    popups.fillInSensorPopups();
    smartInfo.clear();
    int told = 0;
    const Observation a = first.observeMenu([&] { ++told; });
    const Observation b = second.observeMenu([&] { ++told; });
    const Observation c = fan.observeMenu([&] { ++told; });
    popups.fillInSensorPopups();
    EXPECT_EQ(titles(first), (Titles{"Average Temperature", "-", "Average CPU Temperature", name("TC0P")}));
    EXPECT_EQ(told, 3);
}

TEST_F(SensorPopupsTest, GiveTheSecondButtonAMenuOfItsOwn) {
    popups.fillInSensorPopups();
    first.addItem({"more"});
    EXPECT_EQ(titles(second), (Titles{"Average Temperature", "-", "Average CPU Temperature"}));
}

TEST_F(SensorPopupsTest, AreLeftAloneUnlessAllButtonsAreThere) {
    const std::vector<MenuBarPopUps> incomplete{
        {nullptr, &second, &fan}, {&first, nullptr, &fan}, {&first, &second, nullptr}};
    for (const MenuBarPopUps& buttons : incomplete) {
        for (PopUpButton* const button : {&first, &second, &fan}) button->setMenu({{"old"}});
        popupsFor(buttons).fillInSensorPopups();
        for (const PopUpButton* const button : {&first, &second, &fan})
            EXPECT_EQ(titles(*button), (Titles{"old"}));
    }
}

TEST_F(SensorPopupsTest, PutTheSeparatorIntoTheFirstMenuWhicheverMenuIsFilled) {
    popups.addSensorArrayToPopup({"TC0P"}, second);
    EXPECT_EQ(titles(first), (Titles{"-"}));
    EXPECT_EQ(titles(second), (Titles{name("TC0P")}));
    popups.addSensorArrayToPopup({}, second);
    popups.addSensorArrayToPopupWithSeparator({"TM0P"}, second, false);
    EXPECT_EQ(titles(first), (Titles{"-"}));
    EXPECT_EQ(titles(second), (Titles{name("TC0P"), name("TM0P")}));
}

}  // namespace
}  // namespace calorivo
