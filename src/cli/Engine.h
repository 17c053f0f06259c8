#pragma once

#include "monitor/CheckCycle.h"
#include "sensors/SensorDiscovery.h"

#include <optional>
#include <string>
#include <vector>

namespace calorivo {

class SensorProvider;

/// The monitoring engine without a desktop: owns its state and its parts, and wires them. Main thread.
class Engine {
  public:
    /// All must outlive it. The SMC connection must be open. Without names for graphics processors they are
    /// numbered.
    Engine(Dispatch& dispatch, Queue& checkQueue, FileManager& files, const CycleOutputs& outputs,
           GPUNames* gpuNames = nullptr);

    /// Finds the sensors and fans. `lists.modelName` must have been set.
    void discover(const ProcessArguments& arguments, std::vector<ModelTable> modelTables,
                  std::vector<ModelTableEntry> machineSensors);

  private:
    struct NoGPUNames final : GPUNames {
        [[nodiscard]] std::optional<std::string> integratedGPUName() override { return std::nullopt; }
        [[nodiscard]] std::optional<std::string> discreteGPUName() override { return std::nullopt; }
    };
    /// Nothing is kept between two runs.
    struct NoUserDefaults final : UserDefaults {
        void synchronize() override {}
    };
    NoGPUNames noGPUNames_;
    NoUserDefaults userDefaults_;
    FileManager& files_;
    std::vector<ModelTable> modelTables_;

  public:
    SensorLists lists;
    Preferences preferences;
    GPUState gpu;
    SensorNaming naming;
    TemperatureReader reader{lists, preferences, gpu};
    Fans fans{lists, userDefaults_};
    Averages averages;
    CheckCycle cycle;
    /// Lines of the keys file that look like temperatures and could not be used as they stand.
    std::vector<KeysFileProblem> keysFileLineProblems;
};

}  // namespace calorivo
