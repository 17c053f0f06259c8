#pragma once

#include "platform/IOServices.h"

#include <cstddef>
#include <cstdint>

namespace calorivo {

/// The device services of the system controller: exchanging records with its user client. Main thread, unless
/// a call says otherwise.
class IOKit : public IOServices {
  public:
    virtual kern_return_t IOMasterPort(mach_port_t bootstrapPort, mach_port_t& masterPort) = 0;
    /// One request. `outputSize` holds the room at `output` and receives what was written there.
    virtual kern_return_t IOConnectCallStructMethod(io_connect_t connection, std::uint32_t selector,
                                                    const void* input, std::size_t inputSize, void* output,
                                                    std::size_t& outputSize) = 0;
};

}  // namespace calorivo
