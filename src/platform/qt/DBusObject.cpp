#include "platform/qt/DBusObject.h"

#include <QDBusError>
#include <QDBusVariant>
#include <QVariantMap>

#include <algorithm>
#include <utility>

namespace calorivo {

namespace {

const QString introspectableName = QStringLiteral("org.freedesktop.DBus.Introspectable");

/// The complete types that a signature is made of: "ia{sv}as" gives "i", "a{sv}", "as".
std::vector<QString> completeTypes(const QString& signature) {
    std::vector<QString> types;
    QString type;
    int depth = 0;
    for (const QChar letter : signature) {
        type += letter;
        if (letter == QLatin1Char('(') || letter == QLatin1Char('{')) ++depth;
        if (letter == QLatin1Char(')') || letter == QLatin1Char('}')) --depth;
        if (depth > 0 || letter == QLatin1Char('a')) continue;
        types.push_back(std::exchange(type, {}));
    }
    return types;
}

QString argumentElements(const QString& signature, const QString& direction) {
    QString xml;
    for (const QString& type : completeTypes(signature))
        xml += QStringLiteral("      <arg type=\"%1\"%2/>\n").arg(type, direction);
    return xml;
}

}  // namespace

DBusObject::DBusObject(QDBusConnection connection, QString path)
    : connection_(std::move(connection)), path_(std::move(path)), properties_(propertiesInterface()) {}

DBusObject::~DBusObject() {
    if (connection_.isConnected()) connection_.unregisterObject(path_);
}

void DBusObject::publish(DBusInterface interface) {
    own_ = std::move(interface);
    if (connection_.isConnected()) connection_.registerVirtualObject(path_, this);
}

void DBusObject::announce(const QString& signal, const QVariantList& arguments) const {
    if (!connection_.isConnected()) return;
    QDBusMessage message = QDBusMessage::createSignal(path_, own_.name, signal);
    message.setArguments(arguments);
    connection_.send(message);
}

bool DBusObject::handleMessage(const QDBusMessage& message, const QDBusConnection& connection) {
    if (message.type() != QDBusMessage::MethodCallMessage) return false;
    const bool isForQt = message.interface().isEmpty() || message.interface() == introspectableName;
    if (isForQt && message.member() == QLatin1String("Introspect") && message.signature().isEmpty())
        return false;
    const QDBusMessage reply = answer(message);
    if (message.isReplyRequired()) connection.send(reply);
    return true;
}

QDBusMessage DBusObject::answer(const QDBusMessage& call) const {
    bool hasInterface = call.interface().isEmpty() || call.interface() == introspectableName;
    for (const DBusInterface* const interface : {&own_, &properties_}) {
        if (!call.interface().isEmpty() && call.interface() != interface->name) continue;
        hasInterface = true;
        const auto method = std::ranges::find(interface->methods, call.member(), &DBusMethod::name);
        if (method == interface->methods.end()) continue;
        if (call.signature() == method->takes) return method->answer(call);
        return call.createErrorReply(
            QDBusError::InvalidArgs,
            QStringLiteral("%1 takes '%2', not '%3'").arg(method->name, method->takes, call.signature()));
    }
    return hasInterface ? call.createErrorReply(QDBusError::UnknownMethod,
                                                QStringLiteral("No method '%1'").arg(call.member()))
                        : call.createErrorReply(QDBusError::UnknownInterface,
                                                QStringLiteral("No interface '%1'").arg(call.interface()));
}

DBusInterface DBusObject::propertiesInterface() const {
    const auto by = [this](QDBusMessage (DBusObject::*handler)(const QDBusMessage&) const) {
        return [this, handler](const QDBusMessage& call) { return (this->*handler)(call); };
    };
    return {.name = QStringLiteral("org.freedesktop.DBus.Properties"),
            .methods = {{QStringLiteral("Get"), QStringLiteral("ss"), QStringLiteral("v"),
                         by(&DBusObject::getProperty)},
                        {QStringLiteral("GetAll"), QStringLiteral("s"), QStringLiteral("a{sv}"),
                         by(&DBusObject::getAllProperties)},
                        {QStringLiteral("Set"), QStringLiteral("ssv"), {}, by(&DBusObject::setProperty)}},
            .properties = {},
            .announcements = {}};
}

bool DBusObject::isOwnInterface(const QString& name) const { return name.isEmpty() || name == own_.name; }

const DBusProperty* DBusObject::presentProperty(const QString& name) const {
    const auto property = std::ranges::find(own_.properties, name, &DBusProperty::name);
    return property != own_.properties.end() && property->value().isValid() ? &*property : nullptr;
}

QDBusMessage DBusObject::getProperty(const QDBusMessage& call) const {
    const QString interface = call.arguments().at(0).toString();
    const QString name = call.arguments().at(1).toString();
    const DBusProperty* const property = isOwnInterface(interface) ? presentProperty(name) : nullptr;
    if (property == nullptr)
        return call.createErrorReply(QDBusError::UnknownProperty,
                                     QStringLiteral("No property '%1' in '%2'").arg(name, interface));
    return call.createReply(QVariant::fromValue(QDBusVariant(property->value())));
}

QDBusMessage DBusObject::getAllProperties(const QDBusMessage& call) const {
    const QString interface = call.arguments().at(0).toString();
    QVariantMap values;
    if (isOwnInterface(interface)) {
        for (const DBusProperty& property : own_.properties)
            if (const QVariant value = property.value(); value.isValid()) values.insert(property.name, value);
    } else if (interface != properties_.name && interface != introspectableName) {
        return call.createErrorReply(QDBusError::UnknownInterface,
                                     QStringLiteral("No interface '%1'").arg(interface));
    }
    return call.createReply(QVariant(values));
}

QDBusMessage DBusObject::setProperty(const QDBusMessage& call) const {
    const QString interface = call.arguments().at(0).toString();
    const QString name = call.arguments().at(1).toString();
    if (!isOwnInterface(interface) || presentProperty(name) == nullptr)
        return call.createErrorReply(QDBusError::UnknownProperty,
                                     QStringLiteral("No property '%1' in '%2'").arg(name, interface));
    return call.createErrorReply(QDBusError::PropertyReadOnly,
                                 QStringLiteral("Property '%1' is for reading only").arg(name));
}

QString DBusObject::introspect(const QString& /*path*/) const {
    const auto element = [](const QString& kind, const QString& name, const QString& contents) {
        return QStringLiteral("    <%1 name=\"%2\">\n%3    </%1>\n").arg(kind, name, contents);
    };
    // The standard interfaces are added by QtDBus.
    QString xml = QStringLiteral("  <interface name=\"%1\">\n").arg(own_.name);
    for (const DBusProperty& property : own_.properties) {
        if (!property.value().isValid()) continue;
        xml += QStringLiteral("    <property name=\"%1\" type=\"%2\" access=\"read\"/>\n")
                   .arg(property.name, property.type);
    }
    for (const DBusMethod& method : own_.methods)
        xml += element(QStringLiteral("method"), method.name,
                       argumentElements(method.takes, QStringLiteral(" direction=\"in\"")) +
                           argumentElements(method.gives, QStringLiteral(" direction=\"out\"")));
    for (const DBusSignal& announcement : own_.announcements)
        xml +=
            element(QStringLiteral("signal"), announcement.name, argumentElements(announcement.carries, {}));
    return xml + QStringLiteral("  </interface>\n");
}

}  // namespace calorivo
