#include "platform/MainQueue.h"

#include <utility>

namespace calorivo {

void MainQueue::sync(const std::function<void()>& block) {
    bool isDone = false;
    add({[&block] { block(); }, &isDone});
    std::unique_lock lock(mutex_);
    done_.wait(lock, [&] { return isDone; });
}

void MainQueue::runWaiting() {
    std::size_t count = 0;
    {
        const std::lock_guard lock(mutex_);
        count = waiting_.size() - first_;
    }
    for (; count > 0; --count) {
        Entry entry = next();
        if (!entry.block) return;
        entry.block();
        entry.block = nullptr;
        if (entry.isDone != nullptr) finish(entry);
    }
}

bool MainQueue::hasWaiting() const {
    const std::lock_guard lock(mutex_);
    return first_ < waiting_.size();
}

void MainQueue::close() {
    std::vector<Entry> dropped;
    std::size_t first = 0;
    {
        const std::lock_guard lock(mutex_);
        isClosed_ = true;
        dropped.swap(waiting_);
        first = std::exchange(first_, 0);
    }
    for (std::size_t i = first; i < dropped.size(); ++i)
        if (dropped[i].isDone != nullptr) finish(dropped[i]);
}

void MainQueue::add(Entry entry) {
    {
        const std::lock_guard lock(mutex_);
        if (!isClosed_) {
            const bool wasEmpty = first_ == waiting_.size();
            waiting_.push_back(std::move(entry));
            if (wasEmpty) wake_();
            return;
        }
    }
    if (entry.isDone != nullptr) finish(entry);
}

void MainQueue::finish(const Entry& entry) {
    const std::lock_guard lock(mutex_);
    *entry.isDone = true;
    done_.notify_all();
}

MainQueue::Entry MainQueue::next() {
    const std::lock_guard lock(mutex_);
    if (first_ == waiting_.size()) return {nullptr, nullptr};
    Entry entry = std::move(waiting_[first_++]);
    if (first_ == waiting_.size()) {
        waiting_.clear();
        first_ = 0;
    }
    return entry;
}

}  // namespace calorivo
