#pragma once

#include "app/DesktopSettings.h"
#include "app/DriveExplanation.h"
#include "app/Explanation.h"
#include "platform/Dispatch.h"
#include "platform/Property.h"

#include <QMainWindow>

#include <functional>
#include <optional>
#include <string>
#include <vector>

class QSplitter;
class QStackedWidget;

namespace calorivo {

class AreaList;
class DetailsPanel;
class EmptyState;
class MainWindowControls;
class MainWindowStatus;
class MainWindowSummary;
class PyroluxAppDelegate;
class SensorProvider;
class SensorRowsView;
class SensorTableModel;

/// What the main window shows and acts on. All must outlive it.
struct MainWindowParts {
    PyroluxAppDelegate& delegate;
    const Dispatch& dispatch;
    /// Names the source and the model, and tells of problems; may be null.
    SensorProvider* provider;
    /// For example the path of the keys file; may be empty.
    std::string sourceDetail;
    /// May be empty: then nothing is explained.
    std::function<std::optional<Explanation>(SensorKey)> explain;
    /// The same for a drive, by the serial number in its row.
    std::function<std::optional<DriveExplanation>(const std::string& serial)> explainDrive{};
};

/// The program's main window: areas, sensors, averages and fans. While it is hidden or minimised it only
/// remembers that something changed, and catches up when it is seen again. It has no timer. Main thread.
class MainWindow final : public QMainWindow {
    Q_OBJECT
  public:
    /// The settings must outlive the window.
    explicit MainWindow(DesktopSettings& settings, QWidget* parent = nullptr);
    ~MainWindow() override;

    /// Once, before the program's first stage; the lists may still be empty then and are observed.
    void attach(const MainWindowParts& parts);

    /// Rows and values of the sensor table are to be asked for again.
    void reloadData();
    /// The same rows are to be painted again.
    void setNeedsDisplay();

    void copyRows();
    void focusFilter();
    void setDetailsShown(bool areShown);

    /// Puts geometry, splitter and columns into the settings.
    void saveLayout();

  Q_SIGNALS:
    /// The user closed it.
    void closed();
    void preferencesWanted();
    void resetMaximumsWanted();

  protected:
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

  private:
    void buildLayout();
    void connectControls();
    void connectTable();
    void observeParts();
    void restoreLayout();

    [[nodiscard]] bool isOnScreen() const { return isVisible() && !isMinimized(); }
    /// Marks it as stale and shows it if anybody sees it.
    void refresh(bool& isStale);
    void catchUp();
    void showMachine();
    void showContents();
    void showDetails();
    void showDetailsPanel();
    [[nodiscard]] QString chosenArea() const;
    [[nodiscard]] bool hasSensors() const;

    DesktopSettings& settings_;
    std::optional<MainWindowParts> parts_;
    SensorTableModel* model_ = nullptr;

    AreaList* areas_;
    MainWindowControls* controls_;
    SensorRowsView* table_;
    EmptyState* emptyState_;
    QStackedWidget* contents_;
    MainWindowSummary* summary_;
    DetailsPanel* details_;
    QSplitter* splitter_;
    MainWindowStatus* status_;

    // What changed since it was shown last.
    bool isMachineStale_ = true;
    bool areRowsStale_ = true;
    bool isDisplayStale_ = false;
    bool areAveragesStale_ = true;
    bool areFansStale_ = true;
    std::optional<WallTime> lastCheck_;

    // Last, so that nothing is heard any more when the rest goes.
    std::vector<Observation> observations_;
};

}  // namespace calorivo
