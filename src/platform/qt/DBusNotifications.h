#pragma once

#include "platform/GrowlApplicationBridge.h"

#include <QDBusConnection>
#include <QObject>
#include <QString>
#include <QStringList>

#include <chrono>
#include <map>
#include <optional>
#include <string>

class QDBusMessage;
class QDBusPendingCallWatcher;
class QDBusServiceWatcher;

namespace calorivo {

/// How the program presents itself to the notification server, and how long that one may take.
struct DBusNotificationsOptions {
    /// A name of the icon theme.
    QString applicationIcon = QStringLiteral("calorivo");
    /// The desktop file's name without its suffix.
    QString desktopEntry = QStringLiteral("calorivo");
    /// After this time a call counts as unanswered.
    std::chrono::milliseconds patience = std::chrono::seconds(30);
    /// While so many notifications wait for the server's answer it counts as out of reach.
    int mostPending = 8;
};

/// Notifications by the desktop's notification server, over the session bus. Nothing waits for the server: it
/// may be absent, come later, hang, or be replaced by another. Without a session bus all is silent. Main
/// thread.
class DBusNotifications final : public QObject, public GrowlApplicationBridge {
    Q_OBJECT

  public:
    /// What the server said about itself.
    struct Server {
        QString name;
        QString version;
        bool hasActions = false;
        bool hasBodyMarkup = false;
    };

    explicit DBusNotifications(const QDBusConnection& bus = QDBusConnection::sessionBus(),
                               DBusNotificationsOptions options = {}, QObject* parent = nullptr);
    ~DBusNotifications() override;

    void load(Loaded loaded) override;
    void setGrowlDelegate(GrowlApplicationBridgeDelegate* delegate) override;
    [[nodiscard]] bool respondsToNotify() const override;
    void notify(const GrowlNotification& notification) override;

    /// Shows the user what a notification looks like; does nothing without a server.
    void sendTest();
    /// A server has answered, or is started by the bus when it is called.
    [[nodiscard]] bool isAvailable() const { return server_.has_value(); }
    [[nodiscard]] const std::optional<Server>& server() const { return server_; }
    /// The notifications whose answer is awaited.
    [[nodiscard]] int pending() const { return pending_; }

  Q_SIGNALS:
    void availabilityChanged(bool isAvailable);
    /// One of our notifications was clicked; the delegate is told next. The token, if there is one, lets the
    /// program bring a window to the front.
    void clicked(const QString& activationToken);

  private Q_SLOTS:
    void actionInvoked(uint id, const QString& key);
    void activationTokenReceived(uint id, const QString& token);
    void notificationClosed(uint id, uint reason);

  private:
    /// A notification that is shown.
    struct Shown {
        std::string clickContext;
        QString activationToken;
    };

    void connectToServer();
    void ownerChanged(const QString& oldOwner, const QString& newOwner);
    void askWhetherActivatable();
    void askAboutServer();
    void serverAnswered(QDBusPendingCallWatcher& call);
    void askForCapabilities(const Server& server);
    void setServer(std::optional<Server> server);
    void tellOfServer();
    [[nodiscard]] QDBusMessage messageFor(const GrowlNotification& notification) const;
    void notifyAnswered(QDBusPendingCallWatcher& call, std::string clickContext);
    void remember(uint id, std::string clickContext);
    /// Calls without waiting; `answered` is told unless another server has taken the place meanwhile.
    template <typename Answered>
    void call(const QDBusMessage& message, Answered answered);

    QDBusConnection bus_;
    const DBusNotificationsOptions options_;
    QDBusServiceWatcher* watcher_ = nullptr;
    Loaded loaded_;
    GrowlApplicationBridgeDelegate* delegate_ = nullptr;
    QString applicationName_;
    std::optional<Server> server_;
    QStringList told_;
    bool isActivatable_ = false;
    /// Counts the servers: an answer to a question that was put to a former one says nothing.
    unsigned generation_ = 0;
    int pending_ = 0;
    std::map<uint, Shown> shown_;
};

}  // namespace calorivo
