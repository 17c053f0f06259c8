#include "platform/qt/DBusObject.h"

#include "support/QtPrivateBus.h"

#include <gtest/gtest.h>

#include <QDBusArgument>
#include <QDBusError>
#include <QDBusVariant>
#include <QVariantMap>

#include <memory>
#include <optional>

namespace calorivo {
namespace {

const QString lampName = QStringLiteral("org.example.Lamp");
const QString lampPath = QStringLiteral("/Lamp");
const QString propertiesName = QStringLiteral("org.freedesktop.DBus.Properties");

/// An object with a method, a property that is always there and one that comes and goes.
class Lamp : public DBusObject {
  public:
    explicit Lamp(const QDBusConnection& connection) : DBusObject(connection, lampPath) {
        const QString text = QStringLiteral("s");
        publish(
            {.name = lampName,
             .methods = {{QStringLiteral("Double"), QStringLiteral("i"), QStringLiteral("i"),
                          [](const QDBusMessage& call) {
                              return call.createReply(2 * call.arguments().at(0).toInt());
                          }}},
             .properties = {{QStringLiteral("Maker"), text, [] { return QVariant(QStringLiteral("Ada")); }},
                            {QStringLiteral("Shade"), text,
                             [this] { return shade ? QVariant(*shade) : QVariant(); }}},
             .announcements = {{QStringLiteral("Lit"), QStringLiteral("ua{sv}")}}});
    }

    std::optional<QString> shade;
};

class DBusObjectTest : public testing::Test {
  protected:
    QDBusMessage call(const QString& interface, const QString& method, const QVariantList& arguments = {}) {
        return ask(client_, server_.baseService(), lampPath, interface, method, arguments);
    }
    QString errorOf(const QString& interface, const QString& method, const QVariantList& arguments = {}) {
        return call(interface, method, arguments).errorName();
    }
    static QString nameOf(QDBusError::ErrorType error) { return QDBusError::errorString(error); }

