#include "app/SensorPopups.h"

#include <array>
#include <utility>

namespace calorivo {

namespace {

constexpr std::array groupsBeforeDrives{&SensorLists::gpuSensorNames, &SensorLists::batterySensorNames,
                                        &SensorLists::enclosureSensorNames};
constexpr std::array groupsAfterDrives{
    &SensorLists::lcdSensorNames,         &SensorLists::logicBoardSensorNames,
    &SensorLists::memorySensorNames,      &SensorLists::northBridgeSensorNames,
    &SensorLists::opticalSensorNames,     &SensorLists::palmRestSensorNames,
    &SensorLists::pciSensorNames,         &SensorLists::powerSupplySensorNames,
    &SensorLists::thunderBoltSensorNames, &SensorLists::airportSensorNames};

}  // namespace

void SensorPopups::fillInSensorPopups() {
    if (popUps_.menuBarTempPopupButton == nullptr || popUps_.menuBarTemp2PopupButton == nullptr ||
        popUps_.menuBarFanPopupButton == nullptr)
        return;
    for (PopUpButton* const popup :
         {popUps_.menuBarTempPopupButton, popUps_.menuBarTemp2PopupButton, popUps_.menuBarFanPopupButton})
        popup->removeAllItems();
    fillTemperatures(*popUps_.menuBarTempPopupButton);
    fillFans(*popUps_.menuBarFanPopupButton);
    popUps_.menuBarTemp2PopupButton->setMenu(popUps_.menuBarTempPopupButton->menu());
    popUps_.menuBarTempPopupButton->announceMenu();
    popUps_.menuBarFanPopupButton->announceMenu();
}

void SensorPopups::fillTemperatures(PopUpButton& popup) {
    popup.addItem({"Average Temperature"});
    popup.addItem(PopUpItem::separatorItem());
    popup.addItem({"Average CPU Temperature"});
    addSensorArrayToPopupWithSeparator(lists_.cpuSensorNames, popup, false);
    for (const auto group : groupsBeforeDrives) addSensorArrayToPopup(lists_.*group, popup);
    addDrives(popup);
    for (const auto group : groupsAfterDrives) addSensorArrayToPopup(lists_.*group, popup);
}

void SensorPopups::addDrives(PopUpButton& popup) {
    const std::vector<DriveDictionary> drives = smartInfo_.drives();
    if (drives.empty()) return;
    popup.addItem(PopUpItem::separatorItem());
    for (const DriveDictionary& drive : drives)
        popup.addItem({driveDescriptionFromDictionary(&drive), drive});
}

void SensorPopups::fillFans(PopUpButton& popup) {
    popup.addItem({"Average RPM"});
    if (fans_.fansArray().empty()) return;
    popup.addItem(PopUpItem::separatorItem());
    for (const FanModel& fan : fans_.fansArray()) popup.addItem({fan.name, fan});
}

void SensorPopups::addSensorArrayToPopup(const KeyList& sensors, PopUpButton& popup) {
    addSensorArrayToPopupWithSeparator(sensors, popup, true);
}

void SensorPopups::addSensorArrayToPopupWithSeparator(const KeyList& sensors, PopUpButton& popup,
                                                      bool withSeparator) {
    if (sensors.isEmpty()) return;
    // Kept: the separator goes to the first temperature menu, whichever menu the sensors go to.
    if (withSeparator && popUps_.menuBarTempPopupButton != nullptr)
        popUps_.menuBarTempPopupButton->addItem(PopUpItem::separatorItem());
    for (const SensorKey key : sensors) addSensorToPopup(key, popup);
}

void SensorPopups::addSensorToPopup(SensorKey key, PopUpButton& popup) {
    popup.addItem({naming_.convertKeyNameToHumanString(key), key});
}

}  // namespace calorivo
