#include "app/LinkActions.h"

#include "support/RecordingPlatform.h"

#include <gtest/gtest.h>

#include <string>

namespace calorivo {
namespace {

constexpr LinkTargets targets{.supportMailbox = "help@example.org",
                              .storeProductPage = "https://example.org/1",
                              .socialPage = "https://example.org/2",
                              .storeArtistPage = "store://example.org/3",
                              .newsletterPage = "https://example.org/4",
                              .supportPage = "https://example.org/5"};

class LinkActionsTest : public testing::Test {
  protected:
    test::RecordingPlatform machine;
    std::string system = "Fakix 7.5 (100%)";
    LinkActions links{targets, machine.workspace, machine.sysCtl, machine.bundle, system};
};

TEST_F(LinkActionsTest, OpenTheirTargets) {
    links.thankYouRateClicked();
    links.twitterFollowClicked();
    links.moreAppsClicked();
    links.subscribeToNewsletterClicked();
    links.helpAction();
    EXPECT_EQ(machine.calls, (test::Calls{"openURL https://example.org/1", "openURL https://example.org/2",
                                          "openURL store://example.org/3", "openURL https://example.org/4",
                                          "openURL https://example.org/5"}));
}

TEST_F(LinkActionsTest, ComposeAMailThatTellsModelAndSystem) {
    links.thankYouFeedbackClicked();
    EXPECT_EQ(machine.calls,
              (test::Calls{"openURL mailto:help@example.org?subject=Feedback%20for%20Calorivo%203.1%20beta"
                           "&body=%0A%0A-----------------%0A%0AModel:%20Model1,2%0AOS%20X:%20Fakix%207.5%20"
                           "(100%25)"}));
}

TEST_F(LinkActionsTest, ComposeAMailForAnUnknownModelToo) {
    test::FakeSysCtl unknown;
    LinkActions without{targets, machine.workspace, unknown, machine.bundle, system};
    without.thankYouFeedbackClicked();
    ASSERT_EQ(machine.calls.size(), 1U);
    EXPECT_NE(machine.calls.front().find("%0AModel:%20(null)%0A"), std::string::npos);
}

TEST(PercentEscapes, AreForBytesThatMayNotStandInAnAddress) {
    std::string printable;
    for (char c = ' '; c <= '~'; ++c) printable += c;
    EXPECT_EQ(stringByAddingPercentEscapesUsingASCIIEncoding(printable),
              "%20!%22%23$%25&'()*+,-./0123456789:;%3C=%3E?@ABCDEFGHIJKLMNOPQRSTUVWXYZ%5B%5C%5D%5E_%60"
              "abcdefghijklmnopqrstuvwxyz%7B%7C%7D~");
    EXPECT_EQ(stringByAddingPercentEscapesUsingASCIIEncoding("a\tb\nc\x7F"), "a%09b%0Ac%7F");
}

TEST(PercentEscapes, AreOneQuestionMarkForACharacterThatASCIIDoesNotHave) {
    EXPECT_EQ(stringByAddingPercentEscapesUsingASCIIEncoding("Gerät 5°€"), "Ger%3Ft%205%3F%3F");
}

}  // namespace
}  // namespace calorivo
