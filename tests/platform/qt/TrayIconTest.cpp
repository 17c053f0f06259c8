#include "platform/qt/TrayIconContents.h"
#include "platform/qt/TrayIconDigits.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QImage>
#include <QPoint>
#include <QRect>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace calorivo {
namespace {

/// The part of the image that is painted at all.
QRect inkOf(const QImage& image) {
    QRect ink;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y).alpha() > 64) ink |= QRect(x, y, 1, 1);
    return ink;
}

/// How many pixels differ well from a panel of this colour, in light or dark.
int visiblePixels(const QImage& image, int panelLightness) {
    int visible = 0;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor color = image.pixelColor(x, y);
            const int difference = color.alpha() * (color.lightness() - panelLightness) / 255;
            if (std::abs(difference) > 90) ++visible;
        }
    return visible;
}

TEST(TrayIconDigits, TakesTheFirstNumberOfTheTitle) {
    const std::pair<const char*, const char*> rows[] = {
        {"45°C", "45"},
        {"45°C / 52°C / 1200 RPM", "45"},
        {"113 97 1200", "113"},
        {"-5°C", "-5"},
        {"1200 RPM", "1200"},
        {" / 52°C", "52"},
        {"", ""},
        {"N/A", ""},
        {"-1 RPM", "-1"},
        {"0°C", "0"},
    };
    for (const auto& [title, number] : rows)
        EXPECT_EQ(firstNumber(QString::fromUtf8(title)), QString::fromUtf8(number)) << title;
}

TEST(TrayIconDigits, KnowsHowWideATitleGets) {
    const std::pair<const char*, const char*> rows[] = {
        {"45°C", "88°C"},
        {"9°C / 52°C / 0 RPM", "88°C / 88°C / 8888 RPM"},
        {"113°F", "888°F"},
        {"45 52 1200", "88 88 8888"},
        {"11000 RPM", "88888 RPM"},
        {"N/A", "N/A"},
        {"", ""},
    };
    for (const auto& [title, widest] : rows)
        EXPECT_EQ(widestTitle(QString::fromUtf8(title)), QString::fromUtf8(widest)) << title;
}

TEST(TrayIconDigits, FillsTheSquareAtEverySize) {
    for (const int side : {16, 22, 24, 32, 48}) {
        const QImage image = drawDigits(QStringLiteral("45"), side, 1.0);
        ASSERT_EQ(image.size(), QSize(side, side));
        const QRect ink = inkOf(image);
        EXPECT_GE(ink.width(), side * 8 / 10) << side;
        EXPECT_GE(ink.height(), side * 6 / 10) << side;
        EXPECT_LE(std::abs(ink.left() - (side - 1 - ink.right())), 1) << side << ": in the middle";
        EXPECT_LE(std::abs(ink.top() - (side - 1 - ink.bottom())), 1) << side << ": in the middle";
    }
}

TEST(TrayIconDigits, IsSeenOnLightAndOnDarkPanels) {
    for (const int side : {22, 24})
        for (const int lightness : {0, 40, 128, 220, 255})
            EXPECT_GE(visiblePixels(drawDigits(QStringLiteral("45"), side, 1.0), lightness), side * side / 8)
                << side << " on " << lightness;
}

TEST(TrayIconDigits, DrawsEveryNumberDifferently) {
    for (const int side : {16, 22}) {
        for (int one = 10; one < 20; ++one)
            for (int other = one + 1; other < 20; ++other)
                EXPECT_NE(drawDigits(QString::number(one), side, 1.0),
                          drawDigits(QString::number(other), side, 1.0));
    }
}

TEST(TrayIconDigits, DrawsSmallerOnesForASmallerFont) {
    const QRect large = inkOf(drawDigits(QStringLiteral("45"), 24, 1.0));
    const QRect small = inkOf(drawDigits(QStringLiteral("45"), 24, 12.0 / 14.0));
    EXPECT_LT(small.width(), large.width());
    EXPECT_LT(small.height(), large.height());
}

