#pragma once

#include <QDBusAbstractAdaptor>
#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

namespace calorivo {

class Instance;

/// An Instance as desktops and later instances see it on the bus.
class InstanceAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

  public:
    explicit InstanceAdaptor(Instance& instance);

  public Q_SLOTS:
    // The names are the interface's own.
    void Activate(const QVariantMap& platformData);
    /// The program opens no files and has no actions of its own: it shows itself.
    void Open(const QStringList& uris, const QVariantMap& platformData);
    void ActivateAction(const QString& name, const QVariantList& parameter, const QVariantMap& platformData);

  private:
    Instance& instance_;
};

}  // namespace calorivo
