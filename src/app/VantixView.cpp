#include "app/VantixView.h"

#include "app/ProcessList.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <utility>
#include <vector>

namespace calorivo {

namespace {

using std::chrono_literals::operator""s;

bool isHexadecimal(std::string_view text) {
    return text.size() == 2 && text.find_first_not_of("0123456789ABCDEFabcdef") == std::string_view::npos;
}

}  // namespace

bool isURL(std::string_view address) {
    constexpr std::string_view allowed =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789-._~:/?#[]@!$&'()*+,;=%";
    if (address.empty() || address.find_first_not_of(allowed) != std::string_view::npos) return false;
    for (std::size_t i = address.find('%'); i != std::string_view::npos; i = address.find('%', i + 1))
        if (!isHexadecimal(address.substr(i + 1, 2))) return false;
    return true;
}

VantixView::VantixView(const VantixParts& parts, PromotionConfiguration configuration)
    : parts_(parts), configuration_(std::move(configuration)) {
    parts_.views.setTexts(configuration_.texts);
}

void VantixView::setupVantixView() {
    if (isSiblingInstalled()) {
        hasVantix_ = true;
        hideVantixView();
    } else if (parts_.preferences.hideVantixView) {
        hideVantixView();
    }
    parts_.views.setPanelRoundedCorners(allCorners);
}

bool VantixView::isSiblingInstalled() const {
    return parts_.hasBundleWithIdentifier(configuration_.siblingIdentifier) ||
           parts_.hasBundleWithPath(configuration_.siblingPath);
}

void VantixView::hideVantixView() {
    parts_.views.setPanelHidden(true);
    if (parts_.preferences.hideVantixView)
        growMainView();
    else
        shrinkWindow();
    parts_.preferences.hideVantixView = true;
}

/// The window has the panel still: it loses the panel's height at its bottom.
void VantixView::shrinkWindow() {
    PromotionViews& views = parts_.views;
    const AutoresizingMask mask = views.mainViewAutoresizingMask();
    // So that the content stays at the window's top meanwhile.
    views.setMainViewAutoresizingMask(flexibleLeftMargin + flexibleBottomMargin);
    Rectangle frame = views.windowFrame();
    frame.y += views.panelHeight();
    frame.height -= views.panelHeight();
    views.setWindowFrame(frame);
    views.setMainViewAutoresizingMask(mask);
}

/// The panel was removed in an earlier run and the window just made: its content covers the panel's place.
void VantixView::growMainView() {
    Rectangle frame = parts_.views.mainViewFrame();
    frame.y -= parts_.views.panelHeight();
    frame.height += parts_.views.panelHeight();
    parts_.views.setMainViewFrame(frame);
}

void VantixView::upgradeToVantixClicked() {
    if (isURL(configuration_.downloadAddress)) {
        parts_.workspace.openURL(configuration_.downloadAddress);
        vantixCheckTimer_ =
            parts_.dispatch.scheduleTimer(2s, Repeats::yes, [this] { checkIfVantixIsOpenFired(); });
    }
    parts_.views.orderOutUpgradeWindow();
}

void VantixView::learnMoreVantixClicked() { parts_.workspace.openURL(configuration_.learnMoreAddress); }

void VantixView::checkIfVantixIsOpenFired() {
    if (!isSiblingRunning()) return;
    // Kept: the main thread stands still, so that the sibling starts undisturbed; the program ends next.
    parts_.dispatch.sleep(5s);
    parts_.keys.setValueForKey(false, "launchOnLogin");
    parts_.terminate();
}

bool VantixView::isSiblingRunning() const {
    const std::vector<ProcessRecord> records = Utils::getBSDProcessList(parts_.processes);
    return std::any_of(records.begin(), records.end(), [this](const ProcessRecord& record) {
        return record.processName == configuration_.siblingProcessName;
    });
}

}  // namespace calorivo
