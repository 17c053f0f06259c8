// Graphics processors of a recorded machine: what they are called, and that one that sleeps is let sleep.

#include "cli/CommandRun.h"
#include "cli/Session.h"
#include "support/FakeGraphics.h"
#include "support/GraphicsTree.h"
#include "support/OpenedFiles.h"

#include <gtest/gtest.h>

#include <future>
#include <set>

namespace calorivo {
namespace {

using test::GraphicsTree;
using Names = std::set<std::string>;

constexpr auto discrete = GraphicsTree::discrete;

/// A Mac with a controller that has the sensors of both processors.
class MacGraphicsTest : public testing::Test {
  protected:
    MacGraphicsTest() {
        const std::string files = "devices/platform/applesmc.768";
        tree.file(files + "/name", "applesmc\n").folder(files + "/hwmon/hwmon1");
        tree.link(files + "/hwmon/hwmon1/device", "../../../applesmc.768");
        tree.link("class/hwmon/hwmon1", "../../" + files + "/hwmon/hwmon1");
        tree.temperature(files, 1, "60250", "TC0P").temperature(files, 2, "49000", "TG0D");
        tree.temperature(files, 3, "55000", "TG1D");
    }
    [[nodiscard]] std::string list() const {
        const test::CommandAnswer answer = test::runCommandLine({"list", "--sys", tree.root()});
        EXPECT_EQ(answer.errors, "");
        return answer.out;
    }

    GraphicsTree tree;
};

TEST_F(MacGraphicsTest, AreCalledByTheirNames) {
    tree.macWithMux();
    const std::string text = list();
    EXPECT_NE(text.find("Intel "), std::string::npos) << text;
    EXPECT_NE(text.find("AMD "), std::string::npos) << text;
}

TEST_F(MacGraphicsTest, AreNumberedWhereNoneIsKnown) {
    const std::string text = list();
    EXPECT_NE(text.find("GPU 1"), std::string::npos) << text;
    EXPECT_NE(text.find("GPU 2"), std::string::npos) << text;
}

/// A hybrid notebook whose discrete processor sleeps, with all that a reader could be tempted by.
class SleepingGraphicsTest : public testing::Test {
  protected:
    SleepingGraphicsTest() {
        tree.hybridNotebook();
        const std::string device = std::string("pci0000:00/") + discrete;
        chip = tree.chip(0, "amdgpu", device);
        tree.temperature(chip, 1, "51000", "edge").temperature(chip, 2, "60000", "junction");
        tree.fan(chip, 1, "700").file(chip + "/power1_average", "9000000\n");
        folder = "devices/" + device;
        tree.file(folder + "/vendor", "0x1002\n").file(folder + "/device", "0x73ff\n");
        tree.connector(discrete, "card1", "HDMI-A-1", "disconnected", "disabled");
        for (const char* const file :
             {"/config", "/resource0", "/gpu_busy_percent", "/current_link_speed", "/rom", "/uevent",
              "/power_state", "/power/wakeup", "/drm/card1/card1-HDMI-A-1/edid",
              "/drm/card1/card1-HDMI-A-1/modes", "/drm/card1/card1-HDMI-A-1/dpms"})
            tree.file(folder + file, "tempting\n");
        tree.power(discrete, "suspended");
        const std::string cpu = tree.chip(1, "coretemp", "platform/coretemp.0");
        tree.temperature(cpu, 1, "45000", "Package id 0");
    }
    /// Runs everything that the programs do with this machine, ten checks of all sensors among them.
    void useAll() {
        Options options;
        options.sys = tree.root();
        options.interval = std::chrono::nanoseconds(0);  // each check reads anew
        Output out;
        Output errors;
        LinuxFileManager files;
        Surroundings surroundings{files, {{}, {}, CALORIVO_SOURCE_DIR "/data"}, {out, errors}};
        InlineDispatch dispatch{WallTime{}};
        Session session(options, surroundings, dispatch);
        ASSERT_TRUE(session.open());
        Engine& engine = session.discover(dispatch.mainQueue(), {});
        for (int i = 0; i < 10; ++i) engine.cycle.checkTimerFired();
        ASSERT_TRUE(engine.lists.validSensorNames.containsString("TC0D"));
        for (const SensorKey key : engine.lists.validSensorNames.keys())
            EXPECT_NE(engine.naming.convertKeyNameToHumanString(key), "");
        useGraphics();
    }
    void useGraphics() {
        InlineDispatch dispatch{WallTime{}};
        test::LinesLog log;
        LinuxDisplaysOptions watching;
        watching.period = std::chrono::milliseconds(1);
        watching.listen = nullptr;
        std::atomic<int> slept = 0;
        std::promise<void> lookedTwice;
        // Asked for once at the start and once in each look.
        watching.asleep = [&] {
            if (++slept == 4) lookedTwice.set_value();
            return std::chrono::nanoseconds(0);
        };
        Graphics graphics(tree.root(), watching, dispatch, log);
        ASSERT_TRUE(graphics.switcher().switcherOpen());
        static_cast<void>(graphics.switcher().isUsingDiscreteGPU());
        EXPECT_TRUE(graphics.switcher().integratedGPUName());
        EXPECT_TRUE(graphics.switcher().discreteGPUName());
        struct Ignoring final : GPUChangeObserver {
            void GPUDidChangeTo(std::int32_t /*gpuType*/) override {}
        } observer;
        const Observation observation = graphics.switcher().registerForGPUChangeNotifications(observer);
        lookedTwice.get_future().wait();
    }

    GraphicsTree tree;
    std::string chip;
    std::string folder;
};

TEST_F(SleepingGraphicsTest, AreNeverRead) {
    test::OpenedFiles opened(tree.path(folder));
    useAll();
    // What the kernel knows by heart, and nothing that the device is asked for.
    EXPECT_EQ(opened.take(),
              (Names{"boot_vga", "class", "device", "vendor", "subsystem_device", "subsystem_vendor",
                     "power/control", "power/runtime_status", "drm/card1/card1-HDMI-A-1/status",
                     "hwmon/hwmon0/name", "hwmon/hwmon0/temp1_label", "hwmon/hwmon0/temp2_label"}));
}

TEST_F(SleepingGraphicsTest, AreReadOnceTheyAreAwake) {
    tree.power(discrete, "active");
    test::OpenedFiles opened(tree.path(folder));
    useAll();
    const Names files = opened.take();
    for (const char* const file : {"hwmon/hwmon0/temp1_input", "hwmon/hwmon0/fan1_input"})
        EXPECT_TRUE(files.contains(file)) << file;
    EXPECT_FALSE(files.contains("config"));
}

}  // namespace
}  // namespace calorivo
