#include "app/MoveToApplicationsFolder.h"

#include "app/MoveFixture.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <string>

namespace calorivo {
namespace {

using test::Calls;
using test::MoveFixture;

constexpr double onMacOS10_4 = 824.0;
constexpr double onMacOS10_5 = 949.0;

const std::string asked = "ask Move to Applications";
const std::string moving = "log INFO -- Moving myself to the Applications folder";
const std::string copied = "copy /Users/u/Downloads/Calorivo.app to /Applications/Calorivo.app";
const std::string oldTrashed = "recycle Calorivo.app of /Applications";
const std::string bundleTrashed = "recycle Calorivo.app of /Users/u/Downloads";
const std::string relaunched =
    "sh -c (while [ `ps -p 4711 | wc -l` -gt 1 ]; do sleep 0.1; done; /usr/bin/xattr -d -r "
    "com.apple.quarantine '/Applications/Calorivo.app'; open '/Applications/Calorivo.app') &";
const std::string ended = "exit 0";
const std::string failed = "runModal Could not move to Applications folder";
const std::string copyFailed = "log ERROR -- Could not copy myself to /Applications/Calorivo.app";

const std::string created = "AuthorizationCreate";
const std::string rightsAsked = "AuthorizationCopyRights system.privilege.admin 19";
const std::string executeSought = "findExecuteWithPrivileges";
const std::string removedWithRights = "execute /bin/rm [-rf] [/Applications/Calorivo.app]";
const std::string copiedWithRights =
    "execute /bin/cp [-pR] [/Users/u/Downloads/Calorivo.app] [/Applications/Calorivo.app]";
const std::string freed = "AuthorizationFree";
const std::string authorizedFailed = "log ERROR -- Could not copy myself to /Applications with authorization";
const std::string canceled = "log INFO -- Not moving because user canceled authorization";

const Error full{std::string(posixErrorDomain),
                 ENOSPC,
                 {{std::string(localizedDescriptionKey), "No space left on device"}}};

// Whether and how it asks.

TEST(MoveToApplicationsFolder, AsksNothingWhenThatIsSuppressed) {
    MoveFixture fixture;
    fixture.userDefaults.stored["moveToApplicationsFolderAlertSuppress"] = true;
    EXPECT_EQ(fixture.offer(), Calls{});
}

TEST(MoveToApplicationsFolder, AsksNothingInAnApplicationsFolder) {
    for (const std::string path :
         {"/Applications/Calorivo.app", "/Network/Applications/Sub/Calorivo.app",
          "/Users/u/Applications/Calorivo.app", "/Volumes/Disk/Applications/Deep/Calorivo.app"}) {
        MoveFixture fixture;
        fixture.configuration.bundlePath = path;
        EXPECT_EQ(fixture.offer(), Calls{}) << path;
    }
}

TEST(MoveToApplicationsFolder, AsksNothingWithoutABundleOrAFolderToMoveTo) {
    MoveFixture noBundle;
    noBundle.configuration.bundlePath = "";
    EXPECT_EQ(noBundle.offer(), Calls{});
    MoveFixture noFolder;
    noFolder.searchPath.folders[{SearchPathDirectory::applications, SearchPathDomainMask::local}] = {};
    EXPECT_EQ(noFolder.offer(), Calls{});
    MoveFixture missing;
    missing.searchPath.folders[{SearchPathDirectory::applications, SearchPathDomainMask::local}] = {
        "/Missing"};
    EXPECT_EQ(missing.offer(), Calls{});
}

TEST(MoveToApplicationsFolder, DoesNotHangInACycleOfLinks) {
    MoveFixture fixture;
    fixture.links.link("/Applications", "Programs").link("/Programs", "Applications");
    EXPECT_EQ(fixture.offer(), Calls{});
}

TEST(MoveToApplicationsFolder, ComesToTheFrontBeforeItAsks) {
    MoveFixture fixture;
    fixture.question.answer.isFirstButton = false;
    fixture.isActive = false;
    const Calls calls = fixture.offer();
    ASSERT_GE(calls.size(), 2U);
    EXPECT_EQ(calls[0], "activate");
    EXPECT_EQ(calls[1], asked);
}

TEST(MoveToApplicationsFolder, PrefersTheUsersFolderWithPrograms) {
    MoveFixture fixture;
    fixture.files.folders["/Users/u/Applications"] = {"Other.app"};
    const Calls calls = fixture.offer();
    ASSERT_EQ(calls.size(), 6U);
    EXPECT_EQ(calls[0], "ask Move to Applications folder in your Home folder?");
    EXPECT_EQ(calls[2], "copy /Users/u/Downloads/Calorivo.app to /Users/u/Applications/Calorivo.app");
}

TEST(MoveToApplicationsFolder, IgnoresAUsersFolderWithoutPrograms) {
    MoveFixture fixture;
    fixture.files.folders["/Users/u/Applications"] = {"Notes.txt"};
    EXPECT_EQ(fixture.offer().front(), asked);
}

TEST(MoveToApplicationsFolder, MovesToWhereTheFoldersLinkLeads) {
    MoveFixture fixture;
    fixture.links.link("/Applications", "/Disk/Programs").folder("/Disk").folder("/Disk/Programs");
    fixture.files.folders["/Disk/Programs"] = {};
    EXPECT_EQ(fixture.offer()[2], "copy /Users/u/Downloads/Calorivo.app to /Disk/Programs/Calorivo.app");
}

TEST(MoveToApplicationsFolder, SaysThatTheFolderOfDownloadsStaysUncluttered) {
    MoveFixture fixture;
    fixture.offer();
    EXPECT_EQ(fixture.question.asked.at(0).informativeText,
              "Would you like Calorivo to move itself to the Applications folder? "
              "This will keep your Downloads folder uncluttered.");
}

TEST(MoveToApplicationsFolder, AsksAndFailsInTheUsersLanguage) {
    MoveFixture fixture;
    fixture.fileManager.add("/strings/de.lproj/MoveApplication.strings",
                            "\"Move to Applications\" = \"Bewegen\";"
                            "\"Could not move to Applications folder\" = \"Ging nicht\";");
    fixture.files.copyError = full;
    const Calls calls = fixture.offer();
    EXPECT_EQ(calls.front(), "ask Bewegen");
    EXPECT_EQ(calls.back(), "runModal Ging nicht");
}

// The refusal.

TEST(MoveToApplicationsFolder, RemembersARefusalAsTheCheckBoxSays) {
    const std::string stored = "setObject YES forKey moveToApplicationsFolderAlertSuppress";
    struct Row {
        double appKitVersion;
        bool isSuppressionOn;
        Calls calls;
    };
    const Row rows[] = {{1038, true, {asked, stored}},
                        {1038, false, {asked}},
                        {825, false, {asked}},
                        // Without a check box a refusal is for good.
                        {onMacOS10_4, false, {asked, stored}}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.appKitVersion);
        MoveFixture fixture;
        fixture.configuration.appKitVersion = row.appKitVersion;
        fixture.question.answer = {.isFirstButton = false, .isSuppressionOn = row.isSuppressionOn};
        EXPECT_EQ(fixture.offer(), row.calls);
        const bool isAskedAgain = !fixture.offer().empty();
        EXPECT_EQ(isAskedAgain, row.calls.size() == 1);
    }
}

// Without an administrator's rights.

TEST(MoveToApplicationsFolder, CopiesTrashesTheOldPlaceAndStartsAnew) {
    MoveFixture fixture;
    EXPECT_EQ(fixture.offer(), (Calls{asked, moving, copied, bundleTrashed, relaunched, ended}));
}

TEST(MoveToApplicationsFolder, TrashesAnOlderCopyFirst) {
    MoveFixture fixture;
    fixture.files.existing.insert("/Applications/Calorivo.app");
    fixture.relaunch.running = {"/Applications/Other.app/Contents/MacOS/Other",
                                "/Users/u/Downloads/Calorivo.app/Contents/MacOS/Calorivo"};
    EXPECT_EQ(fixture.offer(), (Calls{asked, moving, "runningApplications", oldTrashed, copied, bundleTrashed,
                                      relaunched, ended}));
}

TEST(MoveToApplicationsFolder, SwitchesToACopyThatRuns) {
    MoveFixture fixture;
    fixture.files.existing.insert("/Applications/Calorivo.app");
    fixture.relaunch.running = {"/Applications/Calorivo.app/Contents/MacOS/Calorivo"};
    EXPECT_EQ(fixture.offer(), (Calls{asked, moving, "runningApplications",
                                      "log INFO -- Switching to an already running version",
                                      "open /Applications/Calorivo.app", ended}));
}

TEST(MoveToApplicationsFolder, LooksForARunningCopyThroughAShellUpToMacOS10_5) {
    const std::string searched =
        "sh -c ps ax -o comm | grep '/Applications/Calorivo.app/' | grep -v grep >/dev/null";
    MoveFixture running;
    running.configuration.appKitVersion = onMacOS10_5;
    running.files.existing.insert("/Applications/Calorivo.app");
    running.relaunch.isFoundByShell = true;
    EXPECT_EQ(running.offer(),
              (Calls{asked, moving, searched, "log INFO -- Switching to an already running version",
                     "open /Applications/Calorivo.app", ended}));
    MoveFixture idle;
    idle.configuration.appKitVersion = onMacOS10_5;
    idle.files.existing.insert("/Applications/Calorivo.app");
    const Calls calls = idle.offer();
    EXPECT_EQ(calls[2], searched);
    EXPECT_EQ(calls[3], oldTrashed);
}

TEST(MoveToApplicationsFolder, FailsWhenTheOlderCopyCannotBeTrashed) {
    MoveFixture fixture;
    fixture.files.existing.insert("/Applications/Calorivo.app");
    fixture.files.cannotBeTrashed.insert("/Applications/Calorivo.app");
    EXPECT_EQ(fixture.offer(), (Calls{asked, moving, "runningApplications", oldTrashed,
                                      "log ERROR -- Could not trash '/Applications/Calorivo.app'", failed}));
    EXPECT_EQ(
        fixture.alertPanel.alerts,
        (std::vector<Alert>{{.message = "Could not move to Applications folder", .defaultButton = "OK"}}));
}

TEST(MoveToApplicationsFolder, FailsWhenTheCopyFails) {
    MoveFixture fixture;
    fixture.files.copyError = full;
    EXPECT_EQ(fixture.offer(),
              (Calls{asked, moving, copied,
                     "log ERROR -- Could not copy '/Users/u/Downloads/Calorivo.app' to "
                     "'/Applications/Calorivo.app' (Error Domain=NSPOSIXErrorDomain Code=28 \"No space left "
                     "on device\")",
                     copyFailed, failed}));
}

TEST(MoveToApplicationsFolder, CopiesNothingOnMacOS10_4AndFails) {
    MoveFixture fixture;
    fixture.configuration.appKitVersion = onMacOS10_4;
    EXPECT_EQ(fixture.offer(), (Calls{asked, moving, copyFailed, failed}));
}

TEST(MoveToApplicationsFolder, GoesOnWhenTheOldPlaceCannotBeTrashed) {
    MoveFixture fixture;
    fixture.files.cannotBeTrashed.insert("/Users/u/Downloads/Calorivo.app");
    EXPECT_EQ(fixture.offer(),
              (Calls{asked, moving, copied, bundleTrashed,
                     "log ERROR -- Could not trash '/Users/u/Downloads/Calorivo.app'",
                     "log WARNING -- Could not delete application after moving it to Applications folder",
                     relaunched, ended}));
}

// Disk images.

TEST(MoveToApplicationsFolder, LeavesTheProgramOnADiskImageAndGivesTheImageBack) {
    MoveFixture fixture;
    fixture.configuration.bundlePath = "/Volumes/Calorivo/Calorivo.app";
    fixture.files.existing.insert("/Volumes/Calorivo/Calorivo.app");
    fixture.files.readOnly.insert("/Volumes/Calorivo/Calorivo.app");
    EXPECT_EQ(fixture.offer(),
              (Calls{asked, moving, "copy /Volumes/Calorivo/Calorivo.app to /Applications/Calorivo.app",
                     relaunched, "sh -c (sleep 5 && hdiutil detach '/Volumes/Calorivo') &", ended}));
}

// What went into the Trash is not writable any more: the volume then counts as a disk image.
TEST(MoveToApplicationsFolder, GivesAWritableVolumeBackOnceItsProgramIsInTheTrash) {
    MoveFixture fixture;
    fixture.configuration.bundlePath = "/Volumes/Stick/Calorivo.app";
    fixture.files.existing.insert("/Volumes/Stick/Calorivo.app");
    const std::string detached = "sh -c (sleep 5 && hdiutil detach '/Volumes/Stick') &";
    EXPECT_EQ(fixture.offer(),
              (Calls{asked, moving,
                     "copy /Volumes/Stick/Calorivo.app to "
                     "/Applications/Calorivo.app",
                     "recycle Calorivo.app of /Volumes/Stick", relaunched, detached, ended}));
    fixture.files.existing = {"/Volumes/Stick/Calorivo.app"};
    fixture.files.cannotBeTrashed.insert("/Volumes/Stick/Calorivo.app");
    const Calls calls = fixture.offer();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), detached), 0);
    EXPECT_EQ(calls.back(), ended);
}

