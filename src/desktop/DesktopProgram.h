#pragma once

#include "app/DesktopSettings.h"
#include "app/DriveExplanation.h"
#include "app/PyroluxAppDelegate.h"
#include "desktop/CheckAfterSleep.h"
#include "desktop/DesktopOptions.h"
#include "desktop/DesktopSystem.h"
#include "desktop/MoveOffer.h"
#include "host/Graphics.h"
#include "platform/linux/LinuxPaths.h"
#include "platform/qt/PortalSettings.h"
#include "ui/qt/QtInterface.h"

#include <QPalette>

#include <memory>
#include <optional>
#include <string>
#include <vector>

class QApplication;

namespace calorivo {

class Drives;

/// One run of the desktop program: the controller between the system and the windows. Main thread; one at a
/// time.
class DesktopProgram {
  public:
    /// All must outlive it.
    DesktopProgram(QApplication& application, const DesktopOptions& options, const LinuxPaths& paths);
    DesktopProgram(const DesktopProgram&) = delete;
    DesktopProgram& operator=(const DesktopProgram&) = delete;
    ~DesktopProgram();

    /// Both stages of start-up, as far as they come before the event loop. What is wrong with the source that
    /// the options name; empty when nothing is: then the loop is to be run.
    [[nodiscard]] std::string start();
    /// Saves everything, for an end that may still be called off.
    void save();
    /// Saves everything and closes the hardware; the second time nothing. Afterwards the process is to end.
    void terminate();
    void showMainWindow(const QString& activationToken);

  private:
    void makeDelegate();
    [[nodiscard]] ApplicationPorts applicationPorts();
    [[nodiscard]] std::function<void()> offerToMove();
    void connectParts();
    void followAppearance();
    void applyAppearance();
    void becomeActive();
    /// The preferences may not be loaded yet: saving would lose them.
    [[nodiscard]] bool isStartingUp() const;
    /// Into the store, which is written with the preferences.
    void keepSettings();
    /// When start-up is over.
    void tellOfProblems();
    void tellHowItIsReached();
    [[nodiscard]] StatusBarResources statusBarResources() const;
    [[nodiscard]] PreferencesPorts preferencesPorts();
    [[nodiscard]] std::optional<DriveExplanation> explainDrive(const std::string& serial) const;

    QApplication& application_;
    const DesktopOptions& options_;
    const LinuxPaths& paths_;
    const QPalette desktopPalette_;
    DesktopSystem system_;
    DesktopSettings settings_;
    PortalSettings portal_;
    QtInterface interface_;
    std::unique_ptr<Graphics> graphics_;
    std::unique_ptr<MoveOffer> moveOffer_;
    std::unique_ptr<PyroluxAppDelegate> delegate_;
    std::optional<CheckAfterSleep> checkAfterSleep_;
    /// The controller's; null until drives are to be read.
    const Drives* drives_ = nullptr;
    std::vector<std::string> problems_;
    std::vector<Observation> observations_;
    std::unique_ptr<Timer> trayTimer_;
    bool hasTerminated_ = false;
};

}  // namespace calorivo
