#include "platform/qt/DBusMenuTree.h"

#include "platform/qt/DBusMenuProperties.h"

#include <QAction>
#include <QMenu>

#include <algorithm>
#include <utility>

namespace calorivo {

namespace {

/// Appends what is new or different and what is gone.
void compareProperties(int id, const QVariantMap& before, const QVariantMap& after,
                       DBusMenuChanges& changes) {
    QVariantMap updated;
    QStringList removed;
    for (auto property = after.constBegin(); property != after.constEnd(); ++property)
        if (before.value(property.key()) != property.value())
            updated.insert(property.key(), property.value());
    for (auto property = before.constBegin(); property != before.constEnd(); ++property)
        if (!after.contains(property.key())) removed.append(property.key());
    if (!updated.isEmpty()) changes.updated.append({id, updated});
    if (!removed.isEmpty()) changes.removed.append({id, removed});
}

}  // namespace

DBusMenuTree::DBusMenuTree() { read(nullptr); }

DBusMenuChanges DBusMenuTree::read(QMenu* menu) {
    known_.removeIf([](const auto& entry) { return entry.value().action.isNull(); });
    Nodes nodes;
    nodes[rootId].properties.insert(QStringLiteral("children-display"), QStringLiteral("submenu"));
    if (menu != nullptr) readMenu(*menu, rootId, nodes);
    DBusMenuChanges changes = difference(nodes_, nodes);
    nodes_ = std::move(nodes);
    return changes;
}

void DBusMenuTree::readMenu(QMenu& menu, int id, Nodes& nodes) {
    // References into a map stay valid while it grows.
    Node& node = nodes[id];
    node.menu = &menu;
    for (QAction* const action : menu.actions()) {
        const int child = idOf(*action);
        if (nodes.contains(child)) continue;  // an action of two menus stays in the first one
        node.children.append(child);
        Node& childNode = nodes[child];
        childNode.properties = menuPropertiesOf(*action);
        childNode.parent = id;
        childNode.action = action;
        if (action->menu() != nullptr) readMenu(*action->menu(), child, nodes);
    }
}

int DBusMenuTree::idOf(QAction& action) {
    KnownAction& known = known_[&action];
    // A new action may have the address of one that is gone.
    if (known.action.isNull()) known = {&action, ++lastId_};
    return known.id;
}

int DBusMenuTree::commonAncestor(const Nodes& nodes, int one, int other) {
    QList<int> above{one};
    while (above.last() != rootId) above.append(nodes.at(above.last()).parent);
    while (!above.contains(other)) other = nodes.at(other).parent;
    return other;
}

DBusMenuChanges DBusMenuTree::difference(const Nodes& before, const Nodes& after) {
    DBusMenuChanges changes;
    for (const auto& [id, node] : after) {
        const auto old = before.find(id);
        if (old == before.end()) continue;  // its parent's children are different
        compareProperties(id, old->second.properties, node.properties, changes);
        if (old->second.children == node.children) continue;
        changes.layoutParent = changes.layoutParent ? commonAncestor(after, *changes.layoutParent, id) : id;
    }
    return changes;
}

QList<int> DBusMenuTree::ids() const {
    QList<int> ids;
    for (const auto& [id, node] : nodes_) ids.append(id);
    return ids;
}

QAction* DBusMenuTree::action(int id) const {
    const auto node = nodes_.find(id);
    return node == nodes_.end() ? nullptr : node->second.action.data();
}

QMenu* DBusMenuTree::menu(int id) const {
    const auto node = nodes_.find(id);
    return node == nodes_.end() ? nullptr : node->second.menu.data();
}

QList<QMenu*> DBusMenuTree::menus() const {
    QList<QMenu*> menus;
    for (const auto& [id, node] : nodes_)
        if (node.menu != nullptr) menus.append(node.menu);
    return menus;
}

QVariantMap DBusMenuTree::properties(int id, const QStringList& names) const {
    const auto node = nodes_.find(id);
    if (node == nodes_.end()) return {};
    if (names.isEmpty()) return node->second.properties;
    QVariantMap chosen;
    for (const QString& name : names)
        if (node->second.properties.contains(name)) chosen.insert(name, node->second.properties.value(name));
    return chosen;
}

MenuLayout DBusMenuTree::layout(int id, int depth, const QStringList& names) const {
    MenuLayout layout{id, properties(id, names), {}};
    const auto node = nodes_.find(id);
    if (depth == 0 || node == nodes_.end()) return layout;
    for (const int child : node->second.children)
        layout.children.append(QVariant::fromValue(this->layout(child, std::max(depth, 0) - 1, names)));
    return layout;
}

}  // namespace calorivo
