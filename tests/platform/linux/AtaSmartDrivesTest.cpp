#include "platform/linux/AtaSmartDrives.h"

#include "DriveTrees.h"
#include "platform/linux/DriveBlocks.h"
#include "platform/linux/DriveRead.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

namespace calorivo {
namespace {

using test::addDisk;
using test::addDrivetemp;
using test::FakeDisk;
using test::FakeTree;
using State = DriveAnswer::State;
using Texts = std::vector<std::string>;

/// Reads in this process. A drive with a state in `states` is not read but answers so.
class InlineReaders final : public DriveReaders {
  public:
    explicit InlineReaders(std::string sys) : sys_(std::move(sys)) {}

    std::vector<DriveAnswer> read(std::span<const DriveRequest> requests) override {
        std::vector<DriveAnswer> answers;
        for (const DriveRequest& request : requests) {
            asked.push_back(request.name);
            if (const auto state = states.find(request.name); state != states.end())
                answers.push_back({state->second, {}});
            else if (const auto given = readings.find(request.name); given != readings.end())
                answers.push_back({State::read, given->second});
            else
                answers.push_back({State::read, readDrive(request.name, {sys_, ""}, systemDriveDevices())});
        }
        return answers;
    }

    std::map<std::string, State> states;
    /// What a drive gives in place of what is in the tree.
    std::map<std::string, DriveReading> readings;
    Texts asked;

  private:
    std::string sys_;
};

const DriveMatching capable{{}, {{"SMART Capable", true}}};

class AtaSmartDrivesTest : public testing::Test {
  protected:
    AtaSmartDrivesTest() {
        auto made = std::make_unique<InlineReaders>(tree.root());
        readers = made.get();
        drives =
            std::make_unique<AtaSmartDrives>(tree.root(), std::move(made), [this] { return machineAsleep; });
    }

    /// One line for each matching drive: what its interface answers to the usual calls.
    Texts matching(const DriveMatching& what = capable) {
        Texts texts;
        io_iterator_t iterator = 0;
        EXPECT_EQ(drives->IOServiceGetMatchingServices(kIOMasterPortDefault, what, iterator),
                  io_return::success);
        while (const io_service_t service = drives->IOIteratorNext(iterator)) {
            texts.push_back(textOf(service));
            EXPECT_EQ(drives->IOObjectRelease(service), io_return::success);
        }
        EXPECT_EQ(drives->IOObjectRelease(iterator), io_return::success);
        return texts;
    }
    std::string textOf(io_service_t service) {
        IOCFPlugInInterface* plugIn = nullptr;
        if (drives->IOCreatePlugInInterfaceForService(service, kIOATASMARTUserClientTypeID,
                                                      kIOCFPlugInInterfaceID, plugIn) != io_return::success)
            return "no plug-in";
        IOATASMARTInterface* smart = nullptr;
        EXPECT_EQ(plugIn->QueryInterface(kIOATASMARTInterfaceID, smart), 0);
        AtaBlock identify{};
        std::uint32_t size = 512;
        EXPECT_EQ(smart->GetATAIdentifyData(identify, size), io_return::success);
        EXPECT_EQ(size, 512U);
        std::string text{static_cast<char>(identify[21]), static_cast<char>(identify[20])};
        if (smart->SMARTEnableDisableOperations(true) != io_return::success) text += " refuses";
        EXPECT_EQ(smart->SMARTEnableDisableAutosave(true), io_return::success);
        bool isExceeded = true;
        if (smart->SMARTReturnStatus(isExceeded) != io_return::success) text += " no status";
        AtaBlock data{};
        if (smart->SMARTReadData(data) != io_return::success)
            text += " no data";
        else if (smart->SMARTValidateReadData(data) != io_return::success)
            text += " damaged";
        else
            text += " " + std::to_string(data[7]);
        EXPECT_EQ(smart->SMARTEnableDisableAutosave(false), io_return::success);
        EXPECT_EQ(smart->SMARTEnableDisableOperations(false), io_return::success);
        smart->Release();
        EXPECT_EQ(drives->IODestroyPlugInInterface(plugIn), io_return::success);
        return text;
    }
    void sleep(const FakeDisk& disk) { tree.file(disk.device() + "/power/runtime_status", "suspended\n"); }

