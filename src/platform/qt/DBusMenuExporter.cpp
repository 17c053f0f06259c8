#include "platform/qt/DBusMenuExporter.h"

#include "platform/qt/DBusMenuProperties.h"

#include <QAction>
#include <QDBusArgument>
#include <QDBusError>
#include <QGuiApplication>
#include <QMenu>
#include <QMetaObject>

#include <utility>

namespace calorivo {

namespace {

QDBusMessage noSuchEntry(const QDBusMessage& call, int id) {
    return call.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("No menu entry %1").arg(id));
}

}  // namespace

DBusMenuExporter::DBusMenuExporter(const QDBusConnection& connection)
    : DBusObject(connection, QStringLiteral("/MenuBar")) {
    registerDBusMenuTypes();
    publish(describe());
}

DBusMenuExporter::~DBusMenuExporter() = default;

void DBusMenuExporter::setMenu(QMenu* menu) {
    for (QMenu* const old : tree_.menus()) old->removeEventFilter(this);
    menu_ = menu;
    updateSoon();
    // Watched from now on, and not only after the next pass.
    if (menu != nullptr) menu->installEventFilter(this);
    if (menu != nullptr) connect(menu, &QObject::destroyed, this, &DBusMenuExporter::updateSoon);
}

bool DBusMenuExporter::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
        case QEvent::ActionAdded:
        case QEvent::ActionRemoved:
        case QEvent::ActionChanged:
            updateSoon();
            break;
        default:
            break;
    }
    return DBusObject::eventFilter(watched, event);
}

void DBusMenuExporter::updateSoon() {
    if (std::exchange(isDirty_, true)) return;
    QMetaObject::invokeMethod(this, &DBusMenuExporter::update, Qt::QueuedConnection);
}

void DBusMenuExporter::update() {
    if (!std::exchange(isDirty_, false)) return;
    const DBusMenuChanges changes = tree_.read(menu_);
    watchMenus();
    if (!changes.updated.isEmpty() || !changes.removed.isEmpty())
        announce(QStringLiteral("ItemsPropertiesUpdated"),
                 {QVariant::fromValue(changes.updated), QVariant::fromValue(changes.removed)});
    if (changes.layoutParent) announce(QStringLiteral("LayoutUpdated"), {++revision_, *changes.layoutParent});
}

void DBusMenuExporter::watchMenus() {
    for (QMenu* const menu : tree_.menus())
        menu->installEventFilter(this);  // no second time for the same one
}

DBusInterface DBusMenuExporter::describe() {
    const QString text = QStringLiteral("s");
    return {.name = QStringLiteral("com.canonical.dbusmenu"),
            .methods = describeMethods(),
            .properties =
                {
                    {QStringLiteral("Version"), QStringLiteral("u"), [] { return QVariant(3U); }},
                    {QStringLiteral("Status"), text, [] { return QVariant(QStringLiteral("normal")); }},
                    {QStringLiteral("TextDirection"), text,
                     [] {
                         const bool isLeftToRight = QGuiApplication::layoutDirection() == Qt::LeftToRight;
                         return QVariant(isLeftToRight ? QStringLiteral("ltr") : QStringLiteral("rtl"));
                     }},
                    {QStringLiteral("IconThemePath"), QStringLiteral("as"),
                     [] { return QVariant(QStringList()); }},
                },
            .announcements = {{QStringLiteral("ItemsPropertiesUpdated"), QStringLiteral("a(ia{sv})a(ias)")},
                              {QStringLiteral("LayoutUpdated"), QStringLiteral("ui")},
                              {QStringLiteral("ItemActivationRequested"), QStringLiteral("iu")}}};
}

std::vector<DBusMethod> DBusMenuExporter::describeMethods() {
    const auto by = [this](QDBusMessage (DBusMenuExporter::*handler)(const QDBusMessage&)) {
        return [this, handler](const QDBusMessage& call) {
            update();
            return (this->*handler)(call);
        };
    };
    const auto method = [](const char* name, const char* takes, const char* gives, auto answer) {
        return DBusMethod{QString::fromLatin1(name), QString::fromLatin1(takes), QString::fromLatin1(gives),
                          answer};
    };
    return {
        method("GetLayout", "iias", "u(ia{sv}av)", by(&DBusMenuExporter::getLayout)),
        method("GetGroupProperties", "aias", "a(ia{sv})", by(&DBusMenuExporter::getGroupProperties)),
        method("GetProperty", "is", "v", by(&DBusMenuExporter::getProperty)),
        method("Event", "isvu", "", by(&DBusMenuExporter::takeEvent)),
        method("EventGroup", "a(isvu)", "ai", by(&DBusMenuExporter::takeEvents)),
        method("AboutToShow", "i", "b", by(&DBusMenuExporter::aboutToShow)),
        method("AboutToShowGroup", "ai", "aiai", by(&DBusMenuExporter::aboutToShowGroup)),
    };
}

