#include "ui/qt/MenuBarPane.h"

#include "ui/qt/KeyBinding.h"
#include "ui/qt/PaneForm.h"
#include "ui/qt/PanePopUp.h"
#include "ui/qt/PaneTitlePreview.h"

#include <QCheckBox>
#include <QComboBox>

#include <array>
#include <string_view>
#include <utility>

namespace calorivo {

MenuBarPane::MenuBarPane(const KeyValueCoding& keys, const KeyValueCoding& desktopKeys,
                         const MenuBarPopUps& popUps, std::function<std::string()> title, QWidget* parent)
    : QWidget(parent) {
    PaneForm form(*this);
    addReadings(form, keys, popUps);
    form.addGap();
    addTitlePlace(form, desktopKeys);
    form.addGap();
    addAppearance(form, keys);
    form.addGap();
    auto* const preview = new PaneTitlePreview(keys, desktopKeys, std::move(title), this);
    form.addRow(tr("Shown now:"), *preview);
    form.end();
}

void MenuBarPane::addReadings(PaneForm& form, const KeyValueCoding& keys, const MenuBarPopUps& popUps) {
    struct Reading {
        std::string_view isShownKey;
        QString isShown;
        std::string_view indexKey;
        QString choice;
        PopUpButton* menu;
        QString placeholder;
    };
    const std::array readings{
        Reading{"showTempInMenuBar", tr("&First temperature:"), "menuBarTempSensorIndex",
                tr("Sensor of the first temperature"), popUps.menuBarTempPopupButton, tr("Not available")},
        Reading{"showTemp2InMenuBar", tr("&Second temperature:"), "menuBarTemp2SensorIndex",
                tr("Sensor of the second temperature"), popUps.menuBarTemp2PopupButton, tr("Not available")},
        Reading{"showFanInMenuBar", tr("Fan s&peed:"), "menuBarFanSensorIndex", tr("Fan"),
                popUps.menuBarFanPopupButton, tr("No fan")},
    };
    for (const Reading& reading : readings) {
        QCheckBox& isShown = form.makeCheckBox(reading.isShown, keys, reading.isShownKey);
        auto* const choice = new PanePopUp(*reading.menu, keys, reading.indexKey, reading.placeholder, this);
        choice->setAccessibleName(reading.choice);
        form.addRow(isShown, *choice);
    }
    form.addNote(
        tr("The second temperature is shown together with the first one or with the fan speed, never "
           "alone."),
        "showTemp2InMenuBarNote");
}

void MenuBarPane::addTitlePlace(PaneForm& form, const KeyValueCoding& desktopKeys) {
    auto* const place = new QComboBox(this);
    place->addItems({tr("Where there is room"), tr("Beside the icon"), tr("Inside the icon")});
    KeyBinding::bind(*place, desktopKeys, "titlePlace");
    form.addRow(tr("Show the &readings:"), *place);
    form.addNote(
        tr("Many panels show no text beside an icon. There the digits of the first reading can take the "
           "icon's place."),
        "titlePlaceNote");
}

void MenuBarPane::addAppearance(PaneForm& form, const KeyValueCoding& keys) {
    form.addCheckBox(tr("S&maller font"), keys, "useSmallerMenuFont");
    form.addCheckBox(tr("S&horter titles, without units"), keys, "useShorterTitles");
    QCheckBox& icon = form.addCheckBox(tr("Show the &icon"), keys, "showAppIcon");
    PaneNote& note = form.addNote({}, "showAppIconNote");
    KeyBinding::follow(icon, keys, "isShowAppIconEnabled", [&icon, &note, &keys] {
        const bool isEnabled = keys.valueForKey("isShowAppIconEnabled").boolValue();
        icon.setEnabled(isEnabled);
        note.setNote(isEnabled
                         ? QString()
                         : tr("Without readings beside it, the icon is the only way to reach Calorivo."));
    });
}

}  // namespace calorivo
