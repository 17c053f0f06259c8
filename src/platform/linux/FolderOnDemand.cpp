#include "platform/linux/FolderOnDemand.h"

#include <unistd.h>

#include <filesystem>
#include <utility>

namespace calorivo {

namespace {

std::string parentOf(const std::string& path) { return std::filesystem::path(path).parent_path().string(); }

}  // namespace

FolderOnDemand::FolderOnDemand(std::string folder, const FileLinks& links, FileOperations& files)
    : folder_(std::move(folder)), parent_(parentOf(folder_)), links_(links), files_(files) {}

bool FolderOnDemand::isMissing(const std::string& path) const {
    return !folder_.empty() && path == folder_ && !links_.lstat(path) && files_.isDirectoryAtPath(parent_);
}

std::optional<FileType> FolderOnDemand::lstat(const std::string& path) const {
    return isMissing(path) ? FileType::directory : links_.lstat(path);
}

bool FolderOnDemand::isWritableFileAtPath(const std::string& path) const {
    return files_.isWritableFileAtPath(isMissing(path) ? parent_ : path);
}

std::optional<Error> FolderOnDemand::copyItemAtPathToPath(const std::string& source,
                                                          const std::string& destination) {
    const bool isToBeMade = isMissing(parentOf(destination));
    if (isToBeMade)
        if (std::optional<Error> error = files_.createDirectoryAtPath(folder_)) return error;
    std::optional<Error> error = files_.copyItemAtPathToPath(source, destination);
    // Only an empty folder goes by this.
    if (error && isToBeMade) ::rmdir(folder_.c_str());
    return error;
}

}  // namespace calorivo
