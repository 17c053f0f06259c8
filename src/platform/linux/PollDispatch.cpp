#include "platform/linux/PollDispatch.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <ctime>
#include <optional>
#include <system_error>
#include <utility>

namespace calorivo {

using std::chrono::nanoseconds;

namespace {

constexpr long nanosecondsPerSecond = 1'000'000'000;

timespec timespecOf(nanoseconds duration) {
    return {static_cast<time_t>(duration.count() / nanosecondsPerSecond),
            static_cast<long>(duration.count() % nanosecondsPerSecond)};
}

/// A signal that the process was told to ignore by whoever started it, as by nohup.
bool isIgnored(int signal) {
    struct sigaction action {};
    sigaction(signal, nullptr, &action);
    return action.sa_handler == SIG_IGN;
}

int opened(int descriptor, const char* what) {
    if (descriptor < 0) throw std::system_error(errno, std::generic_category(), what);
    return descriptor;
}

}  // namespace

/// What the loop waits for; the first descriptor is the one that other threads wake it by.
struct PollDispatch::Descriptors {
    Descriptors() : wake(opened(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC), "eventfd")) { add(wake, nullptr); }
    Descriptors(const Descriptors&) = delete;
    Descriptors& operator=(const Descriptors&) = delete;
    ~Descriptors() { close(wake); }

    void add(int descriptor, std::function<void()> ready) {
        waits.push_back({descriptor, POLLIN, 0});
        handlers.push_back(std::make_shared<std::function<void()>>(std::move(ready)));
    }
    void remove(const std::shared_ptr<std::function<void()>>& handler) {
        const auto found = std::find(handlers.begin(), handlers.end(), handler);
        if (found == handlers.end()) return;
        waits.erase(waits.begin() + (found - handlers.begin()));
        handlers.erase(found);
    }
    void interrupt() const {
        const std::uint64_t one = 1;
        // It can only fail when the count is full, and then the loop wakes anyway.
        [[maybe_unused]] const ssize_t written = write(wake, &one, sizeof one);
    }
    void clearInterrupt() const {
        std::uint64_t count = 0;
        [[maybe_unused]] const ssize_t got = read(wake, &count, sizeof count);
    }

    const int wake;
    std::vector<pollfd> waits;
    std::vector<std::shared_ptr<std::function<void()>>> handlers;
};

class PollDispatch::PollTimer final : public Timer {
  public:
    PollTimer(PollDispatch& owner, Scheduled scheduled) : owner_(owner), scheduled_(std::move(scheduled)) {
        owner_.timers_.push_back(&scheduled_);
    }
    ~PollTimer() override { std::erase(owner_.timers_, &scheduled_); }
    void fire() override {
        const auto action = scheduled_.action;  // it stays whole while it runs, even if its timer goes
        (*action)();
    }

  private:
    PollDispatch& owner_;
    Scheduled scheduled_;
};

PollDispatch::PollDispatch(QueueFactory makeQueue, MachineClocks::Clock sinceBoot)
    : makeQueue_(std::move(makeQueue)),
      sinceBoot_(std::move(sinceBoot)),
      descriptors_(std::make_unique<Descriptors>()),
      mainQueue_([this] { descriptors_->interrupt(); }) {}

PollDispatch::~PollDispatch() = default;

Queue& PollDispatch::mainQueue() { return mainQueue_; }

std::unique_ptr<Queue> PollDispatch::makeSerialQueue(std::string label) {
    return makeQueue_(std::move(label));
}

std::unique_ptr<Timer> PollDispatch::scheduleTimer(nanoseconds interval, Repeats repeats,
                                                   std::function<void()> action) {
    interval = interval.count() <= 0 ? std::chrono::milliseconds(1) : interval;
    return std::make_unique<PollTimer>(*this,
                                       Scheduled{now() + interval, interval, repeats,
                                                 std::make_shared<std::function<void()>>(std::move(action))});
}

Moment PollDispatch::now() const { return Moment(sinceBoot_()); }

WallTime PollDispatch::wallTime() const { return std::chrono::system_clock::now(); }

