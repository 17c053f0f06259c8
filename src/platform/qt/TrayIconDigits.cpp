#include "platform/qt/TrayIconDigits.h"

#include <QColor>
#include <QFont>
#include <QGuiApplication>
#include <QPainter>
#include <QPainterPath>
#include <QPointF>
#include <QRectF>
#include <QRegularExpression>
#include <QTransform>

#include <algorithm>

namespace calorivo {

namespace {

const QColor face(Qt::white);
const QColor plate(46, 52, 64);
const QColor edge(24, 24, 24);

/// Parts of the icon's side.
constexpr double heightOfDigits = 0.68;
constexpr double cornerRadius = 0.18;

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
    const double room = side - 2 * std::max(1.0, side / 16.0);
    const double height = side * heightOfDigits * scale;
    const double width = std::min(room * scale, ink.width() * height / ink.height());
    QTransform place;
    place.translate(side / 2.0, side / 2.0);
    place.scale(width / ink.width(), height / ink.height());
    place.translate(-ink.center().x(), -ink.center().y());

    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(plate);
    painter.drawRoundedRect(QRectF(0, 0, side, side), side * cornerRadius, side * cornerRadius);
    painter.fillPath(place.map(outline), face);
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
