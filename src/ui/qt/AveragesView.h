#pragma once

#include <QWidget>

#include <string>

class QLabel;

namespace calorivo {

/// The two averages in large figures. A new figure is painted in place: nothing is laid out anew.
class AveragesView final : public QWidget {
    Q_OBJECT
  public:
    explicit AveragesView(QWidget* parent = nullptr);

    /// Both as texts with their unit.
    void show(const std::string& computer, const std::string& processor);
    using QWidget::show;

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void adaptFonts();

    QLabel* computerCaption_;
    QLabel* computer_;
    QLabel* processorCaption_;
    QLabel* processor_;
};

}  // namespace calorivo
