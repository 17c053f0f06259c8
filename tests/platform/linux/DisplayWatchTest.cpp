#include "platform/linux/DisplayWatch.h"

#include "support/GraphicsTree.h"

#include <gtest/gtest.h>

#include <utility>

namespace calorivo {
namespace {

using namespace std::chrono_literals;
using test::GraphicsTree;
using Call = std::pair<CGDirectDisplayID, CGDisplayChangeSummaryFlags>;
using Calls = std::vector<Call>;

constexpr auto discrete = GraphicsTree::discrete;
constexpr Call changed{displayNumber::builtIn, 8};
constexpr Call pluggedIn{displayNumber::external, 24};

class DisplayWatchTest : public testing::Test {
  protected:
    Calls look() {
        Calls calls;
        watch.look([&](CGDirectDisplayID display, CGDisplayChangeSummaryFlags flags) {
            calls.emplace_back(display, flags);
        });
        return calls;
    }
    void display(bool isConnected) {
        tree.connector(discrete, "card1", "HDMI-A-1", isConnected ? "connected" : "disconnected",
                       isConnected ? "enabled" : "disabled");
    }

    GraphicsTree tree;
    std::chrono::nanoseconds asleep = 5h;
    GraphicsReader reader{tree.root()};
    DisplayWatch watch = [this] {
        tree.hybridNotebook();
        tree.power(discrete, "suspended");
        return DisplayWatch(reader, [this] { return asleep; });
    }();
};

TEST_F(DisplayWatchTest, TellsOfASleepFirstWhoeverWasNamedForIt) {
    std::vector<std::string> told;
    DisplayWatch named(
        reader, [this] { return asleep; }, [&] { told.emplace_back("slept"); });
    const auto lookWithIt = [&] { named.look([&](auto...) { told.emplace_back("changed"); }); };
    lookWithIt();
    EXPECT_EQ(told, std::vector<std::string>{});
    tree.power(discrete, "active");
    lookWithIt();
    EXPECT_EQ(told, std::vector<std::string>{"changed"});
    asleep += 1min;
    lookWithIt();
    EXPECT_EQ(told, (std::vector<std::string>{"changed", "slept", "changed"}));
}

TEST_F(DisplayWatchTest, TellsNothingWhenNothingChanged) {
    EXPECT_EQ(look(), Calls{});
    EXPECT_EQ(look(), Calls{});
}

TEST_F(DisplayWatchTest, TellsOnceOfEachChangeOfTheProcessorInUse) {
    tree.power(discrete, "active");
    EXPECT_EQ(look(), Calls{changed});
    EXPECT_EQ(look(), Calls{});
    tree.power(discrete, "suspended");
    EXPECT_EQ(look(), Calls{changed});
    EXPECT_EQ(look(), Calls{});
}

TEST_F(DisplayWatchTest, TellsOfASecondCardThatAwakesBesideOneInUse) {
    tree.gpu("0000:07:00.0", "0x1002", "0x73bf", "card2");
    EXPECT_EQ(look(), Calls{changed});
    tree.power(discrete, "active");
    EXPECT_EQ(look(), Calls{changed});
    tree.unplug("0000:07:00.0", "card2");
    EXPECT_EQ(look(), Calls{changed});
}

TEST_F(DisplayWatchTest, TellsOfTheMux) {
    tree.vgaSwitch("0:IGD:+:Pwr:0000:00:02.0\n1:DIS: :Off:0000:01:00.0\n");
    EXPECT_EQ(look(), Calls{}) << "it says the same";
    tree.vgaSwitch("0:IGD: :Off:0000:00:02.0\n1:DIS:+:Pwr:0000:01:00.0\n");
    EXPECT_EQ(look(), Calls{changed});
}

TEST_F(DisplayWatchTest, TellsOfADisplayThatWasPluggedIn) {
    display(true);
    EXPECT_EQ(look(), Calls{pluggedIn});
    EXPECT_EQ(look(), Calls{});
    display(false);
    EXPECT_EQ(look(), Calls{}) << "one that was taken away changes nothing";
    display(true);
    EXPECT_EQ(look(), Calls{pluggedIn});
}

TEST_F(DisplayWatchTest, TellsOfADisplayThatAwakesTheCard) {
    tree.power(discrete, "active");
    display(true);
    EXPECT_EQ(look(), (Calls{changed, pluggedIn}));
}

TEST_F(DisplayWatchTest, TellsOnceThatTheMachineHasSlept) {
    asleep += 10s;
    EXPECT_EQ(look(), Calls{changed});
    EXPECT_EQ(look(), Calls{});
    asleep += 10s;
    tree.power(discrete, "active");
    EXPECT_EQ(look(), Calls{changed}) << "once for both";
}

}  // namespace
}  // namespace calorivo
