#include "monitor/DriveTemperatures.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <thread>
#include <utility>
#include <vector>

namespace calorivo {
namespace {

/// Finds what it is given, one list at each update.
class FakeController final : public SmartController {
  public:
    explicit FakeController(std::vector<std::vector<DriveDictionary>> updates)
        : updates_(std::move(updates)) {}
    void update() override { ++position_; }
    [[nodiscard]] std::vector<DriveDictionary> allDisks() const override {
        return updates_.at(position_ - 1);
    }

  private:
    std::vector<std::vector<DriveDictionary>> updates_;
    std::size_t position_ = 0;
};

const DriveDictionary disk{"Disk", "A1", 37};
const DriveDictionary other{"Other", "B2", 51};

TEST(DriveTemperatures, ReplacesTheListAtEachReading) {
    SmartInfo smartInfo;
    int made = 0;
    DriveTemperatures drives(smartInfo, [&] {
        ++made;
        return std::make_unique<FakeController>(
            std::vector<std::vector<DriveDictionary>>{{disk, other}, {other}});
    });
    drives.createSmartController();
    drives.createSmartController();
    EXPECT_EQ(made, 1);
    drives.getDiskTemps();
    EXPECT_EQ(smartInfo.drives(), (std::vector{disk, other}));
    EXPECT_EQ(drives.driveTemperatures(), (std::vector{37.0F, 51.0F}));
    drives.getDiskTemps();
    EXPECT_EQ(smartInfo.drives(), (std::vector{other}));
}

TEST(DriveTemperatures, ReadsNothingThatIsNotWanted) {
    SmartInfo smartInfo;
    bool isWanted = false;
    DriveTemperatures drives(
        smartInfo,
        [] { return std::make_unique<FakeController>(std::vector<std::vector<DriveDictionary>>{{disk}}); },
        [&isWanted] { return isWanted; });
    drives.createSmartController();
    drives.getDiskTemps();
    EXPECT_TRUE(smartInfo.drives().empty());
    isWanted = true;
    drives.getDiskTemps();
    EXPECT_EQ(smartInfo.drives(), std::vector{disk}) << "the first update";
}

TEST(DriveTemperatures, AreReadOnOneThreadAndShownOnAnother) {
    constexpr std::size_t readings = 500;
    SmartInfo smartInfo;
    DriveTemperatures drives(smartInfo, [] {
        return std::make_unique<FakeController>(
            std::vector<std::vector<DriveDictionary>>(readings, {disk, other}));
    });
    drives.createSmartController();
    std::thread reader([&] {
        for (std::size_t i = 0; i < readings; ++i) drives.getDiskTemps();
    });
    for (std::size_t i = 0; i < readings; ++i) {
        const std::size_t count = smartInfo.drives().size();
        EXPECT_TRUE(count == 0 || count == 2) << count << ": never half a list";
        smartInfo.clear();
    }
    reader.join();
}

TEST(DriveTemperatures, LeavesTheListAloneWithoutAController) {
    SmartInfo smartInfo;
    smartInfo.assign({disk});
    DriveTemperatures unmade(smartInfo, [] {
        return std::make_unique<FakeController>(std::vector<std::vector<DriveDictionary>>{{other}});
    });
    unmade.getDiskTemps();
    DriveTemperatures absent(smartInfo, {});
    absent.createSmartController();
    absent.getDiskTemps();
    DriveTemperatures none(smartInfo, [] { return std::unique_ptr<SmartController>(); });
    none.createSmartController();
    none.getDiskTemps();
    EXPECT_EQ(smartInfo.drives(), (std::vector{disk}));
}

TEST(DriveTemperatures, AreShownInTheUsersUnit) {
    const SensorLists lists;
    Preferences preferences;
    const GPUState gpu;
    const TemperatureReader reader(lists, preferences, gpu);
    const DriveDictionary unread{"Disk", "C3", 0};
    EXPECT_EQ(driveTemperatureStringFromDictionary(&disk, reader), "37°C");
    EXPECT_EQ(driveTemperatureStringFromDictionary(&unread, reader), "N/A");
    EXPECT_EQ(driveTemperatureStringFromDictionary(nullptr, reader), "");
    preferences.tempUnit = 1;
    EXPECT_EQ(driveTemperatureStringFromDictionary(&disk, reader), "99°F");
}

}  // namespace
}  // namespace calorivo
