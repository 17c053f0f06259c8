#pragma once

#include "monitor/CyclePorts.h"
#include "platform/Dispatch.h"

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

// What a check cycle sends out, kept for a test to look at.

namespace calorivo::test {

/// Writes each line on the log queue, like the program's own writer: with the text that the row has then. A
/// line that was asked for with a time stamp begins with "(stamp) ".
class RecordingLog final : public CycleLog {
  public:
    explicit RecordingLog(Queue& queue) : queue_(queue) {}
    void logStringIncludeDateTime(std::shared_ptr<const CSVRow> row,
                                  IncludeDateTime includeDateTime) override {
        queue_.async([this, row = std::move(row), includeDateTime] {
            lines.push_back((includeDateTime == IncludeDateTime::yes ? "(stamp) " : "") + row->text());
        });
    }

    std::vector<std::string> lines;

  private:
    Queue& queue_;
};

struct RecordedAlert {
    double celsius;
    /// The sensor's readable name, or `forAverage`.
    std::string name;

    static constexpr const char* forAverage = "(average)";

    friend bool operator==(const RecordedAlert&, const RecordedAlert&) = default;
    friend std::ostream& operator<<(std::ostream& out, const RecordedAlert& alert) {
        return out << alert.name << ' ' << alert.celsius;
    }
};

class RecordingAlerts final : public CycleAlerts {
  public:
    void showAlertForOverlimitAreaWithName(double celsius, const std::string& name) override {
        posted.push_back({celsius, name});
    }
    void showAlertForOverlimitAverage(double celsius) override {
        posted.push_back({celsius, RecordedAlert::forAverage});
    }

    std::vector<RecordedAlert> posted;
};

class RecordingDisplay final : public CycleDisplay {
  public:
    void reloadData() override { calls.emplace_back("reloadData"); }
    void updateStatusItem() override { calls.emplace_back("updateStatusItem"); }
    void setNeedsDisplay() override { calls.emplace_back("setNeedsDisplay"); }

    std::vector<std::string> calls;
};

/// Drives that read as a test sets them. What `next` holds is seen from the next reading on.
class RecordingDrives final : public CycleDrives {
  public:
    void getDiskTemps() override {
        ++readings;
        temperatures = next;
    }
    [[nodiscard]] std::vector<float> driveTemperatures() override { return temperatures; }

    std::vector<float> next;
    std::vector<float> temperatures;
    int readings = 0;
};

}  // namespace calorivo::test
