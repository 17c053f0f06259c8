#pragma once

#include "app/MoveToApplicationsFolder.h"
#include "platform/FileManager.h"
#include "platform/linux/FolderOnDemand.h"
#include "platform/linux/LinuxFileOperations.h"
#include "platform/linux/LinuxPaths.h"
#include "platform/linux/LinuxRelaunch.h"
#include "platform/linux/LinuxSearchPath.h"
#include "platform/linux/Pkexec.h"
#include "platform/linux/RelaunchBundle.h"
#include "platform/linux/Trash.h"
#include "platform/qt/QtSuppressibleAlertPanel.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace calorivo {

/// What may be moved, and the folders around it. Links are resolved in all paths but the bundle's.
struct MovePlaces {
    ProgramBundle bundle;
    LinuxSearchPath::Folders folders;
    /// Of the tables of texts; empty for none.
    std::string strings;
    std::vector<std::string> languages;
};

/// None unless the program is a bundle of its user's own, an AppImage or a portable folder; nor for a user
/// without a home folder, or where the folder's place is taken by something that is no such folder. Programs
/// go into `machineFolder` where the user may write there, else into "Applications" in the home folder where
/// that is possible: what needs no password is not to ask for one.
[[nodiscard]] std::optional<MovePlaces> movePlaces(const Environment& environment,
                                                   const std::string& executablePath,
                                                   const std::string& dataFolder,
                                                   const std::string& machineFolder = "/opt");

/// The services that the offer uses. All must outlive it.
struct MoveServices {
    StandardUserDefaults& userDefaults;
    SystemLog& log;
    FileManager& fileManager;
    AlertPanel& alertPanel;
    /// Brings the program in front of all others.
    std::function<void()> activateIgnoringOtherApps;
};

/// The offer to move this program into an Applications folder, with all that it works on. Main thread.
class MoveOffer {
  public:
    MoveOffer(MoveServices services, MovePlaces places);
    MoveOffer(const MoveOffer&) = delete;
    MoveOffer& operator=(const MoveOffer&) = delete;

    /// Returns when nothing was moved; else the process ends here, and its new copy starts.
    void offerToMove() { move_.offerToMove(); }

  private:
    [[nodiscard]] MoveParts parts();

    const MoveServices services_;
    const MovePlaces places_;
    const LinuxSearchPath searchPath_{places_.folders};
    const LinuxFileLinks links_{};
    const Trash trash_;
    LinuxFileOperations files_{trash_};
    FolderOnDemand applications_;
    StringsTables strings_;
    QtSuppressibleAlertPanel question_;
    Pkexec authorization_;
    LinuxRelaunch relaunch_{places_.bundle};
    MoveToApplicationsFolder move_;
};

}  // namespace calorivo
