#include "app/DirectoryLocations.h"

#include "app/MemoryFiles.h"
#include "support/RecordingPlatform.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace calorivo {
namespace {

constexpr std::int32_t support = 14;
constexpr std::int32_t user = 1;

struct Fixture {
    test::Calls calls;
    test::FixedSearchPath searchPath;
    test::MemoryOperations files{calls};
    test::RecordingBundle bundle{calls};
    test::RecordingSystemLog log{calls};
    test::FakeFileManager fileManager;
    StringsTables strings{fileManager, "/strings", {"de"}};
    DirectoryLocations locations{searchPath, files, bundle, strings, log};

    Fixture() {
        bundle.information["CFBundleExecutable"] = "calorivo";
        calls.clear();
    }
    std::optional<std::string> find(const std::optional<std::string>& component,
                                    std::optional<Error>* error) {
        return locations.findOrCreateDirectoryInDomainAppendPathComponentError(support, user, component,
                                                                               error);
    }
};

const Error full{std::string(posixErrorDomain),
                 ENOSPC,
                 {{std::string(localizedDescriptionKey), "No space left on device"}}};

TEST(DirectoryLocations, CreatesTheFirstFolderFoundWithItsComponent) {
    Fixture fixture;
    fixture.searchPath.folders[{support, user}] = {"/home/u/data", "/home/u/other"};
    std::optional<Error> error = full;
    EXPECT_EQ(fixture.find("part", &error), "/home/u/data/part");
    EXPECT_EQ(error, std::nullopt);
    EXPECT_EQ(fixture.find(std::nullopt, nullptr), "/home/u/data");
    EXPECT_EQ(fixture.calls,
              (test::Calls{"createDirectory /home/u/data/part", "createDirectory /home/u/data"}));
}

TEST(DirectoryLocations, SaysThatThereIsNoPathForAFolder) {
    Fixture fixture;
    fixture.fileManager.add("/strings/de.lproj/Errors.strings",
                            "\"No path found for directory in domain.\" = \"Kein Pfad.\";");
    std::optional<Error> error;
    EXPECT_EQ(fixture.find("part", &error), std::nullopt);
    EXPECT_EQ(error, (Error{"DirectoryLocationDomain",
                            0,
                            {{"NSLocalizedDescription", "Kein Pfad."},
                             {"NSSearchPathDirectory", 14},
                             {"NSSearchPathDomainMask", 1}}}));
    EXPECT_EQ(fixture.find("part", nullptr), std::nullopt);
    EXPECT_EQ(fixture.calls, test::Calls{});
}

TEST(DirectoryLocations, PassesOnWhyAFolderCannotBeCreated) {
    Fixture fixture;
    fixture.searchPath.folders[{support, user}] = {"/home/u/data"};
    fixture.files.creationError = full;
    std::optional<Error> error;
    EXPECT_EQ(fixture.find("part", &error), std::nullopt);
    EXPECT_EQ(error, full);
    EXPECT_EQ(fixture.find("part", nullptr), std::nullopt);
}

TEST(DirectoryLocations, NamesTheSupportFolderForTheProgram) {
    Fixture fixture;
    fixture.searchPath.folders[{support, user}] = {"/home/u/data"};
    EXPECT_EQ(fixture.locations.applicationSupportDirectory(), "/home/u/data/calorivo");
    EXPECT_EQ(fixture.calls.back(), "createDirectory /home/u/data/calorivo");
}

TEST(DirectoryLocations, LogsThatThereIsNoSupportFolder) {
    Fixture fixture;
    EXPECT_EQ(fixture.locations.applicationSupportDirectory(), std::nullopt);
    EXPECT_EQ(fixture.calls.back(),
              "log Unable to find or create application support directory:\n"
              "Error Domain=DirectoryLocationDomain Code=0 \"No path found for directory in domain.\"");
    fixture.searchPath.folders[{support, user}] = {"/home/u/data"};
    fixture.files.creationError = full;
    EXPECT_EQ(fixture.locations.applicationSupportDirectory(), std::nullopt);
    EXPECT_EQ(fixture.calls.back(),
              "log Unable to find or create application support directory:\n"
              "Error Domain=NSPOSIXErrorDomain Code=28 \"No space left on device\"");
}

}  // namespace
}  // namespace calorivo
