#pragma once

#include "sensors/GPUNames.h"

namespace calorivo::test {

/// GPU names that a test sets.
class FixedGPUNames final : public GPUNames {
  public:
    std::optional<std::string> integrated;
    std::optional<std::string> discrete;

    [[nodiscard]] std::optional<std::string> integratedGPUName() override { return integrated; }
    [[nodiscard]] std::optional<std::string> discreteGPUName() override { return discrete; }
};

}  // namespace calorivo::test
