#include "platform/linux/RelaunchBundle.h"

#include "platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>

namespace calorivo {
namespace {

namespace fs = std::filesystem;

Environment environment(std::map<std::string, std::string> variables) {
    return [variables = std::move(variables)](const char* name) -> std::optional<std::string> {
        const auto found = variables.find(name);
        return found != variables.end() ? std::optional(found->second) : std::nullopt;
    };
}

TEST(ProgramBundle, IsTheAppImageThatTheProgramRunsFrom) {
    const TemporaryFolder folder;
    const std::string image = folder.write("Calorivo.AppImage", "");
    const std::string mounted = "/tmp/.mount_Calori1";
    const auto bundle =
        programBundle(environment({{"APPIMAGE", image}, {"APPDIR", mounted}}), mounted + "/usr/bin/calorivo");
    EXPECT_EQ(bundle, ProgramBundle{image});
    EXPECT_EQ(bundle->executableAt("/opt/Calorivo.AppImage"), "/opt/Calorivo.AppImage");
}

// A terminal that itself runs from an AppImage hands its variables on.
TEST(ProgramBundle, IsNotAnotherProgramsAppImage) {
    const TemporaryFolder folder;
    const std::string image = folder.write("Terminal.AppImage", "");
    const std::string mounted = "/tmp/.mount_Termin1";
    const Environment inherited = environment({{"APPIMAGE", image}, {"APPDIR", mounted}});
    EXPECT_EQ(programBundle(inherited, "/usr/bin/calorivo"), std::nullopt);
    EXPECT_EQ(programBundle(inherited, "/tmp/.mount_Termin12/usr/bin/calorivo"), std::nullopt);
    EXPECT_EQ(programBundle(environment({{"APPIMAGE", folder.path("gone")}, {"APPDIR", mounted}}),
                            mounted + "/usr/bin/calorivo"),
              std::nullopt);
    EXPECT_EQ(programBundle(environment({{"APPIMAGE", "Relative.AppImage"}, {"APPDIR", mounted}}),
                            mounted + "/usr/bin/calorivo"),
              std::nullopt);
}

TEST(ProgramBundle, IsTheFolderThatSaysItIsPortable) {
    const TemporaryFolder folder;
    fs::create_directories(folder.path("calorivo-3.1/bin"));
    const std::string executable = folder.write("calorivo-3.1/bin/calorivo", "");
    EXPECT_EQ(programBundle(environment({}), executable), std::nullopt);
    folder.write("calorivo-3.1/portable", "");
    const auto bundle = programBundle(environment({}), executable);
    EXPECT_EQ(bundle, (ProgramBundle{folder.path("calorivo-3.1"), "bin/calorivo"}));
    EXPECT_EQ(bundle->executableAt("/opt/calorivo-3.1"), "/opt/calorivo-3.1/bin/calorivo");
    EXPECT_EQ(programBundle(environment({}), folder.path("calorivo-3.1/lib/calorivo")), std::nullopt);
    EXPECT_EQ(programBundle(environment({}), ""), std::nullopt);
}

}  // namespace
}  // namespace calorivo
