#include "output/PopUpButton.h"

#include <gtest/gtest.h>

#include <limits>

namespace calorivo {
namespace {

TEST(PopUpButton, HasItemsByTheirIndexAndNoneElsewhere) {
    PopUpButton button;
    button.setMenu({{"first"}, PopUpItem::separatorItem(), {"sensor", SensorKey("TC0P")}});
    ASSERT_NE(button.itemAtIndex(2), nullptr);
    EXPECT_EQ(*button.itemAtIndex(2), (PopUpItem{"sensor", SensorKey("TC0P")}));
    EXPECT_TRUE(button.itemAtIndex(1)->isSeparatorItem);
    for (const std::int32_t index : {-1, 3, std::numeric_limits<std::int32_t>::max()})
        EXPECT_EQ(button.itemAtIndex(index), nullptr) << index;
}

TEST(PopUpButton, TellsOfAMenuWhenItIsWhole) {
    PopUpButton button;
    int told = 0;
    const Observation observation = button.observeMenu([&] { ++told; });
    button.setMenu({{"old"}});
    button.removeAllItems();
    button.addItem({"new"});
    EXPECT_EQ(told, 1);
    button.announceMenu();
    EXPECT_EQ(told, 2);
    EXPECT_EQ(button.menu(), (PopUpButton::Menu{{"new"}}));
}

}  // namespace
}  // namespace calorivo
