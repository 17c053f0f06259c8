#include "app/UAAppReviewManager.h"

#include "app/ReviewFixture.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

using test::ReviewFixture;
using Type = UAAppReviewManagerKeyType;

constexpr std::string_view standardMessage =
    "If you enjoy using Calorivo, would you mind taking a moment to rate it? It won't take more than a "
    "minute. Thanks for your support!";

class UAAppReviewManagerSettingsTest : public testing::Test, protected ReviewFixture {};

// The standard settings and texts.

TEST_F(UAAppReviewManagerSettingsTest, HasItsStandardSettings) {
    const UAAppReviewManager& m = manager();
    EXPECT_EQ(m.appID(), std::nullopt);
    EXPECT_EQ(m.daysUntilPrompt(), 30U);
    EXPECT_EQ(m.usesUntilPrompt(), 20U);
    EXPECT_EQ(m.significantEventsUntilPrompt(), 0U);
    EXPECT_EQ(m.daysBeforeReminding(), 1U);
    EXPECT_TRUE(m.tracksNewVersions());
    EXPECT_TRUE(m.shouldPromptIfRated());
    EXPECT_FALSE(m.debug());
    EXPECT_FALSE(m.useMainAppBundleForLocalizations());
    EXPECT_EQ(m.affiliateCode(), "000000");
    EXPECT_EQ(m.affiliateCampaignCode(), "UAAppReviewManager");
    EXPECT_EQ(m.keyPrefix(), "");
    EXPECT_EQ(&m.userDefaultsObject(), &defaults);
    EXPECT_EQ(m.ratingAlert(), std::nullopt);
    EXPECT_FALSE(m.modalPanelOpen());
    EXPECT_EQ(m.keyForUAAppReviewManagerKeyType(Type::useCount), "UAAppReviewManagerKeyUseCount");
    EXPECT_EQ(m.keyForUAAppReviewManagerKeyType(static_cast<Type>(12)), std::nullopt);
}

TEST_F(UAAppReviewManagerSettingsTest, KeepsWhatIsSet) {
    UAAppReviewManager& m = manager();
    test::RecordingUserDefaults other(calls);
    m.setAppID("42");
    m.setDaysUntilPrompt(31);
    m.setUsesUntilPrompt(32);
    m.setSignificantEventsUntilPrompt(33);
    m.setDaysBeforeReminding(34);
    m.setTracksNewVersions(false);
    m.setShouldPromptIfRated(false);
    m.setDebug(true);
    m.setUseMainAppBundleForLocalizations(true);
    m.setAffiliateCode("abcdef");
    m.setAffiliateCampaignCode("campaign");
    m.setKeyPrefix("p.");
    m.setKeyForUAAppReviewManagerKeyType("uses", Type::useCount);
    m.setUserDefaultsObject(other);
    m.setModalPanelOpen(true);
    EXPECT_EQ(m.appID(), "42");
    EXPECT_EQ(m.daysUntilPrompt(), 31U);
    EXPECT_EQ(m.usesUntilPrompt(), 32U);
    EXPECT_EQ(m.significantEventsUntilPrompt(), 33U);
    EXPECT_EQ(m.daysBeforeReminding(), 34U);
    EXPECT_FALSE(m.tracksNewVersions());
    EXPECT_FALSE(m.shouldPromptIfRated());
    EXPECT_TRUE(m.debug());
    EXPECT_TRUE(m.useMainAppBundleForLocalizations());
    EXPECT_EQ(m.affiliateCode(), "abcdef");
    EXPECT_EQ(m.affiliateCampaignCode(), "campaign");
    EXPECT_EQ(m.keyPrefix(), "p.");
    EXPECT_EQ(m.keyForUAAppReviewManagerKeyType(Type::useCount), "p.uses");
    EXPECT_EQ(&m.userDefaultsObject(), &other);
    EXPECT_TRUE(m.modalPanelOpen());
}

TEST_F(UAAppReviewManagerSettingsTest, AnswersToItsOlderNames) {
    UAAppReviewManager& m = manager();
    m.setAppId("43");
    m.setTimeBeforeReminding(5);
    m.setAlwaysUseMainBundle(true);
    m.setDelegate(&m);
    EXPECT_EQ(m.appID(), "43");
    EXPECT_EQ(m.daysBeforeReminding(), 5U);
    EXPECT_TRUE(m.useMainAppBundleForLocalizations());
}

