#include "monitor/GSMux.h"

#include "support/FakeGraphics.h"
#include "support/VirtualDispatch.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

using test::FakeGraphicsControl;
using Lines = std::vector<std::string>;
using namespace std::chrono_literals;

constexpr kern_return_t failure = io_return::code(0xe00002c5);
constexpr const char* one = "getMuxState was successful (count=1, value=0x00000001).";
constexpr const char* zero = "getMuxState was successful (count=1, value=0x00000000).";
constexpr const char* two = "getMuxState was successful (count=1, value=0x00000002).";
constexpr const char* wasSet = "setMuxState was successful.";

struct Switch {
    FakeGraphicsControl control;
    test::VirtualDispatch dispatch;
    test::LinesLog log;
    bool isOld = false;
    GSMux mux{{control, dispatch, log, [this] { return isOld; }}};

    void open() {
        EXPECT_TRUE(mux.switcherOpen());
        log.lines.clear();
        control.requests.clear();
    }
};

TEST(GSMux, OpensTheFirstDriver) {
    Switch s;
    EXPECT_TRUE(s.mux.switcherOpen());
    EXPECT_EQ(s.log.lines, (Lines{"Driver connection opened."}));
    EXPECT_EQ(s.control.requests, (Lines{"0:"}));
    EXPECT_EQ(s.control.opened, 2U) << "of two";
    EXPECT_EQ(s.control.connections.size(), 1U);
    EXPECT_TRUE(s.control.objects.empty());
}

TEST(GSMux, SaysWhichStepOfOpeningFailed) {
    Switch search;
    search.control.matching = failure;
    EXPECT_FALSE(search.mux.switcherOpen());
    EXPECT_EQ(search.log.lines, (Lines{"IOServiceGetMatchingServices returned 0xe00002c5."}));

    Switch none;
    none.control.hasDriver = false;
    EXPECT_FALSE(none.mux.switcherOpen());
    EXPECT_EQ(none.log.lines, (Lines{"No matching drivers found."}));
    EXPECT_TRUE(none.control.objects.empty());

    Switch service;
    service.control.serviceOpen = io_return::code(0x10);
    EXPECT_FALSE(service.mux.switcherOpen());
    EXPECT_EQ(service.log.lines, (Lines{"IOServiceOpen returned 0x00000010."}));
    EXPECT_TRUE(service.control.objects.empty());
    EXPECT_FALSE(service.mux.isUsingIntegratedGPU());
    EXPECT_EQ(service.control.requests, Lines{});
}

TEST(GSMux, KeepsTheConnectionWhenTheOpenRequestIsRefused) {
    Switch s;
    s.control.selectors[0] = failure;
    EXPECT_FALSE(s.mux.switcherOpen());
    EXPECT_EQ(s.log.take(), (Lines{"IOConnectCallScalarMethod returned 0xe00002c5."}));
    s.mux.switcherClose();
    EXPECT_EQ(s.log.lines, (Lines{"Driver connection closed."}));
    EXPECT_TRUE(s.control.connections.empty());
}

TEST(GSMux, ClosesOnceAndSaysWhatFailed) {
    Switch s;
    s.mux.switcherClose();
    EXPECT_EQ(s.log.lines, Lines{});
    s.open();
    s.control.selectors[1] = failure;
    s.control.serviceClose = io_return::code(5);
    s.mux.switcherClose();
    s.mux.switcherClose();
    EXPECT_EQ(s.log.lines, (Lines{"IOConnectCallScalarMethod returned 0xe00002c5.",
                                  "IOServiceClose returned 0x00000005.", "Driver connection closed."}));
    EXPECT_EQ(s.control.requests, (Lines{"1:"}));

    Switch well;
    well.open();
    well.mux.switcherClose();
    EXPECT_EQ(well.log.lines, (Lines{"Driver connection closed."}));
    EXPECT_FALSE(well.mux.isUsingIntegratedGPU());
}

TEST(GSMux, AsksWhichGPUDrivesTheDisplaysAndLogsEachAnswer) {
    Switch s;
    s.open();
    EXPECT_TRUE(s.mux.isUsingIntegratedGPU());
    EXPECT_FALSE(s.mux.isUsingDiscreteGPU());
    s.control.muxStates[7] = 0;
    EXPECT_FALSE(s.mux.isUsingIntegratedGPU());
    EXPECT_TRUE(s.mux.isUsingDiscreteGPU());
    EXPECT_EQ(s.log.lines, (Lines{one, one, zero, zero}));
    EXPECT_EQ(s.control.requests, (Lines{"3: 1 7", "3: 1 7", "3: 1 7", "3: 1 7"}));
}

TEST(GSMux, LogsAStateThatIsWiderThanEightDigits) {
    Switch s;
    s.open();
    s.control.muxStates[7] = 0x1234567890;
    EXPECT_TRUE(s.mux.isUsingIntegratedGPU());
    EXPECT_EQ(s.log.lines, (Lines{"getMuxState was successful (count=1, value=0x1234567890)."}));
}

TEST(GSMux, TakesAFailedQueryAsZero) {
    Switch s;
    s.open();
    s.control.selectors[3] = failure;
    EXPECT_FALSE(s.mux.isUsingIntegratedGPU());
    EXPECT_TRUE(s.mux.isUsingDiscreteGPU());
    EXPECT_FALSE(s.mux.isUsingDynamicSwitching());
    EXPECT_EQ(s.log.lines, Lines(3, "getMuxState returned 0xe00002c5."));
}

