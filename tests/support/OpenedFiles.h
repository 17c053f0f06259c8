#pragma once

#include <map>
#include <set>
#include <string>

namespace calorivo::test {

/// Notes which files of a folder, and of the folders in it, anybody opens or reads from now on.
class OpenedFiles {
  public:
    /// Throws std::runtime_error when the system cannot tell.
    explicit OpenedFiles(const std::string& folder);
    ~OpenedFiles();
    OpenedFiles(const OpenedFiles&) = delete;
    OpenedFiles& operator=(const OpenedFiles&) = delete;

    /// Their paths below the folder, since the last call. Folders are not among them.
    [[nodiscard]] std::set<std::string> take();

  private:
    void watch(const std::string& folder, const std::string& prefix);

    int descriptor_;
    /// The path below the folder, with a slash at its end, by the number of the watch.
    std::map<int, std::string> prefixes_;
};

}  // namespace calorivo::test
