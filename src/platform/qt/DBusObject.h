#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QString>
#include <QVariant>
#include <QVariantList>

#include <functional>
#include <vector>

namespace calorivo {

struct DBusMethod {
    QString name;
    /// Signatures of what it takes and gives; a call with other arguments is refused before `answer` sees it.
    QString takes;
    QString gives;
    /// The reply, or an error.
    std::function<QDBusMessage(const QDBusMessage& call)> answer;
};

struct DBusProperty {
    QString name;
    QString type;
    /// Invalid while the object does not have the property.
    std::function<QVariant()> value;
};

struct DBusSignal {
    QString name;
    QString carries;
};

struct DBusInterface {
    QString name;
    std::vector<DBusMethod> methods;
    std::vector<DBusProperty> properties;
    std::vector<DBusSignal> announcements;
};

/// One object with one interface on the message bus, described by tables. A property may come and go while
/// the object is there, which the adaptors of QtDBus do not allow. Properties are for reading only. Main
/// thread.
class DBusObject : public QDBusVirtualObject {
  public:
    /// Without a bus the object is just not seen.
    DBusObject(QDBusConnection connection, QString path);
    DBusObject(const DBusObject&) = delete;
    DBusObject& operator=(const DBusObject&) = delete;
    ~DBusObject() override;

    [[nodiscard]] QString path() const { return path_; }

    bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) final;
    [[nodiscard]] QString introspect(const QString& path) const final;

  protected:
    /// Once, at the end of the constructor of what derives from this.
    void publish(DBusInterface interface);
    void announce(const QString& signal, const QVariantList& arguments = {}) const;

  private:
    [[nodiscard]] DBusInterface propertiesInterface() const;
    [[nodiscard]] QDBusMessage answer(const QDBusMessage& call) const;
    [[nodiscard]] QDBusMessage getProperty(const QDBusMessage& call) const;
    [[nodiscard]] QDBusMessage getAllProperties(const QDBusMessage& call) const;
    [[nodiscard]] QDBusMessage setProperty(const QDBusMessage& call) const;
    [[nodiscard]] bool isOwnInterface(const QString& name) const;
    [[nodiscard]] const DBusProperty* presentProperty(const QString& name) const;

    QDBusConnection connection_;
    QString path_;
    DBusInterface own_;
    DBusInterface properties_;
};

}  // namespace calorivo
