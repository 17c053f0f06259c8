#pragma once

#include <QTableView>

#include <string>
#include <vector>

namespace calorivo {

class SensorTableModel;

/// The sensor table on the screen. What is selected stays selected by sensor or drive, wherever its row goes;
/// a row that goes away and comes back is selected again unless the user chose others meanwhile.
class SensorRowsView final : public QTableView {
    Q_OBJECT
  public:
    explicit SensorRowsView(QWidget* parent = nullptr);

    /// Once. The model must outlive this view.
    void setSensorModel(SensorTableModel& model);

    /// Puts the selected rows on the clipboard; does nothing when none is selected.
    void copyRows() const;
    /// One line for each selected row, from the top: name, key or serial number, temperature, highest
    /// temperature, with tabulators between them.
    [[nodiscard]] QString copiedText() const;
    /// The row that explanations are about; -1 for none.
    [[nodiscard]] int selectedRow() const;

    void keyboardSearch(const QString& typed) override;

  Q_SIGNALS:
    /// Another row is selected, or the same one stands elsewhere.
    void selectedRowChanged();
    /// Letters that are meant for the filter.
    void typed(const QString& text);
    void escaped();
    void explanationWanted();

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void changeEvent(QEvent* event) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;

  private:
    void rememberSelection();
    void restoreSelection();
    void adaptRowHeight();

    SensorTableModel* model_ = nullptr;
    std::vector<std::string> selectedIdentifiers_;
    std::string currentIdentifier_;
    bool isRestoring_ = false;
};

}  // namespace calorivo
