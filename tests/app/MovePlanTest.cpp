#include "app/MovePlan.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace calorivo {
namespace {

constexpr double onMacOS10_4 = 824.9;
constexpr double onMacOS10_5 = 949.54;
constexpr double later = 1038.3;

MoveConfiguration configurationOf(std::string bundlePath, double appKitVersion = later) {
    MoveConfiguration configuration;
    configuration.bundlePath = std::move(bundlePath);
    configuration.appKitVersion = appKitVersion;
    return configuration;
}

std::string unchanged(std::string_view key) { return std::string(key); }

const MoveFacts writable{.installFolder = {"/Applications", false},
                         .isOnDiskImage = false,
                         .isInstallFolderWritable = true,
                         .doesDestinationExist = false,
                         .isDestinationWritable = false,
                         .downloadsFolders = {"/Users/u/Downloads"}};

TEST(MovePlan, OffersNoMoveFromAnApplicationsFolder) {
    const std::vector<std::string> folders{"/Applications", "/Users/u/Applications", "/usr/"};
    struct Row {
        std::string bundlePath;
        bool isInApplicationsFolder;
    };
    const Row rows[] = {
        {"/Applications/Calorivo.app", true},
        {"/Applications/Utilities/Calorivo.app", true},
        {"/Users/u/Applications/Calorivo.app", true},
        // A text that begins with the path is enough.
        {"/Applications (old)/Calorivo.app", true},
        {"/usr/bin/calorivo", true},
        {"/usrlocal/calorivo", false},
        {"/Volumes/Disk/Applications/Calorivo.app", true},
        {"/Volumes/Disk/Applications/Deep/Down/Calorivo.app", true},
        {"/Volumes/Disk/My Applications/Calorivo.app", false},
        {"/Volumes/Disk/applications/Calorivo.app", false},
        {"/Users/u/Downloads/Calorivo.app", false},
    };
    for (const Row& row : rows)
        EXPECT_EQ(isInApplicationsFolder(row.bundlePath, folders), row.isInApplicationsFolder)
            << row.bundlePath;
}

TEST(MovePlan, KnowsADiskImageByItsPlaceAndThatItCannotBeWritten) {
    const auto isImage = [](std::string path, bool isWritable) {
        return isOnDiskImage(configurationOf(std::move(path)), isWritable);
    };
    EXPECT_TRUE(isImage("/Volumes/Calorivo/Calorivo.app", false));
    EXPECT_FALSE(isImage("/Volumes/Calorivo/Calorivo.app", true));
    EXPECT_FALSE(isImage("/Users/u/Calorivo.app", false));
    EXPECT_FALSE(isImage("/Volumes", false));
}

TEST(MovePlan, ChoosesTheUsersFolderOnlyWhenProgramsAreInIt) {
    const MoveConfiguration configuration = configurationOf("/Users/u/Desktop/Calorivo.app");
    struct Row {
        std::optional<std::vector<std::string>> userFolderEntries;
        std::vector<std::string> localFolders;
        std::optional<InstallFolder> chosen;
    };
    const InstallFolder user{"/Users/u/Applications", true};
    const InstallFolder local{"/Applications", false};
    const Row rows[] = {
        {std::vector<std::string>{"Notes.txt", "Other.app"}, {"/Applications"}, user},
        {std::vector<std::string>{"Other.app"}, {}, user},
        {std::vector<std::string>{}, {"/Applications"}, local},
        {std::vector<std::string>{"app", ".app", "x.apps", "x.APP"}, {"/Applications"}, local},
        {std::nullopt, {"/Developer", "/Applications"}, local},
        {std::nullopt, {"/Applications", "/Users/u/Applications"}, user},
        {std::nullopt, {}, std::nullopt},
    };
    for (const Row& row : rows)
        EXPECT_EQ(chooseInstallFolder(configuration,
                                      {"/Users/u/Applications", row.userFolderEntries, row.localFolders}),
                  row.chosen);
}

TEST(MovePlan, NeedsAuthorizationWhereItMayNotWrite) {
    struct Row {
        bool isInstallFolderWritable;
        bool doesDestinationExist;
        bool isDestinationWritable;
        MoveRoute route;
    };
    const Row rows[] = {
        {true, false, false, MoveRoute::plain},     {true, true, true, MoveRoute::plain},
        {true, true, false, MoveRoute::authorized}, {false, false, false, MoveRoute::authorized},
        {false, true, true, MoveRoute::authorized}, {false, true, false, MoveRoute::authorized}};
    for (const Row& row : rows) {
        MoveFacts facts = writable;
        facts.isInstallFolderWritable = row.isInstallFolderWritable;
        facts.doesDestinationExist = row.doesDestinationExist;
        facts.isDestinationWritable = row.isDestinationWritable;
        EXPECT_EQ(planMove(configurationOf("/x/Calorivo.app"), facts, unchanged).route, row.route);
    }
}

TEST(MovePlan, IsWholeForAMoveIntoTheHomeFolder) {
    MoveFacts facts = writable;
    facts.installFolder = {"/Users/u/Applications", true};
    facts.isOnDiskImage = true;
    facts.doesDestinationExist = true;
    facts.isDestinationWritable = true;
    const MovePlan expected{
        .bundlePath = "/Users/u/Desktop/Calorivo.app",
        .destination = "/Users/u/Applications/Calorivo.app",
        .isInHomeFolder = true,
        .isOnDiskImage = true,
        .doesDestinationExist = true,
        .route = MoveRoute::plain,
        .question = {.message = "Move to Applications folder in your Home folder?",
                     .informativeText = "Would you like Calorivo to move itself to the Applications folder?",
                     .firstButton = {"Move to Applications Folder", ""},
                     .secondButton = {"Do Not Move", "\x1B"},
                     .suppressionButton = SuppressionButton{true, ControlSize::small, ControlSize::small}}};
    EXPECT_EQ(planMove(configurationOf("/Users/u/Desktop/Calorivo.app"), facts, unchanged), expected);
}

TEST(MovePlan, AsksWithACheckBoxOnlyAfterMacOS10_4) {
    const auto hasCheckBox = [](double version) {
        return planMove(configurationOf("/x/Calorivo.app", version), writable, unchanged)
            .question.suppressionButton.has_value();
    };
    EXPECT_FALSE(hasCheckBox(743));
    EXPECT_FALSE(hasCheckBox(onMacOS10_4));
    EXPECT_TRUE(hasCheckBox(825));
    EXPECT_TRUE(hasCheckBox(later));
}

TEST(MovePlan, SaysWhatTheMoveNeedsOrWhatItIsGoodFor) {
    constexpr std::string_view plain = "Would you like Calorivo to move itself to the Applications folder?";
    constexpr std::string_view password = " Note that this will require an administrator password.";
    constexpr std::string_view downloads = " This will keep your Downloads folder uncluttered.";
    struct Row {
        std::string bundlePath;
        double appKitVersion;
        bool isInstallFolderWritable;
        std::string_view note;
    };
    const Row rows[] = {
        {"/Users/u/Desktop/Calorivo.app", later, true, ""},
        {"/Users/u/Downloads/Calorivo.app", later, true, downloads},
        {"/Users/u/Downloads/deep/Calorivo.app", later, true, downloads},
        {"/Users/u/Downloads/Calorivo.app", later, false, password},
        {"/Users/u/Desktop/Calorivo.app", later, false, password},
        {"/Volumes/Disk/Downloads/Calorivo.app", later, true, ""},
        // Older systems do not tell where downloads go: the name of the parent folder does.
        {"/Volumes/Disk/Downloads/Calorivo.app", onMacOS10_4, true, downloads},
        {"/Users/u/Downloads/deep/Calorivo.app", onMacOS10_4, true, ""},
        {"/Users/u/Downloads/Calorivo.app", onMacOS10_4, false, password},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.bundlePath);
        MoveFacts facts = writable;
        facts.isInstallFolderWritable = row.isInstallFolderWritable;
        EXPECT_EQ(planMove(configurationOf(row.bundlePath, row.appKitVersion), facts, unchanged)
                      .question.informativeText,
                  std::string(plain).append(row.note));
    }
}

