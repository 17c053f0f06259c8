#pragma once

#include "platform/Authorization.h"

#include <string>
#include <vector>

namespace calorivo {

/// An administrator's rights by pkexec, which asks for the password in a dialog of the desktop's own, once
/// for each command, at the moment when the command is to run.
class Pkexec final : public Authorization {
  public:
    /// The first of the tools that can be run is used.
    explicit Pkexec(std::vector<std::string> tools = {"/usr/bin/pkexec", "/run/wrappers/bin/pkexec"})
        : tools_(std::move(tools)) {}

    [[nodiscard]] OSStatus AuthorizationCreate() override { return errAuthorizationSuccess; }
    /// Nothing is asked yet: the command will.
    [[nodiscard]] OSStatus AuthorizationCopyRights(std::string_view right, std::uint32_t flags) override;
    [[nodiscard]] ExecuteWithPrivileges findExecuteWithPrivileges() override;
    void AuthorizationFree() override {}

  private:
    std::vector<std::string> tools_;
};

}  // namespace calorivo
