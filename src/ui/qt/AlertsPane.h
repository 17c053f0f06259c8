#pragma once

#include "app/Windows.h"
#include "platform/KeyValueCoding.h"
#include "platform/Property.h"
#include "ui/TemperatureFormatter.h"
#include "ui/qt/PreferencesWindowPorts.h"

#include <QWidget>

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

QT_BEGIN_NAMESPACE
class QLabel;
class QPushButton;
QT_END_NAMESPACE

namespace calorivo {

class LimitScale;
class PaneForm;
class PaneNote;

/// When the user is notified of temperatures that are too high.
class AlertsPane final : public QWidget {
    Q_OBJECT

  public:
    /// `keys` and `tempUnit` must outlive this pane.
    AlertsPane(const KeyValueCoding& keys, const Property<std::int32_t>& tempUnit, PreferencesPorts ports,
               QWidget* parent);

    void setIntValue(LimitLabel label, std::int32_t celsius);
    /// Shows what the ports answer now.
    void refreshPorts();

  private:
    void addLimit(PaneForm& form, std::size_t index);
    void showLimit(QLabel& value, std::string_view key) const;
    void addTest(PaneForm& form);

    const KeyValueCoding& keys_;
    const Property<std::int32_t>& tempUnit_;
    const TemperatureFormatter formatter_{tempUnit_};
    PreferencesPorts ports_;
    std::array<LimitScale*, 2> scales_{};
    QPushButton* test_ = nullptr;
    PaneNote* serviceNote_ = nullptr;
};

}  // namespace calorivo
