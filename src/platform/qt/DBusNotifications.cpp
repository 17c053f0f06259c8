#include "platform/qt/DBusNotifications.h"

#include <QDBusError>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusServiceWatcher>
#include <QStringList>
#include <QTimer>
#include <QVariantMap>

#include <utility>

namespace calorivo {

namespace {

// The notification server's place on the bus.
QString service() { return QStringLiteral("org.freedesktop.Notifications"); }
QString path() { return QStringLiteral("/org/freedesktop/Notifications"); }
QDBusMessage methodCall(const QString& method) {
    return QDBusMessage::createMethodCall(service(), path(), service(), method);
}

QString text(const std::string& utf8) { return QString::fromStdString(utf8); }

QString withoutMarkup(QString plain) {
    return plain.replace(u'&', QStringLiteral("&amp;"))
        .replace(u'<', QStringLiteral("&lt;"))
        .replace(u'>', QStringLiteral("&gt;"));
}

/// There is nobody to call, which is told at once. A server that only takes its time is still there.
bool isNobodyThere(const QDBusError& error) {
    switch (error.type()) {
        case QDBusError::NoReply:
        case QDBusError::Timeout:
        case QDBusError::TimedOut:
            return false;
        default:
            return true;
    }
}

}  // namespace

DBusNotifications::DBusNotifications(const QDBusConnection& bus, DBusNotificationsOptions options,
                                     QObject* parent)
    : QObject(parent), bus_(bus), options_(std::move(options)) {}

DBusNotifications::~DBusNotifications() = default;

void DBusNotifications::load(Loaded loaded) {
    loaded_ = std::move(loaded);
    if (!loaded_) return;
    told_.clear();
    tellOfServer();
    if (watcher_ == nullptr && bus_.isConnected()) connectToServer();
}

void DBusNotifications::connectToServer() {
    watcher_ = new QDBusServiceWatcher(service(), bus_, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(watcher_, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString&, const QString& oldOwner, const QString& newOwner) {
                ownerChanged(oldOwner, newOwner);
            });
    bus_.connect(service(), path(), service(), QStringLiteral("ActionInvoked"), this,
                 SLOT(actionInvoked(uint, QString)));
    bus_.connect(service(), path(), service(), QStringLiteral("ActivationToken"), this,
                 SLOT(activationTokenReceived(uint, QString)));
    bus_.connect(service(), path(), service(), QStringLiteral("NotificationClosed"), this,
                 SLOT(notificationClosed(uint, uint)));
    askWhetherActivatable();
    askAboutServer();
}

template <typename Answered>
void DBusNotifications::call(const QDBusMessage& message, Answered answered) {
    auto* const watcher = new QDBusPendingCallWatcher(
        bus_.asyncCall(message, static_cast<int>(options_.patience.count())), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [this, answered = std::move(answered), generation = generation_](QDBusPendingCallWatcher* call) {
                call->deleteLater();
                if (generation == generation_) answered(*call);
            });
}

void DBusNotifications::ownerChanged(const QString& oldOwner, const QString& newOwner) {
    // A question put while there was no server is answered by the one that the bus started for it.
    if (!oldOwner.isEmpty()) {
        ++generation_;
        pending_ = 0;
        // Another server counts from the beginning: an old number would be one of its own.
        shown_.clear();
    }
    askWhetherActivatable();
    if (!newOwner.isEmpty())
        askAboutServer();
    else if (!isActivatable_)
        setServer(std::nullopt);
    // Else it may well have left because it had nothing to do: the next call starts it again.
}

void DBusNotifications::askWhetherActivatable() {
    const QString bus = QStringLiteral("org.freedesktop.DBus");
    call(QDBusMessage::createMethodCall(bus, QStringLiteral("/org/freedesktop/DBus"), bus,
                                        QStringLiteral("ListActivatableNames")),
         [this](QDBusPendingCallWatcher& answer) {
             const QDBusPendingReply<QStringList> names = answer;
             isActivatable_ = !names.isError() && names.value().contains(service());
         });
}

void DBusNotifications::askAboutServer() {
    call(methodCall(QStringLiteral("GetServerInformation")),
         [this](QDBusPendingCallWatcher& answer) { serverAnswered(answer); });
}

void DBusNotifications::serverAnswered(QDBusPendingCallWatcher& answer) {
    const QDBusPendingReply<QString, QString, QString, QString> information = answer;
    if (!information.isError()) {
        askForCapabilities({.name = information.argumentAt<0>(), .version = information.argumentAt<2>()});
        return;
    }
    if (isNobodyThere(information.error())) return;
    // It hangs: it is asked again from time to time, once at a time.
    QTimer::singleShot(options_.patience, this, [this, generation = generation_] {
        if (generation == generation_ && !server_) askAboutServer();
    });
}

void DBusNotifications::askForCapabilities(const Server& server) {
    call(methodCall(QStringLiteral("GetCapabilities")), [this, server](QDBusPendingCallWatcher& answer) {
        const QDBusPendingReply<QStringList> capabilities = answer;
        // Without an answer it is taken for one that can show plain texts.
        const QStringList all = capabilities.isError() ? QStringList() : capabilities.value();
        setServer(Server{.name = server.name,
                         .version = server.version,
                         .hasActions = all.contains(QStringLiteral("actions")),
                         .hasBodyMarkup = all.contains(QStringLiteral("body-markup"))});
    });
}

void DBusNotifications::setServer(std::optional<Server> server) {
    const bool wasAvailable = isAvailable();
    server_ = std::move(server);
    tellOfServer();
    if (isAvailable() != wasAvailable) Q_EMIT availabilityChanged(isAvailable());
}

void DBusNotifications::tellOfServer() {
    if (!server_ || !loaded_) return;
    const QStringList nameAndVersion{server_->name, server_->version};
    // One that was only started again is no news.
    if (std::exchange(told_, nameAndVersion) == nameAndVersion) return;
    loaded_(server_->name.toStdString(), server_->version.toStdString());
}

void DBusNotifications::setGrowlDelegate(GrowlApplicationBridgeDelegate* delegate) {
    delegate_ = delegate;
    if (delegate_ == nullptr) return;
    const GrowlDictionary registration = delegate_->registrationDictionaryForGrowl();
    const auto name = registration.find("ApplicationName");
    if (name != registration.end()) applicationName_ = text(std::get<std::string>(name->second));
}

bool DBusNotifications::respondsToNotify() const {
    return isAvailable() && bus_.isConnected() && pending_ < options_.mostPending;
}

void DBusNotifications::notify(const GrowlNotification& notification) {
    if (!respondsToNotify()) return;
    ++pending_;
    call(messageFor(notification), [this, context = notification.clickContext](
                                       QDBusPendingCallWatcher& answer) { notifyAnswered(answer, context); });
}

QDBusMessage DBusNotifications::messageFor(const GrowlNotification& notification) const {
    constexpr uchar normal = 1;
    constexpr uchar critical = 2;  // what servers never take away by themselves
    constexpr int expiresAsTheServerLikes = -1;
    constexpr int expiresNever = 0;
    QStringList actions;
    // A click anywhere on the notification; some servers show it as a button, with this title.
    if (server_->hasActions) actions = {QStringLiteral("default"), tr("Open")};
    const QVariantMap hints{
        {QStringLiteral("urgency"), QVariant::fromValue(notification.isSticky ? critical : normal)},
        {QStringLiteral("desktop-entry"), options_.desktopEntry},
        {QStringLiteral("category"), QStringLiteral("device")},
        {QStringLiteral("x-calorivo-kind"), text(notification.notificationName)}};
    const QString description = text(notification.description);
    QDBusMessage message = methodCall(QStringLiteral("Notify"));
    message.setArguments({applicationName_, uint{0}, options_.applicationIcon, text(notification.title),
                          server_->hasBodyMarkup ? withoutMarkup(description) : description, actions, hints,
                          notification.isSticky ? expiresNever : expiresAsTheServerLikes});
    return message;
}

void DBusNotifications::notifyAnswered(QDBusPendingCallWatcher& answer, std::string clickContext) {
    --pending_;
    const QDBusPendingReply<uint> id = answer;
    if (!id.isError())
        remember(id.value(), std::move(clickContext));
    else if (isNobodyThere(id.error()))
        setServer(std::nullopt);
}

void DBusNotifications::remember(uint id, std::string clickContext) {
    // Some servers never tell that one was closed.
    constexpr std::size_t mostShown = 256;
    if (shown_.size() >= mostShown) shown_.erase(shown_.begin());
    shown_.insert_or_assign(id, Shown{std::move(clickContext), {}});
}

void DBusNotifications::sendTest() {
    notify({.title = tr("Notifications work").toStdString(),
            .description = tr("This is how a temperature above its limit is announced.").toStdString(),
            .notificationName = "Test",
            .clickContext = "sendTest"});
}

void DBusNotifications::actionInvoked(uint id, const QString& key) {
    const auto found = shown_.find(id);
    if (found == shown_.end() || key != QStringLiteral("default")) return;
    const Shown shown = found->second;
    Q_EMIT clicked(shown.activationToken);
    if (delegate_ != nullptr) delegate_->growlNotificationWasClicked(shown.clickContext);
}

void DBusNotifications::activationTokenReceived(uint id, const QString& token) {
    const auto found = shown_.find(id);
    if (found != shown_.end()) found->second.activationToken = token;
}

void DBusNotifications::notificationClosed(uint id, uint /*reason*/) { shown_.erase(id); }

}  // namespace calorivo
