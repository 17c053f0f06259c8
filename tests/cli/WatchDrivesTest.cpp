#include "cli/WatchDrives.h"

#include "support/VirtualDispatch.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

using std::chrono::milliseconds;

/// Drives that count how often they are read.
class CountedDrives final : public Drives {
  public:
    explicit CountedDrives(int& count) : count_(count) {}
    void update() override { ++count_; }
    [[nodiscard]] std::vector<DriveDictionary> allDisks() const override { return {}; }
    [[nodiscard]] std::vector<DriveDetails> details() const override {
        DriveDetails details;
        details.device = "sda";
        details.celsius = count_;
        return {details};
    }

  private:
    int& count_;
};

class WatchDrivesTest : public testing::Test {
  protected:
    int count = 0;
    std::vector<int> arrived;
    test::VirtualDispatch dispatch;
    WatchDrives drives{std::make_unique<CountedDrives>(count), dispatch,
                       [this](const std::vector<DriveDetails>& found) {
                           arrived.push_back(found.at(0).celsius.value_or(0));
                       }};
};

TEST_F(WatchDrivesTest, AreReadAtTheBeginning) {
    EXPECT_EQ(drives.first().at(0).celsius, 1);
    EXPECT_TRUE(arrived.empty());
}

TEST_F(WatchDrivesTest, AreReadOnceASecondHoweverOftenThereIsACheck) {
    for (int check = 0; check < 30; ++check) {
        drives.check();
        dispatch.advance(milliseconds(100));
    }
    EXPECT_EQ(arrived, (std::vector<int>{2, 3}));
}

TEST_F(WatchDrivesTest, AreNotReadAgainWhileADriveTakesItsTime) {
    dispatch.advance(milliseconds(1000));
    dispatch.hold("drives");
    for (int check = 0; check < 5; ++check) {
        drives.check();
        dispatch.advance(milliseconds(1000));
    }
    EXPECT_EQ(count, 1);
    EXPECT_TRUE(arrived.empty());
    dispatch.release("drives");
    dispatch.advance(milliseconds(1000));
    EXPECT_EQ(arrived, std::vector<int>{2});
    drives.check();
    dispatch.advance(milliseconds(1));
    EXPECT_EQ(arrived, (std::vector<int>{2, 3}));
}

}  // namespace
}  // namespace calorivo
