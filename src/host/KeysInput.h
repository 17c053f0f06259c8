#pragma once

#include "platform/FileManager.h"

#include <string>

namespace calorivo {

/// The keys file that the user named, read once: all that ask for it get the same text, even if the file
/// changes meanwhile. Every other path goes to the files given.
class KeysInput final : public FileManager {
  public:
    /// `files` must outlive this object.
    explicit KeysInput(FileManager& files) : files_(files) {}

    /// Reads the file; what is wrong with it, as "FILE: reason" or "FILE:LINE: reason", empty when nothing
    /// is.
    [[nodiscard]] std::string load(const std::string& path);
    [[nodiscard]] const std::string& text() const { return contents_.text; }

    [[nodiscard]] FileContents contentsAtPath(const std::string& path, std::size_t limit) override;

  private:
    FileManager& files_;
    std::string path_;
    FileContents contents_;
};

}  // namespace calorivo
