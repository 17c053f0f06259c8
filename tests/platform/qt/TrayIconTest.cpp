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

/// The part of the image where its bright digits are.
QRect digitsOf(const QImage& image) {
    QRect digits;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y).lightness() > 140) digits |= QRect(x, y, 1, 1);
    return digits;
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
        const QRect digits = digitsOf(image);
        EXPECT_GE(digits.width(), side * 7 / 10) << side;
        EXPECT_GE(digits.height(), side * 6 / 10) << side;
        EXPECT_LE(std::abs(digits.left() - (side - 1 - digits.right())), 1) << side << ": in the middle";
        EXPECT_LE(std::abs(digits.top() - (side - 1 - digits.bottom())), 1) << side << ": in the middle";
    }
}

TEST(TrayIconDigits, IsReadOnPanelsOfAnyColour) {
    const QImage image = drawDigits(QStringLiteral("45"), 22, 1.0);
    int bright = 0;
    for (int y = 0; y < 22; ++y)
        for (int x = 0; x < 22; ++x) {
            const QColor color = image.pixelColor(x, y);
            if (color.lightness() > 220) ++bright;
            const bool isCorner = std::min(x, 21 - x) + std::min(y, 21 - y) < 5;
            EXPECT_TRUE(isCorner || color.alpha() == 255) << "the panel shines through at " << x << ", " << y;
        }
    EXPECT_GE(bright, 60);
    EXPECT_LT(image.pixelColor(11, 0).lightness(), 64);
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
    const QRect large = digitsOf(drawDigits(QStringLiteral("45"), 24, 1.0));
    const QRect small = digitsOf(drawDigits(QStringLiteral("45"), 24, 12.0 / 14.0));
    EXPECT_LT(small.width(), large.width());
    EXPECT_LT(small.height(), large.height());
}

TEST(TrayIconDigits, KeepsEveryNumberOnItsPlate) {
    for (const char* const number : {"1", "45", "113", "1200", "-5", "99999"}) {
        const QRect digits = digitsOf(drawDigits(QString::fromLatin1(number), 22, 1.0));
        EXPECT_TRUE(QRect(1, 1, 20, 20).contains(digits)) << number;
        EXPECT_FALSE(digits.isEmpty()) << number;
    }
    EXPECT_EQ(drawDigits(QString(), 22, 1.0).pixelColor(11, 11).alpha(), 0);
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
    const HostTraits poor{LabelSupport::none, true};
    const TitlePlace automatic = TitlePlace::automatic;
    const TrayIconContents imageAlone{TrayIconKind::image, none, std::nullopt};
    const TrayIconContents imageAndLabel{TrayIconKind::image, none, title};
    const TrayIconContents digits{TrayIconKind::digits, QStringLiteral("45"), std::nullopt};
    for (const bool hasImage : {false, true}) {
        EXPECT_EQ(trayIconContents(none, hasImage, automatic, poor), imageAlone);
        EXPECT_EQ(trayIconContents(title, hasImage, automatic, poor), digits);
        EXPECT_EQ(trayIconContents(QStringLiteral("N/A"), hasImage, automatic, poor), imageAlone);
        EXPECT_EQ(trayIconContents(title, hasImage, TitlePlace::besideIcon, poor), imageAndLabel)
            << "the label may not be seen";
        const TrayIconKind icon = hasImage ? TrayIconKind::image : TrayIconKind::blank;
        for (const auto label : {LabelSupport::besideIcon, LabelSupport::insteadOfIcon}) {
            const HostTraits host{label, true};
            EXPECT_EQ(trayIconContents(none, hasImage, automatic, host), imageAlone);
            EXPECT_EQ(trayIconContents(title, hasImage, automatic, host),
                      (TrayIconContents{icon, none, title}));
            EXPECT_EQ(trayIconContents(title, hasImage, TitlePlace::insideIcon, host), digits);
        }
    }
}

}  // namespace
}  // namespace calorivo
