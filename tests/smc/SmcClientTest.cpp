#include "smc/SmcClient.h"

#include "smc/SmcService.h"
#include "support/FakeSmc.h"
#include "support/PrintedText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <bit>
#include <cstring>
#include <deque>

namespace calorivo {
namespace {

using test::FakeSmc;
using test::PrintedText;
using testing::ElementsAre;
using testing::IsEmpty;
using RecordBytes = std::array<std::uint8_t, 80>;

/// One request as it reached the platform.
struct Request {
    io_connect_t connection;
    std::uint32_t selector;
    std::size_t inputSize;
    std::size_t outputSize;
    RecordBytes input;
    RecordBytes output;  // as it was before the answer
    friend bool operator==(const Request&, const Request&) = default;
};

struct Answer {
    kern_return_t result;
    SMCKeyData record;
};

/// Opens as connection 0x77, records every request and gives the prepared answers in order.
class ScriptedIOKit final : public IOKit {
  public:
    ScriptedIOKit() { smcSetIOKit(this); }
    ~ScriptedIOKit() override { smcSetIOKit(nullptr); }

    std::vector<Request> requests;
    std::deque<Answer> answers;
    kern_return_t openResult = io_return::success;
    kern_return_t closeResult = io_return::success;
    std::vector<io_connect_t> closed;