TEST_F(UAAppReviewManagerSettingsTest, HasItsStandardTexts) {
    const UAAppReviewManager& m = manager();
    EXPECT_EQ(m.appName(), "Calorivo");
    EXPECT_EQ(m.reviewTitle(), "Rate Calorivo");
    EXPECT_EQ(m.reviewMessage(), standardMessage);
    EXPECT_EQ(m.rateButtonTitle(), "Rate Calorivo");
    EXPECT_EQ(m.cancelButtonTitle(), "No, Thanks");
    EXPECT_EQ(m.remindButtonTitle(), "Remind me later");
}

TEST_F(UAAppReviewManagerSettingsTest, PutsTheTextsThatAreSetInTheirPlace) {
    UAAppReviewManager& m = manager();
    m.setAppName("100%@");
    EXPECT_EQ(m.reviewTitle(), "Rate 100%@");
    m.setReviewTitle("title %@");
    m.setReviewMessage("message %@");
    m.setRateButtonTitle("rate %@");
    m.setCancelButtonTitle("cancel");
    m.setRemindButtonTitle("remind");
    EXPECT_EQ(m.reviewTitle(), "title %@");
    EXPECT_EQ(m.reviewMessage(), "message %@");
    EXPECT_EQ(m.rateButtonTitle(), "rate %@");
    EXPECT_EQ(m.cancelButtonTitle(), "cancel");
    EXPECT_EQ(m.remindButtonTitle(), "remind");
    m.setDaysBeforeReminding(0);
    EXPECT_EQ(m.remindButtonTitle(), std::nullopt);
}

TEST_F(UAAppReviewManagerSettingsTest, TakesTextsFromItsOwnResourcesOrTheProgramsOwn) {
    files.add("/component/de.lproj/UAAppReviewManagerLocalizable.strings", "\"Rate %@\" = \"%@ bewerten\";");
    files.add("/main/de.lproj/UAAppReviewManagerLocalizable.strings", "\"Rate %@\" = \"Lobe %@\";");
    EXPECT_EQ(manager().reviewTitle(), "Calorivo bewerten");
    EXPECT_EQ(manager().cancelButtonTitle(), "No, Thanks");
    manager().setUseMainAppBundleForLocalizations(true);
    EXPECT_EQ(manager().reviewTitle(), "Lobe Calorivo");
}

TEST_F(UAAppReviewManagerSettingsTest, FindsTheProgramsNameInFourPlaces) {
    bundle.information.erase("CFBundleDisplayName");
    bundle.information["CFBundleName"] = "fourth";
    EXPECT_EQ(manager().appName(), "fourth");
    bundle.information["CFBundleDisplayName"] = "third";
    EXPECT_EQ(manager().appName(), "third");
    files.add("/main/de.lproj/InfoPlist.strings", "\"CFBundleName\" = \"second\";");
    const StringsTables second(files, "/main", {"de"});
    ReviewParts changed{defaults,     bundle, component, second, alertPanel,    sheet, workspace,
                        reachability, log,    time,      *queue, notifications, {}};
    EXPECT_EQ(UAAppReviewManager(changed).appName(), "second");
    files.add("/main/de.lproj/InfoPlist.strings",
              "\"CFBundleName\" = \"second\"; \"CFBundleDisplayName\" = \"first\";");
    const StringsTables first(files, "/main", {"de"});
    ReviewParts changedAgain{defaults,     bundle, component, first,  alertPanel,    sheet, workspace,
                             reachability, log,    time,      *queue, notifications, {}};
    EXPECT_EQ(UAAppReviewManager(changedAgain).appName(), "first");
}

TEST_F(UAAppReviewManagerSettingsTest, MakesTheAddressOfTheReviewPage) {
    UAAppReviewManager& m = manager();
    EXPECT_EQ(m.reviewURLString(),
              "macappstore://store.example.org/us/app/thumbs/id(null)?ls=1&mt=12&at=000000&"
              "ct=UAAppReviewManager");
    m.setAppID("42");
    m.setAffiliateCode("abc");
    m.setAffiliateCampaignCode(std::nullopt);
    EXPECT_EQ(m.reviewURLString(),
              "macappstore://store.example.org/us/app/thumbs/id42?ls=1&mt=12&at=abc&ct=(null)");
    // One after another, at every place.
    m.setAppID("AFFILIATE_CODE");
    EXPECT_EQ(m.reviewURLString(),
              "macappstore://store.example.org/us/app/thumbs/idabc?ls=1&mt=12&at=abc&ct=(null)");
    m.setAffiliateCode("AFFILIATE_CODE");
    m.setAppID("42");
    EXPECT_EQ(m.reviewURLString(),
              "macappstore://store.example.org/us/app/thumbs/id42?ls=1&mt=12&at=AFFILIATE_CODE&ct=(null)");
}

}  // namespace
}  // namespace calorivo
