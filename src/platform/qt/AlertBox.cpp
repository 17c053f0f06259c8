#include "platform/qt/AlertBox.h"

#include <QApplication>
#include <QFont>
#include <QGuiApplication>
#include <QIcon>
#include <QLabel>
#include <QSize>

namespace calorivo {

namespace {

void showIcon(QMessageBox& box, QMessageBox::Icon otherwise) {
    constexpr int size = 64;
    const QIcon icon = QApplication::windowIcon();
    if (icon.isNull())
        box.setIcon(otherwise);
    else
        box.setIconPixmap(icon.pixmap(QSize(size, size), box.devicePixelRatioF()));
}

void showTexts(QMessageBox& box, const std::string& message, const std::string& informativeText) {
    box.setTextFormat(Qt::PlainText);
    box.setText(QString::fromStdString(message));
    box.setInformativeText(QString::fromStdString(informativeText));
    for (QLabel* const label : box.findChildren<QLabel*>()) label->setTextFormat(Qt::PlainText);
    auto* const label = box.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    if (label == nullptr) return;
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
}

}  // namespace

QString textWithoutShortcut(const std::string& text) {
    return QString::fromStdString(text).replace(QLatin1Char('&'), QStringLiteral("&&"));
}

void setUpAlert(QMessageBox& box, const std::string& message, const std::string& informativeText,
                QMessageBox::Icon icon) {
    box.setWindowTitle(QGuiApplication::applicationDisplayName());
    box.setWindowModality(Qt::ApplicationModal);
    // An agent has no other window, and goes on without one.
    box.setAttribute(Qt::WA_QuitOnClose, false);
    showIcon(box, icon);
    showTexts(box, message, informativeText);
}

}  // namespace calorivo
