#include "app/StringsTables.h"

#include <algorithm>
#include <cstddef>

namespace calorivo {

namespace {

constexpr std::string_view developmentLanguage = "en";
constexpr std::size_t tableLimit = std::size_t{1} << 20U;

/// The locale without its encoding and modifier.
std::string_view withoutEncoding(std::string_view locale) {
    return locale.substr(0, locale.find_first_of(".@"));
}

/// It becomes part of a path.
bool isLanguage(std::string_view name) {
    constexpr std::string_view allowed = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-";
    return !name.empty() && name.find_first_not_of(allowed) == std::string_view::npos;
}

std::string_view firstSet(const LanguageVariables& variables) {
    if (!variables.lcAll.empty()) return variables.lcAll;
    return !variables.lcMessages.empty() ? variables.lcMessages : variables.lang;
}

void add(std::vector<std::string>& languages, std::string_view language) {
    if (isLanguage(language) && std::find(languages.begin(), languages.end(), language) == languages.end())
        languages.emplace_back(language);
}

}  // namespace

std::vector<std::string> preferredLanguages(const LanguageVariables& variables) {
    const std::string_view locale = withoutEncoding(firstSet(variables));
    std::vector<std::string> languages;
    if (locale.empty() || locale == "C" || locale == "POSIX") return {std::string(developmentLanguage)};
    std::string_view rest = variables.language.empty() ? locale : variables.language;
    while (!rest.empty()) {
        const std::string_view item = rest.substr(0, rest.find(':'));
        rest.remove_prefix(std::min(rest.size(), item.size() + 1));
        const std::string_view name = withoutEncoding(item);
        const std::string_view language = name.substr(0, name.find('_'));
        if (language == developmentLanguage) break;
        add(languages, name);
        add(languages, language);
    }
    languages.emplace_back(developmentLanguage);
    return languages;
}

std::string StringsTables::localizedString(std::string_view key, std::string_view table) const {
    return find(key, table).value_or(std::string(key));
}

std::optional<std::string> StringsTables::find(std::string_view key, std::string_view table) const {
    if (folder_.empty()) return std::nullopt;
    for (const std::string& language : languages_) {
        std::string path = folder_;
        path.append("/").append(language).append(".lproj/").append(table).append(".strings");
        if (const auto text = read(path).find(key)) return std::string(*text);
    }
    return std::nullopt;
}

const StringsTable& StringsTables::read(const std::string& path) const {
    const auto known = tables_.find(path);
    if (known != tables_.end()) return known->second;
    const FileContents contents = files_.contentsAtPath(path, tableLimit);
    StringsTable::Parsed parsed;
    if (contents.isRead()) parsed = StringsTable::parse(contents.text, path);
    if (!parsed.problem.empty()) problems_.push_back(parsed.problem);
    return tables_.emplace(path, std::move(parsed.table)).first->second;
}

}  // namespace calorivo
