#include "output/StatusItem.h"

#include "platform/Format.h"
#include "smc/SmcReaders.h"

#include <algorithm>
#include <utility>
#include <variant>

namespace calorivo {

namespace {

constexpr std::string_view degreeSign = "\u00B0";
constexpr std::string_view speedSuffix = " RPM";

/// Cuts the text before the first `mark`; a text without it stays whole.
void cutBefore(std::string& text, std::string_view mark) {
    text.resize(std::min(text.find(mark), text.size()));
}

}  // namespace

void StatusItem::create(StatusBar& statusBar, std::string_view menuName) {
    statusItem_ = statusBar.statusItemWithLength(StatusBar::variableLength);
    statusItem_->setMenu(menuName);
    statusItem_->setHighlightMode(true);
}

void StatusItem::setImage(const std::optional<Image>& image) {
    if (statusItem_ != nullptr) statusItem_->setImage(image);
}

void StatusItem::updateStatusItem() {
    if (statusItem_ == nullptr) return;
    constexpr double smallerSize = 12.0;
    std::string text = title();
    if (!parts_.preferences.useSmallerMenuFont) {
        statusItem_->setTitle(text);
        return;
    }
    const TextRange whole{0, text.size()};
    statusItem_->setAttributedTitle({std::move(text), {{whole, {.font = MenuBarFont{smallerSize}}}}});
}

std::string StatusItem::title() {
    const Preferences& preferences = parts_.preferences;
    const MenuBarPopUps& popUps = parts_.popUps;
    const std::string_view separator = preferences.useShorterTitles ? " " : " / ";
    std::string title;
    const auto addPiece = [&](const std::string& piece) {
        if (!title.empty()) title += separator;
        title += piece;
    };
    if (preferences.showTempInMenuBar)
        addPiece(getStringForSensorPopupButtonAtItemIndex(popUps.menuBarTempPopupButton,
                                                          preferences.menuBarTempSensorIndex));
    else if (!preferences.showFanInMenuBar)
        return title;  // Kept: the second temperature is never shown alone.
    if (preferences.showTemp2InMenuBar)
        addPiece(getStringForSensorPopupButtonAtItemIndex(popUps.menuBarTemp2PopupButton,
                                                          preferences.menuBarTemp2SensorIndex));
    if (preferences.showFanInMenuBar) addPiece(fanPiece());
    return title;
}

std::string StatusItem::getStringForSensorPopupButtonAtItemIndex(const PopUpButton* button,
                                                                 std::int32_t index) {
    std::string reading;
    if (index == averageTemperatureItem) {
        reading = parts_.averages.avgTempAsString;
    } else if (index == averageCPUTemperatureItem) {
        reading = parts_.averages.avgCPUTempAsString;
    } else if (button != nullptr) {
        // An index that was stored for another machine, or before a drive vanished, must never break the bar.
        if (const PopUpItem* const item = button->itemAtIndex(index)) reading = readingOf(*item);
    }
    if (parts_.preferences.useShorterTitles) cutBefore(reading, degreeSign);
    return reading;
}

std::string StatusItem::readingOf(const PopUpItem& item) {
    if (const auto* drive = std::get_if<DriveDictionary>(&item.representedObject))
        return readingOfDrive(*drive);
    if (const auto* key = std::get_if<SensorKey>(&item.representedObject))
        return parts_.reader.convertDegreesToString(parts_.reader.getCachedTemperatureForSensor(*key));
    return {};
}

std::string StatusItem::readingOfDrive(const DriveDictionary& drive) const {
    if (const auto celsius = parts_.smartInfo.temperatureOfDriveWithSerial(drive.serial))
        return parts_.reader.convertDegreesToString(*celsius);
    // Kept: a drive that vanished shows 0 degrees Celsius and not "N/A", so that the place it had in the menu
    // bar does not look like a sensor that failed.
    const double zero = parts_.preferences.tempUnit == 0 ? 0.0 : 32.0;
    return format("%.0f%@", zero, parts_.reader.degreesLabelString());
}

std::string StatusItem::fanPiece() const {
    std::string piece;
    const std::int32_t index = parts_.preferences.menuBarFanSensorIndex;
    if (index == averageRPMItem) {
        piece = parts_.fans.avgRPMAsString;
    } else if (const PopUpButton* const button = parts_.popUps.menuBarFanPopupButton) {
        const PopUpItem* const item = button->itemAtIndex(index);
        const auto* const fan = item != nullptr ? std::get_if<FanModel>(&item->representedObject) : nullptr;
        // The separator has no fan: an empty piece, and no key to read.
        if (fan != nullptr) piece = format("%d RPM", smcFanSpeed(fan->actualRPMSensorName));
    }
    if (parts_.preferences.useShorterTitles) cutBefore(piece, speedSuffix);
    return piece;
}

}  // namespace calorivo
