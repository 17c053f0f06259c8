#include "platform/qt/PortalSettings.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

namespace calorivo {

namespace {

constexpr uint prefersDark = 1;

QString service() { return QStringLiteral("org.freedesktop.portal.Desktop"); }
QString path() { return QStringLiteral("/org/freedesktop/portal/desktop"); }
QString interface() { return QStringLiteral("org.freedesktop.portal.Settings"); }
QString appearance() { return QStringLiteral("org.freedesktop.appearance"); }
QString colorScheme() { return QStringLiteral("color-scheme"); }

/// The value itself: some answer with a variant in a variant.
QVariant innermost(QVariant value) {
    while (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
    return value;
}

}  // namespace

PortalSettings::PortalSettings(const QDBusConnection& bus, QObject* parent) : QObject(parent) {
    QDBusConnection connection(bus);
    if (!connection.isConnected()) return;
    connection.connect(service(), path(), interface(), QStringLiteral("SettingChanged"), this,
                       SLOT(settingChanged(QString, QString, QDBusVariant)));
    QDBusMessage read =
        QDBusMessage::createMethodCall(service(), path(), interface(), QStringLiteral("Read"));
    read << appearance() << colorScheme();
    auto* const watcher = new QDBusPendingCallWatcher(connection.asyncCall(read), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this, [this, watcher] {
        const QDBusPendingReply<QDBusVariant> reply = *watcher;
        if (reply.isValid()) take(reply.value().variant());
        watcher->deleteLater();
    });
}

void PortalSettings::settingChanged(const QString& group, const QString& key, const QDBusVariant& value) {
    if (group == appearance() && key == colorScheme()) take(value.variant());
}

void PortalSettings::take(const QVariant& value) {
    const bool isDark = innermost(value).toUInt() == prefersDark;
    if (isDark == isDark_) return;
    isDark_ = isDark;
    Q_EMIT isDarkChanged(isDark);
}

}  // namespace calorivo
