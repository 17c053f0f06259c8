#pragma once

#include "platform/Property.h"

#include <cstdint>

namespace calorivo {

/// Which GPU drives the displays, and whether GPU sensors may be read now. Read on the main thread; other
/// queues write with store(), which tells no observer. A stale read means one more cached or one more live
/// reading, nothing else.
struct GPUState {
    /// 1 the discrete GPU, 0 the integrated one or no switcher.
    Property<std::int32_t> currentGPUType;
    Property<bool> isOkToCheckGPUSensors{true};
};

}  // namespace calorivo
