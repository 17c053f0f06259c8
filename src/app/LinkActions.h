#pragma once

#include "app/Configuration.h"
#include "platform/Bundle.h"
#include "platform/SysCtl.h"
#include "platform/Workspace.h"

#include <string>
#include <string_view>

namespace calorivo {

/// The text with every byte escaped that may not stand in an address. Kept: as ASCII and not as UTF-8; a
/// character that ASCII does not have becomes an escaped question mark.
[[nodiscard]] std::string stringByAddingPercentEscapesUsingASCIIEncoding(std::string_view text);

/// The actions that open a page or a mail. Main thread.
class LinkActions {
  public:
    /// All must outlive this object.
    LinkActions(const LinkTargets& targets, Workspace& workspace, SysCtl& sysCtl, const Bundle& bundle,
                const std::string& osVersionString)
        : targets_(targets),
          workspace_(workspace),
          sysCtl_(sysCtl),
          bundle_(bundle),
          osVersionString_(osVersionString) {}

    /// Composes a mail that tells model and system.
    void thankYouFeedbackClicked();
    void thankYouRateClicked() { workspace_.openURL(targets_.storeProductPage); }
    void twitterFollowClicked() { workspace_.openURL(targets_.socialPage); }
    void moreAppsClicked() { workspace_.openURL(targets_.storeArtistPage); }
    void subscribeToNewsletterClicked() { workspace_.openURL(targets_.newsletterPage); }
    void helpAction() { workspace_.openURL(targets_.supportPage); }

  private:
    const LinkTargets& targets_;
    Workspace& workspace_;
    SysCtl& sysCtl_;
    const Bundle& bundle_;
    const std::string& osVersionString_;
};

}  // namespace calorivo
