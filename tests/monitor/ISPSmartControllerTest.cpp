#include "monitor/ISPSmartController.h"

#include "support/FakeAtaSmart.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace calorivo {
namespace {

using test::FakeAtaSmart;
using test::FakeDrive;
using test::identifyData;
using test::smartData;
using Calls = std::vector<std::string>;
using Drives = std::vector<DriveDictionary>;

/// The serial number as it stands in the identify data.
std::string filled(std::string serial) {
    serial.resize(20, ' ');
    return serial;
}

FakeDrive driveAt(std::uint8_t celsius, Calls failing = {}) {
    return {identifyData("Disk", "A1"), smartData({{194, {celsius}}}), std::move(failing)};
}

const DriveDictionary diskAtZero{"Disk", filled("A1"), 0};

/// What an update finds of this one drive, and the calls between making and destroying its plug-in.
struct Found {
    Drives drives;
    Calls calls;
};
Found found(const FakeDrive& drive) {
    FakeAtaSmart ataSmart;
    ataSmart.capable = {drive};
    ataSmart.blockStorage = {};
    ISPSmartController controller(ataSmart);
    controller.update();
    const auto begin =
        std::ranges::find(ataSmart.calls, "IOCreatePlugInInterfaceForService 101 user client, plug-in");
    const auto end = std::ranges::find(begin, ataSmart.calls.end(), "IOObjectRelease 101");
    return {controller.allDisks(), {begin + 1, end}};
}

TEST(ISPSmartController, MakesEachCallInItsOrder) {
    FakeAtaSmart ataSmart;
    ataSmart.capable = {driveAt(45), {identifyData("Other", "B2"), smartData({{231, {39}}}), {}}};
    ISPSmartController controller(ataSmart);
    controller.update();
    EXPECT_EQ(controller.allDisks(), (Drives{{"Disk", filled("A1"), 45}, {"Other", filled("B2"), 39}}));
    const Calls oneDrive{"QueryInterface SMART",
                         "GetATAIdentifyData 512",
                         "SMARTEnableDisableOperations on",
                         "SMARTEnableDisableAutosave on",
                         "SMARTReturnStatus",
                         "SMARTReadData zeroed",
                         "SMARTValidateReadData what was read",
                         "SMARTEnableDisableAutosave off",
                         "SMARTEnableDisableOperations off",
                         "Release",
                         "IODestroyPlugInInterface"};
    Calls expected{"IOServiceGetMatchingServices 0 SMART Capable=yes"};
    for (const std::string number : {"101", "102"}) {
        expected.emplace_back("IOIteratorNext 100");
        expected.push_back("IOCreatePlugInInterfaceForService " + number + " user client, plug-in");
        expected.insert(expected.end(), oneDrive.begin(), oneDrive.end());
        expected.push_back("IOObjectRelease " + number);
    }
    expected.insert(expected.end(), {"IOIteratorNext 100", "IOObjectRelease 100"});
    EXPECT_EQ(ataSmart.calls, expected);
}

TEST(ISPSmartController, TriesBlockStorageWhereNothingIsSMARTCapable) {
    FakeAtaSmart ataSmart;
    ataSmart.blockStorage = {driveAt(31)};
    ISPSmartController controller(ataSmart);
    controller.update();
    EXPECT_EQ(controller.allDisks(), (Drives{{"Disk", filled("A1"), 31}}));
    EXPECT_EQ(Calls(ataSmart.calls.begin(), ataSmart.calls.begin() + 6),
              (Calls{"IOServiceGetMatchingServices 0 SMART Capable=yes", "IOIteratorNext 100",
                     "IOObjectRelease 100", "IOServiceGetMatchingServices 0 IOATABlockStorageDevice",
                     "IOIteratorNext 200", "IOCreatePlugInInterfaceForService 201 user client, plug-in"}));
}

TEST(ISPSmartController, TriesBlockStorageWhereNoCapableDriveHasATemperature) {
    FakeAtaSmart ataSmart;
    ataSmart.capable = {driveAt(0)};
    ataSmart.blockStorage = {driveAt(31)};
    ISPSmartController controller(ataSmart);
    controller.update();
    EXPECT_EQ(controller.allDisks(), (Drives{{"Disk", filled("A1"), 31}}));
}

TEST(ISPSmartController, FindsNothingWhereServicesCannotBeMatched) {
    FakeAtaSmart ataSmart;
    ataSmart.isMatchingFailing = true;
    ISPSmartController controller(ataSmart);
    controller.update();
    EXPECT_EQ(controller.allDisks(), Drives{});
    EXPECT_EQ(ataSmart.calls, (Calls{"IOServiceGetMatchingServices 0 SMART Capable=yes",
                                     "IOServiceGetMatchingServices 0 IOATABlockStorageDevice"}));
}

TEST(ISPSmartController, RebuildsItsListAtEachUpdate) {
    FakeAtaSmart ataSmart;
    ataSmart.capable = {driveAt(45)};
    ISPSmartController controller(ataSmart);
    controller.update();
    ataSmart.capable = {{identifyData("Other", "B2"), smartData({{194, {50}}}), {}}};
    controller.update();
    EXPECT_EQ(controller.allDisks(), (Drives{{"Other", filled("B2"), 50}}));
    EXPECT_EQ(controller.latestData, controller.diskData);
    ataSmart.capable.clear();
    controller.update();
    EXPECT_EQ(controller.allDisks(), Drives{});
    EXPECT_EQ(controller.latestData, Drives{});
}

TEST(ISPSmartController, LeavesADriveOutWithoutAPlugIn) {
    const Found result = found(driveAt(45, {"IOCreatePlugInInterfaceForService"}));
    EXPECT_EQ(result.drives, Drives{});
    EXPECT_EQ(result.calls, Calls{});
}

TEST(ISPSmartController, DestroysThePlugInOfADriveWithoutTheInterface) {
    const Found result = found(driveAt(45, {"QueryInterface"}));
    EXPECT_EQ(result.drives, Drives{});
    EXPECT_EQ(result.calls, (Calls{"QueryInterface SMART", "IODestroyPlugInInterface"}));
}

TEST(ISPSmartController, LeavesADriveOutWithoutIdentifyData) {
    const Found result = found(driveAt(45, {"GetATAIdentifyData"}));
    EXPECT_EQ(result.drives, Drives{});
    EXPECT_EQ(result.calls, (Calls{"QueryInterface SMART", "GetATAIdentifyData 512", "Release",
                                   "IODestroyPlugInInterface"}));
}

TEST(ISPSmartController, NeverAsksADriveWithoutSMARTForItsTemperature) {
    FakeDrive drive = driveAt(45);
    drive.identify[164] = 0;
    const Found result = found(drive);
    EXPECT_EQ(result.drives, Drives{});
    EXPECT_EQ(result.calls, (Calls{"QueryInterface SMART", "GetATAIdentifyData 512", "Release",
                                   "IODestroyPlugInInterface"}));
}

TEST(ISPSmartController, ListsADriveThatRefusesToSwitchOnAtZero) {
    const Found result = found(driveAt(45, {"SMARTEnableDisableOperations on"}));
    EXPECT_EQ(result.drives, Drives{diskAtZero});
    EXPECT_EQ(result.calls,
              (Calls{"QueryInterface SMART", "GetATAIdentifyData 512", "SMARTEnableDisableOperations on",
                     "SMARTEnableDisableAutosave off", "SMARTEnableDisableOperations off", "Release",
                     "IODestroyPlugInInterface"}));
}

TEST(ISPSmartController, ListsADriveThatRefusesAutosaveAtZero) {
    const Found result = found(driveAt(45, {"SMARTEnableDisableAutosave on"}));
    EXPECT_EQ(result.drives, Drives{diskAtZero});
    EXPECT_EQ(result.calls,
              (Calls{"QueryInterface SMART", "GetATAIdentifyData 512", "SMARTEnableDisableOperations on",
                     "SMARTEnableDisableAutosave on", "SMARTEnableDisableAutosave off",
                     "SMARTEnableDisableOperations off", "Release", "IODestroyPlugInInterface"}));
}

TEST(ISPSmartController, ListsADriveThatRefusesItsStatusAtZero) {
    const Found result = found(driveAt(45, {"SMARTReturnStatus"}));
    EXPECT_EQ(result.drives, Drives{diskAtZero});
    EXPECT_EQ(result.calls,
              (Calls{"QueryInterface SMART", "GetATAIdentifyData 512", "SMARTEnableDisableOperations on",
                     "SMARTEnableDisableAutosave on", "SMARTReturnStatus", "SMARTEnableDisableAutosave off",
                     "SMARTEnableDisableOperations off", "Release", "IODestroyPlugInInterface"}));
}

TEST(ISPSmartController, LeavesADriveOutWhoseDataCannotBeRead) {
    const Found result = found(driveAt(45, {"SMARTReadData"}));
    EXPECT_EQ(result.drives, Drives{});
    EXPECT_EQ(result.calls,
              (Calls{"QueryInterface SMART", "GetATAIdentifyData 512", "SMARTEnableDisableOperations on",
                     "SMARTEnableDisableAutosave on", "SMARTReturnStatus", "SMARTReadData zeroed",
                     "SMARTEnableDisableAutosave off", "SMARTEnableDisableOperations off", "Release",
                     "IODestroyPlugInInterface"}));
}

TEST(ISPSmartController, LeavesADriveOutWhoseDataIsDamaged) {
    const Found result = found(driveAt(45, {"SMARTValidateReadData"}));
    EXPECT_EQ(result.drives, Drives{});
    EXPECT_EQ(result.calls,
              (Calls{"QueryInterface SMART", "GetATAIdentifyData 512", "SMARTEnableDisableOperations on",
                     "SMARTEnableDisableAutosave on", "SMARTReturnStatus", "SMARTReadData zeroed",
                     "SMARTValidateReadData what was read", "SMARTEnableDisableAutosave off",
                     "SMARTEnableDisableOperations off", "Release", "IODestroyPlugInInterface"}));
}

TEST(ISPSmartController, CaresNothingForADriveThatRefusesToSwitchOff) {
    const Found result =
        found(driveAt(45, {"SMARTEnableDisableAutosave off", "SMARTEnableDisableOperations off"}));
    EXPECT_EQ(result.drives, (Drives{{"Disk", filled("A1"), 45}}));
}

TEST(ISPSmartController, LeavesADriveOutThatHasNoTemperatureOrOneOfZero) {
    EXPECT_EQ(found({identifyData("Disk", "A1"), smartData({{190, {45}}}), {}}).drives, Drives{});
    EXPECT_EQ(found({identifyData("Disk", "A1"), smartData({{194, {0x00, 0x2D}}}), {}}).drives, Drives{});
    EXPECT_EQ(found(driveAt(1)).drives, (Drives{{"Disk", filled("A1"), 1}}));
}

TEST(ISPSmartController, GoesOnAfterADriveThatIsLeftOut) {
    FakeAtaSmart ataSmart;
    ataSmart.capable = {driveAt(45, {"QueryInterface"}), driveAt(45, {"SMARTReadData"}), driveAt(52)};
    ISPSmartController controller(ataSmart);
    controller.update();
    EXPECT_EQ(controller.allDisks(), (Drives{{"Disk", filled("A1"), 52}}));
}

TEST(ISPSmartController, FillsTheListAndItsTextsForTheDisplay) {
    FakeAtaSmart ataSmart;
    ataSmart.capable = {{identifyData("Disk", "  A1"), smartData({{194, {0x2D, 0, 0, 0, 0, 0}}}), {}}};
    SmartInfo smartInfo;
    DriveTemperatures drives(smartInfo, [&] { return std::make_unique<ISPSmartController>(ataSmart); });
    drives.createSmartController();
    drives.getDiskTemps();
    const SensorLists lists;
    const Preferences preferences;
    const GPUState gpu;
    const TemperatureReader reader(lists, preferences, gpu);
    const auto drive = smartInfo.drive(0);
    ASSERT_TRUE(drive);
    EXPECT_EQ(driveDescriptionFromDictionary(&*drive), "Disk (A1)");
    EXPECT_EQ(driveTemperatureStringFromDictionary(&*drive, reader), "45°C");
}

TEST(ISPSmartController, VerifiesIdentifyData) {
    AtaBlock data = identifyData("Disk", "A1");
    EXPECT_EQ(ISPSmartController::VerifyIdentifyData(data), 0);
    data[3] = 7;
    EXPECT_EQ(ISPSmartController::VerifyIdentifyData(data), 7);
    data[510] = 0;
    EXPECT_EQ(ISPSmartController::VerifyIdentifyData(data), 255);
}

TEST(ISPSmartController, HasListsThatAreNeverFilled) {
    FakeAtaSmart ataSmart;
    ataSmart.capable = {driveAt(45)};
    ISPSmartController controller(ataSmart);
    controller.update();
    EXPECT_TRUE(controller.temps.empty());
    EXPECT_TRUE(controller.disksStatus.empty());
}

/// Volumes as "path", "device", "name".
struct FakeVolumes final : MountedVolumes {
    struct Volume {
        std::string path, device, name;
    };
    std::vector<Volume> volumes;

