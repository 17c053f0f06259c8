#include "ui/qt/LevelBarDelegate.h"

#include "Contrast.h"
#include "ui/qt/Appearance.h"
#include "ui/qt/LevelBarColors.h"

#include <QImage>
#include <QPainter>
#include <QStandardItemModel>
#include <QStyleOptionViewItem>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace calorivo {
namespace {

/// One bar, or none.
struct OneBar final : LevelBarSource {
    [[nodiscard]] const QZTemperatureLevelIndicatorCell* levelBarToPaint(int row) override {
        asked.push_back(row);
        return bar ? &*bar : nullptr;
    }
    std::optional<QZTemperatureLevelIndicatorCell> bar = QZTemperatureLevelIndicatorCell();
    std::vector<int> asked;
};

/// A cell whose bar is 120 pixels long, one for each degree.
class LevelBarDelegateTest : public testing::Test {
  protected:
    static constexpr QRect cell{10, 4, 136, 24};
    static constexpr int left = 18;
    static constexpr int barLine = 16;   // inside of the bar
    static constexpr int tickLine = 10;  // above the bar, where only ticks and marks are

    void show(double celsius, float maximum = 0.0F) {
        source.bar->setObjectValue(celsius);
        source.bar->setMaxUsedValue(maximum);
    }
    [[nodiscard]] QImage painted() {
        QImage image(160, 32, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        QStyleOptionViewItem option;
        option.rect = cell;
        option.palette = palette;
        option.state = state;
        delegate->paint(&painter, option, model.index(0, 0));
        return image;
    }
    /// Where the line has this colour, from the first pixel to the one after the last; {0, 0} for nowhere.
    static std::pair<int, int> stretch(const QImage& image, int y, const QColor& color) {
        int first = -1;
        int end = 0;
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixelColor(x, y) != color) continue;
            if (first < 0) first = x;
            end = x + 1;
        }
        return first < 0 ? std::pair(0, 0) : std::pair(first, end);
    }
    [[nodiscard]] QColor zone(LevelZone zone) const { return levelColor(zone, palette); }

    using Stretch = std::pair<int, int>;
    static inline const QColor tick = QColor(115, 115, 115);

    OneBar source;
    QStandardItemModel model{1, 1};
    QPalette palette = lightPalette();
    QStyle::State state = QStyle::State_Enabled | QStyle::State_Active;
    std::unique_ptr<LevelBarDelegate> delegate =
        std::make_unique<LevelBarDelegate>(source, LevelBarDelegate::Marks::no, nullptr);
};

TEST_F(LevelBarDelegateTest, FillsTheBarUpToTheValueInTheColourOfItsZone) {
    for (const QPalette& shown : {lightPalette(), darkPalette()}) {
        palette = shown;
        show(40);
        EXPECT_EQ(stretch(painted(), barLine, zone(LevelZone::normal)), (Stretch{left, left + 40}));
        EXPECT_EQ(stretch(painted(), barLine, troughColor(palette)), (Stretch{left + 40, left + 120}));
        show(85);
        EXPECT_EQ(stretch(painted(), barLine, zone(LevelZone::warning)), (Stretch{left, left + 85}));
        show(0);
        EXPECT_EQ(stretch(painted(), barLine, troughColor(palette)), (Stretch{left, left + 120}));
        show(500);
        EXPECT_EQ(stretch(painted(), barLine, troughColor(palette)), (Stretch{0, 0}));
    }
}

TEST_F(LevelBarDelegateTest, HatchesTheCriticalZoneAlone) {
    const auto plain = [](const QImage& image, int length) {
        for (int x = left; x < left + length; ++x)
            for (int y = 12; y < 20; ++y)
                if (image.pixelColor(x, y) != image.pixelColor(left, barLine)) return false;
        return true;
    };
    show(99.5);
    EXPECT_TRUE(plain(painted(), 99));
    show(100);
    EXPECT_FALSE(plain(painted(), 99));
    EXPECT_NE(stretch(painted(), barLine, zone(LevelZone::critical)), (Stretch{0, 0}));
}

