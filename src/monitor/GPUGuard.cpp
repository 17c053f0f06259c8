#include "monitor/GPUGuard.h"

#include "monitor/GPUState.h"
#include "platform/Dispatch.h"

#include <chrono>

namespace calorivo {

namespace {

constexpr std::chrono::duration<float> pauseLength(2.0F);

}  // namespace

GPUGuard::GPUGuard(Dispatch& dispatch, Queue& checkQueue, GPUState& state)
    : dispatch_(dispatch), checkQueue_(checkQueue), state_(state) {}

GPUGuard::~GPUGuard() = default;

void GPUGuard::GPUDidChangeTo(std::int32_t gpuType) {
    checkQueue_.async([this] { pauseGPUCheck(); });
    // Kept: set at once, before the check queue knows of the change.
    state_.currentGPUType.store(gpuType);
}

void GPUGuard::pauseGPUCheck() {
    state_.isOkToCheckGPUSensors.store(false);
    ++pauses_;
    dispatch_.mainQueue().sync([this, pause = pauses_] {
        pauseGPUCheckTimer_.reset();
        pauseGPUCheckTimer_ =
            dispatch_.scheduleTimer(std::chrono::duration_cast<std::chrono::nanoseconds>(pauseLength),
                                    Repeats::no, [this, pause] { pauseGPUCheckTimerFired(pause); });
    });
}

void GPUGuard::pauseGPUCheckTimerFired(std::uint64_t pause) {
    checkQueue_.async([this, pause] {
        if (pause == pauses_) state_.isOkToCheckGPUSensors.store(true);
    });
}

}  // namespace calorivo
