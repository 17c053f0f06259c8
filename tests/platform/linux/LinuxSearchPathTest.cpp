#include "platform/linux/LinuxSearchPath.h"

#include "app/MovePlan.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

using Paths = std::vector<std::string>;
constexpr std::int32_t user = SearchPathDomainMask::user;
constexpr std::int32_t local = SearchPathDomainMask::local;
constexpr std::int32_t all = SearchPathDomainMask::all;

const LinuxSearchPath searchPath({"/home/u", "/home/u/.local/share", "/home/u/Herunterladen"});

TEST(LinuxSearchPath, TellsTheUsersAndTheMachinesFolders) {
    EXPECT_EQ(searchPath.directoriesInDomains(1, user), Paths{"/home/u/Applications"});
    EXPECT_EQ(searchPath.directoriesInDomains(1, local), Paths{"/opt"});
    EXPECT_EQ(searchPath.directoriesInDomains(1, all), (Paths{"/home/u/Applications", "/opt"}));
    EXPECT_EQ(searchPath.directoriesInDomains(14, user), Paths{"/home/u/.local/share"});
    EXPECT_EQ(searchPath.directoriesInDomains(14, local), Paths{});
    EXPECT_EQ(searchPath.directoriesInDomains(15, all), Paths{"/home/u/Herunterladen"});
    EXPECT_EQ(searchPath.directoriesInDomains(9, all), Paths{});
    EXPECT_EQ(searchPath.directoriesInDomains(1, 0), Paths{});
}

TEST(LinuxSearchPath, TakesOtherFoldersForTheMachinesPrograms) {
    const LinuxSearchPath other({"/home/u", "", "", {"/opt", "/home/u/Applications"}});
    EXPECT_EQ(other.directoriesInDomains(1, local), (Paths{"/opt", "/home/u/Applications"}));
}

TEST(LinuxSearchPath, HasNoFoldersOfAUserWithoutAHome) {
    const LinuxSearchPath homeless({});
    EXPECT_EQ(homeless.directoriesInDomains(1, all), Paths{"/opt"});
    EXPECT_EQ(homeless.directoriesInDomains(14, all), Paths{});
    EXPECT_EQ(homeless.directoriesInDomains(15, all), Paths{});
}

TEST(LinuxSearchPath, KnowsWhatAPackageInstalled) {
    const Paths folders = searchPath.directoriesInDomains(100, all);
    for (const std::string path :
         {"/usr/bin/calorivo", "/usr/local/bin/calorivo", "/opt/calorivo/bin/calorivo", "/snap/calorivo/3",
          "/app/bin/calorivo", "/nix/store/x-calorivo/bin/calorivo", "/home/u/.local/bin/calorivo",
          "/home/u/Applications/Calorivo.AppImage"})
        EXPECT_TRUE(isInApplicationsFolder(path, folders)) << path;
    for (const std::string path :
         {"/home/u/Herunterladen/Calorivo.AppImage", "/apple/Calorivo.AppImage", "/optional/calorivo",
          "/home/u/Applications2/Calorivo.AppImage", "/media/u/stick/Calorivo.AppImage"})
        EXPECT_FALSE(isInApplicationsFolder(path, folders)) << path;
}

}  // namespace
}  // namespace calorivo
