#pragma once

#include "platform/Relaunch.h"
#include "platform/SuppressibleAlert.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

// Whether and how the program is to move into an Applications folder: decisions and texts, from facts alone.

namespace calorivo {

/// What the move depends on besides the file system.
struct MoveConfiguration {
    /// The program as the user sees it: a folder or a single file. Empty: there is none to be moved.
    std::string bundlePath;
    /// The version number of the application framework; its fraction does not matter.
    double appKitVersion = 0.0;
    /// Where disk images are mounted.
    std::vector<std::string> diskImageFolders{"/Volumes/"};
    /// By such an entry a folder shows that it holds programs.
    std::vector<std::string> programExtensions{"app"};
    /// Nothing else is ever removed with an administrator's rights.
    std::vector<std::string> bundleEndings{".app"};
};

/// The steps in the framework's versions, named for the system that they came with.
[[nodiscard]] bool isAfterMacOS10_4(const MoveConfiguration& configuration);
[[nodiscard]] bool isAfterMacOS10_5(const MoveConfiguration& configuration);

/// Whether a program at this path needs no move: the path begins with one of the folders, or one of its
/// components is named "Applications".
[[nodiscard]] bool isInApplicationsFolder(std::string_view bundlePath,
                                          const std::vector<std::string>& folders);
/// A program on a disk image can neither be removed nor run after the image is given back.
[[nodiscard]] bool isOnDiskImage(const MoveConfiguration& configuration, bool isBundleWritable);

struct InstallFolder {
    std::string path;
    bool isInHomeFolder = false;
    friend bool operator==(const InstallFolder&, const InstallFolder&) = default;
};
struct InstallFolderFacts {
    /// Empty for none.
    std::string userFolder;
    /// None when there is no such folder.
    std::optional<std::vector<std::string>> userFolderEntries;
    std::vector<std::string> localFolders;
};
/// The user's folder if programs are in it, else the last of the machine's folders, which may be the user's
/// again; none without any.
[[nodiscard]] std::optional<InstallFolder> chooseInstallFolder(const MoveConfiguration& configuration,
                                                               const InstallFolderFacts& facts);
[[nodiscard]] std::string moveDestination(const InstallFolder& folder, std::string_view bundlePath);

struct MoveFacts {
    InstallFolder installFolder;
    bool isOnDiskImage = false;
    bool isInstallFolderWritable = false;
    bool doesDestinationExist = false;
    bool isDestinationWritable = false;
    std::vector<std::string> downloadsFolders;
};

/// With whose rights the program is copied.
enum class MoveRoute { plain, authorized };

/// A tool with its arguments.
struct MoveCommand {
    std::string tool;
    std::vector<std::string> arguments;
    friend bool operator==(const MoveCommand&, const MoveCommand&) = default;
};

/// The move of one bundle into one folder.
struct MovePlan {
    std::string bundlePath;
    std::string destination;
    bool isInHomeFolder = false;
    bool isOnDiskImage = false;
    bool doesDestinationExist = false;
    MoveRoute route = MoveRoute::plain;
    SuppressibleAlert question;
    friend bool operator==(const MovePlan&, const MovePlan&) = default;
};

/// Gives the text in the user's language.
using Translate = std::function<std::string(std::string_view)>;
[[nodiscard]] MovePlan planMove(const MoveConfiguration& configuration, const MoveFacts& facts,
                                const Translate& translate);

/// Whether the plan may be carried out with an administrator's rights, who may remove anything.
[[nodiscard]] bool isSafeWithAuthorization(const MoveConfiguration& configuration, const MovePlan& plan);
/// First the old program at the destination is removed, then the new one is copied.
[[nodiscard]] MoveCommand removeCommand(const MovePlan& plan);
[[nodiscard]] MoveCommand copyCommand(const MovePlan& plan);

[[nodiscard]] RunningSearch runningSearch(const MovePlan& plan);
[[nodiscard]] OpenAfterExit openAfterExit(const MoveConfiguration& configuration, const MovePlan& plan,
                                          std::int32_t processIdentifier);
[[nodiscard]] DetachLater detachLater(const MovePlan& plan);

}  // namespace calorivo
