#include "platform/linux/PciNames.h"

#include "HwmonMachines.h"
#include "TemporaryFolder.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>

namespace calorivo {
namespace {

using machines::gpu;

constexpr std::string_view text =
    "#\n"
    "# 8086  in a comment\n"
    "\n"
    "1002  Advanced Micro Devices\n"
    "\t0863  Wrong vendor\n"
    "\t67ef  Baffin [Radeon RX 460/560D / Pro 450/455/460/555/555X/560/560X]\n"
    "# between\n"
    "\t\t103c 3421  Radeon RX 460\n"
    "\t\t106b 0160  Radeon Pro 460\n"
    "\t\t106b 017a  Radeon Pro 555\n"
    "\t67ff  Baffin [Radeon RX 560]\n"
    "\t73bf  Navi 21 [Radeon RX 6800] (rev [c1])\n"
    "\t7400  \x1b[31mred\xff\n"
    "10de  NVIDIA Corporation\n"
    "\t0647  G96CM [GeForce 9600M GT]\n"
    "\t0863  C79 [GeForce 9400M]\n"
    "\t0864  NVIDIA []\n"
    "1a03  ASPEED Technology\n"
    "\t2000  ASPEED Graphics Family\n"
    "8086  Intel Corporation\n"
    "\t3e9b  CoffeeLake-H GT2 [UHD Graphics 630]\n"
    "\t591b  HD Graphics 630\n"
    "\t\t106b 3e9c  not a device\n"
    "C 03  Display controller\n"
    "\t3e9c  not a device\n";

HwmonChip device(std::uint32_t vendor, std::uint32_t number, std::uint32_t subvendor = 0,
                 std::uint32_t sub = 0) {
    HwmonChip chip = gpu("gpu", "0000:01:00.0", vendor, number, {});
    chip.pciSubvendor = subvendor;
    chip.pciSubdevice = sub;
    return chip;
}

TEST(PciNames, NamesGPUsAsPeopleDo) {
    struct Row {
        HwmonChip chip;
        std::string name;
    };
    const std::array rows{
        Row{device(0x8086, 0x3e9b), "Intel UHD Graphics 630"},
        Row{device(0x8086, 0x591b), "Intel HD Graphics 630"},
        Row{device(0x8086, 0x3e9c), "Intel GPU 3e9c"},
        Row{device(0x10de, 0x0863), "NVIDIA GeForce 9400M"},
        Row{device(0x10de, 0x0647), "NVIDIA GeForce 9600M GT"},
        Row{device(0x10de, 0x0864), "NVIDIA []"},
        Row{device(0x10de, 0x0001), "NVIDIA GPU 0001"},
        Row{device(0x1002, 0x67ff), "AMD Radeon RX 560"},
        Row{device(0x1002, 0x73bf), "AMD c1"},
        Row{device(0x1002, 0x7400), "AMD [31mred\xef\xbf\xbd"},
        Row{device(0x1002, 0x67ef), "AMD Radeon RX 460/560D / Pro 450/455/460/555/555X/560/560X"},
        Row{device(0x1002, 0x67ef, 0x106b, 0x017a), "AMD Radeon Pro 555"},
        Row{device(0x1002, 0x67ef, 0x106b, 0x9999),
            "AMD Radeon RX 460/560D / Pro 450/455/460/555/555X/560/560X"},
        Row{device(0x1002, 0x67ef, 0x103c, 0x3421),
            "AMD Radeon RX 460/560D / Pro 450/455/460/555/555X/560/560X"},
        Row{device(0x1a03, 0x2000), "ASPEED Graphics Family"},
        Row{device(0x1a03, 0x2001), "GPU 2001"},
        Row{device(0x4444, 0x2001), "GPU 2001"},
        Row{machines::chip("gpu_thermal", "gpu_thermal", {}), "GPU"},
    };
    const TemporaryFolder folder;
    PciNames names(folder.write("pci.ids", text));
    for (const Row& row : rows) EXPECT_EQ(names.gpuName(row.chip), row.name);
}

TEST(PciNames, FindsAVendorInTheFirstLineAndADeviceInTheLast) {
    EXPECT_EQ(pciDeviceText("8086  Intel\n\t0001  First", "8086", "0001", ""), "First");
    EXPECT_EQ(pciDeviceText("8086  Intel\n\t0001  First", "8086", "0002", ""), "");
    EXPECT_EQ(pciDeviceText("8086  Intel", "8086", "0002", ""), "");
    EXPECT_EQ(pciDeviceText("", "8086", "0002", ""), "");
}

TEST(PciNames, TakesTheFirstFileThatCanBeRead) {
    const TemporaryFolder folder;
    const std::string first = folder.write("first", "8086  Intel\n\t3e9b  First\n");
    const std::string second = folder.write("second", "8086  Intel\n\t3e9b  Second\n");
    const std::string empty = folder.write("empty", "");
    const auto nameBy = [](const std::string& places) {
        return PciNames(places).gpuName(device(0x8086, 0x3e9b));
    };
    EXPECT_EQ(nameBy(first + ':' + second), "Intel First");
    EXPECT_EQ(nameBy(folder.path("absent") + ':' + empty + "::" + second), "Intel Second");
    EXPECT_EQ(nameBy(folder.path("absent") + ':'), "Intel GPU 3e9b");
}

TEST(PciNames, GoesWithoutTheFile) {
    const TemporaryFolder folder;
    ASSERT_EQ(::mkfifo(folder.path("fifo").c_str(), 0600), 0);
    for (const std::string& file :
         {std::string(), folder.path("absent"), folder.path(), folder.path("fifo")}) {
        PciNames names(file);
        EXPECT_EQ(names.gpuName(device(0x8086, 0x3e9b)), "Intel GPU 3e9b");
        EXPECT_EQ(names.gpuName(device(0x10de, 0x0042)), "NVIDIA GPU 0042");
        EXPECT_EQ(names.gpuName(device(0x1002, 0x73bf)), "AMD GPU 73bf");
    }
}

}  // namespace
}  // namespace calorivo
