#include "app/DesktopSettings.h"

#include "support/RecordingPlatform.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

TEST(DesktopSettings, ComeBackAsTheyWereSaved) {
    test::Calls calls;
    test::RecordingUserDefaults store(calls);
    DesktopSettings settings;
    settings.titlePlace = 2;
    settings.colorScheme = 1;
    settings.mainWindowGeometry = Data{1, 0, 255};
    settings.mainWindowSplitter = Data{2};
    settings.sensorTableHeader = Data{3};
    settings.fanTableHeader = Data{4};
    settings.showsDetails = true;
    settings.save(store);

    DesktopSettings loaded;
    loaded.load(store);
    EXPECT_EQ(loaded.titlePlace, 2);
    EXPECT_EQ(loaded.colorScheme, 1);
    EXPECT_EQ(loaded.mainWindowGeometry.get(), (Data{1, 0, 255}));
    EXPECT_EQ(loaded.mainWindowSplitter.get(), (Data{2}));
    EXPECT_EQ(loaded.sensorTableHeader.get(), (Data{3}));
    EXPECT_EQ(loaded.fanTableHeader.get(), (Data{4}));
    EXPECT_TRUE(loaded.showsDetails);
}

TEST(DesktopSettings, TakeAChoiceThatIsNoneForAutomatic) {
    test::Calls calls;
    test::RecordingUserDefaults store(calls);
    store.stored["desktopTitlePlace"] = 3;
    store.stored["desktopColorScheme"] = -1;
    DesktopSettings settings;
    settings.titlePlace = 1;
    settings.colorScheme = 1;
    settings.load(store);
    EXPECT_EQ(settings.titlePlace, 0);
    EXPECT_EQ(settings.colorScheme, 0);
}

}  // namespace
}  // namespace calorivo