void PollDispatch::sleep(nanoseconds duration) {
    const timespec until = timespecOf(timeSinceBoot() + std::max(duration, nanoseconds(0)));
    while (clock_nanosleep(CLOCK_BOOTTIME, TIMER_ABSTIME, &until, nullptr) == EINTR) {
    }
}

void PollDispatch::run() {
    while (!isStopped_) {
        waitForEvents(true);
        mainQueue_.runWaiting();
        if (!isStopped_) runDueTimers();
    }
}

bool PollDispatch::runReady() {
    if (isStopped_) return false;
    waitForEvents(false);
    mainQueue_.runWaiting();
    if (!isStopped_) runDueTimers();
    return !isStopped_;
}

void PollDispatch::stop() {
    isStopped_ = true;
    descriptors_->interrupt();
}

void PollDispatch::closeMainQueue() { mainQueue_.close(); }

void PollDispatch::runDueTimers() {
    if (timers_.empty()) return;
    const Moment moment = now();
    // An action may end its own timer and others: after each one the search begins anew. A timer that ran
    // is due later than `moment`, so that this ends.
    for (;;) {
        const auto due = std::find_if(timers_.begin(), timers_.end(),
                                      [moment](const Scheduled* timer) { return timer->due <= moment; });
        if (due == timers_.end() || isStopped_) return;
        Scheduled& scheduled = **due;
        const auto action = scheduled.action;
        if (scheduled.repeats == Repeats::yes)
            scheduled.due = moment + scheduled.interval;
        else
            timers_.erase(due);
        (*action)();
    }
}

void PollDispatch::waitForEvents(bool mayWait) {
    std::optional<nanoseconds> wait;
    if (!mayWait || isStopped_ || mainQueue_.hasWaiting()) {
        wait = nanoseconds(0);
    } else if (!timers_.empty()) {
        const auto next =
            std::min_element(timers_.begin(), timers_.end(),
                             [](const Scheduled* a, const Scheduled* b) { return a->due < b->due; });
        wait = std::max((*next)->due - now(), nanoseconds(0));
    }
    const timespec timeout = timespecOf(wait.value_or(nanoseconds(0)));
    std::vector<pollfd>& waits = descriptors_->waits;
    const int count = ppoll(waits.data(), waits.size(), wait ? &timeout : nullptr, nullptr);
    if (count <= 0) return;

    if (waits.front().revents != 0) descriptors_->clearInterrupt();
    // Handlers may add and remove descriptors, their own too.
    std::vector<std::shared_ptr<std::function<void()>>> ready;
    for (std::size_t i = 1; i < waits.size(); ++i)
        if (waits[i].revents != 0) ready.push_back(descriptors_->handlers[i]);
    for (const auto& handler : ready)
        if (const std::function<void()> call = *handler) call();
}

Observation PollDispatch::watchDescriptor(int descriptor, std::function<void()> ready) {
    descriptors_->add(descriptor, std::move(ready));
    return Observation([this, handler = descriptors_->handlers.back()] {
        *handler = nullptr;
        descriptors_->remove(handler);
    });
}

Observation PollDispatch::watchSignals(std::initializer_list<int> signals,
                                       std::function<void(int signal)> arrived) {
    sigset_t set;
    sigset_t before;
    sigemptyset(&set);
    for (const int signal : signals)
        if (!isIgnored(signal)) sigaddset(&set, signal);
    pthread_sigmask(SIG_BLOCK, &set, &before);
    const int descriptor = opened(signalfd(-1, &set, SFD_NONBLOCK | SFD_CLOEXEC), "signalfd");
    auto watch =
        std::make_shared<Observation>(watchDescriptor(descriptor, [descriptor, arrived = std::move(arrived)] {
            signalfd_siginfo information{};
            while (read(descriptor, &information, sizeof information) == sizeof information)
                arrived(static_cast<int>(information.ssi_signo));
        }));
    return Observation([watch, descriptor, before] {
        watch->drop();
        close(descriptor);
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
    });
}

}  // namespace calorivo
