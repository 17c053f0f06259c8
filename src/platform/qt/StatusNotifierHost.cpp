#include "platform/qt/StatusNotifierHost.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QDBusVariant>

#include <array>
#include <string_view>

namespace calorivo {

namespace {

struct KnownHost {
    std::string_view name;
    HostTraits traits;

    [[nodiscard]] QString busName() const {
        return QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()));
    }
};

/// Names that only these panels' processes own; the watcher itself has the same name everywhere.
constexpr std::array knownHosts{
    KnownHost{"org.ayatana.indicator.application", {LabelSupport::besideIcon, false}},
    KnownHost{"com.canonical.indicator.application", {LabelSupport::besideIcon, false}},
    KnownHost{"org.gnome.Shell", {LabelSupport::besideIcon, true}},
    KnownHost{"org.mate.panel.applet.NotificationAreaAppletFactory", {LabelSupport::insteadOfIcon, true}},
};

/// The process that a name's owner is; none when it has no owner, 0 when the bus cannot tell.
std::optional<uint> processOf(const QDBusPendingReply<uint>& reply) {
    if (!reply.isError()) return reply.value();
    if (reply.error().name() == QLatin1String("org.freedesktop.DBus.Error.UnixProcessIdUnknown")) return 0;
    return std::nullopt;
}

}  // namespace

HostTraits hostTraitsOf(const OwnersOfNames& owners) {
    const auto watcher = owners.constFind(StatusNotifierHost::watcherName());
    if (watcher == owners.constEnd() || *watcher == 0) return {};
    for (const KnownHost& host : knownHosts) {
        const auto owner = owners.constFind(host.busName());
        if (owner != owners.constEnd() && *owner == *watcher) return host.traits;
    }
    return {};
}

StatusNotifierHost::StatusNotifierHost(const QDBusConnection& bus) : bus_(bus) {
    if (!bus_.isConnected()) return;
    auto* const names = new QDBusServiceWatcher(this);
    names->setConnection(bus_);
    names->setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    connect(names, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString& name, const QString&, const QString& newOwner) {
                ownerChanged(name, newOwner);
            });
    for (const char* const signal : {"StatusNotifierHostRegistered", "StatusNotifierHostUnregistered"})
        bus_.connect(watcherName(), watcherPath(), watcherName(), QString::fromLatin1(signal), this,
                     SLOT(readHostRegistered()));
    for (const KnownHost& host : knownHosts) names->addWatchedService(host.busName());
    names->addWatchedService(watcherName());
    // The watcher comes last: when its owner is known, the panels' names are.
    for (const KnownHost& host : knownHosts) askForOwner(host.busName());
    askForOwner(watcherName());
}

bool StatusNotifierHost::hasWatcher() const { return owners_.contains(watcherName()); }

void StatusNotifierHost::ownerChanged(const QString& name, const QString& newOwner) {
    ++changes_[name];
    if (newOwner.isEmpty())
        ownerFound(name, std::nullopt);
    else
        askForOwner(name);
}

void StatusNotifierHost::askForOwner(const QString& name) {
    QDBusMessage call = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
        QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetConnectionUnixProcessID"));
    call << name;
    auto* const pending = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    const int change = changes_.value(name);
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending, name, change] {
        pending->deleteLater();
        if (change != changes_.value(name)) return;
        ownerFound(name, processOf(*pending));
    });
}

void StatusNotifierHost::ownerFound(const QString& name, std::optional<uint> process) {
    if (process)
        owners_.insert(name, *process);
    else
        owners_.remove(name);
    updateTraits();
    if (name != watcherName()) return;
    if (!process) {
        setHasHost(false);
        return;
    }
    Q_EMIT watcherAppeared();
    readHostRegistered();
}

void StatusNotifierHost::updateTraits() {
    const HostTraits traits = hostTraitsOf(owners_);
    if (traits == traits_) return;
    traits_ = traits;
    Q_EMIT traitsChanged();
}

void StatusNotifierHost::readHostRegistered() {
    QDBusMessage call = QDBusMessage::createMethodCall(watcherName(), watcherPath(),
                                                       QStringLiteral("org.freedesktop.DBus.Properties"),
                                                       QStringLiteral("Get"));
    call << watcherName() << QStringLiteral("IsStatusNotifierHostRegistered");
    call.setAutoStartService(false);
    auto* const pending = new QDBusPendingCallWatcher(bus_.asyncCall(call), this);
    const int change = changes_.value(watcherName());
    connect(pending, &QDBusPendingCallWatcher::finished, this, [this, pending, change] {
        pending->deleteLater();
        if (change != changes_.value(watcherName()) || !hasWatcher()) return;
        // A watcher that does not tell is its own panel.
        const QDBusPendingReply<QDBusVariant> reply = *pending;
        setHasHost(reply.isError() || reply.value().variant().toBool());
    });
}

void StatusNotifierHost::setHasHost(bool hasHost) {
    if (hasHost == hasHost_) return;
    hasHost_ = hasHost;
    Q_EMIT hostChanged(hasHost);
}

}  // namespace calorivo
