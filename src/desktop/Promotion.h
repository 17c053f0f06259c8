#pragma once

#include "app/VantixView.h"
#include "platform/linux/LinuxPaths.h"
#include "platform/linux/LinuxProcessListing.h"
#include "ui/qt/QtInterface.h"
#include "ui/qt/VantixPanelViews.h"

#include <functional>
#include <string>

namespace calorivo {

/// The promotion's texts in the user's language.
[[nodiscard]] PromotionTexts promotionTexts();

/// Whether a program with this identifier was installed for the desktop: its entry "IDENTIFIER.desktop" is in
/// one of the folders of XDG_DATA_HOME and XDG_DATA_DIRS.
[[nodiscard]] bool isInstalledForDesktop(const Environment& environment, const std::string& identifier);

/// What the promotion works on. All must outlive it.
struct PromotionParts {
    Preferences& preferences;
    KeyValueCoding& keys;
    Workspace& workspace;
    Dispatch& dispatch;
    /// Asks the program to end in the normal way.
    std::function<void()> terminate;
};

/// Promotes the sibling program in the windows. To be made once, after the preferences were loaded and before
/// the main window is shown; linked only into builds with CALORIVO_PROMOTION. Main thread.
class Promotion {
  public:
    /// `interface` must outlive it.
    Promotion(const PromotionParts& parts, QtInterface& interface, PromotionConfiguration configuration);
    Promotion(const Promotion&) = delete;
    Promotion& operator=(const Promotion&) = delete;

  private:
    LinuxProcessListing processes_;
    VantixPanelViews views_;
    VantixView promotion_;
};

}  // namespace calorivo
