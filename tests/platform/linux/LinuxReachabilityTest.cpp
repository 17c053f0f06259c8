#include "platform/linux/LinuxReachability.h"

#include "platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace calorivo {
namespace {

constexpr std::string_view header =
    "Iface\tDestination\tGateway \tFlags\tRefCnt\tUse\tMetric\tMask\t\tMTU\tWindow\tIRTT\n";
constexpr std::string_view defaultRoute = "eth0\t00000000\t0102A8C0\t0003\t0\t0\t100\t00000000\t0\t0\t0   \n";

TEST(LinuxReachability, FindsADefaultRoute) {
    const auto has = [](std::string_view line) { return hasDefaultRoute(std::string(header).append(line)); };
    EXPECT_TRUE(has(defaultRoute));
    EXPECT_TRUE(
        has("eth0\t0002A8C0\t00000000\t0001\t0\t0\t100\t00FFFFFF\t0\t0\t0\n"
            "wlan0\t00000000\t00000000\t0001\t0\t0\t0\t00000000\t0\t0\t0"));
    EXPECT_FALSE(has(""));
    EXPECT_FALSE(hasDefaultRoute(""));
    // Not to everywhere, not up, refused, cut off.
    EXPECT_FALSE(has("eth0\t0002A8C0\t00000000\t0001\t0\t0\t100\t00FFFFFF\t0\t0\t0\n"));
    EXPECT_FALSE(has("eth0\t00000000\t00000000\t0001\t0\t0\t100\t00FFFFFF\t0\t0\t0\n"));
    EXPECT_FALSE(has("eth0\t00000000\t0102A8C0\t0002\t0\t0\t100\t00000000\t0\t0\t0\n"));
    EXPECT_FALSE(has("*\t00000000\t00000000\t0201\t0\t0\t100\t00000000\t0\t0\t0\n"));
    EXPECT_FALSE(has("eth0\t00000000\t0102A8C0\t0003\n"));
    EXPECT_FALSE(has("eth0\t00000000\t0102A8C0\tzzzz\t0\t0\t100\t00000000\t0\t0\t0\n"));
}

TEST(LinuxReachability, FindsADefaultIpv6Route) {
    const std::string zero(32, '0');
    const auto line = [&zero](const std::string& prefix, const std::string& flags,
                              const std::string& device) {
        return zero + " " + prefix + " " + zero + " 00 fe800000000000000000000000000001 00000064 00000001 " +
               "00000000 " + flags + "     " + device + "\n";
    };
    EXPECT_TRUE(hasDefaultIpv6Route(line("00", "00000003", "eth0")));
    EXPECT_TRUE(hasDefaultIpv6Route(line("40", "00000001", "eth0") + line("00", "00450003", "eth0")));
    EXPECT_FALSE(hasDefaultIpv6Route(line("00", "00200200", "lo")));
    EXPECT_FALSE(hasDefaultIpv6Route(line("00", "00000001", "lo")));
    EXPECT_FALSE(hasDefaultIpv6Route(line("00", "00000201", "eth0")));
    EXPECT_FALSE(hasDefaultIpv6Route(line("80", "00000001", "eth0")));
    EXPECT_FALSE(hasDefaultIpv6Route(""));
}

TEST(LinuxReachability, TellsWhetherTheRestOfTheWorldIsReachable) {
    const TemporaryFolder folder;
    LinuxReachability reachability(folder.path());
    EXPECT_EQ(reachability.flagsForAddress({}), std::nullopt);
    std::filesystem::create_directories(folder.path("net"));
    folder.write("net/ipv6_route", "");
    EXPECT_EQ(reachability.flagsForAddress({}), 0U);
    folder.write("net/route", std::string(header).append(defaultRoute));
    EXPECT_EQ(reachability.flagsForAddress({}), ReachabilityFlags::reachable);
}

TEST(LinuxReachability, MakesConnectionsForPagesOfTheWebOnly) {
    LinuxReachability reachability;
    EXPECT_TRUE(reachability.createConnection({.url = "https://example.org/"}));
    EXPECT_TRUE(reachability.createConnection({.url = "http://example.org/"}));
    EXPECT_FALSE(reachability.createConnection({.url = "file:///etc/passwd"}));
    EXPECT_FALSE(reachability.createConnection({.url = ""}));
}

}  // namespace
}  // namespace calorivo
