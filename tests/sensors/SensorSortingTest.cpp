#include "sensors/SensorGrouping.h"
#include "sensors/SensorNaming.h"
#include "support/FixedGPUNames.h"
#include "support/PrintKeys.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace calorivo {
namespace {

class SensorSorting : public testing::Test {
  protected:
    [[nodiscard]] KeyList sorted(KeyList list) const {
        sortSensorNamesAndRemoveDuplicates(list, lists, naming);
        return list;
    }

    void name(SensorKey key, std::string name) {
        lists.customSensorsToReadableNamesMap[key] = std::move(name);
    }

    SensorLists lists;
    test::FixedGPUNames gpuNames;
    SensorNaming naming{lists, gpuNames};
};

TEST_F(SensorSorting, RemovesLowerCaseTwins) {
    EXPECT_EQ(sorted({"TC2c", "TC2C", "TC3c"}), (KeyList{"TC2C", "TC3c"}));
    EXPECT_EQ(sorted({"TC2C", "TC2c", "TC2c"}), (KeyList{"TC2C"}));
}

TEST_F(SensorSorting, KeepsLowerCaseKeysWithoutATwinInTheSameList) {
    lists.validSensorNames = {"TC0P"};
    EXPECT_EQ(sorted({"TC0p", "TC1P"}), (KeyList{"TC0p", "TC1P"}));
    EXPECT_EQ(sorted({"Tp0P", "Tp0p"}), (KeyList{"Tp0p", "Tp0P"}));
}

TEST_F(SensorSorting, RemovesEveryMixedKeyWhoseUpperCaseFormIsThere) {
    EXPECT_EQ(sorted({"TP0P", "Tp0P", "TP0p", "Tp0p"}), (KeyList{"TP0P"}));
}

TEST_F(SensorSorting, KeepsTwinsWhereTheModelHasATableOfItsOwn) {
    lists.isUsingCustomSensorNames = true;
    EXPECT_EQ(sorted({"TC2c", "TC2C"}), (KeyList{"TC2c", "TC2C"}));
}

TEST_F(SensorSorting, KeepsATwinThatHasANameOfItsOwn) {
    name("TC2c", "CPU Core 9");
    name("TC3C", "CPU Core 3");
    EXPECT_EQ(sorted({"TC2c", "TC2C", "TC3c", "TC3C"}), (KeyList{"TC2C", "TC3C", "TC2c"}));
}

TEST_F(SensorSorting, KeepsExactDuplicates) {
    EXPECT_EQ(sorted({"TCXc", "TC0D", "TCXc"}), (KeyList{"TC0D", "TCXc", "TCXc"}));
}

TEST_F(SensorSorting, SortsByReadableNameAndNotByKey) {
    EXPECT_EQ(sorted({"Th1H", "TA0P", "TPCD", "Th2H", "Ts0S"}),
              (KeyList{"TA0P", "Ts0S", "Th2H", "TPCD", "Th1H"}));
}

TEST_F(SensorSorting, TakesNoAccountOfCase) {
    lists.isUsingCustomSensorNames = true;
    name("TC0P", "beta");
    name("TC1P", "ALPHA");
    name("TC2P", "Gamma");
    name("TC3P", "alpha 2");
    EXPECT_EQ(sorted({"TC2P", "TC0P", "TC3P", "TC1P"}), (KeyList{"TC1P", "TC3P", "TC0P", "TC2P"}));
}

TEST_F(SensorSorting, KeepsTheOrderOfEqualNames) {
    name("TC9P", "same");
    name("TC1P", "SAME");
    name("TC5P", "Same");
    EXPECT_EQ(sorted({"TC9P", "TC1P", "TC5P"}), (KeyList{"TC9P", "TC1P", "TC5P"}));
    EXPECT_EQ(sorted({"TC5P", "TC1P", "TC9P"}), (KeyList{"TC5P", "TC1P", "TC9P"}));
}

TEST_F(SensorSorting, ComparesNumbersAsText) {
    lists.validSensorNames = {"TG0D"};
    EXPECT_EQ(sorted({"TG9P", "TG2P", "TG3P"}), (KeyList{"TG9P", "TG2P", "TG3P"}));
}

TEST_F(SensorSorting, LeavesAnEmptyListEmpty) { EXPECT_EQ(sorted({}), KeyList{}); }

TEST_F(SensorSorting, SortsTheAreasOwnListInPlace) {
    lists.batterySensorNames = {"TB0T", "TB2T", "TB1T"};
    sortSensorNamesAndRemoveDuplicates(lists.batterySensorNames, lists, naming);
    EXPECT_EQ(lists.batterySensorNames, (KeyList{"TB1T", "TB2T", "TB0T"}));
}

}  // namespace
}  // namespace calorivo
