#pragma once

#include "output/Logger.h"
#include "support/FakeFileHandles.h"
#include "support/Machine.h"
#include "support/RecordingPlatform.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace calorivo::test {

/// A machine that logs temperatures and fans: the sensors "CPU Core 1" at 40 and "GPU" at 60 degrees, the
/// fans "Left" and "Right". It is 2024-03-05 14:07:09.
class LogFixture : public testing::Test {
  protected:
    LogFixture() {
        machine.cpu("TC1C", 40).gpu("TG0D", 60);
        machine.lists.customSensorsToReadableNamesMap["TC1C"] = "CPU Core 1";
        machine.lists.customSensorsToReadableNamesMap["TG0D"] = "GPU";
        machine.fan(1000, 900, 3000, "Left").fan(2001, 900, 3000, "Right");
        machine.logging().preferences.logFanSpeeds = true;
        keys.define("logFileURL", logFileURL, [this](std::string file) { setLogFileURL(std::move(file)); });
    }
    /// As the preferences do it.
    void setLogFileURL(std::string file) {
        if (!logURLLock.tryLock()) return;
        logFileURL = std::move(file);
        logURLLock.unlock();
    }
    void hold() { machine.dispatch.hold("log"); }
    void release() {
        machine.dispatch.release("log");
        machine.dispatch.run();
    }
    /// One check with everything that follows.
    void check() {
        cycle->checkTimerFired();
        machine.dispatch.run();
    }
    void write(std::string line) {
        writer.logStringIncludeDateTime(std::move(line), IncludeDateTime::no);
        machine.dispatch.run();
    }
    [[nodiscard]] const std::string& text() { return files.files[path]; }

    // Before the machine, whose controller is the one to be read.
    RecordingPlatform platform;
    Machine machine;
    FakeFileHandles files;
    const std::string path = "/home/u/My Documents/Calorivo Log.csv";
    const std::string url = "file:///home/u/My%20Documents/Calorivo%20Log.csv";
    std::vector<std::string> documentDirectories{"/home/u/My Documents", "/other"};
    Property<std::string> logFileURL;
    TryLock logURLLock;
    KeyValueCoding keys;
    LogWriter writer{LogWriterParts{.dispatch = machine.dispatch,
                                    .logQueue = *machine.logQueue,
                                    .files = files,
                                    .systemLog = platform.systemLog,
                                    .logFileURL = logFileURL,
                                    .logURLLock = logURLLock,
                                    .failed = [this] { logger->writerFailed(); }}};
    std::unique_ptr<Logger> logger =
        std::make_unique<Logger>(LoggerParts{.dispatch = machine.dispatch,
                                             .keys = keys,
                                             .logFileURL = logFileURL,
                                             .preferences = machine.preferences,
                                             .lists = machine.lists,
                                             .naming = machine.naming,
                                             .fans = machine.fans,
                                             .files = files,
                                             .systemLog = platform.systemLog,
                                             .alertPanel = platform.alertPanel,
                                             .workspace = platform.workspace,
                                             .documentDirectories = documentDirectories,
                                             .writer = writer});
    std::unique_ptr<CheckCycle> cycle =
        std::make_unique<CheckCycle>(machine.parts({.log = &writer, .drives = &machine.drives}));
};

}  // namespace calorivo::test
