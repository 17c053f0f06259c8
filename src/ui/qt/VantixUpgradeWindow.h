#pragma once

#include "app/VantixView.h"

#include <QDialog>

QT_BEGIN_NAMESPACE
class QLabel;
class QPushButton;
QT_END_NAMESPACE

namespace calorivo {

/// Offers to download the sibling program. Escape and "not now" close it. Main thread.
class VantixUpgradeWindow final : public QDialog {
    Q_OBJECT

  public:
    explicit VantixUpgradeWindow(QWidget* parent = nullptr);

    void setTexts(const PromotionTexts& texts);

  Q_SIGNALS:
    void downloadWanted();

  private:
    QLabel* title_;
    QLabel* text_;
    QPushButton* download_;
    QPushButton* later_;
};

}  // namespace calorivo
