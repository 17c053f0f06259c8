#pragma once

#include "platform/AlertPanel.h"

namespace calorivo {

/// Alerts as message boxes over all windows of the program. An alert may be shown while another one is. When
/// the program quits meanwhile, the answer is the alternate one. Main thread.
class QtAlertPanel final : public AlertPanel {
  public:
    AlertAnswer runModal(const Alert& alert) override;
};

}  // namespace calorivo
