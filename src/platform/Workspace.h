#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace calorivo {

/// Opens things in the programs that the user chose for them. Main thread.
class Workspace {
  public:
    Workspace() = default;
    Workspace(const Workspace&) = delete;
    Workspace& operator=(const Workspace&) = delete;
    virtual ~Workspace() = default;

    /// False when nothing could be started for it.
    virtual bool openURL(std::string_view url) = 0;
    /// The file or folder at this path, in the program for its kind. False when nothing could be started for
    /// it.
    virtual bool openFile(std::string_view fullPath) = 0;
    /// Shows the files of these "file:" addresses, selected, in the program that shows folders.
    virtual void activateFileViewerSelectingURLs(const std::vector<std::string>& urls) = 0;
};

}  // namespace calorivo
