#include "ui/qt/AveragesView.h"

#include "ui/qt/MainWindowText.h"

#include <QEvent>
#include <QGridLayout>
#include <QLabel>

#include <algorithm>

namespace calorivo {

namespace {

constexpr double figureScale = 1.9;

void show(QLabel& label, const QString& caption, const std::string& text) {
    const QString now = asQString(text);
    if (label.text() == now) return;
    label.setText(now);
    label.setAccessibleName(caption + u' ' + now);
}

QLabel* figure(const QString& name, QWidget* parent) {
    auto* const label = new QLabel(parent);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    return label;
}

}  // namespace

AveragesView::AveragesView(QWidget* parent)
    : QWidget(parent),
      computerCaption_(new QLabel(tr("Average"), this)),
      computer_(figure(QStringLiteral("averageComputer"), this)),
      processorCaption_(new QLabel(tr("CPU Average"), this)),
      processor_(figure(QStringLiteral("averageCPU"), this)) {
    setObjectName(QStringLiteral("averages"));
    computerCaption_->setToolTip(tr("The average of all sensors of the computer"));
    processorCaption_->setToolTip(tr("The average of the sensors of the CPU"));
    computer_->setAccessibleName(computerCaption_->text());
    processor_->setAccessibleName(processorCaption_->text());
    auto* const layout = new QGridLayout(this);
    layout->setContentsMargins({});
    layout->setHorizontalSpacing(24);
    layout->setVerticalSpacing(0);
    layout->addWidget(computerCaption_, 0, 0);
    layout->addWidget(computer_, 1, 0);
    layout->addWidget(processorCaption_, 0, 1);
    layout->addWidget(processor_, 1, 1);
    layout->setRowStretch(2, 1);
    adaptFonts();
}

void AveragesView::show(const std::string& computer, const std::string& processor) {
    calorivo::show(*computer_, computerCaption_->text(), computer);
    calorivo::show(*processor_, processorCaption_->text(), processor);
}

void AveragesView::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) adaptFonts();
}

void AveragesView::adaptFonts() {
    const QFont large = scaledFont(font(), figureScale);
    const QFontMetrics metrics(large);
    // Of one size, whatever the figure is: a label whose size may change has its window laid out with each
    // text.
    const int width = metrics.horizontalAdvance(QStringLiteral("000°C")) + 4;
    for (QLabel* const label : {computer_, processor_}) {
        label->setFont(large);
        label->setFixedSize(width, metrics.height());
    }
}

}  // namespace calorivo
