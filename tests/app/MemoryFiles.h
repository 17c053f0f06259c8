#pragma once

#include "platform/FileLinks.h"
#include "platform/FileOperations.h"
#include "platform/SearchPath.h"

#include <cerrno>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace calorivo::test {

/// Links in memory. A path that was not added is missing; the root is always there.
class MemoryLinks final : public FileLinks {
  public:
    MemoryLinks& folder(const std::string& path) { return add(path, FileType::directory, {}); }
    MemoryLinks& file(const std::string& path) { return add(path, FileType::other, {}); }
    MemoryLinks& link(const std::string& path, std::string to) {
        return add(path, FileType::symbolicLink, std::move(to));
    }
    MemoryLinks& alias(const std::string& path, std::string to) {
        return add(path, FileType::other, std::move(to));
    }

    [[nodiscard]] std::optional<FileType> lstat(const std::string& path) const override {
        ++lookups;
        if (path == "/") return FileType::directory;
        const auto found = entries_.find(path);
        return found != entries_.end() ? std::optional(found->second.first) : std::nullopt;
    }
    [[nodiscard]] std::optional<std::string> destinationOfSymbolicLink(
        const std::string& path) const override {
        return target(path, FileType::symbolicLink);
    }
    [[nodiscard]] std::optional<std::string> resolveAliasFile(const std::string& path) const override {
        return target(path, FileType::other);
    }

    mutable int lookups = 0;

  private:
    MemoryLinks& add(const std::string& path, FileType type, std::optional<std::string> to) {
        entries_[path] = {type, std::move(to)};
        return *this;
    }
    [[nodiscard]] std::optional<std::string> target(const std::string& path, FileType type) const {
        const auto found = entries_.find(path);
        return found != entries_.end() && found->second.first == type ? found->second.second : std::nullopt;
    }

    std::map<std::string, std::pair<FileType, std::optional<std::string>>> entries_;
};

/// Folders and files in memory; the changes are written down and carried out, unless they are to fail.
class MemoryOperations final : public FileOperations {
  public:
    explicit MemoryOperations(std::vector<std::string>& calls) : calls_(calls) {}

    std::set<std::string> existing;
    std::map<std::string, std::vector<std::string>> folders;
    std::set<std::string> readOnly;
    std::optional<Error> creationError;
    std::optional<Error> copyError;
    std::set<std::string> cannotBeTrashed;

    [[nodiscard]] bool fileExistsAtPath(const std::string& path) const override {
        return existing.contains(path) || folders.contains(path);
    }
    [[nodiscard]] bool isDirectoryAtPath(const std::string& path) const override {
        return folders.contains(path);
    }
    [[nodiscard]] bool isWritableFileAtPath(const std::string& path) const override {
        return fileExistsAtPath(path) && !readOnly.contains(path);
    }
    [[nodiscard]] std::vector<std::string> contentsOfDirectoryAtPath(const std::string& path) const override {
        const auto found = folders.find(path);
        return found != folders.end() ? found->second : std::vector<std::string>();
    }
    std::optional<Error> createDirectoryAtPath(const std::string& path) override {
        calls_.push_back("createDirectory " + path);
        if (!creationError) folders.try_emplace(path);
        return creationError;
    }
    std::optional<Error> copyItemAtPathToPath(const std::string& source,
                                              const std::string& destination) override {
        calls_.push_back("copy " + source + " to " + destination);
        if (!copyError) existing.insert(destination);
        return copyError;
    }
    bool recycle(const std::string& folder, const std::string& name) override {
        calls_.push_back("recycle " + name + " of " + folder);
        const std::string path = folder + '/' + name;
        if (cannotBeTrashed.contains(path)) return false;
        existing.erase(path);
        return true;
    }

  private:
    std::vector<std::string>& calls_;
};

/// The standard folders, by number and domain.
class FixedSearchPath final : public SearchPath {
  public:
    std::map<std::pair<std::int32_t, std::int32_t>, std::vector<std::string>> folders;

    [[nodiscard]] std::vector<std::string> directoriesInDomains(std::int32_t directory,
                                                                std::int32_t domainMask) const override {
        const auto found = folders.find({directory, domainMask});
        return found != folders.end() ? found->second : std::vector<std::string>();
    }
};

}  // namespace calorivo::test
