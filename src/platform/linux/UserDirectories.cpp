#include "platform/linux/UserDirectories.h"

#include "platform/linux/SmallFile.h"

#include <pwd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <vector>

namespace calorivo {

namespace {

struct DirectoryRow {
    std::string_view key;
    std::string_view standard;
    std::string UserDirectories::*place;
};

constexpr std::array<DirectoryRow, 3> directoryRows{{
    {"XDG_DOCUMENTS_DIR", "/Documents", &UserDirectories::documents},
    {"XDG_DOWNLOAD_DIR", "/Downloads", &UserDirectories::downloads},
    {"XDG_DESKTOP_DIR", "/Desktop", &UserDirectories::desktop},
}};

void skipBlanks(std::string_view& text) {
    text.remove_prefix(std::min(text.size(), text.find_first_not_of(" \t")));
}

/// What stands between double quotes, a backslash taking the next character as it stands.
std::optional<std::string> quotedText(std::string_view text) {
    if (!text.starts_with('"')) return std::nullopt;
    std::string out;
    for (std::size_t i = 1; i < text.size(); ++i) {
        if (text[i] == '"') return out;
        if (text[i] == '\\' && i + 1 < text.size()) ++i;
        out += text[i];
    }
    return std::nullopt;
}

/// The folder that a value names; none for a value that counts as absent.
std::optional<std::string> folderOf(std::string_view quoted, const std::string& home) {
    constexpr std::string_view homeVariable = "$HOME";
    auto value = quotedText(quoted);
    if (!value) return std::nullopt;
    std::string folder = *value;
    if (value->starts_with(homeVariable)) {
        folder = value->substr(homeVariable.size());
        if (!folder.empty() && folder.front() != '/') return std::nullopt;
        folder.insert(0, home);
    }
    if (!folder.starts_with('/')) return std::nullopt;
    const std::size_t last = folder.find_last_not_of('/');
    folder.resize(last == std::string::npos ? 1 : last + 1);
    return folder;
}

/// The text after "KEY=", when the line begins with that.
std::optional<std::string_view> valueOfLine(std::string_view line, std::string_view key) {
    skipBlanks(line);
    if (!line.starts_with(key)) return std::nullopt;
    line.remove_prefix(key.size());
    skipBlanks(line);
    if (!line.starts_with('=')) return std::nullopt;
    line.remove_prefix(1);
    skipBlanks(line);
    return line;
}

std::string absolute(const std::string& folder) { return folder.starts_with('/') ? folder : std::string(); }

std::string homeOfUser() {
    constexpr std::size_t room = 16384;
    std::vector<char> texts(room);
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(getuid(), &entry, texts.data(), texts.size(), &found) != 0 || found == nullptr) return {};
    return absolute(found->pw_dir);
}

}  // namespace

UserDirectories userDirectories(std::string_view text, const std::string& home) {
    UserDirectories directories;
    if (home.empty()) return directories;
    for (const DirectoryRow& row : directoryRows) (directories.*row.place = home) += row.standard;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        for (const DirectoryRow& row : directoryRows) {
            const auto value = valueOfLine(line, row.key);
            if (!value) continue;
            if (auto folder = folderOf(*value, home)) directories.*row.place = std::move(*folder);
        }
    }
    return directories;
}

UserDirectories userDirectories(const Environment& environment) {
    std::string home = absolute(environment("HOME").value_or(""));
    if (home.empty()) home = homeOfUser();
    std::string configuration = absolute(environment("XDG_CONFIG_HOME").value_or(""));
    if (configuration.empty()) configuration = home + "/.config";
    return userDirectories(readSmallFile(configuration + "/user-dirs.dirs", SymbolicLinks::followed).text,
                           home);
}

}  // namespace calorivo
