#pragma once

#include <QDBusArgument>
#include <QDBusVariant>
#include <QList>
#include <QMetaType>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

namespace calorivo {

/// An entry with the entries below it, each of them a variant of this same type.
struct MenuLayout {
    int id = 0;
    QVariantMap properties;
    QVariantList children;
};

struct MenuEntryProperties {
    int id = 0;
    QVariantMap properties;

    friend bool operator==(const MenuEntryProperties&, const MenuEntryProperties&) = default;
};

/// Properties that an entry has no more.
struct MenuEntryKeys {
    int id = 0;
    QStringList names;

    friend bool operator==(const MenuEntryKeys&, const MenuEntryKeys&) = default;
};

struct MenuEvent {
    int id = 0;
    QString name;
    QDBusVariant data;
    uint timestamp = 0;
};

/// Chords of a shortcut, each its modifiers and its key: [["Control", "q"]].
using MenuShortcut = QList<QStringList>;

QDBusArgument& operator<<(QDBusArgument& argument, const MenuLayout& layout);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuLayout& layout);
QDBusArgument& operator<<(QDBusArgument& argument, const MenuEntryProperties& entry);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuEntryProperties& entry);
QDBusArgument& operator<<(QDBusArgument& argument, const MenuEntryKeys& entry);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuEntryKeys& entry);
QDBusArgument& operator<<(QDBusArgument& argument, const MenuEvent& event);
const QDBusArgument& operator>>(const QDBusArgument& argument, MenuEvent& event);

/// Makes the types known to QtDBus; any number of times.
void registerDBusMenuTypes();

}  // namespace calorivo

Q_DECLARE_METATYPE(calorivo::MenuLayout)
Q_DECLARE_METATYPE(calorivo::MenuEntryProperties)
Q_DECLARE_METATYPE(calorivo::MenuEntryKeys)
Q_DECLARE_METATYPE(calorivo::MenuEvent)
