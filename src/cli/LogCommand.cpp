#include "cli/LogCommand.h"

#include "cli/InlineDispatch.h"
#include "cli/LogDrives.h"
#include "cli/LogFileOutput.h"
#include "cli/Text.h"
#include "host/Drives.h"
#include "output/LogFile.h"
#include "output/LogHeader.h"
#include "platform/linux/PollDispatch.h"
#include "platform/std/ThreadQueue.h"

#include <sys/stat.h>

#include <csignal>
#include <optional>
#include <utility>

namespace calorivo {

namespace {

/// The running log: begins checks and takes their rows.
class Log final : public CycleLog {
  public:
    Log(const Options& options, Surroundings& surroundings, PollDispatch& dispatch, Session& session);

    /// The exit code.
    [[nodiscard]] int run();

    /// The engine hands each row over twice, growing: what counts is how it is at the end of the check.
    void logStringIncludeDateTime(std::shared_ptr<const CSVRow> row, IncludeDateTime /*with*/) override {
        row_ = row->text();
    }

  private:
    [[nodiscard]] bool open();
    void check();
    void print(const std::string& line);
    void endWithReader();

    const Options& options_;
    Streams streams_;
    PollDispatch& dispatch_;
    InlineQueue checkQueue_;
    Session& session_;
    Engine& engine_;
    std::optional<LogDrives> drives_;
    std::optional<LogFileOutput> file_;
    std::uint64_t checks_ = 0;
    std::string row_;
    Observation reader_;
    std::unique_ptr<Timer> timer_;
};

Log::Log(const Options& options, Surroundings& surroundings, PollDispatch& dispatch, Session& session)
    : options_(options),
      streams_(surroundings.streams),
      dispatch_(dispatch),
      session_(session),
      engine_(session.discover(checkQueue_, {.log = this})) {
    engine_.preferences.logToFile = true;
    engine_.preferences.logTemperatures = true;
    engine_.preferences.logFanSpeeds = options.isWithFans;
    if (options.isWithDrives) drives_.emplace(makeDrives(options, surroundings.driveReader), engine_.reader);
}

int Log::run() {
    session_.tellOfNoSensors();
    if (drives_ && drives_->isEmpty()) complain(streams_.errors, "no drives with SMART on this machine");
    const bool isOpen = open();
    streams_.errors.flush();
    if (!isOpen) return exitNoAnswer;
    timer_ = dispatch_.scheduleTimer(options_.interval, Repeats::yes, [this] { check(); });
    check();
    dispatch_.run();
    timer_.reset();
    reader_.drop();
    const bool isAllWritten = !file_ || file_->close();
    dispatch_.closeMainQueue();
    return isAllWritten ? exitAnswered : exitNoAnswer;
}

bool Log::open() {
    std::string header =
        logHeader(engine_.lists, engine_.naming, engine_.fans.fansArray(), engine_.preferences);
    if (drives_) header += drives_->titles(options_.isFahrenheit ? "F" : "C");
    if (options_.isPrinting) {
        endWithReader();
        print(header);
        return true;
    }
    file_.emplace(dispatch_, streams_);
    return file_->open(options_.logFile.value_or(std::string(logFileName)), std::move(header));
}

void Log::endWithReader() {
    // A pipe tells at once that its reader has gone, not only with the next row.
    struct stat status {};
    const int descriptor = streams_.out.descriptor();
    if (descriptor >= 0 && fstat(descriptor, &status) == 0 && S_ISFIFO(status.st_mode))
        reader_ = dispatch_.watchDescriptor(descriptor, [this] { dispatch_.stop(); });
}

void Log::check() {
    engine_.cycle.checkTimerFired();
    if (drives_) row_ += drives_->readFields();
    if (file_)
        file_->write(std::move(row_));
    else
        print(row_);
    if (++checks_ == options_.cycles) dispatch_.stop();
}

void Log::print(const std::string& line) {
    streams_.out.write(cleanText(line)).write("\n");
    if (!streams_.out.flush() || streams_.out.isReaderGone()) dispatch_.stop();
}

}  // namespace

int runLog(const Options& options, Surroundings& surroundings) {
    PollDispatch dispatch([](std::string label) { return std::make_unique<ThreadQueue>(std::move(label)); });
    // Of no use here: the calls that these belong to fail as well.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    // Before any thread is there: each of them inherits which signals come here.
    const Observation signals = dispatch.watchSignals({SIGINT, SIGTERM, SIGHUP, SIGQUIT},
                                                      [&dispatch](int /*signal*/) { dispatch.stop(); });
    Session session(options, surroundings, dispatch);
    if (!session.open()) return exitNoAnswer;
    return Log(options, surroundings, dispatch, session).run();
}

}  // namespace calorivo