TEST(MovePlan, AsksInTheUsersLanguage) {
    const auto bracketed = [](std::string_view key) { return '<' + std::string(key) + '>'; };
    MoveFacts facts = writable;
    facts.isInstallFolderWritable = false;
    const SuppressibleAlert question =
        planMove(configurationOf("/x/Calorivo.app"), facts, bracketed).question;
    EXPECT_EQ(question.message, "<Move to Applications>");
    EXPECT_EQ(question.informativeText,
              "<Would you like Calorivo to move itself to the Applications folder?> "
              "<Note that this will require an administrator password.>");
    EXPECT_EQ(question.firstButton, (AlertButton{"<Move to Applications Folder>", ""}));
    EXPECT_EQ(question.secondButton, (AlertButton{"<Do Not Move>", "\x1B"}));
}

TEST(MovePlan, IsSafeWithAuthorizationOnlyForABundle) {
    const MoveConfiguration configuration = configurationOf("/x/Calorivo.app");
    struct Row {
        std::string bundlePath;
        std::string destination;
        bool isSafe;
    };
    const Row rows[] = {{"/x/Calorivo.app", "/Applications/Calorivo.app", true},
                        {"/x/Calorivo", "/Applications/Calorivo", false},
                        {"/x/Calorivo.app", "/Applications/Calorivo.app/", false},
                        {"/x/Calorivo.app", "/Applications", false},
                        {"/x/Calorivo.app", "", false},
                        {"/x/Calorivo.app", " \t", false},
                        {" \n ", "/Applications/Calorivo.app", false},
                        {"", "/Applications/Calorivo.app", false}};
    for (const Row& row : rows) {
        MovePlan plan;
        plan.bundlePath = row.bundlePath;
        plan.destination = row.destination;
        EXPECT_EQ(isSafeWithAuthorization(configuration, plan), row.isSafe)
            << row.bundlePath << " to " << row.destination;
    }
}

