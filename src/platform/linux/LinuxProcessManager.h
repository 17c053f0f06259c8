#pragma once

#include "platform/ProcessManager.h"

namespace calorivo {

/// What this process is among the running applications. On Linux the windows alone decide what the desktop
/// shows, so the mode is only kept, for those who make windows. Main thread.
class LinuxProcessManager final : public ProcessManager {
  public:
    void transformProcessTypeToForegroundApplication() override { isForegroundApplication_ = true; }
    void SetFrontProcess() override { isFrontProcess_ = true; }

    /// A process that is none is an agent: it shows no window by itself.
    [[nodiscard]] bool isForegroundApplication() const { return isForegroundApplication_; }
    /// Whether the process asked to stand in front of the others.
    [[nodiscard]] bool isFrontProcess() const { return isFrontProcess_; }

  private:
    bool isForegroundApplication_ = false;
    bool isFrontProcess_ = false;
};

}  // namespace calorivo
