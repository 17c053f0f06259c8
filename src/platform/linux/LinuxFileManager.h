#pragma once

#include "platform/FileManager.h"

namespace calorivo {

/// Files of the running system.
class LinuxFileManager final : public FileManager {
  public:
    [[nodiscard]] FileContents contentsAtPath(const std::string& path, std::size_t limit) override;
};

}  // namespace calorivo
