#include "app/MoveToApplicationsFolder.h"

#include "platform/Format.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace calorivo {

namespace {

constexpr std::string_view suppressKey = "moveToApplicationsFolderAlertSuppress";
constexpr std::string_view table = "MoveApplication";
// Far beyond any real chain of links: start-up must not hang in a cycle.
constexpr int mostHops = 4096;

}  // namespace

void MoveToApplicationsFolder::offerToMove() {
    if (!isOffered()) return;
    const std::optional<InstallFolder> folder = installFolder();
    if (!folder) return;
    const MovePlan plan = makePlan(*folder);
    if (!ask(plan)) return;
    parts_.log.log("INFO -- Moving myself to the Applications folder");
    switch (move(plan)) {
        case Outcome::moved:
            return finishMove(plan);
        case Outcome::failed:
            return showFailure();
        case Outcome::abandoned:
            return;
    }
}

bool MoveToApplicationsFolder::isOffered() const {
    if (configuration_.bundlePath.empty()) return false;
    if (parts_.userDefaults.objectForKey(suppressKey).boolValue()) return false;
    return !isInApplicationsFolder(configuration_.bundlePath,
                                   parts_.searchPath.directoriesInDomains(
                                       SearchPathDirectory::allApplications, SearchPathDomainMask::all));
}

std::optional<InstallFolder> MoveToApplicationsFolder::installFolder() const {
    const auto folders = [this](std::int32_t domainMask) {
        return parts_.searchPath.directoriesInDomains(SearchPathDirectory::applications, domainMask);
    };
    InstallFolderFacts facts;
    facts.localFolders = folders(SearchPathDomainMask::local);
    if (const std::vector<std::string> user = folders(SearchPathDomainMask::user); !user.empty()) {
        facts.userFolder = user.front();
        if (parts_.files.isDirectoryAtPath(facts.userFolder))
            facts.userFolderEntries = parts_.files.contentsOfDirectoryAtPath(facts.userFolder);
    }
    std::optional<InstallFolder> chosen = chooseInstallFolder(configuration_, facts);
    if (!chosen) return std::nullopt;
    const auto resolved = SymlinksAndAliases::stringByResolvingSymlinksAndAliases(
        chosen->path, parts_.links, SymlinksAndAliases::hopBudget(mostHops));
    if (!resolved) return std::nullopt;
    chosen->path = *resolved;
    return chosen;
}

MovePlan MoveToApplicationsFolder::makePlan(const InstallFolder& folder) const {
    const FileOperations& files = parts_.files;
    const std::string destination = moveDestination(folder, configuration_.bundlePath);
    const MoveFacts facts{
        .installFolder = folder,
        .isOnDiskImage = isOnDiskImage(configuration_, files.isWritableFileAtPath(configuration_.bundlePath)),
        .isInstallFolderWritable = files.isWritableFileAtPath(folder.path),
        .doesDestinationExist = files.fileExistsAtPath(destination),
        .isDestinationWritable = files.isWritableFileAtPath(destination),
        .downloadsFolders = parts_.searchPath.directoriesInDomains(SearchPathDirectory::downloads,
                                                                   SearchPathDomainMask::all)};
    return planMove(configuration_, facts, [this](std::string_view key) { return localized(key); });
}

bool MoveToApplicationsFolder::ask(const MovePlan& plan) {
    if (!parts_.isActive()) parts_.activateIgnoringOtherApps();
    const SuppressibleAlertAnswer answer = parts_.questionPanel.runModal(plan.question);
    if (answer.isFirstButton) return true;
    if (!isAfterMacOS10_4(configuration_) || answer.isSuppressionOn)
        parts_.userDefaults.setObjectForKey(true, suppressKey);
    return false;
}

MoveToApplicationsFolder::Outcome MoveToApplicationsFolder::move(const MovePlan& plan) {
    return plan.route == MoveRoute::authorized ? moveWithAuthorization(plan) : moveWithoutAuthorization(plan);
}

MoveToApplicationsFolder::Outcome MoveToApplicationsFolder::moveWithoutAuthorization(const MovePlan& plan) {
    if (plan.doesDestinationExist) {
        if (isDestinationRunning(plan)) {
            switchToRunningVersion(plan);
            return Outcome::abandoned;
        }
        if (!trash(plan.destination)) return Outcome::failed;
    }
    if (copyBundle(plan)) return Outcome::moved;
    parts_.log.log(format("ERROR -- Could not copy myself to %@", plan.destination));
    return Outcome::failed;
}

bool MoveToApplicationsFolder::isDestinationRunning(const MovePlan& plan) {
    if (!isAfterMacOS10_5(configuration_)) return parts_.relaunch.isRunning(runningSearch(plan));
    const std::vector<std::string> running = parts_.relaunch.runningApplicationExecutablePaths();
    return std::any_of(running.begin(), running.end(), [&plan](const std::string& executable) {
        return executable.starts_with(plan.destination);
    });
}

