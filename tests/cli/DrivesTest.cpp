#include "CommandRun.h"
#include "cli/DrivesJSON.h"
#include "cli/DrivesText.h"
#include "cli/Watch.h"
#include "support/DriveReaderStart.h"

#include "../platform/linux/DriveTrees.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

using test::FakeTree;
using test::runCommandLine;

const test::DriveReaderStart readerStart;

/// A recorded machine with two disks, one of them without the kernel's reading, and an NVMe drive.
struct RecordedDrives {
    RecordedDrives() {
        test::addDisk(tree, first);
        test::addDrivetemp(tree, first, "38000");
        test::addDisk(tree, {.name = "sdb", .address = "1:0:0:0", .model = "OTHER DISK", .serial = "B2"});
        test::addNvme(tree, {});
        test::addNvmeChip(tree, {}, "84850");
    }
    [[nodiscard]] test::CommandAnswer run(std::vector<std::string> arguments) const {
        arguments.insert(arguments.end(), {"--sys", tree.root()});
        return runCommandLine(arguments);
    }
    FakeTree tree;
    const test::FakeDisk first{};
};

TEST(DrivesCommand, PrintsEveryDrive) {
    const RecordedDrives machine;
    EXPECT_EQ(machine.run({"drives"}),
              (test::CommandAnswer{
                  0,
                  "SAMPLE DISK (A1)           sda     38°C\n"
                  "OTHER DISK (B2)            sdb      N/A   the kernel module drivetemp is not loaded, and "
                  "only root may ask the drive itself\n"
                  "SAMPLE NVME (N1)           nvme0   85°C !\n",
                  ""}));
}

TEST(DrivesCommand, PrintsJSON) {
    const RecordedDrives machine;
    const auto answer = machine.run({"drives", "--json", "--fahrenheit"});
    const JSON expected = {
        {"unit", "F"},
        {"drives",
         {{{"model", "SAMPLE DISK"},
           {"serial", "A1"},
           {"celsius", 38},
           {"text", "100°F"},
           {"source", "drivetemp"},
           {"asleep", false},
           {"device", "sda"},
           {"listed", true},
           {"problem", nullptr}},
          {{"model", "OTHER DISK"},
           {"serial", "B2"},
           {"celsius", nullptr},
           {"text", "N/A"},
           {"source", nullptr},
           {"asleep", false},
           {"device", "sdb"},
           {"listed", false},
           {"problem", "the kernel module drivetemp is not loaded, and only root may ask the drive itself"}},
          {{"model", "SAMPLE NVME"},
           {"serial", "N1"},
           {"celsius", 85},
           {"text", "185°F"},
           {"source", "nvme"},
           {"asleep", false},
           {"device", "nvme0"},
           {"listed", true},
           {"problem", nullptr}}}}};
    EXPECT_EQ(JSON::parse(answer.out), expected);
    EXPECT_EQ(answer.code, 0);
}

TEST(DrivesCommand, SaysThatThereAreNone) {
    const FakeTree tree;
    EXPECT_EQ(runCommandLine({"drives", "--sys", tree.root()}),
              (test::CommandAnswer{0, "", "calorivo-cli: no drives with SMART on this machine\n"}));
    EXPECT_EQ(runCommandLine({"drives", "--sys", "/nowhere"}),
              (test::CommandAnswer{1, "", "calorivo-cli: /nowhere: No such file or directory\n"}));
    EXPECT_EQ(runCommandLine({"drives", "--simulate", "--json"}).out,
              "{\n  \"unit\": \"C\",\n  \"drives\": []\n}\n");
}

TEST(DrivesCommand, LeavesASleepingDriveAsleep) {
    RecordedDrives machine;
    machine.tree.file(machine.first.device() + "/power/runtime_status", "suspended\n");
    const JSON drive = JSON::parse(machine.run({"drives", "--json"}).out)["drives"][0];
    EXPECT_EQ(drive["asleep"], true);
    EXPECT_EQ(drive["celsius"], nullptr);
    EXPECT_EQ(drive["problem"], "it sleeps");
}

TEST(DrivesInList, ComeFirstInTheirArea) {
    RecordedDrives machine;
    EXPECT_EQ(machine.run({"list"}).out,
              "Unknown model (none)\n\n"
              "Hard Drive\n"
              "  SAMPLE DISK (A1)                  38°C\n"
              "  SAMPLE NVME (N1)                  85°C !\n");
    EXPECT_EQ(machine.run({"list", "--area", "cpu"}).out, "");
    EXPECT_EQ(JSON::parse(machine.run({"list", "--json"}).out)["drives"].size(), 3U);
    EXPECT_EQ(JSON::parse(machine.run({"list", "--json", "--area", "cpu"}).out)["drives"].size(), 0U);
}

TEST(DrivesInList, StandThereOnceThoughTheirSensorIsKnownAsWell) {
    RecordedDrives machine;
    const std::string drive = test::FakeNvme{}.folder();
    machine.tree.link(drive + "/hwmon2/device", "../../nvme0");
    machine.tree.link("class/hwmon/hwmon2", "../../" + drive + "/hwmon2");
    EXPECT_EQ(machine.run({"list"}).out,
              "Unknown model (hwmon)\n\n"
              "Hard Drive\n"
              "  SAMPLE DISK (A1)                  38°C\n"
              "  SAMPLE NVME (N1)                  85°C !\n\n"
              "Averages\n"
              "  CPU                                N/A\n"
              "  All sensors                       85°C !\n");
    const JSON all = JSON::parse(machine.run({"list", "--json"}).out);
    EXPECT_EQ(all["sensors"].size(), 1U) << "a program is told everything";
    EXPECT_EQ(all["drives"].size(), 3U);
}

