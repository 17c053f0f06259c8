#include "app/FileUtilities.h"

#include <filesystem>
#include <memory>

namespace calorivo {

std::string stringByStandardizingPath(std::string_view path) {
    std::string text = std::filesystem::path(path).lexically_normal().string();
    while (text.size() > 1 && text.ends_with('/')) text.pop_back();
    return text;
}

std::vector<std::string> pathComponents(std::string_view path) {
    std::vector<std::string> components;
    if (path.starts_with('/')) components.emplace_back("/");
    while (!path.empty()) {
        const std::string_view name = path.substr(0, path.find('/'));
        if (!name.empty()) components.emplace_back(name);
        path.remove_prefix(name.size() < path.size() ? name.size() + 1 : name.size());
    }
    return components;
}

std::string lastPathComponent(std::string_view path) {
    const std::vector<std::string> components = pathComponents(path);
    return components.empty() ? std::string() : components.back();
}

std::string stringByDeletingLastPathComponent(std::string_view path) {
    while (path.size() > 1 && path.ends_with('/')) path.remove_suffix(1);
    const std::size_t slash = path.rfind('/');
    if (slash == std::string_view::npos) return {};
    path = path.substr(0, slash);
    while (path.ends_with('/')) path.remove_suffix(1);
    return path.empty() ? "/" : std::string(path);
}

std::string stringByAppendingPathComponent(std::string path, std::string_view component) {
    if (!path.empty() && !path.ends_with('/')) path += '/';
    return path.append(component);
}

std::string pathExtension(std::string_view path) {
    const std::string name = lastPathComponent(path);
    const std::size_t dot = name.rfind('.');
    return dot == std::string::npos || dot == 0 ? std::string() : name.substr(dot + 1);
}

namespace SymlinksAndAliases {

MayHop hopBudget(int hops) {
    return [left = std::make_shared<int>(hops)] { return (*left)-- > 0; };
}

std::optional<std::string> stringByResolvingSymlinksAndAliases(const std::string& path,
                                                               const FileLinks& links, const MayHop& mayHop) {
    const std::string standardized = stringByStandardizingPath(path);
    if (!standardized.starts_with('/')) return std::nullopt;
    const std::vector<std::string> components = pathComponents(standardized);
    std::string resolved = components.front();
    for (std::size_t i = 1; i < components.size(); ++i) {
        const auto next = stringByIterativelyResolvingSymlinkOrAlias(
            stringByAppendingPathComponent(resolved, components[i]), links, mayHop);
        if (!next) return std::nullopt;
        resolved = *next;
    }
    return resolved;
}

std::optional<std::string> stringByIterativelyResolvingSymlinkOrAlias(const std::string& path,
                                                                      const FileLinks& links,
                                                                      const MayHop& mayHop) {
    std::string current = path;
    // Kept: nothing counts the hops, a cycle of links never ends, as in the system's own resolution. Whoever
    // must not hang says so with `mayHop`.
    for (;;) {
        const std::optional<FileType> type = links.lstat(current);
        if (!type) return std::nullopt;
        if (*type == FileType::directory) return current;
        const bool isLink = *type == FileType::symbolicLink;
        const auto hop = isLink ? stringByConditionallyResolvingSymlink(current, links)
                                : stringByConditionallyResolvingAlias(current, links);
        if (!hop) return isLink ? std::nullopt : std::optional(current);
        if (mayHop && !mayHop()) return std::nullopt;
        current = *hop;
    }
}

std::string stringByResolvingSymlink(const std::string& path, const FileLinks& links) {
    return stringByConditionallyResolvingSymlink(path, links).value_or(path);
}

std::string stringByResolvingAlias(const std::string& path, const FileLinks& links) {
    return stringByConditionallyResolvingAlias(path, links).value_or(path);
}

std::optional<std::string> stringByConditionallyResolvingSymlink(const std::string& path,
                                                                 const FileLinks& links) {
    const std::optional<std::string> destination = links.destinationOfSymbolicLink(path);
    if (!destination || destination->starts_with('/')) return destination;
    return stringByStandardizingPath(
        stringByAppendingPathComponent(stringByDeletingLastPathComponent(path), *destination));
}

std::optional<std::string> stringByConditionallyResolvingAlias(const std::string& path,
                                                               const FileLinks& links) {
    return links.resolveAliasFile(path);
}

}  // namespace SymlinksAndAliases

}  // namespace calorivo
