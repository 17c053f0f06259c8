#pragma once

namespace calorivo {

/// What the desktop takes this process for. It begins as a background agent. Main thread.
class ProcessManager {
  public:
    ProcessManager() = default;
    ProcessManager(const ProcessManager&) = delete;
    ProcessManager& operator=(const ProcessManager&) = delete;
    virtual ~ProcessManager() = default;

    /// Gives the process its place among the running applications. For good: nothing takes it back.
    virtual void transformProcessTypeToForegroundApplication() = 0;
    /// Brings the process in front of the others.
    virtual void SetFrontProcess() = 0;
};

}  // namespace calorivo
