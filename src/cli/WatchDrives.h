#pragma once

#include "host/Drives.h"
#include "platform/Dispatch.h"

#include <functional>
#include <memory>
#include <vector>

namespace calorivo {

/// Reads the drives for `watch`, on a queue of its own: however long a drive takes, neither a key nor the
/// next check waits for it. Main thread.
class WatchDrives {
  public:
    using Arrived = std::function<void(const std::vector<DriveDetails>& drives)>;

    /// Reads them a first time, here. `arrived` is called from the main queue after each later reading;
    /// `dispatch` must outlive this object, and its main queue must run no more when this object goes.
    WatchDrives(std::unique_ptr<Drives> drives, Dispatch& dispatch, Arrived arrived);

    /// What the first reading found.
    [[nodiscard]] std::vector<DriveDetails> first() const { return drives_->details(); }
    /// Has them read, unless they are being read or were read less than a second ago.
    void check();

  private:
    void read();

    std::unique_ptr<Drives> drives_;
    Dispatch& dispatch_;
    Arrived arrived_;
    Moment next_{};
    bool isReading_ = false;
    // Last, so that nothing of the above goes while it runs.
    std::unique_ptr<Queue> queue_;
};

}  // namespace calorivo
