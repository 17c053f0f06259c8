#pragma once

#include "platform/AlertPanel.h"

#include <cstdint>
#include <functional>

namespace calorivo {

/// How an alert was answered, as a number: these, or another for one that was ended without an answer.
namespace AlertReturn {
inline constexpr std::int32_t defaultButton = 1;
inline constexpr std::int32_t alternateButton = 0;
inline constexpr std::int32_t otherButton = -1;
}  // namespace AlertReturn

/// Alerts that hang on the key window. Main thread.
class AlertSheet {
  public:
    AlertSheet() = default;
    AlertSheet(const AlertSheet&) = delete;
    AlertSheet& operator=(const AlertSheet&) = delete;
    virtual ~AlertSheet() = default;

    /// Whether a window of the program has the keyboard.
    [[nodiscard]] virtual bool hasKeyWindow() const = 0;
    /// Shows the alert and returns at once. `didEnd` is called with the answer when the sheet ends, on the
    /// main thread; it must stay callable until then.
    virtual void beginSheet(const Alert& alert, std::function<void(std::int32_t answer)> didEnd) = 0;
    /// Ends the key window's sheet without an answer; does nothing when there is none.
    virtual void endSheet() = 0;
};

}  // namespace calorivo
