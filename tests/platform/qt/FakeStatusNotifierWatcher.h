#pragma once

#include "platform/qt/DBusObject.h"
#include "platform/qt/StatusNotifierHost.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QString>
#include <QStringList>

#include <utility>

namespace calorivo {

/// A watcher that writes down who registers. It has its name as long as it lives.
class FakeStatusNotifierWatcher : public DBusObject {
  public:
    enum class Mood { accepting, refusing };

    explicit FakeStatusNotifierWatcher(QDBusConnection connection, bool hasHost = true)
        : DBusObject(connection, StatusNotifierHost::watcherPath()),
          connection_(std::move(connection)),
          hasHost_(hasHost) {
        publish({.name = StatusNotifierHost::watcherName(),
                 .methods = {{QStringLiteral("RegisterStatusNotifierItem"),
                              QStringLiteral("s"),
                              {},
                              [this](const QDBusMessage& call) { return registerItem(call); }}},
                 .properties = {{QStringLiteral("IsStatusNotifierHostRegistered"), QStringLiteral("b"),
                                 [this] { return QVariant(hasHost_); }}},
                 .announcements = {}});
        connection_.registerService(StatusNotifierHost::watcherName());
    }
    FakeStatusNotifierWatcher(const FakeStatusNotifierWatcher&) = delete;
    FakeStatusNotifierWatcher& operator=(const FakeStatusNotifierWatcher&) = delete;
    ~FakeStatusNotifierWatcher() override {
        connection_.unregisterService(StatusNotifierHost::watcherName());
    }

    void setMood(Mood mood) { mood_ = mood; }
    void setHasHost(bool hasHost) {
        hasHost_ = hasHost;
        announce(hasHost ? QStringLiteral("StatusNotifierHostRegistered")
                         : QStringLiteral("StatusNotifierHostUnregistered"));
    }

    /// What registered, refused ones too, in order.
    [[nodiscard]] const QStringList& registrations() const { return registrations_; }

  private:
    QDBusMessage registerItem(const QDBusMessage& call) {
        registrations_.append(call.arguments().at(0).toString());
        return mood_ == Mood::accepting
                   ? call.createReply()
                   : call.createErrorReply(QDBusError::Failed, QStringLiteral("not now"));
    }

    QDBusConnection connection_;
    bool hasHost_;
    Mood mood_ = Mood::accepting;
    QStringList registrations_;
};

}  // namespace calorivo
