#pragma once

#include <QDBusConnection>
#include <QHash>
#include <QObject>
#include <QString>

#include <optional>

namespace calorivo {

/// What a panel makes of an item's label.
enum class LabelSupport { none, besideIcon, insteadOfIcon };

/// What is known of the panel that shows status items.
struct HostTraits {
    LabelSupport label = LabelSupport::none;
    /// Whether it draws an icon that comes as pixels; otherwise only one that has a name.
    bool drawsPixmaps = true;

    friend bool operator==(const HostTraits&, const HostTraits&) = default;
};

/// Process numbers of the owners of bus names; 0 is an unknown process.
using OwnersOfNames = QHash<QString, uint>;

/// The traits of the panel whose process answers for "org.kde.StatusNotifierWatcher"; those of the poorest
/// panel when it is not one of the known ones.
[[nodiscard]] HostTraits hostTraitsOf(const OwnersOfNames& owners);

/// Follows who shows status items on a message bus: nobody, or a panel that may come, go and change at any
/// time. Asks when something changed and never waits. Main thread.
class StatusNotifierHost final : public QObject {
    Q_OBJECT

  public:
    explicit StatusNotifierHost(const QDBusConnection& bus);

    static QString watcherName() { return QStringLiteral("org.kde.StatusNotifierWatcher"); }
    static QString watcherPath() { return QStringLiteral("/StatusNotifierWatcher"); }

    [[nodiscard]] bool hasWatcher() const;
    /// A watcher that has a panel: items are seen now.
    [[nodiscard]] bool hasHost() const { return hasHost_; }
    [[nodiscard]] HostTraits traits() const { return traits_; }

  Q_SIGNALS:
    /// There is a watcher that knows no item yet; its traits are known already.
    void watcherAppeared();
    void hostChanged(bool hasHost);
    void traitsChanged();

  private Q_SLOTS:
    void readHostRegistered();

  private:
    void ownerChanged(const QString& name, const QString& newOwner);
    void askForOwner(const QString& name);
    void ownerFound(const QString& name, std::optional<uint> process);
    void setHasHost(bool hasHost);
    void updateTraits();

    QDBusConnection bus_;
    OwnersOfNames owners_;
    /// How often each name changed hands: an answer about an earlier owner is not taken.
    QHash<QString, int> changes_;
    HostTraits traits_;
    bool hasHost_ = false;
};

}  // namespace calorivo
