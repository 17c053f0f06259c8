#include "output/Logger.h"

#include "output/LogFile.h"
#include "output/LogHeader.h"
#include "platform/FileURL.h"
#include "platform/Format.h"

namespace calorivo {

void Logger::setupLogger() {
    if (!parts_.preferences.logFileBookmarkData.get().empty()) return;
    if (parts_.documentDirectories.empty() || parts_.documentDirectories.front().empty()) {
        parts_.systemLog.log(
            "The log file couldn't be created because the Documents folder for this user is not available.");
        return;
    }
    const std::string path = parts_.documentDirectories.front() + '/' + std::string(logFileName);
    // Also without logging, so that the file can be shown and opened.
    parts_.keys.setValueForKey(fileURLWithPath(path), "logFileURL");
    if (!parts_.preferences.logToFile) return;
    // Kept: the rows go on under the old header, even if they have other columns by now.
    if (parts_.preferences.useSameLogFile && parts_.files.fileExistsAtPath(path)) return;
    // Kept: the file is emptied here and not on the log queue, so that rows which wait there come before the
    // header.
    if (!beginFile(path).empty()) alertAboutPath(path);
}

FileProblem Logger::beginFile(const std::string& path) {
    FileProblem problem = parts_.files.createFileAtPath(path);
    if (problem.empty())
        parts_.writer.logStringIncludeDateTime(
            logHeader(parts_.lists, parts_.naming, parts_.fans.fansArray(), parts_.preferences),
            IncludeDateTime::no);
    return problem;
}

void Logger::alertAboutPath(const std::string& path) {
    parts_.alertPanel.runModal(
        {.message = "Calorivo was not able to create the log file.",
         .defaultButton = "OK",
         .informativeText =
             format("Please make sure the path to %@ is writable and re-launch Calorivo.", path)});
}

void Logger::revealLogFileInFinder() {
    const std::string url = parts_.logFileURL;
    if (!url.empty()) parts_.workspace.openURL(URLByDeletingLastPathComponent(url));
}

void Logger::openLogFile() {
    const std::string url = parts_.logFileURL;
    if (!url.empty()) parts_.workspace.openURL(url);
}

void Logger::writerFailed() {
    parts_.dispatch.mainQueue().async([self = std::weak_ptr(self_)] {
        if (const auto logger = self.lock()) (*logger)->replaceMissingFile();
    });
}

void Logger::replaceMissingFile() {
    const std::string path = pathOfFileURL(parts_.logFileURL.get());
    if (!parts_.preferences.logToFile || path.empty() || parts_.files.fileExistsAtPath(path)) return;
    // Without an alert: the user may be moving files about, and the failure has been told.
    static_cast<void>(beginFile(path));
}

}  // namespace calorivo
