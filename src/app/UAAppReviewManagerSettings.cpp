#include "app/UAAppReviewManagerSettings.h"

#include <cstddef>

namespace calorivo {

namespace {

using Type = UAAppReviewManagerKeyType;

bool haveDaysPassed(WallTime now, const Value& since, std::uint32_t days) {
    constexpr double secondsPerDay = 86400.0;
    return secondsSince1970(now) - since.doubleValue() >= days * secondsPerDay;
}

void replaceAll(std::string& text, std::string_view wanted, std::string_view replacement) {
    for (std::size_t at = text.find(wanted); at != std::string::npos;
         at = text.find(wanted, at + replacement.size()))
        text.replace(at, wanted.size(), replacement);
}

std::string described(const std::optional<std::string>& text) { return text.value_or("(null)"); }

}  // namespace

bool ratingConditionsHaveBeenMet(const ReviewSettings& settings, const ReviewStore& store, WallTime now) {
    if (settings.debugEnabled) return true;
    if (!settings.appID) return false;
    if (!haveDaysPassed(now, store.value(Type::firstUseDate), settings.daysUntilPrompt)) return false;
    // Kept: the uses are to be exceeded, the events only to be reached.
    if (store.value(Type::useCount).intValue() <= std::int64_t{settings.usesUntilPrompt}) return false;
    if (store.value(Type::significantEventCount).intValue() <
        std::int64_t{settings.significantEventsUntilPrompt})
        return false;
    if (store.value(Type::declinedToRate).boolValue() || store.value(Type::ratedCurrentVersion).boolValue())
        return false;
    if (!haveDaysPassed(now, store.value(Type::reminderRequestDate), settings.daysBeforeReminding))
        return false;
    return settings.shouldPromptIfRated || !store.value(Type::ratedAnyVersion).boolValue();
}

std::string reviewURLString(const ReviewSettings& settings, std::string_view storeHost) {
    std::string url = "macappstore://";
    url.append(storeHost).append(
        "/us/app/thumbs/idAPP_ID?ls=1&mt=12&at=AFFILIATE_CODE&ct=AFFILIATE_CAMPAIGN_CODE");
    replaceAll(url, "APP_ID", described(settings.appID));
    replaceAll(url, "AFFILIATE_CODE", described(settings.affiliateCode));
    replaceAll(url, "AFFILIATE_CAMPAIGN_CODE", described(settings.affiliateCampaignCode));
    return url;
}

std::string filledWithName(std::string text, std::string_view name) {
    constexpr std::string_view placeholder = "%@";
    if (const std::size_t at = text.find(placeholder); at != std::string::npos)
        text.replace(at, placeholder.size(), name);
    return text;
}

}  // namespace calorivo
