#pragma once

#include "app/Windows.h"
#include "monitor/CyclePorts.h"
#include "output/StatusItem.h"

namespace calorivo {

/// Shows what a check found in the main window and in the menu bar.
class MainDisplay final : public CycleDisplay {
  public:
    /// Both must outlive this object.
    MainDisplay(SensorTableView& cpuTableView, StatusItem& statusItem)
        : cpuTableView_(cpuTableView), statusItem_(statusItem) {}

    void reloadData() override { cpuTableView_.reloadData(); }
    void updateStatusItem() override { statusItem_.updateStatusItem(); }
    void setNeedsDisplay() override { cpuTableView_.setNeedsDisplay(); }

  private:
    SensorTableView& cpuTableView_;
    StatusItem& statusItem_;
};

}  // namespace calorivo
