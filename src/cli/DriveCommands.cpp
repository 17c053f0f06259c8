#include "cli/DriveCommands.h"

#include "cli/DrivesJSON.h"
#include "cli/DrivesText.h"
#include "cli/Terminal.h"
#include "host/Drives.h"

#include <unistd.h>

#include <algorithm>

namespace calorivo {

std::vector<DriveRow> readDrives(const Options& options, const Surroundings& surroundings) {
    // Who asks once wants the answer of a slow drive too; one that hangs must still not hold the rest.
    constexpr std::chrono::seconds patience{2};
    const auto drives = makeDrives(options, surroundings.driveReader, patience);
    if (drives == nullptr) return {};
    drives->update();
    const SensorLists lists;
    Preferences preferences;
    preferences.tempUnit = options.isFahrenheit ? 1 : 0;
    const GPUState gpu;
    const TemperatureReader reader(lists, preferences, gpu);
    std::vector<DriveRow> rows;
    for (DriveDetails& details : drives->details()) {
        const DriveDictionary dictionary{{}, {}, details.celsius.value_or(0)};
        std::string text = driveTemperatureStringFromDictionary(&dictionary, reader);
        rows.push_back({std::move(details), std::move(text)});
    }
    return rows;
}

int runDrives(const Options& options, const Surroundings& surroundings) {
    const auto [out, errors] = surroundings.streams;
    if (const std::string problem = options.sys ? folderProblem(*options.sys) : ""; !problem.empty()) {
        complain(errors, *options.sys + ": " + problem);
        return exitNoAnswer;
    }
    const std::vector<DriveRow> drives = readDrives(options, surroundings);
    if (options.isJSON) {
        out.write(drivesJSON(drives, options.isFahrenheit));
        return exitAnswered;
    }
    out.write(drivesText(drives, lookOf(out)));
    if (drives.empty()) complain(errors, "no drives with SMART on this machine");
    return exitAnswered;
}

bool explainDrive(const Options& options, const Surroundings& surroundings) {
    const std::vector<DriveRow> drives = readDrives(options, surroundings);
    const auto found = std::ranges::find_if(drives, [&options](const DriveRow& drive) {
        return !drive.details.serial.empty() && drive.details.serial == trimmed(options.serial);
    });
    if (found == drives.end()) return false;
    surroundings.streams.out.write(options.isJSON ? driveExplanationJSON(*found)
                                                  : driveExplanationText(*found));
    return true;
}

ListLook lookOf(const Output& out) {
    ListLook look;
    if (out.descriptor() < 0 || isatty(out.descriptor()) != 1) return look;
    look.style = Style(isColourWanted(true, processEnvironment("NO_COLOR"), processEnvironment("TERM")));
    look.columns = Terminal(-1, out.descriptor()).size().columns;
    return look;
}

}  // namespace calorivo
