#include "platform/qt/DBusMenuTypes.h"

#include <QDBusMetaType>

namespace calorivo {

QDBusArgument& operator<<(QDBusArgument& argument, const MenuLayout& layout) {
    argument.beginStructure();
    argument << layout.id << layout.properties << layout.children;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MenuLayout& layout) {
    argument.beginStructure();
    argument >> layout.id >> layout.properties >> layout.children;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const MenuEntryProperties& entry) {
    argument.beginStructure();
    argument << entry.id << entry.properties;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MenuEntryProperties& entry) {
    argument.beginStructure();
    argument >> entry.id >> entry.properties;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const MenuEntryKeys& entry) {
    argument.beginStructure();
    argument << entry.id << entry.names;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MenuEntryKeys& entry) {
    argument.beginStructure();
    argument >> entry.id >> entry.names;
    argument.endStructure();
    return argument;
}

QDBusArgument& operator<<(QDBusArgument& argument, const MenuEvent& event) {
    argument.beginStructure();
    argument << event.id << event.name << event.data << event.timestamp;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, MenuEvent& event) {
    argument.beginStructure();
    argument >> event.id >> event.name >> event.data >> event.timestamp;
    argument.endStructure();
    return argument;
}

void registerDBusMenuTypes() {
    qDBusRegisterMetaType<MenuLayout>();
    qDBusRegisterMetaType<MenuEntryProperties>();
    qDBusRegisterMetaType<QList<MenuEntryProperties>>();
    qDBusRegisterMetaType<MenuEntryKeys>();
    qDBusRegisterMetaType<QList<MenuEntryKeys>>();
    qDBusRegisterMetaType<MenuEvent>();
    qDBusRegisterMetaType<QList<MenuEvent>>();
    qDBusRegisterMetaType<MenuShortcut>();
    qDBusRegisterMetaType<QList<int>>();
}

}  // namespace calorivo
