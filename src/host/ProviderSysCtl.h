#pragma once

#include "platform/SensorProvider.h"
#include "platform/SysCtl.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace calorivo {

/// The model ("hw.model") as the provider tells it, asked of it once.
class ProviderSysCtl final : public SysCtl {
  public:
    /// `provider` must outlive this object.
    explicit ProviderSysCtl(const SensorProvider& provider) : provider_(provider) {}

    int sysctlbyname(std::string_view name, char* buffer, std::size_t& size) override;

  private:
    const SensorProvider& provider_;
    /// Asked for twice: first for its length.
    std::optional<std::string> model_;
    bool isAsked_ = false;
};

}  // namespace calorivo
