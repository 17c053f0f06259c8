#pragma once

#include "monitor/CheckCycle.h"
#include "platform/KeyValueCoding.h"
#include "platform/linux/SleepWatch.h"
#include "platform/qt/SystemSleep.h"

#include <QDBusConnection>

namespace calorivo {

/// Has a check run as soon as the login manager, or whoever calls, tells that the machine has woken, and the
/// next one a period later. The timer alone brings one within a period as well: when it was faster, nothing
/// is checked twice. Nor is anything after a sleep that came to nothing. Main thread.
class CheckAfterSleep {
  public:
    /// `keys` are those of the program, with the averages that each check publishes; `cycle` must outlive it.
    CheckAfterSleep(const QDBusConnection& systemBus, CheckCycle& cycle, const KeyValueCoding& keys,
                    MachineClocks::Clock asleep = timeAsleep);
    CheckAfterSleep(const CheckAfterSleep&) = delete;
    CheckAfterSleep& operator=(const CheckAfterSleep&) = delete;

    /// To be called when the machine may have woken.
    void check();

  private:
    CheckCycle& cycle_;
    SleepWatch watch_;
    SystemSleep systemSleep_;
    Observation checks_;
};

}  // namespace calorivo
