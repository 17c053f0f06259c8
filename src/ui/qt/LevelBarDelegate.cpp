#include "ui/qt/LevelBarDelegate.h"

#include "ui/qt/CellTextDelegate.h"
#include "ui/qt/LevelBarColors.h"

#include <QPainter>
#include <QPalette>
#include <QStyleOptionViewItem>

#include <algorithm>
#include <cmath>

namespace calorivo {

namespace {

constexpr double frameHeight = 12.0;
/// How much lower the bar itself is than its frame, above and below.
constexpr double tickOverhang = 2.0;

QRectF trough(const QRectF& frame) { return frame.adjusted(0, tickOverhang, 0, -tickOverhang); }

void paintTick(QPainter& painter, const QZTemperatureLevelIndicatorCell& bar, const QRectF& frame) {
    const auto tick = bar.tickRectangle({frame.x(), frame.y(), frame.width(), frame.height()});
    if (!tick) return;
    const QRectF visible = QRectF(tick->x, tick->y, tick->width, tick->height).intersected(frame);
    if (visible.isEmpty()) return;
    const Color& color = QZTemperatureLevelIndicatorCell::tickColor;
    painter.fillRect(visible,
                     QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                                      static_cast<float>(color.blue), static_cast<float>(color.alpha)));
}

void paintMarks(QPainter& painter, const LevelRange& range, const QRectF& frame, const QPalette& palette) {
    const double span = range.maxValue - range.minValue;
    if (!(span > 0.0)) return;
    QColor color = palette.color(QPalette::Text);
    color.setAlpha(140);
    for (const double value : {range.warningValue, range.criticalValue}) {
        if (!(value > range.minValue && value < range.maxValue)) continue;
        const double x = std::floor(frame.x() + (value - range.minValue) / span * frame.width());
        painter.fillRect(QRectF(x, frame.y(), 1.0, frame.height()), color);
    }
}

}  // namespace

LevelBarDelegate::LevelBarDelegate(LevelBarSource& source, Marks marks, QObject* parent)
    : QAbstractItemDelegate(parent), source_(source), marks_(marks) {}

QRectF LevelBarDelegate::barFrame(const QRect& cell) {
    constexpr int margin = CellTextDelegate::margin;
    const double height = std::min(frameHeight, static_cast<double>(cell.height()));
    const double top = cell.top() + std::floor((cell.height() - height) / 2.0);
    return {static_cast<double>(cell.left() + margin), top,
            static_cast<double>(std::max(0, cell.width() - 2 * margin)), height};
}

void LevelBarDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
    paintCellGround(*painter, option);
    const QZTemperatureLevelIndicatorCell* const bar = source_.levelBarToPaint(index.row());
    if (bar == nullptr) return;
    const QRectF frame = barFrame(option.rect);
    paintLevelBar(*painter, *bar, frame, option.palette, option.state.testFlag(QStyle::State_Selected));
    if (marks_ == Marks::yes) paintMarks(*painter, bar->range(), frame, option.palette);
}

QSize LevelBarDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const {
    constexpr int preferredWidth = 180;
    return {preferredWidth, option.fontMetrics.height() + CellTextDelegate::margin};
}

void paintLevelBar(QPainter& painter, const QZTemperatureLevelIndicatorCell& bar, const QRectF& frame,
                   const QPalette& palette, bool isSelected) {
    const QRectF ground = trough(frame);
    // The colour of a selection may be much like that of a zone: a rim sets the bar off from it.
    if (isSelected) painter.fillRect(frame, palette.color(QPalette::Base));
    painter.fillRect(ground, troughColor(palette));
    QRectF filled = ground;
    filled.setWidth(ground.width() * bar.filledFraction());
    painter.fillRect(filled, levelColor(bar.zone(), palette));
    if (bar.zone() == LevelZone::critical)
        painter.fillRect(filled, QBrush(hatchColor(palette), Qt::BDiagPattern));
    paintTick(painter, bar, frame);
}

}  // namespace calorivo
