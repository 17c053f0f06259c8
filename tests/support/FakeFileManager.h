#pragma once

#include "platform/FileManager.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace calorivo::test {

/// Files in memory. A path that was not added is missing.
class FakeFileManager final : public FileManager {
  public:
    FakeFileManager& add(const std::string& path, std::string text) {
        files_[path] = {std::move(text), {}};
        return *this;
    }
    FakeFileManager& fail(const std::string& path, std::string problem) {
        files_[path] = {{}, std::move(problem)};
        return *this;
    }

    /// Every path that was read, in order.
    std::vector<std::string> reads;

    [[nodiscard]] FileContents contentsAtPath(const std::string& path, std::size_t limit) override {
        reads.push_back(path);
        const auto found = files_.find(path);
        if (found == files_.end()) return {{}, "No such file or directory"};
        if (found->second.text.size() > limit) return {{}, "File too large"};
        return found->second;
    }

  private:
    std::map<std::string, FileContents> files_;
};

}  // namespace calorivo::test
