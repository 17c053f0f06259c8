#pragma once

#include "monitor/GPUChangeObserver.h"

#include <cstdint>
#include <memory>

namespace calorivo {

class Dispatch;
class Queue;
class Timer;
struct GPUState;

/// Holds GPU sensors at their cached values for two seconds after each change of the GPU: while the system
/// switches, the discrete GPU's sensors give nonsense.
class GPUGuard final : public GPUChangeObserver {
  public:
    /// All must outlive it, but the check queue, whose blocks must have ended before.
    GPUGuard(Dispatch& dispatch, Queue& checkQueue, GPUState& state);
    ~GPUGuard() override;

    /// Any thread but the check queue's.
    void GPUDidChangeTo(std::int32_t gpuType) override;

  private:
    void pauseGPUCheck();
    /// Main thread. `pause` is the number of the pause that is over.
    void pauseGPUCheckTimerFired(std::uint64_t pause);

    Dispatch& dispatch_;
    Queue& checkQueue_;
    GPUState& state_;
    /// How many pauses have begun; check queue. A timer that has fired already cannot be called back: what
    /// it still has queued must not end the pause of a later change.
    std::uint64_t pauses_ = 0;
    /// Made and destroyed on the main thread, while the check queue waits.
    std::unique_ptr<Timer> pauseGPUCheckTimer_;
};

}  // namespace calorivo
