#include "output/LogWriter.h"
#include "platform/std/ThreadQueue.h"
#include "support/VirtualDispatch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

// The writer on a thread of its own, while the file is changed under it: nobody waits, and no line is torn.

namespace calorivo {
namespace {

/// Keeps the numbers of the lines that were written to each file.
class NumberFiles final : public FileHandles {
  public:
    [[nodiscard]] bool fileExistsAtPath(const std::string& /*path*/) override { return true; }
    [[nodiscard]] FileProblem createFileAtPath(const std::string& /*path*/) override { return {}; }
    [[nodiscard]] OpenedFile fileHandleForWritingToURL(const std::string& url) override {
        return {std::make_unique<Handle>(*this, url), {}};
    }

    std::mutex mutex;
    std::map<std::string, std::vector<int>> numbers;

  private:
    struct Handle final : FileHandle {
        Handle(NumberFiles& all, std::string url) : all_(all), url_(std::move(url)) {}
        [[nodiscard]] FileProblem seekToEndOfFile() override { return {}; }
        [[nodiscard]] bool endsInsideLine() override { return false; }
        [[nodiscard]] FileProblem writeData(std::string_view data) override {
            const std::lock_guard lock(all_.mutex);
            all_.numbers[url_].push_back(std::stoi(std::string(data)));
            return {};
        }
        [[nodiscard]] FileProblem synchronizeFile() override { return {}; }

        NumberFiles& all_;
        std::string url_;
    };
};

struct NoSystemLog final : SystemLog {
    void log(std::string_view /*line*/) override {}
};

TEST(LogWriterThread, WritesInOrderWhileTheFileIsChanged) {
    constexpr int lines = 5000;
    const test::VirtualDispatch dispatch;
    NumberFiles files;
    NoSystemLog systemLog;
    Property<std::string> logFileURL{"file:///0"};
    TryLock logURLLock;
    std::unique_ptr<Queue> queue = std::make_unique<ThreadQueue>("log");
    LogWriter writer({.dispatch = dispatch,
                      .logQueue = *queue,
                      .files = files,
                      .systemLog = systemLog,
                      .logFileURL = logFileURL,
                      .logURLLock = logURLLock,
                      .failed = {}});
    for (int line = 0; line < lines; ++line) {
        const auto row = std::make_shared<CSVRow>(std::to_string(line));
        writer.logStringIncludeDateTime(row, IncludeDateTime::no);
        row->append(",grown");
        if (line % 10 == 0 && logURLLock.tryLock()) {
            logFileURL = "file:///" + std::to_string(line % 20);
            logURLLock.unlock();
        }
    }
    queue->sync([] {});
    std::size_t written = 0;
    for (const auto& [url, numbers] : files.numbers) {
        EXPECT_TRUE(std::is_sorted(numbers.begin(), numbers.end())) << url;
        written += numbers.size();
    }
    EXPECT_GT(written, 0U);
    EXPECT_LE(written + writer.droppedLines(), static_cast<std::size_t>(lines));
    EXPECT_EQ(writer.failedLines(), 0U);
    queue.reset();
}

}  // namespace
}  // namespace calorivo
