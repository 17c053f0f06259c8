#pragma once

#include "platform/FileLinks.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// Paths as texts, and where they lead. All functions are stateless; any thread.

namespace calorivo {

/// The path without ".", "..", doubled separators and a separator at its end. The file system is not asked: a
/// ".." takes away the component before it even if that is a link.
[[nodiscard]] std::string stringByStandardizingPath(std::string_view path);
/// The root, if the path is absolute, then the name of each component.
[[nodiscard]] std::vector<std::string> pathComponents(std::string_view path);
[[nodiscard]] std::string lastPathComponent(std::string_view path);
/// The folder of the last component; empty for a single name, the root for itself.
[[nodiscard]] std::string stringByDeletingLastPathComponent(std::string_view path);
[[nodiscard]] std::string stringByAppendingPathComponent(std::string path, std::string_view component);
/// What follows the last dot of the last component; empty when nothing precedes or follows it.
[[nodiscard]] std::string pathExtension(std::string_view path);

namespace SymlinksAndAliases {

/// Asked before every hop; false abandons the resolution, which then has no result. Empty: never asked.
using MayHop = std::function<bool()>;

/// Allows this many hops.
[[nodiscard]] MayHop hopBudget(int hops);

/// The path with every component resolved; none if any step fails or the path is not absolute.
[[nodiscard]] std::optional<std::string> stringByResolvingSymlinksAndAliases(const std::string& path,
                                                                             const FileLinks& links,
                                                                             const MayHop& mayHop = {});
/// The path's last component resolved until it is neither link nor alias; none when an entry on the way is
/// missing. A cycle of links never ends, unless `mayHop` ends it.
[[nodiscard]] std::optional<std::string> stringByIterativelyResolvingSymlinkOrAlias(
    const std::string& path, const FileLinks& links, const MayHop& mayHop = {});
/// One hop, or the path itself if it is not a link.
[[nodiscard]] std::string stringByResolvingSymlink(const std::string& path, const FileLinks& links);
/// One hop, or the path itself if it is not an alias.
[[nodiscard]] std::string stringByResolvingAlias(const std::string& path, const FileLinks& links);
/// One hop, or none if it is not a link.
[[nodiscard]] std::optional<std::string> stringByConditionallyResolvingSymlink(const std::string& path,
                                                                               const FileLinks& links);
/// One hop, or none if it is not an alias.
[[nodiscard]] std::optional<std::string> stringByConditionallyResolvingAlias(const std::string& path,
                                                                             const FileLinks& links);

}  // namespace SymlinksAndAliases

}  // namespace calorivo
