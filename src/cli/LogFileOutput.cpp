#include "cli/LogFileOutput.h"

#include "platform/FileURL.h"
#include "platform/Format.h"

#include <filesystem>
#include <system_error>
#include <utility>

namespace calorivo {

void LogFileOutput::Messages::log(std::string_view line) {
    // An output of its own for each message: the main thread may be writing to the other one.
    Output errors(descriptor_);
    complain(errors, line);
    errors.flush();
}

LogFileOutput::LogFileOutput(Dispatch& dispatch, Streams streams)
    : dispatch_(dispatch), errors_(streams.errors), messages_(streams.errors.descriptor()) {}

bool LogFileOutput::open(const std::string& path, std::string header) {
    path_ = std::filesystem::absolute(path).string();
    header_ = std::move(header);
    logFileURL_ = fileURLWithPath(path_);
    logQueue_ = dispatch_.makeSerialQueue("log");
    writer_ = std::make_unique<LogWriter>(
        LogWriterParts{.dispatch = dispatch_,
                       .logQueue = *logQueue_,
                       .files = files_,
                       .systemLog = messages_,
                       .logFileURL = logFileURL_,
                       .logURLLock = logURLLock_,
                       .failed = [this] { dispatch_.mainQueue().async([this] { replaceMissingFile(); }); }});
    FileProblem problem;
    if (!files_.fileExistsAtPath(path_)) {
        problem = beginFile();
    } else {
        problem = files_.fileHandleForWritingToURL(logFileURL_).problem;
        std::error_code ignored;
        if (problem.empty() && std::filesystem::file_size(path_, ignored) == 0) problem = beginFile();
    }
    if (problem.empty()) return true;
    complain(errors_, path + ": " + problem);
    return false;
}

FileProblem LogFileOutput::beginFile() {
    FileProblem problem = files_.createFileAtPath(path_);
    if (problem.empty()) write(header_);
    return problem;
}

void LogFileOutput::replaceMissingFile() {
    // A failure has been told already, and is tried again with a later row.
    if (!files_.fileExistsAtPath(path_)) static_cast<void>(beginFile());
}

void LogFileOutput::write(std::string row) {
    writer_->logStringIncludeDateTime(std::move(row), IncludeDateTime::no);
}

bool LogFileOutput::close() {
    logQueue_->sync([] {});
    const std::uint64_t lost = writer_->failedLines() + writer_->droppedLines();
    if (lost != 0) complain(errors_, format("%@: %llu lines could not be written", path_, lost));
    return lost == 0;
}

}  // namespace calorivo
