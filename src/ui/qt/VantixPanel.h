#pragma once

#include "app/VantixView.h"
#include "ui/QZRoundedCornersView.h"

#include <QWidget>

QT_BEGIN_NAMESPACE
class QLabel;
class QPushButton;
class QToolButton;
QT_END_NAMESPACE

namespace calorivo {

/// A quiet strip that names the sibling program, with a link to its page and a button that removes it for
/// good. Its colours are the palette's. Main thread.
class VantixPanel final : public QWidget {
    Q_OBJECT

  public:
    explicit VantixPanel(QWidget* parent = nullptr);

    void setTexts(const PromotionTexts& texts);
    void setRoundedCorners(CornerMask corners);

  Q_SIGNALS:
    void learnMoreWanted();
    void closeWanted();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void showColours();

    QZRoundedCornersView corners_;
    QLabel* title_;
    QLabel* text_;
    QPushButton* learnMore_;
    QToolButton* close_;
};

}  // namespace calorivo
