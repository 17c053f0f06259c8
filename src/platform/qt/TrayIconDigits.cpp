#include "platform/qt/TrayIconDigits.h"

#include <QColor>
#include <QFont>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QPointF>
#include <QRectF>
#include <QRegularExpression>
#include <QTransform>

#include <algorithm>

namespace calorivo {

namespace {

const QColor face(Qt::white);
const QColor edge(24, 24, 24);

/// The text's outline at the size of the font, as wide and high as its ink.
QPainterPath outlineOf(const QString& text) {
    QFont font = QGuiApplication::font();
    font.setPixelSize(100);
    font.setWeight(QFont::Bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    QPainterPath path;
    path.addText(QPointF(), font, text);
    return path;
}

QImage emptySquare(int side) {
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

/// The shape in one colour.
QImage tinted(const QImage& shape, const QColor& color) {
    QImage image = shape.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(image.rect(), color);
    return image;
}

}  // namespace

QString firstNumber(const QString& title) {
    static const QRegularExpression number(QStringLiteral("(?<![0-9])[-\u2212]?[0-9]+"));
    return number.match(title).captured();
}

QString widestTitle(const QString& title) {
    static const QRegularExpression number(QStringLiteral("([0-9]+)( RPM)?"));
    constexpr qsizetype temperatureDigits = 2;
    constexpr qsizetype speedDigits = 4;
    QString widest;
    qsizetype end = 0;
    for (auto matches = number.globalMatch(title); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        const qsizetype least = match.capturedLength(2) > 0 ? speedDigits : temperatureDigits;
        widest += title.mid(end, match.capturedStart() - end);
        widest += QString(std::max(match.capturedLength(1), least), QLatin1Char('8')) + match.captured(2);
        end = match.capturedEnd();
    }
    return widest + title.mid(end);
}

QImage drawDigits(const QString& text, int side, double scale) {
    QImage image = emptySquare(side);
    const QPainterPath outline = outlineOf(text);
    const QRectF ink = outline.boundingRect();
    if (ink.isEmpty()) return image;
    // A pixel of edge on every side; at most as high as wide digits look right.
    const double edgeWidth = std::max(1.0, side / 20.0);
    const double room = side - 2 * edgeWidth;
    const double height = room * 0.8 * scale;
    const double width = std::min(room * scale, ink.width() * height / ink.height());
    QTransform place;
    place.translate(side / 2.0, side / 2.0);
    place.scale(width / ink.width(), height / ink.height());
    place.translate(-ink.center().x(), -ink.center().y());
    const QPainterPath digits = place.map(outline);

    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.strokePath(digits, QPen(edge, 2 * edgeWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.fillPath(digits, face);
    return image;
}

QImage drawShape(const QImage& shape) {
    QImage image(shape.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    const QImage around = tinted(shape, edge);
    QPainter painter(&image);
    for (const int x : {-1, 0, 1})
        for (const int y : {-1, 0, 1}) painter.drawImage(x, y, around);
    painter.drawImage(0, 0, tinted(shape, face));
    return image;
}

}  // namespace calorivo
