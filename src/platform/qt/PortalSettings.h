#pragma once

#include <QDBusConnection>
#include <QDBusVariant>
#include <QObject>

namespace calorivo {

/// What the desktop tells all programs about its looks. Where it tells nothing, nothing is dark. Main thread.
class PortalSettings final : public QObject {
    Q_OBJECT

  public:
    explicit PortalSettings(const QDBusConnection& bus, QObject* parent = nullptr);
    /// False until the desktop has answered.
    [[nodiscard]] bool isDark() const { return isDark_; }

  Q_SIGNALS:
    void isDarkChanged(bool isDark);

  private Q_SLOTS:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

  private:
    void take(const QVariant& value);

    bool isDark_ = false;
};

}  // namespace calorivo
