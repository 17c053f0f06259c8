#pragma once

#include "platform/ServiceManagement.h"
#include "platform/linux/LinuxPaths.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace calorivo {

/// Where login items live, and what is started.
struct LoginItemPlaces {
    /// The user's configuration folder; empty when there is none: then nothing can be enabled.
    std::string configurationFolder;
    /// Those of the system, the most important one first.
    std::vector<std::string> systemFolders;
    /// The absolute path of the program.
    std::string program;
    friend bool operator==(const LoginItemPlaces&, const LoginItemPlaces&) = default;
};

/// Variables that are unset, empty or not absolute count as unset. A program that runs out of an image file
/// ($APPIMAGE) is started by that file: its own path is gone after this run.
[[nodiscard]] LoginItemPlaces loginItemPlaces(const Environment& environment, const std::string& executable);

/// The desktop entry that starts the program at login with "--login"; empty for a path that no desktop entry
/// can hold (not UTF-8).
[[nodiscard]] std::string loginItemEntry(const std::string& program);

/// Login items as the desktop's autostart entries, one file for each identifier. It writes only what is not
/// said already, so that lines which the user added stay, and a setting that is applied at every start leaves
/// the file alone. Main thread.
class LoginItem final : public ServiceManagement {
  public:
    explicit LoginItem(LoginItemPlaces places) : places_(std::move(places)) {}

    /// Creates the folders it needs for their owner only. An item of the same name that the system starts for
    /// every user is hidden when disabled.
    bool SMLoginItemSetEnabled(std::string_view identifier, bool isEnabled) override;

  private:
    [[nodiscard]] bool enable(const std::string& name) const;
    [[nodiscard]] bool disable(const std::string& name) const;
    [[nodiscard]] bool write(const std::string& name, const std::string& text) const;
    [[nodiscard]] bool isStartedBySystem(const std::string& name) const;

    LoginItemPlaces places_;
};

}  // namespace calorivo
