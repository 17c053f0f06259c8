#pragma once

#include "platform/qt/DBusMenuTypes.h"

#include <QHash>
#include <QList>
#include <QPointer>
#include <QStringList>
#include <QVariantMap>

#include <map>
#include <optional>

class QAction;
class QMenu;

namespace calorivo {

/// What changed between two readings of a menu.
struct DBusMenuChanges {
    /// The lowest entry below which everything that came, went or moved is; none when nothing did.
    std::optional<int> layoutParent;
    QList<MenuEntryProperties> updated;
    QList<MenuEntryKeys> removed;

    [[nodiscard]] bool isEmpty() const { return !layoutParent && updated.isEmpty() && removed.isEmpty(); }
};

/// A menu as it was when it was read last: entries with numbers, their properties, their order. An action has
/// the same number as long as it lives, and no number is used twice. The menu itself is number 0. Main
/// thread.
class DBusMenuTree {
  public:
    static constexpr int rootId = 0;

    DBusMenuTree();

    /// Null gives an empty menu.
    DBusMenuChanges read(QMenu* menu);

    [[nodiscard]] bool contains(int id) const { return nodes_.contains(id); }
    [[nodiscard]] QList<int> ids() const;
    /// Null when the entry is none or its action is gone.
    [[nodiscard]] QAction* action(int id) const;
    /// The menu that opens below the entry; null when none does.
    [[nodiscard]] QMenu* menu(int id) const;
    /// All menus, the one that was read first.
    [[nodiscard]] QList<QMenu*> menus() const;

    /// Only the properties of these names; all of them when there are no names. Empty for an unknown entry.
    [[nodiscard]] QVariantMap properties(int id, const QStringList& names = {}) const;
    /// `depth`: how many levels below the entry; below 0 all of them.
    [[nodiscard]] MenuLayout layout(int id, int depth, const QStringList& names) const;

  private:
    struct Node {
        QVariantMap properties;
        QList<int> children;
        int parent = rootId;
        QPointer<QAction> action;
        QPointer<QMenu> menu;
    };
    using Nodes = std::map<int, Node>;
    struct KnownAction {
        QPointer<QAction> action;
        int id = 0;
    };

    void readMenu(QMenu& menu, int id, Nodes& nodes);
    [[nodiscard]] int idOf(QAction& action);
    [[nodiscard]] static int commonAncestor(const Nodes& nodes, int one, int other);
    [[nodiscard]] static DBusMenuChanges difference(const Nodes& before, const Nodes& after);

    Nodes nodes_;
    QHash<QAction*, KnownAction> known_;
    int lastId_ = rootId;
};

}  // namespace calorivo
