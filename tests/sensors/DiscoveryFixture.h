#pragma once

#include "sensors/Areas.h"
#include "sensors/SensorDiscovery.h"
#include "smc/SmcReaders.h"
#include "support/FakeFileManager.h"
#include "support/FixedGPUNames.h"
#include "support/PrintKeys.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

namespace calorivo::test {

/// What a test of discovery starts from: empty lists, no files, no model tables, direct readings.
class DiscoveryFixture : public testing::Test {
  protected:
    DiscoveryFixture() {
        steps.getTemperatureForSensor = [](SensorKey key) { return smcTemperature(key.view()); };
    }

    /// The lists that are not empty, by area.
    [[nodiscard]] std::map<std::string, KeyList> byArea() const {
        std::map<std::string, KeyList> filled;
        for (const auto list : validSensorOrder)
            if (!(lists.*list).isEmpty()) filled[std::string(areaOf(list).name)] = lists.*list;
        return filled;
    }
    [[nodiscard]] std::vector<std::string> validNames() const {
        std::vector<std::string> names;
        for (const SensorKey key : lists.validSensorNames)
            names.push_back(naming.convertKeyNameToHumanString(key));
        return names;
    }
    void discover(const ProcessArguments& arguments = {"calorivo"}) {
        discovery.getAllSensors(arguments, steps);
    }

    SensorLists lists;
    FixedGPUNames gpuNames;
    SensorNaming naming{lists, gpuNames};
    FakeFileManager files;
    std::vector<ModelTable> modelTables;
    DiscoverySteps steps;
    SensorDiscovery discovery{lists, naming, files, modelTables};
};

using ByArea = std::map<std::string, KeyList>;

}  // namespace calorivo::test