// With an administrator's rights.

MoveFixture& protect(MoveFixture& fixture) {
    fixture.files.readOnly.insert("/Applications");
    return fixture;
}

TEST(MoveToApplicationsFolder, MovesWithAnAdministratorsRights) {
    MoveFixture fixture;
    EXPECT_EQ(protect(fixture).offer(),
              (Calls{asked, moving, created, rightsAsked, executeSought, removedWithRights, copiedWithRights,
                     freed, bundleTrashed, relaunched, ended}));
    EXPECT_EQ(fixture.question.asked.at(0).informativeText,
              "Would you like Calorivo to move itself to the Applications folder? "
              "Note that this will require an administrator password.");
}

TEST(MoveToApplicationsFolder, NeedsRightsForAProtectedCopyInAWritableFolder) {
    MoveFixture fixture;
    fixture.files.existing.insert("/Applications/Calorivo.app");
    fixture.files.readOnly.insert("/Applications/Calorivo.app");
    EXPECT_EQ(fixture.offer(), (Calls{asked, moving, created, rightsAsked, executeSought, removedWithRights,
                                      copiedWithRights, freed, bundleTrashed, relaunched, ended}));
}

TEST(MoveToApplicationsFolder, GivesUpWithoutAnAlertWhenTheUserCancels) {
    MoveFixture fixture;
    fixture.authorization.copying = errAuthorizationCanceled;
    EXPECT_EQ(protect(fixture).offer(), (Calls{asked, moving, created, rightsAsked, freed, canceled}));
}

