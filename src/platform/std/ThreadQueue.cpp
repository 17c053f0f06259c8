#include "platform/std/ThreadQueue.h"

#include <utility>

namespace calorivo {

ThreadQueue::ThreadQueue(std::string label)
    : label_(std::move(label)), thread_([this](const std::stop_token& stop) { work(stop); }) {}

ThreadQueue::~ThreadQueue() {
    thread_.request_stop();
    thread_.join();
}

void ThreadQueue::async(std::function<void()> block) {
    {
        const std::lock_guard lock(mutex_);
        waiting_.push_back(std::move(block));
    }
    wake_.notify_one();
}

void ThreadQueue::sync(const std::function<void()>& block) {
    std::mutex mutex;
    std::condition_variable done;
    bool isDone = false;
    async([&] {
        block();
        const std::lock_guard lock(mutex);
        isDone = true;
        done.notify_one();
    });
    std::unique_lock lock(mutex);
    done.wait(lock, [&] { return isDone; });
}

void ThreadQueue::work(const std::stop_token& stop) {
    // Two lists change places, so that their room is used again and again.
    std::vector<std::function<void()>> running;
    for (;;) {
        {
            std::unique_lock lock(mutex_);
            if (!wake_.wait(lock, stop, [this] { return !waiting_.empty(); })) return;
            running.swap(waiting_);
        }
        for (std::function<void()>& block : running) {
            if (stop.stop_requested()) return;
            block();
            block = nullptr;
        }
        running.clear();
    }
}

}  // namespace calorivo