QDBusMessage DBusMenuExporter::getLayout(const QDBusMessage& call) {
    const QVariantList arguments = call.arguments();
    const int id = arguments.at(0).toInt();
    if (!tree_.contains(id)) return noSuchEntry(call, id);
    const MenuLayout layout = tree_.layout(id, arguments.at(1).toInt(), arguments.at(2).toStringList());
    return call.createReply({revision_, QVariant::fromValue(layout)});
}

QDBusMessage DBusMenuExporter::getGroupProperties(const QDBusMessage& call) {
    QList<int> ids = qdbus_cast<QList<int>>(call.arguments().at(0));
    const QStringList names = call.arguments().at(1).toStringList();
    if (ids.isEmpty()) ids = tree_.ids();
    QList<MenuEntryProperties> entries;
    for (const int id : ids)
        if (tree_.contains(id)) entries.append({id, tree_.properties(id, names)});
    return call.createReply(QVariant::fromValue(entries));
}

QDBusMessage DBusMenuExporter::getProperty(const QDBusMessage& call) {
    const int id = call.arguments().at(0).toInt();
    const QString name = call.arguments().at(1).toString();
    if (!tree_.contains(id)) return noSuchEntry(call, id);
    const QVariant value = tree_.properties(id).value(name, menuPropertyDefault(name));
    if (!value.isValid())
        return call.createErrorReply(QDBusError::InvalidArgs, QStringLiteral("No property '%1'").arg(name));
    return call.createReply(QVariant::fromValue(QDBusVariant(value)));
}

QDBusMessage DBusMenuExporter::takeEvent(const QDBusMessage& call) {
    const int id = call.arguments().at(0).toInt();
    if (!tree_.contains(id)) return noSuchEntry(call, id);
    handleEvent(id, call.arguments().at(1).toString());
    return call.createReply();
}

QDBusMessage DBusMenuExporter::takeEvents(const QDBusMessage& call) {
    const auto events = qdbus_cast<QList<MenuEvent>>(call.arguments().at(0));
    QList<int> unknown;
    for (const MenuEvent& event : events) {
        if (tree_.contains(event.id))
            handleEvent(event.id, event.name);
        else
            unknown.append(event.id);
    }
    if (!events.isEmpty() && unknown.size() == events.size()) return noSuchEntry(call, unknown.first());
    return call.createReply(QVariant::fromValue(unknown));
}

void DBusMenuExporter::handleEvent(int id, const QString& name) {
    QAction* const action = tree_.action(id);
    if (name == QLatin1String("clicked") && action != nullptr && action->menu() == nullptr) {
        // The action is the context: one that dies before its turn is not triggered.
        const auto trigger = [action] {
            if (action->isEnabled() && action->isVisible()) action->trigger();
        };
        QMetaObject::invokeMethod(action, trigger, Qt::QueuedConnection);
    }
    if (QMenu* const menu = tree_.menu(id); name == QLatin1String("closed") && menu != nullptr)
        QMetaObject::invokeMethod(
            menu, [menu] { Q_EMIT menu->aboutToHide(); }, Qt::QueuedConnection);
}

bool DBusMenuExporter::prepareToShow(int id) {
    QMenu* const menu = tree_.menu(id);
    if (menu == nullptr) return false;
    const uint before = revision_;
    Q_EMIT menu->aboutToShow();
    update();
    return revision_ != before;
}

QDBusMessage DBusMenuExporter::aboutToShow(const QDBusMessage& call) {
    const int id = call.arguments().at(0).toInt();
    if (!tree_.contains(id)) return noSuchEntry(call, id);
    return call.createReply(prepareToShow(id));
}

QDBusMessage DBusMenuExporter::aboutToShowGroup(const QDBusMessage& call) {
    QList<int> changed;
    QList<int> unknown;
    const auto ids = qdbus_cast<QList<int>>(call.arguments().at(0));
    for (const int id : ids) {
        if (!tree_.contains(id))
            unknown.append(id);
        else if (prepareToShow(id))
            changed.append(id);
    }
    if (!ids.isEmpty() && unknown.size() == ids.size()) return noSuchEntry(call, unknown.first());
    return call.createReply({QVariant::fromValue(changed), QVariant::fromValue(unknown)});
}

}  // namespace calorivo
