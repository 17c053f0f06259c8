#include "platform/linux/DeviceThreads.h"

#include <pthread.h>

#include <algorithm>
#include <condition_variable>
#include <csignal>
#include <mutex>
#include <optional>
#include <system_error>
#include <thread>

namespace calorivo {

using Clock = std::chrono::steady_clock;

namespace {

/// A device with its own thread goes back to the common one after so many quick jobs in a row.
constexpr int quickJobsToReturn = 16;
constexpr std::size_t none = static_cast<std::size_t>(-1);

}  // namespace

/// Shared by the owner and every thread, so that a thread that hangs in the kernel outlives the owner safely.
struct DeviceThreads::State : std::enable_shared_from_this<State> {
    struct Lane {
        std::shared_ptr<Device> device;
        std::optional<DeviceJob> pending;
        bool isRunning = false;
        bool isAwaited = false;
        bool hasOwnThread = false;
        int quickJobs = 0;
        Clock::time_point since;
        std::unique_ptr<std::condition_variable> ownWork;
    };

    std::mutex mutex;
    std::condition_variable work;
    std::condition_variable done;
    std::condition_variable ended;
    std::vector<Lane> lanes;
    /// Devices that wait for the common thread, from `next` on.
    std::vector<std::size_t> queue;
    std::size_t next = 0;
    /// What the common thread is at.
    std::size_t current = none;
    /// Which thread is the common one: a thread with an older number has kept its device.
    unsigned serial = 0;
    std::size_t awaited = 0;
    std::size_t threads = 0;
    Duration deadline{};
    bool isStopping = false;

    bool spawn(void (State::*body)(unsigned), unsigned argument) {
        sigset_t all;
        sigset_t before;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before);  // signals belong to the program's own threads
        bool isStarted = true;
        try {
            ++threads;
            std::thread([state = shared_from_this(), body, argument] {
                (state.get()->*body)(argument);
            }).detach();
        } catch (const std::system_error&) {
            --threads;
            isStarted = false;
        }
        pthread_sigmask(SIG_SETMASK, &before, nullptr);
        return isStarted;
    }

    void finish(Lane& lane, std::unique_lock<std::mutex>& lock) {
        lane.isRunning = false;
        if (!lane.isAwaited) return;
        lane.isAwaited = false;
        if (--awaited > 0) return;
        lock.unlock();
        done.notify_one();
        lock.lock();
    }

    void perform(Lane& lane, std::unique_lock<std::mutex>& lock) {
        const DeviceJob job = *lane.pending;
        lane.pending.reset();
        lane.isRunning = true;
        lane.since = Clock::now();
        const std::shared_ptr<Device> device = lane.device;
        lock.unlock();
        device->perform(job);
        lock.lock();
        lane.quickJobs = Clock::now() - lane.since < deadline / 2 ? lane.quickJobs + 1 : 0;
    }

    void commonThread(unsigned ownSerial) {
        std::unique_lock lock(mutex);
        for (;;) {
            work.wait(lock, [&] { return isStopping || next < queue.size(); });
            if (isStopping) break;
            const std::size_t index = queue[next++];
            if (next == queue.size()) {
                queue.clear();
                next = 0;
            }
            current = index;
            perform(lanes[index], lock);
            if (ownSerial != serial) {
                finish(lanes[index], lock);
                serveOnly(lanes[index], lock);
                break;
            }
            current = none;
            finish(lanes[index], lock);
        }
        end(lock);
    }

    /// What becomes of a common thread that its device has held too long.
    void serveOnly(Lane& lane, std::unique_lock<std::mutex>& lock) {
        lane.quickJobs = 0;
        while (lane.quickJobs < quickJobsToReturn) {
            lane.ownWork->wait(lock, [&] { return isStopping || lane.pending; });
            if (isStopping) return;
            perform(lane, lock);
            if (lane.quickJobs >= quickJobsToReturn) lane.hasOwnThread = false;
            finish(lane, lock);
        }
    }

    void end(std::unique_lock<std::mutex>& /*held*/) {
        --threads;
        ended.notify_all();
    }

    /// Leaves the device that holds the common thread that thread, and starts another one for the rest.
    void replaceLateThread() {
        if (current == none || Clock::now() - lanes[current].since < deadline) return;
        Lane& lane = lanes[current];
        if (!lane.ownWork) lane.ownWork = std::make_unique<std::condition_variable>();
        if (!spawn(&State::commonThread, serial + 1)) return;
        lane.hasOwnThread = true;
        ++serial;
        current = none;
    }
};

DeviceThreads::DeviceThreads(std::vector<std::shared_ptr<Device>> devices, Duration deadline)
    : state_(std::make_shared<State>()) {
    state_->deadline = deadline;
    state_->lanes.reserve(devices.size());
    state_->queue.reserve(devices.size());
    for (std::shared_ptr<Device>& device : devices) {
        State::Lane lane;
        lane.device = std::move(device);
        state_->lanes.push_back(std::move(lane));
    }
}

DeviceThreads::~DeviceThreads() {
    std::unique_lock lock(state_->mutex);
    state_->isStopping = true;
    state_->work.notify_all();
    for (State::Lane& lane : state_->lanes)
        if (lane.ownWork) lane.ownWork->notify_all();
    // Threads that are not at a job end at once. One that hangs in the kernel is not worth waiting for.
    const auto isHung = [this] {
        return std::all_of(state_->lanes.begin(), state_->lanes.end(),
                           [](const State::Lane& lane) { return !lane.isRunning; })
                   ? state_->threads == 0
                   : false;
    };
    state_->ended.wait_for(lock, std::chrono::milliseconds(200), isHung);
}

void DeviceThreads::run(DeviceJob job, std::span<const std::size_t> devices, Duration patience) {
    State& state = *state_;
    std::unique_lock lock(state.mutex);
    if (state.threads == 0 && !state.spawn(&State::commonThread, state.serial)) {
        lock.unlock();
        for (const std::size_t index : devices)
            state.lanes[index].device->perform(job);  // slower, but it works
        return;
    }
    state.replaceLateThread();
    bool isCommonNeeded = false;
    for (const std::size_t index : devices) {
        State::Lane& lane = state.lanes[index];
        if (lane.isRunning || lane.pending) continue;
        lane.pending = job;
        lane.isAwaited = true;
        ++state.awaited;
        if (lane.hasOwnThread) {
            lane.ownWork->notify_one();
        } else {
            state.queue.push_back(index);
            isCommonNeeded = true;
        }
    }
    if (isCommonNeeded) {
        lock.unlock();
        state.work.notify_one();
        lock.lock();
    }

    const auto end = Clock::now() + patience;
    const auto isDone = [&] { return state.awaited == 0; };
    while (!isDone() && Clock::now() < end) {
        const auto late = state.current != none ? state.lanes[state.current].since + state.deadline
                                                : Clock::now() + state.deadline;
        if (state.done.wait_until(lock, std::min(end, late), isDone)) break;
        state.replaceLateThread();
    }
    for (State::Lane& lane : state.lanes) lane.isAwaited = false;
    state.awaited = 0;
}

bool DeviceThreads::isBusy(std::size_t device) const {
    const std::lock_guard lock(state_->mutex);
    const State::Lane& lane = state_->lanes[device];
    return lane.isRunning || lane.pending.has_value();
}

std::size_t DeviceThreads::threadCount() const {
    const std::lock_guard lock(state_->mutex);
    return state_->threads;
}

}  // namespace calorivo
