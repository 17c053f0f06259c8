#include "platform/linux/DeviceThreads.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace calorivo {
namespace {

using namespace std::chrono_literals;

/// A device whose jobs wait at a gate until the test opens it.
class GatedDevice final : public Device {
  public:
    void perform(DeviceJob job) override {
        std::unique_lock lock(mutex_);
        opened_.wait(lock, [this] { return isOpen_; });
        lastJob = job;
        ++jobs;
    }
    void openGate() {
        {
            const std::lock_guard lock(mutex_);
            isOpen_ = true;
        }
        opened_.notify_all();
    }
    void closeGate() {
        const std::lock_guard lock(mutex_);
        isOpen_ = false;
    }

    std::atomic<int> jobs = 0;
    std::atomic<DeviceJob> lastJob = DeviceJob::refresh;

  private:
    std::mutex mutex_;
    std::condition_variable opened_;
    bool isOpen_ = true;
};

/// Three devices. Patience is longer than any test runs where the test expects an answer, and short where it
/// does not.
class DeviceThreadsTest : public testing::Test {
  protected:
    ~DeviceThreadsTest() override {
        for (const auto& device : devices) device->openGate();
    }
    void waitUntilIdle(std::size_t device) {
        while (threads.isBusy(device)) std::this_thread::yield();
    }

    std::vector<std::shared_ptr<GatedDevice>> devices{
        std::make_shared<GatedDevice>(), std::make_shared<GatedDevice>(), std::make_shared<GatedDevice>()};
    DeviceThreads threads{{devices.begin(), devices.end()}, 20ms};
    const std::array<std::size_t, 3> all{0, 1, 2};
    static constexpr auto forLong = 60s;
};

TEST_F(DeviceThreadsTest, HasEveryDeviceDoTheJob) {
    threads.run(DeviceJob::describe, all, forLong);
    for (const auto& device : devices) {
        EXPECT_EQ(device->jobs, 1);
        EXPECT_EQ(device->lastJob, DeviceJob::describe);
    }
}

TEST_F(DeviceThreadsTest, LeavesOutTheDevicesThatAreNotNamed) {
    const std::array<std::size_t, 2> some{0, 2};
    threads.run(DeviceJob::refresh, some, forLong);
    EXPECT_EQ(devices[0]->jobs, 1);
    EXPECT_EQ(devices[1]->jobs, 0);
    EXPECT_EQ(devices[2]->jobs, 1);
}

TEST_F(DeviceThreadsTest, ADeadDeviceDoesNotHoldTheOthers) {
    devices[0]->closeGate();
    threads.run(DeviceJob::refresh, all, 1s);
    EXPECT_TRUE(threads.isBusy(0));
    EXPECT_EQ(devices[1]->jobs, 1);
    EXPECT_EQ(devices[2]->jobs, 1);
}

TEST_F(DeviceThreadsTest, IsNotWaitedForAgainWhileItIsDead) {
    devices[1]->closeGate();
    threads.run(DeviceJob::refresh, all, 500ms);
    for (int i = 0; i < 50; ++i) threads.run(DeviceJob::refresh, all, forLong);
    EXPECT_EQ(devices[0]->jobs, 51);
    EXPECT_EQ(devices[1]->jobs, 0);
    EXPECT_EQ(devices[2]->jobs, 51);
}

TEST_F(DeviceThreadsTest, ADeviceThatComesBackIsServedAgain) {
    devices[2]->closeGate();
    threads.run(DeviceJob::refresh, all, 500ms);
    devices[2]->openGate();
    waitUntilIdle(2);
    threads.run(DeviceJob::refresh, all, forLong);
    EXPECT_EQ(devices[2]->jobs, 2);
}

TEST_F(DeviceThreadsTest, GivesTheThreadOfALateDeviceBackOnceItIsQuickAgain) {
    devices[0]->closeGate();
    threads.run(DeviceJob::refresh, all, 500ms);
    EXPECT_GE(threads.threadCount(), 2U);
    devices[0]->openGate();
    waitUntilIdle(0);
    for (int i = 0; i < 2000 && threads.threadCount() > 1; ++i) threads.run(DeviceJob::refresh, all, forLong);
    EXPECT_EQ(threads.threadCount(), 1U);
    const int before = devices[0]->jobs;
    threads.run(DeviceJob::refresh, all, forLong);
    EXPECT_EQ(devices[0]->jobs, before + 1);
}

TEST_F(DeviceThreadsTest, ServesTheLastDeviceWhenAllOthersAreDead) {
    devices[0]->closeGate();
    devices[1]->closeGate();
    threads.run(DeviceJob::refresh, all, 2s);
    EXPECT_EQ(devices[2]->jobs, 1);
    threads.run(DeviceJob::refresh, all, forLong);
    EXPECT_EQ(devices[2]->jobs, 2);
}

TEST(DeviceThreads, StartsNoThreadBeforeThereIsAJob) {
    const DeviceThreads threads({std::make_shared<GatedDevice>()}, 5ms);
    EXPECT_EQ(threads.threadCount(), 0U);
}

TEST(DeviceThreads, CanBeDestroyedWhileADeviceHangs) {
    const auto device = std::make_shared<GatedDevice>();
    device->closeGate();
    {
        DeviceThreads threads({device}, 5ms);
        const std::array<std::size_t, 1> all{0};
        threads.run(DeviceJob::refresh, all, 20ms);
        EXPECT_TRUE(threads.isBusy(0));
    }
    device->openGate();
    while (device->jobs == 0) std::this_thread::yield();
}

}  // namespace
}  // namespace calorivo
