#include "ui/qt/FanTable.h"

#include "ui/qt/CellTextDelegate.h"
#include "ui/qt/FanTableModel.h"
#include "ui/qt/LevelBarDelegate.h"
#include "ui/qt/TableHeader.h"

#include <QEvent>

#include <algorithm>
#include <array>

namespace calorivo {

namespace {

constexpr int mostRows = 4;

}  // namespace

FanTable::FanTable(QWidget* parent) : QTableView(parent) {
    setObjectName(QStringLiteral("fanTable"));
    setAccessibleName(tr("Fans"));
    setSelectionMode(NoSelection);
    setEditTriggers(NoEditTriggers);
    setShowGrid(false);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setFrameShape(NoFrame);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    setHorizontalHeader(new TableHeader(this));
    // It stands on the window's ground, beside the averages.
    viewport()->setBackgroundRole(QPalette::Window);
    adaptRowHeight();
}

void FanTable::setFanModel(FanTableModel& model) {
    setModel(&model);
    setItemDelegate(new CellTextDelegate(this));
    setItemDelegateForColumn(FanTableModel::levelColumn,
                             new LevelBarDelegate(model, LevelBarDelegate::Marks::yes, this));
    horizontalHeader()->setSectionResizeMode(FanTableModel::levelColumn, QHeaderView::Stretch);
    fitColumns();
    connect(&model, &FanTableModel::modelReset, this, [this] {
        fitColumns();
        updateGeometry();
    });
}

void FanTable::fitColumns() {
    const int character = fontMetrics().averageCharWidth();
    for (const int column :
         {FanTableModel::speedColumn, FanTableModel::minimumColumn, FanTableModel::maximumColumn})
        horizontalHeader()->resizeSection(
            column, std::max(speedWidth(), horizontalHeader()->sectionSizeHint(column)));
    horizontalHeader()->resizeSection(
        FanTableModel::nameColumn,
        std::clamp(sizeHintForColumn(FanTableModel::nameColumn), character * 12, character * 28));
    hideWhatDoesNotFit();
}

QSize FanTable::sizeHint() const {
    const int rows = model() != nullptr ? std::clamp(model()->rowCount(), 1, mostRows) : 1;
    const int height =
        horizontalHeader()->sizeHint().height() + rows * verticalHeader()->defaultSectionSize();
    return {fontMetrics().averageCharWidth() * 70, height + 2 * frameWidth()};
}

QSize FanTable::minimumSizeHint() const {
    return {fontMetrics().averageCharWidth() * 24, sizeHint().height()};
}

void FanTable::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    hideWhatDoesNotFit();
}

void FanTable::hideWhatDoesNotFit() {
    if (model() == nullptr) return;
    // The bar tells the limits too, in its tool tip.
    const int shortestBar = fontMetrics().averageCharWidth() * 14;
    int room = viewport()->width() - columnWidth(FanTableModel::nameColumn) -
               columnWidth(FanTableModel::speedColumn) - shortestBar;
    constexpr std::array limits{FanTableModel::minimumColumn, FanTableModel::maximumColumn};
    for (const int column : limits)
        room -= std::max(horizontalHeader()->sectionSizeHint(column), speedWidth());
    for (const int column : limits) setColumnHidden(column, room < 0);
}

int FanTable::speedWidth() const {
    return fontMetrics().horizontalAdvance(QStringLiteral("00000 RPM")) + 2 * CellTextDelegate::margin;
}

void FanTable::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) adaptRowHeight();
}

void FanTable::adaptRowHeight() {
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + CellTextDelegate::margin);
}

}  // namespace calorivo
