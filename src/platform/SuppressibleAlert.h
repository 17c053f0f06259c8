#pragma once

#include <optional>
#include <string>

namespace calorivo {

enum class ControlSize { regular, small };

/// The check box by which an alert is never shown again.
struct SuppressionButton {
    bool isOn = false;
    ControlSize controlSize = ControlSize::regular;
    /// The size of its font.
    ControlSize font = ControlSize::regular;
    friend bool operator==(const SuppressionButton&, const SuppressionButton&) = default;
};

struct AlertButton {
    std::string title;
    /// The key that presses it; empty for the usual one.
    std::string keyEquivalent = {};
    friend bool operator==(const AlertButton&, const AlertButton&) = default;
};

/// A question with two answers. Texts are shown as they stand.
struct SuppressibleAlert {
    std::string message;
    std::string informativeText;
    AlertButton firstButton;
    AlertButton secondButton;
    std::optional<SuppressionButton> suppressionButton = std::nullopt;
    friend bool operator==(const SuppressibleAlert&, const SuppressibleAlert&) = default;
};

struct SuppressibleAlertAnswer {
    /// Closing the alert without a button is the second one.
    bool isFirstButton = false;
    /// How the check box stood at the end; false without one.
    bool isSuppressionOn = false;
};

/// Asks such questions. Main thread.
class SuppressibleAlertPanel {
  public:
    SuppressibleAlertPanel() = default;
    SuppressibleAlertPanel(const SuppressibleAlertPanel&) = delete;
    SuppressibleAlertPanel& operator=(const SuppressibleAlertPanel&) = delete;
    virtual ~SuppressibleAlertPanel() = default;

    /// Shows the alert and waits for its answer.
    virtual SuppressibleAlertAnswer runModal(const SuppressibleAlert& alert) = 0;
};

}  // namespace calorivo
