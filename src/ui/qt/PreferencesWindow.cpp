#include "ui/qt/PreferencesWindow.h"

#include "app/DesktopSettings.h"
#include "app/PyroluxAppDelegate.h"
#include "ui/qt/AlertsPane.h"
#include "ui/qt/GeneralPane.h"
#include "ui/qt/LogPane.h"
#include "ui/qt/MenuBarPane.h"
#include "ui/qt/TemperaturePane.h"
#include "ui/qt/TemplateIcon.h"

#include <QAction>
#include <QActionGroup>
#include <QCloseEvent>
#include <QKeySequence>
#include <QSize>
#include <QStackedWidget>
#include <QString>
#include <QToolBar>

#include <array>
#include <utility>

namespace calorivo {

namespace {

struct ToolBarItem {
    const char* identifier;
    const char* label;
    const char* icon;
};

/// In the order of the panes.
constexpr std::array<ToolBarItem, 5> toolBarItems{{
    {"Temperature", QT_TRANSLATE_NOOP("calorivo::PreferencesWindow", "Temperature"), "pane-temperature"},
    {"MenuBar", QT_TRANSLATE_NOOP("calorivo::PreferencesWindow", "Menu Bar"), "pane-menubar"},
    {"Alerts", QT_TRANSLATE_NOOP("calorivo::PreferencesWindow", "Alerts"), "pane-alerts"},
    {"Log", QT_TRANSLATE_NOOP("calorivo::PreferencesWindow", "Log"), "pane-log"},
    {"General", QT_TRANSLATE_NOOP("calorivo::PreferencesWindow", "General"), "pane-general"},
}};

constexpr int paneIconSize = 32;

}  // namespace

PreferencesWindow::PreferencesWindow(DesktopSettings& settings, QWidget* parent)
    : QMainWindow(parent), items_(*new QActionGroup(this)), tabView_(*new QStackedWidget(this)) {
    setObjectName(QStringLiteral("prefWindow"));
    setWindowTitle(tr("Preferences"));
    setContextMenuPolicy(Qt::NoContextMenu);
    tabView_.setObjectName(QStringLiteral("preferencesTabView"));
    setCentralWidget(&tabView_);
    defineDesktopKeys(settings);
    makeToolBar();
    makeShortcuts();
}

void PreferencesWindow::defineDesktopKeys(DesktopSettings& settings) {
    desktopKeys_.define("titlePlace", settings.titlePlace);
    desktopKeys_.define("colorScheme", settings.colorScheme);
}

void PreferencesWindow::makeToolBar() {
    auto* const toolBar = addToolBar(tr("Panes"));
    toolBar->setObjectName(QStringLiteral("preferencesToolbar"));
    toolBar->setMovable(false);
    toolBar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    toolBar->setIconSize(QSize(paneIconSize, paneIconSize));
    items_.setExclusive(true);
    for (const ToolBarItem& item : toolBarItems) {
        QAction* const action = items_.addAction(templateIcon(QLatin1String(item.icon)), tr(item.label));
        action->setObjectName(QLatin1String(item.identifier));
        action->setCheckable(true);
        toolBar->addAction(action);
        // The keyboard reaches the panes too.
        toolBar->widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
        toolBar->widgetForAction(action)->setAccessibleName(tr(item.label));
    }
    connect(&items_, &QActionGroup::triggered, this, [this](QAction* action) {
        const auto tag = static_cast<std::int32_t>(items_.actions().indexOf(action));
        if (delegate_ != nullptr) delegate_->preferencesToolbarItemClicked(tag);
    });
}

void PreferencesWindow::makeShortcuts() {
    const auto add = [this](const char* name, const QList<QKeySequence>& shortcuts, auto work) {
        auto* const action = new QAction(this);
        action->setObjectName(QLatin1String(name));
        action->setShortcuts(shortcuts);
        connect(action, &QAction::triggered, this, work);
        addAction(action);
    };
    add("closePreferences", {Qt::CTRL | Qt::Key_W, Qt::Key_Escape}, [this] { close(); });
    add("previousPane", {Qt::CTRL | Qt::Key_PageUp}, [this] { selectNeighbour(-1); });
    add("nextPane", {Qt::CTRL | Qt::Key_PageDown}, [this] { selectNeighbour(+1); });
}

void PreferencesWindow::attach(PyroluxAppDelegate& delegate, PreferencesPorts ports) {
    delegate_ = &delegate;
    const KeyValueCoding& keys = delegate.keys();
    temperature_ = new TemperaturePane(
        keys, [&delegate] { delegate.checkCycle().resetMaxTempsClicked(); }, ports.canCheckDrives, &tabView_);
    auto* const menuBar = new MenuBarPane(
        keys, desktopKeys_, delegate.popUps(), [&delegate] { return delegate.statusItem().title(); },
        &tabView_);
    alerts_ = new AlertsPane(keys, delegate.preferences().tempUnit, ports, &tabView_);
    log_ = new LogPane(keys, std::move(ports), &tabView_);
    auto* const general = new GeneralPane(keys, desktopKeys_, &tabView_);
    const std::array<QWidget*, toolBarItems.size()> panes{temperature_, menuBar, alerts_, log_, general};
    for (QWidget* const pane : panes) tabView_.addWidget(pane);
    select(0);
}

void PreferencesWindow::setIntValue(LimitLabel label, std::int32_t value) {
    alerts_->setIntValue(label, value);
}

void PreferencesWindow::setSelectedItemIdentifier(std::string_view identifier) {
    for (std::size_t index = 0; index < toolBarItems.size(); ++index)
        if (toolBarItems.at(index).identifier == identifier) select(static_cast<int>(index));
}

void PreferencesWindow::selectTabViewItemAtIndex(std::int32_t index) { select(index); }

void PreferencesWindow::select(int index) {
    if (index < 0 || index >= tabView_.count()) return;
    items_.actions().at(index)->setChecked(true);
    tabView_.setCurrentIndex(index);
    focusFirstControl();
}

void PreferencesWindow::focusFirstControl() {
    const QWidget* const toolBar = findChild<QToolBar*>();
    // Whoever walks along the tool bar with the keyboard stays there.
    if (toolBar->isAncestorOf(focusWidget())) return;
    const QWidget* const pane = tabView_.currentWidget();
    for (QWidget* next = pane->nextInFocusChain(); next != pane; next = next->nextInFocusChain()) {
        const bool isControl = (next->focusPolicy() & Qt::TabFocus) == Qt::TabFocus && next->isEnabled();
        if (pane->isAncestorOf(next) && isControl) return next->setFocus();
    }
}

void PreferencesWindow::selectNeighbour(int step) {
    const int index = tabView_.currentIndex() + step;
    if (index >= 0 && index < tabView_.count()) items_.actions().at(index)->trigger();
}

void PreferencesWindow::refreshPorts() {
    temperature_->refreshPorts();
    alerts_->refreshPorts();
    log_->refreshPorts();
}

void PreferencesWindow::closeEvent(QCloseEvent* event) {
    // A number that is still being typed counts, before the preferences are saved.
    if (QWidget* const focused = focusWidget()) focused->clearFocus();
    QMainWindow::closeEvent(event);
    Q_EMIT closed();
}

}  // namespace calorivo
