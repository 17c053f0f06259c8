#pragma once

#include "platform/FileLinks.h"
#include "platform/FileOperations.h"

namespace calorivo {

class Trash;

/// Links as the kernel has them; there are no alias files.
class LinuxFileLinks final : public FileLinks {
  public:
    [[nodiscard]] std::optional<FileType> lstat(const std::string& path) const override;
    [[nodiscard]] std::optional<std::string> destinationOfSymbolicLink(
        const std::string& path) const override;
    [[nodiscard]] std::optional<std::string> resolveAliasFile(const std::string& path) const override;
};

/// Files and folders of this machine.
class LinuxFileOperations final : public FileOperations {
  public:
    /// `trash` must outlive this object.
    explicit LinuxFileOperations(const Trash& trash) : trash_(trash) {}

    [[nodiscard]] bool fileExistsAtPath(const std::string& path) const override;
    [[nodiscard]] bool isDirectoryAtPath(const std::string& path) const override;
    [[nodiscard]] bool isWritableFileAtPath(const std::string& path) const override;
    [[nodiscard]] std::vector<std::string> contentsOfDirectoryAtPath(const std::string& path) const override;
    std::optional<Error> createDirectoryAtPath(const std::string& path) override;
    std::optional<Error> copyItemAtPathToPath(const std::string& source,
                                              const std::string& destination) override;
    bool recycle(const std::string& folder, const std::string& name) override;

  private:
    const Trash& trash_;
};

}  // namespace calorivo
