#include "platform/linux/LinuxDisplays.h"

#include "support/GraphicsTree.h"

#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <future>
#include <string>

namespace calorivo {
namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;
using test::GraphicsTree;

constexpr auto discrete = GraphicsTree::discrete;

/// Waits for the thread: as long as it takes, which the test's own limit ends.
class LinuxDisplaysTest : public testing::Test {
  protected:
    LinuxDisplaysTest() {
        tree.hybridNotebook();
        tree.power(discrete, "suspended");
        std::array<int, 2> ends{};
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends.data()), 0);
        kernel = FileDescriptor(ends[0]);
        heard = FileDescriptor(ends[1]);
    }
    /// Nothing but events makes it look.
    LinuxDisplaysOptions eventsOnly() {
        LinuxDisplaysOptions options;
        options.listen = [this] {
            ++listened;
            return KernelEvents(std::move(heard), [](const msghdr& /*message*/) { return true; });
        };
        options.asleep = [] { return 0ns; };
        options.period = 24h;
        return options;
    }
    void send(const std::string& subsystem) const {
        const std::string datagram = "change@/devices/x\0SUBSYSTEM="s + subsystem + '\0';
        EXPECT_EQ(::send(kernel.get(), datagram.data(), datagram.size(), 0),
                  static_cast<ssize_t>(datagram.size()));
    }

    GraphicsTree tree;
    GraphicsReader reader{tree.root()};
    FileDescriptor kernel;
    FileDescriptor heard;
    int listened = 0;
};

TEST_F(LinuxDisplaysTest, OnlyTheFirstIsBuiltIn) {
    LinuxDisplays displays(reader, eventsOnly());
    EXPECT_TRUE(displays.CGDisplayIsBuiltin(displays.CGMainDisplayID()));
    EXPECT_FALSE(displays.CGDisplayIsBuiltin(displayNumber::external));
    EXPECT_FALSE(displays.CGDisplayIsBuiltin(0));
    EXPECT_EQ(listened, 0) << "nobody is registered";
}

TEST_F(LinuxDisplaysTest, AnEventAboutGraphicsMakesItLook) {
    LinuxDisplays displays(reader, eventsOnly());
    std::promise<CGDisplayChangeSummaryFlags> told;
    const Observation observation = displays.CGDisplayRegisterReconfigurationCallback(
        [&](CGDirectDisplayID display, CGDisplayChangeSummaryFlags flags) {
            EXPECT_TRUE(displays.CGDisplayIsBuiltin(display));
            told.set_value(flags);
        });
    EXPECT_EQ(listened, 1);
    send("drm");
    tree.power(discrete, "active");
    send("block");
    send("drm");
    EXPECT_EQ(told.get_future().get(), kCGDisplaySetModeFlag);
}

TEST_F(LinuxDisplaysTest, ASleepOfTheMachineIsToldBeforeTheChange) {
    LinuxDisplaysOptions options = eventsOnly();
    std::atomic<int> asleep = 0;
    bool hasSlept = false;  // the watching thread's own
    std::promise<bool> told;
    options.asleep = [&] { return std::chrono::seconds(asleep); };
    options.machineHasSlept = [&] { hasSlept = true; };
    LinuxDisplays displays(reader, options);
    const Observation observation = displays.CGDisplayRegisterReconfigurationCallback(
        [&](CGDirectDisplayID /*display*/, CGDisplayChangeSummaryFlags /*flags*/) {
            told.set_value(hasSlept);
        });
    asleep = 10;
    send("drm");
    EXPECT_TRUE(told.get_future().get());
}

TEST_F(LinuxDisplaysTest, ThePeriodMakesItLookWithoutEvents) {
    LinuxDisplaysOptions options = eventsOnly();
    options.listen = nullptr;
    options.period = 1ms;
    LinuxDisplays displays(reader, options);
    std::promise<void> told;
    std::atomic<int> calls = 0;
    const Observation observation = displays.CGDisplayRegisterReconfigurationCallback(
        [&](CGDirectDisplayID /*display*/, CGDisplayChangeSummaryFlags /*flags*/) {
            if (++calls == 1) told.set_value();
        });
    tree.power(discrete, "active");
    told.get_future().wait();
    EXPECT_GE(calls, 1);
}

TEST_F(LinuxDisplaysTest, DroppingTheHandleWaitsForACallThatRuns) {
    LinuxDisplays displays(reader, eventsOnly());
    std::promise<void> begun;
    std::promise<void> mayEnd;
    bool hasEnded = false;  // not atomic: the thread sanitizer tells when nobody waits
    Observation observation = displays.CGDisplayRegisterReconfigurationCallback(
        [&](CGDirectDisplayID /*display*/, CGDisplayChangeSummaryFlags /*flags*/) {
            begun.set_value();
            mayEnd.get_future().wait();
            hasEnded = true;
        });
    tree.power(discrete, "active");
    send("drm");
    begun.get_future().wait();
    const auto releasing = std::async(std::launch::async, [&] { mayEnd.set_value(); });
    observation.drop();
    EXPECT_TRUE(hasEnded);
}

TEST_F(LinuxDisplaysTest, NobodyIsToldAfterTheHandleIsDropped) {
    LinuxDisplays displays(reader, eventsOnly());
    int calls = 0;
    Observation observation = displays.CGDisplayRegisterReconfigurationCallback(
        [&](CGDirectDisplayID /*display*/, CGDisplayChangeSummaryFlags /*flags*/) { ++calls; });
    observation.drop();
    tree.power(discrete, "active");
    EXPECT_EQ(::send(kernel.get(), "", 0, MSG_NOSIGNAL), -1) << "its socket is closed";
    EXPECT_EQ(calls, 0);
}

TEST_F(LinuxDisplaysTest, TheThreadGoesOnWithoutASocketThatBroke) {
    LinuxDisplaysOptions options = eventsOnly();
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    const FileDescriptor writing(ends[1]);
    options.listen = [&] { return KernelEvents(FileDescriptor(ends[0])); };
    LinuxDisplays displays(reader, options);
    std::promise<void> told;
    const Observation observation = displays.CGDisplayRegisterReconfigurationCallback(
        [&](CGDirectDisplayID /*display*/, CGDisplayChangeSummaryFlags /*flags*/) { told.set_value(); });
    tree.power(discrete, "active");
    EXPECT_EQ(write(writing.get(), "x", 1), 1);
    told.get_future().wait();
}

}  // namespace
}  // namespace calorivo
