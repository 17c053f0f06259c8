#include "platform/qt/QtAlertPanel.h"

#include "platform/qt/AlertBox.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>

#include <optional>

namespace calorivo {

namespace {

/// A message box that can be closed without a button, also when it has only one.
class AlertBox final : public QMessageBox {
  public:
    AlertBox(const Alert& alert, QWidget* parent) : QMessageBox(parent) {
        setObjectName(QStringLiteral("alert"));
        setUpAlert(*this, alert.message, alert.informativeText, QMessageBox::Information);
        addButtons(alert);
    }

    [[nodiscard]] AlertAnswer answer() const {
        const QAbstractButton* const clicked = clickedButton();
        if (isClosed_ || clicked == nullptr) return AlertAnswer::alternateButton;
        if (clicked == default_) return AlertAnswer::defaultButton;
        return clicked == other_ ? AlertAnswer::otherButton : AlertAnswer::alternateButton;
    }

  protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->matches(QKeySequence::Cancel)) isClosed_ = true;
        QMessageBox::keyPressEvent(event);
    }
    void closeEvent(QCloseEvent* event) override {
        isClosed_ = true;
        QMessageBox::closeEvent(event);
    }

  private:
    /// With one role for all of them, every desktop keeps their order.
    void addButtons(const Alert& alert) {
        default_ = addButton(textWithoutShortcut(alert.defaultButton), QMessageBox::ActionRole);
        default_->setObjectName(QStringLiteral("defaultButton"));
        setDefaultButton(default_);
        setEscapeButton(default_);
        if (alert.alternateButton) {
            QPushButton* const button =
                addButton(textWithoutShortcut(*alert.alternateButton), QMessageBox::ActionRole);
            button->setObjectName(QStringLiteral("alternateButton"));
            setEscapeButton(button);
        }
        if (alert.otherButton) {
            other_ = addButton(textWithoutShortcut(*alert.otherButton), QMessageBox::ActionRole);
            other_->setObjectName(QStringLiteral("otherButton"));
        }
    }

    QPushButton* default_ = nullptr;
    QPushButton* other_ = nullptr;
    bool isClosed_ = false;
};

}  // namespace

AlertAnswer QtAlertPanel::runModal(const Alert& alert) {
    // The box may go with the window that it stands over.
    const QPointer<AlertBox> box = new AlertBox(alert, QApplication::activeWindow());
    box->exec();
    const AlertAnswer answer = box != nullptr ? box->answer() : AlertAnswer::alternateButton;
    delete box;
    return answer;
}

}  // namespace calorivo
