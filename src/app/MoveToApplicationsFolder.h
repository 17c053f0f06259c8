#pragma once

#include "app/FileUtilities.h"
#include "app/MovePlan.h"
#include "app/StringsTables.h"
#include "platform/AlertPanel.h"
#include "platform/Authorization.h"
#include "platform/FileLinks.h"
#include "platform/FileOperations.h"
#include "platform/Relaunch.h"
#include "platform/SearchPath.h"
#include "platform/SuppressibleAlert.h"
#include "platform/SystemLog.h"
#include "platform/UserDefaults.h"

#include <functional>
#include <optional>

namespace calorivo {

/// What the move works on. All must outlive it.
struct MoveParts {
    StandardUserDefaults& userDefaults;
    SystemLog& log;
    const StringsTables& strings;
    SuppressibleAlertPanel& questionPanel;
    AlertPanel& alertPanel;
    const SearchPath& searchPath;
    const FileLinks& links;
    FileOperations& files;
    Authorization& authorization;
    Relaunch& relaunch;
    /// Whether the program is in front of the others, and bringing it there.
    std::function<bool()> isActive;
    std::function<void()> activateIgnoringOtherApps;
};

/// Offers to move the program into an Applications folder, and moves it there. Main thread, which it blocks.
class MoveToApplicationsFolder {
  public:
    MoveToApplicationsFolder(const MoveParts& parts, MoveConfiguration configuration)
        : parts_(parts), configuration_(std::move(configuration)) {}

    /// Returns when nothing was moved; else the process ends here, and its new copy starts.
    void offerToMove();

  private:
    enum class Outcome { moved, failed, abandoned };

    [[nodiscard]] bool isOffered() const;
    [[nodiscard]] std::optional<InstallFolder> installFolder() const;
    [[nodiscard]] MovePlan makePlan(const InstallFolder& folder) const;
    /// Whether the user wants the move.
    [[nodiscard]] bool ask(const MovePlan& plan);
    [[nodiscard]] Outcome move(const MovePlan& plan);

    [[nodiscard]] Outcome moveWithoutAuthorization(const MovePlan& plan);
    [[nodiscard]] bool isDestinationRunning(const MovePlan& plan);
    void switchToRunningVersion(const MovePlan& plan);
    [[nodiscard]] bool copyBundle(const MovePlan& plan);

    [[nodiscard]] Outcome moveWithAuthorization(const MovePlan& plan);
    [[nodiscard]] OSStatus executeAuthorized(const MovePlan& plan);
    [[nodiscard]] OSStatus runAuthorized(const MovePlan& plan);
    [[nodiscard]] const ExecuteWithPrivileges& executeWithPrivileges();

    void finishMove(const MovePlan& plan);
    bool trash(const std::string& path);
    void showFailure();
    [[nodiscard]] std::string localized(std::string_view key) const;

    MoveParts parts_;
    const MoveConfiguration configuration_;
    /// Sought once.
    std::optional<ExecuteWithPrivileges> executeWithPrivileges_;
};

}  // namespace calorivo
