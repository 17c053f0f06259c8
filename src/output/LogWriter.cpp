#include "output/LogWriter.h"

#include "monitor/LocalTime.h"
#include "output/LogFile.h"
#include "platform/Format.h"

#include <utility>

namespace calorivo {

namespace {

/// Lets go, at the end of the block, of a lock that is held.
class Unlocking {
  public:
    explicit Unlocking(TryLock& lock) : lock_(lock) {}
    Unlocking(const Unlocking&) = delete;
    Unlocking& operator=(const Unlocking&) = delete;
    ~Unlocking() { lock_.unlock(); }

  private:
    TryLock& lock_;
};

std::string timeStamp(WallTime time) {
    const std::tm local = localTime(time);
    return format("%d-%02d-%02d %02d:%02d:%02d", local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                  local.tm_hour, local.tm_min, local.tm_sec);
}

}  // namespace

LogWriter::LogWriter(LogWriterParts parts)
    : parts_(std::move(parts)), failures_(parts_.dispatch, parts_.systemLog) {}

void LogWriter::logStringIncludeDateTime(std::string line, IncludeDateTime includeDateTime) {
    logStringIncludeDateTime(std::make_shared<const CSVRow>(std::move(line)), includeDateTime);
}

void LogWriter::logStringIncludeDateTime(std::shared_ptr<const CSVRow> row, IncludeDateTime includeDateTime) {
    if (++waitingLines_ > mostWaitingLines) {
        --waitingLines_;
        drop();
        return;
    }
    parts_.logQueue.async([this, row = std::move(row), includeDateTime] {
        --waitingLines_;
        write(*row, includeDateTime);
    });
}

void LogWriter::drop() {
    const std::uint64_t dropped = ++droppedLines_;
    failures_.tell("slow disk", format("the disk is too slow: %llu lines dropped so far", dropped));
}

void LogWriter::write(const CSVRow& row, IncludeDateTime includeDateTime) {
    FileProblem problem;
    {
        // Kept: a line that meets a change of the file is dropped. Neither side may wait for the other.
        if (!parts_.logURLLock.tryLock()) return;
        const Unlocking unlocking(parts_.logURLLock);
        if (parts_.logFileURL.get().empty()) return;
        problem = appendToFile(row, includeDateTime);
    }
    if (problem.empty()) return;
    ++failedLines_;
    if (failures_.tell(problem) && parts_.failed) parts_.failed();
}

FileProblem LogWriter::appendToFile(const CSVRow& row, IncludeDateTime includeDateTime) {
    OpenedFile file = parts_.files.fileHandleForWritingToURL(parts_.logFileURL.get());
    if (file.handle == nullptr || !file.problem.empty()) return file.problem;
    return appendLine(*file.handle, lineOf(row, includeDateTime));
}

std::string LogWriter::lineOf(const CSVRow& row, IncludeDateTime includeDateTime) const {
    if (includeDateTime == IncludeDateTime::no) return row.text();
    return format("%@ %@", timeStamp(parts_.dispatch.wallTime()), row.text());
}

}  // namespace calorivo
