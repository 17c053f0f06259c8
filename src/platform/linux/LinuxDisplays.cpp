#include "platform/linux/LinuxDisplays.h"

#include <poll.h>
#include <pthread.h>
#include <sys/eventfd.h>
#include <sys/timerfd.h>

#include <array>
#include <csignal>
#include <memory>
#include <system_error>
#include <thread>

namespace calorivo {

namespace {

/// One registration and its thread.
class Watching {
  public:
    Watching(GraphicsReader& reader, const LinuxDisplaysOptions& options,
             CoreGraphics::ReconfigurationCallback callback)
        : watch_(reader, options.asleep, options.machineHasSlept),
          events_(options.listen ? options.listen() : KernelEvents()),
          period_(options.period),
          callback_(std::move(callback)),
          end_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)),
          // This clock goes on while the machine sleeps: the end of a period is seen as soon as it awakes.
          timer_(timerfd_create(CLOCK_BOOTTIME, TFD_CLOEXEC | TFD_NONBLOCK)) {
        if (end_.isOpen() && timer_.isOpen()) start();
    }
    Watching(const Watching&) = delete;
    Watching& operator=(const Watching&) = delete;
    ~Watching() {
        if (!thread_.joinable()) return;
        eventfd_write(end_.get(), 1);
        thread_.join();
    }

  private:
    void start() {
        sigset_t all;
        sigset_t before;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before);  // signals belong to the program's own threads
        try {
            thread_ = std::thread([this] { work(); });
        } catch (const std::system_error&) {
            // No thread to be had: the graphics processor is as it is now.
        }
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
    }

    void work() {
        while (waitForSomething()) watch_.look(callback_);
    }

    /// Returns at an event about graphics or at the end of a period; false at the end of the registration.
    bool waitForSomething() {
        setTimer();
        for (;;) {
            std::array<pollfd, 3> sources{
                {{end_.get(), POLLIN, 0}, {timer_.get(), POLLIN, 0}, {events_.descriptor(), POLLIN, 0}}};
            if (poll(sources.data(), sources.size(), -1) < 0) continue;
            if (sources[0].revents != 0) return false;
            if (sources[2].revents != 0 && events_.take("drm")) return true;
            if (sources[1].revents != 0) return true;
        }
    }

    void setTimer() {
        const auto whole = std::chrono::duration_cast<std::chrono::seconds>(period_);
        itimerspec period{};
        period.it_value.tv_sec = whole.count();
        period.it_value.tv_nsec = std::chrono::nanoseconds(period_ - whole).count();
        timerfd_settime(timer_.get(), 0, &period, nullptr);
    }

    DisplayWatch watch_;
    KernelEvents events_;
    const std::chrono::milliseconds period_;
    const CoreGraphics::ReconfigurationCallback callback_;
    FileDescriptor end_;
    FileDescriptor timer_;
    std::thread thread_;
};

}  // namespace

Observation LinuxDisplays::CGDisplayRegisterReconfigurationCallback(ReconfigurationCallback callback) {
    auto watching = std::make_shared<Watching>(reader_, options_, std::move(callback));
    return Observation([owned = std::move(watching)]() mutable { owned.reset(); });
}

}  // namespace calorivo
