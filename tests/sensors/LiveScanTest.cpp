#include "sensors/DiscoveryFixture.h"
#include "smc/SmcClient.h"
#include "support/FakeSmc.h"

#include <gtest/gtest.h>

#include <cstring>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace calorivo {
namespace {

class LiveScan : public test::DiscoveryFixture {
  protected:
    KeyList scan() {
        discovery.getAllTempSensorNames({"calorivo"});
        return lists.tempSensorNames;
    }

    test::FakeSmc smc;
};

/// A controller whose keys stand at the indices that a test gives; one without a key fails.
class IndexedSmc final : public IOKit {
  public:
    IndexedSmc(IOKit& smc, std::vector<std::optional<std::string>> keys) : smc_(smc), keys_(std::move(keys)) {
        smcSetIOKit(this);
    }
    ~IndexedSmc() override { smcSetIOKit(&smc_); }

    kern_return_t IOConnectCallStructMethod(io_connect_t connection, std::uint32_t selector,
                                            const void* input, std::size_t inputSize, void* output,
                                            std::size_t& outputSize) override {
        SMCKeyData in;
        std::memcpy(&in, input, sizeof in);
        if (static_cast<SmcCommand>(in.data8) != SmcCommand::readKeyByIndex)
            return smc_.IOConnectCallStructMethod(connection, selector, input, inputSize, output, outputSize);
        if (in.data32 >= keys_.size() || !keys_[in.data32]) return io_return::notFound;
        SMCKeyData out{};
        out.key = smcKeyFromString(*keys_[in.data32], 4, 16);
        std::memcpy(output, &out, sizeof out);
        return io_return::success;
    }
    kern_return_t IOMasterPort(mach_port_t /*port*/, mach_port_t& /*masterPort*/) override { return 0; }
    kern_return_t IOServiceGetMatchingServices(mach_port_t /*masterPort*/,
                                               const MatchingDictionary& /*matching*/,
                                               io_iterator_t& /*services*/) override {
        return 0;
    }
    [[nodiscard]] io_object_t IOIteratorNext(io_iterator_t /*iterator*/) override { return 0; }
    kern_return_t IOObjectRelease(io_object_t /*object*/) override { return 0; }
    [[nodiscard]] task_port_t machTaskSelf() const override { return 0; }
    kern_return_t IOServiceOpen(io_service_t /*service*/, task_port_t /*task*/, std::uint32_t /*type*/,
                                io_connect_t& /*connection*/) override {
        return 0;
    }
    kern_return_t IOServiceClose(io_connect_t /*connection*/) override { return 0; }

  private:
    IOKit& smc_;
    std::vector<std::optional<std::string>> keys_;
};

TEST_F(LiveScan, KeepsTemperatureKeysThatReadAbove0) {
    smc.setTemperature("TC0P", 0.25).setTemperature("TC1P", 0).setTemperature("TC2P", -3);
    smc.setTemperature("FC0P", 42).setTemperature("tC0P", 42).setTemperature("GTC0", 42);
    EXPECT_EQ(scan(), (KeyList{"TC0P"}));
}

TEST_F(LiveScan, HasNoUpperBound) {
    smc.setTemperature("TC0P", 120).setTemperature("TC1P", 127.25);
    EXPECT_EQ(scan(), (KeyList{"TC0P", "TC1P"}));
}

TEST_F(LiveScan, KeepsGPUSensorsThatRead0OnTheirImportantKeys) {
    for (const std::string_view key :
         {"TG0D", "TG0P", "TG0d", "TGxD", "TG0p", "TG0H", "TG0T", "TG0h", "TCGD"})
        smc.setTemperature(key, 0);
    smc.setTemperature("TG1D", -5);
    EXPECT_EQ(scan(), (KeyList{"TG0D", "TG0P", "TG0d", "TG1D", "TGxD"}));
}

TEST_F(LiveScan, CountsAnotherTypeAs0) {
    smc.set("TC0P", "ui16", {60, 0}).set("TC1P", "fpe2", {60, 0}).set("TG0D", "ui8 ", {60});
    smc.set("TC2P", "sp78", {60, 0});
    EXPECT_EQ(scan(), (KeyList{"TC2P", "TG0D"}));
}

TEST_F(LiveScan, SkipsKeysThatCannotBeReadEvenOfAGPU) {
    smc.setTemperature("TC0P", 42).setTemperature("TC1P", 43).fail("TC0P");
    smc.setTemperature("TG0D", 0).fail("TG0D");
    EXPECT_EQ(scan(), (KeyList{"TC1P"}));
}

TEST_F(LiveScan, SkipsIndicesThatFailAndGoesOn) {
    smc.setTemperature("TC0P", 42).setTemperature("TC1P", 43).set("#KEY", "ui32", {0, 0, 0, 4});
    const IndexedSmc indexed(smc, {std::nullopt, "TC1P", std::nullopt, "TC0P", "TC2P"});
    EXPECT_EQ(scan(), (KeyList{"TC1P", "TC0P"}));
}

TEST_F(LiveScan, TakesAKeyTwiceThatTheControllerTellsTwice) {
    smc.setTemperature("TC0P", 42).set("#KEY", "ui32", {0, 0, 0, 3});
    const IndexedSmc indexed(smc, {"TC0P", "#KEY", "TC0P"});
    EXPECT_EQ(scan(), (KeyList{"TC0P", "TC0P"}));
    EXPECT_TRUE(lists.tempSensorNames.containsString("TC0P"));
}

TEST_F(LiveScan, AsksForAsManyKeysAsTheControllerHas) {
    smc.setTemperature("TC0P", 42).setTemperature("TC1P", 43).setTemperature("TC2P", 44);
    smc.set("#KEY", "ui32", {0, 0, 0, 3});
    EXPECT_EQ(scan(), (KeyList{"TC0P", "TC1P"}));
}

TEST_F(LiveScan, FindsNothingWhenTheControllerTellsNoCount) {
    smc.setTemperature("TC0P", 42).fail("#KEY");
    EXPECT_EQ(scan(), KeyList{});
    smc.fail("#KEY", io_return::success).set("#KEY", "ui32", {0xff, 0xff, 0xff, 0xff});
    EXPECT_EQ(scan(), KeyList{});
}

TEST_F(LiveScan, FindsNothingWithoutAController) {
    smcSetIOKit(nullptr);
    discover();
    EXPECT_EQ(lists.tempSensorNames, KeyList{});
    EXPECT_EQ(lists.validSensorNames, KeyList{});
    EXPECT_EQ(lists.numFans.get(), 0);
}

TEST_F(LiveScan, IsNotHarmedByAKeyOfOddCharacters) {
    smc.setTemperature("TC0P", 42).set("#KEY", "ui32", {0, 0, 0, 3});
    const IndexedSmc indexed(smc, {std::string("T\0\0\0", 4), std::string("TN\xff\xfe"), "TC0P"});
    EXPECT_EQ(scan(), (KeyList{"TC0P"}));
}

}  // namespace
}  // namespace calorivo
