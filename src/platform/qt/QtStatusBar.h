#pragma once

#include "platform/Image.h"
#include "platform/StatusBar.h"
#include "platform/qt/StatusNotifierHost.h"

#include <QDBusConnection>
#include <QIcon>
#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <string>
#include <string_view>

class QMenu;

namespace calorivo {

/// Where the status bar's things come from.
struct StatusBarResources {
    /// The menu of a name of the user interface; null when there is none.
    std::function<QMenu*(std::string_view name)> menu;
    /// An image by its resource name; may be null.
    std::function<QIcon(const std::string& imageName, bool isTemplate)> icon;
    /// The folder of the SVG files of the two names below, which panels read themselves; may be empty.
    QString iconThemePath;
    /// The program's icon, for any image of the item.
    QString iconName;
    /// A transparent one: some panels show only the icons that they find by name, and "missing" without a
    /// name.
    QString blankIconName;
    /// Shown when there is neither image nor title: nobody finds an item that is not to be seen.
    Image fallbackImage{"NewIcon_16px", true};
};

/// A connection of this name of its own; closed by QDBusConnection::disconnectFromBus.
using BusConnector = std::function<QDBusConnection(const QString& name)>;

[[nodiscard]] QDBusConnection connectToSessionBus(const QString& name);

/// The panel's area of status items as the menu bar. Without a message bus and without a panel the items are
/// just not seen; they appear when a panel does. Must outlive its items, and what is passed in the bar. Main
/// thread.
class QtStatusBar final : public QObject, public StatusBar {
    Q_OBJECT

  public:
    /// Every item has a connection of its own made by `connector`: panels drop an item whose connection
    /// closes.
    QtStatusBar(const QDBusConnection& bus, StatusBarResources resources,
                BusConnector connector = connectToSessionBus);
    ~QtStatusBar() override;

    [[nodiscard]] std::unique_ptr<StatusBarItem> statusItemWithLength(double length) override;

    /// Items follow at once.
    void setTitlePlace(TitlePlace place);
    [[nodiscard]] TitlePlace titlePlace() const { return titlePlace_; }
    /// A watcher with a panel is there now.
    [[nodiscard]] bool hasHost() const { return host_.hasHost(); }

    /// For the items.
    [[nodiscard]] const StatusNotifierHost& host() const { return host_; }
    [[nodiscard]] const StatusBarResources& resources() const { return resources_; }
    [[nodiscard]] QDBusConnection newConnection() const;

  Q_SIGNALS:
    /// Left click on an item: time to show the main window. The token lets it come to the front; may be
    /// empty.
    void activated(const QString& activationToken);
    void hostChanged(bool hasHost);
    void titlePlaceChanged();

  private:
    StatusBarResources resources_;
    BusConnector connector_;
    StatusNotifierHost host_;
    TitlePlace titlePlace_ = TitlePlace::automatic;
};

}  // namespace calorivo
