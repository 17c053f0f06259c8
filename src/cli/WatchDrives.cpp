#include "cli/WatchDrives.h"

#include <chrono>
#include <utility>

namespace calorivo {

namespace {

constexpr std::chrono::seconds shortestPause{1};

}  // namespace

WatchDrives::WatchDrives(std::unique_ptr<Drives> drives, Dispatch& dispatch, Arrived arrived)
    : drives_(std::move(drives)),
      dispatch_(dispatch),
      arrived_(std::move(arrived)),
      next_(dispatch.now() + shortestPause),
      queue_(dispatch.makeSerialQueue("drives")) {
    drives_->update();
}

void WatchDrives::check() {
    if (isReading_) return;
    const Moment now = dispatch_.now();
    if (now < next_) return;
    next_ = now + shortestPause;
    isReading_ = true;
    queue_->async([this] { read(); });
}

void WatchDrives::read() {
    drives_->update();
    dispatch_.mainQueue().async([this] {
        isReading_ = false;
        arrived_(drives_->details());
    });
}

}  // namespace calorivo
