#pragma once

#include "platform/qt/DBusMenuTree.h"
#include "platform/qt/DBusObject.h"

#include <QDBusConnection>
#include <QEvent>
#include <QPointer>
#include <QString>

#include <vector>

class QMenu;

namespace calorivo {

/// A menu for panels to draw, as an object of the message bus ("com.canonical.dbusmenu"). What changes in the
/// menu is told once in each pass of the event loop. A chosen entry is triggered after the panel has its
/// answer, so an action may open windows and wait for them. Main thread.
class DBusMenuExporter final : public DBusObject {
  public:
    explicit DBusMenuExporter(const QDBusConnection& connection);
    ~DBusMenuExporter() override;

    /// The menu may die before the exporter, which then shows an empty one. Null for none.
    void setMenu(QMenu* menu);

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    [[nodiscard]] DBusInterface describe();
    [[nodiscard]] std::vector<DBusMethod> describeMethods();
    void updateSoon();
    /// Reads the menu again if something happened to it, and tells.
    void update();
    void watchMenus();

    [[nodiscard]] QDBusMessage getLayout(const QDBusMessage& call);
    [[nodiscard]] QDBusMessage getGroupProperties(const QDBusMessage& call);
    [[nodiscard]] QDBusMessage getProperty(const QDBusMessage& call);
    [[nodiscard]] QDBusMessage takeEvent(const QDBusMessage& call);
    [[nodiscard]] QDBusMessage takeEvents(const QDBusMessage& call);
    [[nodiscard]] QDBusMessage aboutToShow(const QDBusMessage& call);
    [[nodiscard]] QDBusMessage aboutToShowGroup(const QDBusMessage& call);

    void handleEvent(int id, const QString& name);
    /// Lets the menu fill itself; whether it is another one now.
    [[nodiscard]] bool prepareToShow(int id);

    QPointer<QMenu> menu_;
    DBusMenuTree tree_;
    uint revision_ = 1;
    bool isDirty_ = false;
};

}  // namespace calorivo
