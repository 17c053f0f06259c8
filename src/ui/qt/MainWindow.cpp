#include "ui/qt/MainWindow.h"

#include "app/PyroluxAppDelegate.h"
#include "platform/SensorProvider.h"
#include "ui/qt/AreaList.h"
#include "ui/qt/DetailsPanel.h"
#include "ui/qt/EmptyState.h"
#include "ui/qt/FanTable.h"
#include "ui/qt/MainWindowControls.h"
#include "ui/qt/MainWindowStatus.h"
#include "ui/qt/MainWindowSummary.h"
#include "ui/qt/MainWindowText.h"
#include "ui/qt/SensorRowsView.h"
#include "ui/qt/SensorTableModel.h"

#include <QCloseEvent>
#include <QFileInfo>
#include <QHeaderView>
#include <QSplitter>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <utility>

namespace calorivo {

namespace {

constexpr std::string_view unitKey = "tempUnit";

Data dataOf(const QByteArray& bytes) { return {bytes.begin(), bytes.end()}; }

QByteArray bytesOf(const Data& data) {
    return {reinterpret_cast<const char*>(data.data()), static_cast<qsizetype>(data.size())};
}

QFrame* separator(QWidget* parent) {
    auto* const line = new QFrame(parent);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Plain);
    line->setForegroundRole(QPalette::Mid);
    return line;
}

/// The widgets one below the other, without gaps.
QVBoxLayout* stacked(QWidget* parent) {
    auto* const layout = new QVBoxLayout(parent);
    layout->setContentsMargins({});
    layout->setSpacing(0);
    return layout;
}

}  // namespace

MainWindow::MainWindow(DesktopSettings& settings, QWidget* parent)
    : QMainWindow(parent),
      settings_(settings),
      areas_(new AreaList),
      controls_(new MainWindowControls),
      table_(new SensorRowsView),
      emptyState_(new EmptyState),
      contents_(new QStackedWidget),
      summary_(new MainWindowSummary),
      details_(new DetailsPanel),
      splitter_(new QSplitter),
      status_(new MainWindowStatus) {
    setObjectName(QStringLiteral("mainWindow"));
    setWindowTitle(QStringLiteral("Calorivo"));
    setAccessibleName(windowTitle());
    buildLayout();
    connectControls();
}

MainWindow::~MainWindow() = default;

void MainWindow::buildLayout() {
    contents_->addWidget(table_);
    contents_->addWidget(emptyState_);

    auto* const middle = new QWidget;
    QVBoxLayout* const column = stacked(middle);
    column->addWidget(controls_);
    column->addWidget(contents_, 1);
    column->addWidget(separator(middle));
    column->addWidget(summary_);

    splitter_->setObjectName(QStringLiteral("splitter"));
    splitter_->setChildrenCollapsible(false);
    splitter_->setHandleWidth(1);
    splitter_->addWidget(areas_);
    splitter_->addWidget(middle);
    splitter_->addWidget(details_);
    splitter_->setStretchFactor(1, 1);
    details_->hide();
    for (const int handle : {1, 2}) {
        splitter_->handle(handle)->setAutoFillBackground(true);
        splitter_->handle(handle)->setBackgroundRole(QPalette::Mid);
    }

    auto* const everything = new QWidget;
    QVBoxLayout* const page = stacked(everything);
    page->addWidget(splitter_, 1);
    page->addWidget(separator(everything));
    page->addWidget(status_);
    setCentralWidget(everything);

    const int character = fontMetrics().averageCharWidth();
    resize(character * 130, fontMetrics().height() * 34);
    table_->setFocus();
}

