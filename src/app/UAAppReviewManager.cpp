#include "app/UAAppReviewManager.h"

#include "platform/Format.h"

#include <utility>

namespace calorivo {

UAAppReviewManager& UAAppReviewManager::defaultManager(const ReviewParts& parts) {
    static UAAppReviewManager manager(parts);
    return manager;
}

UAAppReviewManager::UAAppReviewManager(const ReviewParts& parts)
    : parts_(parts), userDefaultsObject_(&parts.userDefaults) {
    settings_.affiliateCode = parts_.configuration.defaultAffiliateCode;
    ApplicationNotifications& notifications = parts_.notifications;
    observations_ = {notifications.didFinishLaunching.add([this] { countUse(); }),
                     notifications.willBecomeActive.add([this] { countUse(); }),
                     notifications.willResignActive.add([this] { hideRatingAlert(); })};
}

// What happened.

void UAAppReviewManager::countUse() {
    parts_.globalQueue.async([store = store(), version = runningVersion(), now = parts_.dispatch.wallTime(),
                              mayCount = settings_.shouldIncrementUseCountBlock,
                              tracks = settings_.tracksNewVersions]() mutable {
        store.migrateAppiraterKeysIfNecessary();
        if (mayCount && !mayCount()) return;
        store.count(ReviewCounter::uses, version, tracks ? TracksNewVersions::yes : TracksNewVersions::no,
                    now);
    });
}

void UAAppReviewManager::countSignificantEvent(CanPrompt canPrompt, const ReviewSettings& settings) {
    parts_.globalQueue.async([this, canPrompt, settings, store = store(), version = runningVersion(),
                              now = parts_.dispatch.wallTime()]() mutable {
        store.count(ReviewCounter::significantEvents, version,
                    settings.tracksNewVersions ? TracksNewVersions::yes : TracksNewVersions::no, now);
        showPromptIfNecessary(canPrompt, settings, store, Caller::globalQueue);
    });
}

void UAAppReviewManager::appLaunchedWithShouldPromptBlock(const ShouldPromptBlock& block) {
    showPromptIfNecessary(CanPrompt::yes, settingsWithShouldPromptBlock(block), store(), Caller::mainThread);
}

void UAAppReviewManager::appEnteredForegroundWithShouldPromptBlock(const ShouldPromptBlock& block) {
    showPromptIfNecessary(CanPrompt::yes, settingsWithShouldPromptBlock(block), store(), Caller::mainThread);
}

void UAAppReviewManager::userDidSignificantEvent(CanPrompt canPrompt) {
    countSignificantEvent(canPrompt, settings_);
}

void UAAppReviewManager::userDidSignificantEventWithShouldPromptBlock(const ShouldPromptBlock& block) {
    countSignificantEvent(CanPrompt::yes, settingsWithShouldPromptBlock(block));
}

ReviewSettings UAAppReviewManager::settingsWithShouldPromptBlock(const ShouldPromptBlock& block) const {
    ReviewSettings settings = settings_;
    settings.shouldPromptBlock = block;
    return settings;
}

// Asking.

void UAAppReviewManager::showPrompt() {
    if (settings_.appID && connectedToNetwork(settings_)) showRatingAlert();
}

void UAAppReviewManager::showPromptIfNecessary(CanPrompt canPrompt) {
    showPromptIfNecessary(canPrompt, settings_, store(), Caller::mainThread);
}

void UAAppReviewManager::showPromptIfNecessary(CanPrompt canPrompt, const ReviewSettings& settings,
                                               const ReviewStore& store, Caller caller) {
    if (canPrompt == CanPrompt::no) return;
    if (!ratingConditionsHaveBeenMet(settings, store, parts_.dispatch.wallTime())) return;
    if (!connectedToNetwork(settings) || isVetoed(settings, store, caller)) return;
    parts_.dispatch.mainQueue().async([this] { showRatingAlert(); });
}

bool UAAppReviewManager::isVetoed(const ReviewSettings& settings, const ReviewStore& store, Caller caller) {
    if (!settings.shouldPromptBlock) return false;
    const TrackingDictionary tracking = store.trackingDictionary();
    if (caller == Caller::mainThread) return !settings.shouldPromptBlock(tracking);
    bool isVetoed = true;
    parts_.dispatch.mainQueue().sync([&] { isVetoed = !settings.shouldPromptBlock(tracking); });
    return isVetoed;
}

bool UAAppReviewManager::connectedToNetwork(const ReviewSettings& settings) {
    const std::optional<std::uint32_t> flags = parts_.reachability.flagsForAddress({});
    if (!flags) {
        logIfDebugging(settings, "Error. Could not recover network reachability flags");
        return false;
    }
    const bool isReachable =
        (*flags & ReachabilityFlags::reachable) != 0 && (*flags & ReachabilityFlags::connectionRequired) == 0;
    const bool isTransient = (*flags & ReachabilityFlags::transientConnection) != 0;
    if (!isReachable && !isTransient) return false;
    return parts_.reachability.createConnection({.url = parts_.configuration.reachabilityPage,
                                                 .cachePolicy = CachePolicy::reloadIgnoringLocalCacheData,
                                                 .timeoutSeconds = 20.0});
}

void UAAppReviewManager::showRatingAlert() {
    ratingAlert_ = Alert{.message = reviewTitle(),
                         .defaultButton = rateButtonTitle(),
                         .alternateButton = cancelButtonTitle(),
                         .otherButton = remindButtonTitle(),
                         .informativeText = format("%@", reviewMessage())};
    // A copy: the alert may be forgotten while it is shown.
    const Alert alert = *ratingAlert_;
    if (parts_.alertSheet.hasKeyWindow()) {
        parts_.alertSheet.beginSheet(alert, [this](std::int32_t answer) { handleAnswer(answer); });
    } else {
        constexpr std::array answers{AlertReturn::defaultButton, AlertReturn::alternateButton,
                                     AlertReturn::otherButton};
        handleAnswer(answers.at(static_cast<std::size_t>(parts_.alertPanel.runModal(alert))));
    }
    if (settings_.didDisplayAlertBlock) settings_.didDisplayAlertBlock();
}

void UAAppReviewManager::hideRatingAlert() {
    if (!ratingAlert_) return;
    logIfDebugging(settings_, "Hiding Alert");
    parts_.alertSheet.endSheet();
    ratingAlert_.reset();
}

// The answers.

void UAAppReviewManager::handleAnswer(std::int32_t answer) {
    switch (answer) {
        case AlertReturn::defaultButton:
            return rateApp();
        case AlertReturn::alternateButton:
            return decline();
        case AlertReturn::otherButton:
            return remindLater();
        default:
            return;
    }
}

void UAAppReviewManager::decline() {
    store().setDeclined();
    if (settings_.didDeclineToRateBlock) settings_.didDeclineToRateBlock();
}

void UAAppReviewManager::remindLater() {
    store().setReminderRequest(parts_.dispatch.wallTime());
    if (settings_.didOptToRemindLaterBlock) settings_.didOptToRemindLaterBlock();
}

void UAAppReviewManager::rateApp() {
    store().setRated();
    parts_.workspace.openURL(reviewURLString());
    if (settings_.didOptToRateBlock) settings_.didOptToRateBlock();
}

std::string UAAppReviewManager::reviewURLString() const {
    return calorivo::reviewURLString(settings_, parts_.configuration.storeHost);
}

// The texts.

std::string UAAppReviewManager::appName() const {
    constexpr std::string_view information = "InfoPlist";
    constexpr std::string_view displayName = "CFBundleDisplayName";
    constexpr std::string_view bundleName = "CFBundleName";
    if (settings_.appName) return *settings_.appName;
    if (auto name = parts_.mainStrings.find(displayName, information)) return *name;
    if (auto name = parts_.mainStrings.find(bundleName, information)) return *name;
    std::string name = parts_.bundle.objectForInfoDictionaryKey(displayName);
    return !name.empty() ? name : parts_.bundle.objectForInfoDictionaryKey(bundleName);
}

std::string UAAppReviewManager::reviewTitle() const {
    return settings_.reviewTitle ? *settings_.reviewTitle : filledWithName(localized("Rate %@"), appName());
}

std::string UAAppReviewManager::reviewMessage() const {
    constexpr std::string_view standard =
        "If you enjoy using %@, would you mind taking a moment to rate it? It won't take more than a "
        "minute. Thanks for your support!";
    return settings_.reviewMessage ? *settings_.reviewMessage
                                   : filledWithName(localized(standard), appName());
}

std::string UAAppReviewManager::rateButtonTitle() const {
    return settings_.rateButtonTitle ? *settings_.rateButtonTitle
                                     : filledWithName(localized("Rate %@"), appName());
}

std::string UAAppReviewManager::cancelButtonTitle() const {
    return settings_.cancelButtonTitle ? *settings_.cancelButtonTitle : localized("No, Thanks");
}

std::optional<std::string> UAAppReviewManager::remindButtonTitle() const {
    if (settings_.daysBeforeReminding == 0) return std::nullopt;
    return settings_.remindButtonTitle ? *settings_.remindButtonTitle : localized("Remind me later");
}

std::string UAAppReviewManager::localized(std::string_view key) const {
    return strings().localizedString(key, "UAAppReviewManagerLocalizable");
}

const StringsTables& UAAppReviewManager::strings() const {
    return settings_.useMainAppBundleForLocalizations ? parts_.mainStrings : parts_.componentStrings;
}

// The settings.

std::uint32_t UAAppReviewManager::significantEventsUntilPrompt() const {
    return settings_.significantEventsUntilPrompt;
}

void UAAppReviewManager::setSignificantEventsUntilPrompt(std::uint32_t events) {
    settings_.significantEventsUntilPrompt = events;
}

bool UAAppReviewManager::useMainAppBundleForLocalizations() const {
    return settings_.useMainAppBundleForLocalizations;
}

void UAAppReviewManager::setUseMainAppBundleForLocalizations(bool isMain) {
    settings_.useMainAppBundleForLocalizations = isMain;
}

const std::optional<std::string>& UAAppReviewManager::affiliateCampaignCode() const {
    return settings_.affiliateCampaignCode;
}

void UAAppReviewManager::setAffiliateCampaignCode(std::optional<std::string> code) {
    settings_.affiliateCampaignCode = std::move(code);
}

std::optional<std::string> UAAppReviewManager::keyForUAAppReviewManagerKeyType(
    UAAppReviewManagerKeyType type) const {
    return settings_.keys.keyForType(type);
}

void UAAppReviewManager::setKeyForUAAppReviewManagerKeyType(std::string key, UAAppReviewManagerKeyType type) {
    settings_.keys.setName(std::move(key), type);
}

void UAAppReviewManager::setShouldIncrementUseCountBlock(ShouldIncrementUseCountBlock block) {
    settings_.shouldIncrementUseCountBlock = std::move(block);
}

std::string UAAppReviewManager::runningVersion() const {
    return parts_.bundle.objectForInfoDictionaryKey("CFBundleVersion");
}

void UAAppReviewManager::logIfDebugging(const ReviewSettings& settings, std::string_view text) {
    if (settings.debugEnabled) parts_.log.log(format("[UAAppReviewManager] %@", text));
}

}  // namespace calorivo
