#pragma once

#include "host/SourceOptions.h"
#include "sensors/SensorDiscovery.h"

#include <string>
#include <vector>

namespace calorivo {

/// What the desktop program was asked for on its command line.
struct DesktopOptions : SourceOptions {
    /// Started by the desktop at login, not by the user's hand.
    bool isStartedAtLogin = false;
    bool isShowingPreferences = false;

    friend bool operator==(const DesktopOptions&, const DesktopOptions&) = default;
};

/// What came of the arguments: options, or a text to print instead (help, version), or what is wrong.
struct ParsedDesktopOptions {
    DesktopOptions options;
    std::string text;
    std::string problem;
};

/// `arguments` are those after the program's name, without what the toolkit took.
[[nodiscard]] ParsedDesktopOptions parseDesktopOptions(const std::vector<std::string>& arguments);

/// The process's arguments in the order in which the engine looks for them.
[[nodiscard]] ProcessArguments processArguments(const DesktopOptions& options);

}  // namespace calorivo