    kern_return_t IOMasterPort(mach_port_t, mach_port_t&) override { return io_return::success; }
    kern_return_t IOServiceGetMatchingServices(mach_port_t, const MatchingDictionary&,
                                               io_iterator_t&) override {
        return io_return::success;
    }
    io_object_t IOIteratorNext(io_iterator_t) override { return 0x11; }
    kern_return_t IOObjectRelease(io_object_t) override { return io_return::success; }
    [[nodiscard]] task_port_t machTaskSelf() const override { return 0; }
    kern_return_t IOServiceOpen(io_service_t, task_port_t, std::uint32_t, io_connect_t& connection) override {
        connection = 0x77;
        return openResult;
    }
    kern_return_t IOServiceClose(io_connect_t connection) override {
        closed.push_back(connection);
        return closeResult;
    }
    kern_return_t IOConnectCallStructMethod(io_connect_t connection, std::uint32_t selector,
                                            const void* input, std::size_t inputSize, void* output,
                                            std::size_t& outputSize) override {
        Request request{connection, selector, inputSize, outputSize, {}, {}};
        std::memcpy(request.input.data(), input, std::min(inputSize, request.input.size()));
        std::memcpy(request.output.data(), output, std::min(outputSize, request.output.size()));
        requests.push_back(request);
        if (answers.empty()) return io_return::notFound;
        const Answer answer = answers.front();
        answers.pop_front();
        std::memcpy(output, &answer.record, sizeof answer.record);
        return answer.result;
    }
};

SMCKeyData information(std::uint32_t dataSize, std::string_view type) {
    SMCKeyData record{};
    record.keyInfo.dataSize = dataSize;
    record.keyInfo.dataType = smcCode(type);
    return record;
}

SMCKeyData content(std::uint8_t first) {
    SMCKeyData record{};
    for (std::size_t i = 0; i < 32; ++i) record.bytes[i] = static_cast<std::uint8_t>(first + i);
    return record;
}

std::array<std::uint8_t, 32> bytes(std::initializer_list<std::uint8_t> first) {
    std::array<std::uint8_t, 32> all{};
    std::copy(first.begin(), first.end(), all.begin());
    return all;
}

TEST(SmcOpen, FindsTheServiceAndOpensIt) {
    FakeSmc smc;
    PrintedText printed;
    EXPECT_EQ(smcOpen(), 0);
    EXPECT_THAT(smc.calls, ElementsAre("IOMasterPort(0)", "IOServiceGetMatchingServices(303, AppleSMC)",
                                       "IOIteratorNext(501)", "IOObjectRelease(501)",
                                       "IOServiceOpen(502, 103, 0)", "IOObjectRelease(502)"));
    EXPECT_THAT(smc.requests, IsEmpty());
    EXPECT_EQ(printed.text(), "");
}

TEST(SmcOpen, StopsWithoutAMasterPort) {
    FakeSmc smc;
    PrintedText printed;
    smc.masterPortResult = 0x1f;
    EXPECT_EQ(smcOpen(), 1);
    EXPECT_THAT(smc.calls, ElementsAre("IOMasterPort(0)"));
    EXPECT_EQ(printed.text(), "Error: IOMasterPort() = 0000001f\n");
}

TEST(SmcOpen, StopsWhenTheServicesCannotBeLookedUp) {
    FakeSmc smc;
    PrintedText printed;
    smc.matchingResult = io_return::noDevice;
    EXPECT_EQ(smcOpen(), 1);
    EXPECT_THAT(smc.calls, ElementsAre("IOMasterPort(0)", "IOServiceGetMatchingServices(303, AppleSMC)"));
    EXPECT_EQ(printed.text(), "Error: IOServiceGetMatchingServices() = e00002c0\n");
}

TEST(SmcOpen, StopsWithoutAService) {
    FakeSmc smc;
    PrintedText printed;
    smc.hasService = false;
    EXPECT_EQ(smcOpen(), 1);
    EXPECT_THAT(smc.calls, ElementsAre("IOMasterPort(0)", "IOServiceGetMatchingServices(303, AppleSMC)",
                                       "IOIteratorNext(501)", "IOObjectRelease(501)"));
    EXPECT_EQ(printed.text(), "Error: no SMC found\n");
}

TEST(SmcOpen, ReleasesTheServiceThatItCouldNotOpen) {
    FakeSmc smc;
    PrintedText printed;
    smc.openResult = io_return::notPrivileged;
    EXPECT_EQ(smcOpen(), 1);
    EXPECT_THAT(smc.calls, ElementsAre("IOMasterPort(0)", "IOServiceGetMatchingServices(303, AppleSMC)",
                                       "IOIteratorNext(501)", "IOObjectRelease(501)",
                                       "IOServiceOpen(502, 103, 0)", "IOObjectRelease(502)"));
    EXPECT_EQ(printed.text(), "Error: IOServiceOpen() = e00002c1\n");
}

TEST(SmcOpen, FindsNothingOnAMachineWithoutAProvider) {
    smcSetIOKit(nullptr);
    PrintedText printed;
    EXPECT_EQ(smcOpen(), 1);
    EXPECT_EQ(printed.text(), "Error: no SMC found\n");
}

TEST(SmcOpen, LeavesNoConnectionBehindWhenItFails) {
    ScriptedIOKit ioKit;
    PrintedText printed;
    ioKit.openResult = io_return::error;
    EXPECT_EQ(smcOpen(), 1);
    smcClose();
    EXPECT_THAT(ioKit.closed, ElementsAre(0U));
}

TEST(SmcClose, ClosesTheConnectionOnceAndPassesTheResultOn) {
    ScriptedIOKit ioKit;
    ioKit.closeResult = io_return::timeout;
    EXPECT_EQ(smcOpen(), 0);
    EXPECT_EQ(smcClose(), io_return::timeout);
    smcClose();
    EXPECT_THAT(ioKit.closed, ElementsAre(0x77U, 0U));
}

TEST(SmcClose, FailsWithoutAProvider) {
    smcSetIOKit(nullptr);
    EXPECT_EQ(smcClose(), io_return::notOpen);
}

TEST(SmcOutput, IsStandardOutputUnlessSet) {
    EXPECT_EQ(smcOutput(), stdout);
    smcSetOutput(stderr);
    EXPECT_EQ(smcOutput(), stderr);
    smcSetOutput(nullptr);
    EXPECT_EQ(smcOutput(), stdout);
}

TEST(SmcCall, PassesSelectorConnectionAndTheSizesOfTheRecord) {
    ScriptedIOKit ioKit;
    smcOpen();
    ioKit.answers = {{io_return::timeout, content(0x40)}};
    const SMCKeyData input = content(0x80);
    SMCKeyData output{};
    EXPECT_EQ(smcCall(5, input, output), io_return::timeout);
    EXPECT_EQ(ioKit.requests,
              (std::vector<Request>{{0x77, 5, 80, 80, std::bit_cast<RecordBytes>(input), {}}}));
    EXPECT_EQ(std::bit_cast<RecordBytes>(output), std::bit_cast<RecordBytes>(content(0x40)));
}

TEST(SmcCall, GoesToANullConnectionBeforeOpening) {
    ScriptedIOKit ioKit;
    SmcValue value;
    EXPECT_EQ(smcReadKey("TC0P", value), io_return::notFound);
    ASSERT_EQ(ioKit.requests.size(), 1U);
    EXPECT_EQ(ioKit.requests[0].connection, 0U);
}

TEST(SmcCall, FailsWithoutAProvider) {
    smcSetIOKit(nullptr);
    SMCKeyData output{};
    EXPECT_EQ(smcCall(2, {}, output), io_return::notOpen);
}

TEST(SmcReadKey, AsksForTheInformationAndThenForTheBytes) {
    ScriptedIOKit ioKit;
    smcOpen();
    ioKit.answers = {{io_return::success, information(2, "sp78")}, {io_return::success, content(0x32)}};
    SmcValue value;
    EXPECT_EQ(smcReadKey("TC0P", value), io_return::success);

    SMCKeyData first{};
    first.key = 0x54433050;
    first.data8 = 9;
    SMCKeyData second = first;
    second.keyInfo.dataSize = 2;
    second.data8 = 5;
    EXPECT_EQ(ioKit.requests, (std::vector<Request>{{0x77, 2, 80, 80, std::bit_cast<RecordBytes>(first), {}},
                                                    {0x77, 2, 80, 80, std::bit_cast<RecordBytes>(second),
                                                     std::bit_cast<RecordBytes>(information(2, "sp78"))}}));
    EXPECT_EQ(value, (SmcValue{{"TC0P"}, 2, {"sp78"}, content(0x32).bytes}));
}

TEST(SmcReadKey, NeverLooksAtTheResultByte) {
    ScriptedIOKit ioKit;
    SMCKeyData unknown{};
    unknown.result = 0x84;
    ioKit.answers = {{io_return::success, unknown}, {io_return::success, unknown}};
    SmcValue value{{"old!"}, 7, {"ui8 "}, bytes({9})};
    EXPECT_EQ(smcReadKey("Zzzz", value), io_return::success);
    EXPECT_EQ(value, (SmcValue{{"Zzzz"}, 0, {}, {}}));
}

TEST(SmcReadKey, LeavesTheValueClearedWhenTheFirstRequestFails) {
    ScriptedIOKit ioKit;
    ioKit.answers = {{io_return::ioError, information(2, "sp78")}};
    SmcValue value{{"old!"}, 7, {"ui8 "}, bytes({9})};
    EXPECT_EQ(smcReadKey("TC0P", value), io_return::ioError);
    EXPECT_EQ(ioKit.requests.size(), 1U);
    EXPECT_EQ(value, SmcValue{});
}

TEST(SmcReadKey, LeavesTheValueClearedWhenTheSecondRequestFails) {
    ScriptedIOKit ioKit;
    ioKit.answers = {{io_return::success, information(2, "sp78")}, {io_return::timeout, content(0x32)}};
    SmcValue value{{"old!"}, 7, {"ui8 "}, bytes({9})};
    EXPECT_EQ(smcReadKey("TC0P", value), io_return::timeout);
    EXPECT_EQ(ioKit.requests.size(), 2U);
    EXPECT_EQ(value, SmcValue{});
}

TEST(SmcReadKey, CopiesAKeyWithPercentSignsLiterally) {
    FakeSmc smc;
    smc.set("%s%n", "ui8 ", {3});
    SmcValue value;
    EXPECT_EQ(smcReadKey("%s%n", value), io_return::success);
    EXPECT_EQ(value, (SmcValue{{"%s%n"}, 1, {"ui8 "}, bytes({3})}));
}

TEST(SmcReadKey, CountsMissingCharactersAsZeroAndIgnoresFurtherOnes) {
    ScriptedIOKit ioKit;
    ioKit.answers.assign(4, {io_return::success, information(1, "ui8 ")});
    SmcValue shortKey;
    SmcValue longKey;
    smcReadKey("TC", shortKey);
    smcReadKey("TC0Pxyz", longKey);
    std::vector<std::uint32_t> packed;
    for (const Request& request : ioKit.requests)
        packed.push_back(std::bit_cast<SMCKeyData>(request.input).key);
    EXPECT_THAT(packed, ElementsAre(0x54430000U, 0x54430000U, 0x54433050U, 0x54433050U));
    EXPECT_EQ(shortKey.keyText(), "TC");
    EXPECT_EQ(longKey.keyText(), "TC0P");
}

TEST(SmcReadKey, KeepsASizeThatIsTooLargeButCopiesOnly32Bytes) {
    ScriptedIOKit ioKit;
    ioKit.answers = {{io_return::success, information(0xFFFFFFFF, "hex_")}, {io_return::success, content(1)}};
    SmcValue value;
    EXPECT_EQ(smcReadKey("HEX_", value), io_return::success);
    EXPECT_EQ(value, (SmcValue{{"HEX_"}, 0xFFFFFFFF, {"hex_"}, content(1).bytes}));
}

TEST(SmcReadKey, ReadsAValueAgainByItsOwnText) {
    FakeSmc smc;
    smc.set("TB0T", "sp78", {0x1e, 0x40});
    SmcValue value;
    smcReadKey("TB0T", value);
    const SmcValue before = value;
    EXPECT_EQ(smcReadKey(value.key.data(), value), io_return::success);
    EXPECT_EQ(value, before);
}

TEST(SmcReadKeyByIndex, SendsTheIndexAndGivesThePackedKey) {
    ScriptedIOKit ioKit;
    smcOpen();
    SMCKeyData answer{};
    answer.key = 0x46304163;
    ioKit.answers = {{io_return::success, answer}};
    std::uint32_t key = 1;
    EXPECT_EQ(smcReadKeyByIndex(0x01020304, key), io_return::success);
    SMCKeyData expected{};
    expected.data8 = 8;
    expected.data32 = 0x01020304;
    EXPECT_EQ(ioKit.requests,
              (std::vector<Request>{{0x77, 2, 80, 80, std::bit_cast<RecordBytes>(expected), {}}}));
    EXPECT_EQ(smcKeyToString(key), "F0Ac");
}

TEST(SmcReadKeyByIndex, LeavesTheKeyAloneWhenItFails) {
    ScriptedIOKit ioKit;
    SMCKeyData answer{};
    answer.key = 0x46304163;
    ioKit.answers = {{io_return::notFound, answer}};
    std::uint32_t key = 0x1234;
    EXPECT_EQ(smcReadKeyByIndex(3, key), io_return::notFound);
    EXPECT_EQ(key, 0x1234U);
}

TEST(SmcWriteKey, WritesOverAValueOfTheSameSize) {
    FakeSmc smc;
    smc.set("F0Mn", "fpe2", {0x12, 0xc0});
    smcWriteKey({{"F0Mn"}, 2, {"ui8 "}, content(0x60).bytes});
    EXPECT_THAT(smc.requests, ElementsAre("9 F0Mn", "5 F0Mn", "6 F0Mn"));
    SMCKeyData expected = content(0x60);
    expected.key = 0x46304d6e;
    expected.data8 = 6;
    expected.keyInfo.dataSize = 2;
    ASSERT_EQ(smc.writes.size(), 1U);
    EXPECT_EQ(std::bit_cast<RecordBytes>(smc.writes[0]), std::bit_cast<RecordBytes>(expected));
}

TEST(SmcWriteKey, DoesNothingWhenTheSizesDiffer) {
    FakeSmc smc;
    smc.set("F0Mn", "fpe2", {0x12, 0xc0});
    smcWriteKey({{"F0Mn"}, 3, {}, {}});
    EXPECT_THAT(smc.requests, ElementsAre("9 F0Mn", "5 F0Mn"));
}

TEST(SmcWriteKey, DoesNothingWhenTheKeyCannotBeRead) {
    FakeSmc smc;
    smc.set("F0Mn", "fpe2", {}).fail("F0Mn");
    smcWriteKey({{"F0Mn"}, 0, {}, {}});
    EXPECT_THAT(smc.requests, ElementsAre("9 F0Mn"));
}

}  // namespace
}  // namespace calorivo
