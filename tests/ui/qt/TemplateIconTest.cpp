#include "ui/qt/TemplateIcon.h"

#include "sensors/Areas.h"

#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QPixmapCache>
#include <QString>
#include <gtest/gtest.h>

#include <set>

namespace calorivo {
namespace {

/// The application's palette for one test.
class PaletteOfTest {
  public:
    explicit PaletteOfTest(const QPalette& palette) { QGuiApplication::setPalette(palette); }
    ~PaletteOfTest() { QGuiApplication::setPalette(before_); }
    PaletteOfTest(const PaletteOfTest&) = delete;
    PaletteOfTest& operator=(const PaletteOfTest&) = delete;

  private:
    QPalette before_ = QGuiApplication::palette();
};

QPalette paletteWith(const QColor& text, const QColor& highlighted, const QColor& disabled) {
    QPalette palette;
    palette.setColor(QPalette::All, QPalette::WindowText, text);
    palette.setColor(QPalette::All, QPalette::HighlightedText, highlighted);
    palette.setColor(QPalette::Disabled, QPalette::WindowText, disabled);
    return palette;
}

const QColor ink(10, 20, 30);
const QColor highlightedInk(200, 210, 220);
const QColor disabledInk(120, 130, 140);

/// The colours of the opaque pixels, each as "#rrggbb".
std::set<QString> opaqueColours(const QPixmap& pixmap) {
    const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    std::set<QString> colours;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (const QColor pixel = image.pixelColor(x, y); pixel.alpha() == 255)
                colours.insert(pixel.name());
    return colours;
}

std::set<QString> coloursOf(const QIcon& icon, QIcon::Mode mode) {
    return opaqueColours(icon.pixmap(QSize(32, 32), 1.0, mode));
}

TEST(TemplateIcon, ExistsForEveryArea) {
    for (const Area& area : areas) {
        const QIcon icon =
            templateIcon(QString::fromUtf8(area.icon.data(), static_cast<qsizetype>(area.icon.size())));
        EXPECT_FALSE(icon.isNull()) << area.icon;
        EXPECT_FALSE(coloursOf(icon, QIcon::Normal).empty()) << area.icon;
    }
}

TEST(TemplateIcon, ExistsForTheStatusItemTheWindowsAndThePanes) {
    for (const char* name : {"NewIcon_16px", "preferences", "reset", "search", "details", "fan", "warning",
                             "pane-general", "pane-temperature", "pane-menubar", "pane-alerts", "pane-log"})
        EXPECT_FALSE(coloursOf(templateIcon(QString::fromLatin1(name)), QIcon::Normal).empty()) << name;
}

TEST(TemplateIcon, IsEmptyForANameWithoutADrawing) {
    EXPECT_TRUE(templateIcon(QStringLiteral("no such drawing")).isNull());
    EXPECT_TRUE(templateIcon(QString()).isNull());
}

TEST(TemplateIcon, HasThePalettesColourOfEachMode) {
    const PaletteOfTest palette(paletteWith(ink, highlightedInk, disabledInk));
    const QIcon icon = templateIcon(QStringLiteral("cpu"));
    EXPECT_EQ(coloursOf(icon, QIcon::Normal), std::set{ink.name()});
    EXPECT_EQ(coloursOf(icon, QIcon::Active), std::set{ink.name()});
    EXPECT_EQ(coloursOf(icon, QIcon::Selected), std::set{highlightedInk.name()});
    EXPECT_EQ(coloursOf(icon, QIcon::Disabled), std::set{disabledInk.name()});
}

TEST(TemplateIcon, FollowsTheChangeFromALightToADarkPalette) {
    const QIcon icon = templateIcon(QStringLiteral("memory"));
    const QColor paleInk(230, 231, 232);
    const PaletteOfTest light(paletteWith(ink, highlightedInk, disabledInk));
    EXPECT_EQ(coloursOf(icon, QIcon::Normal), std::set{ink.name()});
    const PaletteOfTest dark(paletteWith(paleInk, ink, disabledInk));
    EXPECT_EQ(coloursOf(icon, QIcon::Normal), std::set{paleInk.name()});
    EXPECT_EQ(coloursOf(icon, QIcon::Selected), std::set{ink.name()});
}

TEST(TemplateIcon, LeavesWhatIsNotDrawnTransparent) {
    const QImage image = templateIcon(QStringLiteral("battery")).pixmap(QSize(16, 16), 1.0).toImage();
    EXPECT_EQ(image.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(image.pixelColor(15, 15).alpha(), 0);
}

TEST(TemplateIcon, HasTheDevicesPixelsAtEveryRatio) {
    const QIcon icon = templateIcon(QStringLiteral("gpu"));
    const auto sizeAt = [&](qreal ratio) { return icon.pixmap(QSize(16, 16), ratio).size(); };
    EXPECT_EQ(sizeAt(1), QSize(16, 16));
    EXPECT_EQ(sizeAt(1.25), QSize(20, 20));
    EXPECT_EQ(sizeAt(1.5), QSize(24, 24));
    EXPECT_EQ(sizeAt(2), QSize(32, 32));
    EXPECT_EQ(icon.pixmap(QSize(16, 16), 2.0).devicePixelRatio(), 2.0);
    EXPECT_EQ(icon.pixmap(QSize(16, 16), 2.0).deviceIndependentSize(), QSizeF(16, 16));
}

TEST(TemplateIcon, IsPaintedAsSharpAsTheDevice) {
    const QIcon icon = templateIcon(QStringLiteral("gpu"));
    QPixmap device(32, 32);
    device.setDevicePixelRatio(2);
    device.fill(Qt::transparent);
    QPainter painter(&device);
    icon.paint(&painter, QRect(0, 0, 16, 16));
    painter.end();
    EXPECT_EQ(device.toImage(), icon.pixmap(QSize(16, 16), 2.0).toImage());
}

TEST(TemplateIcon, KeepsItsProportionsInARectangle) {
    const QImage wide = templateIcon(QStringLiteral("optical")).pixmap(QSize(48, 16), 1.0).toImage();
    const QImage square = templateIcon(QStringLiteral("optical")).pixmap(QSize(16, 16), 1.0).toImage();
    EXPECT_EQ(wide.copy(16, 0, 16, 16), square);
    EXPECT_EQ(wide.copy(0, 0, 16, 16).pixelColor(8, 8).alpha(), 0);
}

TEST(TemplateIcon, IsDrawnOnceForASizeAndColour) {
    QPixmapCache::clear();
    const QPixmap first = templateIcon(QStringLiteral("hd")).pixmap(QSize(24, 24), 1.0);
    EXPECT_EQ(templateIcon(QStringLiteral("hd")).pixmap(QSize(24, 24), 1.0).cacheKey(), first.cacheKey());
    EXPECT_NE(templateIcon(QStringLiteral("hd")).pixmap(QSize(25, 25), 1.0).cacheKey(), first.cacheKey());
}

TEST(ApplicationIcon, HasItsOwnColoursInEveryMode) {
    const PaletteOfTest palette(paletteWith(ink, highlightedInk, disabledInk));
    const QIcon icon = applicationIcon();
    ASSERT_FALSE(icon.isNull());
    EXPECT_GT(coloursOf(icon, QIcon::Normal).size(), 20U);
    EXPECT_EQ(coloursOf(icon, QIcon::Selected), coloursOf(icon, QIcon::Normal));
    EXPECT_EQ(icon.pixmap(QSize(128, 128), 1.0).size(), QSize(128, 128));
}

}  // namespace
}  // namespace calorivo
