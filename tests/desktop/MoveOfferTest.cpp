#include "desktop/MoveOffer.h"

#include "platform/linux/LinuxFileManager.h"
#include "platform/linux/TemporaryFolder.h"
#include "support/RecordingPlatform.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>

#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace calorivo {
namespace {

namespace fs = std::filesystem;
using Paths = std::vector<std::string>;

class MoveOfferTest : public testing::Test {
  protected:
    MoveOfferTest() {
        for (const char* name : {"home/Herunterladen", "home/.config", "mounted/bin", "machine"})
            fs::create_directories(root + '/' + name);
        folder.write("home/.config/user-dirs.dirs", "XDG_DOWNLOAD_DIR=\"$HOME/Herunterladen\"\n");
        variables = {{"HOME", root + "/home"}, {"LANGUAGE", "fr:de"}, {"LANG", "de_AT.UTF-8"}};
    }
    /// The program runs from this image.
    void runFromImage(const std::string& name) {
        variables["APPIMAGE"] = folder.write(name, "");
        variables["APPDIR"] = root + "/mounted";
        executable = root + "/mounted/bin/calorivo";
    }
    /// The program runs from this unpacked archive.
    void runFromFolder(const std::string& name) { executable = portableFolder(name) + "/bin/calorivo"; }
    std::string portableFolder(const std::string& name) {
        fs::create_directories(root + '/' + name + "/bin");
        folder.write(name + "/portable", "");
        folder.write(name + "/bin/calorivo", "");
        return root + '/' + name;
    }
    [[nodiscard]] std::optional<MovePlaces> places(const std::string& machineFolder) const {
        const Environment environment = [this](const char* name) -> std::optional<std::string> {
            const auto found = variables.find(name);
            return found != variables.end() ? std::optional(found->second) : std::nullopt;
        };
        return movePlaces(environment, executable, root + "/data", machineFolder);
    }
    [[nodiscard]] Paths applications(const std::string& machineFolder) const {
        const auto found = places(machineFolder);
        return found ? found->folders.applications : Paths{};
    }

    const TemporaryFolder folder;
    const std::string root = fs::canonical(folder.path()).string();
    const std::string writable = root + "/machine";
    /// Nobody can write there, not even root.
    const std::string missing = root + "/missing";
    std::map<std::string, std::string> variables;
    std::string executable = "/usr/bin/calorivo";
};

TEST_F(MoveOfferTest, IsOfNothingForAProgramThatWasInstalledOrBuilt) {
    EXPECT_EQ(places(writable), std::nullopt);
    executable = root + "/build/bin/calorivo";
    EXPECT_EQ(places(writable), std::nullopt);
}

TEST_F(MoveOfferTest, KnowsThePlacesAroundAnImage) {
    runFromImage("home/Herunterladen/Calorivo.AppImage");
    const auto found = places(writable);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->bundle, ProgramBundle{root + "/home/Herunterladen/Calorivo.AppImage"});
    EXPECT_EQ(found->folders.home, root + "/home");
    EXPECT_EQ(found->folders.data, root + "/home/.local/share");
    EXPECT_EQ(found->folders.downloads, root + "/home/Herunterladen");
    EXPECT_EQ(found->folders.applications, Paths{writable});
    EXPECT_EQ(found->strings, root + "/data/strings");
    EXPECT_EQ(found->languages, (Paths{"fr", "de", "en"}));
}

TEST_F(MoveOfferTest, TakesTheUsersOwnFolderWhereAPasswordWouldBeNeeded) {
    runFromImage("home/Herunterladen/Calorivo.AppImage");
    EXPECT_EQ(applications(missing), (Paths{missing, root + "/home/Applications"}));
    EXPECT_FALSE(fs::exists(root + "/home/Applications"));
    variables["HOME"] = root + "/nowhere";
    EXPECT_EQ(applications(missing), Paths{missing});
}

TEST_F(MoveOfferTest, IsOfNothingWithoutATrash) {
    runFromImage("Calorivo.AppImage");
    variables.erase("HOME");
    EXPECT_EQ(places(writable), std::nullopt);
    variables["XDG_DATA_HOME"] = root + "/data";
    EXPECT_EQ(applications(missing), Paths{missing});
}

