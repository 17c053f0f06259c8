#include "platform/linux/Pkexec.h"

#include "platform/linux/SpawnedProcess.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

namespace calorivo {

namespace {

// Pkexec's own exit codes; any other is the command's.
constexpr std::int32_t dialogDismissed = 126;
constexpr std::int32_t notAuthorized = 127;

/// Nobody should have to give a password for the removal of nothing.
bool isRemovalOfNothing(const std::string& tool, const std::vector<std::string>& arguments) {
    struct stat status {};
    return tool == "/bin/rm" && arguments.size() == 2 && arguments.front() == "-rf" &&
           ::lstat(arguments.back().c_str(), &status) != 0 && errno == ENOENT;
}

PrivilegedResult execute(const std::string& pkexec, const std::string& tool,
                         const std::vector<std::string>& arguments) {
    if (isRemovalOfNothing(tool, arguments)) return {errAuthorizationSuccess, true, 0};
    std::vector<std::string> command{tool};
    command.insert(command.end(), arguments.begin(), arguments.end());
    const std::optional<pid_t> child = spawn(pkexec, command, Session::shared);
    if (!child) return {.status = errAuthorizationToolExecuteFailure};
    const std::optional<ChildEnd> end = waitForChild(*child);
    if (!end) return {};
    if (end->exitCode == dialogDismissed) return {.status = errAuthorizationCanceled};
    if (end->exitCode == notAuthorized) return {.status = errAuthorizationDenied};
    return {errAuthorizationSuccess, true, end->exitCode};
}

}  // namespace

OSStatus Pkexec::AuthorizationCopyRights(std::string_view right, std::uint32_t flags) {
    const bool mayAsk = (flags & AuthorizationFlags::interactionAllowed) != 0;
    return right == rightSystemPrivilegeAdmin && mayAsk ? errAuthorizationSuccess : errAuthorizationDenied;
}

ExecuteWithPrivileges Pkexec::findExecuteWithPrivileges() {
    const auto found = std::find_if(tools_.begin(), tools_.end(), [](const std::string& tool) {
        return ::access(tool.c_str(), X_OK) == 0;
    });
    if (found == tools_.end()) return {};
    return [pkexec = *found](const std::string& tool, const std::vector<std::string>& arguments) {
        return execute(pkexec, tool, arguments);
    };
}

}  // namespace calorivo