    FakeTree tree;
    std::chrono::nanoseconds machineAsleep{};
    InlineReaders* readers = nullptr;
    std::unique_ptr<AtaSmartDrives> drives;
    const FakeDisk first{};
    const FakeDisk second{.name = "sdb", .address = "1:0:0:0", .serial = "B2"};
};

TEST_F(AtaSmartDrivesTest, AnswersFromWhatWasReadWhenTheServicesWereMatched) {
    addDisk(tree, first);
    addDrivetemp(tree, first, "38000");
    addDisk(tree, second);
    test::addNvme(tree, {});
    test::addNvmeChip(tree, {}, "44850");
    EXPECT_EQ(matching(), (Texts{"A1 38", "no plug-in", "N1 45"}));
    EXPECT_EQ(readers->asked, (Texts{"sda", "sdb", "nvme0"}));
}

TEST_F(AtaSmartDrivesTest, AnswersAsTheDriveDidThatWasAskedItself) {
    addDisk(tree, first);
    DriveReading& reading = readers->readings["sda"];
    reading.identify = test::identifyData("Disk", "D4");
    reading.hasIdentify = true;
    reading.source = DriveSource::smart;
    EXPECT_EQ(matching(), Texts{"D4 refuses no status no data"});
    reading.isSwitchedOn = true;
    EXPECT_EQ(matching(), Texts{"D4 no status no data"});
    reading.hasStatus = true;
    EXPECT_EQ(matching(), Texts{"D4 no data"});
    reading.hasData = true;
    reading.smart = test::smartData({{194, {47}}});
    EXPECT_EQ(matching(), Texts{"D4 47"});
    ++reading.smart[200];
    EXPECT_EQ(matching(), Texts{"D4 damaged"});
}

TEST_F(AtaSmartDrivesTest, ReadsNoDriveTwiceForOneUpdate) {
    addDisk(tree, first);
    tree.file("block/sdb/device/vendor", "Stick   \n");
    EXPECT_EQ(matching().size(), 1U);
    EXPECT_EQ(matching(drives->IOServiceMatching("IOATABlockStorageDevice")),
              (Texts{"no plug-in", "no plug-in"}));
    EXPECT_EQ(readers->asked, (Texts{"sda", "sdb"}));
    EXPECT_EQ(matching().size(), 1U);
    EXPECT_EQ(readers->asked, (Texts{"sda", "sdb", "sda"}));
}

TEST_F(AtaSmartDrivesTest, FindsNothingOfOtherKinds) {
    addDisk(tree, first);
    EXPECT_EQ(matching({"IOUSBDevice", {}}), Texts{});
    EXPECT_EQ(matching({{}, {{"SMART Capable", false}}}), Texts{});
    EXPECT_EQ(matching({{}, {}}), Texts{});
    io_iterator_t iterator = 0;
    EXPECT_EQ(drives->IOServiceGetMatchingServices(3, capable, iterator), io_return::badArgument);
    EXPECT_EQ(readers->asked, Texts{});
}

TEST_F(AtaSmartDrivesTest, RefusesWhatItDoesNotKnow) {
    addDisk(tree, first);
    addDrivetemp(tree, first, "38000");
    io_iterator_t iterator = 0;
    ASSERT_EQ(drives->IOServiceGetMatchingServices(0, capable, iterator), io_return::success);
    IOCFPlugInInterface* plugIn = nullptr;
    const auto create = [&](io_service_t service, const CFUUIDBytes& type, const CFUUIDBytes& interface) {
        return drives->IOCreatePlugInInterfaceForService(service, type, interface, plugIn);
    };
    EXPECT_EQ(create(1, kIOCFPlugInInterfaceID, kIOCFPlugInInterfaceID), io_return::unsupported);
    EXPECT_EQ(create(1, kIOATASMARTUserClientTypeID, kIOATASMARTInterfaceID), io_return::unsupported);
    EXPECT_EQ(create(0, kIOATASMARTUserClientTypeID, kIOCFPlugInInterfaceID), io_return::badArgument);
    EXPECT_EQ(create(2, kIOATASMARTUserClientTypeID, kIOCFPlugInInterfaceID), io_return::badArgument);
    ASSERT_EQ(create(1, kIOATASMARTUserClientTypeID, kIOCFPlugInInterfaceID), io_return::success);
    IOATASMARTInterface* smart = nullptr;
    EXPECT_NE(plugIn->QueryInterface(kIOCFPlugInInterfaceID, smart), 0);
    EXPECT_EQ(smart, nullptr);
    EXPECT_EQ(drives->IODestroyPlugInInterface(plugIn), io_return::success);
    EXPECT_EQ(drives->IODestroyPlugInInterface(plugIn), io_return::badArgument);
    EXPECT_EQ(drives->IOIteratorNext(iterator + 1), 0U);
    EXPECT_EQ(drives->IOObjectRelease(iterator + 1), io_return::badArgument);
    EXPECT_EQ(drives->IOObjectRelease(iterator), io_return::success);
}

TEST_F(AtaSmartDrivesTest, KeepsTheLastValueOfADriveThatFallsAsleep) {
    addDisk(tree, first);
    addDrivetemp(tree, first, "38000");
    EXPECT_EQ(matching(), Texts{"A1 38"});
    EXPECT_FALSE(drives->statuses().at(0).reading.isAsleep);
    sleep(first);
    addDrivetemp(tree, first, "99000");
    for (int cycle = 0; cycle < 3; ++cycle) {
        EXPECT_EQ(matching(), Texts{"A1 38"});
        EXPECT_TRUE(drives->statuses().at(0).reading.isAsleep);
    }
    readers->states["sda"] = State::late;
    EXPECT_EQ(matching(), Texts{"A1 38"});
    EXPECT_TRUE(drives->statuses().at(0).reading.isAsleep) << "late, and not known to be awake";
    readers->states.clear();
    tree.file(first.device() + "/power/runtime_status", "active\n");
    EXPECT_EQ(matching(), Texts{"A1 99"});
    EXPECT_FALSE(drives->statuses().at(0).reading.isAsleep);
}

TEST_F(AtaSmartDrivesTest, HasNoValueForADriveThatWasAsleepFromTheStart) {
    addDisk(tree, first);
    addDrivetemp(tree, first, "38000");
    sleep(first);
    EXPECT_EQ(matching(), Texts{"no plug-in"});
    EXPECT_TRUE(drives->statuses().at(0).reading.isAsleep);
}

TEST_F(AtaSmartDrivesTest, KeepsTheLastValueOfADriveThatIsLateAndDropsOneThatHangs) {
    addDisk(tree, first);
    addDrivetemp(tree, first, "38000");
    EXPECT_EQ(matching(), Texts{"A1 38"});
    readers->states["sda"] = State::late;
    EXPECT_EQ(matching(), Texts{"A1 38"});
    readers->states["sda"] = State::hung;
    EXPECT_EQ(matching(), Texts{"no plug-in"});
    readers->states["sda"] = State::late;  // it is being tried again
    EXPECT_EQ(matching(), Texts{"no plug-in"});
    readers->states.clear();
    EXPECT_EQ(matching(), Texts{"A1 38"});
}

TEST_F(AtaSmartDrivesTest, KeepsNoValueOverASleepOfTheMachine) {
    addDisk(tree, first);
    addDrivetemp(tree, first, "38000");
    addDisk(tree, second);
    addDrivetemp(tree, second, "41000");
    EXPECT_EQ(matching(), (Texts{"A1 38", "B2 41"}));
    readers->states["sda"] = State::late;
    sleep(second);
    machineAsleep += std::chrono::hours(8);
    EXPECT_EQ(matching(), (Texts{"no plug-in", "no plug-in"}));
    readers->states.clear();
    tree.file(second.device() + "/power/runtime_status", "active\n");
    EXPECT_EQ(matching(), (Texts{"A1 38", "B2 41"}));
}

TEST_F(AtaSmartDrivesTest, ShowsAPluggedDriveAtTheNextUpdateAndARemovedOneNoMore) {
    addDisk(tree, first);
    addDrivetemp(tree, first, "38000");
    EXPECT_EQ(matching(), Texts{"A1 38"});
    addDisk(tree, second);
    addDrivetemp(tree, second, "41000");
    EXPECT_EQ(matching(), (Texts{"A1 38", "B2 41"}));
    removeDisk(tree, first);
    EXPECT_EQ(matching(), Texts{"B2 41"});
}

TEST_F(AtaSmartDrivesTest, NeverShowsTheValueOfADriveForTheNextOneInItsPlace) {
    addDisk(tree, first);
    addDrivetemp(tree, first, "38000");
    EXPECT_EQ(matching(), Texts{"A1 38"});
    removeDisk(tree, first);
    const FakeDisk next{.serial = "C3", .sequence = "8"};
    addDisk(tree, next);
    sleep(next);
    EXPECT_EQ(matching(), Texts{"no plug-in"});
    readers->states["sda"] = State::late;
    EXPECT_EQ(matching(), Texts{"no plug-in"});
}

std::ptrdiff_t openDescriptors() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

TEST_F(AtaSmartDrivesTest, LeavesNoDescriptorOpenInTenThousandUpdates) {
    addDisk(tree, first);
    addDrivetemp(tree, first, "38000");
    test::addNvme(tree, {});
    test::addNvmeChip(tree, {}, "44850");
    matching();
    const std::ptrdiff_t before = openDescriptors();
    constexpr int cycles = 10'000;
    for (int cycle = 0; cycle < cycles; ++cycle) {
        // Every now and then a drive comes or goes.
        if (cycle % 100 == 50) addDisk(tree, second);
        if (cycle % 100 == 99) removeDisk(tree, second);
        ASSERT_EQ(matching().size(), cycle % 100 >= 50 && cycle % 100 < 99 ? 3U : 2U) << cycle;
    }
    EXPECT_EQ(openDescriptors(), before);
}

}  // namespace
}  // namespace calorivo
