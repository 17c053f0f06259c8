#pragma once

#include "app/GraphicsSwitcher.h"
#include "host/SourceOptions.h"
#include "platform/linux/LinuxDisplays.h"
#include "platform/linux/LinuxGraphicsControl.h"

#include <functional>
#include <memory>
#include <string>

namespace calorivo {

/// The graphics processors of the machine that is shown, with all that answers for them. Making it does
/// nothing; files are read when something is asked.
class Graphics {
  public:
    /// Watches the graphics below this root of sysfs. `dispatch` and `systemLog` must outlive it.
    Graphics(std::string sys, LinuxDisplaysOptions watching, Dispatch& dispatch, SystemLog& systemLog);
    Graphics(const Graphics&) = delete;
    Graphics& operator=(const Graphics&) = delete;

    /// Observations that it gives must be dropped before this object goes.
    [[nodiscard]] GraphicsSwitcher& switcher() { return switcher_; }

  private:
    GraphicsReader reader_;
    LinuxGraphicsControl control_;
    LinuxDisplays displays_;
    GraphicsSwitcher switcher_;
};

/// The graphics of the source that the options name: this machine's, or those of a recorded tree; null where
/// the source has none (a keys file, the simulation). `machineHasSlept` is as in LinuxDisplaysOptions.
[[nodiscard]] std::unique_ptr<Graphics> makeGraphics(const SourceOptions& options, Dispatch& dispatch,
                                                     SystemLog& systemLog,
                                                     std::function<void()> machineHasSlept = {});

}  // namespace calorivo
