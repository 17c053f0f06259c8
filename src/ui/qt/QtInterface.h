#pragma once

#include "app/Windows.h"
#include "ui/qt/Actions.h"
#include "ui/qt/MainWindow.h"
#include "ui/qt/PreferencesWindow.h"

#include <QMenu>
#include <QObject>
#include <QPointer>

#include <memory>
#include <string>

namespace calorivo {

/// All windows and menus of the program, as the controller moves them. The windows are made when they are
/// first asked for, but for the main one. Main thread.
class AboutWindow;

class QtInterface final : public QObject, public Windows, public Controls, public SensorTableView {
    Q_OBJECT

  public:
    /// `settings` must outlive this object. `version` is for the About window.
    QtInterface(DesktopSettings& settings, QString version);

    /// The controller's way to all of it.
    [[nodiscard]] Interface interface() { return {*this, *this, *this}; }
    /// Once, before the first stage of start-up. What the parts refer to must outlive this object.
    void attach(const MainWindowParts& parts, PreferencesPorts ports);
    /// The main window comes up minimised the first time.
    void beginMinimised() { beginsMinimised_ = true; }
    /// Null for a name of no menu.
    [[nodiscard]] QMenu* menuNamed(std::string_view name) const;
    [[nodiscard]] Actions& actions() { return actions_; }
    [[nodiscard]] QMainWindow& mainWindow() { return main_; }
    /// There is none unless this is called. Null, or a window that outlives its use here.
    void setUpgradeWindow(QWidget* window) { upgradeWindow_ = window; }
    /// What stands where, into the settings.
    void saveLayout();
    /// What the ports answer has changed.
    void refreshPorts() { preferences_.refreshPorts(); }

    // Windows
    void activateIgnoringOtherApps() override;
    void center(WindowName window) override;
    void orderFront(WindowName window) override;
    void makeKeyAndOrderFront(WindowName window) override;
    /// There is no hiding of whole programs here.
    void setCanHide(WindowName /*window*/, bool /*canHide*/) override {}
    /// The main window opens where it was left.
    void setShouldCascadeWindows(WindowName /*window*/, bool /*shouldCascade*/) override {}
    void setLevel(WindowName window, WindowLevel level) override;

    // Controls
    void setIntValue(LimitLabel label, std::int32_t value) override {
        preferences_.setIntValue(label, value);
    }
    void setSelectedItemIdentifier(std::string_view identifier) override {
        preferences_.setSelectedItemIdentifier(identifier);
    }
    void selectTabViewItemAtIndex(std::int32_t index) override {
        preferences_.selectTabViewItemAtIndex(index);
    }
    void setStatusAboutMenuItemTitle(const std::string& title) override;
    void setQuitMenuItemKeyEquivalent(std::string_view key) override {
        actions_.setQuitMenuItemKeyEquivalent(key);
    }

    // SensorTableView
    void reloadData() override { main_.reloadData(); }
    void setNeedsDisplay() override { main_.setNeedsDisplay(); }

  Q_SIGNALS:
    /// By the user: a menu, or the last window of a program that ends with it.
    void quitWanted();
    /// The preferences may be saved next: what is to be saved with them is to be set now.
    void savingExpected();

  private:
    void connectActions();
    void showAbout();
    void windowClosed(WindowName window);
    [[nodiscard]] bool hasVisibleWindow() const;
    /// Null for a window that there is none of.
    [[nodiscard]] QWidget* widget(WindowName window);

    Actions actions_;
    MainWindow main_;
    PreferencesWindow preferences_;
    const std::unique_ptr<QMenu> statusMenu_;
    QPointer<AboutWindow> about_;
    QPointer<QWidget> upgradeWindow_;
    const QString version_;
    PyroluxAppDelegate* delegate_ = nullptr;
    bool beginsMinimised_ = false;
};

}  // namespace calorivo
