#include "platform/linux/GraphicsCards.h"

#include "support/GraphicsTree.h"

#include <gtest/gtest.h>

#include <array>

namespace calorivo {
namespace {

using test::GraphicsTree;
using Cards = std::vector<GraphicsCard>;

constexpr std::uint32_t apple = 0x106b;

GraphicsCard card(std::string address, std::uint32_t vendor, std::uint32_t device, bool isBootVGA = false) {
    return {.address = std::move(address),
            .identity = {vendor, device, apple, 0x017a},
            .isBootVGA = isBootVGA,
            .isIntegrated = false};
}

GraphicsCard integrated(GraphicsCard card) {
    card.isIntegrated = true;
    return card;
}

TEST(GraphicsCards, AreTheDisplayDevicesOnPCIInTheOrderOfTheirAddresses) {
    GraphicsTree tree;
    EXPECT_EQ(findGraphicsCards(tree.root()), Cards{});
    tree.pci("0000:02:00.0", "0x030200", "0x10de", "0x1f91");
    tree.pci("0000:02:00.1", "0x040300", "0x10de", "0x10fa");
    tree.pci("0000:01:00.0", "0x038000", "0x1002", "0x67ef");
    tree.pci("0000:00:1f.0", "0x060100", "0x8086", "0xa30d");
    tree.gpu("0000:00:02.0", "0x8086", "0x3e9b", "card0");
    tree.file("bus/pci/devices/0000:00:03.0/class", "").file("bus/pci/devices/0000:00:04.0", "no folder");
    tree.folder("bus/pci/devices/0000:00:05.0");
    EXPECT_EQ(findGraphicsCards(tree.root()),
              (Cards{integrated(card("0000:00:02.0", 0x8086, 0x3e9b, true)),
                     card("0000:01:00.0", 0x1002, 0x67ef), card("0000:02:00.0", 0x10de, 0x1f91)}));
}

TEST(GraphicsCards, AreIntegratedByTheirNumbersAndPlaceOrElseByTheStartOfTheMachine) {
    struct Row {
        const char* what;
        Cards cards;
        std::vector<bool> isIntegrated;
        bool canSwitch;
    };
    for (const Row& row : {
             Row{"none", {}, {}, false},
             Row{"one GPU", {card("0000:00:02.0", 0x8086, 0x3e9b, true)}, {true}, false},
             Row{"one card", {card("0000:01:00.0", 0x1002, 0x73ff, true)}, {true}, false},
             Row{"a Mac that starts on the discrete one",
                 {card("0000:00:02.0", 0x8086, 0x3e9b), card("0000:01:00.0", 0x1002, 0x67ef, true)},
                 {true, false},
                 true},
             Row{"processor and card of one maker",
                 {card("0000:03:00.0", 0x1002, 0x73ff), card("0000:08:00.0", 0x1002, 0x1638, true)},
                 {false, true},
                 true},
             Row{"processor and card of the other maker",
                 {card("0000:00:02.0", 0x8086, 0x4680, true), card("0000:03:00.0", 0x8086, 0x56a0)},
                 {true, false},
                 true},
             Row{"the old pair",
                 {card("0000:02:00.0", 0x10de, 0x0647, true), card("0000:03:00.0", 0x10de, 0x0863)},
                 {false, true},
                 true},
             Row{"a processor that is too new",
                 {card("0000:01:00.0", 0x10de, 0x2684), card("0000:0f:00.0", 0x1002, 0xffff, true)},
                 {false, true},
                 true},
             Row{"two cards",
                 {card("0000:01:00.0", 0x10de, 0x2684, true), card("0000:02:00.0", 0x10de, 0x2684)},
                 {true, false},
                 true},
             Row{"two cards without a start on either",
                 {card("0000:01:00.0", 0x10de, 0x20b0), card("0000:02:00.0", 0x10de, 0x20b0)},
                 {false, false},
                 false},
             Row{"a processor with two parts",
                 {card("0000:00:02.0", 0x8086, 0x2a42, true), card("0000:00:02.1", 0x8086, 0x2a43)},
                 {true, true},
                 false},
         }) {
        Cards cards = row.cards;
        chooseIntegratedCards(cards);
        std::vector<bool> isIntegrated;
        for (const GraphicsCard& found : cards) isIntegrated.push_back(found.isIntegrated);
        EXPECT_EQ(isIntegrated, row.isIntegrated) << row.what;
        EXPECT_EQ(canSwitchGraphics(cards), row.canSwitch) << row.what;
    }
}

TEST(GraphicsCards, SleepAsTheKernelSays) {
    GraphicsTree tree;
    tree.gpu("0000:01:00.0", "0x10de", "0x1f91", "card1");
    struct Row {
        const char* status;
        bool isAwake;
    };
    for (const Row& row : {Row{"active", true}, Row{"unsupported", true}, Row{"", true},
                           Row{"suspended", false}, Row{"suspending", false}, Row{"resuming", false},
                           Row{"error", false}, Row{"something new", false}}) {
        tree.power("0000:01:00.0", row.status);
        EXPECT_EQ(isCardAwake(tree.root(), "0000:01:00.0"), row.isAwake) << row.status;
    }
    tree.remove("devices/pci0000:00/0000:01:00.0/power");
    EXPECT_TRUE(isCardAwake(tree.root(), "0000:01:00.0")) << "a kernel without power management";
    EXPECT_FALSE(isCardAwake(tree.root(), "0000:09:00.0")) << "gone";
}

TEST(GraphicsCards, AreManagedWhereTheKernelMaySuspendThem) {
    GraphicsTree tree;
    tree.gpu("0000:01:00.0", "0x10de", "0x1f91", "card1");
    tree.power("0000:01:00.0", "active", "auto");
    EXPECT_TRUE(isCardPowerManaged(tree.root(), "0000:01:00.0"));
    tree.power("0000:01:00.0", "active", "on");
    EXPECT_FALSE(isCardPowerManaged(tree.root(), "0000:01:00.0"));
    tree.remove("devices/pci0000:00/0000:01:00.0/power");
    EXPECT_FALSE(isCardPowerManaged(tree.root(), "0000:01:00.0"));
    EXPECT_FALSE(isCardPowerManaged(tree.root(), "0000:09:00.0"));
}

}  // namespace
}  // namespace calorivo
