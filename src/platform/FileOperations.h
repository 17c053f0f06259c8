#pragma once

#include "platform/Error.h"

#include <optional>
#include <string>
#include <vector>

namespace calorivo {

/// Looking at and changing files and folders. Links are followed where nothing else is said. Any thread.
class FileOperations {
  public:
    FileOperations() = default;
    FileOperations(const FileOperations&) = delete;
    FileOperations& operator=(const FileOperations&) = delete;
    virtual ~FileOperations() = default;

    [[nodiscard]] virtual bool fileExistsAtPath(const std::string& path) const = 0;
    [[nodiscard]] virtual bool isDirectoryAtPath(const std::string& path) const = 0;
    /// Whether this process may write to it. False for what does not exist.
    [[nodiscard]] virtual bool isWritableFileAtPath(const std::string& path) const = 0;
    /// The names in a folder, in no order; empty when it cannot be read.
    [[nodiscard]] virtual std::vector<std::string> contentsOfDirectoryAtPath(
        const std::string& path) const = 0;

    /// Creates the folder and those above it. No error when it exists.
    virtual std::optional<Error> createDirectoryAtPath(const std::string& path) = 0;
    /// Copies a file or a whole folder, symbolic links as links. What exists at the destination is an error;
    /// after an error nothing is left there.
    virtual std::optional<Error> copyItemAtPathToPath(const std::string& source,
                                                      const std::string& destination) = 0;
    /// Puts the entry `name` of `folder` into the Trash. False when it is still where it was.
    virtual bool recycle(const std::string& folder, const std::string& name) = 0;
};

}  // namespace calorivo
