#pragma once

#include "platform/SearchPath.h"

#include <string>
#include <vector>

namespace calorivo {

/// Where this user's and this machine's standard folders are.
class LinuxSearchPath final : public SearchPath {
  public:
    /// The folders that the user may have placed anywhere. Each may be empty: then there is none.
    struct Folders {
        std::string home;
        /// "$XDG_DATA_HOME".
        std::string data;
        /// "$XDG_DOWNLOAD_DIR" of the user's folders.
        std::string downloads;
        /// Where the machine has programs that no package brought; a new one goes into the last of them.
        std::vector<std::string> applications = {"/opt"};
    };

    explicit LinuxSearchPath(Folders folders) : folders_(std::move(folders)) {}

    [[nodiscard]] std::vector<std::string> directoriesInDomains(std::int32_t directory,
                                                                std::int32_t domainMask) const override;

  private:
    const Folders folders_;
};

}  // namespace calorivo
