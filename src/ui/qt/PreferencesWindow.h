#pragma once

#include "app/Windows.h"
#include "platform/KeyValueCoding.h"
#include "ui/qt/PreferencesWindowPorts.h"

#include <QMainWindow>

#include <cstdint>
#include <string_view>

QT_BEGIN_NAMESPACE
class QActionGroup;
class QCloseEvent;
class QStackedWidget;
QT_END_NAMESPACE

namespace calorivo {

class AlertsPane;
class LogPane;
class PyroluxAppDelegate;
class TemperaturePane;
struct DesktopSettings;

/// The preferences: five panes of controls bound to the program's keys, and a tool bar to choose among them.
/// Escape and Ctrl+W close it, Ctrl+PgUp and Ctrl+PgDown change the pane. Main thread.
class PreferencesWindow final : public QMainWindow {
    Q_OBJECT

  public:
    /// The settings must outlive this window.
    explicit PreferencesWindow(DesktopSettings& settings, QWidget* parent = nullptr);

    /// Makes the panes; to be called once, before the first stage of start-up. The controller must outlive
    /// the last thing that the user does here.
    void attach(PyroluxAppDelegate& delegate, PreferencesPorts ports);

    // These three only after attach.
    void setIntValue(LimitLabel label, std::int32_t value);
    /// "Temperature", "MenuBar", "Alerts", "Log" or "General"; any other one does nothing.
    void setSelectedItemIdentifier(std::string_view identifier);
    /// In the order above; an index beyond does nothing.
    void selectTabViewItemAtIndex(std::int32_t index);

    /// The panes show what the ports answer now: to be called when a notification service comes or goes, and
    /// when drives do.
    void refreshPorts();

  Q_SIGNALS:
    /// The user closed the window; what was being typed has been taken.
    void closed();

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void defineDesktopKeys(DesktopSettings& settings);
    void makeToolBar();
    void makeShortcuts();
    void select(int index);
    void focusFirstControl();
    void selectNeighbour(int step);

    KeyValueCoding desktopKeys_;
    PyroluxAppDelegate* delegate_ = nullptr;
    QActionGroup& items_;
    QStackedWidget& tabView_;
    TemperaturePane* temperature_ = nullptr;
    AlertsPane* alerts_ = nullptr;
    LogPane* log_ = nullptr;
};

}  // namespace calorivo
