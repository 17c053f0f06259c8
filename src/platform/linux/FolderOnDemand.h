#pragma once

#include "platform/FileLinks.h"
#include "platform/FileOperations.h"

#include <string>

namespace calorivo {

/// The file system with one folder that counts as there before it is: it is made when something is first
/// copied into it, and goes again if that fails. Until then nothing shows that it was thought of. Any thread.
class FolderOnDemand final : public FileLinks, public FileOperations {
  public:
    /// `folder` is an absolute path without links in it; empty for none. What is referred to must outlive
    /// this object.
    FolderOnDemand(std::string folder, const FileLinks& links, FileOperations& files);

    [[nodiscard]] std::optional<FileType> lstat(const std::string& path) const override;
    [[nodiscard]] std::optional<std::string> destinationOfSymbolicLink(
        const std::string& path) const override {
        return links_.destinationOfSymbolicLink(path);
    }
    [[nodiscard]] std::optional<std::string> resolveAliasFile(const std::string& path) const override {
        return links_.resolveAliasFile(path);
    }

    [[nodiscard]] bool fileExistsAtPath(const std::string& path) const override {
        return files_.fileExistsAtPath(path);
    }
    [[nodiscard]] bool isDirectoryAtPath(const std::string& path) const override {
        return files_.isDirectoryAtPath(path);
    }
    /// Of the folder that is still missing: whether it may be made.
    [[nodiscard]] bool isWritableFileAtPath(const std::string& path) const override;
    [[nodiscard]] std::vector<std::string> contentsOfDirectoryAtPath(const std::string& path) const override {
        return files_.contentsOfDirectoryAtPath(path);
    }
    std::optional<Error> createDirectoryAtPath(const std::string& path) override {
        return files_.createDirectoryAtPath(path);
    }
    std::optional<Error> copyItemAtPathToPath(const std::string& source,
                                              const std::string& destination) override;
    bool recycle(const std::string& folder, const std::string& name) override {
        return files_.recycle(folder, name);
    }

  private:
    /// Whether it is the folder, and nothing is there yet.
    [[nodiscard]] bool isMissing(const std::string& path) const;

    const std::string folder_;
    const std::string parent_;
    const FileLinks& links_;
    FileOperations& files_;
};

}  // namespace calorivo
