#include "app/DirectoryLocations.h"

#include "app/FileUtilities.h"
#include "platform/Format.h"

#include <utility>
#include <vector>

namespace calorivo {

namespace {

Error noPathFound(std::int32_t directory, std::int32_t domainMask, const StringsTables& strings) {
    return {std::string(directoryLocationDomain),
            0,
            {{std::string(localizedDescriptionKey),
              strings.localizedString("No path found for directory in domain.", "Errors")},
             {"NSSearchPathDirectory", directory},
             {"NSSearchPathDomainMask", domainMask}}};
}

}  // namespace

std::optional<std::string> DirectoryLocations::findOrCreateDirectoryInDomainAppendPathComponentError(
    std::int32_t searchPathDirectory, std::int32_t domainMask,
    const std::optional<std::string>& appendComponent, std::optional<Error>* error) const {
    const std::vector<std::string> paths = searchPath_.directoriesInDomains(searchPathDirectory, domainMask);
    if (paths.empty()) {
        if (error != nullptr) *error = noPathFound(searchPathDirectory, domainMask, strings_);
        return std::nullopt;
    }
    std::string path = paths.front();
    if (appendComponent) path = stringByAppendingPathComponent(std::move(path), *appendComponent);
    std::optional<Error> failure = files_.createDirectoryAtPath(path);
    const bool isCreated = !failure;
    if (error != nullptr) *error = std::move(failure);
    return isCreated ? std::optional(path) : std::nullopt;
}

std::optional<std::string> DirectoryLocations::applicationSupportDirectory() const {
    std::optional<Error> error;
    std::optional<std::string> path = findOrCreateDirectoryInDomainAppendPathComponentError(
        SearchPathDirectory::applicationSupport, SearchPathDomainMask::user,
        bundle_.objectForInfoDictionaryKey("CFBundleExecutable"), &error);
    if (!path)
        log_.log(format("Unable to find or create application support directory:\n%@",
                        error.value_or(Error()).description()));
    return path;
}

}  // namespace calorivo
