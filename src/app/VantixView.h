#pragma once

#include "monitor/Preferences.h"
#include "platform/Dispatch.h"
#include "platform/KeyValueCoding.h"
#include "platform/ProcessListing.h"
#include "platform/Workspace.h"
#include "ui/Geometry.h"
#include "ui/Path.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace calorivo {

/// What the promotion of the sibling program says.
struct PromotionTexts {
    std::string panelTitle = "Meet Vantix";
    std::string panelText = "All of Calorivo, and the rest of your machine with it.";
    std::string learnMoreButton = "Learn More";
    std::string closeButton = "Do not show this again";
    std::string upgradeTitle = "Upgrade to Vantix";
    std::string upgradeText =
        "Vantix is the larger program by the makers of Calorivo. When you start it, Calorivo steps aside.";
    std::string downloadButton = "Download Vantix";
    std::string laterButton = "Not Now";
    friend bool operator==(const PromotionTexts&, const PromotionTexts&) = default;
};

/// What is promoted, and where it is. The addresses are placeholders, until there are real ones.
struct PromotionConfiguration {
    std::string siblingIdentifier = "org.example.vantix";
    std::string siblingPath = "/Applications/Calorivo Pro.app";
    std::string siblingProcessName = "Vantix";
    std::string downloadAddress = "https://example.org/vantix/latest.zip";
    std::string learnMoreAddress = "https://example.org/vantix";
    PromotionTexts texts = {};
};

/// How a view follows a change of its window's size: a sum of these. The other margins and sizes are fixed.
using AutoresizingMask = std::uint32_t;
inline constexpr AutoresizingMask flexibleLeftMargin = 1;
inline constexpr AutoresizingMask flexibleBottomMargin = 8;

/// The windows and views around the promotion, y upwards. Main thread.
class PromotionViews {
  public:
    PromotionViews() = default;
    PromotionViews(const PromotionViews&) = delete;
    PromotionViews& operator=(const PromotionViews&) = delete;
    virtual ~PromotionViews() = default;

    /// Fills panel and upgrade window.
    virtual void setTexts(const PromotionTexts& texts) = 0;
    // The panel at the bottom of the main window.
    virtual void setPanelHidden(bool isHidden) = 0;
    [[nodiscard]] virtual double panelHeight() const = 0;
    virtual void setPanelRoundedCorners(CornerMask corners) = 0;
    // The main window, and its content above the panel.
    [[nodiscard]] virtual Rectangle windowFrame() const = 0;
    /// The views in the window follow as their masks say, and everything is painted again.
    virtual void setWindowFrame(const Rectangle& frame) = 0;
    [[nodiscard]] virtual Rectangle mainViewFrame() const = 0;
    virtual void setMainViewFrame(const Rectangle& frame) = 0;
    [[nodiscard]] virtual AutoresizingMask mainViewAutoresizingMask() const = 0;
    virtual void setMainViewAutoresizingMask(AutoresizingMask mask) = 0;
    virtual void orderOutUpgradeWindow() = 0;
};

/// Whether an address can be read as one: the characters of addresses only, each % before two hexadecimal
/// digits.
[[nodiscard]] bool isURL(std::string_view address);

/// What the promotion works on. All must outlive it.
struct VantixParts {
    Preferences& preferences;
    KeyValueCoding& keys;
    PromotionViews& views;
    Workspace& workspace;
    Dispatch& dispatch;
    ProcessListing& processes;
    /// Whether this process already knows a bundle with the identifier, and whether one can be opened there.
    std::function<bool(const std::string& identifier)> hasBundleWithIdentifier;
    std::function<bool(const std::string& path)> hasBundleWithPath;
    /// Asks the program to end in the normal way.
    std::function<void()> terminate;
};

/// Promotes the sibling program: in a panel that goes for good when the user closes it or has the sibling,
/// and by an upgrade window; steps aside when the downloaded sibling starts. Main thread.
class VantixView {
  public:
    VantixView(const VantixParts& parts, PromotionConfiguration configuration);

    /// Whether the panel stays. To be called once, after the preferences are loaded.
    void setupVantixView();
    /// Removes the panel and lays the window out anew. The panel's close button.
    void hideVantixView();
    /// Downloads the sibling and waits for it to start. The upgrade window's button.
    void upgradeToVantixClicked();
    void learnMoreVantixClicked();
    /// One look whether the sibling runs; if so, the program ends.
    void checkIfVantixIsOpenFired();

    /// The sibling is installed.
    [[nodiscard]] bool hasVantix() const { return hasVantix_; }
    [[nodiscard]] bool isWatching() const { return vantixCheckTimer_ != nullptr; }

  private:
    [[nodiscard]] bool isSiblingInstalled() const;
    [[nodiscard]] bool isSiblingRunning() const;
    void shrinkWindow();
    void growMainView();

    VantixParts parts_;
    const PromotionConfiguration configuration_;
    bool hasVantix_ = false;
    std::unique_ptr<Timer> vantixCheckTimer_;
};

}  // namespace calorivo
