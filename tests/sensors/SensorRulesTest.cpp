#include "sensors/SensorRules.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

TEST(SensorRules, AcceptTemperaturesStrictlyBetween0And120) {
    EXPECT_FALSE(isTempValid(0.0));
    EXPECT_TRUE(isTempValid(0.01));
    EXPECT_TRUE(isTempValid(119.99));
    EXPECT_FALSE(isTempValid(120.0));
    EXPECT_FALSE(isTempValid(-5.0));
}

/// The answers of the four GPU questions: integrated, its proximity, discrete, its proximity.
std::string gpuAnswers(const SensorLists& lists, SensorKey key) {
    std::string answers;
    for (const auto question : {isSensorIntegratedGPU, isSensorIntegratedGPU_Proximity, isSensorDiscreteGPU,
                                isSensorDiscreteGPU_Proximity})
        answers += question(lists, key) ? 'y' : 'n';
    return answers;
}

TEST(SensorRules, KnowBothGPUsWhenBothDiodesAreValid) {
    SensorLists lists;
    lists.validSensorNames = {"TG1D", "TC0P", "TG0D"};
    EXPECT_TRUE(hasDualGPUSensors(lists));
    EXPECT_EQ(gpuAnswers(lists, "TG0D"), "ynnn");
    EXPECT_EQ(gpuAnswers(lists, "TG0P"), "nynn");
    EXPECT_EQ(gpuAnswers(lists, "TG1D"), "nnyn");
    EXPECT_EQ(gpuAnswers(lists, "TG1P"), "nnny");
    EXPECT_EQ(gpuAnswers(lists, "TG1d"), "nnnn");
    EXPECT_EQ(gpuAnswers(lists, "TG2D"), "nnnn");
}

TEST(SensorRules, KnowNoGPUWhenOneDiodeIsMissing) {
    for (const SensorKey present : {SensorKey("TG0D"), SensorKey("TG1D")}) {
        SensorLists lists;
        lists.validSensorNames = {present, "TG0P", "TG1P", "TG1d", "TG0d"};
        lists.tempSensorNames = {"TG0D", "TG1D"};
        EXPECT_FALSE(hasDualGPUSensors(lists));
        for (const SensorKey key :
             {SensorKey("TG0D"), SensorKey("TG0P"), SensorKey("TG1D"), SensorKey("TG1P")})
            EXPECT_EQ(gpuAnswers(lists, key), "nnnn") << key.view();
    }
}

TEST(SensorRules, KnowTheThreeRelativeKeys) {
    for (const SensorKey key : {SensorKey("TCAC"), SensorKey("TCBC"), SensorKey("TCXr")})
        EXPECT_TRUE(isSensorRelativeCPU(key)) << key.view();
    for (const SensorKey key : {SensorKey("TCCC"), SensorKey("TCXR"), SensorKey("TCAc"), SensorKey("TC0C")})
        EXPECT_FALSE(isSensorRelativeCPU(key)) << key.view();
}

}  // namespace
}  // namespace calorivo
