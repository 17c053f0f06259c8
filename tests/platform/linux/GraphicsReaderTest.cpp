#include "platform/linux/GraphicsReader.h"

#include "support/GraphicsTree.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <ostream>

namespace calorivo {

void PrintTo(const GraphicsState& state, std::ostream* stream) {
    *stream << (state.isIntegratedInUse ? "integrated" : "discrete")
            << (state.isSwitchedDynamically ? ", dynamic" : "") << ", awake:";
    for (const std::string& address : state.awake) *stream << ' ' << address;
    *stream << ", displays:";
    for (const std::string& name : state.displays) *stream << ' ' << name;
}

namespace {

using test::GraphicsTree;
using Names = std::vector<std::string>;

class GraphicsReaderTest : public testing::Test {
  protected:
    static constexpr auto integrated = GraphicsTree::integrated;
    static constexpr auto discrete = GraphicsTree::discrete;

    /// The panel changes over, as it looks from outside.
    void panel(const char* address) {
        const bool isIntegrated = address == integrated;
        tree.connector(integrated, "card0", "eDP-1", isIntegrated ? "connected" : "disconnected",
                       isIntegrated ? "enabled" : "disabled");
        tree.connector(discrete, "card1", "eDP-2", isIntegrated ? "disconnected" : "connected",
                       isIntegrated ? "disabled" : "enabled");
    }

