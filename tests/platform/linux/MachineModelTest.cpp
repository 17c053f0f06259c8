#include "platform/linux/MachineModel.h"

#include "support/FakeTree.h"

#include <gtest/gtest.h>

#include <array>

namespace calorivo {
namespace {

using test::FakeTree;

TEST(MachineModel, IsTheProductsName) {
    FakeTree tree;
    tree.file("class/dmi/id/product_name", "MacBookPro11,3\n").file("class/dmi/id/board_name", "Mac-2BD1\n");
    EXPECT_EQ(machineModel(tree.root()), "MacBookPro11,3");
}

TEST(MachineModel, IsTheBoardsNameWhereTheProductHasAFiller) {
    for (const char* filler :
         {"System Product Name", "To Be Filled By O.E.M.", "Default string", "", "   "}) {
        FakeTree tree;
        tree.file("class/dmi/id/product_name", std::string(filler) + "\n")
            .file("class/dmi/id/board_name", "PRIME X570-P\n");
        EXPECT_EQ(machineModel(tree.root()), "PRIME X570-P") << filler;
    }
}

TEST(MachineModel, ComesFromTheDeviceTreeWhereThereIsNoFirmwareTable) {
    FakeTree tree;
    tree.file("firmware/devicetree/base/model", std::string("Sample Board 4\0", 15));
    EXPECT_EQ(machineModel(tree.root()), "Sample Board 4");
    FakeTree compatible;
    compatible.file("firmware/devicetree/base/compatible", std::string("apple,j314s\0apple,t6000\0", 24));
    EXPECT_EQ(machineModel(compatible.root()), "apple,j314s");
}

TEST(MachineModel, IsNoneWhenNothingTellsIt) {
    FakeTree tree;
    EXPECT_EQ(machineModel(tree.root()), std::nullopt);
    tree.file("class/dmi/id/product_name", "None\n").file("class/dmi/id/board_name", "\n");
    EXPECT_EQ(machineModel(tree.root()), std::nullopt);
}

TEST(MachineModel, HasNoControlCharacters) {
    FakeTree tree;
    tree.file("class/dmi/id/product_name", "Laptop\x1b[31m \t9\n");
    EXPECT_EQ(machineModel(tree.root()), "Laptop[31m 9");
}

}  // namespace
}  // namespace calorivo
