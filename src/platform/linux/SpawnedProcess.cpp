#include "platform/linux/SpawnedProcess.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <string_view>

namespace calorivo {

namespace {

/// What describes where this very program runs from, which the next one finds out for itself.
bool belongsToThisPackage(std::string_view variable) {
    constexpr std::array<std::string_view, 4> names{"APPDIR=", "APPIMAGE=", "ARGV0=", "OWD="};
    return std::any_of(names.begin(), names.end(),
                       [variable](std::string_view name) { return variable.starts_with(name); });
}

std::vector<char*> environmentFor(Session session) {
    std::vector<char*> variables;
    for (char** variable = environ; *variable != nullptr; ++variable)
        if (session == Session::shared || !belongsToThisPackage(*variable)) variables.push_back(*variable);
    variables.push_back(nullptr);
    return variables;
}

/// Posix's descriptions of a new process, released when they go.
class SpawnSettings {
  public:
    explicit SpawnSettings(Session session) {
        ::posix_spawn_file_actions_init(&actions_);
        ::posix_spawnattr_init(&attributes_);
        if (session == Session::shared) return;
        ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSID);
        ::posix_spawn_file_actions_addchdir_np(&actions_, "/");
        for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
            ::posix_spawn_file_actions_addopen(&actions_, descriptor, "/dev/null", O_RDWR, 0);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;
    ~SpawnSettings() {
        ::posix_spawn_file_actions_destroy(&actions_);
        ::posix_spawnattr_destroy(&attributes_);
    }
    [[nodiscard]] const posix_spawn_file_actions_t* actions() const { return &actions_; }
    [[nodiscard]] const posix_spawnattr_t* attributes() const { return &attributes_; }

  private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

}  // namespace

std::optional<pid_t> spawn(const std::string& tool, const std::vector<std::string>& arguments,
                           Session session) {
    std::vector<std::string> texts{tool};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> vector;
    for (std::string& text : texts) vector.push_back(text.data());
    vector.push_back(nullptr);
    const std::vector<char*> environment = environmentFor(session);
    const SpawnSettings settings(session);
    pid_t child = 0;
    const int error = ::posix_spawn(&child, tool.c_str(), settings.actions(), settings.attributes(),
                                    vector.data(), environment.data());
    return error == 0 ? std::optional(child) : std::nullopt;
}

std::optional<ChildEnd> waitForChild(pid_t child) {
    int status = 0;
    while (::waitpid(child, &status, 0) < 0)
        if (errno != EINTR) return std::nullopt;
    return ChildEnd{WIFEXITED(status) ? std::optional<std::int32_t>(WEXITSTATUS(status)) : std::nullopt};
}

}  // namespace calorivo
