#include "app/VantixView.h"

#include "app/FakeProcessListing.h"
#include "support/RecordingPlatform.h"

#include <gtest/gtest.h>

#include <chrono>
#include <memory>

namespace calorivo {
namespace {

using std::chrono_literals::operator""s;
using test::Calls;

std::string described(const Rectangle& frame) {
    return format("%.0f %.0f %.0f %.0f", frame.x, frame.y, frame.width, frame.height);
}

class RecordingPromotionViews final : public PromotionViews {
  public:
    explicit RecordingPromotionViews(Calls& calls) : calls_(calls) {}
    Rectangle window{100, 200, 300, 400};
    Rectangle mainView{0, 90, 300, 310};
    AutoresizingMask mask = 18;
    PromotionTexts texts{.panelTitle = {}};

    void setTexts(const PromotionTexts& given) override { texts = given; }
    void setPanelHidden(bool isHidden) override {
        calls_.emplace_back(isHidden ? "panel hidden" : "panel shown");
    }
    [[nodiscard]] double panelHeight() const override { return 90; }
    void setPanelRoundedCorners(CornerMask corners) override {
        calls_.push_back(format("panel corners %d", corners));
    }
    [[nodiscard]] Rectangle windowFrame() const override { return window; }
    void setWindowFrame(const Rectangle& frame) override {
        window = frame;
        calls_.push_back("window " + described(frame));
    }
    [[nodiscard]] Rectangle mainViewFrame() const override { return mainView; }
    void setMainViewFrame(const Rectangle& frame) override {
        mainView = frame;
        calls_.push_back("main view " + described(frame));
    }
    [[nodiscard]] AutoresizingMask mainViewAutoresizingMask() const override { return mask; }
    void setMainViewAutoresizingMask(AutoresizingMask given) override {
        mask = given;
        calls_.push_back(format("mask %d", given));
    }
    void orderOutUpgradeWindow() override { calls_.emplace_back("orderOut upgrade window"); }

  private:
    Calls& calls_;
};

/// While the main thread sleeps nothing of its own runs.
class BlockingDispatch final : public Dispatch {
  public:
    explicit BlockingDispatch(Calls& calls) : calls_(calls) {}
    [[nodiscard]] Queue& mainQueue() override { return time.mainQueue(); }
    [[nodiscard]] std::unique_ptr<Queue> makeSerialQueue(std::string label) override {
        return time.makeSerialQueue(std::move(label));
    }
    [[nodiscard]] std::unique_ptr<Timer> scheduleTimer(std::chrono::nanoseconds interval, Repeats repeats,
                                                       std::function<void()> action) override {
        return time.scheduleTimer(interval, repeats, std::move(action));
    }
    [[nodiscard]] Moment now() const override { return time.now(); }
    [[nodiscard]] WallTime wallTime() const override { return time.wallTime(); }
    void sleep(std::chrono::nanoseconds duration) override {
        calls_.push_back(format("sleep %.1f", std::chrono::duration<double>(duration).count()));
    }
    test::VirtualDispatch time;

  private:
    Calls& calls_;
};

class VantixViewTest : public testing::Test {
  protected:
    VantixViewTest() {
        keys.define("launchOnLogin", preferences.launchOnLogin, [this](bool isLaunched) {
            calls.push_back(isLaunched ? "launchOnLogin YES" : "launchOnLogin NO");
        });
        configuration.siblingIdentifier = "org.example.other";
        configuration.siblingPath = "/Programs/Pro.app";
        configuration.downloadAddress = "https://example.org/other.zip?a=1%20b";
        configuration.learnMoreAddress = "https://example.org/more";
    }
    VantixView& view() {
        if (!view_)
            view_ = std::make_unique<VantixView>(
                VantixParts{preferences, keys, views, workspace, dispatch, processes,
                            [this](const std::string& identifier) { return identifier == knownIdentifier; },
                            [this](const std::string& path) { return path == existingPath; },
                            [this] { calls.emplace_back("terminate"); }},
                configuration);
        return *view_;
    }
    Calls take() { return std::exchange(calls, {}); }
    void start(const std::string& name) {
        processes.processes = {{10, 500}, {11, 500}, {12, 500}};
        processes.names = {{11, "Finder"}, {12, name}};
    }

    Calls calls;
    Preferences preferences;
    KeyValueCoding keys;
    RecordingPromotionViews views{calls};
    test::RecordingWorkspace workspace{calls};
    BlockingDispatch dispatch{calls};
    test::FakeProcessListing processes;
    PromotionConfiguration configuration;
    std::string knownIdentifier = "none";
    std::string existingPath = "none";

