#pragma once

#include "ui/QZTemperatureLevelIndicatorCell.h"

#include <QAbstractItemDelegate>
#include <QRectF>

class QPainter;

namespace calorivo {

/// Where the bars of a table's rows come from.
class LevelBarSource {
  public:
    LevelBarSource() = default;
    LevelBarSource(const LevelBarSource&) = delete;
    LevelBarSource& operator=(const LevelBarSource&) = delete;
    virtual ~LevelBarSource() = default;

    /// Called when the row's bar is painted, and only then. Null for none; good until the next call.
    [[nodiscard]] virtual const QZTemperatureLevelIndicatorCell* levelBarToPaint(int row) = 0;
};

/// Paints level bars: how far they are filled, in the colour of the zone, and a grey tick at the recorded
/// maximum, which stands out above and below the bar.
class LevelBarDelegate final : public QAbstractItemDelegate {
  public:
    /// Whether the bar also shows from where on it warns and where it becomes critical.
    enum class Marks { no, yes };

    /// `source` must outlive this object.
    LevelBarDelegate(LevelBarSource& source, Marks marks, QObject* parent);

    /// Where in its cell the bar lies: the frame that the tick's place is reckoned from.
    [[nodiscard]] static QRectF barFrame(const QRect& cell);

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

  private:
    LevelBarSource& source_;
    Marks marks_;
};

/// Paints one bar into its frame. `isSelected` bars stand on the colour of a selection.
void paintLevelBar(QPainter& painter, const QZTemperatureLevelIndicatorCell& bar, const QRectF& frame,
                   const QPalette& palette, bool isSelected);

}  // namespace calorivo
