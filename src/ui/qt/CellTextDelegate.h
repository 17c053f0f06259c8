#pragma once

#include <QAbstractItemDelegate>

class QPainter;

namespace calorivo {

/// Fills the cell where it is selected, in the manner of the style; elsewhere the table's own ground stays.
void paintCellGround(QPainter& painter, const QStyleOptionViewItem& option);

/// Paints one line of text in the palette's colours, elided where it is too long: all that the cells of these
/// tables need, at a fraction of the cost of the toolkit's own delegate.
class CellTextDelegate final : public QAbstractItemDelegate {
  public:
    using QAbstractItemDelegate::QAbstractItemDelegate;

    /// Between the text and the edges of its cell, in device-independent pixels.
    static constexpr int margin = 8;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
};

}  // namespace calorivo
