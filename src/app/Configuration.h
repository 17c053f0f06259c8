#pragma once

#include "platform/ModelTable.h"

#include <string>
#include <string_view>
#include <vector>

namespace calorivo {

/// Where links and mails go. Placeholders, until there are real places.
struct LinkTargets {
    std::string_view supportMailbox = "support@example.org";
    std::string_view storeProductPage = "https://example.org/store/calorivo?at=affiliate";
    std::string_view socialPage = "https://example.org/social";
    std::string_view storeArtistPage = "store://example.org/artist";
    std::string_view newsletterPage = "https://example.org/newsletter";
    std::string_view supportPage = "https://example.org/support";
};

/// What distinguishes one build or one distribution of the program from another.
struct Configuration {
    LinkTargets links;
    std::string_view loginHelperIdentifier = "org.example.calorivo.login-helper";
    std::string_view checkQueueLabel = "org.example.calorivo.checkqueue";
    std::string_view logQueueLabel = "org.example.calorivo.logqueue";
    /// The one model on which a powered-down discrete GPU keeps its last plausible value; empty for none.
    std::string retainingGPUModel;
    std::vector<ModelTable> modelTables;
    /// The user's Documents folders, absolute paths; none where there is no such thing.
    std::vector<std::string> documentDirectories;
};

}  // namespace calorivo
