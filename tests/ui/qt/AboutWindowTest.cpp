#include "ui/qt/AboutWindow.h"

#include "support/Application.h"
#include "ui/Hyperlink.h"
#include "ui/qt/Actions.h"
#include "ui/qt/ThankYouLinks.h"

#include <gtest/gtest.h>

#include <QLabel>
#include <QTest>

#include <string>

namespace calorivo::test {
namespace {

class AboutWindowTest : public testing::Test {
  protected:
    AboutWindowTest() {
        actions.attach(application.start());
        window.attach(actions, application.configuration.links);
        window.show();
    }
    [[nodiscard]] QString text(const char* name) const {
        return window.findChild<QLabel*>(QLatin1String(name))->text();
    }

    Application application;
    Actions actions;
    AboutWindow window{QStringLiteral("3.1 beta")};
};

TEST_F(AboutWindowTest, SaysWhatItIsAndOnWhichTerms) {
    EXPECT_EQ(text("programName"), QStringLiteral("Calorivo"));
    EXPECT_EQ(text("programVersion"), QStringLiteral("Version 3.1 beta"));
    EXPECT_EQ(text("copyright"), QStringLiteral("© 2026 The Calorivo developers"));
    EXPECT_EQ(text("license"),
              QStringLiteral("Free software under the MIT License. It comes without any warranty."));
}

TEST_F(AboutWindowTest, NamesNoTranslatorsInEnglish) {
    EXPECT_EQ(window.findChild<QLabel*>(QStringLiteral("translators")), nullptr);
}

TEST_F(AboutWindowTest, ItsLinksLookLikeLinks) {
    EXPECT_EQ(text("helpLink"),
              QStringLiteral("<a href=\"https://example.org/support\"><span style=\"color:#0000ff;"
                             "text-decoration:underline;\">Calorivo Help</span></a>"));
}

TEST_F(AboutWindowTest, ItsLinksOpenThroughTheWorkspace) {
    std::string calls;
    for (const char* const name :
         {"helpLink", "feedbackLink", "rateLink", "followLink", "newsletterLink", "moreAppsLink"}) {
        auto* const link = window.findChild<ThankYouLink*>(QLatin1String(name));
        application.machine.calls.clear();
        QTest::mouseClick(link, Qt::LeftButton, {}, QPoint(10, link->height() / 2));
        calls += application.machine.takeCalls();
    }
    EXPECT_EQ(calls,
              "openURL https://example.org/support\n"
              "openURL mailto:support@example.org?subject=Feedback%20for%20Calorivo%203.1%20beta&body=%0A%0A"
              "-----------------%0A%0AModel:%20Model1,2%0AOS%20X:%20Fakix%207.5%20(build%209)\n"
              "openURL https://example.org/store/calorivo?at=affiliate\n"
              "openURL https://example.org/social\n"
              "openURL https://example.org/newsletter\n"
              "openURL store://example.org/artist\n");
}

TEST_F(AboutWindowTest, EscapeAndControlWCloseIt) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    QTest::keyClick(&window, Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(window.isVisible());
    window.show();
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(window.isVisible());
}

TEST(RichText, EscapesWhatIsNoMarkup) {
    EXPECT_EQ(richText({"a < b & c", {}}, QPalette()), QStringLiteral("a &lt; b &amp; c"));
}

TEST(RichText, StylesOnlyTheStretchThatIsALink) {
    const AttributedString text =
        Hyperlink::hyperlinkFromStringStartingAtIndexWithURL("See “it”", 4, "https://example.org/?a=1&b=2");
    EXPECT_EQ(richText(text, QPalette(Qt::white)),
              QStringLiteral("See <a href=\"https://example.org/?a=1&amp;b=2\"><span style=\"color:#0000ff;"
                             "text-decoration:underline;\">“it”</span></a>"));
}

TEST(RichText, LightensAColourThatADarkBackgroundWouldSwallow) {
    const AttributedString text = Hyperlink::hyperlinkFromStringStartingAtIndexWithURL("it", 0, "u");
    EXPECT_EQ(
        richText(text, QPalette(QColor(32, 32, 32))),
        QStringLiteral("<a href=\"u\"><span style=\"color:#8080ff;text-decoration:underline;\">it</span>"
                       "</a>"));
}

}  // namespace
}  // namespace calorivo::test
