#include "platform/qt/QtSuppressibleAlertPanel.h"

#include "platform/qt/AlertBox.h"

#include <QApplication>
#include <QCheckBox>
#include <QFont>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>

namespace calorivo {

namespace {

class SuppressibleBox final : public QMessageBox {
    Q_DECLARE_TR_FUNCTIONS(SuppressibleBox)

  public:
    SuppressibleBox(const SuppressibleAlert& alert, QWidget* parent) : QMessageBox(parent) {
        setObjectName(QStringLiteral("suppressibleAlert"));
        setUpAlert(*this, alert.message, alert.informativeText, QMessageBox::Question);
        addButtons(alert);
        if (alert.suppressionButton) addCheckBox(*alert.suppressionButton);
    }

    [[nodiscard]] SuppressibleAlertAnswer answer() const {
        return {.isFirstButton = clickedButton() == first_,
                .isSuppressionOn = checkBox() != nullptr && checkBox()->isChecked()};
    }

  private:
    /// With one role for both, every desktop keeps their order.
    void addButtons(const SuppressibleAlert& alert) {
        first_ = addButton(textWithoutShortcut(alert.firstButton.title), QMessageBox::ActionRole);
        first_->setObjectName(QStringLiteral("firstButton"));
        setDefaultButton(first_);
        QPushButton* const second =
            addButton(textWithoutShortcut(alert.secondButton.title), QMessageBox::ActionRole);
        second->setObjectName(QStringLiteral("secondButton"));
        // Escape, whatever key the alert asks for: the toolkit's boxes know no other.
        setEscapeButton(second);
    }

    void addCheckBox(const SuppressionButton& wanted) {
        constexpr double smaller = 0.85;
        auto* const box = new QCheckBox(tr("Do not ask again"));
        box->setObjectName(QStringLiteral("suppressionButton"));
        box->setChecked(wanted.isOn);
        if (wanted.font == ControlSize::small) {
            QFont font = box->font();
            font.setPointSizeF(font.pointSizeF() * smaller);
            box->setFont(font);
        }
        if (wanted.controlSize == ControlSize::small) box->setAttribute(Qt::WA_MacSmallSize);
        setCheckBox(box);
    }

    QPushButton* first_ = nullptr;
};

}  // namespace

SuppressibleAlertAnswer QtSuppressibleAlertPanel::runModal(const SuppressibleAlert& alert) {
    // The box may go with the window that it stands over.
    const QPointer<SuppressibleBox> box = new SuppressibleBox(alert, QApplication::activeWindow());
    box->exec();
    const SuppressibleAlertAnswer answer = box != nullptr ? box->answer() : SuppressibleAlertAnswer();
    delete box;
    return answer;
}

}  // namespace calorivo
