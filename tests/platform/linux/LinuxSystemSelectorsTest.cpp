#include "platform/linux/LinuxSystemSelectors.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

TEST(LinuxSystemSelectors, ReadsTheDistributionsVersionOrElseTheKernels) {
    struct Row {
        std::string_view osRelease;
        std::string_view kernel;
        std::optional<VersionNumbers> version;
    };
    const Row rows[] = {
        {"NAME=\"X\"\nVERSION_ID=\"22.04\"\n", "6.1.0-13-amd64", VersionNumbers{22, 4, 0}},
        {"VERSION_ID=12", "6.1.0", VersionNumbers{12, 0, 0}},
        {"VERSION_ID='15.5.2.9'\n", "6.1.0", VersionNumbers{15, 5, 2}},
        {"NAME=Rolling\nBUILD_ID=rolling\n", "6.17.3-arch1-1", VersionNumbers{6, 17, 3}},
        {"VERSION_ID=\"rawhide\"\n", "6.1", VersionNumbers{6, 1, 0}},
        {"VERSION_ID=\n", "5.10.209+", VersionNumbers{5, 10, 209}},
        {"XVERSION_ID=9\n", "4.x", VersionNumbers{4, 0, 0}},
        {"VERSION_ID=99999999999\n", "6.-2", VersionNumbers{6, 0, 0}},
        {"", "", std::nullopt},
        {"VERSION_ID=-3\n", "unknown", std::nullopt},
    };
    for (const Row& row : rows)
        EXPECT_EQ(systemVersion(row.osRelease, row.kernel), row.version) << row.osRelease;
}

TEST(LinuxSystemSelectors, AnswersBySelector) {
    const LinuxSystemSelectors system(VersionNumbers{22, 4, 11});
    const auto answer = [&system](OSType wanted) {
        std::int32_t response = -1;
        EXPECT_EQ(system.Gestalt(wanted, response), noErr);
        return response;
    };
    EXPECT_EQ(answer(selector("sysv")), 0x2249);
    EXPECT_EQ(answer(selector("sys1")), 22);
    EXPECT_EQ(answer(selector("sys2")), 4);
    EXPECT_EQ(answer(selector("sys3")), 11);
    std::int32_t untouched = -1;
    EXPECT_EQ(system.Gestalt(selector("mach"), untouched), gestaltUndefSelectorErr);
    EXPECT_EQ(LinuxSystemSelectors(std::nullopt).Gestalt(selector("sysv"), untouched),
              gestaltUndefSelectorErr);
    EXPECT_EQ(untouched, -1);
}

TEST(LinuxSystemSelectors, KnowsTheRunningSystem) {
    std::int32_t major = 0;
    EXPECT_EQ(LinuxSystemSelectors().Gestalt(gestaltSystemVersionMajor, major), noErr);
    EXPECT_GT(major, 0);
}

}  // namespace
}  // namespace calorivo
