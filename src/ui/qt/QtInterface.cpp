#include "ui/qt/QtInterface.h"

#include "app/PyroluxAppDelegate.h"
#include "ui/qt/AboutWindow.h"
#include "ui/qt/Menus.h"

#include <QGuiApplication>
#include <QMenuBar>
#include <QScreen>
#include <QTimer>
#include <QWindow>

#include <utility>

namespace calorivo {

namespace {

void bringToFront(QWidget& window) {
    if (window.isMinimized())
        window.showNormal();
    else
        window.show();
    window.raise();
    window.activateWindow();
}

}  // namespace

QtInterface::QtInterface(DesktopSettings& settings, QString version)
    : main_(settings),
      preferences_(settings),
      statusMenu_(makeStatusMenu(actions_)),
      version_(std::move(version)) {
    main_.setMenuBar(makeMenuBar(actions_, &main_));
    connectActions();
}

void QtInterface::attach(const MainWindowParts& parts, PreferencesPorts ports) {
    delegate_ = &parts.delegate;
    actions_.attach(parts.delegate);
    connect(actions_.openLog, &QAction::triggered, this, [this] { delegate_->logger().openLogFile(); });
    connect(actions_.revealLog, &QAction::triggered, this,
            [this] { delegate_->logger().revealLogFileInFinder(); });
    main_.attach(parts);
    preferences_.attach(parts.delegate, std::move(ports));
}

void QtInterface::connectActions() {
    connect(actions_.quit, &QAction::triggered, this, &QtInterface::quitWanted);
    connect(actions_.statusQuit, &QAction::triggered, this, &QtInterface::quitWanted);
    connect(actions_.about, &QAction::triggered, this, &QtInterface::showAbout);
    connect(actions_.statusAbout, &QAction::triggered, this, &QtInterface::showAbout);
    connect(actions_.copyRows, &QAction::triggered, &main_, &MainWindow::copyRows);
    connect(actions_.findSensor, &QAction::triggered, &main_, &MainWindow::focusFilter);
    connect(actions_.showDetails, &QAction::toggled, &main_, &MainWindow::setDetailsShown);
    connect(actions_.closeWindow, &QAction::triggered, &main_, &QWidget::close);
    connect(&main_, &MainWindow::preferencesWanted, actions_.preferences, &QAction::trigger);
    connect(&main_, &MainWindow::resetMaximumsWanted, actions_.resetMaximums, &QAction::trigger);
    connect(&main_, &MainWindow::closed, this, [this] { windowClosed(WindowName::window); });
    connect(&preferences_, &PreferencesWindow::closed, this,
            [this] { windowClosed(WindowName::prefWindow); });
}

QMenu* QtInterface::menuNamed(std::string_view name) const {
    return name == statusMenuName ? statusMenu_.get() : nullptr;
}

void QtInterface::saveLayout() { main_.saveLayout(); }

void QtInterface::activateIgnoringOtherApps() {
    for (QWidget* const window : {static_cast<QWidget*>(&main_), static_cast<QWidget*>(&preferences_)})
        if (window->isVisible()) window->raise();
}

void QtInterface::center(WindowName name) {
    QWidget* const window = widget(name);
    if (window == nullptr) return;
    const QScreen* const screen = main_.isVisible() ? main_.screen() : QGuiApplication::primaryScreen();
    if (screen == nullptr) return;
    window->adjustSize();
    QRect frame = window->frameGeometry();
    frame.moveCenter(screen->availableGeometry().center());
    window->move(frame.topLeft());
}

void QtInterface::orderFront(WindowName name) {
    QWidget* const window = widget(name);
    if (window == nullptr) return;
    window->setAttribute(Qt::WA_ShowWithoutActivating);
    window->show();
    window->raise();
}

void QtInterface::makeKeyAndOrderFront(WindowName name) {
    QWidget* const window = widget(name);
    if (window == nullptr) return;
    if (std::exchange(beginsMinimised_, false) && name == WindowName::window) {
        window->showMinimized();
        return;
    }
    bringToFront(*window);
}

void QtInterface::setLevel(WindowName name, WindowLevel level) {
    if (QWidget* const window = widget(name))
        window->setWindowFlag(Qt::WindowStaysOnTopHint, level == WindowLevel::modalPanel);
}

void QtInterface::setStatusAboutMenuItemTitle(const std::string& title) {
    actions_.setStatusAboutMenuItemTitle(title);
}

void QtInterface::showAbout() {
    if (about_.isNull()) {
        about_ = new AboutWindow(version_, &main_);
        if (delegate_ != nullptr) about_->attach(actions_, delegate_->links());
        about_->setAttribute(Qt::WA_DeleteOnClose);
    }
    bringToFront(*about_);
}

void QtInterface::windowClosed(WindowName window) {
    if (delegate_ == nullptr) return;
    Q_EMIT savingExpected();
    delegate_->windowWillClose(window);
    // Once the window is gone.
    QTimer::singleShot(0, this, [this] {
        if (!hasVisibleWindow() && delegate_->applicationShouldTerminateAfterLastWindowClosed())
            Q_EMIT quitWanted();
    });
}

bool QtInterface::hasVisibleWindow() const {
    return main_.isVisible() || preferences_.isVisible() || (!about_.isNull() && about_->isVisible());
}

QWidget* QtInterface::widget(WindowName window) {
    switch (window) {
        case WindowName::window:
            return &main_;
        case WindowName::prefWindow:
            return &preferences_;
        case WindowName::vantixUpgradeWindow:
            return upgradeWindow_;
    }
    return nullptr;
}

}  // namespace calorivo
