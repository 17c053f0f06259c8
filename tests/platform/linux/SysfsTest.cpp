#include "platform/linux/Sysfs.h"

#include "support/FakeTree.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <sys/stat.h>

namespace calorivo {
namespace {

using test::FakeTree;

TEST(Sysfs, ReadsNumbersAsTheKernelWritesThem) {
    EXPECT_EQ(parseAttributeNumber("45000\n"), 45000);
    EXPECT_EQ(parseAttributeNumber("-127000\n"), -127000);
    EXPECT_EQ(parseAttributeNumber("7"), 7);
}

TEST(Sysfs, RejectsEverythingElseAsANumber) {
    for (const char* text : {"", "\n", "45 000\n", "45000\n\n", "+45\n", "0x2d\n", "4.5\n", " 45\n", "--4\n",
                             "N/A\n", "99999999999999999999\n", "45000 \n"})
        EXPECT_EQ(parseAttributeNumber(text), std::nullopt) << text;
}

TEST(Sysfs, TakesOneLineFeedOffATextAndNothingElse) {
    FakeTree tree;
    tree.file("a", "FS! \n").file("b", "two\n\n").file("c", "");
    const FileDescriptor folder = openFolder(tree.root());
    EXPECT_EQ(readAttribute(folder.get(), "a"), "FS! ");
    EXPECT_EQ(readAttribute(folder.get(), "b"), "two\n");
    EXPECT_EQ(readAttribute(folder.get(), "c"), "");
    EXPECT_EQ(readAttribute(folder.get(), "absent"), std::nullopt);
}

TEST(Sysfs, ReadsAtMostOnePage) {
    FakeTree tree;
    tree.file("long", std::string(100000, 'x'));
    const FileDescriptor folder = openFolder(tree.root());
    EXPECT_EQ(readAttribute(folder.get(), "long")->size(), 4096U);
}

TEST(Sysfs, DoesNotWaitForAFifo) {
    FakeTree tree;
    ASSERT_EQ(mkfifo(tree.path("pipe").c_str(), 0600), 0);
    const FileDescriptor folder = openFolder(tree.root());
    EXPECT_EQ(readAttributeNumber(folder.get(), "pipe"), std::nullopt);
}

TEST(Sysfs, AnOpenDescriptorReadsTheNewValue) {
    FakeTree tree;
    tree.file("temp1_input", "41000\n");
    const FileDescriptor folder = openFolder(tree.root());
    const FileDescriptor file = openAttribute(folder.get(), "temp1_input");
    EXPECT_EQ(readOpenNumber(file.get()).value, 41000);
    tree.file("temp1_input", "42500\n");
    EXPECT_EQ(readOpenNumber(file.get()).value, 42500);
    tree.file("temp1_input", "nonsense\n");
    EXPECT_EQ(readOpenNumber(file.get()).error, EINVAL);
}

TEST(Sysfs, ReadsHexadecimalIdentifiers) {
    FakeTree tree;
    tree.file("vendor", "0x1002\n").file("other", "1002\n");
    const FileDescriptor folder = openFolder(tree.root());
    EXPECT_EQ(readAttributeHex(folder.get(), "vendor"), 0x1002U);
    EXPECT_EQ(readAttributeHex(folder.get(), "other"), 0U);
    EXPECT_EQ(readAttributeHex(folder.get(), "absent"), 0U);
}

TEST(Sysfs, JoinsPathsByTheirText) {
    EXPECT_EQ(joinedPath("/class/hwmon", "../../devices/platform/coretemp.0/hwmon/hwmon3"),
              "/devices/platform/coretemp.0/hwmon/hwmon3");
    EXPECT_EQ(joinedPath("/devices/a/hwmon/hwmon3", "../../../a"), "/devices/a");
    EXPECT_EQ(joinedPath("/a/b/", "./c//d"), "/a/b/c/d");
    EXPECT_EQ(joinedPath("/a", "../../../../x"), "/x");
    EXPECT_EQ(joinedPath("/a/b", "/c"), "/c");
}

TEST(Sysfs, ListsNamesSorted) {
    FakeTree tree;
    tree.file("temp2_input", "1").file("name", "x").folder("device");
    const FileDescriptor folder = openFolder(tree.root());
    EXPECT_EQ(namesInFolder(folder.get()), (std::vector<std::string>{"device", "name", "temp2_input"}));
    EXPECT_EQ(namesInFolder(folder.get()).size(), 3U) << "the list can be taken again";
}

TEST(Sysfs, ACopyOfATreeIsNoRealSysfs) {
    const FakeTree tree;
    const FileDescriptor folder = openFolder(tree.root());
    EXPECT_FALSE(isRealSysfs(folder.get()));
}

TEST(Sysfs, KeepsNoDescriptorOfThoseItMadeRoomFor) {
    const FakeTree tree;
    const FileDescriptor folder = openFolder(tree.root());
    const int lowestFree = openFolder(tree.root()).get();
    for (const std::size_t count : {1U, 500U, 1U << 30U}) {
        makeRoomForDescriptors(folder.get(), count);
        EXPECT_EQ(openFolder(tree.root()).get(), lowestFree) << count;
        EXPECT_EQ(fcntl(static_cast<int>(count) - 1, F_GETFD) >= 0, count == 1) << count;
    }
}

}  // namespace
}  // namespace calorivo