    PrivateBus bus_;
    QDBusConnection server_ = bus_.connect(QStringLiteral("server"));
    QDBusConnection client_ = bus_.connect(QStringLiteral("client"));
    std::unique_ptr<Lamp> lamp_ = std::make_unique<Lamp>(server_);
};

TEST_F(DBusObjectTest, AnswersItsMethods) {
    EXPECT_EQ(call(lampName, QStringLiteral("Double"), {21}).arguments(), QVariantList{42});
}

TEST_F(DBusObjectTest, AnswersACallThatNamesNoInterface) {
    EXPECT_EQ(call({}, QStringLiteral("Double"), {4}).arguments(), QVariantList{8});
    EXPECT_EQ(call({}, QStringLiteral("Introspect")).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(errorOf({}, QStringLiteral("Halve"), {4}), nameOf(QDBusError::UnknownMethod));
}

TEST_F(DBusObjectTest, RefusesArgumentsOfOtherTypes) {
    const QVariantList wrong[] = {
        {}, {QStringLiteral("21")}, {21, 21}, {21U}, {QVariant::fromValue(QDBusVariant(21))}};
    for (const QVariantList& arguments : wrong)
        EXPECT_EQ(errorOf(lampName, QStringLiteral("Double"), arguments), nameOf(QDBusError::InvalidArgs));
    EXPECT_EQ(errorOf(propertiesName, QStringLiteral("Get"), {lampName}), nameOf(QDBusError::InvalidArgs));
}

TEST_F(DBusObjectTest, RefusesWhatItDoesNotHave) {
    EXPECT_EQ(errorOf(lampName, QStringLiteral("Halve")), nameOf(QDBusError::UnknownMethod));
    EXPECT_EQ(errorOf(QStringLiteral("org.example.Stove"), QStringLiteral("Double"), {1}),
              nameOf(QDBusError::UnknownInterface));
    EXPECT_EQ(
        errorOf(QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"), {1}),
        nameOf(QDBusError::UnknownMethod));
    EXPECT_EQ(errorOf(propertiesName, QStringLiteral("Get"), {lampName, QStringLiteral("Price")}),
              nameOf(QDBusError::UnknownProperty));
    EXPECT_EQ(errorOf(propertiesName, QStringLiteral("Get"),
                      {QStringLiteral("org.example.Stove"), QStringLiteral("Maker")}),
              nameOf(QDBusError::UnknownProperty));
    EXPECT_EQ(errorOf(propertiesName, QStringLiteral("GetAll"), {QStringLiteral("org.example.Stove")}),
              nameOf(QDBusError::UnknownInterface));
}

TEST_F(DBusObjectTest, GivesItsProperties) {
    const QDBusMessage one = call(propertiesName, QStringLiteral("Get"), {lampName, QStringLiteral("Maker")});
    EXPECT_EQ(one.arguments().at(0).value<QDBusVariant>().variant(), QVariant(QStringLiteral("Ada")));
    const QDBusMessage all = call(propertiesName, QStringLiteral("GetAll"), {lampName});
    EXPECT_EQ(qdbus_cast<QVariantMap>(all.arguments().at(0)),
              (QVariantMap{{QStringLiteral("Maker"), QStringLiteral("Ada")}}));
}

TEST_F(DBusObjectTest, HasAPropertyOnlyWhileThereIsAValue) {
    const QVariantList shadeOfLamp{lampName, QStringLiteral("Shade")};
    EXPECT_EQ(errorOf(propertiesName, QStringLiteral("Get"), shadeOfLamp),
              nameOf(QDBusError::UnknownProperty));
    lamp_->shade = QString();
    EXPECT_EQ(call(propertiesName, QStringLiteral("Get"), shadeOfLamp).type(), QDBusMessage::ReplyMessage);
    const QDBusMessage all = call(propertiesName, QStringLiteral("GetAll"), {lampName});
    EXPECT_EQ(qdbus_cast<QVariantMap>(all.arguments().at(0)),
              (QVariantMap{{QStringLiteral("Maker"), QStringLiteral("Ada")},
                           {QStringLiteral("Shade"), QString()}}));
    lamp_->shade.reset();
    EXPECT_EQ(errorOf(propertiesName, QStringLiteral("Get"), shadeOfLamp),
              nameOf(QDBusError::UnknownProperty));
}

TEST_F(DBusObjectTest, LetsNobodySetAProperty) {
    const QVariant value = QVariant::fromValue(QDBusVariant(QStringLiteral("Bob")));
    EXPECT_EQ(errorOf(propertiesName, QStringLiteral("Set"), {lampName, QStringLiteral("Maker"), value}),
              nameOf(QDBusError::PropertyReadOnly));
    EXPECT_EQ(errorOf(propertiesName, QStringLiteral("Set"), {lampName, QStringLiteral("Price"), value}),
              nameOf(QDBusError::UnknownProperty));
}

TEST_F(DBusObjectTest, DescribesItself) {
    const QDBusMessage answer =
        call(QStringLiteral("org.freedesktop.DBus.Introspectable"), QStringLiteral("Introspect"));
    const QString xml = answer.arguments().at(0).toString();
    EXPECT_TRUE(
        xml.contains(QStringLiteral("  <interface name=\"org.example.Lamp\">\n"
                                    "    <property name=\"Maker\" type=\"s\" access=\"read\"/>\n"
                                    "    <method name=\"Double\">\n"
                                    "      <arg type=\"i\" direction=\"in\"/>\n"
                                    "      <arg type=\"i\" direction=\"out\"/>\n"
                                    "    </method>\n"
                                    "    <signal name=\"Lit\">\n"
                                    "      <arg type=\"u\"/>\n"
                                    "      <arg type=\"a{sv}\"/>\n"
                                    "    </signal>\n"
                                    "  </interface>\n")))
        << xml.toStdString();
    EXPECT_EQ(xml.count(QStringLiteral("<interface name=\"org.freedesktop.DBus.Properties\">")), 1);
    EXPECT_EQ(call(QStringLiteral("org.freedesktop.DBus.Peer"), QStringLiteral("Ping")).type(),
              QDBusMessage::ReplyMessage);
}

TEST_F(DBusObjectTest, IsGoneAfterItsEnd) {
    lamp_.reset();
    EXPECT_EQ(errorOf(lampName, QStringLiteral("Double"), {1}), nameOf(QDBusError::UnknownObject));
}

TEST(DBusObject, IsJustNotSeenWithoutABus) {
    const Lamp lamp(QDBusConnection(QStringLiteral("no such connection")));
    EXPECT_EQ(lamp.path(), lampPath);
}

}  // namespace
}  // namespace calorivo
