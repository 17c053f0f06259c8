#pragma once

#include "platform/qt/DBusObject.h"
#include "platform/qt/DrawnPixmaps.h"
#include "platform/qt/StatusNotifierTypes.h"

#include <QDBusConnection>
#include <QPoint>
#include <QString>

#include <optional>
#include <utility>

namespace calorivo {

/// What an item shows. The name of an icon wins over its pixmaps wherever a panel finds an icon of that name.
struct StatusNotifierState {
    QString iconName;
    DrawnPixmaps pixmaps;
    /// Also what the tool tip holds.
    QString title;
    /// The text beside the icon. None is not the same as empty: there are panels that drop the icon as soon
    /// as an item has a label at all.
    std::optional<QString> label;
    /// A text as wide as the label will get: panels keep that much room, so that nothing beside it jumps.
    QString labelGuide;

    friend bool operator==(const StatusNotifierState&, const StatusNotifierState&) = default;
};

/// The item that panels show, as an object of the message bus ("org.kde.StatusNotifierItem"). Main thread.
class StatusNotifierItem final : public DBusObject {
    Q_OBJECT

  public:
    static QString objectPath() { return QStringLiteral("/StatusNotifierItem"); }

    /// `iconThemePath`: the folder with the icons named in the state; may be empty. `menuPath`: the object of
    /// the menu on the same connection.
    StatusNotifierItem(const QDBusConnection& connection, QString iconThemePath, QString menuPath);

    [[nodiscard]] const StatusNotifierState& state() const { return state_; }
    /// Panels are told what is different; nothing is sent when nothing is.
    void setState(StatusNotifierState state);
    /// The same while there is no panel: nobody is told.
    void setStateSilently(StatusNotifierState state) { state_ = std::move(state); }

  Q_SIGNALS:
    /// The item was clicked; the token lets a window come to the front and may be empty. After the panel has
    /// its answer.
    void activated(const QString& activationToken);
    /// A panel that draws no menus wants this one at a place of the screen.
    void contextMenuRequested(QPoint position);

  private:
    [[nodiscard]] DBusInterface describe();
    [[nodiscard]] std::vector<DBusProperty> describeProperties() const;
    [[nodiscard]] std::vector<DBusMethod> describeMethods();

    QString iconThemePath_;
    QString menuPath_;
    QString activationToken_;
    StatusNotifierState state_;
};

}  // namespace calorivo
