#include "monitor/GSGPU.h"

#include "monitor/GPUChangeObserver.h"
#include "monitor/GSMux.h"
#include "support/FakeGraphics.h"
#include "support/VirtualDispatch.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

using test::displayDevice;
using test::FakeDisplays;
using Lines = std::vector<std::string>;
using Names = std::vector<std::string>;
using namespace std::chrono_literals;

constexpr const char* notBuiltIn = "A non-built-in display reconfiguration callback has been triggered.";
constexpr const char* queueLabel = "gpu-notification";

struct Change {
    std::int32_t gpuType;
    Moment when;
    friend bool operator==(const Change&, const Change&) = default;
};

struct Graphics final : GPUChangeObserver {
    test::FakeGraphicsControl control;
    FakeDisplays displays;
    test::VirtualDispatch dispatch;
    test::LinesLog log;
    bool isUsingKeysFile = false;
    std::vector<Change> changes;
    GSMux mux{{control, dispatch, log, [] { return false; }}};
    GSGPU gpu{{control, displays, mux, dispatch, log, [this] { return isUsingKeysFile; }}};

    explicit Graphics(const Names& models = {}) {
        for (const std::string& model : models) control.devices.push_back(displayDevice(model));
    }
    void GPUDidChangeTo(std::int32_t gpuType) override { changes.push_back({gpuType, dispatch.now()}); }
    [[nodiscard]] Observation observe() {
        EXPECT_TRUE(mux.switcherOpen());
        log.lines.clear();
        return gpu.registerForGPUChangeNotifications(*this);
    }
};

TEST(GSGPU, ListsTheModelsOfTheDisplayDevicesOnce) {
    Graphics g;
    const std::string withZero("Iris\0\0", 6);
    RegistryProperties nameless = displayDevice("Nameless");
    nameless.erase("IOName");
    RegistryProperties dataName = displayDevice("Data");
    dataName["IOName"] = std::vector<std::uint8_t>{'d', 'i', 's', 'p', 'l', 'a', 'y'};
    RegistryProperties textModel = displayDevice("");
    textModel["model"] = std::string("Text");
    RegistryProperties modelless = displayDevice("");
    modelless.erase("model");
    g.control.devices = {displayDevice("Radeon"),
                         displayDevice("Bridge", "pci-bridge"),
                         displayDevice("GeForce", "DiSPLaY"),
                         displayDevice("Audio", "display-audio"),
                         displayDevice(withZero),
                         nameless,
                         dataName,
                         textModel,
                         modelless,
                         displayDevice(""),
                         displayDevice("Gr\xc3\xbc"),
                         RegistryProperties{}};
    EXPECT_EQ(g.gpu.getGPUNames(), (Names{"Radeon", "GeForce", "Iris"}));
    g.control.devices.clear();
    EXPECT_EQ(g.gpu.getGPUNames(), (Names{"Radeon", "GeForce", "Iris"}));
    EXPECT_EQ(g.control.searches, 1);
    EXPECT_TRUE(g.control.objects.empty());
    EXPECT_EQ(g.log.lines, Lines{});
}

TEST(GSGPU, HasNoNamesWhenTheSearchFails) {
    Graphics g({"Radeon"});
    g.control.matching = io_return::error;
    EXPECT_EQ(g.gpu.getGPUNames(), Names{});
    g.control.matching = io_return::success;
    EXPECT_EQ(g.gpu.discreteGPUName(), "GPU");
    EXPECT_EQ(g.control.searches, 1);
}