  private:
    std::unique_ptr<VantixView> view_;
};

TEST_F(VantixViewTest, ShowsThePanelWithRoundCorners) {
    configuration.texts.panelTitle = "Title";
    view().setupVantixView();
    EXPECT_EQ(take(), Calls{"panel corners 15"});
    EXPECT_FALSE(view().hasVantix());
    EXPECT_FALSE(preferences.hideVantixView);
    EXPECT_EQ(views.texts, configuration.texts);
}

const Calls shrunken{"panel hidden", "mask 9", "window 100 290 300 310", "mask 18", "panel corners 15"};

TEST_F(VantixViewTest, RemovesThePanelAndShrinksTheWindowWhenTheSiblingIsInstalled) {
    existingPath = configuration.siblingPath;
    view().setupVantixView();
    EXPECT_EQ(take(), shrunken);
    EXPECT_TRUE(view().hasVantix());
    EXPECT_TRUE(preferences.hideVantixView);
}

TEST_F(VantixViewTest, KnowsTheSiblingByItsIdentifierToo) {
    knownIdentifier = configuration.siblingIdentifier;
    view().setupVantixView();
    EXPECT_EQ(take(), shrunken);
    EXPECT_TRUE(view().hasVantix());
}

const Calls grown{"panel hidden", "main view 0 0 300 400", "panel corners 15"};

TEST_F(VantixViewTest, CoversThePlaceOfAPanelThatWasRemovedInAnEarlierRun) {
    preferences.hideVantixView = true;
    view().setupVantixView();
    EXPECT_EQ(take(), grown);
    EXPECT_FALSE(view().hasVantix());
    EXPECT_TRUE(preferences.hideVantixView);
}

TEST_F(VantixViewTest, CoversThePlaceOnceWhenTheSiblingIsInstalledToo) {
    preferences.hideVantixView = true;
    existingPath = configuration.siblingPath;
    view().setupVantixView();
    EXPECT_EQ(take(), grown);
    EXPECT_TRUE(view().hasVantix());
}

TEST_F(VantixViewTest, RemovesThePanelForGoodWhenTheUserClosesIt) {
    view().setupVantixView();
    take();
    view().hideVantixView();
    EXPECT_EQ(take(), (Calls{"panel hidden", "mask 9", "window 100 290 300 310", "mask 18"}));
    EXPECT_TRUE(preferences.hideVantixView);
}

TEST_F(VantixViewTest, DownloadsTheSiblingAndClosesTheUpgradeWindow) {
    view().upgradeToVantixClicked();
    EXPECT_EQ(take(), (Calls{"openURL https://example.org/other.zip?a=1%20b", "orderOut upgrade window"}));
    EXPECT_TRUE(view().isWatching());
    EXPECT_EQ(dispatch.time.timerIntervals(), std::vector<std::chrono::nanoseconds>{2s});
}

TEST_F(VantixViewTest, OnlyClosesTheUpgradeWindowWithoutAProperAddress) {
    configuration.downloadAddress = "https://example.org/a b";
    view().upgradeToVantixClicked();
    EXPECT_EQ(take(), Calls{"orderOut upgrade window"});
    EXPECT_FALSE(view().isWatching());
}

TEST_F(VantixViewTest, KeepsOneWatchHoweverOftenTheButtonIsClicked) {
    view().upgradeToVantixClicked();
    dispatch.time.advance(1s);
    view().upgradeToVantixClicked();
    EXPECT_EQ(dispatch.time.liveTimers(), 1U);
}

TEST_F(VantixViewTest, WatchesForAsLongAsTheSiblingDoesNotStart) {
    start("Vantix Helper");
    view().upgradeToVantixClicked();
    take();
    dispatch.time.advance(3600s);
    EXPECT_EQ(take(), Calls{});
    EXPECT_EQ(processes.fetchCalls, 1800);
    EXPECT_TRUE(view().isWatching());
}

TEST_F(VantixViewTest, StepsAsideWhenTheSiblingStarts) {
    view().upgradeToVantixClicked();
    dispatch.time.advance(4s);
    take();
    start("Vantix");
    dispatch.time.advance(1s);
    EXPECT_EQ(take(), Calls{});
    dispatch.time.advance(1s);
    EXPECT_EQ(take(), (Calls{"sleep 5.0", "launchOnLogin NO", "terminate"}));
    // The watch ends with the program and not before.
    EXPECT_TRUE(view().isWatching());
}

TEST_F(VantixViewTest, KnowsTheSiblingByItsExactNameOnly) {
    for (const std::string name : {"vantix", "Vantix ", "Vanti", "VantixPro", ""}) {
        start(name);
        view().checkIfVantixIsOpenFired();
        EXPECT_EQ(take(), Calls{}) << name;
    }
    // A process that is registered as no application has no name.
    processes.names = {{12, std::nullopt}};
    view().checkIfVantixIsOpenFired();
    EXPECT_EQ(take(), Calls{});
}

TEST_F(VantixViewTest, TakesAnUnreadableProcessTableForASiblingThatDoesNotRun) {
    start("Vantix");
    processes.fetchErrors = {5};
    view().checkIfVantixIsOpenFired();
    EXPECT_EQ(take(), Calls{});
}

TEST_F(VantixViewTest, OpensThePageAboutTheSibling) {
    view().learnMoreVantixClicked();
    EXPECT_EQ(take(), Calls{"openURL https://example.org/more"});
}

TEST(IsURL, TakesTheCharactersOfAddressesOnly) {
    for (const std::string_view address :
         {"https://example.org/", "https://example.org/a?b=c&d=%2f#e", "mailto:a@b", "relative"})
        EXPECT_TRUE(isURL(address)) << address;
    for (const std::string_view address :
         {"", " ", "https://example.org/a b", "https://example.org/ä", "https://example.org/\n",
          "https://example.org/%", "https://example.org/%2", "https://example.org/%zz",
          "https://example.org/<>", "https://example.org/\"", "https://example.org/{}", "a\\b", "a^b", "a`b"})
        EXPECT_FALSE(isURL(address)) << address;
}

}  // namespace
}  // namespace calorivo