    [[nodiscard]] const Volume& at(const std::string& path) const {
        return *std::ranges::find(volumes, path, &Volume::path);
    }
    [[nodiscard]] std::vector<std::string> mountedLocalVolumePaths() override {
        std::vector<std::string> paths;
        for (const Volume& volume : volumes) paths.push_back(volume.path);
        return paths;
    }
    [[nodiscard]] std::string BSDNameOfVolume(const std::string& path) override { return at(path).device; }
    [[nodiscard]] std::string displayNameAtPath(const std::string& path) override { return at(path).name; }
};

TEST(ISPSmartController, MapsVolumesToWholeDisks) {
    FakeAtaSmart ataSmart;
    FakeVolumes volumes;
    volumes.volumes = {{"/", "disk0s2", "System"},
                       {"/Volumes/Data", "disk1s2", "Data"},
                       {"/Volumes/Back", "disk12", "B"},
                       {"/Volumes/More", "disk1s3s1", "More"},
                       {"/Volumes/Net", "", "Net"},
                       {"/Volumes", "disk3s1", "no volume"},
                       {"/net/Volumes/Far", "disk4s1", "Far"}};
    ISPSmartController controller(ataSmart, &volumes);
    controller.getPartitions();
    const std::map<std::string, std::vector<std::string>> expected{
        {"disk1", {"Data", "More"}}, {"disk12", {"B"}}, {"disk4", {"Far"}}};
    EXPECT_EQ(controller.partitionData, expected);
    volumes.volumes.clear();
    controller.getPartitions();
    EXPECT_TRUE(controller.partitionData.empty());
}

TEST(ISPSmartController, HasNoPartitionsWithoutVolumes) {
    FakeAtaSmart ataSmart;
    ISPSmartController controller(ataSmart);
    controller.partitionData = {{"disk9", {"old"}}};
    controller.getPartitions();
    EXPECT_TRUE(controller.partitionData.empty());
}

TEST(WholeDiskName, TakesTheSliceOff) {
    EXPECT_EQ(wholeDiskName("disk0"), "disk0");
    EXPECT_EQ(wholeDiskName("disk10s1"), "disk10");
    EXPECT_EQ(wholeDiskName("disk2s1s3"), "disk2");
    EXPECT_EQ(wholeDiskName("rdisk2"), "");
    EXPECT_EQ(wholeDiskName("disk"), "");
    EXPECT_EQ(wholeDiskName("diskette"), "");
    EXPECT_EQ(wholeDiskName(""), "");
}

TEST(DriveInterfaces, HaveThePlatformsIdentifiers) {
    // Written out by hand a second time: a byte that differs shows.
    const auto hex = [](const CFUUIDBytes& bytes) {
        std::string text;
        for (const std::uint8_t byte : bytes) {
            text += "0123456789ABCDEF"[byte >> 4U];
            text += "0123456789ABCDEF"[byte & 15U];
        }
        return text;
    };
    EXPECT_EQ(hex(kIOATASMARTUserClientTypeID), "24514B7A280411D68A02003065704866");
    EXPECT_EQ(hex(kIOCFPlugInInterfaceID), "C244E858109C11D491D40050E4C6426F");
    EXPECT_EQ(hex(kIOATASMARTInterfaceID), "08ABE21C20D411D68DF60003935A76B2");
}

}  // namespace
}  // namespace calorivo
