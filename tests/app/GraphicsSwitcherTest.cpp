#include "app/GraphicsSwitcher.h"

#include "monitor/GPUGuard.h"
#include "monitor/GPUState.h"
#include "support/FakeGraphics.h"
#include "support/VirtualDispatch.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

using namespace std::chrono_literals;
using test::displayDevice;
using test::FakeDisplays;
using Lines = std::vector<std::string>;

struct Switched {
    test::FakeGraphicsControl control;
    FakeDisplays displays;
    test::VirtualDispatch dispatch;
    test::LinesLog log;
    bool isUsingKeysFile = false;
    GraphicsSwitcher switcher{{control, displays, dispatch, log, [this] { return isUsingKeysFile; }}};
};

TEST(GraphicsSwitcher, OpensTheSwitchAndAsksIt) {
    Switched s;
    EXPECT_TRUE(s.switcher.switcherOpen());
    EXPECT_FALSE(s.switcher.isUsingDiscreteGPU());
    s.control.muxStates[7] = 0;
    EXPECT_TRUE(s.switcher.isUsingDiscreteGPU());
    EXPECT_EQ(s.log.lines,
              (Lines{"Driver connection opened.", "getMuxState was successful (count=1, value=0x00000001).",
                     "getMuxState was successful (count=1, value=0x00000000)."}));
}

TEST(GraphicsSwitcher, IsNotOpenedWithoutADriver) {
    Switched s;
    s.control.hasDriver = false;
    EXPECT_FALSE(s.switcher.switcherOpen());
    EXPECT_EQ(s.log.lines, Lines{"No matching drivers found."});
}

TEST(GraphicsSwitcher, TellsTheNamesButNotBesideAKeysFile) {
    Switched s;
    s.control.devices = {displayDevice("AMD Radeon Pro 555"), displayDevice("Intel HD Graphics 630")};
    EXPECT_EQ(s.control.searches, 0);
    EXPECT_EQ(s.switcher.integratedGPUName(), "Intel HD Graphics 630");
    EXPECT_EQ(s.switcher.discreteGPUName(), "AMD Radeon Pro 555");
    s.isUsingKeysFile = true;
    EXPECT_EQ(s.switcher.integratedGPUName(), std::nullopt);
}

TEST(GraphicsSwitcher, HasTheGuardHoldGPUSensorsAfterAChange) {
    Switched s;
    GPUState state;
    const std::unique_ptr<Queue> checkQueue = s.dispatch.makeSerialQueue("check");
    GPUGuard guard(s.dispatch, *checkQueue, state);
    ASSERT_TRUE(s.switcher.switcherOpen());
    Observation observation = s.switcher.registerForGPUChangeNotifications(guard);
    s.control.muxStates[7] = 0;
    s.displays.reconfigure(FakeDisplays::builtIn, kCGDisplaySetModeFlag);
    s.dispatch.advance(500ms);
    EXPECT_EQ(state.currentGPUType, 1);
    EXPECT_FALSE(state.isOkToCheckGPUSensors);
    s.dispatch.advance(2s);
    EXPECT_TRUE(state.isOkToCheckGPUSensors);
    observation.drop();
    s.displays.reconfigure(FakeDisplays::builtIn, kCGDisplaySetModeFlag);
    s.dispatch.advance(1s);
    EXPECT_TRUE(state.isOkToCheckGPUSensors);
}

}  // namespace
}  // namespace calorivo
