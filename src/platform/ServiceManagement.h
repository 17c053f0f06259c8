#pragma once

#include <string_view>

namespace calorivo {

/// Programs that are started at login. Main thread.
class ServiceManagement {
  public:
    ServiceManagement() = default;
    ServiceManagement(const ServiceManagement&) = delete;
    ServiceManagement& operator=(const ServiceManagement&) = delete;
    virtual ~ServiceManagement() = default;

    /// Starts the helper with this identifier at every login, or no longer. False when that failed.
    virtual bool SMLoginItemSetEnabled(std::string_view identifier, bool isEnabled) = 0;
};

}  // namespace calorivo
