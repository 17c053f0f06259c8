#pragma once

#include "platform/FileHandle.h"
#include "platform/linux/FileDescriptor.h"

namespace calorivo {

/// A regular file, open to be appended to.
class LinuxFileHandle final : public FileHandle {
  public:
    explicit LinuxFileHandle(FileDescriptor file) : file_(std::move(file)) {}

    [[nodiscard]] FileProblem seekToEndOfFile() override;
    [[nodiscard]] bool endsInsideLine() override;
    [[nodiscard]] FileProblem writeData(std::string_view data) override;
    [[nodiscard]] FileProblem synchronizeFile() override;

  private:
    void takeBack(std::size_t length) const;

    FileDescriptor file_;
};

class LinuxFileHandles final : public FileHandles {
  public:
    [[nodiscard]] bool fileExistsAtPath(const std::string& path) override;
    [[nodiscard]] FileProblem createFileAtPath(const std::string& path) override;
    [[nodiscard]] OpenedFile fileHandleForWritingToURL(const std::string& url) override;
};

}  // namespace calorivo
