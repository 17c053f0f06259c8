#pragma once

#include <cstdint>

namespace calorivo {

/// Whoever wants to hear that another graphics processor drives the displays.
class GPUChangeObserver {
  public:
    GPUChangeObserver() = default;
    GPUChangeObserver(const GPUChangeObserver&) = delete;
    GPUChangeObserver& operator=(const GPUChangeObserver&) = delete;
    virtual ~GPUChangeObserver() = default;

    /// 1 the discrete GPU is in use now, 0 the integrated one. On a queue of the one who notifies.
    virtual void GPUDidChangeTo(std::int32_t gpuType) = 0;
};

}  // namespace calorivo
