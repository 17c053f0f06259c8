#pragma once

#include <QByteArray>
#include <QDBusArgument>
#include <QImage>
#include <QList>
#include <QMetaType>
#include <QString>

namespace calorivo {

/// An image as the status item's protocol carries it.
struct IconPixmap {
    /// Pixels.
    int width = 0;
    int height = 0;
    /// Four bytes a pixel, row after row: alpha, red, green, blue; not premultiplied.
    QByteArray bytes;

    friend bool operator==(const IconPixmap&, const IconPixmap&) = default;
};

using IconPixmaps = QList<IconPixmap>;

/// What a panel shows while the pointer rests on the item.
struct StatusToolTip {
    QString iconName;
    IconPixmaps pixmaps;
    QString title;
    QString text;

    friend bool operator==(const StatusToolTip&, const StatusToolTip&) = default;
};

[[nodiscard]] IconPixmap toIconPixmap(const QImage& image);

QDBusArgument& operator<<(QDBusArgument& argument, const IconPixmap& pixmap);
const QDBusArgument& operator>>(const QDBusArgument& argument, IconPixmap& pixmap);
QDBusArgument& operator<<(QDBusArgument& argument, const StatusToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, StatusToolTip& toolTip);

/// Makes the types known to QtDBus; any number of times.
void registerStatusNotifierTypes();

}  // namespace calorivo

Q_DECLARE_METATYPE(calorivo::IconPixmap)
Q_DECLARE_METATYPE(calorivo::StatusToolTip)
