#include "ui/qt/VantixPanelViews.h"

#include "platform/KeyValueCoding.h"
#include "platform/ProcessListing.h"
#include "support/RecordingPlatform.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QToolButton>

#include <memory>

namespace calorivo {
namespace {

class NoProcesses final : public ProcessListing {
  public:
    std::int32_t sysctlKernProcAll(KernelProcess* /*buffer*/, std::size_t& size) override {
        size = 0;
        return 0;
    }
    [[nodiscard]] std::optional<ProcessSerialNumber> GetProcessForPID(std::int32_t) override { return {}; }
    [[nodiscard]] std::optional<std::string> CopyProcessName(ProcessSerialNumber) override { return {}; }
    [[nodiscard]] std::optional<std::string> getpwuid(std::uint32_t) override { return {}; }
};

class VantixPanelTest : public testing::Test {
  protected:
    VantixPanelTest() {
        content = new QWidget;
        content->setMinimumSize(200, 100);
        window.setCentralWidget(content);
        window.resize(500, 400);
        views = std::make_unique<VantixPanelViews>(window);
        promotion = std::make_unique<VantixView>(
            VantixParts{preferences, keys, *views, workspace, dispatch, processes,
                        [](const std::string&) { return false; },
                        [this](const std::string&) { return hasSibling; }, [] {}},
            PromotionConfiguration{});
        views->connectTo(*promotion);
    }
    void show() {
        window.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    }
    template <typename Widget>
    Widget* find(const char* name) {
        return window.findChild<Widget*>(QLatin1String(name));
    }

    test::Calls calls;
    Preferences preferences;
    KeyValueCoding keys;
    test::RecordingWorkspace workspace{calls};
    test::VirtualDispatch dispatch;
    NoProcesses processes;
    bool hasSibling = false;
    QMainWindow window;
    QWidget* content = nullptr;
    std::unique_ptr<VantixPanelViews> views;
    std::unique_ptr<VantixView> promotion;
};

TEST_F(VantixPanelTest, StandsBelowTheContentWithItsTexts) {
    promotion->setupVantixView();
    show();
    const VantixPanel& panel = views->panel();
    EXPECT_TRUE(panel.isVisible());
    EXPECT_GE(panel.mapTo(&window, QPoint()).y(), content->mapTo(&window, QPoint(0, content->height())).y());
    const PromotionTexts texts;
    EXPECT_EQ(find<QLabel>("promotionTitle")->text().toStdString(), texts.panelTitle);
    EXPECT_EQ(find<QLabel>("promotionText")->text().toStdString(), texts.panelText);
    EXPECT_EQ(find<QPushButton>("promotionLearnMore")->text().toStdString(), texts.learnMoreButton);
    EXPECT_EQ(find<QToolButton>("promotionClose")->accessibleName().toStdString(), texts.closeButton);
}

TEST_F(VantixPanelTest, GoesByItsButtonAndTheWindowShrinksByItsHeight) {
    promotion->setupVantixView();
    show();
    const QSize content_ = content->size();
    const int before = window.height();
    const auto height = static_cast<int>(views->panelHeight());
    EXPECT_GT(height, 30);
    QTest::mouseClick(find<QToolButton>("promotionClose"), Qt::LeftButton);
    QApplication::processEvents();
    EXPECT_FALSE(views->panel().isVisible());
    EXPECT_EQ(window.height(), before - height);
    EXPECT_EQ(content->size(), content_);
    EXPECT_TRUE(preferences.hideVantixView);
}

TEST_F(VantixPanelTest, LeavesItsPlaceToTheContentInLaterRuns) {
    preferences.hideVantixView = true;
    promotion->setupVantixView();
    show();
    EXPECT_FALSE(views->panel().isVisible());
    EXPECT_EQ(window.size(), QSize(500, 400));
    EXPECT_EQ(content->height(), 400);
}

TEST_F(VantixPanelTest, ShrinksAWindowThatWasNotShownYet) {
    hasSibling = true;
    const auto height = static_cast<int>(views->panelHeight());
    EXPECT_GT(height, 30);
    EXPECT_LT(height, 200);
    promotion->setupVantixView();
    show();
    EXPECT_EQ(window.size(), QSize(500, 400 - height));
}

TEST_F(VantixPanelTest, LeavesAMaximisedWindowAsItIs) {
    promotion->setupVantixView();
    window.showMaximized();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    const QSize size = window.size();
    promotion->hideVantixView();
    QApplication::processEvents();
    EXPECT_EQ(window.size(), size);
    EXPECT_FALSE(views->panel().isVisible());
}

TEST_F(VantixPanelTest, OpensThePageAboutTheSibling) {
    show();
    QTest::mouseClick(find<QPushButton>("promotionLearnMore"), Qt::LeftButton);
    EXPECT_EQ(calls, test::Calls{"openURL https://example.org/vantix"});
}

TEST_F(VantixPanelTest, PaintsRoundCorners) {
    promotion->setupVantixView();
    show();
    const QImage image = views->panel().grab().toImage();
    const QRgb outside = image.pixel(0, 0);
    const QRgb inside = image.pixel(image.width() / 2, 4);
    EXPECT_NE(outside, inside);
    // All four, as the promotion wants it.
    EXPECT_EQ(image.pixel(image.width() - 1, 0), outside);
    EXPECT_EQ(image.pixel(0, image.height() - 1), outside);
    EXPECT_EQ(image.pixel(image.width() - 1, image.height() - 1), outside);
    views->panel().setRoundedCorners(topCorners);
    EXPECT_NE(views->panel().grab().toImage().pixel(3, image.height() - 4), outside);
}

TEST_F(VantixPanelTest, OffersTheDownloadInAWindowOfItsOwn) {
    VantixUpgradeWindow& upgrade = views->upgradeWindow();
    upgrade.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&upgrade));
    EXPECT_EQ(upgrade.windowTitle().toStdString(), PromotionTexts().upgradeTitle);
    QTest::mouseClick(upgrade.findChild<QPushButton*>(QStringLiteral("upgradeDownload")), Qt::LeftButton);
    EXPECT_EQ(calls, test::Calls{"openURL https://example.org/vantix/latest.zip"});
    EXPECT_FALSE(upgrade.isVisible());
    EXPECT_TRUE(promotion->isWatching());
}

TEST_F(VantixPanelTest, ClosesTheOfferByNotNowAndByEscape) {
    VantixUpgradeWindow& upgrade = views->upgradeWindow();
    upgrade.show();
    QTest::mouseClick(upgrade.findChild<QPushButton*>(QStringLiteral("upgradeLater")), Qt::LeftButton);
    EXPECT_FALSE(upgrade.isVisible());
    upgrade.show();
    QTest::keyClick(&upgrade, Qt::Key_Escape);
    EXPECT_FALSE(upgrade.isVisible());
    EXPECT_EQ(calls, test::Calls{});
    EXPECT_FALSE(promotion->isWatching());
}

}  // namespace
}  // namespace calorivo