TEST_F(LevelBarDelegateTest, MarksTheMaximumWhereTheCellSays) {
    for (const float maximum : {1.0F, 50.0F, 61.0F, 110.0F}) {
        show(30, maximum);
        const QRectF frame = LevelBarDelegate::barFrame(cell);
        EXPECT_EQ(frame, QRectF(left, 10, 120, 12));
        const auto place = source.bar->tickRectangle({frame.x(), frame.y(), frame.width(), frame.height()});
        const int x = static_cast<int>(place->x);
        EXPECT_EQ(stretch(painted(), tickLine, tick), (Stretch{x, x + 2})) << maximum;
        EXPECT_EQ(stretch(painted(), barLine, tick), (Stretch{x, x + 2})) << maximum;
    }
}

TEST_F(LevelBarDelegateTest, MarksNothingWhereNothingWasRecorded) {
    show(30);
    EXPECT_EQ(stretch(painted(), tickLine, tick), (Stretch{0, 0}));
    EXPECT_EQ(stretch(painted(), barLine, tick), (Stretch{0, 0}));
}

TEST_F(LevelBarDelegateTest, PaintsNothingBesideTheBar) {
    show(130, 125);
    const QImage image = painted();
    const QRect frame = LevelBarDelegate::barFrame(cell).toRect();
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (!frame.contains(x, y)) {
                ASSERT_EQ(image.pixelColor(x, y), QColor(Qt::white)) << x << "," << y;
            }
    EXPECT_EQ(stretch(image, tickLine, tick), (Stretch{0, 0}));
}

TEST_F(LevelBarDelegateTest, MarksTheLimitsWhereThatIsWanted) {
    delegate = std::make_unique<LevelBarDelegate>(source, LevelBarDelegate::Marks::yes, nullptr);
    source.bar->setRange({.minValue = 1000, .maxValue = 2200, .warningValue = 1600, .criticalValue = 2000});
    show(1300);
    const QImage image = painted();
    std::vector<int> marks;
    for (int x = 0; x < image.width(); ++x)
        if (image.pixelColor(x, tickLine) != QColor(Qt::white)) marks.push_back(x - left);
    EXPECT_EQ(marks, (std::vector{60, 100}));
    EXPECT_EQ(stretch(image, barLine, zone(LevelZone::normal)), (Stretch{left, left + 30}));
}

TEST_F(LevelBarDelegateTest, SetsTheBarOffFromTheColourOfTheSelection) {
    state |= QStyle::State_Selected;
    palette.setColor(QPalette::Base, QColor(250, 240, 230));
    show(40);
    const QImage image = painted();
    EXPECT_EQ(stretch(image, tickLine, palette.color(QPalette::Base)), (Stretch{left, left + 120}));
    EXPECT_EQ(stretch(image, barLine, zone(LevelZone::normal)), (Stretch{left, left + 40}));
}

TEST_F(LevelBarDelegateTest, AsksForTheBarOncePerPaintingAndPaintsNoneThatThereIsNot) {
    source.bar.reset();
    const QImage image = painted();
    EXPECT_EQ(source.asked, std::vector{0});
    EXPECT_EQ(stretch(image, barLine, QColor(Qt::white)), (Stretch{0, image.width()}));
}

TEST(LevelBarColors, DifferInLightnessFromEachOtherAndFromTheGround) {
    for (const QPalette& palette : {lightPalette(), darkPalette()}) {
        const std::array colors{levelColor(LevelZone::normal, palette),
                                levelColor(LevelZone::warning, palette),
                                levelColor(LevelZone::critical, palette), troughColor(palette)};
        for (std::size_t one = 0; one < colors.size(); ++one)
            for (std::size_t other = 0; other < one; ++other)
                EXPECT_GT(test::contrast(colors[one], colors[other]), 1.3) << isDark(palette) << one << other;
    }
}

}  // namespace
}  // namespace calorivo
