#pragma once

#include <cstddef>
#include <string>

namespace calorivo {

/// What reading a file gave: its contents, or the reason why there are none.
struct FileContents {
    std::string text;
    /// Empty when the file was read; else what is wrong, without the file's name ("Is a directory").
    std::string problem;
    [[nodiscard]] bool isRead() const { return problem.empty(); }
};

/// The file system, as far as the engine needs it.
class FileManager {
  public:
    FileManager() = default;
    FileManager(const FileManager&) = delete;
    FileManager& operator=(const FileManager&) = delete;
    virtual ~FileManager() = default;

    /// The whole regular file. It never blocks on a FIFO or device and never reads more than `limit` bytes:
    /// anything but a regular file, and a longer one, is a problem.
    [[nodiscard]] virtual FileContents contentsAtPath(const std::string& path, std::size_t limit) = 0;
};

}  // namespace calorivo
