#pragma once

#include "platform/Dispatch.h"

#include <condition_variable>
#include <mutex>
#include <stop_token>
#include <string>
#include <thread>
#include <vector>

namespace calorivo {

/// A serial queue with a thread of its own. Blocks run in the order in which they were given; in the steady
/// state queueing one allocates nothing but what the block itself holds. Destroying the queue drops the
/// blocks that have not begun and waits for the one that runs; nobody may then be waiting in sync(), and no
/// block of the queue itself may destroy it.
class ThreadQueue final : public Queue {
  public:
    explicit ThreadQueue(std::string label);
    ~ThreadQueue() override;

    [[nodiscard]] std::string_view label() const override { return label_; }
    void async(std::function<void()> block) override;
    void sync(const std::function<void()>& block) override;

  private:
    void work(const std::stop_token& stop);

    const std::string label_;
    std::mutex mutex_;
    std::condition_variable_any wake_;
    std::vector<std::function<void()>> waiting_;
    std::jthread thread_;  // last: it works on all the others
};

}  // namespace calorivo