    GraphicsTree tree;
    GraphicsReader reader{tree.root()};
};

TEST_F(GraphicsReaderTest, AMachineWithOneProcessorUsesIt) {
    EXPECT_EQ(reader.read(), GraphicsState{});
    tree.gpu(integrated, "0x8086", "0x3e9b", "card0");
    tree.connector(integrated, "card0", "eDP-1", "connected", "enabled");
    EXPECT_EQ(reader.read(), GraphicsState{});
}

TEST_F(GraphicsReaderTest, AMacWithAMuxUsesWhatTheSwitchSays) {
    tree.macWithMux();
    tree.vgaSwitch("0:IGD:+:Pwr:0000:00:02.0\n1:DIS: :Off:0000:01:00.0\n");
    EXPECT_EQ(reader.read(), (GraphicsState{true, false, {discrete}, {}}));
    // The connectors are late, or lie: the switch knows better.
    tree.vgaSwitch("0:IGD: :Off:0000:00:02.0\n1:DIS:+:Pwr:0000:01:00.0\n");
    EXPECT_EQ(reader.read(), (GraphicsState{false, false, {discrete}, {}}));
}

TEST_F(GraphicsReaderTest, AMacWithAMuxUsesWhatDrivesThePanelForAUserWhoMayNotReadTheSwitch) {
    tree.macWithMux();
    EXPECT_EQ(reader.read(), (GraphicsState{true, false, {discrete}, {}}));
    panel(discrete);
    EXPECT_EQ(reader.read(), (GraphicsState{false, false, {discrete}, {}}));
    panel(integrated);
    EXPECT_EQ(reader.read(), (GraphicsState{true, false, {discrete}, {}}));
}

TEST_F(GraphicsReaderTest, APanelThatGoesDarkStaysWithItsOwner) {
    tree.macWithMux();
    panel(discrete);
    EXPECT_FALSE(reader.read().isIntegratedInUse);
    tree.connector(discrete, "card1", "eDP-2", "connected", "disabled");
    EXPECT_FALSE(reader.read().isIntegratedInUse);
    panel(integrated);
    EXPECT_TRUE(reader.read().isIntegratedInUse);
}

TEST_F(GraphicsReaderTest, AHybridNotebookUsesTheDiscreteOneWhileItIsAwake) {
    tree.hybridNotebook();
    EXPECT_EQ(reader.read(), (GraphicsState{false, true, {discrete}, {}}));
    tree.power(discrete, "suspended");
    EXPECT_EQ(reader.read(), (GraphicsState{true, true, {}, {}}));
    tree.power(discrete, "active");
    EXPECT_EQ(reader.read(), (GraphicsState{false, true, {discrete}, {}}));
}

TEST_F(GraphicsReaderTest, AHybridNotebookIsTheSameForRoot) {
    tree.hybridNotebook();
    for (const bool isAwake : {true, false, true}) {
        tree.power(discrete, isAwake ? "active" : "suspended");
        tree.remove(GraphicsTree::switchFile);
        const GraphicsState ofUser = reader.read();
        tree.vgaSwitch(std::string("0:IGD:+:Pwr:0000:00:02.0\n1:DIS: :") + (isAwake ? "DynPwr" : "DynOff") +
                       ":0000:01:00.0\n");
        EXPECT_EQ(reader.read(), ofUser);
        EXPECT_EQ(ofUser.isIntegratedInUse, !isAwake);
    }
}

TEST_F(GraphicsReaderTest, AManagedProcessorBesideAMuxIsInUseWhileItIsAwake) {
    tree.macWithMux();
    tree.power(discrete, "suspended", "auto");
    EXPECT_EQ(reader.read(), (GraphicsState{true, true, {}, {}}));
    tree.power(discrete, "active", "auto");
    EXPECT_EQ(reader.read(), (GraphicsState{false, true, {discrete}, {}}));
}

TEST_F(GraphicsReaderTest, AProcessorAndACardOfOneMakerTakeTurnsAsWell) {
    tree.gpu("0000:03:00.0", "0x1002", "0x73ff", "card0");
    tree.gpu("0000:08:00.0", "0x1002", "0x1638", "card1");
    tree.connector("0000:08:00.0", "card1", "eDP-1", "connected", "enabled");
    tree.power("0000:03:00.0", "active");
    EXPECT_EQ(reader.read(), (GraphicsState{false, true, {"0000:03:00.0"}, {}}));
    tree.power("0000:03:00.0", "suspended");
    EXPECT_EQ(reader.read(), (GraphicsState{true, true, {}, {}}));
}

TEST_F(GraphicsReaderTest, TheOldPairGoesByItsPanels) {
    tree.gpu("0000:02:00.0", "0x10de", "0x0647", "card0");
    tree.gpu("0000:03:00.0", "0x10de", "0x0863", "card1");
    tree.connector("0000:02:00.0", "card0", "LVDS-1", "connected", "enabled");
    tree.connector("0000:03:00.0", "card1", "LVDS-2", "connected", "disabled");
    EXPECT_EQ(reader.read(), (GraphicsState{false, false, {"0000:02:00.0"}, {}}));
    tree.connector("0000:02:00.0", "card0", "LVDS-1", "connected", "disabled");
    tree.connector("0000:03:00.0", "card1", "LVDS-2", "connected", "enabled");
    EXPECT_EQ(reader.read(), (GraphicsState{true, false, {"0000:02:00.0"}, {}}));
}

TEST_F(GraphicsReaderTest, ADamagedSwitchFileIsPassedOver) {
    tree.macWithMux();
    panel(discrete);
    const GraphicsState byPanel{false, false, {discrete}, {}};
    const std::string good = "0:IGD:+:Pwr:0000:00:02.0\n1:DIS: :Off:0000:01:00.0\n";
    tree.vgaSwitch(good);
    EXPECT_TRUE(reader.read().isIntegratedInUse);
    for (const std::string& text :
         {std::string(), good.substr(0, 30), std::string("garbage"), std::string(1U << 20U, 'x'),
          std::string(5000, '\n'), std::string("\0\0\0", 3)}) {
        tree.vgaSwitch(text);
        EXPECT_EQ(reader.read(), byPanel) << text.substr(0, 40);
    }
}

TEST_F(GraphicsReaderTest, AnUnreadableSwitchFileIsPassedOver) {
    tree.macWithMux();
    panel(discrete);
    const GraphicsState byPanel{false, false, {discrete}, {}};
    tree.folder(GraphicsTree::switchFile);
    EXPECT_EQ(reader.read(), byPanel);
    tree.remove(GraphicsTree::switchFile);
    ASSERT_EQ(mkfifo(tree.path(GraphicsTree::switchFile).c_str(), 0600), 0);
    EXPECT_EQ(reader.read(), byPanel) << "and it does not wait for a writer";
    tree.remove(GraphicsTree::switchFile).link(GraphicsTree::switchFile, "switch");
    EXPECT_EQ(reader.read(), byPanel) << "a link to itself";
}

TEST_F(GraphicsReaderTest, DisplaysThatAreNotBuiltInAreListed) {
    tree.hybridNotebook();
    tree.power(discrete, "suspended");
    tree.connector(discrete, "card1", "HDMI-A-1", "connected", "enabled");
    tree.connector(integrated, "card0", "DP-1", "connected", "disabled");
    EXPECT_EQ(reader.read(), (GraphicsState{true, true, {}, {"card0-DP-1", "card1-HDMI-A-1"}}));
}

TEST_F(GraphicsReaderTest, APanelOnNoPCIIsNobodys) {
    tree.hybridNotebook();
    tree.power(discrete, "active", "on");
    tree.link("class/drm/card2/device", "../../../devices/platform/bar.0");
    tree.file("class/drm/card2-DSI-1/status", "connected\n");
    tree.file("class/drm/card2-DSI-1/enabled", "enabled\n");
    EXPECT_EQ(reader.read(), (GraphicsState{false, false, {discrete}, {}}));
}

TEST_F(GraphicsReaderTest, ABoxWithACardMayComeAndGo) {
    tree.hybridNotebook();
    tree.power(discrete, "suspended");
    EXPECT_EQ(reader.read(), (GraphicsState{true, true, {}, {}}));
    tree.gpu("0000:07:00.0", "0x1002", "0x73bf", "card2");
    EXPECT_EQ(reader.read(), (GraphicsState{false, true, {"0000:07:00.0"}, {}}));
    tree.unplug("0000:07:00.0", "card2");
    EXPECT_EQ(reader.read(), (GraphicsState{true, true, {}, {}}));
    tree.unplug(discrete, "card1");
    EXPECT_EQ(reader.read(), (GraphicsState{true, false, {}, {}}));
}

TEST_F(GraphicsReaderTest, ACardThatIsGoneBeforeItsNameIsDoesNotCount) {
    tree.hybridNotebook();
    EXPECT_FALSE(reader.read().isIntegratedInUse);
    tree.remove("bus/pci/devices/0000:01:00.0");
    EXPECT_EQ(reader.read(), (GraphicsState{true, false, {}, {}}));
}

}  // namespace
}  // namespace calorivo
