#include "desktop/CheckAfterSleep.h"

#include <utility>

namespace calorivo {

CheckAfterSleep::CheckAfterSleep(const QDBusConnection& systemBus, CheckCycle& cycle,
                                 const KeyValueCoding& keys, MachineClocks::Clock asleep)
    : cycle_(cycle), watch_(std::move(asleep)), systemSleep_(systemBus) {
    // Each check assigns it, and with a check the sleep before it is dealt with.
    checks_ = keys.observe("currentAvgTmp", [this] { static_cast<void>(watch_.hasSlept()); });
    QObject::connect(&systemSleep_, &SystemSleep::didWake, &systemSleep_, [this] { check(); });
}

void CheckAfterSleep::check() {
    if (watch_.hasSlept()) cycle_.restartAndFireCheckTimer();
}

}  // namespace calorivo
