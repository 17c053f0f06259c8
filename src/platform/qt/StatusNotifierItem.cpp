#include "platform/qt/StatusNotifierItem.h"

#include <QDBusObjectPath>
#include <QMetaObject>

#include <utility>

namespace calorivo {

namespace {

/// Answered, and nothing else: what this item has no use for.
QDBusMessage acknowledge(const QDBusMessage& call) { return call.createReply(); }

}  // namespace

StatusNotifierItem::StatusNotifierItem(const QDBusConnection& connection, QString iconThemePath,
                                       QString menuPath)
    : DBusObject(connection, objectPath()),
      iconThemePath_(std::move(iconThemePath)),
      menuPath_(std::move(menuPath)) {
    registerStatusNotifierTypes();
    publish(describe());
}

void StatusNotifierItem::setState(StatusNotifierState state) {
    const StatusNotifierState old = std::exchange(state_, std::move(state));
    if (old.iconName != state_.iconName || !(old.pixmaps == state_.pixmaps))
        announce(QStringLiteral("NewIcon"));
    if (old.title != state_.title) {
        announce(QStringLiteral("NewTitle"));
        announce(QStringLiteral("NewToolTip"));
    }
    if (old.label != state_.label || old.labelGuide != state_.labelGuide)
        announce(QStringLiteral("XAyatanaNewLabel"), {state_.label.value_or(QString()), state_.labelGuide});
}

DBusInterface StatusNotifierItem::describe() {
    const QString none;
    return {.name = QStringLiteral("org.kde.StatusNotifierItem"),
            .methods = describeMethods(),
            .properties = describeProperties(),
            .announcements = {{QStringLiteral("NewTitle"), none},
                              {QStringLiteral("NewIcon"), none},
                              {QStringLiteral("NewToolTip"), none},
                              {QStringLiteral("NewStatus"), QStringLiteral("s")},
                              {QStringLiteral("XAyatanaNewLabel"), QStringLiteral("ss")}}};
}

std::vector<DBusProperty> StatusNotifierItem::describeProperties() const {
    const auto text = [](const char* name, const QString& value) {
        return DBusProperty{QString::fromLatin1(name), QStringLiteral("s"),
                            [value] { return QVariant(value); }};
    };
    const auto noPixmaps = [] { return QVariant::fromValue(IconPixmaps()); };
    const QString pixmapsType = QStringLiteral("a(iiay)");
    return {
        text("Category", QStringLiteral("Hardware")),
        text("Id", QStringLiteral("calorivo")),
        {QStringLiteral("Title"), QStringLiteral("s"), [this] { return QVariant(state_.title); }},
        text("Status", QStringLiteral("Active")),
        {QStringLiteral("WindowId"), QStringLiteral("i"), [] { return QVariant(0); }},
        {QStringLiteral("IconName"), QStringLiteral("s"), [this] { return QVariant(state_.iconName); }},
        text("IconThemePath", iconThemePath_),
        {QStringLiteral("IconPixmap"), pixmapsType,
         [this] { return QVariant::fromValue(state_.pixmaps.get()); }},
        text("OverlayIconName", {}),
        {QStringLiteral("OverlayIconPixmap"), pixmapsType, noPixmaps},
        text("AttentionIconName", {}),
        {QStringLiteral("AttentionIconPixmap"), pixmapsType, noPixmaps},
        text("AttentionMovieName", {}),
        {QStringLiteral("ToolTip"), QStringLiteral("(sa(iiay)ss)"),
         [this] {
             return QVariant::fromValue(StatusToolTip{{}, {}, state_.title, {}});
         }},
        {QStringLiteral("ItemIsMenu"), QStringLiteral("b"), [] { return QVariant(false); }},
        {QStringLiteral("Menu"), QStringLiteral("o"),
         [this] { return QVariant::fromValue(QDBusObjectPath(menuPath_)); }},
        {QStringLiteral("XAyatanaLabel"), QStringLiteral("s"),
         [this] { return state_.label ? QVariant(*state_.label) : QVariant(); }},
        {QStringLiteral("XAyatanaLabelGuide"), QStringLiteral("s"),
         [this] { return state_.label ? QVariant(state_.labelGuide) : QVariant(); }},
    };
}

std::vector<DBusMethod> StatusNotifierItem::describeMethods() {
    const QString none;
    const QString place = QStringLiteral("ii");
    return {
        {QStringLiteral("Activate"), place, none,
         [this](const QDBusMessage& call) {
             const auto emitIt = [this, token = std::exchange(activationToken_, {})] {
                 Q_EMIT activated(token);
             };
             QMetaObject::invokeMethod(this, emitIt, Qt::QueuedConnection);
             return call.createReply();
         }},
        {QStringLiteral("SecondaryActivate"), place, none, acknowledge},
        {QStringLiteral("XAyatanaSecondaryActivate"), QStringLiteral("u"), none, acknowledge},
        {QStringLiteral("ContextMenu"), place, none,
         [this](const QDBusMessage& call) {
             const QPoint position(call.arguments().at(0).toInt(), call.arguments().at(1).toInt());
             const auto emitIt = [this, position] { Q_EMIT contextMenuRequested(position); };
             QMetaObject::invokeMethod(this, emitIt, Qt::QueuedConnection);
             return call.createReply();
         }},
        {QStringLiteral("Scroll"), QStringLiteral("is"), none, acknowledge},
        {QStringLiteral("ProvideXdgActivationToken"), QStringLiteral("s"), none,
         [this](const QDBusMessage& call) {
             activationToken_ = call.arguments().at(0).toString();
             return call.createReply();
         }},
    };
}

}  // namespace calorivo