void MainWindow::connectControls() {
    connect(controls_, &MainWindowControls::preferencesWanted, this, &MainWindow::preferencesWanted);
    connect(controls_, &MainWindowControls::resetMaximumsWanted, this, &MainWindow::resetMaximumsWanted);
    connect(controls_, &MainWindowControls::detailsWanted, this, &MainWindow::setDetailsShown);
    connect(controls_, &MainWindowControls::filterLeft, table_, [this] { table_->setFocus(); });
    connect(controls_, &MainWindowControls::unitChosen, this, [this](int unit) {
        if (parts_) parts_->delegate.keys().setValueForKey(std::int32_t{unit}, unitKey);
    });
    connect(table_, &SensorRowsView::typed, controls_, &MainWindowControls::typeIntoFilter);
    connect(table_, &SensorRowsView::escaped, controls_, &MainWindowControls::clearFilter);
    connect(table_, &SensorRowsView::explanationWanted, this, [this] { setDetailsShown(true); });
    connect(table_, &SensorRowsView::selectedRowChanged, this, &MainWindow::showDetails);
    connect(emptyState_, &EmptyState::clearWanted, this, [this] {
        controls_->clearFilter();
        table_->setFocus();
    });
    connect(details_, &DetailsPanel::escaped, this, [this] { setDetailsShown(false); });
}

void MainWindow::attach(const MainWindowParts& parts) {
    parts_.emplace(parts);
    PyroluxAppDelegate& delegate = parts_->delegate;
    model_ = new SensorTableModel(delegate.sensorTable(), delegate.sourceList(), delegate.lists(), this);
    if (SensorProvider* const provider = parts.provider)
        model_->setDriveMeasuredBy(
            [provider](const std::string& key) { return provider->driveMeasuredBy(key); });
    table_->setSensorModel(*model_);
    summary_->setFans(delegate.fans());
    areas_->observe(delegate.sourceList());
    connect(controls_, &MainWindowControls::filterChanged, model_, [this](const QString& filter) {
        model_->setFilter(filter);
        showContents();
    });
    observeParts();
    restoreLayout();
    showDetailsPanel();
}

void MainWindow::observeParts() {
    PyroluxAppDelegate& delegate = parts_->delegate;
    const auto showUnit = [this] {
        controls_->setUnit(parts_->delegate.keys().valueForKey(unitKey).intValue());
    };
    observations_.push_back(delegate.keys().observe(unitKey, showUnit));
    showUnit();
    observations_.push_back(
        delegate.sourceList().sourceListNames.observe([this] { refresh(isMachineStale_); }));
    // The CPU's average is the last that a check publishes.
    observations_.push_back(delegate.keys().observe("avgCPUTempAsString", [this] {
        lastCheck_ = parts_->dispatch.wallTime();
        refresh(areAveragesStale_);
    }));
    observations_.push_back(delegate.fans().observeFansArray([this] { refresh(areFansStale_); }));
    observations_.push_back(delegate.fans().avgRPMAsString.observe([this] { refresh(areFansStale_); }));
    observations_.push_back(settings_.showsDetails.observe([this] { showDetailsPanel(); }));
}

void MainWindow::reloadData() {
    isDisplayStale_ = false;
    refresh(areRowsStale_);
}

void MainWindow::setNeedsDisplay() { refresh(isDisplayStale_); }

void MainWindow::refresh(bool& isStale) {
    isStale = true;
    if (isOnScreen()) catchUp();
}

void MainWindow::catchUp() {
    if (!parts_) return;
    PyroluxAppDelegate& delegate = parts_->delegate;
    if (std::exchange(isMachineStale_, false)) showMachine();
    if (std::exchange(areAveragesStale_, false)) {
        summary_->showAverages(delegate.averages().avgTempAsString, delegate.averages().avgCPUTempAsString);
        status_->setLastCheck(lastCheck_);
    }
    if (std::exchange(areFansStale_, false)) {
        summary_->reloadFans();
        summary_->showAverageSpeed(delegate.fans().avgRPMAsString);
    }
    if (std::exchange(areRowsStale_, false)) {
        model_->reload();
        showContents();
        showDetails();
    }
    if (std::exchange(isDisplayStale_, false)) model_->repaint();
}

void MainWindow::showMachine() {
    const SensorProvider* const provider = parts_->provider;
    const QString detail = asQString(parts_->sourceDetail);
    QString text = provider != nullptr ? sourceInWords(provider->sourceName(), detail) : QString();
    if (const auto& model = parts_->delegate.lists().modelName; model && !model->empty())
        text = text.isEmpty() ? asQString(*model) : asQString(*model) + QStringLiteral(" · ") + text;
    status_->setMachine(text, detail);
}

