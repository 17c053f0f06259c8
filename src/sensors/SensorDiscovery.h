#pragma once

#include "platform/FileManager.h"
#include "platform/ModelTable.h"
#include "platform/SysCtl.h"
#include "sensors/KeysFile.h"
#include "sensors/SensorLists.h"
#include "sensors/SensorNaming.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace calorivo {

/// The arguments of the process that bear on discovery; index 0 is the program.
using ProcessArguments = std::vector<std::string>;

/// The machine's model identifier, "hw.model"; none when it is not known.
[[nodiscard]] std::optional<std::string> getMacModelString(SysCtl& sysCtl);
/// The identifier given with "-custommodel" as the first argument, else the machine's own.
[[nodiscard]] std::optional<std::string> modelNameFor(const ProcessArguments& arguments, SysCtl& sysCtl);
/// The path given with "-keysfile" as the first or the third argument; the third wins.
[[nodiscard]] std::optional<std::string> keysFilePath(const ProcessArguments& arguments);

/// What discovery asks of the floors above it. Each may be empty.
struct DiscoverySteps {
    /// Builds the fans; called after the temperature keys are known.
    std::function<void()> getAllFanSensors;
    /// A direct reading, °C.
    std::function<double(SensorKey)> getTemperatureForSensor;
    /// Rebuilds the source list; called when the lists are complete.
    std::function<void()> setupSourceList;
    /// Sensors for which the provider knows name and area. Those that the scan kept are taken as they stand,
    /// and the grouping rules see the other keys only. Without effect where a model table or a keys file is
    /// used. Those of an area that there is not are left to the grouping rules.
    std::vector<ModelTableEntry> machineSensors;
};

/// Finds out, once at start-up, which sensors the machine has, and fills the lists. Main thread.
class SensorDiscovery {
  public:
    /// Everything given here must outlive this object. `modelTables` are tried in order.
    SensorDiscovery(SensorLists& lists, const SensorNaming& naming, FileManager& files,
                    const std::vector<ModelTable>& modelTables)
        : lists_(lists), naming_(naming), files_(files), modelTables_(modelTables) {}

    /// The whole discovery. `lists.modelName` must have been set.
    void getAllSensors(const ProcessArguments& arguments, const DiscoverySteps& steps);
    void getAllTempSensorNames(const ProcessArguments& arguments);
    void findValidSensorNamesForModel(const std::optional<std::string>& model, const DiscoverySteps& steps);
    void addSensorWithNameToArray(SensorKey key, std::string name, KeyList& array);

    /// Why the keys file could not be read, for a message; empty when it was read or none was given.
    [[nodiscard]] const std::string& keysFileProblem() const { return keysFileProblem_; }
    /// Lines of the keys file that look like temperatures and could not be used as they stand.
    [[nodiscard]] const std::vector<KeysFileProblem>& keysFileLineProblems() const { return lineProblems_; }

  private:
    void scanKeysFile(const std::string& path);
    void scanLive();

    SensorLists& lists_;
    const SensorNaming& naming_;
    FileManager& files_;
    const std::vector<ModelTable>& modelTables_;
    std::string keysFileProblem_;
    std::vector<KeysFileProblem> lineProblems_;
};

}  // namespace calorivo
