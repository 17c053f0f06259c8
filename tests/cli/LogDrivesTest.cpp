#include "cli/LogDrives.h"

#include "support/Machine.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>
#include <vector>

namespace calorivo {
namespace {

/// What a test says is found at each reading.
struct ChangingController final : SmartController {
    explicit ChangingController(std::vector<std::vector<DriveDictionary>> all) : readings(std::move(all)) {}
    void update() override { ++reading; }
    [[nodiscard]] std::vector<DriveDictionary> allDisks() const override { return readings.at(reading - 1); }

    std::vector<std::vector<DriveDictionary>> readings;
    std::size_t reading = 0;
};

TEST(LogDrives, KeepTheirColumnsWhateverComesAndGoes) {
    test::Machine machine;
    LogDrives drives(std::make_unique<ChangingController>(std::vector<std::vector<DriveDictionary>>{
                         {{" Disk A ", "1", 38}, {"Disk B", "2", 0}},
                         {{"Disk A", "1", 39}, {"Disk B", "2", 41}},
                         {{"Disk C", "3", 60}, {"Disk B", "2", 42}},
                         {}}),
                     machine.reader);
    EXPECT_FALSE(drives.isEmpty());
    EXPECT_EQ(drives.titles("C"), ",Disk A (C),Disk B (C)");
    EXPECT_EQ(drives.readFields(), ",39,41");
    EXPECT_EQ(drives.readFields(), ",N/A,42");
    EXPECT_EQ(drives.readFields(), ",N/A,N/A");
}

TEST(LogDrives, WriteFahrenheitAndWhatIsNotKnown) {
    test::Machine machine;
    machine.fahrenheit();
    const std::vector<DriveDictionary> found{{"Disk A", "1", 38}, {"Disk B", "2", 0}};
    LogDrives drives(std::make_unique<ChangingController>(std::vector{found, found}), machine.reader);
    EXPECT_EQ(drives.titles("F"), ",Disk A (F),Disk B (F)");
    EXPECT_EQ(drives.readFields(), ",100,N/A");
}

TEST(LogDrives, AreNoneWithoutAController) {
    test::Machine machine;
    LogDrives drives(nullptr, machine.reader);
    EXPECT_TRUE(drives.isEmpty());
    EXPECT_EQ(drives.titles("C"), "");
    EXPECT_EQ(drives.readFields(), "");
}

}  // namespace
}  // namespace calorivo