TEST(GSGPU, TellsTheIntegratedGPUFromTheDiscreteOneByItsMaker) {
    struct Row {
        Names models;
        std::optional<std::string> integrated;
        std::string discrete;
    };
    for (const Row& row : {
             Row{{"Intel HD 630", "Radeon Pro"}, "Intel HD 630", "Radeon Pro"},
             Row{{"Radeon Pro", "Intel HD 630"}, "Intel HD 630", "Radeon Pro"},
             Row{{"Intel A", "Intel B"}, "Intel A", "GPU"},
             Row{{"Radeon A", "Radeon B"}, std::nullopt, "Radeon A"},
             Row{{}, std::nullopt, "GPU"},
             Row{{"intel HD", "An Intel HD"}, std::nullopt, "intel HD"},
             Row{{"NVIDIA GeForce 9600M GT", "NVIDIA GeForce 9400M"},
                 "NVIDIA GeForce 9400M",
                 "NVIDIA GeForce 9600M GT"},
             Row{{"NVIDIA GeForce 9400M"}, std::nullopt, "NVIDIA GeForce 9400M"},
             Row{{"NVIDIA GeForce 9600M GT", "Intel HD"}, "Intel HD", "NVIDIA GeForce 9600M GT"},
         }) {
        Graphics g(row.models);
        EXPECT_EQ(g.gpu.integratedGPUName(), row.integrated);
        EXPECT_EQ(g.gpu.discreteGPUName(), row.discrete);
    }
}

TEST(GSGPU, KnowsTheLegacyMachineByBothItsGPUs) {
    Graphics both({"Other", "NVIDIA GeForce 9400M", "NVIDIA GeForce 9600M GT"});
    EXPECT_TRUE(both.gpu.isLegacyMachine());
    EXPECT_TRUE(both.gpu.isLegacyMachine());
    EXPECT_EQ(both.control.searches, 1);
    EXPECT_FALSE(Graphics({"NVIDIA GeForce 9400M"}).gpu.isLegacyMachine());
    EXPECT_FALSE(Graphics({"NVIDIA GeForce 9600M GT", "NVIDIA GeForce 9400"}).gpu.isLegacyMachine());
}

TEST(GSGPU, HasNoIntegratedGPUWhileAKeysFileIsUsed) {
    Graphics g({"Intel HD", "Radeon"});
    g.isUsingKeysFile = true;
    EXPECT_EQ(g.gpu.integratedGPUName(), std::nullopt);
    EXPECT_EQ(g.gpu.discreteGPUName(), "Radeon");
    g.isUsingKeysFile = false;
    EXPECT_EQ(g.gpu.integratedGPUName(), "Intel HD");
    g.isUsingKeysFile = true;
    EXPECT_EQ(g.gpu.integratedGPUName(), std::nullopt);
}

TEST(GSGPU, WarnsOfThe2010MacBookProOnceAndIsNeverOne) {
    Graphics g;
    EXPECT_FALSE(g.gpu.is2010MacBookPro());
    EXPECT_FALSE(g.gpu.is2010MacBookPro());
    EXPECT_FALSE(g.gpu.is2010MacBookPro());
    EXPECT_EQ(g.log.lines, (Lines{"Nuke it from orbit switching disabled."}));
}

TEST(GSGPU, TellsOfAChangeAfterHalfASecond) {
    Graphics g;
    const Observation observation = g.observe();
    g.displays.reconfigure(FakeDisplays::builtIn, 8);
    EXPECT_EQ(g.log.lines, Lines{});
    g.dispatch.advance(1s);
    EXPECT_EQ(g.changes, (std::vector<Change>{{0, Moment(500ms)}}));
    EXPECT_EQ(g.log.lines, (Lines{"getMuxState was successful (count=1, value=0x00000001).",
                                  "Notification: GPU changed. Integrated? 1"}));
}

TEST(GSGPU, AsksForTheGPUOnlyWhenTheSwitchHasSettled) {
    Graphics g;
    const Observation observation = g.observe();
    const auto settling = g.dispatch.scheduleTimer(400ms, Repeats::no, [&] { g.control.muxStates[7] = 0; });
    g.displays.reconfigure(FakeDisplays::builtIn, 8);
    g.dispatch.advance(1s);
    EXPECT_EQ(g.changes, (std::vector<Change>{{1, Moment(500ms)}}));
    EXPECT_EQ(g.log.lines, (Lines{"getMuxState was successful (count=1, value=0x00000000).",
                                  "Notification: GPU changed. Integrated? 0"}));
}

