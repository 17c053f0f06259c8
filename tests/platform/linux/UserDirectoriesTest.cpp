#include "platform/linux/UserDirectories.h"

#include "platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <ostream>
#include <string>

namespace calorivo {

void PrintTo(const UserDirectories& directories, std::ostream* out) {
    *out << "documents " << directories.documents << ", downloads " << directories.downloads << ", desktop "
         << directories.desktop;
}

namespace {

const std::string home = "/home/ada";

Environment environment(std::map<std::string, std::string> variables) {
    return [variables = std::move(variables)](const char* name) {
        const auto found = variables.find(name);
        return found == variables.end() ? std::nullopt : std::optional(found->second);
    };
}

/// The documents folder by the value on the file's only line.
std::string documentsFor(const std::string& value) {
    return userDirectories("XDG_DOCUMENTS_DIR=" + value + "\n", home).documents;
}

TEST(UserDirectories, HaveTheNamesThatTheFileGivesThem) {
    EXPECT_EQ(userDirectories("# This file is written by the desktop\n"
                              "#XDG_DESKTOP_DIR=\"$HOME/comment\"\n"
                              "XDG_DESKTOP_DIR=\"$HOME/Schreibtisch\"\n"
                              "XDG_DOWNLOAD_DIR=\"/data/down loads\"\n"
                              "XDG_TEMPLATES_DIR=\"$HOME/Vorlagen\"\n"
                              "XDG_DOCUMENTS_DIR=\"$HOME/Dokumente\"",
                              home),
              (UserDirectories{"/home/ada/Dokumente", "/data/down loads", "/home/ada/Schreibtisch"}));
}

TEST(UserDirectories, HaveEnglishNamesWhereNothingIsSaid) {
    EXPECT_EQ(userDirectories("", home),
              (UserDirectories{"/home/ada/Documents", "/home/ada/Downloads", "/home/ada/Desktop"}));
}

TEST(UserDirectories, AreReadWhateverTheLineLooksLike) {
    struct Row {
        std::string value;
        std::string folder;
    };
    const std::string standard = "/home/ada/Documents";
    const Row rows[] = {
        {"\"$HOME/\"", home},  // removed by the user
        {"\"$HOME\"", home},
        {"\"$HOME/a/b/\"", "/home/ada/a/b"},
        {"\"$HOME/a\\\"b\\\\c\"", "/home/ada/a\"b\\c"},
        {"  \"$HOME/a\"  # why", "/home/ada/a"},
        {"\"/\"", "/"},
        {"\"$HOMES/a\"", standard},
        {"\"Documents\"", standard},
        {"\"\"", standard},
        {"\"$HOME/open", standard},
        {"$HOME/bare", standard},
        {"", standard},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_EQ(documentsFor(row.value), row.folder);
    }
    EXPECT_EQ(userDirectories("\t XDG_DOCUMENTS_DIR = \"/a\"\nXDG_DOCUMENTS_DIR=\"/b\"\n", home).documents,
              "/b");
}

TEST(UserDirectories, AreSoughtInTheConfigurationFolder) {
    const TemporaryFolder folder;
    folder.write("user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"$HOME/Papiere\"\n");
    EXPECT_EQ(userDirectories(environment({{"HOME", home}, {"XDG_CONFIG_HOME", folder.path()}})),
              (UserDirectories{"/home/ada/Papiere", "/home/ada/Downloads", "/home/ada/Desktop"}));
    std::filesystem::create_directory(folder.path(".config"));
    folder.write(".config/user-dirs.dirs", "XDG_DESKTOP_DIR=\"$HOME/Tisch\"\n");
    EXPECT_EQ(userDirectories(environment({{"HOME", folder.path()}, {"XDG_CONFIG_HOME", "relative"}})),
              (UserDirectories{folder.path("Documents"), folder.path("Downloads"), folder.path("Tisch")}));
}

TEST(UserDirectories, AreThoseOfTheSystemsEntryWithoutAHomeVariable) {
    const TemporaryFolder folder;
    const UserDirectories directories =
        userDirectories(environment({{"HOME", ""}, {"XDG_CONFIG_HOME", folder.path()}}));
    EXPECT_TRUE(directories.documents.starts_with('/')) << directories.documents;
    EXPECT_TRUE(directories.documents.ends_with("/Documents")) << directories.documents;
}

}  // namespace
}  // namespace calorivo
