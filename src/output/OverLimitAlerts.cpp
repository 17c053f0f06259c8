#include "output/OverLimitAlerts.h"

#include "platform/Format.h"

#include <array>
#include <chrono>
#include <utility>

namespace calorivo {

namespace {

constexpr std::chrono::seconds repeatInterval(600);
constexpr std::string_view averageKey = "CPUAverage";
constexpr const char* advice =
    "Quitting applications or putting the computer to sleep for a while will help to cool it down.";

struct Kind {
    const char* name;
    const char* humanReadableName;
};
constexpr Kind specificTemperature{"SpecificTemperature", "Specific Temperature Over Limit"};
constexpr Kind computerTemperature{"ComputerTemperature", "Computer Temperature Over Limit"};
constexpr std::array kinds{specificTemperature, computerTemperature};

}  // namespace

OverLimitAlerts::~OverLimitAlerts() {
    parts_.growl.load({});
    parts_.growl.setGrowlDelegate(nullptr);
}

void OverLimitAlerts::initGrowl() {
    parts_.growl.load([this](const std::string& name, const std::string& version) {
        parts_.systemLog.log(format("Using Growl.framework %@ (%@)", name, version));
        parts_.growl.setGrowlDelegate(this);
    });
    // Kept: once more in every case, which does no harm.
    parts_.growl.setGrowlDelegate(this);
}

GrowlDictionary OverLimitAlerts::registrationDictionaryForGrowl() const {
    std::vector<std::string> names;
    std::map<std::string, std::string> humanReadableNames;
    for (const Kind& kind : kinds) {
        names.emplace_back(kind.name);
        humanReadableNames.emplace(kind.name, kind.humanReadableName);
    }
    return {{"ApplicationName", "Calorivo"},
            {"AllNotifications", names},
            {"DefaultNotifications", names},
            {"HumanReadableNames", humanReadableNames}};
}

void OverLimitAlerts::growlNotificationWasClicked(const std::string& /*clickContext*/) {
    parts_.activateAndShowMainWindow();
}

void OverLimitAlerts::showAlertForOverlimitAreaWithName(double celsius, const std::string& name) {
    if (!beginAlert(name)) return;
    parts_.growl.notify({.title = format("%@ is %@", name, parts_.reader.convertDegreesToString(celsius)),
                         .description = advice,
                         .notificationName = specificTemperature.name,
                         .isSticky = parts_.preferences.useStickyAlerts,
                         .clickContext = "showAlertForOverlimitArea"});
}

void OverLimitAlerts::showAlertForOverlimitAverage(double celsius) {
    if (!beginAlert(averageKey)) return;
    parts_.growl.notify({.title = format("Avg CPU Temp is %@", parts_.reader.convertDegreesToString(celsius)),
                         .description = advice,
                         .notificationName = computerTemperature.name,
                         .isSticky = parts_.preferences.useStickyAlerts,
                         .clickContext = "showAlertForOverlimitAverage"});
}

bool OverLimitAlerts::beginAlert(std::string_view key) {
    const Moment now = parts_.dispatch.now();
    const auto last = nameToAlertTimeMap_.find(key);
    if (last != nameToAlertTimeMap_.end() && now - last->second < repeatInterval) return false;
    // Nothing is recorded: the alert comes as soon as there is somebody to show it.
    if (!parts_.growl.respondsToNotify()) return false;
    nameToAlertTimeMap_.insert_or_assign(std::string(key), now);
    return true;
}

}  // namespace calorivo
