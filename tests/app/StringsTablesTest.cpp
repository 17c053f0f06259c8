#include "app/StringsTables.h"

#include "support/FakeFileManager.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>

namespace calorivo {
namespace {

using Languages = std::vector<std::string>;

TEST(PreferredLanguages, ComeFromTheFirstVariableThatIsSet) {
    struct Row {
        LanguageVariables variables;
        Languages languages;
    };
    const Row rows[] = {
        {{}, {"en"}},
        {{.lang = "de_AT.UTF-8"}, {"de_AT", "de", "en"}},
        {{.lang = "de"}, {"de", "en"}},
        {{.lang = "sr_RS@latin"}, {"sr_RS", "sr", "en"}},
        {{.lcMessages = "fr_FR", .lang = "de_DE"}, {"fr_FR", "fr", "en"}},
        {{.lcAll = "it_IT", .lcMessages = "fr_FR", .lang = "de_DE"}, {"it_IT", "it", "en"}},
        {{.language = "de_CH:fr", .lang = "it_IT"}, {"de_CH", "de", "fr", "en"}},
        {{.language = "de:de_CH::de", .lang = "it_IT"}, {"de", "de_CH", "en"}},
        // The texts are English: what comes after it is never needed.
        {{.language = "fr:en_GB:de", .lang = "it_IT"}, {"fr", "en"}},
        {{.language = "en:de", .lang = "de_DE"}, {"en"}},
        {{.language = "de", .lang = "C"}, {"en"}},
        {{.language = "de", .lang = "C.UTF-8"}, {"en"}},
        {{.language = "de", .lcAll = "POSIX", .lang = "de_DE"}, {"en"}},
        {{.language = "de"}, {"en"}},
        // It becomes a part of a path.
        {{.language = "../../etc:de/x:fr", .lang = "it_IT"}, {"fr", "en"}},
    };
    for (const Row& row : rows)
        EXPECT_EQ(preferredLanguages(row.variables), row.languages)
            << row.variables.language << ' ' << row.variables.lang;
}

struct Fixture {
    test::FakeFileManager files;
    StringsTables tables(Languages languages) { return {files, "/strings", std::move(languages)}; }
};

TEST(StringsTables, LooksATextUpInTheFirstLanguageThatHasIt) {
    Fixture fixture;
    fixture.files.add("/strings/de_AT.lproj/T.strings", "\"a\" = \"A at\";");
    fixture.files.add("/strings/de.lproj/T.strings", "\"a\" = \"A de\"; \"b\" = \"B de\";");
    const StringsTables tables = fixture.tables({"de_AT", "de", "en"});
    EXPECT_EQ(tables.localizedString("a", "T"), "A at");
    EXPECT_EQ(tables.localizedString("b", "T"), "B de");
    EXPECT_EQ(tables.localizedString("c %@", "T"), "c %@");
    EXPECT_EQ(tables.find("c", "T"), std::nullopt);
    EXPECT_EQ(tables.localizedString("a", "Other"), "a");
    EXPECT_TRUE(tables.problems().empty());
}

TEST(StringsTables, ReadsEachFileOnce) {
    Fixture fixture;
    const StringsTables tables = fixture.tables({"de", "en"});
    for (int i = 0; i < 3; ++i) EXPECT_EQ(tables.localizedString("a", "T"), "a");
    EXPECT_EQ(fixture.files.reads, (Languages{"/strings/de.lproj/T.strings", "/strings/en.lproj/T.strings"}));
}

TEST(StringsTables, TellsOfMistakesAndGoesOn) {
    Fixture fixture;
    fixture.files.add("/strings/de.lproj/T.strings", "\"a\" = \"A\";\n\"b\"");
    const StringsTables tables = fixture.tables({"de", "en"});
    EXPECT_EQ(tables.localizedString("a", "T"), "A");
    EXPECT_EQ(tables.localizedString("b", "T"), "b");
    EXPECT_EQ(tables.problems(), Languages{"/strings/de.lproj/T.strings:2: expected ="});
}

TEST(StringsTables, ReadsNothingWithoutAFolder) {
    test::FakeFileManager files;
    const StringsTables tables(files, "", {"de"});
    EXPECT_EQ(tables.localizedString("a", "T"), "a");
    EXPECT_EQ(files.reads, Languages{});
}

std::string contentsOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

std::set<std::string> keysOf(const StringsTable& table) {
    std::set<std::string> keys;
    for (const auto& [key, text] : table.entries()) keys.insert(key);
    return keys;
}

std::ptrdiff_t placeholders(std::string_view text) { return std::count(text.begin(), text.end(), '%'); }

TEST(ShippedStrings, HaveEveryTextInGermanAndFrench) {
    const std::map<std::string, std::set<std::string>> expected{
        {"Errors", {"No path found for directory in domain."}},
        {"MoveApplication",
         {"Move to Applications folder in your Home folder?", "Move to Applications",
          "Would you like Calorivo to move itself to the Applications folder?",
          "Note that this will require an administrator password.",
          "This will keep your Downloads folder uncluttered.", "Move to Applications Folder", "Do Not Move",
          "Could not move to Applications folder"}},
        {"UAAppReviewManagerLocalizable",
         {"Rate %@",
          "If you enjoy using %@, would you mind taking a moment to rate it? It won't take more than a "
          "minute. Thanks for your support!",
          "No, Thanks", "Remind me later"}}};
    for (const std::string language : {"de", "fr"}) {
        for (const auto& [name, keys] : expected) {
            const std::filesystem::path path = std::filesystem::path(CALORIVO_SOURCE_DIR) / "data/strings" /
                                               (language + ".lproj") / (name + ".strings");
            SCOPED_TRACE(path);
            const auto parsed = StringsTable::parse(contentsOf(path), path.string());
            EXPECT_EQ(parsed.problem, "");
            EXPECT_EQ(keysOf(parsed.table), keys);
            for (const auto& [key, text] : parsed.table.entries()) {
                EXPECT_EQ(placeholders(text), placeholders(key)) << key;
                EXPECT_NE(text, key);
            }
        }
    }
}

}  // namespace
}  // namespace calorivo
