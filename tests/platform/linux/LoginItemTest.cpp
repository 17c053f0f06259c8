#include "platform/linux/LoginItem.h"

#include "platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace calorivo {

void PrintTo(const LoginItemPlaces& places, std::ostream* out) {
    *out << "configuration " << places.configurationFolder << ", program " << places.program << ", system";
    for (const std::string& folder : places.systemFolders) *out << ' ' << folder;
}

namespace {

constexpr const char* identifier = "org.example.calorivo.helper";

Environment environment(std::map<std::string, std::string> variables) {
    return [variables = std::move(variables)](const char* name) {
        const auto found = variables.find(name);
        return found == variables.end() ? std::nullopt : std::optional(found->second);
    };
}

/// A home with a program in it.
struct Home {
    Home() { std::filesystem::permissions(folder.write("program", ""), std::filesystem::perms::owner_all); }
    [[nodiscard]] LoginItem item() const {
        return LoginItem({folder.path("config"), {folder.path("first"), folder.path("etc")}, program});
    }
    /// Every file below the folder, with the permissions of folders.
    [[nodiscard]] std::vector<std::string> files() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(folder.path()))
            names.push_back(entry.path().lexically_relative(folder.path()).string());
        std::sort(names.begin(), names.end());
        return names;
    }
    [[nodiscard]] std::filesystem::path file() const {
        return folder.path("config/autostart/org.example.calorivo.helper.desktop");
    }
    [[nodiscard]] std::string text() const {
        return folder.read("config/autostart/org.example.calorivo.helper.desktop");
    }
    void write(std::string_view text) const {
        std::filesystem::create_directories(folder.path("config/autostart"));
        folder.write("config/autostart/org.example.calorivo.helper.desktop", text);
    }
    /// Sets the file's time to the beginning of the epoch; whoever writes it changes that.
    void age() const { std::filesystem::last_write_time(file(), {}); }
    [[nodiscard]] bool isAged() const {
        return std::filesystem::last_write_time(file()) == std::filesystem::file_time_type{};
    }

    TemporaryFolder folder;
    std::string program = folder.path("program");
};

TEST(LoginItem, EnablingWritesAnEntryThatStartsTheProgram) {
    const Home home;
    ASSERT_TRUE(home.item().SMLoginItemSetEnabled(identifier, true));
    EXPECT_EQ(home.text(), "[Desktop Entry]\nType=Application\nName=Calorivo\nExec=\"" + home.program +
                               "\" --login\nTryExec=" + home.program +
                               "\nIcon=calorivo\nX-GNOME-Autostart-enabled=true\n");
    EXPECT_EQ(home.files(),
              (std::vector<std::string>{"config", "config/autostart",
                                        "config/autostart/org.example.calorivo.helper.desktop", "program"}));
    for (const char* folder : {"config", "config/autostart"})
        EXPECT_EQ(std::filesystem::status(home.folder.path(folder)).permissions(),
                  std::filesystem::perms::owner_all);
}

TEST(LoginItem, DisablingRemovesTheEntry) {
    const Home home;
    ASSERT_TRUE(home.item().SMLoginItemSetEnabled(identifier, true));
    EXPECT_TRUE(home.item().SMLoginItemSetEnabled(identifier, false));
    EXPECT_EQ(home.files(), (std::vector<std::string>{"config", "config/autostart", "program"}));
}

TEST(LoginItem, DisablingWhatWasNeverEnabledTouchesNothing) {
    const Home home;
    EXPECT_TRUE(home.item().SMLoginItemSetEnabled(identifier, false));
    EXPECT_EQ(home.files(), std::vector<std::string>{"program"});
    EXPECT_TRUE(LoginItem({"", {}, home.program}).SMLoginItemSetEnabled(identifier, false));
}

TEST(LoginItem, AnEntryThatSaysItAlreadyIsLeftAlone) {
    const Home home;
    ASSERT_TRUE(home.item().SMLoginItemSetEnabled(identifier, true));
    home.age();
    EXPECT_TRUE(home.item().SMLoginItemSetEnabled(identifier, true));
    EXPECT_TRUE(home.isAged());
}

TEST(LoginItem, LinesThatTheUserAddedStay) {
    const Home home;
    home.write(loginItemEntry(home.program) + "X-GNOME-Autostart-Delay=10\n");
    home.age();
    EXPECT_TRUE(home.item().SMLoginItemSetEnabled(identifier, true));
    EXPECT_TRUE(home.isAged());
}

TEST(LoginItem, AnEntryThatDoesNotStartTheProgramIsWrittenAnew) {
    const Home home;
    const std::string entry = loginItemEntry(home.program);
    for (const std::string& text :
         {std::string(), std::string("nonsense"), loginItemEntry("/old/calorivo"), entry + "Hidden=true\n",
          entry + "OnlyShowIn=Other;\n", entry + "NotShowIn=This;\n", entry.substr(0, entry.size() / 2)}) {
        SCOPED_TRACE(text);
        home.write(text);
        EXPECT_TRUE(home.item().SMLoginItemSetEnabled(identifier, true));
        EXPECT_EQ(home.text(), entry);
    }
}

