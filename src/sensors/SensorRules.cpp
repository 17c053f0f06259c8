#include "sensors/SensorRules.h"

namespace calorivo {

bool hasDualGPUSensors(const SensorLists& lists) {
    return lists.validSensorNames.containsString("TG0D") && lists.validSensorNames.containsString("TG1D");
}

bool isSensorIntegratedGPU(const SensorLists& lists, SensorKey key) {
    return key == "TG0D" && hasDualGPUSensors(lists);
}

bool isSensorIntegratedGPU_Proximity(const SensorLists& lists, SensorKey key) {
    return key == "TG0P" && hasDualGPUSensors(lists);
}

bool isSensorDiscreteGPU(const SensorLists& lists, SensorKey key) {
    return key == "TG1D" && hasDualGPUSensors(lists);
}

bool isSensorDiscreteGPU_Proximity(const SensorLists& lists, SensorKey key) {
    return key == "TG1P" && hasDualGPUSensors(lists);
}

bool isSensorRelativeCPU(SensorKey key) { return key == "TCAC" || key == "TCBC" || key == "TCXr"; }

}  // namespace calorivo