TEST(DrivesInWatch, AreInItsTablesAndInItsSummary) {
    const RecordedDrives machine;
    const ParsedOptions parsed =
        parseOptions({"watch", "--cycles", "2", "--interval", "0.01", "--sys", machine.tree.root()});
    Output out;
    Output errors;
    LinuxFileManager files;
    Surroundings surroundings{files, {{}, {}, CALORIVO_SOURCE_DIR "/data"}, {out, errors}};
    EXPECT_EQ(runWatch(parsed.options, surroundings), exitAnswered);
    const auto countOf = [&out](std::string_view text) {
        int count = 0;
        for (std::size_t at = out.text().find(text); at != std::string::npos;
             at = out.text().find(text, at + 1))
            ++count;
        return count;
    };
    const std::string line = "  SAMPLE DISK (A1)             38°C          38°C       38°C\n";
    EXPECT_EQ(countOf("Hard Drive\n" + line), 3) << out.text();
    EXPECT_EQ(countOf("B2"), 0);
}

TEST(DrivesInWhy, AreKnownByTheirSerialNumber) {
    const RecordedDrives machine;
    EXPECT_EQ(machine.run({"why", "A1"}),
              (test::CommandAnswer{0,
                                   "SAMPLE DISK (A1)\n\n"
                                   "  device   sda\n"
                                   "  source   drivetemp: the kernel's own reading\n"
                                   "  reading  38 °C: shown as 38°C\n"
                                   "  area     Hard Drive\n"
                                   "  shown    yes\n",
                                   ""}));
    EXPECT_EQ(JSON::parse(machine.run({"why", "N1", "--json"}).out)["device"], "nvme0");
    EXPECT_EQ(
        machine.run({"why", "SERIAL-NUMBER"}),
        (test::CommandAnswer{1, "", "calorivo-cli: no drive has the serial number \"SERIAL-NUMBER\"\n"}));
    EXPECT_EQ(machine.run({"why", "C3"}),
              (test::CommandAnswer{1, "", "calorivo-cli: the key \"C3  \" is not known here\n"}));
}

/// A row without reading any drive.
DriveRow rowOf(std::optional<std::int32_t> celsius, bool isAsleep, bool isListed, std::string trouble) {
    DriveRow row;
    row.details = {
        "Disk", "A1", "sda", celsius, celsius ? "smart" : "", isAsleep, isListed, std::move(trouble)};
    row.text = celsius ? std::to_string(*celsius) + "°C" : "N/A";
    return row;
}

TEST(DrivesText, SaysWhatIsSpecialAboutADrive) {
    EXPECT_EQ(drivesText({rowOf(38, true, true, ""), rowOf({}, true, false, "it sleeps"),
                          rowOf({}, false, true, "its SMART is switched off")},
                         {}),
              "Disk (A1)                  sda   38°C   asleep, before it fell asleep\n"
              "Disk (A1)                  sda    N/A   it sleeps\n"
              "Disk (A1)                  sda    N/A   its SMART is switched off\n");
}

TEST(DrivesText, CutsNamesWhereThereIsLittleRoom) {
    ListLook look;
    look.columns = 22;
    EXPECT_EQ(drivesText({rowOf(38, false, true, "")}, look), "Disk…   sda   38°C\n");
}

TEST(DrivesText, ShowsNoControlCharacters) {
    DriveRow row = rowOf(38, false, true, "");
    row.details.model = "Di\033[31msk\n";
    EXPECT_EQ(drivesText({row}, {}), "Di[31msk (A1)              sda   38°C\n");
    row.details.model.clear();
    row.details.serial.clear();
    EXPECT_EQ(descriptionOf(row.details), "sda");
}

TEST(DrivesText, ExplainsADriveThatIsNotShownOrNotRead) {
    EXPECT_EQ(driveExplanationText(rowOf(38, true, true, "")),
              "Disk (A1)\n\n"
              "  device   sda\n"
              "  source   smart: the drive's SMART data\n"
              "  reading  38 °C: shown as 38°C\n"
              "  note     It sleeps and was not woken: the reading is an earlier one.\n"
              "  area     Hard Drive\n"
              "  shown    yes\n");
    DriveRow tooHot = rowOf(130, false, true, "it tells 130 °C");
    tooHot.text = "N/A";
    EXPECT_EQ(driveExplanationText(tooHot),
              "Disk (A1)\n\n"
              "  device   sda\n"
              "  source   smart: the drive's SMART data\n"
              "  reading  130 °C: shown as N/A\n"
              "  area     Hard Drive\n"
              "  shown    yes, as N/A: it tells 130 °C\n");
    EXPECT_EQ(driveExplanationText(rowOf({}, true, false, "it sleeps")),
              "Disk (A1)\n\n"
              "  device   sda\n"
              "  note     It sleeps and was not woken.\n"
              "  shown    no: it sleeps\n");
    EXPECT_EQ(driveExplanationText(rowOf({}, false, true, "its SMART is switched off")),
              "Disk (A1)\n\n"
              "  device   sda\n"
              "  area     Hard Drive\n"
              "  shown    yes, as N/A: its SMART is switched off\n");
}

}  // namespace
}  // namespace calorivo
