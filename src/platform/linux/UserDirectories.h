#pragma once

#include "platform/linux/LinuxPaths.h"

#include <string>
#include <string_view>

namespace calorivo {

/// The user's own folders, under whatever names the desktop's language gave them. They need not exist. All
/// are empty when the home folder is not known.
struct UserDirectories {
    std::string documents;
    std::string downloads;
    std::string desktop;
    friend bool operator==(const UserDirectories&, const UserDirectories&) = default;
};

/// As the text of a user-dirs.dirs file tells them. A folder that it does not name, or names by a relative
/// path, has its English name in `home`; one that was removed is `home` itself.
[[nodiscard]] UserDirectories userDirectories(std::string_view text, const std::string& home);

/// The same for the file in the user's configuration folder; without HOME the user's entry in the system's
/// list of users tells the home folder.
[[nodiscard]] UserDirectories userDirectories(const Environment& environment);

}  // namespace calorivo
