#include "ui/qt/CellTextDelegate.h"

#include <QApplication>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>
#include <QStyleOptionViewItem>

namespace calorivo {

namespace {

QPalette::ColorGroup colorGroup(const QStyleOptionViewItem& option) {
    if (!option.state.testFlag(QStyle::State_Enabled)) return QPalette::Disabled;
    return option.state.testFlag(QStyle::State_Active) ? QPalette::Normal : QPalette::Inactive;
}

QString displayed(const QModelIndex& index) { return index.data(Qt::DisplayRole).toString(); }

bool isAtRight(const QStyleOptionViewItem& option, const QModelIndex& index) {
    const QVariant alignment = index.data(Qt::TextAlignmentRole);
    const bool isTrailing = alignment.isValid() && (alignment.toInt() & Qt::AlignRight) != 0;
    return isTrailing != (option.direction == Qt::RightToLeft);
}

}  // namespace

void paintCellGround(QPainter& painter, const QStyleOptionViewItem& option) {
    const QStyle* const style = option.widget != nullptr ? option.widget->style() : QApplication::style();
    if (option.state.testFlag(QStyle::State_Selected)) {
        style->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, &painter, option.widget);
        return;
    }
    if (!option.state.testFlag(QStyle::State_HasFocus)) return;
    QStyleOptionFocusRect focus;
    focus.QStyleOption::operator=(option);
    focus.backgroundColor = option.palette.color(QPalette::Base);
    style->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, &painter, option.widget);
}

void CellTextDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
    paintCellGround(*painter, option);
    QString text = displayed(index);
    if (text.isEmpty()) return;
    const QFontMetrics& metrics = option.fontMetrics;
    const int room = option.rect.width() - 2 * margin;
    int width = metrics.horizontalAdvance(text);
    if (width > room) {
        text = metrics.elidedText(text, Qt::ElideRight, room);
        width = metrics.horizontalAdvance(text);
    }
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    painter->setFont(option.font);
    painter->setPen(
        option.palette.color(colorGroup(option), isSelected ? QPalette::HighlightedText : QPalette::Text));
    const int left = option.rect.left() + margin;
    const int baseline =
        option.rect.top() + (option.rect.height() + metrics.ascent() - metrics.descent()) / 2;
    painter->drawText(isAtRight(option, index) ? left + room - width : left, baseline, text);
}

QSize CellTextDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const QFontMetrics& metrics = option.fontMetrics;
    return {metrics.horizontalAdvance(displayed(index)) + 2 * margin, metrics.height() + margin};
}

}  // namespace calorivo
