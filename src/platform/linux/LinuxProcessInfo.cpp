#include "platform/linux/LinuxProcessInfo.h"

#include "platform/linux/SmallFile.h"

#include <algorithm>
#include <optional>

namespace calorivo {

namespace {

/// A word of the shell: bare, in single or in double quotes, or pieces of these one after another. None when
/// a quote is not closed.
std::optional<std::string> unquoted(std::string_view text) {
    constexpr std::string_view escapedInQuotes = "\"$\\`";
    std::string out;
    char quote = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char character = text[i];
        const char next = i + 1 < text.size() ? text[i + 1] : '\0';
        const bool isEscape = character == '\\' && next != '\0' && quote != '\'' &&
                              (quote == 0 || escapedInQuotes.find(next) != std::string_view::npos);
        if (isEscape)
            out += text[++i];
        else if (character == quote)
            quote = 0;
        else if (quote == 0 && (character == '"' || character == '\''))
            quote = character;
        else if (quote == 0 && (character == ' ' || character == '\t' || character == '\r'))
            break;
        else
            out += character;
    }
    if (quote != 0) return std::nullopt;
    return out;
}

/// One line for people: a control character becomes a blank.
std::string printable(std::string text) {
    std::replace_if(
        text.begin(), text.end(),
        [](char character) { return static_cast<unsigned char>(character) < ' ' || character == '\x7F'; },
        ' ');
    const std::size_t last = text.find_last_not_of(' ');
    text.resize(last == std::string::npos ? 0 : last + 1);
    return text;
}

}  // namespace

std::string osReleaseValue(std::string_view text, std::string_view key) {
    std::string value;
    while (!text.empty()) {
        std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        if (!line.starts_with(key) || line.size() == key.size() || line[key.size()] != '=') continue;
        line.remove_prefix(key.size() + 1);
        if (auto found = unquoted(line)) value = std::move(*found);
    }
    return value;
}

std::string LinuxProcessInfo::operatingSystemVersionString() const {
    SmallFile release = readSmallFile(root_ + "/etc/os-release", SymbolicLinks::followed);
    if (release.state == SmallFile::State::absent)
        release = readSmallFile(root_ + "/usr/lib/os-release", SymbolicLinks::followed);
    const std::string distribution = printable(osReleaseValue(release.text, "PRETTY_NAME"));
    const std::string kernel =
        printable(readSmallFile(root_ + "/proc/sys/kernel/osrelease", SymbolicLinks::followed).text);
    std::string description = kernel.empty() ? "Linux" : "Linux " + kernel;
    if (distribution.empty() || (kernel.empty() && distribution == "Linux")) return description;
    return kernel.empty() ? distribution : distribution + ", " + description;
}

}  // namespace calorivo
