#include "smc/SmcService.h"

#include "smc/SmcClient.h"
#include "smc/SmcReaders.h"
#include "support/PrintedText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <string>

namespace calorivo {
namespace {

using RecordBytes = std::array<std::uint8_t, 80>;

/// One temperature of 41 degrees under "TB0T", and a key "Tbad" whose driver fails after writing something.
class SmallService final : public SmcService {
  public:
    bool present = true;
    kern_return_t openResult = io_return::success;
    std::string history;

    [[nodiscard]] std::string_view sourceName() const override { return "small"; }
    [[nodiscard]] std::optional<std::string> modelName() const override { return std::nullopt; }
    [[nodiscard]] std::optional<KeyOrigin> originOf(std::string_view) override { return std::nullopt; }

  protected:
    bool isPresent() override {
        history += "isPresent ";
        return present;
    }
    kern_return_t open() override {
        history += "open ";
        return openResult;
    }
    void close() override { history += "close "; }
    std::optional<std::uint32_t> keyAt(std::uint32_t index) override {
        if (index != 0) return std::nullopt;
        return smcCode("TB0T");
    }
    kern_return_t keyInformation(std::uint32_t key, SmcKeyInformation& information) override {
        if (key == smcCode("TB0T")) information = {2, smcCode("sp78")};
        if (key != smcCode("Tbad")) return io_return::success;
        information = {2, smcCode("sp78")};
        return io_return::ioError;
    }
    kern_return_t readBytes(std::uint32_t key, std::span<std::uint8_t, 32> bytes) override {
        if (key == smcCode("TB0T")) bytes[0] = 0x29;
        if (key != smcCode("Tbad")) return io_return::success;
        std::fill(bytes.begin(), bytes.end(), std::uint8_t{0x55});
        return io_return::ioError;
    }
};

io_connect_t opened(SmcService& service) {
    mach_port_t port = 0;
    io_iterator_t services = 0;
    io_connect_t connection = 0;
    service.IOMasterPort(0, port);
    service.IOServiceGetMatchingServices(port, service.IOServiceMatching("AppleSMC"), services);
    service.IOServiceOpen(service.IOIteratorNext(services), service.machTaskSelf(), 0, connection);
    return connection;
}

struct Reply {
    kern_return_t result;
    RecordBytes output;
    friend bool operator==(const Reply&, const Reply&) = default;
};

/// Sends one request; the output is full of 0xee before.
Reply send(SmcService& service, io_connect_t connection, int command, std::string_view key = "TB0T",
           std::uint32_t index = 0) {
    SMCKeyData input{};
    input.key = smcCode(key);
    input.data8 = static_cast<std::uint8_t>(command);
    input.data32 = index;
    alignas(SMCKeyData) RecordBytes output{};
    output.fill(0xee);
    std::size_t size = output.size();
    const kern_return_t result =
        service.IOConnectCallStructMethod(connection, 2, &input, sizeof input, output.data(), size);
    return {result, output};
}

RecordBytes untouched() {
    RecordBytes bytes{};
    bytes.fill(0xee);
    return bytes;
}

TEST(SmcService, AnswersTheWholeModule) {
    SmallService service;
    smcSetIOKit(&service);
    EXPECT_EQ(smcOpen(), 0);
    EXPECT_EQ(smcTemperature("TB0T"), 41.0);
    EXPECT_EQ(smcTemperature("Tbad"), 0.0);
    EXPECT_EQ(smcClose(), io_return::success);
    EXPECT_EQ(smcClose(), io_return::notOpen);
    EXPECT_EQ(smcTemperature("TB0T"), 0.0);
    EXPECT_EQ(service.history, "isPresent open close ");
    smcSetIOKit(nullptr);
}

TEST(SmcService, IsNotFoundWhenItHasNothingToRead) {
    SmallService service;
    service.present = false;
    smcSetIOKit(&service);
    test::PrintedText printed;
    EXPECT_EQ(smcOpen(), 1);
    EXPECT_EQ(printed.text(), "Error: no SMC found\n");
    EXPECT_EQ(service.history, "isPresent ");
    smcSetIOKit(nullptr);
}

TEST(SmcService, PassesAFailureToOpenOnAndStaysClosed) {
    SmallService service;
    service.openResult = io_return::notPrivileged;
    smcSetIOKit(&service);
    test::PrintedText printed;
    EXPECT_EQ(smcOpen(), 1);
    EXPECT_EQ(printed.text(), "Error: IOServiceOpen() = e00002c1\n");
    SmcValue value;
    EXPECT_EQ(smcReadKey("TB0T", value), io_return::notOpen);
    smcSetIOKit(nullptr);
}

TEST(SmcService, IsTheOnlyServiceAndOnlyOfItsOwnClass) {
    SmallService service;
    io_iterator_t services = 0;
    EXPECT_EQ(service.IOServiceGetMatchingServices(1, {"AppleSMC"}, services), io_return::success);
    EXPECT_EQ(service.IOIteratorNext(services + 1), 0U);
    EXPECT_NE(service.IOIteratorNext(services), 0U);
    EXPECT_EQ(service.IOIteratorNext(services), 0U);
    EXPECT_EQ(service.IOServiceGetMatchingServices(1, {"AppleFan"}, services), io_return::success);
    EXPECT_EQ(service.IOIteratorNext(services), 0U);
}

TEST(SmcService, OpensNothingButItsService) {
    SmallService service;
    io_connect_t connection = 0x99;
    EXPECT_EQ(service.IOServiceOpen(0, 0, 0, connection), io_return::badArgument);
    EXPECT_EQ(connection, 0x99U);
    EXPECT_EQ(service.history, "");
}

TEST(SmcService, AnswersNothingWithoutItsConnection) {
    SmallService service;
    EXPECT_EQ(send(service, 0, 9), (Reply{io_return::notOpen, untouched()}));
    const io_connect_t connection = opened(service);
    EXPECT_EQ(send(service, connection + 1, 6), (Reply{io_return::notOpen, untouched()}));
    EXPECT_EQ(service.writeCount(), 0U);
    service.IOServiceClose(connection);
    EXPECT_EQ(send(service, connection, 9), (Reply{io_return::notOpen, untouched()}));
}

TEST(SmcService, ClosesOnlyWhatIsOpen) {
    SmallService service;
    EXPECT_EQ(service.IOServiceClose(0), io_return::notOpen);
    const io_connect_t connection = opened(service);
    EXPECT_EQ(service.IOServiceClose(connection + 1), io_return::notOpen);
    EXPECT_EQ(service.IOServiceClose(connection), io_return::success);
    EXPECT_EQ(service.IOServiceClose(connection), io_return::notOpen);
    EXPECT_EQ(service.history, "isPresent open close ");
}

TEST(SmcService, RefusesOtherSelectorsAndSizes) {
    struct Row {
        std::uint32_t selector;
        std::size_t inputSize;
        std::size_t outputSize;
    };
    SmallService service;
    const io_connect_t connection = opened(service);
    for (const Row& row : {Row{1, 80, 80}, Row{2, 79, 80}, Row{2, 80, 81}, Row{2, 0, 80}, Row{2, 80, 0}}) {
        const SMCKeyData input{};
        alignas(SMCKeyData) RecordBytes output = untouched();
        std::size_t outputSize = row.outputSize;
        EXPECT_EQ(service.IOConnectCallStructMethod(connection, row.selector, &input, row.inputSize,
                                                    output.data(), outputSize),
                  io_return::badArgument);
        EXPECT_EQ(output, untouched());
    }
}

TEST(SmcService, AnswersTheThreeReadingCommands) {
    SmallService service;
    const io_connect_t connection = opened(service);
    SMCKeyData information{};
    information.keyInfo.dataSize = 2;
    information.keyInfo.dataType = smcCode("sp78");
    EXPECT_EQ(send(service, connection, 9), (Reply{0, std::bit_cast<RecordBytes>(information)}));
    SMCKeyData content{};
    content.bytes[0] = 0x29;
    EXPECT_EQ(send(service, connection, 5), (Reply{0, std::bit_cast<RecordBytes>(content)}));
    SMCKeyData key{};
    key.key = smcCode("TB0T");
    EXPECT_EQ(send(service, connection, 8, "", 0), (Reply{0, std::bit_cast<RecordBytes>(key)}));
}

TEST(SmcService, SucceedsWithNoDataForAnUnknownKey) {
    SmallService service;
    const io_connect_t connection = opened(service);
    EXPECT_EQ(send(service, connection, 9, "none"), (Reply{io_return::success, {}}));
    EXPECT_EQ(send(service, connection, 5, "none"), (Reply{io_return::success, {}}));
}

TEST(SmcService, ClearsTheOutputOfAFailedRequest) {
    SmallService service;
    const io_connect_t connection = opened(service);
    EXPECT_EQ(send(service, connection, 9, "Tbad"), (Reply{io_return::ioError, {}}));
    EXPECT_EQ(send(service, connection, 5, "Tbad"), (Reply{io_return::ioError, {}}));
    EXPECT_EQ(send(service, connection, 8, "", 1), (Reply{io_return::notFound, {}}));
    EXPECT_EQ(send(service, connection, 8, "", 0xffffffff), (Reply{io_return::notFound, {}}));
    EXPECT_EQ(send(service, connection, 7), (Reply{io_return::unsupported, {}}));
}

TEST(SmcService, RefusesAndCountsEveryWrite) {
    SmallService service;
    const io_connect_t connection = opened(service);
    EXPECT_EQ(send(service, connection, 6), (Reply{io_return::notPermitted, {}}));
    EXPECT_EQ(send(service, connection, 6, "none"), (Reply{io_return::notPermitted, {}}));
    EXPECT_EQ(service.writeCount(), 2U);
}

TEST(SmcCode, PacksFourCharactersAsTheModuleDoes) {
    static_assert(smcCode("sp78") == 0x73703738);
    for (const char* text : {"TC0P", "ui8 ", "#K", "", "F0Actual"})
        EXPECT_EQ(smcCode(text), smcKeyFromString(text, 4, 10)) << text;
}

}  // namespace
}  // namespace calorivo