TEST(TrayIconDigits, KeepsLongNumbersInside) {
    for (const char* const number : {"1", "45", "113", "1200", "-5"}) {
        const QImage image = drawDigits(QString::fromLatin1(number), 22, 1.0);
        int brightest = 0;
        for (int i = 0; i < 22; ++i)
            for (const QPoint at : {QPoint(0, i), QPoint(21, i), QPoint(i, 0), QPoint(i, 21)})
                brightest = std::max(brightest,
                                     image.pixelColor(at).lightness() * image.pixelColor(at).alpha() / 255);
        EXPECT_LT(brightest, 128) << number << ": only the dark edge comes to the border";
    }
    EXPECT_EQ(inkOf(drawDigits(QString(), 22, 1.0)), QRect());
}

TEST(TrayIconDigits, GivesAShapeTheSameEdge) {
    QImage shape(16, 16, QImage::Format_ARGB32);
    shape.fill(Qt::transparent);
    for (int i = 4; i < 12; ++i) shape.setPixelColor(i, 8, Qt::black);
    const QImage image = drawShape(shape);
    EXPECT_EQ(image.pixelColor(8, 8), QColor(Qt::white));
    EXPECT_LT(image.pixelColor(8, 7).lightness(), 64);
    EXPECT_EQ(image.pixelColor(8, 7).alpha(), 255);
    EXPECT_EQ(image.pixelColor(8, 5).alpha(), 0);
}

TEST(TrayIconContents, PutsTheTitleWhereThePanelCanShowIt) {
    const HostTraits poor{LabelSupport::none, true};
    const HostTraits beside{LabelSupport::besideIcon, true};
    const HostTraits byName{LabelSupport::besideIcon, false};
    const HostTraits instead{LabelSupport::insteadOfIcon, true};
    const auto place = [](TitlePlace wanted, const HostTraits& host) { return labelPlaceFor(wanted, host); };

    EXPECT_EQ(place(TitlePlace::automatic, poor), LabelSupport::none);
    EXPECT_EQ(place(TitlePlace::automatic, beside), LabelSupport::besideIcon);
    EXPECT_EQ(place(TitlePlace::automatic, instead), LabelSupport::insteadOfIcon);
    EXPECT_EQ(place(TitlePlace::besideIcon, poor), LabelSupport::besideIcon);
    EXPECT_EQ(place(TitlePlace::besideIcon, instead), LabelSupport::insteadOfIcon);
    EXPECT_EQ(place(TitlePlace::insideIcon, poor), LabelSupport::none);
    EXPECT_EQ(place(TitlePlace::insideIcon, beside), LabelSupport::none);
    EXPECT_EQ(place(TitlePlace::insideIcon, instead), LabelSupport::none);
    EXPECT_EQ(place(TitlePlace::insideIcon, byName), LabelSupport::besideIcon) << "digits have no name";
}

TEST(TrayIconContents, IsNeverAnInvisibleItem) {
    const QString title = QStringLiteral("45°C / 1200 RPM");
    const QString none;
    const TrayIconContents imageAlone{TrayIconKind::image, none, std::nullopt};
    const TrayIconContents digits{TrayIconKind::digits, QStringLiteral("45"), std::nullopt};
    for (const bool hasImage : {false, true}) {
        for (const auto place : {LabelSupport::none, LabelSupport::besideIcon, LabelSupport::insteadOfIcon})
            EXPECT_EQ(trayIconContents(none, hasImage, place), imageAlone);
        EXPECT_EQ(trayIconContents(title, hasImage, LabelSupport::none), digits);
        EXPECT_EQ(trayIconContents(QStringLiteral("N/A"), hasImage, LabelSupport::none), imageAlone);
        const TrayIconKind icon = hasImage ? TrayIconKind::image : TrayIconKind::blank;
        for (const auto place : {LabelSupport::besideIcon, LabelSupport::insteadOfIcon})
            EXPECT_EQ(trayIconContents(title, hasImage, place), (TrayIconContents{icon, none, title}));
    }
}

}  // namespace
}  // namespace calorivo
