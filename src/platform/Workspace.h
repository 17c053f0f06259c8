#pragma once

#include <string_view>

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
};

}  // namespace calorivo
