#include "cli/Watch.h"

#include "cli/InlineDispatch.h"
#include "cli/ListText.h"
#include "cli/Terminal.h"
#include "cli/WatchDrives.h"
#include "cli/WatchScreen.h"
#include "cli/WatchStatistics.h"
#include "cli/WatchTable.h"
#include "platform/Format.h"
#include "platform/linux/PollDispatch.h"
#include "platform/std/ThreadQueue.h"

#include <unistd.h>

#include <array>
#include <csignal>
#include <optional>

namespace calorivo {

namespace {

using std::chrono::nanoseconds;

std::unique_ptr<Queue> makeThreadQueue(std::string label) {
    return std::make_unique<ThreadQueue>(std::move(label));
}

std::string secondsText(nanoseconds duration) {
    std::string text = shortestText(std::chrono::duration<double>(duration).count());
    if (text.ends_with(".0")) text.resize(text.size() - 2);
    return text + " s";
}

/// The running watch: begins checks and shows what they find.
class Watch final : public CycleDisplay {
  public:
    Watch(const Options& options, Surroundings& surroundings, PollDispatch& dispatch, Session& session);

    void run();
    void printSummary();
    void signalArrived(int signal);

    void reloadData() override;
    void updateStatusItem() override;
    void setNeedsDisplay() override {}

  private:
    [[nodiscard]] bool isShowing() const { return !options_.isQuiet; }
    void check();
    void checkWithoutPause();
    void endAfterLastRefresh();
    void keysArrived();
    void beginDrives(const std::string& reader);
    void drivesArrived(const std::vector<DriveDetails>& drives);
    void printTable();
    void paint(bool isAnew);
    [[nodiscard]] ScreenContents contents(std::size_t columns) const;

