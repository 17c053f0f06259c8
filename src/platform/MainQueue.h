#pragma once

#include "platform/Dispatch.h"

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>
#include <vector>

namespace calorivo {

/// The main queue of a loop: any thread gives it blocks, the loop runs them.
class MainQueue final : public Queue {
  public:
    /// `wake` is called, on the giving thread, when there is something to run again; it must outlive the
    /// queue's users.
    explicit MainQueue(std::function<void()> wake) : wake_(std::move(wake)) {}

    [[nodiscard]] std::string_view label() const override { return "main"; }
    void async(std::function<void()> block) override { add({std::move(block), nullptr}); }
    void sync(const std::function<void()>& block) override;

    /// Runs the blocks that wait now; those they add run the next time. A block that runs a loop of its own
    /// may have this called again: then the others go on meanwhile. Main thread.
    void runWaiting();
    [[nodiscard]] bool hasWaiting() const;
    /// Drops the waiting blocks and refuses later ones; whoever waits for such a block goes on.
    void close();

  private:
    struct Entry {
        std::function<void()> block;
        /// Where a waiting thread looks whether its block has run; null when none waits.
        bool* isDone;
    };

    void add(Entry entry);
    void finish(const Entry& entry);
    /// The next waiting block; one without a block when there is none.
    [[nodiscard]] Entry next();

    const std::function<void()> wake_;
    mutable std::mutex mutex_;
    std::condition_variable done_;
    /// Those before `first_` have been taken; the room is used again when all are.
    std::vector<Entry> waiting_;
    std::size_t first_ = 0;
    bool isClosed_ = false;
};

}  // namespace calorivo
