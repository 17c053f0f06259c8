#include "host/Graphics.h"

#include "monitor/GPUGuard.h"
#include "monitor/GPUState.h"
#include "support/FakeGraphics.h"
#include "support/GraphicsTree.h"
#include "support/OpenedFiles.h"
#include "support/VirtualDispatch.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>

namespace calorivo {
namespace {

using namespace std::chrono_literals;
using test::GraphicsTree;
using Lines = std::vector<std::string>;

constexpr auto discrete = GraphicsTree::discrete;

class GraphicsTest : public testing::Test {
  protected:
    [[nodiscard]] SourceOptions recorded() const {
        SourceOptions options;
        options.sys = tree.root();
        return options;
    }

    GraphicsTree tree;
    test::VirtualDispatch dispatch;
    test::LinesLog log;
};

TEST_F(GraphicsTest, BelongToAMachineNotToAFileOrASimulation) {
    SourceOptions options;
    EXPECT_NE(makeGraphics(options, dispatch, log), nullptr);
    EXPECT_NE(makeGraphics(recorded(), dispatch, log), nullptr);
    options.simulationSeed = 7;
    EXPECT_EQ(makeGraphics(options, dispatch, log), nullptr);
    options.simulationSeed.reset();
    options.keysFile = "dump.txt";
    EXPECT_EQ(makeGraphics(options, dispatch, log), nullptr);
}

TEST_F(GraphicsTest, ReadNothingUntilSomethingIsAsked) {
    tree.hybridNotebook();
    test::OpenedFiles opened(tree.root());
    const auto graphics = makeGraphics(recorded(), dispatch, log);
    EXPECT_EQ(opened.take(), std::set<std::string>{});
    EXPECT_EQ(graphics->switcher().integratedGPUName()->substr(0, 6), "Intel ");
    EXPECT_EQ(graphics->switcher().discreteGPUName()->substr(0, 7), "NVIDIA ");
    EXPECT_FALSE(opened.take().empty());
    EXPECT_EQ(graphics->switcher().integratedGPUName()->substr(0, 6), "Intel ");
    EXPECT_EQ(opened.take(), std::set<std::string>{}) << "the names are known";
}

TEST_F(GraphicsTest, HaveNoSwitchOnAMachineWithOneProcessor) {
    tree.gpu("0000:00:02.0", "0x8086", "0x3e9b", "card0");
    const auto graphics = makeGraphics(recorded(), dispatch, log);
    EXPECT_FALSE(graphics->switcher().switcherOpen());
    EXPECT_EQ(log.lines, Lines{"No matching drivers found."});
    EXPECT_EQ(graphics->switcher().discreteGPUName(), "GPU");
}

TEST_F(GraphicsTest, SayWhichProcessorIsInUse) {
    tree.hybridNotebook();
    tree.power(discrete, "suspended");
    const auto graphics = makeGraphics(recorded(), dispatch, log);
    ASSERT_TRUE(graphics->switcher().switcherOpen());
    EXPECT_FALSE(graphics->switcher().isUsingDiscreteGPU());
    tree.power(discrete, "active");
    EXPECT_TRUE(graphics->switcher().isUsingDiscreteGPU());
    EXPECT_EQ(log.lines,
              (Lines{"Driver connection opened.", "getMuxState was successful (count=1, value=0x00000001).",
                     "getMuxState was successful (count=1, value=0x00000000)."}));
}

/// The displays of the machine, looked at when the test says so.
class SteppedDisplays final : public CoreGraphics {
  public:
    SteppedDisplays(GraphicsReader& reader, MachineClocks::Clock asleep)
        : watch_(reader, std::move(asleep)) {}

    [[nodiscard]] Observation CGDisplayRegisterReconfigurationCallback(
        ReconfigurationCallback callback) override {
        callback_ = std::move(callback);
        return Observation([this] { callback_ = nullptr; });
    }
    [[nodiscard]] bool CGDisplayIsBuiltin(CGDirectDisplayID display) override {
        return display == displayNumber::builtIn;
    }
    [[nodiscard]] CGDirectDisplayID CGMainDisplayID() override { return displayNumber::builtIn; }
    void look() { watch_.look(callback_); }

