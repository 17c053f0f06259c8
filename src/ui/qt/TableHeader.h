#pragma once

#include <QHeaderView>

namespace calorivo {

/// The header of a table whose cells CellTextDelegate paints: its texts stand where those of the cells do.
class TableHeader final : public QHeaderView {
    Q_OBJECT
  public:
    explicit TableHeader(QWidget* parent = nullptr);

  protected:
    void paintSection(QPainter* painter, const QRect& rect, int logicalIndex) const override;
    [[nodiscard]] QSize sectionSizeFromContents(int logicalIndex) const override;
};

}  // namespace calorivo