// Some systems ask when the first command is to run.
TEST(MoveToApplicationsFolder, GivesUpWithoutAnAlertWhenTheUserCancelsACommand) {
    MoveFixture first;
    first.authorization.results = {{.status = errAuthorizationCanceled}};
    EXPECT_EQ(protect(first).offer(), (Calls{asked, moving, created, rightsAsked, executeSought,
                                             removedWithRights, freed, canceled}));
    MoveFixture second;
    second.authorization.results = {{errAuthorizationSuccess, true, 0}, {.status = errAuthorizationCanceled}};
    EXPECT_EQ(protect(second).offer(), (Calls{asked, moving, created, rightsAsked, executeSought,
                                              removedWithRights, copiedWithRights, freed, canceled}));
}

TEST(MoveToApplicationsFolder, FailsWhenNoAuthorizationCanBeMade) {
    MoveFixture fixture;
    fixture.authorization.creation = errAuthorizationCanceled;
    EXPECT_EQ(protect(fixture).offer(), (Calls{asked, moving, created, authorizedFailed, failed}));
}

TEST(MoveToApplicationsFolder, FailsWhenTheRightsAreRefused) {
    MoveFixture fixture;
    fixture.authorization.copying = errAuthorizationDenied;
    EXPECT_EQ(protect(fixture).offer(),
              (Calls{asked, moving, created, rightsAsked, freed, authorizedFailed, failed}));
}

