#include "platform/qt/QtDispatch.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <ctime>
#include <limits>
#include <system_error>
#include <utility>

namespace calorivo {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;

namespace {

constexpr long nanosecondsPerSecond = 1'000'000'000;
/// The longest that a timer of Qt counts; longer waits go in pieces of it.
constexpr milliseconds longestWait(std::numeric_limits<int>::max());

int wakeDescriptor() {
    const int descriptor = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    if (descriptor < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
    return descriptor;
}

void signalDescriptor(int descriptor) {
    const std::uint64_t one = 1;
    // It can only fail when the count is full, and then the loop wakes anyway.
    [[maybe_unused]] const ssize_t written = write(descriptor, &one, sizeof one);
}

Moment machineNow() {
    timespec time{};
    clock_gettime(CLOCK_BOOTTIME, &time);
    return Moment(std::chrono::seconds(time.tv_sec) + nanoseconds(time.tv_nsec));
}

/// Starts anew after each tick, so that ticks that came late or in a sleep of the machine are not made up
/// for.
class QtTimer final : public Timer {
  public:
    QtTimer(const Dispatch& clock, nanoseconds interval, Repeats repeats, std::function<void()> action)
        : clock_(clock),
          interval_(interval),
          repeats_(repeats),
          action_(std::make_shared<std::function<void()>>(std::move(action))) {
        timer_.setSingleShot(true);
        timer_.setTimerType(Qt::PreciseTimer);
        QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { tick(); });
        begin();
    }

    void fire() override {
        const auto action = action_;  // it stays whole while it runs, even if its timer goes
        (*action)();
    }

  private:
    void begin() {
        due_ = clock_.now() + interval_;
        wait();
    }
    void wait() {
        const auto rest = std::chrono::ceil<milliseconds>(due_ - clock_.now());
        timer_.start(std::clamp(rest, milliseconds(0), longestWait));
    }
    void tick() {
        if (clock_.now() < due_) {
            wait();
            return;
        }
        if (repeats_ == Repeats::yes) begin();
        fire();
    }

    const Dispatch& clock_;
    const nanoseconds interval_;
    const Repeats repeats_;
    std::shared_ptr<std::function<void()>> action_;
    Moment due_;
    QTimer timer_;
};

}  // namespace

QtDispatch::QtDispatch(QueueFactory makeQueue, Clock clock)
    : makeQueue_(std::move(makeQueue)),
      clock_(clock ? std::move(clock) : machineNow),
      wake_(wakeDescriptor()),
      mainQueue_([this] { signalDescriptor(wake_); }),
      notifier_(std::make_unique<QSocketNotifier>(wake_, QSocketNotifier::Read)) {
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] {
        std::uint64_t count = 0;
        [[maybe_unused]] const ssize_t got = read(wake_, &count, sizeof count);
        mainQueue_.runWaiting();
        // What its blocks added waits for the loop, which sees to everything else before.
        if (mainQueue_.hasWaiting()) signalDescriptor(wake_);
    });
}

QtDispatch::~QtDispatch() {
    notifier_.reset();
    close(wake_);
}

std::unique_ptr<Queue> QtDispatch::makeSerialQueue(std::string label) { return makeQueue_(std::move(label)); }

std::unique_ptr<Timer> QtDispatch::scheduleTimer(nanoseconds interval, Repeats repeats,
                                                 std::function<void()> action) {
    interval = interval.count() <= 0 ? milliseconds(1) : interval;
    return std::make_unique<QtTimer>(*this, interval, repeats, std::move(action));
}

Moment QtDispatch::now() const { return clock_(); }

WallTime QtDispatch::wallTime() const { return std::chrono::system_clock::now(); }

void QtDispatch::sleep(nanoseconds duration) {
    const auto end = (machineNow() + std::max(duration, nanoseconds(0))).time_since_epoch().count();
    const timespec until{end / nanosecondsPerSecond, end % nanosecondsPerSecond};
    while (clock_nanosleep(CLOCK_BOOTTIME, TIMER_ABSTIME, &until, nullptr) == EINTR) {
    }
}

}  // namespace calorivo
