#pragma once

#include <QTableView>

namespace calorivo {

class FanTableModel;

/// The fans on the screen: as high as its rows, up to a few; the others are scrolled to.
class FanTable final : public QTableView {
    Q_OBJECT
  public:
    explicit FanTable(QWidget* parent = nullptr);

    /// Once. The model must outlive this view.
    void setFanModel(FanTableModel& model);
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

  protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    void adaptRowHeight();
    void fitColumns();
    void hideWhatDoesNotFit();
    [[nodiscard]] int speedWidth() const;
};

}  // namespace calorivo
