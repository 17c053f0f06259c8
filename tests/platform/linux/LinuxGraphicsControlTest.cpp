#include "platform/linux/LinuxGraphicsControl.h"

#include "support/GraphicsTree.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>

namespace calorivo {
namespace {

using test::GraphicsTree;
using Names = std::vector<std::string>;

class LinuxGraphicsControlTest : public testing::Test {
  protected:
    static constexpr std::string_view switchClass = "AppleGraphicsControl";
    static constexpr std::string_view pciClass = "IOPCIDevice";

    std::vector<io_service_t> services(std::string_view className) {
        io_iterator_t iterator = 0;
        EXPECT_EQ(control.IOServiceGetMatchingServices(kIOMasterPortDefault,
                                                       control.IOServiceMatching(className), iterator),
                  io_return::success);
        std::vector<io_service_t> found;
        while (const io_service_t service = control.IOIteratorNext(iterator)) found.push_back(service);
        EXPECT_EQ(control.IOObjectRelease(iterator), io_return::success);
        return found;
    }
    /// The models as texts, each with its NUL.
    Names models() {
        Names names;
        for (const io_service_t service : services(pciClass)) {
            RegistryProperties properties;
            EXPECT_EQ(control.IORegistryEntryCreateCFProperties(service, properties), io_return::success);
            EXPECT_EQ(std::get<std::string>(properties.at("IOName")), "display");
            const auto& model = std::get<std::vector<std::uint8_t>>(properties.at("model"));
            EXPECT_EQ(model.back(), 0);
            names.emplace_back(model.begin(), model.end() - 1);
            EXPECT_EQ(control.IOObjectRelease(service), io_return::success);
        }
        return names;
    }
    io_connect_t connect() {
        const auto found = services(switchClass);
        EXPECT_EQ(found.size(), 1U);
        io_connect_t connection = 0;
        EXPECT_EQ(control.IOServiceOpen(found.at(0), control.machTaskSelf(), 0, connection),
                  io_return::success);
        EXPECT_EQ(control.IOObjectRelease(found.at(0)), io_return::success);
        return connection;
    }
    kern_return_t call(io_connect_t connection, std::uint32_t selector, std::vector<std::uint64_t> input) {
        std::uint32_t count = 0;
        return control.IOConnectCallScalarMethod(connection, selector, input, nullptr, count);
    }
    std::optional<std::uint64_t> state(io_connect_t connection, std::uint64_t number) {
        const std::array<std::uint64_t, 2> input{1, number};
        std::uint64_t value = 99;
        std::uint32_t count = 1;
        if (control.IOConnectCallScalarMethod(connection, 3, input, &value, count) != io_return::success)
            return std::nullopt;
        EXPECT_EQ(count, 1U);
        return value;
    }

