#include "ui/qt/EmptyState.h"

#include "ui/qt/MainWindowText.h"
#include "ui/qt/TemplateIcon.h"

#include <QEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace calorivo {

namespace {

constexpr int margin = 24;

QString adviceForKeysFile() {
    return EmptyState::tr(
        "A keys file is a dump of the controller's keys, one on each line. Lines count whose key begins "
        "with T, whose type is [sp78], and whose bytes give a temperature.");
}

QString adviceForSimulation() {
    return EmptyState::tr(
        "The simulated Mac normally has dozens of sensors. Start the program again, or look at the "
        "options with: calorivo --help");
}

QString adviceForAppleSMC() {
    return EmptyState::tr(
        "The controller answered, but none of its keys gives a temperature now. It may be busy: start "
        "the program again. If it stays so, load the module anew: sudo modprobe -r applesmc && sudo "
        "modprobe applesmc");
}

QString adviceForLinux() {
    return EmptyState::tr(
        "Linux shows a sensor once the module for its chip is loaded.\n\n"
        "• Processors: sudo modprobe coretemp (Intel) or sudo modprobe k10temp (AMD)\n"
        "• Intel Macs: sudo modprobe applesmc\n"
        "• Other chips: install lm-sensors, run sudo sensors-detect and load the modules that it names\n\n"
        "Then start the program again. A virtual machine mostly has no sensors; to look around all the "
        "same, start: calorivo --simulate");
}

QLabel* centred(QWidget* parent) {
    auto* const label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignHCenter);
    return label;
}

}  // namespace

EmptyStateText noSensorsText(std::string_view sourceName, const QString& file, const QStringList& problems) {
    EmptyStateText text{EmptyState::tr("No temperature sensors were found"), {}};
    if (sourceName == "keysfile") {
        text = {EmptyState::tr("The keys file holds no temperatures"), adviceForKeysFile()};
        if (!file.isEmpty())
            text.headline = EmptyState::tr("The keys file “%1” holds no temperatures").arg(file);
    } else if (sourceName == "simulated") {
        text.advice = adviceForSimulation();
    } else if (sourceName == "applesmc") {
        text.advice = adviceForAppleSMC();
    } else {
        text.advice = adviceForLinux();
    }
    if (!problems.isEmpty()) text.advice += QStringLiteral("\n\n") + problems.join(u'\n');
    return text;
}

EmptyStateText noRowsText(const QString& area, const QString& filter) {
    if (filter.isEmpty())
        return {EmptyState::tr("No sensors in “%1”").arg(area),
                EmptyState::tr("Choose another area at the left.")};
    return {EmptyState::tr("No sensor in “%1” matches “%2”").arg(area, filter), {}};
}

EmptyState::EmptyState(QWidget* parent)
    : QWidget(parent),
      icon_(new QLabel(this)),
      headline_(centred(this)),
      advice_(new QLabel(this)),
      clear_(new QPushButton(tr("Clear Filter"), this)) {
    setObjectName(QStringLiteral("emptyState"));
    setBackgroundRole(QPalette::Base);
    setAutoFillBackground(true);
    icon_->setAlignment(Qt::AlignHCenter);
    headline_->setFont(scaledFont(font(), 1.4));
    headline_->setObjectName(QStringLiteral("emptyStateHeadline"));
    advice_->setObjectName(QStringLiteral("emptyStateAdvice"));
    advice_->setTextFormat(Qt::PlainText);
    advice_->setWordWrap(true);
    // Commands are there to be copied.
    advice_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    clear_->setObjectName(QStringLiteral("clearFilter"));
    clear_->setAccessibleName(clear_->text());
    connect(clear_, &QPushButton::clicked, this, &EmptyState::clearWanted);
    auto* const layout = new QVBoxLayout(this);
    layout->setSpacing(16);
    layout->addStretch(2);
    layout->addWidget(icon_);
    layout->addWidget(headline_);
    layout->addWidget(advice_);
    layout->addWidget(clear_, 0, Qt::AlignHCenter);
    layout->addStretch(3);
}

void EmptyState::showIcon() {
    constexpr QSize size(48, 48);
    const bool isFilter = button_ == ClearButton::shown;
    icon_->setPixmap(templateIcon(isFilter ? QStringLiteral("search") : QStringLiteral("warning"))
                         .pixmap(size, devicePixelRatioF()));
}

void EmptyState::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    // The picture has the text's colour.
    if (event->type() == QEvent::PaletteChange) showIcon();
}

void EmptyState::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    // Longer lines are hard to read.
    const int longestLine = fontMetrics().averageCharWidth() * 80;
    const int side = std::max(margin, (width() - longestLine) / 2);
    layout()->setContentsMargins(side, margin, side, margin);
}

void EmptyState::show(const EmptyStateText& text, ClearButton button) {
    button_ = button;
    showIcon();
    headline_->setText(text.headline);
    advice_->setText(text.advice);
    advice_->setVisible(!text.advice.isEmpty());
    clear_->setVisible(button == ClearButton::shown);
    setAccessibleName(text.headline);
    setAccessibleDescription(text.advice);
}

}  // namespace calorivo
