#include "platform/qt/StatusNotifierTypes.h"

#include <QDBusMetaType>
#include <QtEndian>

namespace calorivo {

IconPixmap toIconPixmap(const QImage& image) {
    const QImage pixels = image.convertToFormat(QImage::Format_ARGB32);
    IconPixmap pixmap{pixels.width(), pixels.height(), {}};
    const qsizetype rowBytes = qsizetype{pixels.width()} * 4;
    pixmap.bytes.resize(rowBytes * pixels.height());
    for (int row = 0; row < pixels.height(); ++row)
        qToBigEndian<quint32>(pixels.constScanLine(row), pixels.width(),
                              pixmap.bytes.data() + row * rowBytes);
    return pixmap;
}

QDBusArgument& operator<<(QDBusArgument& argument, const IconPixmap& pixmap) {
    argument.beginStructure();
    argument << pixmap.width << pixmap.height << pixmap.bytes;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, IconPixmap& pixmap) {
    argument.beginStructure();
    argument >> pixmap.width >> pixmap.height >> pixmap.bytes;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const StatusToolTip& toolTip) {
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.pixmaps << toolTip.title << toolTip.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, StatusToolTip& toolTip) {
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.pixmaps >> toolTip.title >> toolTip.text;
    argument.endStructure();
    return argument;
}

void registerStatusNotifierTypes() {
    qDBusRegisterMetaType<IconPixmap>();
    qDBusRegisterMetaType<IconPixmaps>();
    qDBusRegisterMetaType<StatusToolTip>();
}

}  // namespace calorivo
