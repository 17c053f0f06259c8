#include "ui/qt/GeneralPane.h"

#include "ui/qt/KeyBinding.h"
#include "ui/qt/PaneForm.h"

#include <QCheckBox>
#include <QComboBox>

namespace calorivo {

namespace {

constexpr int normalMode = 0;
constexpr int menuOnlyMode = 1;

}  // namespace

GeneralPane::GeneralPane(const KeyValueCoding& keys, const KeyValueCoding& desktopKeys, QWidget* parent)
    : QWidget(parent) {
    PaneForm form(*this);
    addMode(form, keys);
    form.addGap();
    form.addCheckBox(tr("Start when I &log in"), keys, "launchOnLogin");
    form.addCheckBox(tr("Start &hidden"), keys, "hideOnLaunch");
    form.addGap();
    addColors(form, desktopKeys);
    form.end();
}

void GeneralPane::addMode(PaneForm& form, const KeyValueCoding& keys) {
    PaneChoice mode(*this, QStringLiteral("appMode"));
    mode.add(normalMode, tr("In a &window, among the running programs"));
    mode.add(menuOnlyMode, tr("In the &menu bar only"));
    KeyBinding::bind(mode.group(), keys, "appMode", normalMode);
    form.addRow(tr("Calorivo runs:"), mode.widget(), mode.first());
    form.addNote(
        tr("A change takes effect when Calorivo is started the next time. In the menu bar only, it also "
           "starts when you log in."),
        "appModeNote");
}

void GeneralPane::addColors(PaneForm& form, const KeyValueCoding& desktopKeys) {
    auto* const scheme = new QComboBox(this);
    scheme->addItems({tr("Those of the desktop"), tr("Light"), tr("Dark")});
    scheme->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    KeyBinding::bind(*scheme, desktopKeys, "colorScheme");
    form.addRow(tr("&Colors:"), *scheme);
}

}  // namespace calorivo
