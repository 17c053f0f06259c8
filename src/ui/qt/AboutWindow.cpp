#include "ui/qt/AboutWindow.h"

#include "ui/qt/TemplateIcon.h"
#include "ui/qt/ThankYouLinks.h"

#include <QAction>
#include <QDialogButtonBox>
#include <QFont>
#include <QGridLayout>
#include <QIcon>
#include <QKeySequence>
#include <QLabel>
#include <QSize>
#include <QVBoxLayout>

namespace calorivo {

namespace {

constexpr int margin = 20;
constexpr int iconSize = 64;

}  // namespace

AboutWindow::AboutWindow(const QString& version, QWidget* parent)
    : QDialog(parent), texts_(*new QVBoxLayout) {
    setObjectName(QStringLiteral("aboutWindow"));
    setWindowTitle(tr("About Calorivo"));
    auto* const icon = new QLabel(this);
    icon->setPixmap(applicationIcon().pixmap(QSize(iconSize, iconSize), devicePixelRatioF()));
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* const grid = new QGridLayout(this);
    grid->setContentsMargins(margin, margin, margin, margin);
    grid->setHorizontalSpacing(margin);
    grid->addWidget(icon, 0, 0, Qt::AlignTop);
    grid->addLayout(&texts_, 0, 1);
    grid->addWidget(buttons, 1, 0, 1, 2);
    grid->setSizeConstraint(QLayout::SetFixedSize);
    addTexts(version);
    addShortcut();
}

void AboutWindow::addTexts(const QString& version) {
    constexpr double large = 1.6;
    QLabel& name = addText("programName", tr("Calorivo"));
    QFont font = name.font();
    font.setPointSizeF(font.pointSizeF() * large);
    font.setBold(true);
    name.setFont(font);
    addText("programVersion", tr("Version %1").arg(version));
    addText("programDescription", tr("Watches the temperatures, fans and drives of this computer."));
    texts_.addSpacing(margin / 2);
    addText("copyright", tr("© 2026 The Calorivo developers"));
    addText("license", tr("Free software under the MIT License. It comes without any warranty."));
    addTranslators();
}

void AboutWindow::addTranslators() {
    const QString unnamed = QStringLiteral("NAMES OF TRANSLATORS");
    //: Your names, separated by commas.
    const QString names = tr("NAMES OF TRANSLATORS");
    if (names != unnamed) addText("translators", tr("Translated by %1").arg(names));
}

QLabel& AboutWindow::addText(const char* objectName, const QString& text) {
    auto& label = *new QLabel(text, this);
    label.setTextFormat(Qt::PlainText);
    label.setObjectName(QLatin1String(objectName));
    label.setTextInteractionFlags(Qt::TextSelectableByMouse);
    texts_.addWidget(&label);
    return label;
}

void AboutWindow::addShortcut() {
    auto* const close = new QAction(this);
    close->setShortcut(Qt::CTRL | Qt::Key_W);
    connect(close, &QAction::triggered, this, &QDialog::reject);
    addAction(close);
}

void AboutWindow::attach(Actions& actions, const LinkTargets& targets) {
    texts_.addSpacing(margin / 2);
    addText("thankYou", tr("Thank you for using Calorivo."));
    texts_.addWidget(new ThankYouLinks(actions, targets, this));
    texts_.addStretch(1);
}

}  // namespace calorivo
