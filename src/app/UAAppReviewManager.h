#pragma once

#include "app/StringsTables.h"
#include "app/UAAppReviewManagerSettings.h"
#include "platform/AlertPanel.h"
#include "platform/AlertSheet.h"
#include "platform/Bundle.h"
#include "platform/Dispatch.h"
#include "platform/Property.h"
#include "platform/Reachability.h"
#include "platform/SystemLog.h"
#include "platform/UserDefaults.h"
#include "platform/Workspace.h"

#include <array>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>

namespace calorivo {

/// What the program goes through, for whoever wants to know.
struct ApplicationNotifications {
    Observers didFinishLaunching;
    Observers willBecomeActive;
    Observers willResignActive;
};

/// The component's own resources: their name and type among the program's.
inline constexpr std::string_view reviewManagerBundleName = "UAAppReviewManager-OSX";
inline constexpr std::string_view reviewManagerBundleType = "bundle";

/// What the rating prompt works on. All must outlive it, but for `globalQueue`, which must go first.
struct ReviewParts {
    /// To be used from the main thread and from `globalQueue`: it must bear that.
    StandardUserDefaults& userDefaults;
    const Bundle& bundle;
    const StringsTables& componentStrings;
    const StringsTables& mainStrings;
    AlertPanel& alertPanel;
    AlertSheet& alertSheet;
    Workspace& workspace;
    Reachability& reachability;
    SystemLog& log;
    Dispatch& dispatch;
    /// Where counting is done, beside the main thread.
    Queue& globalQueue;
    ApplicationNotifications& notifications;
    ReviewConfiguration configuration = {};
};

enum class CanPrompt { no, yes };

/// Decides when to ask the user to rate the application, asks, and remembers the answer. It counts uses from
/// the program's notifications by itself; an integration sets the identifier and calls appLaunched. Main
/// thread.
class UAAppReviewManager {
  public:
    /// The one that the whole program shares, made from `parts` at the first call and never again.
    [[nodiscard]] static UAAppReviewManager& defaultManager(const ReviewParts& parts);

    explicit UAAppReviewManager(const ReviewParts& parts);
    UAAppReviewManager(const UAAppReviewManager&) = delete;
    UAAppReviewManager& operator=(const UAAppReviewManager&) = delete;
    ~UAAppReviewManager() = default;

    // What happened.
    void appLaunched() { appLaunched(CanPrompt::yes); }
    void appLaunched(CanPrompt canPrompt) { showPromptIfNecessary(canPrompt); }
    void appLaunchedWithShouldPromptBlock(const ShouldPromptBlock& block);
    void appEnteredForeground(CanPrompt canPrompt) { showPromptIfNecessary(canPrompt); }
    void appEnteredForegroundWithShouldPromptBlock(const ShouldPromptBlock& block);
    /// Counts beside the main thread, then shows the prompt if necessary.
    void userDidSignificantEvent(CanPrompt canPrompt);
    void userDidSignificantEventWithShouldPromptBlock(const ShouldPromptBlock& block);

    /// Asks now, if there is an identifier and a network.
    void showPrompt();
    void showPromptIfNecessary() { showPromptIfNecessary(CanPrompt::yes); }
    /// Records the rating and opens the page for it.
    void rateApp();
    [[nodiscard]] std::string reviewURLString() const;

    // The texts: what was set, else the standard text in the user's language.
    [[nodiscard]] std::string appName() const;
    void setAppName(std::optional<std::string> name) { settings_.appName = std::move(name); }
    [[nodiscard]] std::string reviewTitle() const;
    void setReviewTitle(std::optional<std::string> title) { settings_.reviewTitle = std::move(title); }
    [[nodiscard]] std::string reviewMessage() const;
    void setReviewMessage(std::optional<std::string> text) { settings_.reviewMessage = std::move(text); }
    [[nodiscard]] std::string rateButtonTitle() const;
    void setRateButtonTitle(std::optional<std::string> title) {
        settings_.rateButtonTitle = std::move(title);
    }
    [[nodiscard]] std::string cancelButtonTitle() const;
    void setCancelButtonTitle(std::optional<std::string> text) {
        settings_.cancelButtonTitle = std::move(text);
    }
    /// None when there is no reminding.
    [[nodiscard]] std::optional<std::string> remindButtonTitle() const;
    void setRemindButtonTitle(std::optional<std::string> text) {
        settings_.remindButtonTitle = std::move(text);
    }