TEST(GSGPU, TakesTheDiscreteGPUWhenTheSwitchDoesNotAnswer) {
    Graphics g;
    const Observation observation = g.observe();
    g.control.selectors[3] = io_return::error;
    g.displays.reconfigure(FakeDisplays::builtIn, 8);
    g.dispatch.advance(1s);
    EXPECT_EQ(g.changes, (std::vector<Change>{{1, Moment(500ms)}}));
    EXPECT_EQ(g.log.lines,
              (Lines{"getMuxState returned 0xe00002bc.", "Notification: GPU changed. Integrated? 0"}));
}

TEST(GSGPU, NotifiesBySetModeAloneAndSaysWhenADisplayIsNotBuiltIn) {
    struct Row {
        CGDirectDisplayID display;
        CGDisplayChangeSummaryFlags flags;
        bool isLogged;
        std::size_t notifications;
    };
    for (const Row& row :
         {Row{FakeDisplays::builtIn, 0, false, 0}, Row{FakeDisplays::builtIn, 8, false, 1},
          Row{FakeDisplays::builtIn, 16, true, 0}, Row{FakeDisplays::builtIn, 24, true, 1},
          Row{FakeDisplays::external, 0, true, 0}, Row{FakeDisplays::external, 8, true, 1},
          Row{FakeDisplays::external, 24, true, 1}, Row{FakeDisplays::builtIn, 0xffffffe7, false, 0},
          Row{FakeDisplays::builtIn, 0xffffffff, true, 1}}) {
        Graphics g;
        const Observation observation = g.observe();
        g.displays.reconfigure(row.display, row.flags);
        EXPECT_EQ(g.log.lines, Lines(row.isLogged ? 1 : 0, notBuiltIn)) << row.flags;
        EXPECT_EQ(g.dispatch.pending(queueLabel), row.notifications) << row.flags;
        g.dispatch.run();
        EXPECT_EQ(g.changes.size(), row.notifications) << row.flags;
    }
}

TEST(GSGPU, IsSilentAboutOtherDisplaysOnTheLegacyMachine) {
    Graphics g({"NVIDIA GeForce 9400M", "NVIDIA GeForce 9600M GT"});
    const Observation observation = g.observe();
    g.displays.reconfigure(FakeDisplays::external, 24);
    EXPECT_EQ(g.log.lines, Lines{});
    g.dispatch.run();
    EXPECT_EQ(g.changes.size(), 1U);
}

TEST(GSGPU, TellsOfEachChangeOfAStorm) {
    Graphics g;
    const Observation observation = g.observe();
    for (int i = 0; i < 4; ++i) g.displays.reconfigure(FakeDisplays::builtIn, 8);
    g.dispatch.run();
    EXPECT_EQ(g.changes, (std::vector<Change>{
                             {0, Moment(500ms)}, {0, Moment(1s)}, {0, Moment(1500ms)}, {0, Moment(2s)}}));
}

TEST(GSGPU, FiresByHandAsTheMainDisplayWould) {
    Graphics g;
    g.gpu.fireManualChangeNotification();
    const Observation observation = g.observe();
    g.gpu.fireManualChangeNotification();
    EXPECT_EQ(g.log.lines, Lines{});
    g.dispatch.run();
    EXPECT_EQ(g.changes, (std::vector<Change>{{0, Moment(500ms)}}));
}

TEST(GSGPU, TellsNobodyWhenTheObservationIsDropped) {
    Graphics g;
    Observation observation = g.observe();
    g.displays.reconfigure(FakeDisplays::builtIn, 8);
    observation.drop();
    g.displays.reconfigure(FakeDisplays::builtIn, 8);
    g.gpu.fireManualChangeNotification();
    g.dispatch.advance(5s);
    EXPECT_TRUE(g.changes.empty());
}

}  // namespace
}  // namespace calorivo
