#include "ui/qt/LimitSlider.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <QLabel>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOptionSlider>

#include <cstdlib>
#include <vector>

namespace calorivo {
namespace {

/// Writes down which parts of a slider are drawn.
class RecordingStyle final : public QProxyStyle {
  public:
    RecordingStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("fusion"))) {}
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override {
        if (control == CC_Slider) drawn.push_back(option->subControls);
        QProxyStyle::drawComplexControl(control, option, painter, widget);
    }
    mutable std::vector<SubControls> drawn;
};

TEST(LimitSlider, LetsTheStyleDrawItsKnobAndNoTrack) {
    RecordingStyle style;
    LimitSlider slider;
    slider.setStyle(&style);
    slider.resize(300, 40);
    slider.grab();
    EXPECT_EQ(style.drawn, (std::vector<QStyle::SubControls>{QStyle::SC_SliderHandle}));
}

TEST(LimitSlider, RunsFrom40To100Degrees) {
    LimitSlider slider;
    EXPECT_EQ(slider.minimum(), 40);
    EXPECT_EQ(slider.maximum(), 100);
}

TEST(LimitScale, ItsTicksAreSeenOnEveryBackground) {
    for (const QColor background : {QColor(250, 250, 250), QColor(30, 30, 30)}) {
        LimitScale scale({"low", "med", "high"}, nullptr);
        scale.setPalette(QPalette(background));
        scale.resize(scale.sizeHint());
        const QImage image = scale.grab().toImage();
        const int below = scale.slider().height() + 2;
        for (const int value : {40, 50, 100}) {
            const int lightness = image.pixelColor(scale.slider().xOfValue(value), below).lightness();
            EXPECT_GT(std::abs(lightness - background.lightness()), 80) << value;
        }
        EXPECT_EQ(image.pixelColor(scale.slider().xOfValue(45), below), background);
    }
}

TEST(LimitScale, PutsEachNumberBelowItsPlaceOnTheRuler) {
    LimitScale scale({"low", "med", "high"}, nullptr);
    scale.resize(600, scale.sizeHint().height());
    scale.setIntValue(0, 50);
    scale.setIntValue(1, 70);
    scale.setIntValue(2, 90);
    scale.grab();
    const auto middle = [&scale](const char* name) {
        return scale.findChild<QLabel*>(QLatin1String(name))->geometry().center().x();
    };
    EXPECT_NEAR(middle("low"), scale.slider().xOfValue(50), 1);
    EXPECT_NEAR(middle("med"), scale.slider().xOfValue(70), 1);
    EXPECT_NEAR(middle("high"), scale.slider().xOfValue(90), 1);
}

TEST(LimitScale, KeepsTheNumbersAtItsEndsInside) {
    LimitScale scale({"low", "med", "high"}, nullptr);
    scale.resize(scale.sizeHint());
    scale.setIntValue(0, 40);
    scale.setIntValue(2, 100);
    EXPECT_GE(scale.findChild<QLabel*>(QStringLiteral("low"))->geometry().left(), 0);
    EXPECT_LE(scale.findChild<QLabel*>(QStringLiteral("high"))->geometry().right(), scale.rect().right());
}

}  // namespace
}  // namespace calorivo
