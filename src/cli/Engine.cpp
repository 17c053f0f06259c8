#include "cli/Engine.h"

#include <utility>

namespace calorivo {

Engine::Engine(Dispatch& dispatch, Queue& checkQueue, FileManager& files, const CycleOutputs& outputs,
               GPUNames* gpuNames)
    : files_(files),
      naming(lists, gpuNames != nullptr ? *gpuNames : noGPUNames_),
      cycle({dispatch, checkQueue, lists, naming, reader, fans, preferences, gpu, averages, outputs}) {}

void Engine::discover(const ProcessArguments& arguments, std::vector<ModelTable> modelTables,
                      std::vector<ModelTableEntry> machineSensors) {
    modelTables_ = std::move(modelTables);
    SensorDiscovery discovery(lists, naming, files_, modelTables_);
    DiscoverySteps steps;
    steps.getAllFanSensors = [this] { fans.getAllFanSensors(); };
    steps.getTemperatureForSensor = [this](SensorKey key) { return reader.getTemperatureForSensor(key); };
    steps.machineSensors = std::move(machineSensors);
    discovery.getAllSensors(arguments, steps);
    keysFileLineProblems = discovery.keysFileLineProblems();
}

}  // namespace calorivo
