#include "host/ProviderSysCtl.h"

#include "platform/linux/LinuxSmc.h"
#include "support/FakeTree.h"

#include <gtest/gtest.h>

#include <array>

namespace calorivo {
namespace {

TEST(ProviderSysCtl, AnswersInTwoCalls) {
    test::FakeTree tree;
    tree.file("class/dmi/id/product_name", "Laptop 9\n");
    LinuxSmcOptions machine;
    machine.sys = tree.root();
    const LinuxSmc provider(std::move(machine));
    ProviderSysCtl sysCtl(provider);
    std::size_t size = 0;
    EXPECT_EQ(sysCtl.sysctlbyname("hw.model", nullptr, size), 0);
    EXPECT_EQ(size, 9U);
    std::array<char, 9> text{};
    EXPECT_EQ(sysCtl.sysctlbyname("hw.model", text.data(), size), 0);
    EXPECT_STREQ(text.data(), "Laptop 9");
    size = 4;
    EXPECT_EQ(sysCtl.sysctlbyname("hw.model", text.data(), size), -1);
    EXPECT_EQ(sysCtl.sysctlbyname("hw.other", nullptr, size), -1);
    EXPECT_EQ(size, 0U);
}

}  // namespace
}  // namespace calorivo
