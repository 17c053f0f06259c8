#pragma once

#include "platform/Reachability.h"

#include <string>
#include <string_view>

namespace calorivo {

/// Whether the kernel's IPv4 routes (/proc/net/route) have a default route that is up.
[[nodiscard]] bool hasDefaultRoute(std::string_view routes);
/// The same of its IPv6 routes (/proc/net/ipv6_route); those that refuse and the loopback's do not count.
[[nodiscard]] bool hasDefaultIpv6Route(std::string_view routes);

/// The network by its routes: nothing is sent, so that nobody learns of the question.
class LinuxReachability final : public Reachability {
  public:
    explicit LinuxReachability(std::string procFolder = "/proc") : procFolder_(std::move(procFolder)) {}

    /// None when neither list of routes can be read.
    [[nodiscard]] std::optional<std::uint32_t> flagsForAddress(const ZeroAddress& address) override;
    /// A connection is made ready for a page of the web and dropped: its host is not called.
    [[nodiscard]] bool createConnection(const URLRequest& request) override;

  private:
    const std::string procFolder_;
};

}  // namespace calorivo
