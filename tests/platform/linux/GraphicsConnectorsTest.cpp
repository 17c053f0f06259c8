#include "platform/linux/GraphicsConnectors.h"

#include "support/GraphicsTree.h"

#include <gtest/gtest.h>

#include <ostream>

namespace calorivo {

void PrintTo(const GraphicsConnector& connector, std::ostream* stream) {
    *stream << connector.name << " of " << connector.device << (connector.isPanel ? " panel" : "")
            << (connector.isConnected ? " connected" : "") << (connector.isEnabled ? " enabled" : "");
}

namespace {

using test::GraphicsTree;

TEST(GraphicsConnectors, AreFoundWithTheirCards) {
    GraphicsTree tree;
    EXPECT_EQ(findGraphicsConnectors(tree.root()), GraphicsConnectors{});
    tree.macWithMux();
    tree.gpu("0000:05:00.0", "0x1a03", "0x2000", "card10");
    tree.connector("0000:05:00.0", "card10", "VGA-1", "unknown", "enabled");
    // A display adapter on USB, and what else is in the folder.
    tree.link("class/drm/card2/device", "../../../devices/platform/evdi.0");
    tree.file("class/drm/card2-DVI-I-1/status", "connected\n");
    tree.folder("class/drm/renderD128").file("class/drm/version", "drm 1.1.0\n");
    tree.file("class/drm/card7-HDMI-A-1/status", "connected\n").folder("class/drm/card");
    tree.folder("class/drm/cardinal-eDP-1");
    EXPECT_EQ(findGraphicsConnectors(tree.root()),
              (GraphicsConnectors{.cards = {"card0", "card1", "card10", "card2"},
                                  .connectors = {
                                      {"card0-DP-1", "0000:00:02.0", false, false, false},
                                      {"card0-eDP-1", "0000:00:02.0", true, true, true},
                                      {"card1-DP-2", "0000:01:00.0", false, false, false},
                                      {"card1-eDP-2", "0000:01:00.0", true, false, false},
                                      {"card10-VGA-1", "0000:05:00.0", false, false, false},
                                      {"card2-DVI-I-1", "evdi.0", false, true, false},
                                      {"card7-HDMI-A-1", "", false, true, false},
                                  }}));
}

TEST(GraphicsConnectors, AreBuiltInByTheirKind) {
    for (const char* const name : {"card0-eDP-1", "card12-LVDS-1", "card0-DSI-2"})
        EXPECT_TRUE(isPanelName(name)) << name;
    for (const char* const name :
         {"", "card0", "card0-", "card0-eDP", "eDP-1", "card0-DP-1", "card0-HDMI-A-1", "card0-edp-1",
          "card0-eDP-1-1", "card0-Virtual-1", "card0-DSIX-1"})
        EXPECT_FALSE(isPanelName(name)) << name;
}

}  // namespace
}  // namespace calorivo
