#include "platform/qt/SystemSleep.h"

namespace calorivo {

SystemSleep::SystemSleep(const QDBusConnection& systemBus, QObject* parent) : QObject(parent) {
    QDBusConnection connection(systemBus);
    if (!connection.isConnected()) return;
    // By the manager's name, not by its present owner: it may come later, or be replaced.
    connection.connect(QStringLiteral("org.freedesktop.login1"), QStringLiteral("/org/freedesktop/login1"),
                       QStringLiteral("org.freedesktop.login1.Manager"), QStringLiteral("PrepareForSleep"),
                       this, SLOT(prepareForSleep(bool)));
}

void SystemSleep::prepareForSleep(bool isComing) {
    if (!isComing) Q_EMIT didWake();
}

}  // namespace calorivo
