#pragma once

#include "host/DriveDetails.h"
#include "monitor/FanModel.h"
#include "sensors/Areas.h"
#include "sensors/SensorKey.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace calorivo {

class Engine;

/// The smallest, greatest and mean of the values seen so far.
struct Extent {
    double minimum = 0;
    double maximum = 0;
    double sum = 0;
    std::uint64_t count = 0;

    void add(double value);
    [[nodiscard]] double average() const { return count > 0 ? sum / static_cast<double>(count) : 0; }
};

/// What `watch` has seen since it began: one entry for each line of its table. Readings that are not valid
/// count as none.
class WatchStatistics {
  public:
    struct Sensor {
        SensorKey key;
        const Area* area = nullptr;
        /// The reader's last value; null until it was read.
        const double* celsius = nullptr;
        Extent extent{};
        /// The serial number of the drive that it is in; empty for other sensors.
        std::string drive{};
    };

    struct Drive {
        DriveDetails details;
        Extent extent;
        /// It was there when the drives were read last.
        bool isThere = true;
    };

    /// The serial number of the drive whose temperature a sensor is; empty for other sensors.
    using DriveMeasuredBy = std::function<std::string(SensorKey)>;

    /// `engine` must have discovered its sensors and outlive this object. The function is called at once,
    /// for each sensor; it may be empty.
    explicit WatchStatistics(const Engine& engine, const DriveMeasuredBy& driveMeasuredBy = {});

    /// Takes the values of the check that has just run; allocates nothing from the second check on.
    void add();
    /// Takes those of these drives that are listed. What a drive told before it fell asleep counts once.
    void addDrives(const std::vector<DriveDetails>& drives);

    /// By areas in the order of the source list.
    [[nodiscard]] const std::vector<Sensor>& sensors() const { return sensors_; }
    /// In the order in which they were seen first.
    [[nodiscard]] const std::vector<Drive>& drives() const { return drives_; }
    /// In the order of the engine's fans.
    [[nodiscard]] const std::vector<Extent>& fans() const { return fans_; }
    [[nodiscard]] std::uint64_t checks() const { return checks_; }

  private:
    const Engine& engine_;
    std::vector<Sensor> sensors_;
    std::vector<Drive> drives_;
    std::vector<Extent> fans_;
    std::uint64_t checks_ = 0;
};

}  // namespace calorivo