TEST(MoveToApplicationsFolder, FailsWhereCommandsCannotBeRunWithRights) {
    MoveFixture fixture;
    fixture.authorization.hasExecute = false;
    EXPECT_EQ(protect(fixture).offer(),
              (Calls{asked, moving, created, rightsAsked, executeSought, freed, authorizedFailed, failed}));
}

TEST(MoveToApplicationsFolder, SeeksTheFunctionForCommandsOnce) {
    MoveFixture fixture;
    fixture.authorization.results = {{errAuthorizationSuccess, true, std::nullopt}};
    protect(fixture).offer();
    const Calls calls = fixture.offer();
    EXPECT_EQ(std::count(calls.begin(), calls.end(), executeSought), 0);
    EXPECT_EQ(std::count(calls.begin(), calls.end(), copiedWithRights), 1);
}

TEST(MoveToApplicationsFolder, FailsWhenTheAuthorizedRemovalDoesNotEndByItself) {
    const PrivilegedResult results[] = {{errAuthorizationToolExecuteFailure, false, std::nullopt},
                                        {errAuthorizationSuccess, false, std::nullopt},
                                        {errAuthorizationSuccess, true, std::nullopt}};
    for (const PrivilegedResult& result : results) {
        MoveFixture fixture;
        fixture.authorization.results = {result};
        EXPECT_EQ(protect(fixture).offer(), (Calls{asked, moving, created, rightsAsked, executeSought,
                                                   removedWithRights, freed, authorizedFailed, failed}));
    }
}

