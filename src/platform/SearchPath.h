#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace calorivo {

/// The numbers of the standard folders. Others exist; a number that is not known has no folders.
namespace SearchPathDirectory {
inline constexpr std::int32_t applications = 1;
inline constexpr std::int32_t applicationSupport = 14;
inline constexpr std::int32_t downloads = 15;
/// Every folder in which programs are installed.
inline constexpr std::int32_t allApplications = 100;
}  // namespace SearchPathDirectory

/// Whose folders: a sum of these.
namespace SearchPathDomainMask {
inline constexpr std::int32_t user = 1;
inline constexpr std::int32_t local = 2;
inline constexpr std::int32_t all = 0x0ffff;
}  // namespace SearchPathDomainMask

/// Where the system keeps its standard folders. Main thread.
class SearchPath {
  public:
    SearchPath() = default;
    SearchPath(const SearchPath&) = delete;
    SearchPath& operator=(const SearchPath&) = delete;
    virtual ~SearchPath() = default;

    /// The absolute paths of the folders, whether they exist or not: the user's first, then the machine's.
    [[nodiscard]] virtual std::vector<std::string> directoriesInDomains(std::int32_t directory,
                                                                        std::int32_t domainMask) const = 0;
};

}  // namespace calorivo
