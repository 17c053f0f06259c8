#pragma once

#include "app/ReviewStore.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

// The settings of the rating prompt, and what follows from them without asking or showing anything.

namespace calorivo {

using ReviewBlock = std::function<void()>;
using ShouldPromptBlock = std::function<bool(const TrackingDictionary&)>;
using ShouldIncrementUseCountBlock = std::function<bool()>;

/// Placeholders, until there are real places.
struct ReviewConfiguration {
    std::string storeHost = "store.example.org";
    std::string defaultAffiliateCode = "000000";
    /// Any page that is always there.
    std::string reachabilityPage = "https://example.org/";
};

struct ReviewSettings {
    /// The application's identifier in the store; without it nothing is ever shown.
    std::optional<std::string> appID;
    // Texts; none for the standard ones.
    std::optional<std::string> appName;
    std::optional<std::string> reviewTitle;
    std::optional<std::string> reviewMessage;
    std::optional<std::string> rateButtonTitle;
    std::optional<std::string> cancelButtonTitle;
    std::optional<std::string> remindButtonTitle;
    /// Since the first use.
    std::uint32_t daysUntilPrompt = 30;
    /// To be exceeded.
    std::uint32_t usesUntilPrompt = 20;
    std::uint32_t significantEventsUntilPrompt = 0;
    /// 0: there is no reminding.
    std::uint32_t daysBeforeReminding = 1;
    bool tracksNewVersions = true;
    /// Whether who rated an earlier version is asked again.
    bool shouldPromptIfRated = true;
    /// Everybody is asked at once, and steps are logged.
    bool debugEnabled = false;
    bool useMainAppBundleForLocalizations = false;
    std::optional<std::string> affiliateCode;
    std::optional<std::string> affiliateCampaignCode = "UAAppReviewManager";
    ReviewKeys keys = {};
    ReviewBlock didDisplayAlertBlock;
    ReviewBlock didDeclineToRateBlock;
    ReviewBlock didOptToRateBlock;
    ReviewBlock didOptToRemindLaterBlock;
    /// May veto a prompt; called on the main thread.
    ShouldPromptBlock shouldPromptBlock;
    /// May veto the counting of a use; called where uses are counted, not on the main thread.
    ShouldIncrementUseCountBlock shouldIncrementUseCountBlock;
};

/// Whether the user may be asked now.
[[nodiscard]] bool ratingConditionsHaveBeenMet(const ReviewSettings& settings, const ReviewStore& store,
                                               WallTime now);

/// The address of the application's page for reviews. What is none is written as "(null)".
[[nodiscard]] std::string reviewURLString(const ReviewSettings& settings, std::string_view storeHost);

/// The text with the first "%@" replaced. Unlike the patterns for `format` it may come from a file.
[[nodiscard]] std::string filledWithName(std::string text, std::string_view name);

}  // namespace calorivo
