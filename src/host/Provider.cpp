#include "host/Provider.h"

#include "platform/linux/LinuxSmc.h"
#include "platform/simulated/KeysFileSmc.h"
#include "platform/simulated/SimulatedMac.h"

#include <algorithm>
#include <chrono>

namespace calorivo {

namespace {

/// What the file with the rules for naming a PC's sensors is called, in the program's and in the user's
/// folder.
constexpr std::string_view namingFileName = "/hwmon-names.conf";

std::unique_ptr<SensorProvider> machineProvider(const SourceOptions& options, const LinuxPaths& paths) {
    LinuxSmcOptions machine;
    if (options.sys)
        machine.sys = *options.sys;
    else
        machine.stateFolder = paths.stateFolder;  // a recorded machine leaves no trace
    for (const std::string& folder : {paths.dataFolder, paths.userFolder})
        if (!folder.empty()) machine.namingFiles.push_back(folder + std::string(namingFileName));
    machine.isUsingAllChips = options.isUsingAllChips;
    // A check that comes sooner than a value grows old must still read a new one.
    const auto interval = std::chrono::duration_cast<std::chrono::milliseconds>(options.interval);
    machine.minimumAge = std::min(machine.minimumAge, interval / 2);
    return std::make_unique<LinuxSmc>(std::move(machine));
}

}  // namespace

std::unique_ptr<SensorProvider> makeProvider(const SourceOptions& options, std::string_view keysText,
                                             const LinuxPaths& paths, const Dispatch& dispatch) {
    if (options.keysFile) return std::make_unique<KeysFileSmc>(keysText, *options.keysFile);
    if (options.simulationSeed) return std::make_unique<SimulatedMac>(dispatch, *options.simulationSeed);
    return machineProvider(options, paths);
}

}  // namespace calorivo
