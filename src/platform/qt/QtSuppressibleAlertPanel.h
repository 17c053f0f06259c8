#pragma once

#include "platform/SuppressibleAlert.h"

namespace calorivo {

/// Such questions as message boxes over all windows of the program. Closing the box, also by the program's
/// end, is the second answer. Main thread.
class QtSuppressibleAlertPanel final : public SuppressibleAlertPanel {
  public:
    SuppressibleAlertAnswer runModal(const SuppressibleAlert& alert) override;
};

}  // namespace calorivo
