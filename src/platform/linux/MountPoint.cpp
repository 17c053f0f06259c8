#include "platform/linux/MountPoint.h"

#include <algorithm>
#include <cstddef>

namespace calorivo {

namespace {

std::vector<std::string_view> words(std::string_view line) {
    std::vector<std::string_view> found;
    while (!line.empty()) {
        const std::string_view word = line.substr(0, line.find(' '));
        if (!word.empty()) found.push_back(word);
        line.remove_prefix(std::min(line.size(), word.size() + 1));
    }
    return found;
}

bool isOctal(std::string_view digits) {
    return digits.size() == 3 && digits.find_first_not_of("01234567") == std::string_view::npos &&
           digits.front() < '4';
}

/// The kernel writes blanks and backslashes as three octal digits.
std::string unescaped(std::string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::string_view digits = text.substr(i + 1, 3);
        if (text[i] != '\\' || !isOctal(digits)) {
            out.push_back(text[i]);
            continue;
        }
        out.push_back(static_cast<char>((digits[0] - '0') * 64 + (digits[1] - '0') * 8 + (digits[2] - '0')));
        i += digits.size();
    }
    return out;
}

bool hasOption(std::string_view options, std::string_view wanted) {
    while (!options.empty()) {
        const std::string_view option = options.substr(0, options.find(','));
        if (option == wanted) return true;
        options.remove_prefix(std::min(options.size(), option.size() + 1));
    }
    return false;
}

bool isWithin(std::string_view path, std::string_view folder) {
    if (folder == "/") return path.starts_with('/');
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

/// "36 35 8:1 / /mnt rw,noatime shared:1 - ext4 /dev/sda1 rw": any number of fields stand before the dash.
std::optional<Mount> parseMount(std::string_view line) {
    constexpr std::size_t deviceField = 2;
    constexpr std::size_t pointField = 4;
    constexpr std::size_t optionsField = 5;
    const std::vector<std::string_view> fields = words(line);
    const auto dash = std::find(fields.begin(), fields.end(), "-");
    if (dash - fields.begin() <= static_cast<std::ptrdiff_t>(optionsField) || fields.end() - dash < 3)
        return std::nullopt;
    const bool isReadOnly =
        hasOption(fields[optionsField], "ro") || (fields.end() - dash > 3 && hasOption(dash[3], "ro"));
    return Mount{unescaped(fields[pointField]), unescaped(dash[2]), isReadOnly,
                 std::string(fields[deviceField])};
}

}  // namespace

std::vector<Mount> parseMounts(std::string_view mountInfo) {
    std::vector<Mount> mounts;
    while (!mountInfo.empty()) {
        const std::string_view line = mountInfo.substr(0, mountInfo.find('\n'));
        if (auto mount = parseMount(line)) mounts.push_back(std::move(*mount));
        mountInfo.remove_prefix(std::min(mountInfo.size(), line.size() + 1));
    }
    return mounts;
}

std::optional<Mount> mountOf(std::string_view path, const std::vector<Mount>& mounts) {
    const Mount* best = nullptr;
    for (const Mount& mount : mounts)
        if (isWithin(path, mount.point) && (best == nullptr || mount.point.size() >= best->point.size()))
            best = &mount;
    return best != nullptr ? std::optional(*best) : std::nullopt;
}

}  // namespace calorivo
