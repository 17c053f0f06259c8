#pragma once

#include <QDBusConnection>
#include <QObject>

namespace calorivo {

/// Hears from the system's login manager that the machine has woken. It only makes prompt what is noticed
/// without it as well: where there is no system bus, or nobody on it who tells, nothing is ever told.
///
/// The end of a sleep is told as often as the manager tells it: after a sleep that came to nothing, too, and
/// twice if it says so twice. That a sleep is coming is not told: each row of the log is on the disk when it
/// is written, so there is nothing to do before one, and no reason to have the system wait for us. Main
/// thread.
class SystemSleep final : public QObject {
    Q_OBJECT

  public:
    explicit SystemSleep(const QDBusConnection& systemBus, QObject* parent = nullptr);

  Q_SIGNALS:
    void didWake();

  private Q_SLOTS:
    void prepareForSleep(bool isComing);
};

}  // namespace calorivo
