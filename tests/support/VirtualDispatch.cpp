#include "support/VirtualDispatch.h"

#include <algorithm>
#include <stdexcept>

namespace calorivo::test {

using std::chrono::nanoseconds;

class VirtualDispatch::VirtualQueue final : public Queue {
  public:
    explicit VirtualQueue(std::string label) : label_(std::move(label)) {}

    [[nodiscard]] std::string_view label() const override { return label_; }
    void async(std::function<void()> block) override { blocks_.push_back(std::move(block)); }
    void sync(const std::function<void()>& block) override {
        if (isActive) throw std::logic_error("deadlock: " + label_ + " waits for itself");
        if (isHeld) throw std::logic_error("deadlock: waiting for " + label_ + ", which is held");
        while (runOne()) {
        }
        runNow(block);
    }

    bool runOne() {
        if (isActive || blocks_.empty()) return false;
        const std::function<void()> block = std::move(blocks_.front());
        blocks_.pop_front();
        runNow(block);
        return true;
    }
    [[nodiscard]] std::size_t pending() const { return blocks_.size(); }
    void drop() { blocks_.clear(); }

    bool isActive = false;
    bool isHeld = false;

  private:
    void runNow(const std::function<void()>& block) {
        isActive = true;
        struct Leave {
            bool& flag;
            ~Leave() { flag = false; }
        } leave{isActive};
        block();
    }

    std::string label_;
    std::deque<std::function<void()>> blocks_;
};

/// What the code under test owns; dropping it drops the queue's waiting blocks.
class VirtualDispatch::QueueHandle final : public Queue {
  public:
    QueueHandle(VirtualDispatch& owner, std::shared_ptr<VirtualQueue> queue)
        : owner_(owner), queue_(std::move(queue)) {}
    ~QueueHandle() override {
        queue_->drop();
        std::erase(owner_.queues_, queue_);
    }
    [[nodiscard]] std::string_view label() const override { return queue_->label(); }
    void async(std::function<void()> block) override { queue_->async(std::move(block)); }
    void sync(const std::function<void()>& block) override { queue_->sync(block); }

  private:
    VirtualDispatch& owner_;
    std::shared_ptr<VirtualQueue> queue_;
};

struct VirtualDispatch::Scheduled {
    Moment due;
    nanoseconds interval;
    Repeats repeats;
    /// Empty once the timer is destroyed.
    std::function<void()> action;
    /// A tick is waiting on the main queue; no other one comes before it has run.
    bool isWaiting = false;
};

class VirtualDispatch::VirtualTimer final : public Timer {
  public:
    VirtualTimer(VirtualDispatch& owner, std::shared_ptr<Scheduled> scheduled)
        : owner_(owner), scheduled_(std::move(scheduled)) {
        owner_.timers_.push_back(scheduled_);
    }
    ~VirtualTimer() override {
        std::erase(owner_.timers_, scheduled_);
        scheduled_->action = nullptr;
    }
    void fire() override {
        const auto action = scheduled_->action;  // it may destroy the timer
        action();
    }

  private:
    VirtualDispatch& owner_;
    std::shared_ptr<Scheduled> scheduled_;
};

VirtualDispatch::VirtualDispatch() { queues_.push_back(std::make_shared<VirtualQueue>("main")); }
VirtualDispatch::~VirtualDispatch() {
    // A block may own a queue or a timer, which takes its leave of this object.
    const auto present = queues_;
    for (const auto& queue : present) queue->drop();
}

Queue& VirtualDispatch::mainQueue() { return *queues_.front(); }

std::unique_ptr<Queue> VirtualDispatch::makeSerialQueue(std::string label) {
    queues_.push_back(std::make_shared<VirtualQueue>(std::move(label)));
    return std::make_unique<QueueHandle>(*this, queues_.back());
}

std::unique_ptr<Timer> VirtualDispatch::scheduleTimer(nanoseconds interval, Repeats repeats,
                                                      std::function<void()> action) {
    interval = std::max<nanoseconds>(interval, std::chrono::milliseconds(1));
    return std::make_unique<VirtualTimer>(
        *this,
        std::make_shared<Scheduled>(Scheduled{now_ + interval, interval, repeats, std::move(action), false}));
}

WallTime VirtualDispatch::wallTime() const {
    return wallBase_ + std::chrono::duration_cast<WallTime::duration>(now_.time_since_epoch());
}

void VirtualDispatch::setWallTime(WallTime time) {
    wallBase_ = time - std::chrono::duration_cast<WallTime::duration>(now_.time_since_epoch());
}

void VirtualDispatch::sleep(nanoseconds duration) { advanceTo(now_ + duration); }

void VirtualDispatch::run() {
    for (bool ranAny = true; ranAny;) {
        ranAny = false;
        const auto present = queues_;
        for (const auto& queue : present)
            if (!queue->isHeld && queue->runOne()) ranAny = true;
    }
}

void VirtualDispatch::advance(nanoseconds duration) { advanceTo(now_ + duration); }

std::shared_ptr<VirtualDispatch::Scheduled> VirtualDispatch::nextTimer() const {
    std::shared_ptr<Scheduled> next;
    for (const auto& timer : timers_)
        if (!timer->isWaiting && (!next || timer->due < next->due)) next = timer;
    return next;
}

void VirtualDispatch::queueTick(const std::shared_ptr<Scheduled>& timer) {
    timer->isWaiting = true;
    mainQueue().async([this, timer] {
        timer->isWaiting = false;
        timer->due = now_ + timer->interval;
        if (timer->repeats == Repeats::no) std::erase(timers_, timer);
        if (const auto action = timer->action) action();
    });
}

void VirtualDispatch::advanceTo(Moment end) {
    run();
    for (auto timer = nextTimer(); timer && timer->due <= end; timer = nextTimer()) {
        now_ = std::max(now_, timer->due);
        queueTick(timer);
        run();
    }
    now_ = std::max(now_, end);
}

bool VirtualDispatch::runOne(std::string_view label) { return queue(label).runOne(); }
void VirtualDispatch::hold(std::string_view label) { queue(label).isHeld = true; }
void VirtualDispatch::release(std::string_view label) { queue(label).isHeld = false; }
std::size_t VirtualDispatch::pending(std::string_view label) const { return queue(label).pending(); }

std::vector<nanoseconds> VirtualDispatch::timerIntervals() const {
    std::vector<nanoseconds> intervals;
    for (const auto& timer : timers_) intervals.push_back(timer->interval);
    return intervals;
}

VirtualDispatch::VirtualQueue& VirtualDispatch::queue(std::string_view label) const {
    for (const auto& queue : queues_)
        if (queue->label() == label) return *queue;
    throw std::logic_error("no queue " + std::string(label));
}

}  // namespace calorivo::test