TEST(GSMux, AnswersWithoutAConnectionAndAsksOnlyForThePolicy) {
    Switch s;
    EXPECT_FALSE(s.mux.isUsingIntegratedGPU());
    EXPECT_TRUE(s.mux.isUsingDiscreteGPU());
    EXPECT_FALSE(s.mux.isUsingDynamicSwitching());
    EXPECT_FALSE(s.mux.isOnIntegratedOnlyMode());
    EXPECT_FALSE(s.mux.setMode(GSMuxMode::toggle));
    EXPECT_EQ(s.control.requests, Lines{});
    EXPECT_FALSE(s.mux.isUsingOldStyleSwitchPolicy());
    EXPECT_FALSE(s.mux.isOnDiscreteOnlyMode());
    EXPECT_EQ(s.control.requests, (Lines{"3: 1 5", "3: 1 5"}));
    EXPECT_EQ(s.log.lines, Lines(2, "getMuxState returned 0xe00002cd."));
}

TEST(GSMux, KnowsDynamicSwitchingAndThePolicy) {
    Switch s;
    s.open();
    EXPECT_FALSE(s.mux.isUsingDynamicSwitching());
    s.control.muxStates[4] = 1;
    EXPECT_TRUE(s.mux.isUsingDynamicSwitching());
    s.control.muxStates[5] = 1;
    EXPECT_FALSE(s.mux.isUsingOldStyleSwitchPolicy());
    s.control.muxStates[5] = 2;
    EXPECT_TRUE(s.mux.isUsingOldStyleSwitchPolicy());
    EXPECT_EQ(s.control.requests, (Lines{"3: 1 4", "3: 1 4", "3: 1 5", "3: 1 5"}));
    EXPECT_EQ(s.log.lines, (Lines{zero, one, one, two}));
}

TEST(GSMux, KnowsTheModesOfOneGPUOnly) {
    struct Row {
        std::uint64_t selection;
        std::uint64_t policy;
        bool isOld;
        bool integratedOnly;
        bool discreteOnly;
    };
    for (const Row& row :
         {Row{1, 2, false, true, false}, Row{0, 2, false, false, true}, Row{1, 0, false, false, false},
          Row{0, 0, false, false, false}, Row{1, 0, true, true, false}, Row{0, 0, true, false, true}}) {
        Switch s;
        s.open();
        s.control.muxStates = {{7, row.selection}, {5, row.policy}};
        s.isOld = row.isOld;
        EXPECT_EQ(s.mux.isOnIntegratedOnlyMode(), row.integratedOnly);
        EXPECT_EQ(s.mux.isOnDiscreteOnlyMode(), row.discreteOnly);
    }
}

TEST(GSMux, SetsDynamicSwitching) {
    Switch s;
    s.open();
    EXPECT_TRUE(s.mux.setMode(2));
    EXPECT_EQ(s.control.requests, (Lines{"2: 1 1 1", "2: 1 5 0", "2: 1 4 1"}));
    EXPECT_EQ(s.log.lines, Lines(3, wasSet));
    EXPECT_EQ(s.dispatch.now(), Moment{});
}

TEST(GSMux, ChangesOverToTheOnlyGPUUnlessItIsInUse) {
    struct Row {
        std::int32_t mode;
        std::uint64_t selection;
        bool isForced;
    };
    for (const Row& row : {Row{0, 0, true}, Row{0, 1, false}, Row{1, 1, true}, Row{1, 0, false}}) {
        Switch s;
        s.open();
        s.control.muxStates[7] = row.selection;
        EXPECT_TRUE(s.mux.setMode(row.mode));
        Lines requests{"2: 1 4 0", "2: 1 0 1", "2: 1 5 2", "3: 1 7"};
        if (row.isForced) requests.emplace_back("2: 1 2 0");
        EXPECT_EQ(s.control.requests, requests);
        EXPECT_EQ(s.dispatch.now(), Moment(1s));
    }
}

TEST(GSMux, LeavesThePolicyOfTheOldMachineAlone) {
    Switch s;
    s.open();
    s.isOld = true;
    EXPECT_TRUE(s.mux.setMode(1));
    EXPECT_EQ(s.control.requests, (Lines{"2: 1 4 0", "3: 1 7", "2: 1 2 0"}));
    EXPECT_EQ(s.log.lines, (Lines{wasSet, one, wasSet}));
}

TEST(GSMux, TogglesAndTakesAnyOtherModeForDone) {
    Switch s;
    s.open();
    EXPECT_TRUE(s.mux.setMode(3));
    EXPECT_TRUE(s.mux.setMode(4));
    EXPECT_TRUE(s.mux.setMode(-1));
    EXPECT_EQ(s.control.requests, (Lines{"2: 1 2 0"}));
}

TEST(GSMux, SucceedsInAModeThatTheDriverRefused) {
    Switch s;
    s.open();
    s.control.selectors[2] = failure;
    EXPECT_TRUE(s.mux.setMode(3));
    EXPECT_EQ(s.log.lines, (Lines{"setMuxState returned 0xe00002c5."}));
}

}  // namespace
}  // namespace calorivo
