#pragma once

#include "platform/FileHandle.h"
#include "platform/FileURL.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace calorivo::test {

/// Files in memory that can be made to fail. One thread.
class FakeFileHandles final : public FileHandles {
  public:
    /// The text of each file by its path.
    std::map<std::string, std::string> files;
    /// While one of these is not empty, that step of every file fails for this reason.
    FileProblem createProblem;
    FileProblem openProblem;
    FileProblem seekProblem;
    FileProblem writeProblem;
    FileProblem synchronizeProblem;
    /// What is done with files, in order: "open", "seek", "write", "synchronize", "close".
    std::vector<std::string> steps;
    /// What happens while a file is being opened.
    std::function<void()> whileOpening;

    [[nodiscard]] bool fileExistsAtPath(const std::string& path) override { return files.contains(path); }
    [[nodiscard]] FileProblem createFileAtPath(const std::string& path) override {
        if (createProblem.empty()) files[path].clear();
        return createProblem;
    }
    [[nodiscard]] OpenedFile fileHandleForWritingToURL(const std::string& url) override {
        steps.emplace_back("open");
        if (whileOpening) whileOpening();
        if (!openProblem.empty()) return {nullptr, openProblem};
        const auto file = files.find(pathOfFileURL(url));
        if (file == files.end()) return {nullptr, "No such file or directory"};
        return {std::make_unique<Handle>(*this, file->first), {}};
    }

  private:
    class Handle final : public FileHandle {
      public:
        Handle(FakeFileHandles& all, std::string path) : all_(all), path_(std::move(path)) {}
        ~Handle() override { all_.steps.emplace_back("close"); }

        [[nodiscard]] FileProblem seekToEndOfFile() override { return step("seek", all_.seekProblem); }
        [[nodiscard]] bool endsInsideLine() override {
            return !all_.files[path_].empty() && !all_.files[path_].ends_with('\n');
        }
        [[nodiscard]] FileProblem writeData(std::string_view data) override {
            FileProblem problem = step("write", all_.writeProblem);
            if (problem.empty()) all_.files[path_] += data;
            return problem;
        }
        [[nodiscard]] FileProblem synchronizeFile() override {
            return step("synchronize", all_.synchronizeProblem);
        }

      private:
        FileProblem step(const char* name, const FileProblem& problem) {
            all_.steps.emplace_back(name);
            return problem;
        }

        FakeFileHandles& all_;
        std::string path_;
    };
};

}  // namespace calorivo::test
