#include "platform/qt/QtSuppressibleAlertPanel.h"

#include <QApplication>
#include <QCheckBox>
#include <QFont>
#include <QGuiApplication>
#include <QIcon>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QSize>
#include <QString>

namespace calorivo {

namespace {

/// A text as it stands: no character of it makes a shortcut.
QString buttonText(const std::string& text) {
    return QString::fromStdString(text).replace(QLatin1Char('&'), QStringLiteral("&&"));
}

class SuppressibleBox final : public QMessageBox {
    Q_DECLARE_TR_FUNCTIONS(SuppressibleBox)

  public:
    SuppressibleBox(const SuppressibleAlert& alert, QWidget* parent) : QMessageBox(parent) {
        setObjectName(QStringLiteral("suppressibleAlert"));
        setWindowTitle(QGuiApplication::applicationDisplayName());
        setWindowModality(Qt::ApplicationModal);
        setAttribute(Qt::WA_QuitOnClose, false);
        showIcon();
        setTextFormat(Qt::PlainText);
        setText(QString::fromStdString(alert.message));
        setInformativeText(QString::fromStdString(alert.informativeText));
        for (QLabel* const label : findChildren<QLabel*>()) label->setTextFormat(Qt::PlainText);
        if (auto* const message = findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))) {
            QFont font = message->font();
            font.setBold(true);
            message->setFont(font);
        }
        addButtons(alert);
        if (alert.suppressionButton) addCheckBox(*alert.suppressionButton);
    }

    [[nodiscard]] SuppressibleAlertAnswer answer() const {
        return {.isFirstButton = clickedButton() == first_,
                .isSuppressionOn = checkBox() != nullptr && checkBox()->isChecked()};
    }

  private:
    void showIcon() {
        constexpr int size = 64;
        const QIcon icon = QApplication::windowIcon();
        if (icon.isNull())
            setIcon(QMessageBox::Question);
        else
            setIconPixmap(icon.pixmap(QSize(size, size), devicePixelRatioF()));
    }

    /// With one role for both, every desktop keeps their order.
    void addButtons(const SuppressibleAlert& alert) {
        first_ = addButton(buttonText(alert.firstButton.title), QMessageBox::ActionRole);
        first_->setObjectName(QStringLiteral("firstButton"));
        setDefaultButton(first_);
        QPushButton* const second = addButton(buttonText(alert.secondButton.title), QMessageBox::ActionRole);
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
