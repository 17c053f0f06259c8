#include "platform/linux/LoginItem.h"

#include "platform/Utf8.h"
#include "platform/linux/SmallFile.h"
#include "platform/linux/StateFile.h"

#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <optional>

namespace calorivo {

namespace {

constexpr std::string_view autostart = "/autostart";
constexpr std::string_view hiddenEntry = "[Desktop Entry]\nType=Application\nName=Calorivo\nHidden=true\n";

std::string absolute(const std::optional<std::string>& folder) {
    return folder && folder->starts_with('/') ? *folder : std::string();
}

/// The escapes of every text in a desktop entry.
std::string escapedText(std::string_view text) {
    std::string out;
    for (const char character : text) {
        switch (character) {
            case '\\':
                out += "\\\\";
                break;
            case '\n':
                out += "\\n";
                break;
            case '\r':
                out += "\\r";
                break;
            case '\t':
                out += "\\t";
                break;
            default:
                out += character;
        }
    }
    return out;
}

/// One argument of a command line, in quotes. A percent sign would begin a field code.
std::string quotedArgument(std::string_view argument) {
    std::string out = "\"";
    for (const char character : argument) {
        if (std::string_view("\"`$\\").find(character) != std::string_view::npos) out += '\\';
        if (character == '%') out += '%';
        out += character;
    }
    return out + '"';
}

/// A program's path may have no "=" in a command line, and some desktops do not find it with a "%"; an
/// argument may have both: then a shell that is given the path as an argument starts it.
std::string commandLine(const std::string& program) {
    if (program.find_first_of("=%") == std::string::npos) return quotedArgument(program) + " --login";
    return "/bin/sh -c " + quotedArgument("exec \"$0\" --login") + ' ' + quotedArgument(program);
}

std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        lines.push_back(line);
    }
    return lines;
}

/// Whether the file has every line of `entry`, and none that would undo them.
bool says(std::string_view file, std::string_view entry) {
    const auto has = [lines = linesOf(file)](std::string_view line) {
        return std::find(lines.begin(), lines.end(), line) != lines.end();
    };
    const auto limits = [lines = linesOf(file)](std::string_view key) {
        return std::any_of(lines.begin(), lines.end(),
                           [key](std::string_view line) { return line.starts_with(key); });
    };
    constexpr std::array<std::string_view, 3> limitingKeys{"Hidden=", "OnlyShowIn=", "NotShowIn="};
    const auto wanted = linesOf(entry);
    if (!std::all_of(wanted.begin(), wanted.end(), has)) return false;
    return entry == hiddenEntry || std::none_of(limitingKeys.begin(), limitingKeys.end(), limits);
}

bool isFileName(std::string_view identifier) {
    return !identifier.empty() && !identifier.starts_with('.') &&
           identifier.find('/') == std::string_view::npos && identifier.find('\0') == std::string_view::npos;
}

bool isThere(const std::string& path) {
    return readSmallFile(path, SymbolicLinks::followed).state != SmallFile::State::absent;
}

}  // namespace

LoginItemPlaces loginItemPlaces(const Environment& environment, const std::string& executable) {
    LoginItemPlaces places;
    places.configurationFolder = absolute(environment("XDG_CONFIG_HOME"));
    const std::string home = absolute(environment("HOME"));
    if (places.configurationFolder.empty() && !home.empty()) places.configurationFolder = home + "/.config";
    const std::string folders = environment("XDG_CONFIG_DIRS").value_or("");
    std::string_view rest = folders.empty() ? "/etc/xdg" : std::string_view(folders);
    while (!rest.empty()) {
        const std::string_view folder = rest.substr(0, rest.find(':'));
        rest.remove_prefix(std::min(rest.size(), folder.size() + 1));
        if (folder.starts_with('/')) places.systemFolders.emplace_back(folder);
    }
    places.program = absolute(environment("APPIMAGE"));
    if (places.program.empty()) places.program = executable;
    return places;
}

std::string loginItemEntry(const std::string& program) {
    if (firstInvalidByte(program) || program.find('\0') != std::string::npos) return {};
    return "[Desktop Entry]\n"
           "Type=Application\n"
           "Name=Calorivo\n"
           "Exec=" +
           escapedText(commandLine(program)) +
           "\n"
           "TryExec=" +
           escapedText(program) +
           "\n"
           "Icon=calorivo\n"
           "X-GNOME-Autostart-enabled=true\n";
}

bool LoginItem::SMLoginItemSetEnabled(std::string_view identifier, bool isEnabled) {
    if (!isFileName(identifier)) return false;
    const std::string name = std::string(identifier) + ".desktop";
    return isEnabled ? enable(name) : disable(name);
}

bool LoginItem::enable(const std::string& name) const {
    const bool canStart = places_.program.starts_with('/') && access(places_.program.c_str(), X_OK) == 0;
    const std::string entry = loginItemEntry(places_.program);
    return canStart && !entry.empty() && write(name, entry);
}

bool LoginItem::disable(const std::string& name) const {
    if (isStartedBySystem(name)) return write(name, std::string(hiddenEntry));
    if (places_.configurationFolder.empty()) return true;
    const std::string path = (places_.configurationFolder + std::string(autostart) + '/').append(name);
    return unlink(path.c_str()) == 0 || errno == ENOENT || errno == ENOTDIR;
}

bool LoginItem::write(const std::string& name, const std::string& text) const {
    if (places_.configurationFolder.empty()) return false;
    const std::string folder = places_.configurationFolder + std::string(autostart);
    const std::string path = (folder + '/').append(name);
    if (says(readSmallFile(path, SymbolicLinks::followed).text, text)) return true;
    if (!createPrivateFolder(folder).empty() || !replaceFile(folder, name, text).empty()) return false;
    return readSmallFile(path, SymbolicLinks::followed).text == text;
}

bool LoginItem::isStartedBySystem(const std::string& name) const {
    return std::any_of(places_.systemFolders.begin(), places_.systemFolders.end(),
                       [&name](const std::string& folder) {
                           return isThere((folder + std::string(autostart) + '/').append(name));
                       });
}

}  // namespace calorivo