TEST(MoveToApplicationsFolder, DoesNotLookAtTheExitCodeOfTheAuthorizedRemoval) {
    MoveFixture fixture;
    fixture.authorization.results = {{errAuthorizationSuccess, true, 1}};
    EXPECT_EQ(protect(fixture).offer().back(), ended);
}

TEST(MoveToApplicationsFolder, FailsWhenTheAuthorizedCopyFails) {
    const PrivilegedResult results[] = {{errAuthorizationToolExecuteFailure, false, std::nullopt},
                                        {errAuthorizationSuccess, false, std::nullopt},
                                        {errAuthorizationSuccess, false, 0},
                                        {errAuthorizationSuccess, true, std::nullopt},
                                        {errAuthorizationSuccess, true, 1}};
    for (const PrivilegedResult& result : results) {
        MoveFixture fixture;
        fixture.authorization.results = {{errAuthorizationSuccess, true, 0}, result};
        EXPECT_EQ(protect(fixture).offer(),
                  (Calls{asked, moving, created, rightsAsked, executeSought, removedWithRights,
                         copiedWithRights, freed, authorizedFailed, failed}));
    }
}

TEST(MoveToApplicationsFolder, NeverAsksForRightsForWhatIsNoBundle) {
    MoveFixture fixture;
    fixture.configuration.bundlePath = "/Users/u/Downloads/Calorivo";
    EXPECT_EQ(protect(fixture).offer(), (Calls{asked, moving, authorizedFailed, failed}));
}

// Hostile names.

TEST(MoveToApplicationsFolder, GivesToolsANameAsOneArgument) {
    MoveFixture fixture;
    fixture.configuration.bundlePath = "/Users/u/Downloads/a'; touch pwned; '.app";
    fixture.files.existing.insert(fixture.configuration.bundlePath);
    const Calls calls = protect(fixture).offer();
    ASSERT_GE(calls.size(), 7U);
    EXPECT_EQ(calls[5], "execute /bin/rm [-rf] [/Applications/a'; touch pwned; '.app]");
    EXPECT_EQ(calls[6],
              "execute /bin/cp [-pR] [/Users/u/Downloads/a'; touch pwned; '.app] "
              "[/Applications/a'; touch pwned; '.app]");
}

}  // namespace
}  // namespace calorivo