void MoveToApplicationsFolder::switchToRunningVersion(const MovePlan& plan) {
    parts_.log.log("INFO -- Switching to an already running version");
    parts_.relaunch.open(plan.destination);
    parts_.relaunch.exit(0);
}

bool MoveToApplicationsFolder::copyBundle(const MovePlan& plan) {
    // Kept: on a system as old as that nothing is copied, so the move always fails; it is not supported
    // there.
    if (!isAfterMacOS10_4(configuration_)) return false;
    const std::optional<Error> error = parts_.files.copyItemAtPathToPath(plan.bundlePath, plan.destination);
    if (error)
        parts_.log.log(format("ERROR -- Could not copy '%@' to '%@' (%@)", plan.bundlePath, plan.destination,
                              error->description()));
    return !error;
}

MoveToApplicationsFolder::Outcome MoveToApplicationsFolder::moveWithAuthorization(const MovePlan& plan) {
    const OSStatus status =
        isSafeWithAuthorization(configuration_, plan) ? executeAuthorized(plan) : errAuthorizationDenied;
    if (status == errAuthorizationSuccess) return Outcome::moved;
    if (status == errAuthorizationCanceled) {
        parts_.log.log("INFO -- Not moving because user canceled authorization");
        return Outcome::abandoned;
    }
    parts_.log.log("ERROR -- Could not copy myself to /Applications with authorization");
    return Outcome::failed;
}

OSStatus MoveToApplicationsFolder::executeAuthorized(const MovePlan& plan) {
    if (const OSStatus status = parts_.authorization.AuthorizationCreate(); status != errAuthorizationSuccess)
        // No one was asked yet, so that no status can mean that the user declined.
        return status == errAuthorizationCanceled ? errAuthorizationDenied : status;
    const OSStatus status = runAuthorized(plan);
    parts_.authorization.AuthorizationFree();
    return status;
}

OSStatus MoveToApplicationsFolder::runAuthorized(const MovePlan& plan) {
    constexpr std::uint32_t flags = AuthorizationFlags::interactionAllowed |
                                    AuthorizationFlags::extendRights | AuthorizationFlags::preAuthorize;
    const OSStatus rights = parts_.authorization.AuthorizationCopyRights(rightSystemPrivilegeAdmin, flags);
    if (rights != errAuthorizationSuccess) return rights;
    const ExecuteWithPrivileges& execute = executeWithPrivileges();
    if (!execute) return errAuthorizationToolExecuteFailure;

    const MoveCommand remove = removeCommand(plan);
    const PrivilegedResult removed = execute(remove.tool, remove.arguments);
    if (removed.status != errAuthorizationSuccess) return removed.status;
    // Kept: its exit code does not matter; the copy will tell.
    if (!removed.isWaited || !removed.exitCode) return errAuthorizationToolExecuteFailure;

    const MoveCommand copy = copyCommand(plan);
    const PrivilegedResult copied = execute(copy.tool, copy.arguments);
    if (copied.status != errAuthorizationSuccess) return copied.status;
    return copied.isWaited && copied.exitCode == 0 ? errAuthorizationSuccess
                                                   : errAuthorizationToolExecuteFailure;
}

const ExecuteWithPrivileges& MoveToApplicationsFolder::executeWithPrivileges() {
    if (!executeWithPrivileges_) executeWithPrivileges_ = parts_.authorization.findExecuteWithPrivileges();
    return *executeWithPrivileges_;
}

void MoveToApplicationsFolder::finishMove(const MovePlan& plan) {
    if (!plan.isOnDiskImage && !trash(plan.bundlePath))
        parts_.log.log("WARNING -- Could not delete application after moving it to Applications folder");
    parts_.relaunch.openAfterExit(openAfterExit(configuration_, plan, parts_.relaunch.processIdentifier()));
    // Kept: asked anew, when the old program may be in the Trash already. What is not there is not writable:
    // a program that came from a writable volume has that volume detached as well.
    if (isOnDiskImage(configuration_, parts_.files.isWritableFileAtPath(plan.bundlePath)))
        parts_.relaunch.detachLater(detachLater(plan));
    parts_.relaunch.exit(0);
}

bool MoveToApplicationsFolder::trash(const std::string& path) {
    if (parts_.files.recycle(stringByDeletingLastPathComponent(path), lastPathComponent(path))) return true;
    parts_.log.log(format("ERROR -- Could not trash '%@'", path));
    return false;
}

void MoveToApplicationsFolder::showFailure() {
    parts_.alertPanel.runModal(
        {.message = localized("Could not move to Applications folder"), .defaultButton = "OK"});
}

std::string MoveToApplicationsFolder::localized(std::string_view key) const {
    return parts_.strings.localizedString(key, table);
}

}  // namespace calorivo
