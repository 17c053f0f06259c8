#pragma once

#include <optional>
#include <string>

namespace calorivo {

/// A message with up to three buttons. Texts are shown as they stand.
struct Alert {
    std::string message;
    std::string defaultButton;
    std::optional<std::string> alternateButton = std::nullopt;
    std::optional<std::string> otherButton = std::nullopt;
    std::string informativeText = {};

    friend bool operator==(const Alert&, const Alert&) = default;
};

/// Closing the alert without a button is the alternate answer.
enum class AlertAnswer { defaultButton, alternateButton, otherButton };

/// Asks the user. Main thread.
class AlertPanel {
  public:
    AlertPanel() = default;
    AlertPanel(const AlertPanel&) = delete;
    AlertPanel& operator=(const AlertPanel&) = delete;
    virtual ~AlertPanel() = default;

    /// Shows the alert and waits for its answer.
    virtual AlertAnswer runModal(const Alert& alert) = 0;
};

}  // namespace calorivo