    const Options& options_;
    Output& out_;
    PollDispatch& dispatch_;
    Session& session_;
    bool isOnTerminal_;
    Style style_;
    std::unique_ptr<Queue> checkQueue_;
    Engine& engine_;
    WatchStatistics statistics_;
    Moment start_;
    Moment nextPaint_{};
    std::optional<Terminal> terminal_;
    WatchScreen screen_;
    WatchKeys keys_;
    std::vector<std::string> shown_;
    Observation keyboard_;
    std::unique_ptr<Timer> timer_;
    std::optional<WatchDrives> drives_;
};

Watch::Watch(const Options& options, Surroundings& surroundings, PollDispatch& dispatch, Session& session)
    : options_(options),
      out_(surroundings.streams.out),
      dispatch_(dispatch),
      session_(session),
      isOnTerminal_(out_.descriptor() >= 0 && isatty(out_.descriptor()) == 1),
      style_(isColourWanted(isOnTerminal_, processEnvironment("NO_COLOR"), processEnvironment("TERM"))),
      checkQueue_(isShowing() ? dispatch.makeSerialQueue("check") : std::make_unique<InlineQueue>()),
      engine_(session.discover(*checkQueue_, {.display = isShowing() ? this : nullptr})),
      statistics_(engine_,
                  [&session](SensorKey key) { return session.provider().driveMeasuredBy(key.view()); }),
      start_(dispatch.now()) {
    beginDrives(surroundings.driveReader);
}

void Watch::beginDrives(const std::string& reader) {
    auto drives = makeDrives(options_, reader);
    if (drives == nullptr) return;
    drives_.emplace(std::move(drives), dispatch_, [this](const auto& found) { drivesArrived(found); });
    statistics_.addDrives(drives_->first());
}

void Watch::drivesArrived(const std::vector<DriveDetails>& drives) {
    statistics_.addDrives(drives);
    if (terminal_) paint(false);
}

void Watch::run() {
    if (isShowing() && isOnTerminal_) {
        terminal_.emplace(isatty(STDIN_FILENO) == 1 ? STDIN_FILENO : -1, out_.descriptor());
        terminal_->enter();
        if (isatty(STDIN_FILENO) == 1)
            keyboard_ = dispatch_.watchDescriptor(STDIN_FILENO, [this] { keysArrived(); });
    }
    if (options_.interval.count() > 0)
        timer_ = dispatch_.scheduleTimer(options_.interval, Repeats::yes, [this] { check(); });
    if (options_.interval.count() == 0 && !isShowing()) {
        checkWithoutPause();
    } else {
        check();
        dispatch_.run();
    }
    timer_.reset();
    // Whoever waits for this thread now must not wait for ever.
    dispatch_.closeMainQueue();
    checkQueue_.reset();
    terminal_.reset();
}

void Watch::check() {
    engine_.cycle.checkTimerFired();
    statistics_.add();
    if (drives_) drives_->check();
    if (options_.cycles != 0 && statistics_.checks() >= options_.cycles) endAfterLastRefresh();
}

void Watch::checkWithoutPause() {
    // Signals are looked for now and then: that costs a call, a check may cost none.
    constexpr nanoseconds pollInterval = std::chrono::milliseconds(50);
    Moment nextPoll = dispatch_.now() + pollInterval;
    for (;;) {
        check();
        if (options_.cycles != 0 && statistics_.checks() >= options_.cycles) return;
        const Moment now = dispatch_.now();
        if (now < nextPoll) continue;
        nextPoll = now + pollInterval;
        if (!dispatch_.runReady()) return;
    }
}

void Watch::endAfterLastRefresh() {
    timer_.reset();
    checkQueue_->async([this] { dispatch_.mainQueue().async([this] { dispatch_.stop(); }); });
}

void Watch::signalArrived(int signal) {
    switch (signal) {
        case SIGWINCH:
        case SIGCONT:
            if (!terminal_) return;
            // After a stop the shell may have set the terminal for itself.
            if (signal == SIGCONT) terminal_->enterAgain();
            paint(true);
            return;
        case SIGTSTP:
            if (terminal_) terminal_->leave();
            suspendProcess();
            if (!terminal_) return;
            terminal_->enter();
            paint(true);
            return;
        default:
            dispatch_.stop();
    }
}

void Watch::keysArrived() {
    std::array<char, 256> input{};
    const ssize_t got = read(STDIN_FILENO, input.data(), input.size());
    if (got <= 0) {
        keyboard_.drop();
        return;
    }
    for (const WatchKey key : keys_.parse({input.data(), static_cast<std::size_t>(got)})) {
        if (key == WatchKey::quit) dispatch_.stop();
        screen_.move(key);
    }
    paint(false);
}

void Watch::reloadData() {
    if (!terminal_) {
        printTable();
        return;
    }
    // Faster than this nobody can read, and a slow line would hold the checks.
    constexpr nanoseconds shortestPause = std::chrono::milliseconds(40);
    const Moment now = dispatch_.now();
    if (now < nextPaint_) return;
    nextPaint_ = now + shortestPause;
    paint(false);
}

void Watch::updateStatusItem() {
    const bool isLast = options_.cycles != 0 && statistics_.checks() >= options_.cycles;
    // Without a pause the next check begins when this one has been shown.
    if (options_.interval.count() == 0 && !isLast) dispatch_.mainQueue().async([this] { check(); });
}

ScreenContents Watch::contents(std::size_t columns) const {
    const WatchRow titles{{}, {}, "now", "min", "max"};
    return {titleOf(engine_.lists.modelName, session_.provider().sourceName()),
            tableLines(watchRows(engine_, statistics_), titles, columns, style_),
            format("check %llu, every %@", statistics_.checks(), secondsText(options_.interval))};
}

void Watch::printTable() {
    constexpr std::size_t columns = 80;
    const ScreenContents table = contents(columns);
    out_.write(table.title).write(format(", check %llu\n", statistics_.checks()));
    for (const std::string& line : table.table) out_.write(line).write("\n");
    out_.write("\n");
    if (!out_.flush()) dispatch_.stop();
}

void Watch::paint(bool isAnew) {
    const ScreenSize size = terminal_->size();
    std::vector<std::string> lines = screen_.lines(contents(size.columns), size, style_);
    if (isAnew) {
        shown_.clear();
        out_.write("\033[2J");
    }
    out_.write(repaintText(shown_, lines));
    shown_ = std::move(lines);
    if (!out_.flush()) dispatch_.stop();
}

void Watch::printSummary() {
    const auto duration = std::chrono::duration_cast<std::chrono::milliseconds>(dispatch_.now() - start_);
    const WatchRow titles{{}, {}, "min", "average", "max"};
    std::string title = titleOf(engine_.lists.modelName, session_.provider().sourceName());
    appendFormat(title, ", %llu %@ in %.1f s",
                 {statistics_.checks(), statistics_.checks() == 1 ? "check" : "checks",
                  std::chrono::duration<double>(duration).count()});
    std::string text;
    style_.append(text, title, Ink::title);
    out_.write(text).write("\n");
    for (const std::string& line : tableLines(summaryRows(engine_, statistics_), titles, 80, style_))
        out_.write(line).write("\n");
}

}  // namespace

int runWatch(const Options& options, Surroundings& surroundings) {
    PollDispatch dispatch(makeThreadQueue);
    // Before any thread is there: each of them inherits which signals come here.
    Watch* watching = nullptr;
    const Observation signals = dispatch.watchSignals(
        {SIGINT, SIGTERM, SIGHUP, SIGQUIT, SIGWINCH, SIGTSTP, SIGCONT}, [&](int signal) {
            if (watching != nullptr) watching->signalArrived(signal);
        });
    Session session(options, surroundings, dispatch);
    if (!session.open()) return exitNoAnswer;
    Watch watch(options, surroundings, dispatch, session);
    watching = &watch;
    surroundings.streams.errors.flush();
    watch.run();
    watch.printSummary();
    return exitAnswered;
}

}  // namespace calorivo
