#include "ui/qt/SensorRowsView.h"

#include "ui/qt/CellTextDelegate.h"
#include "ui/qt/LevelBarDelegate.h"
#include "ui/qt/SensorTableModel.h"
#include "ui/qt/TableHeader.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QStringList>

#include <algorithm>

namespace calorivo {

namespace {

QList<int> sortedRows(const QItemSelectionModel& selection) {
    QList<int> rows;
    for (const QModelIndex& index : selection.selectedRows()) rows.append(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

}  // namespace

SensorRowsView::SensorRowsView(QWidget* parent) : QTableView(parent) {
    setObjectName(QStringLiteral("sensorTable"));
    setAccessibleName(tr("Sensors"));
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setShowGrid(false);
    setTabKeyNavigation(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    setFrameShape(NoFrame);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    setHorizontalHeader(new TableHeader(this));
    horizontalHeader()->setStretchLastSection(true);
    adaptRowHeight();
}

void SensorRowsView::setSensorModel(SensorTableModel& model) {
    model_ = &model;
    setModel(&model);
    setItemDelegate(new CellTextDelegate(this));
    setItemDelegateForColumn(SensorTableModel::levelColumn,
                             new LevelBarDelegate(model, LevelBarDelegate::Marks::no, this));
    const QFontMetrics metrics(font());
    horizontalHeader()->resizeSection(SensorTableModel::nameColumn, metrics.averageCharWidth() * 36);
    horizontalHeader()->resizeSection(
        SensorTableModel::valueColumn,
        std::max(metrics.averageCharWidth() * 14,
                 horizontalHeader()->sectionSizeHint(SensorTableModel::valueColumn)));
    connect(&model, &SensorTableModel::rowsAboutToChange, this, [this] { isRestoring_ = true; });
    connect(&model, &SensorTableModel::rowsChanged, this, &SensorRowsView::restoreSelection);
}

void SensorRowsView::copyRows() const {
    const QString text = copiedText();
    if (!text.isEmpty()) QApplication::clipboard()->setText(text);
}

QString SensorRowsView::copiedText() const {
    if (model_ == nullptr) return {};
    QString text;
    for (const int row : sortedRows(*selectionModel())) {
        const QStringList fields{model_->nameOfRow(row), QString::fromStdString(model_->identifierOfRow(row)),
                                 model_->valueOfRow(row), model_->maximumOfRow(row)};
        text += fields.join(u'\t') + u'\n';
    }
    return text;
}

int SensorRowsView::selectedRow() const {
    if (model_ == nullptr) return -1;
    const QModelIndex current = currentIndex();
    if (current.isValid() && selectionModel()->isRowSelected(current.row(), {})) return current.row();
    const QList<int> rows = sortedRows(*selectionModel());
    return rows.isEmpty() ? -1 : rows.front();
}

void SensorRowsView::keyboardSearch(const QString& text) { Q_EMIT typed(text); }

void SensorRowsView::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        copyRows();
        return;
    }
    if (event->matches(QKeySequence::Cancel)) {
        Q_EMIT escaped();
        return;
    }
    QTableView::keyPressEvent(event);
}

void SensorRowsView::contextMenuEvent(QContextMenuEvent* event) {
    if (selectedRow() < 0) return;
    auto* const menu = new QMenu(this);
    menu->setObjectName(QStringLiteral("sensorMenu"));
    menu->setAttribute(Qt::WA_DeleteOnClose);
    connect(menu->addAction(tr("Copy")), &QAction::triggered, this, &SensorRowsView::copyRows);
    connect(menu->addAction(tr("Why This Value?")), &QAction::triggered, this,
            &SensorRowsView::explanationWanted);
    menu->popup(event->reason() == QContextMenuEvent::Mouse
                    ? event->globalPos()
                    : viewport()->mapToGlobal(visualRect(model_->index(selectedRow(), 0)).bottomLeft()));
}

void SensorRowsView::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) adaptRowHeight();
}

void SensorRowsView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
    QTableView::selectionChanged(selected, deselected);
    if (isRestoring_) return;
    rememberSelection();
    Q_EMIT selectedRowChanged();
}

void SensorRowsView::rememberSelection() {
    selectedIdentifiers_.clear();
    for (const QModelIndex& index : selectionModel()->selectedRows())
        selectedIdentifiers_.push_back(model_->identifierOfRow(index.row()));
    const int row = selectedRow();
    currentIdentifier_ = row >= 0 ? model_->identifierOfRow(row) : std::string();
}

void SensorRowsView::restoreSelection() {
    QItemSelection selection;
    QModelIndex current;
    for (int row = 0; row < model_->rowCount(); ++row) {
        const std::string& identifier = model_->identifierOfRow(row);
        const QModelIndex index = model_->index(row, 0);
        if (std::find(selectedIdentifiers_.begin(), selectedIdentifiers_.end(), identifier) !=
            selectedIdentifiers_.end())
            selection.select(index, index);
        if (!current.isValid() && identifier == currentIdentifier_) current = index;
    }
    selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    isRestoring_ = false;
    Q_EMIT selectedRowChanged();
}

void SensorRowsView::adaptRowHeight() {
    verticalHeader()->setDefaultSectionSize(QFontMetrics(font()).height() + CellTextDelegate::margin);
}

}  // namespace calorivo
