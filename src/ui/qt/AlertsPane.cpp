#include "ui/qt/AlertsPane.h"

#include "ui/qt/KeyBinding.h"
#include "ui/qt/LimitSlider.h"
#include "ui/qt/PaneForm.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>

#include <utility>

namespace calorivo {

namespace {

struct Limit {
    const char* key;
    std::array<const char*, LimitScale::labelCount> labels;
    const char* text;
};

constexpr std::array<Limit, 2> limits{
    {{"limitForSpecificArea",
      {"specificAreaLowLabel", "specificAreaMedLabel", "specificAreaHighLabel"},
      QT_TRANSLATE_NOOP("calorivo::AlertsPane", "Limit for a &single sensor:")},
     {"limitForAverage",
      {"averageLowLabel", "averageMedLabel", "averageHighLabel"},
      QT_TRANSLATE_NOOP("calorivo::AlertsPane", "Limit for the &average:")}}};

}  // namespace

AlertsPane::AlertsPane(const KeyValueCoding& keys, const Property<std::int32_t>& tempUnit,
                       PreferencesPorts ports, QWidget* parent)
    : QWidget(parent), keys_(keys), tempUnit_(tempUnit), ports_(std::move(ports)) {
    PaneForm form(*this);
    form.addCheckBox(tr("&Notify me of temperatures above their limits"), keys_, "showAlerts");
    form.addGap();
    for (std::size_t index = 0; index < limits.size(); ++index) addLimit(form, index);
    form.addNote(
        tr("Limits are in degrees Celsius. A sensor that stays above its limit is reported again after "
           "ten minutes."),
        "limitsNote");
    form.addGap();
    form.addCheckBox(tr("Notifications stay until they are &clicked"), keys_, "useStickyAlerts");
    form.addGap();
    addTest(form);
    form.end();
    refreshPorts();
}

void AlertsPane::addLimit(PaneForm& form, std::size_t index) {
    const Limit& limit = limits.at(index);
    auto* const row = new QWidget(this);
    auto* const scale = new LimitScale(limit.labels, row);
    auto* const value = new QLabel(row);
    value->setObjectName(QLatin1String(limit.key) + QLatin1String("Value"));
    value->setMinimumWidth(value->fontMetrics().horizontalAdvance(
        tr("%1 (%2)").arg(QStringLiteral("100°C"), QStringLiteral("212°F"))));
    KeyBinding::bind(scale->slider(), keys_, limit.key);
    for (const char* const key : {limit.key, "tempUnit"})
        KeyBinding::follow(*value, keys_, key, [this, value, &limit] { showLimit(*value, limit.key); });
    auto* const line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    line->addWidget(scale, 1);
    line->addWidget(value, 0, Qt::AlignTop);
    form.addRow(tr(limit.text), *row, scale->slider());
    scales_.at(index) = scale;
}

void AlertsPane::showLimit(QLabel& value, std::string_view key) const {
    const std::int32_t limit = keys_.valueForKey(key).intValue();
    const QString celsius = QString::number(limit) + QStringLiteral("°C");
    const QString inUnit = QString::fromStdString(formatter_.stringForObjectValue(limit).value_or(""));
    value.setText(inUnit == celsius ? celsius : tr("%1 (%2)").arg(celsius, inUnit));
}

void AlertsPane::addTest(PaneForm& form) {
    test_ = new QPushButton(tr("Send a &Test Notification"), this);
    test_->setObjectName(QStringLiteral("sendTestNotification"));
    test_->setAccessibleName(spokenText(test_->text()));
    test_->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    connect(test_, &QPushButton::clicked, this, [this] { ports_.sendTestNotification(); });
    form.addRow(*test_);
    serviceNote_ = &form.addNote({}, "notificationServiceNote");
}

void AlertsPane::setIntValue(LimitLabel label, std::int32_t celsius) {
    const auto index = static_cast<std::size_t>(label);
    scales_.at(index / LimitScale::labelCount)->setIntValue(index % LimitScale::labelCount, celsius);
}

void AlertsPane::refreshPorts() {
    if (!ports_.sendTestNotification) {
        test_->setEnabled(false);
        serviceNote_->setNote(tr("Not available: this program cannot send notifications here."));
        return;
    }
    const std::string problem =
        ports_.notificationServiceProblem ? ports_.notificationServiceProblem() : std::string();
    test_->setEnabled(problem.empty());
    serviceNote_->setNote(problem.empty() ? tr("Notifications are shown by the desktop.")
                                          : QString::fromStdString(problem));
}

}  // namespace calorivo
