#include "desktop/Promotion.h"

#include <QCoreApplication>

#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

namespace calorivo {

namespace {

namespace fs = std::filesystem;

std::string translated(const char* text) {
    return QCoreApplication::translate("Promotion", text).toStdString();
}

bool hasEntry(std::string_view dataFolder, const std::string& identifier) {
    std::error_code error;
    return dataFolder.starts_with('/') &&
           fs::is_regular_file(fs::path(dataFolder) / "applications" / (identifier + ".desktop"), error);
}

bool isFolder(const std::string& path) {
    std::error_code error;
    return fs::is_directory(path, error);
}

}  // namespace

PromotionTexts promotionTexts() {
    return {
        .panelTitle = translated(QT_TRANSLATE_NOOP("Promotion", "Meet Vantix")),
        .panelText = translated(
            QT_TRANSLATE_NOOP("Promotion", "All of Calorivo, and the rest of your machine with it.")),
        .learnMoreButton = translated(QT_TRANSLATE_NOOP("Promotion", "Learn More")),
        .closeButton = translated(QT_TRANSLATE_NOOP("Promotion", "Do not show this again")),
        .upgradeTitle = translated(QT_TRANSLATE_NOOP("Promotion", "Upgrade to Vantix")),
        .upgradeText = translated(QT_TRANSLATE_NOOP("Promotion",
                                                    "Vantix is the larger program by the makers of Calorivo. "
                                                    "When you start it, Calorivo steps aside.")),
        .downloadButton = translated(QT_TRANSLATE_NOOP("Promotion", "Download Vantix")),
        .laterButton = translated(QT_TRANSLATE_NOOP("Promotion", "Not Now"))};
}

bool isInstalledForDesktop(const Environment& environment, const std::string& identifier) {
    std::string home = environment("XDG_DATA_HOME").value_or("");
    if (!home.starts_with('/')) home = environment("HOME").value_or("") + "/.local/share";
    if (hasEntry(home, identifier)) return true;
    const std::string shared = environment("XDG_DATA_DIRS").value_or("");
    std::string_view rest = shared.empty() ? "/usr/local/share:/usr/share" : std::string_view(shared);
    while (!rest.empty()) {
        const std::string_view folder = rest.substr(0, rest.find(':'));
        if (hasEntry(folder, identifier)) return true;
        rest.remove_prefix(std::min(rest.size(), folder.size() + 1));
    }
    return false;
}

Promotion::Promotion(const PromotionParts& parts, QtInterface& interface,
                     PromotionConfiguration configuration)
    : processes_("/proc", ::geteuid()),
      views_(interface.mainWindow()),
      promotion_({.preferences = parts.preferences,
                  .keys = parts.keys,
                  .views = views_,
                  .workspace = parts.workspace,
                  .dispatch = parts.dispatch,
                  .processes = processes_,
                  .hasBundleWithIdentifier =
                      [](const std::string& identifier) {
                          return isInstalledForDesktop(processEnvironment, identifier);
                      },
                  .hasBundleWithPath = isFolder,
                  .terminate = parts.terminate},
                 std::move(configuration)) {
    views_.connectTo(promotion_);
    promotion_.setupVantixView();
    // Nobody who has removed the panel, or has the sibling, is offered it at every start.
    if (!parts.preferences.hideVantixView) interface.setUpgradeWindow(&views_.upgradeWindow());
}

}  // namespace calorivo