    GraphicsTree tree;
    GraphicsReader reader{tree.root()};
    LinuxGraphicsControl control{reader, tree.path("pci.ids")};
};

TEST_F(LinuxGraphicsControlTest, HasNoSwitchOnAMachineWithOneProcessor) {
    EXPECT_EQ(services(switchClass), std::vector<io_service_t>{});
    tree.gpu("0000:00:02.0", "0x8086", "0x3e9b", "card0");
    EXPECT_EQ(services(switchClass), std::vector<io_service_t>{});
    tree.gpu("0000:01:00.0", "0x1002", "0x67ef", "card1");
    EXPECT_EQ(services(switchClass).size(), 1U);
    EXPECT_EQ(services("AppleSMC"), std::vector<io_service_t>{});
}

TEST_F(LinuxGraphicsControlTest, AnswersWhichProcessorIsInUse) {
    tree.hybridNotebook();
    const io_connect_t connection = connect();
    EXPECT_EQ(call(connection, 0, {}), io_return::success);
    EXPECT_EQ(state(connection, 7), 0U);
    EXPECT_EQ(state(connection, 4), 1U);
    EXPECT_EQ(state(connection, 5), 0U);
    tree.power(GraphicsTree::discrete, "suspended", "auto");
    EXPECT_EQ(state(connection, 7), 1U);
    tree.power(GraphicsTree::discrete, "active", "on");
    EXPECT_EQ(state(connection, 7), 0U);
    EXPECT_EQ(state(connection, 4), 0U);
    EXPECT_EQ(call(connection, 1, {}), io_return::success);
    EXPECT_EQ(control.IOServiceClose(connection), io_return::success);
}

TEST_F(LinuxGraphicsControlTest, SwitchesNothing) {
    tree.hybridNotebook();
    const io_connect_t connection = connect();
    EXPECT_EQ(call(connection, 2, {1, 7, 1}), io_return::notPermitted);
    EXPECT_EQ(call(connection, 2, {}), io_return::notPermitted);
    EXPECT_EQ(state(connection, 7), 0U);
}

TEST_F(LinuxGraphicsControlTest, RefusesWhatItDoesNotKnow) {
    tree.hybridNotebook();
    const io_connect_t connection = connect();
    EXPECT_EQ(call(connection, 4, {}), io_return::unsupported);
    for (const std::uint64_t number : {0U, 1U, 2U, 3U, 6U, 8U})
        EXPECT_EQ(state(connection, number), std::nullopt);
    EXPECT_EQ(call(connection, 3, {1, 7}), io_return::badArgument) << "no room for the answer";
    EXPECT_EQ(call(connection, 3, {1}), io_return::badArgument);
    const std::array<std::uint64_t, 2> otherSwitch{2, 7};
    std::uint64_t value = 99;
    std::uint32_t count = 1;
    EXPECT_EQ(control.IOConnectCallScalarMethod(connection, 3, otherSwitch, &value, count),
              io_return::badArgument);
    count = 0;
    EXPECT_EQ(
        control.IOConnectCallScalarMethod(connection, 3, std::array<std::uint64_t, 2>{1, 7}, &value, count),
        io_return::badArgument);
    EXPECT_EQ(value, 99U);

    io_iterator_t iterator = 77;
    EXPECT_EQ(control.IOServiceGetMatchingServices(5, control.IOServiceMatching(switchClass), iterator),
              io_return::badArgument);
    EXPECT_EQ(iterator, 77U);
}

TEST_F(LinuxGraphicsControlTest, KnowsItsHandlesOnly) {
    tree.hybridNotebook();
    EXPECT_EQ(call(1, 0, {}), io_return::notOpen);
    EXPECT_EQ(control.IOServiceClose(1), io_return::notOpen);
    EXPECT_EQ(control.IOObjectRelease(0), io_return::badArgument);
    EXPECT_EQ(control.IOIteratorNext(0), 0U);
    RegistryProperties properties;
    EXPECT_EQ(control.IORegistryEntryCreateCFProperties(0, properties), io_return::badArgument);

    const io_service_t service = services(switchClass).at(0);
    io_connect_t connection = 77;
    EXPECT_EQ(control.IOServiceOpen(service, control.machTaskSelf() + 1, 0, connection),
              io_return::badArgument);
    EXPECT_EQ(control.IOServiceOpen(service, control.machTaskSelf(), 1, connection), io_return::badArgument);
    EXPECT_EQ(control.IOServiceOpen(service + 1, control.machTaskSelf(), 0, connection),
              io_return::badArgument);
    EXPECT_EQ(control.IOServiceOpen(services(pciClass).at(0), control.machTaskSelf(), 0, connection),
              io_return::unsupported);
    EXPECT_EQ(connection, 77U);
    ASSERT_EQ(control.IOServiceOpen(service, control.machTaskSelf(), 0, connection), io_return::success);
    EXPECT_EQ(control.IOObjectRelease(service), io_return::success);
    EXPECT_EQ(control.IOObjectRelease(service), io_return::badArgument);
    EXPECT_EQ(control.IOServiceClose(connection), io_return::success);
    EXPECT_EQ(control.IOServiceClose(connection), io_return::notOpen);
    EXPECT_EQ(call(connection, 3, {1, 7}), io_return::notOpen);
}

TEST_F(LinuxGraphicsControlTest, NamesTheProcessorsAsPeopleDo) {
    EXPECT_EQ(models(), Names{});
    tree.hybridNotebook();
    tree.pci("0000:00:1f.0", "0x060100", "0x8086", "0xa30d");
    EXPECT_EQ(models(), (Names{"Intel GPU 3e9b", "NVIDIA GPU 1f91"})) << "without the file of names";
    tree.file("pci.ids",
              "10de  NVIDIA Corporation\n\t0647  G96CM [GeForce 9600M GT]\n\t0863  C79 [GeForce 9400M]\n"
              "\t1f91  TU117M [GeForce GTX 1650]\n"
              "8086  Intel Corporation\n\t3e9b  CoffeeLake-H GT2 [UHD Graphics 630]\n");
    EXPECT_EQ(models(), (Names{"Intel UHD Graphics 630", "NVIDIA GeForce GTX 1650"}));
    tree.gpu("0000:02:00.0", "0x10de", "0x0647", "card2");
    tree.gpu("0000:03:00.0", "0x10de", "0x0863", "card3");
    EXPECT_EQ(models(), (Names{"Intel UHD Graphics 630", "NVIDIA GeForce GTX 1650", "NVIDIA GeForce 9600M GT",
                               "NVIDIA GeForce 9400M"}));
}

}  // namespace
}  // namespace calorivo