bool MainWindow::hasSensors() const {
    // "All" is there even when there is nothing.
    return parts_->delegate.sourceList().sourceListNames.get().size() > 1 ||
           parts_->delegate.sourceList().numberOfRowsInTableView(TableView::cpuTableView) > 0;
}

QString MainWindow::chosenArea() const {
    const auto selected = parts_->delegate.sourceList().selectedObjects();
    return selected.empty() ? QString() : AreaList::displayName(selected.front().name);
}

void MainWindow::showContents() {
    if (model_->rowCount() > 0) {
        contents_->setCurrentWidget(table_);
        return;
    }
    if (hasSensors()) {
        const bool isFiltered = !model_->filter().isEmpty();
        emptyState_->show(noRowsText(chosenArea(), model_->filter()),
                          isFiltered ? EmptyState::ClearButton::shown : EmptyState::ClearButton::hidden);
    } else {
        const SensorProvider* const provider = parts_->provider;
        QStringList problems;
        if (provider != nullptr)
            for (const std::string& problem : provider->problems()) problems.append(asQString(problem));
        emptyState_->show(noSensorsText(provider != nullptr ? provider->sourceName() : "none",
                                        QFileInfo(asQString(parts_->sourceDetail)).fileName(), problems),
                          EmptyState::ClearButton::hidden);
    }
    contents_->setCurrentWidget(emptyState_);
}

void MainWindow::showDetails() {
    if (!parts_ || !details_->isVisible() || !isOnScreen()) return;
    const int row = table_->selectedRow();
    if (row < 0) {
        details_->showHint(tr("Select a sensor to see where its value comes from."));
        return;
    }
    const auto key = model_->sensorKeyOfRow(row);
    if (!key) {
        const std::string serial = model_->identifierOfRow(row);
        details_->show(detailsOfDrive(model_->nameOfRow(row), asQString(serial), model_->valueOfRow(row),
                                      parts_->explainDrive ? parts_->explainDrive(serial) : std::nullopt));
        return;
    }
    const auto explanation = parts_->explain ? parts_->explain(*key) : std::nullopt;
    if (explanation)
        details_->show(detailsOf(*explanation));
    else
        details_->showHint(tr("Nothing is known about this sensor."));
}

void MainWindow::showDetailsPanel() {
    const bool areShown = settings_.showsDetails;
    const bool hadFocus = details_->isAncestorOf(focusWidget());
    controls_->setDetailsShown(areShown);
    details_->setVisible(areShown);
    if (!areShown && hadFocus) table_->setFocus();
    showDetails();
}

void MainWindow::copyRows() { table_->copyRows(); }

void MainWindow::focusFilter() { controls_->focusFilter(); }

void MainWindow::setDetailsShown(bool areShown) { settings_.showsDetails = areShown; }

void MainWindow::saveLayout() {
    settings_.mainWindowGeometry = dataOf(saveGeometry());
    settings_.mainWindowSplitter = dataOf(splitter_->saveState());
    if (model_ == nullptr) return;
    settings_.sensorTableHeader = dataOf(table_->horizontalHeader()->saveState());
    settings_.fanTableHeader = dataOf(summary_->fanTable().horizontalHeader()->saveState());
}

void MainWindow::restoreLayout() {
    if (const Data& geometry = settings_.mainWindowGeometry; !geometry.empty())
        restoreGeometry(bytesOf(geometry));
    if (const Data& sizes = settings_.mainWindowSplitter; !sizes.empty())
        splitter_->restoreState(bytesOf(sizes));
    if (const Data& header = settings_.sensorTableHeader; !header.empty())
        table_->horizontalHeader()->restoreState(bytesOf(header));
    if (const Data& header = settings_.fanTableHeader; !header.empty())
        summary_->fanTable().horizontalHeader()->restoreState(bytesOf(header));
}

void MainWindow::showEvent(QShowEvent* event) {
    catchUp();
    QMainWindow::showEvent(event);
    showDetails();
}

void MainWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    if (event->type() == QEvent::WindowStateChange && isOnScreen()) catchUp();
}

void MainWindow::closeEvent(QCloseEvent* event) {
    saveLayout();
    event->accept();
    Q_EMIT closed();
}

}  // namespace calorivo
