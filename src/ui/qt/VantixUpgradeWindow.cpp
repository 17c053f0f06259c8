#include "ui/qt/VantixUpgradeWindow.h"

#include <QDialogButtonBox>
#include <QFont>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace calorivo {

namespace {

constexpr int margin = 20;

QLabel* textLabel(const QString& name) {
    auto* const label = new QLabel;
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    return label;
}

QString buttonText(const std::string& text) {
    return QString::fromStdString(text).replace(QLatin1Char('&'), QStringLiteral("&&"));
}

}  // namespace

VantixUpgradeWindow::VantixUpgradeWindow(QWidget* parent)
    : QDialog(parent),
      title_(textLabel(QStringLiteral("upgradeTitle"))),
      text_(textLabel(QStringLiteral("upgradeText"))) {
    constexpr double large = 1.3;
    constexpr int charactersPerLine = 52;
    setObjectName(QStringLiteral("vantixUpgradeWindow"));
    QFont font = title_->font();
    font.setPointSizeF(font.pointSizeF() * large);
    font.setBold(true);
    title_->setFont(font);
    text_->setMinimumWidth(text_->fontMetrics().averageCharWidth() * charactersPerLine);

    auto* const buttons = new QDialogButtonBox;
    download_ = buttons->addButton(QString(), QDialogButtonBox::AcceptRole);
    download_->setObjectName(QStringLiteral("upgradeDownload"));
    download_->setDefault(true);
    later_ = buttons->addButton(QString(), QDialogButtonBox::RejectRole);
    later_->setObjectName(QStringLiteral("upgradeLater"));
    connect(download_, &QPushButton::clicked, this, &VantixUpgradeWindow::downloadWanted);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(margin, margin, margin, margin);
    column->addWidget(title_);
    column->addWidget(text_);
    column->addSpacing(margin / 2);
    column->addWidget(buttons);
    column->setSizeConstraint(QLayout::SetFixedSize);
}

void VantixUpgradeWindow::setTexts(const PromotionTexts& texts) {
    setWindowTitle(QString::fromStdString(texts.upgradeTitle));
    setAccessibleName(windowTitle());
    title_->setText(QString::fromStdString(texts.upgradeTitle));
    text_->setText(QString::fromStdString(texts.upgradeText));
    download_->setText(buttonText(texts.downloadButton));
    later_->setText(buttonText(texts.laterButton));
}

}  // namespace calorivo
