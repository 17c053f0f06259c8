#include "ui/qt/TemperaturePane.h"

#include "ui/qt/KeyBinding.h"
#include "ui/qt/PaneForm.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QSpinBox>

#include <utility>

namespace calorivo {

namespace {

constexpr int fahrenheit = 1;
constexpr int aMinute = 60;
constexpr int aDay = 24 * 60 * 60;

}  // namespace

TemperaturePane::TemperaturePane(const KeyValueCoding& keys, std::function<void()> resetMaximums,
                                 std::function<bool()> canCheckDrives, QWidget* parent)
    : QWidget(parent), canCheckDrives_(std::move(canCheckDrives)) {
    PaneForm form(*this);
    addUnit(form, keys);
    form.addGap();
    addInterval(form, keys);
    form.addGap();
    addDrives(form, keys);
    form.addGap();
    addMaximums(form, resetMaximums);
    form.end();
    refreshPorts();
}

void TemperaturePane::addUnit(PaneForm& form, const KeyValueCoding& keys) {
    PaneChoice unit(*this, QStringLiteral("tempUnit"));
    unit.add(0, tr("&Celsius (°C)"));
    unit.add(fahrenheit, tr("&Fahrenheit (°F)"));
    KeyBinding::bind(unit.group(), keys, "tempUnit", fahrenheit);
    form.addRow(tr("Show temperatures in:"), unit.widget(), unit.first());
}

void TemperaturePane::addInterval(PaneForm& form, const KeyValueCoding& keys) {
    auto* const row = new QWidget(this);
    auto* const slider = new QSlider(Qt::Horizontal, row);
    slider->setObjectName(QStringLiteral("updateIntervalSecsSlider"));
    slider->setAccessibleName(tr("Seconds between two checks"));
    slider->setRange(1, aMinute);
    // Each new interval starts a check: only the one at which the knob is let go counts.
    slider->setTracking(false);
    auto* const seconds = new QSpinBox(row);
    seconds->setRange(1, aDay);
    seconds->setKeyboardTracking(false);
    seconds->setSuffix(tr(" s", "seconds"));
    KeyBinding::bind(*slider, keys, "updateIntervalSecs");
    KeyBinding::bind(*seconds, keys, "updateIntervalSecs");
    connect(slider, &QSlider::sliderMoved, seconds, [seconds](int value) {
        const QSignalBlocker blocker(seconds);
        seconds->setValue(value);
    });
    auto* const line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(slider, 1);
    line->addWidget(seconds);
    form.addRow(tr("Check &every:"), *row, *seconds);
    form.addNote(
        tr("A short interval follows quick changes. A long one leaves the processor asleep for longer "
           "and saves power."),
        "updateIntervalSecsNote");
}

void TemperaturePane::addDrives(PaneForm& form, const KeyValueCoding& keys) {
    checkDriveTemps_ = &form.addCheckBox(tr("Check the temperatures of &drives"), keys, "checkDriveTemps");
    drivesNote_ = &form.addNote({}, "checkDriveTempsNote");
}

void TemperaturePane::addMaximums(PaneForm& form, const std::function<void()>& resetMaximums) {
    auto* const reset = new QPushButton(tr("&Reset"), this);
    reset->setObjectName(QStringLiteral("resetMaximums"));
    reset->setAccessibleName(tr("Reset the recorded maximums"));
    reset->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    connect(reset, &QPushButton::clicked, this, [resetMaximums] { resetMaximums(); });
    form.addRow(tr("Recorded maximums:"), *reset);
    form.addNote(tr("The mark on each bar of the main window, at the highest temperature seen, begins anew."),
                 "resetMaximumsNote");
}

void TemperaturePane::refreshPorts() {
    const bool canCheck = canCheckDrives_ && canCheckDrives_();
    checkDriveTemps_->setEnabled(canCheck);
    drivesNote_->setNote(
        canCheck ? tr("Drives appear beside the sensors, among the choices for the menu bar and in the log.")
                 : tr("Not available: no drive of this computer tells its temperature."));
}

}  // namespace calorivo
