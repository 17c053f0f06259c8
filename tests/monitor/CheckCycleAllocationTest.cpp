#include "monitor/CheckCycle.h"
#include "smc/SmcClient.h"
#include "smc/SmcService.h"
#include "support/Machine.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <memory>
#include <new>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// The sanitizers bring allocators of their own, which cannot be replaced.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define CALORIVO_COUNTS_ALLOCATIONS 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
#define CALORIVO_COUNTS_ALLOCATIONS 0
#endif
#endif
#ifndef CALORIVO_COUNTS_ALLOCATIONS
#define CALORIVO_COUNTS_ALLOCATIONS 1
#endif

#if CALORIVO_COUNTS_ALLOCATIONS

namespace {

std::atomic<std::size_t> allocations{0};

}  // namespace

void* operator new(std::size_t size) {
    ++allocations;
    if (void* const memory = std::malloc(size > 0 ? size : 1)) return memory;
    throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace calorivo {
namespace {

using test::Machine;

/// Answers every temperature with 50 degrees and every speed with 2000, and allocates nothing.
class SteadySmc final : public SmcService {
  public:
    SteadySmc() { smcSetIOKit(this); }
    ~SteadySmc() override { smcSetIOKit(nullptr); }
    [[nodiscard]] std::string_view sourceName() const override { return "steady"; }
    [[nodiscard]] std::optional<std::string> modelName() const override { return std::nullopt; }
    [[nodiscard]] std::optional<KeyOrigin> originOf(std::string_view) override { return std::nullopt; }

  protected:
    bool isPresent() override { return true; }
    std::optional<std::uint32_t> keyAt(std::uint32_t) override { return std::nullopt; }
    kern_return_t keyInformation(std::uint32_t key, SmcKeyInformation& information) override {
        information = {2, smcCode(isFan(key) ? "fpe2" : "sp78")};
        return io_return::success;
    }
    kern_return_t readBytes(std::uint32_t key, std::span<std::uint8_t, 32> bytes) override {
        bytes[0] = isFan(key) ? 0x1f : 50;
        bytes[1] = isFan(key) ? 0x40 : 0;
        return io_return::success;
    }

  private:
    static bool isFan(std::uint32_t key) { return key >> 24 == 'F'; }
};

/// A queue with room for one block, which it runs when it is told to.
class OneBlockQueue final : public Queue {
  public:
    [[nodiscard]] std::string_view label() const override { return "one block"; }
    void async(std::function<void()> block) override { block_ = std::move(block); }
    void sync(const std::function<void()>& block) override { block(); }
    void run() { std::exchange(block_, nullptr)(); }

  private:
    std::function<void()> block_;
};

/// A dispatch whose main queue runs at once.
class ImmediateDispatch final : public Dispatch {
  public:
    [[nodiscard]] Queue& mainQueue() override { return main_; }
    [[nodiscard]] std::unique_ptr<Queue> makeSerialQueue(std::string) override { return nullptr; }
    [[nodiscard]] std::unique_ptr<Timer> scheduleTimer(std::chrono::nanoseconds, Repeats,
                                                       std::function<void()>) override {
        return nullptr;
    }
    [[nodiscard]] Moment now() const override { return {}; }
    [[nodiscard]] WallTime wallTime() const override { return {}; }
    void sleep(std::chrono::nanoseconds) override {}

  private:
    OneBlockQueue main_;
};

struct CountingDisplay final : CycleDisplay {
    void reloadData() override { ++calls; }
    void updateStatusItem() override { ++calls; }
    void setNeedsDisplay() override { ++calls; }
    int calls = 0;
};

TEST(CheckCycle, AllocatesNothingWithoutLoggingAndAlerts) {
    Machine machine;
    for (char instance = 'A'; instance <= 'Z'; ++instance) {
        machine.cpu(SensorKey("TC0C").with(2, instance), 40);
        machine.memory(SensorKey("TM0P").with(2, instance), 40);
    }
    machine.gpu("TG0D", 60).fan(1800, 1200, 6000, "A name longer than a short string holds").fan(1, 2, 3);
    machine.drive(38);
    const SteadySmc smc;
    smcOpen();
    ImmediateDispatch dispatch;
    OneBlockQueue checkQueue;
    CountingDisplay display;
    struct : CycleDrives {
        void getDiskTemps() override {}
        std::vector<float> driveTemperatures() override { return {38}; }
    } drives;
    CheckCycleParts parts{.dispatch = dispatch,
                          .checkQueue = checkQueue,
                          .lists = machine.lists,
                          .naming = machine.naming,
                          .reader = machine.reader,
                          .fans = machine.fans,
                          .preferences = machine.preferences,
                          .gpu = machine.gpuState,
                          .averages = machine.averages,
                          .outputs = {.display = &display, .drives = &drives}};
    CheckCycle cycle(parts);
    const auto check = [&] {
        cycle.checkTimerFired();
        checkQueue.run();
    };
    check();  // fills the cache

    const std::size_t before = allocations;
    for (int i = 0; i < 3; ++i) check();
    EXPECT_EQ(allocations - before, 0U);

    EXPECT_EQ(display.calls, 8);
    EXPECT_EQ(machine.averages.currentAvgTmp, 50);
    EXPECT_EQ(machine.fans.avgRPM, 2000);
    ::operator delete(::operator new(1));
    EXPECT_EQ(allocations - before, 1U) << "the counter counts";
}

}  // namespace
}  // namespace calorivo

#else

TEST(CheckCycle, AllocatesNothingWithoutLoggingAndAlerts) {
    GTEST_SKIP() << "allocations cannot be counted under a sanitizer";
}

#endif
