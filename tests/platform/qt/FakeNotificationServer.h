#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariantMap>

#include <utility>

namespace calorivo::test {

/// What a server was asked to show.
struct ShownNotification {
    QString applicationName;
    uint replaces = 0;
    QString icon;
    QString title;
    QString body;
    QStringList actions;
    QVariantMap hints;
    int timeout = 0;
};

/// A notification server on a connection of a test, from its making to its end. It counts from 1.
class FakeNotificationServer final : public QDBusVirtualObject {
  public:
    explicit FakeNotificationServer(const QDBusConnection& bus, QStringList capabilities = {})
        : bus_(bus), capabilities_(std::move(capabilities)) {
        bus_.registerVirtualObject(path(), this);
        bus_.registerService(service());
    }
    ~FakeNotificationServer() override {
        bus_.unregisterService(service());
        bus_.unregisterObject(path());
    }

    QString name = QStringLiteral("Fake Server");
    /// While it hangs it takes calls and answers none.
    bool hangs = false;
    QList<ShownNotification> shown;
    /// The names of all calls, answered or not.
    QStringList calls;

    /// Answers what came while it hung.
    void wakeUp() {
        hangs = false;
        for (const QDBusMessage& call : std::exchange(waiting_, {})) answer(call);
    }
    void invoke(uint id, const QString& action) { emitSignal(QStringLiteral("ActionInvoked"), {id, action}); }
    void giveToken(uint id, const QString& token) {
        emitSignal(QStringLiteral("ActivationToken"), {id, token});
    }
    void close(uint id) { emitSignal(QStringLiteral("NotificationClosed"), {id, uint{2}}); }

    [[nodiscard]] QString introspect(const QString& /*path*/) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& /*connection*/) override {
        calls.append(message.member());
        message.setDelayedReply(true);
        if (hangs)
            waiting_.append(message);
        else
            answer(message);
        return true;
    }

  private:
    static QString service() { return QStringLiteral("org.freedesktop.Notifications"); }
    static QString path() { return QStringLiteral("/org/freedesktop/Notifications"); }

    void answer(const QDBusMessage& call) {
        const QString method = call.member();
        if (method == QStringLiteral("GetServerInformation"))
            bus_.send(call.createReply(
                {name, QStringLiteral("Maker"), QStringLiteral("1.5"), QStringLiteral("1.2")}));
        else if (method == QStringLiteral("GetCapabilities"))
            bus_.send(call.createReply(QVariant(capabilities_)));
        else if (method == QStringLiteral("Notify"))
            bus_.send(call.createReply(show(call.arguments())));
    }
    uint show(const QVariantList& arguments) {
        shown.append(ShownNotification{.applicationName = arguments.at(0).toString(),
                                       .replaces = arguments.at(1).toUInt(),
                                       .icon = arguments.at(2).toString(),
                                       .title = arguments.at(3).toString(),
                                       .body = arguments.at(4).toString(),
                                       .actions = arguments.at(5).toStringList(),
                                       .hints = qdbus_cast<QVariantMap>(arguments.at(6)),
                                       .timeout = arguments.at(7).toInt()});
        return static_cast<uint>(shown.size());
    }
    void emitSignal(const QString& signal, const QVariantList& arguments) {
        QDBusMessage message = QDBusMessage::createSignal(path(), service(), signal);
        message.setArguments(arguments);
        bus_.send(message);
    }

    QDBusConnection bus_;
    const QStringList capabilities_;
    QList<QDBusMessage> waiting_;
};

}  // namespace calorivo::test
