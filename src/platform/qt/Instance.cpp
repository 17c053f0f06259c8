#include "platform/qt/Instance.h"

#include "platform/qt/InstanceAdaptor.h"
#include "platform/qt/InstanceSocket.h"

#include <QByteArray>
#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QDBusMessage>
#include <QVariantMap>

#include <utility>

namespace calorivo {

namespace {

QString applicationInterface() { return QStringLiteral("org.freedesktop.Application"); }

}  // namespace

InstanceAdaptor::InstanceAdaptor(Instance& instance) : QDBusAbstractAdaptor(&instance), instance_(instance) {}

void InstanceAdaptor::Activate(const QVariantMap& platformData) {
    QString token = platformData.value(QStringLiteral("activation-token")).toString();
    if (token.isEmpty()) token = platformData.value(QStringLiteral("desktop-startup-id")).toString();
    Q_EMIT instance_.activateRequested(token);
}

void InstanceAdaptor::Open(const QStringList& /*uris*/, const QVariantMap& platformData) {
    Activate(platformData);
}

void InstanceAdaptor::ActivateAction(const QString& /*name*/, const QVariantList& /*parameter*/,
                                     const QVariantMap& platformData) {
    Activate(platformData);
}

Instance::Instance(InstancePlaces places, QObject* parent) : QObject(parent), places_(std::move(places)) {
    new InstanceAdaptor(*this);
}

Instance::~Instance() {
    if (ownsName_) places_.bus.unregisterService(places_.name);
}

Instance::Role Instance::start(const std::function<QByteArray(const char* name)>& environment) {
    const QString startupId = QString::fromUtf8(environment("DESKTOP_STARTUP_ID"));
    const QString token = QString::fromUtf8(environment("XDG_ACTIVATION_TOKEN"));
    role_ = places_.bus.isConnected() ? startOnBus(startupId, token)
                                      : startOnSocket(token.isEmpty() ? startupId : token);
    return role_;
}

std::string Instance::problem() const {
    if (role_ != Role::unanswered) return {};
    return "Calorivo is running already, but does not answer. End it, then start it again.";
}

QString Instance::objectPath() const {
    // A path has no dash.
    return QLatin1Char('/') + QString(places_.name)
                                  .replace(QLatin1Char('.'), QLatin1Char('/'))
                                  .replace(QLatin1Char('-'), QLatin1Char('_'));
}

Instance::Role Instance::startOnBus(const QString& startupId, const QString& token) {
    // The object first: whoever finds the name may call at once.
    places_.bus.registerObject(objectPath(), this, QDBusConnection::ExportAdaptors);
    constexpr int attempts = 3;
    for (int i = 0; i < attempts; ++i) {
        ownsName_ = places_.bus.registerService(places_.name);
        if (ownsName_) return Role::first;
        const Role role = activateOnBus(startupId, token);
        // One that has just ended is no other instance: then the name is free.
        if (role != Role::first) {
            places_.bus.unregisterObject(objectPath());
            return role;
        }
    }
    return Role::first;
}

/// First when there is no other one any more.
Instance::Role Instance::activateOnBus(const QString& startupId, const QString& token) const {
    QDBusMessage call = QDBusMessage::createMethodCall(places_.name, objectPath(), applicationInterface(),
                                                       QStringLiteral("Activate"));
    QVariantMap platformData;
    if (!startupId.isEmpty()) platformData.insert(QStringLiteral("desktop-startup-id"), startupId);
    if (!token.isEmpty()) platformData.insert(QStringLiteral("activation-token"), token);
    call << platformData;
    call.setAutoStartService(false);
    const QDBusMessage answer = places_.bus.call(call, QDBus::Block, places_.patienceMilliseconds);
    if (answer.type() == QDBusMessage::ReplyMessage) return Role::second;
    const QString error = answer.errorName();
    const bool isGone = error == QDBusError::errorString(QDBusError::ServiceUnknown) ||
                        error == QStringLiteral("org.freedesktop.DBus.Error.NameHasNoOwner");
    return isGone ? Role::first : Role::unanswered;
}

Instance::Role Instance::startOnSocket(const QString& token) {
    if (places_.runtimeFolder.isEmpty()) return Role::first;
    socket_ =
        std::make_unique<InstanceSocket>(places_.runtimeFolder.toStdString(), places_.name.toStdString());
    if (socket_->isSecond())
        return socket_->call(token.toStdString(), places_.patienceMilliseconds) ? Role::second
                                                                                : Role::unanswered;
    if (socket_->descriptor() < 0) return Role::first;
    notifier_ = std::make_unique<QSocketNotifier>(socket_->descriptor(), QSocketNotifier::Read);
    connect(notifier_.get(), &QSocketNotifier::activated, this, &Instance::answerCalls);
    return Role::first;
}

void Instance::answerCalls() {
    while (const auto token = socket_->take()) Q_EMIT activateRequested(QString::fromStdString(*token));
}

}  // namespace calorivo
