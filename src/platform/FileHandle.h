#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace calorivo {

/// What is wrong, in the system's words and without the file's name ("No space left on device"); empty when
/// nothing is.
using FileProblem = std::string;

/// A file that is open for writing, closed when it is destroyed. One thread at a time.
class FileHandle {
  public:
    FileHandle() = default;
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;
    virtual ~FileHandle() = default;

    [[nodiscard]] virtual FileProblem seekToEndOfFile() = 0;
    /// Whether the file ends in the middle of a line; false where that cannot be seen.
    [[nodiscard]] virtual bool endsInsideLine() = 0;
    /// Writes at the end of the file, all of it or nothing, wherever the end has moved to meanwhile.
    [[nodiscard]] virtual FileProblem writeData(std::string_view data) = 0;
    /// Returns when everything is on the disk.
    [[nodiscard]] virtual FileProblem synchronizeFile() = 0;
};

/// A handle, or the reason why there is none.
struct OpenedFile {
    std::unique_ptr<FileHandle> handle;
    FileProblem problem;
};

/// Files that the program writes to. Only regular files of the user who runs it are touched: what is a link,
/// a FIFO, a device or somebody else's is a problem, and nothing ever waits for it. Any thread.
class FileHandles {
  public:
    FileHandles() = default;
    FileHandles(const FileHandles&) = delete;
    FileHandles& operator=(const FileHandles&) = delete;
    virtual ~FileHandles() = default;

    /// True for whatever is there.
    [[nodiscard]] virtual bool fileExistsAtPath(const std::string& path) = 0;
    /// Makes an empty file. One that is there is emptied.
    [[nodiscard]] virtual FileProblem createFileAtPath(const std::string& path) = 0;
    /// Opens a file that is there.
    [[nodiscard]] virtual OpenedFile fileHandleForWritingToURL(const std::string& url) = 0;
};

}  // namespace calorivo