  private:
    DisplayWatch watch_;
    ReconfigurationCallback callback_;
};

/// The guard above the machine's own answers.
class GraphicsGuardTest : public GraphicsTest {
  protected:
    GraphicsGuardTest() {
        tree.hybridNotebook();
        tree.power(discrete, "suspended");
        displays.emplace(reader, [this] { return asleep; });
        switcher.emplace(GraphicsSwitcherParts{control, *displays, dispatch, log, {}});
        EXPECT_TRUE(switcher->switcherOpen());
        observation = switcher->registerForGPUChangeNotifications(guard);
        log.lines.clear();
    }
    /// What the state was at each half second: the processor's type, and whether GPU sensors are read.
    std::vector<std::pair<int, bool>> halfSeconds(int count) {
        std::vector<std::pair<int, bool>> states;
        for (int i = 0; i < count; ++i) {
            dispatch.advance(500ms);
            states.emplace_back(state.currentGPUType.get(), state.isOkToCheckGPUSensors.get());
        }
        return states;
    }

    using States = std::vector<std::pair<int, bool>>;
    std::chrono::nanoseconds asleep = 1h;
    GPUState state;
    std::unique_ptr<Queue> checkQueue = dispatch.makeSerialQueue("check");
    GPUGuard guard{dispatch, *checkQueue, state};
    GraphicsReader reader{tree.root()};
    LinuxGraphicsControl control{reader};
    std::optional<SteppedDisplays> displays;
    std::optional<GraphicsSwitcher> switcher;
    Observation observation;
};

TEST_F(GraphicsGuardTest, HoldsGPUSensorsWhenTheDiscreteProcessorAwakes) {
    displays->look();
    EXPECT_EQ(halfSeconds(1), (States{{0, true}}));
    tree.power(discrete, "active");
    displays->look();
    EXPECT_EQ(halfSeconds(5), (States{{1, false}, {1, false}, {1, false}, {1, false}, {1, true}}));
    EXPECT_EQ(log.lines, (Lines{"getMuxState was successful (count=1, value=0x00000000).",
                                "Notification: GPU changed. Integrated? 0"}));
}

TEST_F(GraphicsGuardTest, HoldsGPUSensorsAgainWhenItFallsAsleepMeanwhile) {
    tree.power(discrete, "active");
    displays->look();
    EXPECT_EQ(halfSeconds(2), (States{{1, false}, {1, false}}));
    tree.power(discrete, "suspended");
    displays->look();
    EXPECT_EQ(halfSeconds(5), (States{{0, false}, {0, false}, {0, false}, {0, false}, {0, true}}));
}

TEST_F(GraphicsGuardTest, HoldsGPUSensorsAfterTheMachineHasSlept) {
    asleep += 30s;
    displays->look();
    EXPECT_EQ(halfSeconds(5), (States{{0, false}, {0, false}, {0, false}, {0, false}, {0, true}}));
    EXPECT_EQ(log.lines, (Lines{"getMuxState was successful (count=1, value=0x00000001).",
                                "Notification: GPU changed. Integrated? 1"}));
}

TEST_F(GraphicsGuardTest, HoldsGPUSensorsWhenADisplayIsPluggedIn) {
    tree.connector(discrete, "card1", "HDMI-A-1", "connected", "enabled");
    displays->look();
    EXPECT_EQ(halfSeconds(1), (States{{0, false}}));
    EXPECT_EQ(log.lines, (Lines{"A non-built-in display reconfiguration callback has been triggered.",
                                "getMuxState was successful (count=1, value=0x00000001).",
                                "Notification: GPU changed. Integrated? 1"}));
}

}  // namespace
}  // namespace calorivo
