#include "ui/qt/LimitSlider.h"

#include "ui/MySliderCell.h"

#include <QColor>
#include <QFont>
#include <QFontMetrics>
#include <QLabel>
#include <QPainter>
#include <QPalette>
#include <QRect>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QStylePainter>

#include <algorithm>

namespace calorivo {

namespace {

constexpr int oneDegree = 1;
constexpr int aFewDegrees = 5;
constexpr int betweenTicks = 10;
constexpr int tickHeight = 5;

bool hasTrack(const QRect& frame) {
    const Rectangle inside{static_cast<double>(frame.x()), static_cast<double>(frame.y()),
                           static_cast<double>(frame.width()), static_cast<double>(frame.height())};
    return !MySliderCell::drawBarInsideFlipped(inside, true).segments.empty();
}

}  // namespace

LimitSlider::LimitSlider(QWidget* parent) : QSlider(Qt::Horizontal, parent) {
    setRange(lowest, highest);
    setSingleStep(oneDegree);
    setPageStep(aFewDegrees);
}

int LimitSlider::xOfValue(int value) const {
    QStyleOptionSlider option;
    initStyleOption(&option);
    option.sliderPosition = value;
    option.sliderValue = value;
    return style()->subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle, this).center().x();
}

void LimitSlider::paintEvent(QPaintEvent* /*event*/) {
    QStylePainter painter(this);
    QStyleOptionSlider option;
    initStyleOption(&option);
    option.subControls = QStyle::SC_SliderHandle;
    if (hasTrack(rect())) option.subControls |= QStyle::SC_SliderGroove;
    painter.drawComplexControl(QStyle::CC_Slider, option);
}

LimitScale::LimitScale(const std::array<const char*, labelCount>& names, QWidget* parent)
    : QWidget(parent), slider_(*new LimitSlider(this)) {
    constexpr double smallText = 0.9;
    for (std::size_t index = 0; index < labelCount; ++index) {
        labels_.at(index) = new QLabel(this);
        QFont small = labels_.at(index)->font();
        small.setPointSizeF(small.pointSizeF() * smallText);
        labels_.at(index)->setFont(small);
        labels_.at(index)->setAlignment(Qt::AlignCenter);
        labels_.at(index)->setObjectName(QLatin1String(names.at(index)));
    }
    setFocusProxy(&slider_);
}

void LimitScale::setIntValue(std::size_t label, std::int32_t celsius) {
    labels_.at(label)->setNum(celsius);
    placeLabels();
}

QSize LimitScale::sizeHint() const {
    constexpr int charactersWide = 44;
    return {charactersWide * fontMetrics().averageCharWidth(),
            slider_.sizeHint().height() + tickHeight + labels_.front()->sizeHint().height()};
}

void LimitScale::paintEvent(QPaintEvent* /*event*/) {
    // In the colour of texts: without a track they are all there is to see of the ruler, and a style may draw
    // its own so faintly that a dark background swallows them.
    constexpr float half = 0.5F;
    QColor color = palette().color(QPalette::WindowText);
    color.setAlphaF(half);
    QPainter painter(this);
    for (int value = LimitSlider::lowest; value <= LimitSlider::highest; value += betweenTicks)
        painter.fillRect(slider_.xOfValue(value), slider_.height(), 1, tickHeight, color);
}

void LimitScale::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    slider_.setGeometry(0, 0, width(), slider_.sizeHint().height());
    placeLabels();
}

void LimitScale::placeLabels() {
    for (QLabel* const label : labels_) {
        const QSize size = label->sizeHint();
        const int middle = slider_.xOfValue(label->text().toInt());
        const int left = std::clamp(middle - size.width() / 2, 0, std::max(0, width() - size.width()));
        label->setGeometry(left, slider_.height() + tickHeight, size.width(), size.height());
    }
}

}  // namespace calorivo