    // The settings.
    [[nodiscard]] const std::optional<std::string>& appID() const { return settings_.appID; }
    void setAppID(std::optional<std::string> identifier) { settings_.appID = std::move(identifier); }
    [[nodiscard]] std::uint32_t daysUntilPrompt() const { return settings_.daysUntilPrompt; }
    void setDaysUntilPrompt(std::uint32_t days) { settings_.daysUntilPrompt = days; }
    [[nodiscard]] std::uint32_t usesUntilPrompt() const { return settings_.usesUntilPrompt; }
    void setUsesUntilPrompt(std::uint32_t uses) { settings_.usesUntilPrompt = uses; }
    [[nodiscard]] std::uint32_t significantEventsUntilPrompt() const;
    void setSignificantEventsUntilPrompt(std::uint32_t events);
    [[nodiscard]] std::uint32_t daysBeforeReminding() const { return settings_.daysBeforeReminding; }
    void setDaysBeforeReminding(std::uint32_t days) { settings_.daysBeforeReminding = days; }
    [[nodiscard]] bool tracksNewVersions() const { return settings_.tracksNewVersions; }
    void setTracksNewVersions(bool isTracking) { settings_.tracksNewVersions = isTracking; }
    [[nodiscard]] bool shouldPromptIfRated() const { return settings_.shouldPromptIfRated; }
    void setShouldPromptIfRated(bool isAskedAgain) { settings_.shouldPromptIfRated = isAskedAgain; }
    [[nodiscard]] bool debug() const { return settings_.debugEnabled; }
    void setDebug(bool isEnabled) { settings_.debugEnabled = isEnabled; }
    [[nodiscard]] bool useMainAppBundleForLocalizations() const;
    void setUseMainAppBundleForLocalizations(bool isMain);
    [[nodiscard]] const std::optional<std::string>& affiliateCode() const { return settings_.affiliateCode; }
    void setAffiliateCode(std::optional<std::string> code) { settings_.affiliateCode = std::move(code); }
    [[nodiscard]] const std::optional<std::string>& affiliateCampaignCode() const;
    void setAffiliateCampaignCode(std::optional<std::string> code);
    [[nodiscard]] const std::string& keyPrefix() const { return settings_.keys.prefix; }
    void setKeyPrefix(std::string prefix) { settings_.keys.prefix = std::move(prefix); }
    /// With the prefix; none for a type that has no key.
    [[nodiscard]] std::optional<std::string> keyForUAAppReviewManagerKeyType(UAAppReviewManagerKeyType) const;
    void setKeyForUAAppReviewManagerKeyType(std::string key, UAAppReviewManagerKeyType type);
    [[nodiscard]] StandardUserDefaults& userDefaultsObject() const { return *userDefaultsObject_; }
    /// It must outlive this object, or the next one that is set.
    void setUserDefaultsObject(StandardUserDefaults& store) { userDefaultsObject_ = &store; }

    // Who is told.
    void setOnDidDisplayAlert(ReviewBlock block) { settings_.didDisplayAlertBlock = std::move(block); }
    void setOnDeclineToRate(ReviewBlock block) { settings_.didDeclineToRateBlock = std::move(block); }
    void setOnDidOptToRate(ReviewBlock block) { settings_.didOptToRateBlock = std::move(block); }
    void setOnDidOptToRemindLater(ReviewBlock block) {
        settings_.didOptToRemindLaterBlock = std::move(block);
    }
    void setShouldPromptBlock(ShouldPromptBlock block) { settings_.shouldPromptBlock = std::move(block); }
    void setShouldIncrementUseCountBlock(ShouldIncrementUseCountBlock block);

    // Older names.
    void setAppId(std::optional<std::string> identifier) { setAppID(std::move(identifier)); }
    void setTimeBeforeReminding(std::uint32_t days) { setDaysBeforeReminding(days); }
    void setAlwaysUseMainBundle(bool isMain) { setUseMainAppBundleForLocalizations(isMain); }
    /// Accepted and not used: blocks have taken a delegate's place.
    void setDelegate(const void* /*delegate*/) {}

    /// The alert that was shown last and not hidden since.
    [[nodiscard]] const std::optional<Alert>& ratingAlert() const { return ratingAlert_; }
    /// Nothing reads it.
    [[nodiscard]] bool modalPanelOpen() const { return modalPanelOpen_; }
    void setModalPanelOpen(bool isOpen) { modalPanelOpen_ = isOpen; }

  private:
    enum class Caller { mainThread, globalQueue };

    void countUse();
    void countSignificantEvent(CanPrompt canPrompt, const ReviewSettings& settings);
    void showPromptIfNecessary(CanPrompt canPrompt);
    /// `settings` as they were on the main thread, for a caller that is not on it.
    void showPromptIfNecessary(CanPrompt canPrompt, const ReviewSettings& settings, const ReviewStore& store,
                               Caller caller);
    [[nodiscard]] bool isVetoed(const ReviewSettings& settings, const ReviewStore& store, Caller caller);
    [[nodiscard]] ReviewSettings settingsWithShouldPromptBlock(const ShouldPromptBlock& block) const;
    [[nodiscard]] bool connectedToNetwork(const ReviewSettings& settings);

    void showRatingAlert();
    void hideRatingAlert();
    void handleAnswer(std::int32_t answer);
    void decline();
    void remindLater();

    [[nodiscard]] ReviewStore store() const { return {*userDefaultsObject_, settings_.keys, storeLock_}; }
    [[nodiscard]] std::string runningVersion() const;
    [[nodiscard]] std::string localized(std::string_view key) const;
    [[nodiscard]] const StringsTables& strings() const;
    void logIfDebugging(const ReviewSettings& settings, std::string_view text);

    const ReviewParts parts_;
    ReviewSettings settings_;
    StandardUserDefaults* userDefaultsObject_;
    std::shared_ptr<std::mutex> storeLock_ = std::make_shared<std::mutex>();
    std::optional<Alert> ratingAlert_;
    bool modalPanelOpen_ = false;
    std::array<Observation, 3> observations_;
};

}  // namespace calorivo
