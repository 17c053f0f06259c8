#include "host/Graphics.h"

#include <utility>

namespace calorivo {

Graphics::Graphics(std::string sys, LinuxDisplaysOptions watching, Dispatch& dispatch, SystemLog& systemLog)
    : reader_(std::move(sys)),
      control_(reader_),
      displays_(reader_, std::move(watching)),
      // Without a keys file, that is: with one there are no graphics at all.
      switcher_({control_, displays_, dispatch, systemLog, {}}) {}

std::unique_ptr<Graphics> makeGraphics(const SourceOptions& options, Dispatch& dispatch, SystemLog& systemLog,
                                       std::function<void()> machineHasSlept) {
    if (options.keysFile || options.simulationSeed) return nullptr;
    LinuxDisplaysOptions watching;
    watching.machineHasSlept = std::move(machineHasSlept);
    if (options.sys) {
        // What happens to this machine is nothing to a recorded one.
        watching.listen = nullptr;
        watching.asleep = [] { return std::chrono::nanoseconds(0); };
    }
    return std::make_unique<Graphics>(options.sys.value_or("/sys"), std::move(watching), dispatch, systemLog);
}

}  // namespace calorivo
