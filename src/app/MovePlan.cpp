#include "app/MovePlan.h"

#include "app/FileUtilities.h"
#include "platform/Format.h"

#include <algorithm>
#include <cmath>

namespace calorivo {

namespace {

// The published version numbers of the application framework.
constexpr double appKitVersionNumber10_4 = 824;
constexpr double appKitVersionNumber10_5 = 949;

bool beginsWithOneOf(std::string_view path, const std::vector<std::string>& folders) {
    return std::any_of(folders.begin(), folders.end(),
                       [path](const std::string& folder) { return path.starts_with(folder); });
}

bool contains(const std::vector<std::string>& list, std::string_view item) {
    return std::find(list.begin(), list.end(), item) != list.end();
}

bool isBlank(std::string_view text) {
    return text.find_first_not_of(" \t\n\v\f\r") == std::string_view::npos;
}

bool isInDownloadsFolder(const MoveConfiguration& configuration, const MoveFacts& facts) {
    if (isAfterMacOS10_4(configuration))
        return beginsWithOneOf(configuration.bundlePath, facts.downloadsFolders);
    return lastPathComponent(stringByDeletingLastPathComponent(configuration.bundlePath)) == "Downloads";
}

std::string informativeText(const MoveConfiguration& configuration, const MoveFacts& facts, MoveRoute route,
                            const Translate& translate) {
    std::string text = translate("Would you like Calorivo to move itself to the Applications folder?");
    if (route == MoveRoute::authorized)
        text += ' ' + translate("Note that this will require an administrator password.");
    else if (isInDownloadsFolder(configuration, facts))
        text += ' ' + translate("This will keep your Downloads folder uncluttered.");
    return text;
}

SuppressibleAlert question(const MoveConfiguration& configuration, const MoveFacts& facts, MoveRoute route,
                           const Translate& translate) {
    constexpr std::string_view escapeCharacter = "\x1B";
    SuppressibleAlert alert;
    alert.message =
        translate(facts.installFolder.isInHomeFolder ? "Move to Applications folder in your Home folder?"
                                                     : "Move to Applications");
    alert.informativeText = informativeText(configuration, facts, route, translate);
    alert.firstButton = {translate("Move to Applications Folder")};
    alert.secondButton = {translate("Do Not Move"), std::string(escapeCharacter)};
    if (isAfterMacOS10_4(configuration))
        alert.suppressionButton = {
            .isOn = true, .controlSize = ControlSize::small, .font = ControlSize::small};
    return alert;
}

std::string quarantineCommand(QuarantineRemoval removal, std::string_view destination) {
    switch (removal) {
        case QuarantineRemoval::recursive:
            return format("/usr/bin/xattr -d -r com.apple.quarantine '%@';", destination);
        case QuarantineRemoval::topOnly:
            return format("/usr/bin/xattr -d com.apple.quarantine '%@';", destination);
        case QuarantineRemoval::none:
            return {};
    }
    return {};
}

}  // namespace

bool isAfterMacOS10_4(const MoveConfiguration& configuration) {
    return std::floor(configuration.appKitVersion) > appKitVersionNumber10_4;
}

bool isAfterMacOS10_5(const MoveConfiguration& configuration) {
    return std::floor(configuration.appKitVersion) > appKitVersionNumber10_5;
}

bool isInApplicationsFolder(std::string_view bundlePath, const std::vector<std::string>& folders) {
    return beginsWithOneOf(bundlePath, folders) || contains(pathComponents(bundlePath), "Applications");
}

bool isOnDiskImage(const MoveConfiguration& configuration, bool isBundleWritable) {
    return beginsWithOneOf(configuration.bundlePath, configuration.diskImageFolders) && !isBundleWritable;
}

std::optional<InstallFolder> chooseInstallFolder(const MoveConfiguration& configuration,
                                                 const InstallFolderFacts& facts) {
    const auto isProgram = [&configuration](const std::string& entry) {
        return contains(configuration.programExtensions, pathExtension(entry));
    };
    if (facts.userFolderEntries &&
        std::any_of(facts.userFolderEntries->begin(), facts.userFolderEntries->end(), isProgram))
        return InstallFolder{facts.userFolder, true};
    if (facts.localFolders.empty()) return std::nullopt;
    const std::string& last = facts.localFolders.back();
    return InstallFolder{last, last == facts.userFolder};
}

std::string moveDestination(const InstallFolder& folder, std::string_view bundlePath) {
    return stringByAppendingPathComponent(folder.path, lastPathComponent(bundlePath));
}

MovePlan planMove(const MoveConfiguration& configuration, const MoveFacts& facts,
                  const Translate& translate) {
    const bool needsAuthorization =
        !facts.isInstallFolderWritable || (facts.doesDestinationExist && !facts.isDestinationWritable);
    const MoveRoute route = needsAuthorization ? MoveRoute::authorized : MoveRoute::plain;
    return {.bundlePath = configuration.bundlePath,
            .destination = moveDestination(facts.installFolder, configuration.bundlePath),
            .isInHomeFolder = facts.installFolder.isInHomeFolder,
            .isOnDiskImage = facts.isOnDiskImage,
            .doesDestinationExist = facts.doesDestinationExist,
            .route = route,
            .question = question(configuration, facts, route, translate)};
}

bool isSafeWithAuthorization(const MoveConfiguration& configuration, const MovePlan& plan) {
    const auto endsThePath = [&plan](const std::string& ending) {
        return plan.destination.ends_with(ending);
    };
    return std::any_of(configuration.bundleEndings.begin(), configuration.bundleEndings.end(), endsThePath) &&
           !isBlank(plan.destination) && !isBlank(plan.bundlePath);
}

MoveCommand removeCommand(const MovePlan& plan) { return {"/bin/rm", {"-rf", plan.destination}}; }

MoveCommand copyCommand(const MovePlan& plan) {
    return {"/bin/cp", {"-pR", plan.bundlePath, plan.destination}};
}

RunningSearch runningSearch(const MovePlan& plan) {
    return {plan.destination,
            format("ps ax -o comm | grep '%@/' | grep -v grep >/dev/null", plan.destination)};
}

OpenAfterExit openAfterExit(const MoveConfiguration& configuration, const MovePlan& plan,
                            std::int32_t processIdentifier) {
    const QuarantineRemoval removal = isAfterMacOS10_5(configuration)   ? QuarantineRemoval::recursive
                                      : isAfterMacOS10_4(configuration) ? QuarantineRemoval::topOnly
                                                                        : QuarantineRemoval::none;
    return {processIdentifier, removal, plan.destination,
            format("(while [ `ps -p %d | wc -l` -gt 1 ]; do sleep 0.1; done; %@ open '%@') &",
                   processIdentifier, quarantineCommand(removal, plan.destination), plan.destination)};
}

DetachLater detachLater(const MovePlan& plan) {
    const std::string folder = stringByDeletingLastPathComponent(plan.bundlePath);
    return {folder, format("(sleep 5 && hdiutil detach '%@') &", folder)};
}

}  // namespace calorivo