TEST_F(MoveOfferTest, KnowsNoFolderForDownloadsWhereItWasRemoved) {
    folder.write("home/.config/user-dirs.dirs", "XDG_DOWNLOAD_DIR=\"$HOME/\"\n");
    runFromImage("home/Calorivo.AppImage");
    const auto found = places(writable);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->folders.downloads, "");
}

TEST_F(MoveOfferTest, ResolvesTheLinksInTheUsersFolders) {
    fs::create_directory_symlink(root + "/home", root + "/linked");
    variables["HOME"] = root + "/linked";
    variables["XDG_DATA_HOME"] = root + "/linked/data";
    runFromImage("home/Herunterladen/Calorivo.AppImage");
    const auto found = places(missing);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->folders.home, root + "/home");
    EXPECT_EQ(found->folders.data, root + "/home/data");
    EXPECT_EQ(found->folders.downloads, root + "/home/Herunterladen");
}

TEST_F(MoveOfferTest, ReplacesAFolderOnlyByAnotherOfThisProgram) {
    runFromFolder("home/Herunterladen/calorivo-3.1");
    EXPECT_TRUE(places(writable));
    portableFolder("machine/calorivo-3.1");
    EXPECT_TRUE(places(writable));
    fs::remove(writable + "/calorivo-3.1/portable");
    EXPECT_EQ(places(writable), std::nullopt);
    fs::remove_all(writable + "/calorivo-3.1");
    fs::create_directories(root + "/home/Applications/calorivo-3.1");
    EXPECT_EQ(places(writable), std::nullopt);
}

/// The offer, with a button pressed as soon as it asks.
struct Offered {
    Offered(MovePlaces places, const QString& button) {
        QTimer::singleShot(0, qApp, [this, button] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr) return;
            message = box->text().toStdString();
            informativeText = box->informativeText().toStdString();
            box->findChild<QPushButton*>(button)->click();
        });
        MoveOffer offer({userDefaults, log, files, alertPanel, [] {}}, std::move(places));
        offer.offerToMove();
    }
    test::Calls calls;
    test::RecordingUserDefaults userDefaults{calls};
    test::RecordingSystemLog log{calls};
    test::RecordingAlertPanel alertPanel{calls};
    LinuxFileManager files;
    std::string message;
    std::string informativeText;
};

TEST_F(MoveOfferTest, AsksInTheUsersLanguageAndLeavesEverythingWhenDeclined) {
    runFromImage("home/Herunterladen/Calorivo.AppImage");
    auto found = places(missing);
    ASSERT_TRUE(found);
    found->strings = CALORIVO_SOURCE_DIR "/data/strings";
    found->languages = {"de", "en"};
    const Offered offered(*found, QStringLiteral("secondButton"));
    EXPECT_EQ(offered.message, "In den Programmordner Ihres persönlichen Ordners verschieben?");
    EXPECT_EQ(offered.informativeText,
              "Soll Calorivo sich selbst in den Programmordner verschieben? So bleibt Ihr Ordner „Downloads“ "
              "übersichtlich.");
    EXPECT_TRUE(offered.userDefaults.stored.at("moveToApplicationsFolderAlertSuppress").boolValue());
    EXPECT_TRUE(fs::exists(found->bundle.path));
    EXPECT_FALSE(fs::exists(root + "/home/Applications"));
}

TEST_F(MoveOfferTest, SaysThatTheMachinesFolderNeedsAPassword) {
    runFromImage("Calorivo.AppImage");
    auto found = places(writable);
    ASSERT_TRUE(found);
    found->folders.applications = {"/proc/sys"};  // where nobody makes files
    const Offered offered(*found, QStringLiteral("secondButton"));
    EXPECT_EQ(offered.message, "Move to Applications");
    EXPECT_EQ(offered.informativeText,
              "Would you like Calorivo to move itself to the Applications folder? Note that this will "
              "require an administrator password.");
}

}  // namespace
}  // namespace calorivo
