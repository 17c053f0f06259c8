#include "platform/qt/QtAlertPanel.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFont>
#include <QGuiApplication>
#include <QIcon>
#include <QKeyEvent>
#include <QKeySequence>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSize>
#include <QString>

#include <optional>

namespace calorivo {

namespace {

/// A text as it stands: no character of it makes a shortcut.
QString shownText(const std::string& text) {
    return QString::fromStdString(text).replace(QLatin1Char('&'), QStringLiteral("&&"));
}

/// A message box that can be closed without a button, also when it has only one.
class AlertBox final : public QMessageBox {
  public:
    AlertBox(const Alert& alert, QWidget* parent) : QMessageBox(parent) {
        setObjectName(QStringLiteral("alert"));
        setWindowTitle(QGuiApplication::applicationDisplayName());
        setWindowModality(Qt::ApplicationModal);
        // An agent has no other window, and goes on without one.
        setAttribute(Qt::WA_QuitOnClose, false);
        showIcon();
        showTexts(alert);
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
    void showIcon() {
        constexpr int size = 64;
        const QIcon icon = QApplication::windowIcon();
        if (icon.isNull())
            setIcon(QMessageBox::Information);
        else
            setIconPixmap(icon.pixmap(QSize(size, size), devicePixelRatioF()));
    }

    void showTexts(const Alert& alert) {
        setTextFormat(Qt::PlainText);
        setText(QString::fromStdString(alert.message));
        setInformativeText(QString::fromStdString(alert.informativeText));
        for (QLabel* const label : findChildren<QLabel*>()) label->setTextFormat(Qt::PlainText);
        if (auto* const message = findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))) {
            QFont font = message->font();
            font.setBold(true);
            message->setFont(font);
        }
    }

    /// With one role for all of them, every desktop keeps their order.
    void addButtons(const Alert& alert) {
        default_ = addButton(shownText(alert.defaultButton), QMessageBox::ActionRole);
        default_->setObjectName(QStringLiteral("defaultButton"));
        setDefaultButton(default_);
        setEscapeButton(default_);
        if (alert.alternateButton) {
            QPushButton* const button = addButton(shownText(*alert.alternateButton), QMessageBox::ActionRole);
            button->setObjectName(QStringLiteral("alternateButton"));
            setEscapeButton(button);
        }
        if (alert.otherButton) {
            other_ = addButton(shownText(*alert.otherButton), QMessageBox::ActionRole);
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
