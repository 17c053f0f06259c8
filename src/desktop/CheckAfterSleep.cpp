#include "desktop/CheckAfterSleep.h"

#include <utility>

namespace calorivo {

CheckAfterSleep::CheckAfterSleep(const QDBusConnection& systemBus, CheckCycle& cycle,
                                 const KeyValueCoding& keys, MachineClocks::Clock asleep)
    : cycle_(cycle), watch_(std::move(asleep)), systemSleep_(systemBus) {
    // Each check assigns it. With a check the sleep before it is dealt with, but for what was held in it.
    checks_ = keys.observe("currentAvgTmp", [this] {
        if (watch_.hasSlept()) cycle_.readGPUSensors();
    });
    QObject::connect(&systemSleep_, &SystemSleep::didWake, &systemSleep_, [this] { check(); });
}

void CheckAfterSleep::check() {
    if (!watch_.hasSlept()) return;
    // The graphics processors may be changing over, now or in a moment: their sensors are not to be held at
    // what they read before the sleep.
    cycle_.readGPUSensors();
    cycle_.restartAndFireCheckTimer();
}

}  // namespace calorivo
