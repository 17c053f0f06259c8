#pragma once

#include "app/StringsTables.h"
#include "platform/Bundle.h"
#include "platform/Error.h"
#include "platform/FileOperations.h"
#include "platform/SearchPath.h"
#include "platform/SystemLog.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace calorivo {

inline constexpr std::string_view directoryLocationDomain = "DirectoryLocationDomain";

/// Finds the standard folders, making those that do not exist yet. Main thread.
class DirectoryLocations {
  public:
    /// All must outlive this object.
    DirectoryLocations(const SearchPath& searchPath, FileOperations& files, const Bundle& bundle,
                       const StringsTables& strings, SystemLog& log)
        : searchPath_(searchPath), files_(files), bundle_(bundle), strings_(strings), log_(log) {}

    /// The first of the folders, with the component appended, created if needed; none on failure. `error` is
    /// set to the reason of a failure and cleared on success.
    [[nodiscard]] std::optional<std::string> findOrCreateDirectoryInDomainAppendPathComponentError(
        std::int32_t searchPathDirectory, std::int32_t domainMask,
        const std::optional<std::string>& appendComponent, std::optional<Error>* error) const;
    /// The user's folder for this program's support files. A failure is logged.
    [[nodiscard]] std::optional<std::string> applicationSupportDirectory() const;

  private:
    const SearchPath& searchPath_;
    FileOperations& files_;
    const Bundle& bundle_;
    const StringsTables& strings_;
    SystemLog& log_;
};

}  // namespace calorivo
