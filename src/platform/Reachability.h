#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace calorivo {

/// What is known of the way to a network address: a sum of these.
namespace ReachabilityFlags {
inline constexpr std::uint32_t transientConnection = 1;
inline constexpr std::uint32_t reachable = 2;
inline constexpr std::uint32_t connectionRequired = 4;
}  // namespace ReachabilityFlags

/// The head of an IPv4 socket address; the address itself is zero.
struct ZeroAddress {
    std::uint8_t length = 16;
    std::uint8_t family = 2;
    friend bool operator==(const ZeroAddress&, const ZeroAddress&) = default;
};

enum class CachePolicy { useProtocolCachePolicy, reloadIgnoringLocalCacheData };

struct URLRequest {
    std::string url;
    CachePolicy cachePolicy = CachePolicy::useProtocolCachePolicy;
    double timeoutSeconds = 60.0;
    friend bool operator==(const URLRequest&, const URLRequest&) = default;
};

/// Whether there is a network. Neither call waits for an answer from it. Any thread.
class Reachability {
  public:
    Reachability() = default;
    Reachability(const Reachability&) = delete;
    Reachability& operator=(const Reachability&) = delete;
    virtual ~Reachability() = default;

    /// None when the system does not tell.
    [[nodiscard]] virtual std::optional<std::uint32_t> flagsForAddress(const ZeroAddress& address) = 0;
    /// True when a connection for the request could be created; what becomes of it is not looked at.
    [[nodiscard]] virtual bool createConnection(const URLRequest& request) = 0;
};

}  // namespace calorivo