MovePlan planFrom(const std::string& bundlePath) {
    return planMove(configurationOf(bundlePath), writable, unchanged);
}

TEST(MovePlan, RemovesAndCopiesWithArgumentsOfTheirOwn) {
    const MovePlan plan = planFrom("/x/a'; touch pwned; '.app");
    EXPECT_EQ(removeCommand(plan), (MoveCommand{"/bin/rm", {"-rf", "/Applications/a'; touch pwned; '.app"}}));
    EXPECT_EQ(copyCommand(plan),
              (MoveCommand{"/bin/cp",
                           {"-pR", "/x/a'; touch pwned; '.app", "/Applications/a'; touch pwned; '.app"}}));
}

TEST(MovePlan, SearchesForARunningCopy) {
    EXPECT_EQ(runningSearch(planFrom("/x/Calorivo.app")),
              (RunningSearch{"/Applications/Calorivo.app",
                             "ps ax -o comm | grep '/Applications/Calorivo.app/' | grep -v grep "
                             ">/dev/null"}));
}

TEST(MovePlan, OpensTheNewCopyAfterTheMarkOfADownloadIsTakenOff) {
    struct Row {
        double appKitVersion;
        QuarantineRemoval removal;
        std::string command;
    };
    const Row rows[] = {
        {later, QuarantineRemoval::recursive,
         "(while [ `ps -p 4711 | wc -l` -gt 1 ]; do sleep 0.1; done; /usr/bin/xattr -d -r "
         "com.apple.quarantine '/Applications/Calorivo.app'; open '/Applications/Calorivo.app') &"},
        {onMacOS10_5, QuarantineRemoval::topOnly,
         "(while [ `ps -p 4711 | wc -l` -gt 1 ]; do sleep 0.1; done; /usr/bin/xattr -d "
         "com.apple.quarantine '/Applications/Calorivo.app'; open '/Applications/Calorivo.app') &"},
        {onMacOS10_4, QuarantineRemoval::none,
         "(while [ `ps -p 4711 | wc -l` -gt 1 ]; do sleep 0.1; done;  open "
         "'/Applications/Calorivo.app') &"},
    };
    for (const Row& row : rows)
        EXPECT_EQ(openAfterExit(configurationOf("/x/Calorivo.app", row.appKitVersion),
                                planFrom("/x/Calorivo.app"), 4711),
                  (OpenAfterExit{4711, row.removal, "/Applications/Calorivo.app", row.command}));
}

TEST(MovePlan, GivesTheDiskImageBackAfterFiveSeconds) {
    EXPECT_EQ(detachLater(planFrom("/Volumes/Calorivo 3/Calorivo.app")),
              (DetachLater{"/Volumes/Calorivo 3", "(sleep 5 && hdiutil detach '/Volumes/Calorivo 3') &"}));
}

TEST(MovePlan, TakesOtherSystemsBundlesAsTheyAreConfigured) {
    MoveConfiguration configuration = configurationOf("/home/u/Calorivo.AppImage");
    configuration.programExtensions = {"AppImage"};
    configuration.bundleEndings = {".AppImage", "/calorivo-3.1"};
    configuration.diskImageFolders = {"/media/", "/run/media/"};
    EXPECT_EQ(
        chooseInstallFolder(configuration,
                            {"/home/u/Applications", std::vector<std::string>{"Other.AppImage"}, {"/opt"}}),
        (InstallFolder{"/home/u/Applications", true}));
    MovePlan plan = planMove(configuration, writable, unchanged);
    EXPECT_TRUE(isSafeWithAuthorization(configuration, plan));
    plan.destination = "/opt/calorivo-3.1";
    EXPECT_TRUE(isSafeWithAuthorization(configuration, plan));
    plan.destination = "/opt/calorivo-3.2";
    EXPECT_FALSE(isSafeWithAuthorization(configuration, plan));
    configuration.bundlePath = "/run/media/u/stick/Calorivo.AppImage";
    EXPECT_TRUE(isOnDiskImage(configuration, false));
}

}  // namespace
}  // namespace calorivo
