#pragma once

#include <optional>
#include <string>

namespace calorivo {

/// What an entry of a folder is. Everything that is neither folder nor symbolic link is `other`.
enum class FileType { directory, symbolicLink, other };

/// Where the links of the file system lead. Any thread.
class FileLinks {
  public:
    FileLinks() = default;
    FileLinks(const FileLinks&) = delete;
    FileLinks& operator=(const FileLinks&) = delete;
    virtual ~FileLinks() = default;

    /// The entry itself: a link is not followed. None when the system does not tell.
    [[nodiscard]] virtual std::optional<FileType> lstat(const std::string& path) const = 0;
    /// The text in a symbolic link; none for everything else.
    [[nodiscard]] virtual std::optional<std::string> destinationOfSymbolicLink(
        const std::string& path) const = 0;
    /// What an alias file stands for, one hop only and without asking the user anything. None for everything
    /// else, and on systems without alias files.
    [[nodiscard]] virtual std::optional<std::string> resolveAliasFile(const std::string& path) const = 0;
};

}  // namespace calorivo