TEST(LoginItem, AnItemOfTheSystemIsHiddenInsteadOfRemoved) {
    const Home home;
    std::filesystem::create_directories(home.folder.path("etc/autostart"));
    home.folder.write("etc/autostart/org.example.calorivo.helper.desktop", "[Desktop Entry]\n");
    EXPECT_TRUE(home.item().SMLoginItemSetEnabled(identifier, false));
    EXPECT_EQ(home.text(), "[Desktop Entry]\nType=Application\nName=Calorivo\nHidden=true\n");
    home.age();
    EXPECT_TRUE(home.item().SMLoginItemSetEnabled(identifier, false));
    EXPECT_TRUE(home.isAged());
    EXPECT_TRUE(home.item().SMLoginItemSetEnabled(identifier, true));
    EXPECT_EQ(home.text(), loginItemEntry(home.program));
}

TEST(LoginItem, SaysThatItFailed) {
    const Home home;
    EXPECT_FALSE(LoginItem({"", {}, home.program}).SMLoginItemSetEnabled(identifier, true));
    // A file in the place of a folder, also for those whom permissions do not stop.
    const std::string blocked = home.folder.write("blocked", "");
    EXPECT_FALSE(LoginItem({blocked, {}, home.program}).SMLoginItemSetEnabled(identifier, true));
    EXPECT_TRUE(LoginItem({blocked, {}, home.program}).SMLoginItemSetEnabled(identifier, false));
    std::filesystem::create_directories(home.file() / "folder");
    EXPECT_FALSE(home.item().SMLoginItemSetEnabled(identifier, true));
    EXPECT_FALSE(home.item().SMLoginItemSetEnabled(identifier, false));
}

TEST(LoginItem, DoesNotEnableAProgramThatCannotStart) {
    const Home home;
    for (const std::string& program : {std::string("/nowhere/calorivo"), std::string("calorivo"),
                                       std::string(), home.folder.write("text", "")}) {
        SCOPED_TRACE(program);
        EXPECT_FALSE(
            LoginItem({home.folder.path("config"), {}, program}).SMLoginItemSetEnabled(identifier, true));
    }
    EXPECT_EQ(home.files(), (std::vector<std::string>{"program", "text"}));
}

TEST(LoginItem, RefusesIdentifiersThatAreNoFileNames) {
    const Home home;
    using namespace std::string_view_literals;
    for (const std::string_view name : {""sv, "a/b"sv, ".."sv, ".hidden"sv, "a\0b"sv}) {
        EXPECT_FALSE(home.item().SMLoginItemSetEnabled(name, true));
        EXPECT_FALSE(home.item().SMLoginItemSetEnabled(name, false));
    }
    EXPECT_EQ(home.files(), std::vector<std::string>{"program"});
}

TEST(LoginItem, QuotesHostilePaths) {
    struct Row {
        std::string program;
        std::string exec;
        std::string tryExec;
    };
    const Row rows[] = {
        {"/opt/a b/calorivo", R"("/opt/a b/calorivo" --login)", "/opt/a b/calorivo"},
        {"/a\"b", R"("/a\\"b" --login)", "/a\"b"},
        {"/a`b", R"("/a\\`b" --login)", "/a`b"},
        {"/$HOME", R"("/\\$HOME" --login)", "/$HOME"},
        {"/a\\b", R"("/a\\\\b" --login)", R"(/a\\b)"},
        {"/50%f", R"(/bin/sh -c "exec \\"\\$0\\" --login" "/50%%f")", "/50%f"},
        {"/a\nb\tc", R"("/a\nb\tc" --login)", R"(/a\nb\tc)"},
        {"/\xC3\xBC", "\"/\xC3\xBC\" --login", "/\xC3\xBC"},
        {"/a=b", R"(/bin/sh -c "exec \\"\\$0\\" --login" "/a=b")", "/a=b"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(loginItemEntry(row.program),
                  "[Desktop Entry]\nType=Application\nName=Calorivo\nExec=" + row.exec +
                      "\nTryExec=" + row.tryExec + "\nIcon=calorivo\nX-GNOME-Autostart-enabled=true\n");
    }
    EXPECT_EQ(loginItemEntry("/a\xFF"), "");
    EXPECT_EQ(loginItemEntry(std::string("/a\0b", 4)), "");
}

TEST(LoginItem, FindsItsPlacesInTheEnvironment) {
    EXPECT_EQ(loginItemPlaces(environment({{"HOME", "/home/ada"}}), "/usr/bin/calorivo"),
              (LoginItemPlaces{"/home/ada/.config", {"/etc/xdg"}, "/usr/bin/calorivo"}));
    EXPECT_EQ(loginItemPlaces(environment({{"HOME", "/home/ada"},
                                           {"XDG_CONFIG_HOME", "/cfg"},
                                           {"XDG_CONFIG_DIRS", "/a:b::/c"},
                                           {"APPIMAGE", "/home/ada/Calorivo.AppImage"}}),
                              "/tmp/.mount_x/calorivo"),
              (LoginItemPlaces{"/cfg", {"/a", "/c"}, "/home/ada/Calorivo.AppImage"}));
    EXPECT_EQ(loginItemPlaces(environment({{"XDG_CONFIG_HOME", "cfg"}, {"APPIMAGE", "relative"}}), "/p"),
              (LoginItemPlaces{"", {"/etc/xdg"}, "/p"}));
}

}  // namespace
}  // namespace calorivo
