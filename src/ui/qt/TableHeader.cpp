#include "ui/qt/TableHeader.h"

#include "ui/qt/CellTextDelegate.h"
#include "ui/qt/LevelBarColors.h"

#include <QPainter>

namespace calorivo {

namespace {

QString textOf(const QAbstractItemModel& model, int section) {
    return model.headerData(section, Qt::Horizontal, Qt::DisplayRole).toString();
}

}  // namespace

TableHeader::TableHeader(QWidget* parent) : QHeaderView(Qt::Horizontal, parent) {
    setHighlightSections(false);
    setSectionsClickable(false);
}

void TableHeader::paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const {
    if (!rect.isValid()) return;
    constexpr int margin = CellTextDelegate::margin;
    painter->fillRect(rect, palette().color(QPalette::Window));
    const QColor line = troughColor(palette());
    painter->fillRect(rect.left(), rect.bottom(), rect.width(), 1, line);
    if (sectionPosition(logicalIndex) + sectionSize(logicalIndex) < length())
        painter->fillRect(rect.right(), rect.top() + 4, 1, rect.height() - 8, line);
    const int alignment = model()->headerData(logicalIndex, Qt::Horizontal, Qt::TextAlignmentRole).toInt();
    const QRect room = rect.adjusted(margin, 0, -margin, 0);
    painter->setPen(mutedTextColor(palette()));
    painter->setFont(font());
    painter->drawText(room, alignment | Qt::TextSingleLine,
                      fontMetrics().elidedText(textOf(*model(), logicalIndex), Qt::ElideRight, room.width()));
}

QSize TableHeader::sectionSizeFromContents(int logicalIndex) const {
    constexpr int margin = CellTextDelegate::margin;
    return {fontMetrics().horizontalAdvance(textOf(*model(), logicalIndex)) + 2 * margin + 1,
            fontMetrics().height() + margin};
}

}  // namespace calorivo
