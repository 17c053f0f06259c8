#include "ui/qt/AreaList.h"

#include "sensors/SourceList.h"
#include "ui/qt/MainWindowText.h"
#include "ui/qt/TemplateIcon.h"

#include <QCoreApplication>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <array>

namespace calorivo {

namespace {

// For the translators: the names themselves come from the source list.
[[maybe_unused]] constexpr std::array areaNames{
    QT_TRANSLATE_NOOP("Area", "All"),          QT_TRANSLATE_NOOP("Area", "CPU"),
    QT_TRANSLATE_NOOP("Area", "CPU Relative"), QT_TRANSLATE_NOOP("Area", "GPU"),
    QT_TRANSLATE_NOOP("Area", "Battery"),      QT_TRANSLATE_NOOP("Area", "Enclosure"),
    QT_TRANSLATE_NOOP("Area", "Hard Drive"),   QT_TRANSLATE_NOOP("Area", "LCD"),
    QT_TRANSLATE_NOOP("Area", "Logic Board"),  QT_TRANSLATE_NOOP("Area", "Memory"),
    QT_TRANSLATE_NOOP("Area", "Northbridge"),  QT_TRANSLATE_NOOP("Area", "Optical Drive"),
    QT_TRANSLATE_NOOP("Area", "Palm Rest"),    QT_TRANSLATE_NOOP("Area", "PCI"),
    QT_TRANSLATE_NOOP("Area", "Power Supply"), QT_TRANSLATE_NOOP("Area", "Thunderbolt"),
    QT_TRANSLATE_NOOP("Area", "Wireless"),
};

}  // namespace

AreaList::AreaList(QWidget* parent) : QListWidget(parent) {
    setObjectName(QStringLiteral("areaList"));
    setAccessibleName(tr("Areas"));
    setFrameShape(NoFrame);
    setSelectionMode(SingleSelection);
    setEditTriggers(NoEditTriggers);
    setUniformItemSizes(true);
    setTextElideMode(Qt::ElideRight);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setViewportMargins(0, 8, 0, 8);
    setMinimumWidth(fontMetrics().averageCharWidth() * 14);
    // A side bar stands on the window's ground, not on that of texts.
    viewport()->setBackgroundRole(QPalette::Window);
    connect(this, &QListWidget::itemSelectionChanged, this, &AreaList::takeSelection);
}

QString AreaList::displayName(const std::string& area) {
    return QCoreApplication::translate("Area", area.c_str());
}

void AreaList::observe(SourceList& sourceList) {
    sourceList_ = &sourceList;
    areas_ = sourceList.sourceListNames.observe([this] { showAreas(); });
    selection_ = sourceList.sourceListSelectedIndexes.observe([this] { showSelection(); });
    showAreas();
}

QSize AreaList::sizeHint() const {
    const int width = sizeHintForColumn(0) + 2 * frameWidth() + verticalScrollBar()->sizeHint().width();
    return {qMax(width, fontMetrics().averageCharWidth() * 18), QListWidget::sizeHint().height()};
}

void AreaList::showAreas() {
    {
        const QScopedValueRollback showing(isShowing_, true);
        clear();
        const int rowHeight = fontMetrics().height() + 10;
        for (const SourceListModel& area : sourceList_->sourceListNames.get()) {
            auto* const item =
                new QListWidgetItem(templateIcon(asQString(area.icon.name)), displayName(area.name), this);
            item->setSizeHint(QSize(sizeHintForColumn(0), rowHeight));
        }
        updateGeometry();
    }
    showSelection();
}

void AreaList::showSelection() {
    const QScopedValueRollback showing(isShowing_, true);
    const SourceList::Indexes& indexes = sourceList_->sourceListSelectedIndexes;
    const int row = indexes.empty() ? -1 : static_cast<int>(*indexes.begin());
    if (row < count()) setCurrentRow(row);
}

void AreaList::takeSelection() {
    if (isShowing_ || sourceList_ == nullptr) return;
    const int row = currentRow();
    if (row < 0 || selectedItems().isEmpty()) return;
    SourceList::Indexes indexes{static_cast<std::size_t>(row)};
    if (indexes != sourceList_->sourceListSelectedIndexes.get())
        sourceList_->setSourceListSelectedIndexes(std::move(indexes));
}

}  // namespace calorivo
