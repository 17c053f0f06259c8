#include "platform/qt/ApplicationBundle.h"

#include "app/PreferenceTable.h"
#include "platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace calorivo {
namespace {

const std::string sourceData = std::string(CALORIVO_SOURCE_DIR) + "/data";

TEST(ApplicationBundle, TellsTheVersionsItWasGiven) {
    const ApplicationBundle bundle("", "3.1", "3.1 beta");
    EXPECT_EQ(bundle.objectForInfoDictionaryKey("CFBundleVersion"), "3.1");
    EXPECT_EQ(bundle.objectForInfoDictionaryKey("CFBundleShortVersionString"), "3.1 beta");
    EXPECT_EQ(bundle.objectForInfoDictionaryKey("CFBundleName"), "");
}

TEST(ApplicationBundle, ShipsADefaultForEveryPreferenceThatHasOne) {
    const ApplicationBundle bundle(sourceData, "", "");
    const auto defaults = bundle.dictionaryForResource("Defaults", "plist");
    EXPECT_EQ(bundle.problems(), std::vector<std::string>{});
    ASSERT_TRUE(defaults.has_value());
    std::vector<std::string> expected;
    for (const PreferenceKey& row : preferenceTable)
        if (row.key != "sensorNameToCustomCellMap" && row.key != "logFileBookmarkData")
            expected.emplace_back(row.key);
    std::vector<std::string> shipped;
    for (const auto& [key, value] : *defaults) shipped.push_back(key);
    EXPECT_EQ(shipped, expected);
}

TEST(ApplicationBundle, ShipsDefaultsOfThePreferencesTypes) {
    const auto defaults = ApplicationBundle(sourceData, "", "").dictionaryForResource("Defaults", "plist");
    ASSERT_TRUE(defaults.has_value());
    for (const auto& [key, value] : *defaults) {
        SCOPED_TRACE(key);
        const auto row = std::find_if(preferenceTable.begin(), preferenceTable.end(),
                                      [&key = key](const PreferenceKey& entry) { return entry.key == key; });
        ASSERT_NE(row, preferenceTable.end());
        const bool isFlag = std::holds_alternative<Property<bool> Preferences::*>(row->place);
        EXPECT_EQ(value, isFlag ? Value(value.boolValue()) : Value(value.intValue()));
    }
}

TEST(ApplicationBundle, HasNoResourceThatIsMissingOrDamaged) {
    const TemporaryFolder folder;
    folder.write("Broken.plist", "<plist>\n<dict><key>a</key></dict></plist>");
    const ApplicationBundle bundle(folder.path(), "", "");
    EXPECT_EQ(bundle.dictionaryForResource("Absent", "plist"), std::nullopt);
    EXPECT_EQ(bundle.dictionaryForResource("Broken", "plist"), std::nullopt);
    EXPECT_EQ(bundle.problems(), (std::vector<std::string>{
                                     folder.path("Absent.plist") + ": No such file or directory",
                                     folder.path("Broken.plist") + ":2: the key \"a\" has no value",
                                 }));
}

TEST(ApplicationBundle, SaysThatItHasNoDataFolder) {
    const ApplicationBundle bundle("", "", "");
    EXPECT_EQ(bundle.dictionaryForResource("Defaults", "plist"), std::nullopt);
    EXPECT_EQ(bundle.problems(),
              std::vector<std::string>{"Defaults.plist: the program's data folder was not found"});
}

}  // namespace
}  // namespace calorivo
