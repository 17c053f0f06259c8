#include "desktop/Promotion.h"

#include "platform/linux/TemporaryFolder.h"
#include "support/RecordingPlatform.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>

#include <filesystem>
#include <memory>

namespace calorivo {
namespace {

namespace fs = std::filesystem;

struct PromotionTest : testing::Test {
    void promote() {
        promotion = std::make_unique<Promotion>(
            PromotionParts{preferences, keys, workspace, dispatch, [] {}}, interface,
            PromotionConfiguration{.siblingPath = sibling.path("Calorivo Pro.app"),
                                   .texts = promotionTexts()});
        interface.orderFront(WindowName::vantixUpgradeWindow);
    }
    [[nodiscard]] QWidget* child(const char* name) {
        return interface.mainWindow().findChild<QWidget*>(QLatin1String(name));
    }
    [[nodiscard]] bool isPanelHidden() { return child("vantixPromoView")->parentWidget()->isHidden(); }
    [[nodiscard]] bool isOffered() { return child("vantixUpgradeWindow")->isVisible(); }

    const TemporaryFolder sibling;
    test::Calls calls;
    Preferences preferences;
    KeyValueCoding keys;
    test::RecordingWorkspace workspace{calls};
    test::VirtualDispatch dispatch;
    DesktopSettings settings;
    QtInterface interface { settings, QStringLiteral("1.0") };
    std::unique_ptr<Promotion> promotion;
};

TEST_F(PromotionTest, IsNowhereUnlessItIsMade) {
    interface.center(WindowName::vantixUpgradeWindow);
    interface.orderFront(WindowName::vantixUpgradeWindow);
    EXPECT_EQ(child("vantixPromoView"), nullptr);
    EXPECT_EQ(child("vantixUpgradeWindow"), nullptr);
}

TEST_F(PromotionTest, ShowsPanelAndUpgradeWindow) {
    promote();
    EXPECT_FALSE(isPanelHidden());
    EXPECT_TRUE(isOffered());
}

TEST_F(PromotionTest, OffersNothingAfterThePanelWasRemoved) {
    preferences.hideVantixView = true;
    promote();
    EXPECT_TRUE(isPanelHidden());
    EXPECT_FALSE(isOffered());
}

TEST_F(PromotionTest, OffersNothingWhereTheSiblingIsInstalled) {
    fs::create_directory(sibling.path("Calorivo Pro.app"));
    promote();
    EXPECT_TRUE(isPanelHidden());
    EXPECT_FALSE(isOffered());
    EXPECT_TRUE(preferences.hideVantixView);
}

TEST(PromotionTexts, AreTheEnglishOnesWithoutATranslation) { EXPECT_EQ(promotionTexts(), PromotionTexts()); }

TEST(IsInstalledForDesktop, LooksForTheProgramsEntry) {
    const TemporaryFolder folder;
    const auto isInstalled = [&folder](const std::string& identifier) {
        return isInstalledForDesktop(
            [&folder](const char* name) -> std::optional<std::string> {
                if (name == std::string_view("HOME")) return folder.path("home");
                if (name == std::string_view("XDG_DATA_DIRS")) return "relative::" + folder.path("shared");
                return std::nullopt;
            },
            identifier);
    };
    EXPECT_FALSE(isInstalled("org.example.one"));
    for (const char* const name : {"home/.local/share/applications", "shared/applications"})
        fs::create_directories(folder.path(name));
    folder.write("home/.local/share/applications/org.example.one.desktop", "");
    folder.write("shared/applications/org.example.two.desktop", "");
    EXPECT_TRUE(isInstalled("org.example.one"));
    EXPECT_TRUE(isInstalled("org.example.two"));
    EXPECT_FALSE(isInstalled("org.example.three"));
}

}  // namespace
}  // namespace calorivo
