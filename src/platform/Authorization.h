#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace calorivo {

using OSStatus = std::int32_t;

inline constexpr OSStatus errAuthorizationSuccess = 0;
inline constexpr OSStatus errAuthorizationDenied = -60005;
/// The user was asked for a password and declined.
inline constexpr OSStatus errAuthorizationCanceled = -60006;
inline constexpr OSStatus errAuthorizationToolExecuteFailure = -60031;

inline constexpr std::string_view rightSystemPrivilegeAdmin = "system.privilege.admin";

/// What an authorization is asked for with: a sum of these.
namespace AuthorizationFlags {
inline constexpr std::uint32_t interactionAllowed = 1;
inline constexpr std::uint32_t extendRights = 2;
inline constexpr std::uint32_t preAuthorize = 16;
}  // namespace AuthorizationFlags

/// How a command with an administrator's rights ended.
struct PrivilegedResult {
    /// Anything but success: it was not started. Systems that ask for the password at this moment say here
    /// that the user declined.
    OSStatus status = errAuthorizationSuccess;
    /// Waiting for the child succeeded.
    bool isWaited = false;
    /// The exit code of a child that was not ended by a signal.
    std::optional<std::int32_t> exitCode = std::nullopt;
};

/// Runs a tool, by its whole path, with an administrator's rights and waits for it.
using ExecuteWithPrivileges =
    std::function<PrivilegedResult(const std::string& tool, const std::vector<std::string>& arguments)>;

/// An administrator's rights for a few commands. Asking the user blocks. Main thread.
class Authorization {
  public:
    Authorization() = default;
    Authorization(const Authorization&) = delete;
    Authorization& operator=(const Authorization&) = delete;
    virtual ~Authorization() = default;

    /// A reference with no rights, an empty environment and default flags. Each success is to be freed.
    [[nodiscard]] virtual OSStatus AuthorizationCreate() = 0;
    [[nodiscard]] virtual OSStatus AuthorizationCopyRights(std::string_view right, std::uint32_t flags) = 0;
    /// The function that runs commands, sought by its name; empty where the system has none. It may be used
    /// as long as this object lives, between AuthorizationCreate and AuthorizationFree.
    [[nodiscard]] virtual ExecuteWithPrivileges findExecuteWithPrivileges() = 0;
    virtual void AuthorizationFree() = 0;
};

}  // namespace calorivo
