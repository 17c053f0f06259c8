#pragma once

#include <optional>
#include <string>

namespace calorivo {

/// What the machine's graphics processors are called; either may be absent.
class GPUNames {
  public:
    GPUNames() = default;
    GPUNames(const GPUNames&) = delete;
    GPUNames& operator=(const GPUNames&) = delete;
    virtual ~GPUNames() = default;

    [[nodiscard]] virtual std::optional<std::string> integratedGPUName() = 0;
    [[nodiscard]] virtual std::optional<std::string> discreteGPUName() = 0;
};

}  // namespace calorivo
