#include "platform/linux/RuleParser.h"

#include <algorithm>
#include <optional>

namespace calorivo {
namespace {

constexpr std::size_t longestLine = 1000;

bool isBlank(char c) { return c == ' ' || c == '\t' || c == '\r'; }

/// Takes the next column off a line. An empty result without a reason is the end of the line or a comment.
std::optional<std::string_view> takeColumn(std::string_view& line, std::string& reason) {
    while (!line.empty() && isBlank(line.front())) line.remove_prefix(1);
    if (line.empty() || line.front() == '#') return std::nullopt;
    std::size_t begin = 0;
    std::size_t end = 0;
    std::size_t next = 0;
    if (line.front() == '"') {
        begin = 1;
        end = line.find('"', 1);
        if (end == std::string_view::npos) {
            reason = "a quote is not closed";
            return std::nullopt;
        }
        next = end + 1;
        if (next < line.size() && !isBlank(line[next])) {
            reason = "a blank is missing after a closing quote";
            return std::nullopt;
        }
    } else {
        while (end < line.size() && !isBlank(line[end])) ++end;
        next = end;
    }
    const std::string_view column = line.substr(begin, end - begin);
    line.remove_prefix(next);
    return column;
}

std::string parseChannels(std::string_view text, NamingRule& rule) {
    if (!text.starts_with("temp") && !text.starts_with("fan"))
        return "the channel \"" + std::string(text) + "\" begins neither with temp nor with fan";
    rule.channels = text;
    return {};
}

std::string parseKey(std::string_view text, NamingRule& rule) {
    const bool isFan = rule.channels.starts_with("fan");
    if (const KeyFamilyRow* row = keyFamilyNamed(text)) {
        if (row->family != KeyFamily::skip && (row->family == KeyFamily::fan) != isFan)
            return "a fan's key is \"fan\" or \"skip\", a temperature's another one";
        rule.family = row->family;
        return {};
    }
    if (isFan || text.size() != 4 || !text.starts_with('T'))
        return "unknown kind of sensor \"" + std::string(text) + '"';
    if (!isTemperatureKey(text)) return "no sensor can have the key \"" + std::string(text) + '"';
    rule.family = KeyFamily::literal;
    rule.key = text;
    return {};
}

std::string parseArea(std::string_view text, NamingRule& rule) {
    if (rule.family == KeyFamily::fan) return text == "-" ? "" : "the area of a fan is -";
    if (std::ranges::find(ruleAreas, text) == ruleAreas.end())
        return "unknown area \"" + std::string(text) + '"';
    rule.area = text;
    return {};
}

std::string parseName(std::string_view text, NamingRule& rule) {
    if (text.empty()) return "the name is empty";
    for (std::size_t i = text.find('{'); i != std::string_view::npos; i = text.find('{', i + 1)) {
        const std::string_view rest = text.substr(i);
        const std::string_view placeholder = rest.substr(0, rest.find('}') + 1);
        if (std::ranges::find(rulePlaceholders, placeholder) == rulePlaceholders.end())
            return "unknown placeholder \"" + std::string(placeholder.empty() ? rest : placeholder) + '"';
    }
    rule.name = text;
    return {};
}

std::string parseCondition(std::string_view text, NamingRule& rule) {
    constexpr std::string_view unless = "unless=";
    constexpr std::string_view with = "with=";
    if (text.starts_with(unless) && text.size() > unless.size())
        rule.unless = text.substr(unless.size());
    else if (text.starts_with(with) && text.size() > with.size())
        rule.with = text.substr(with.size());
    else
        return "unknown condition \"" + std::string(text) + '"';
    return {};
}

/// The columns after the chip. Returns why they make no rule; empty when they do.
std::string parseRest(std::string_view line, NamingRule& rule) {
    using Step = std::string (*)(std::string_view, NamingRule&);
    constexpr Step parseLabels = [](std::string_view text, NamingRule& r) {
        r.labels = text;
        return std::string(text.empty() ? "the label is empty; \"-\" stands for none" : "");
    };
    constexpr std::array<Step, 5> steps{parseChannels, parseLabels, parseKey, parseArea, parseName};
    constexpr std::size_t keyStep = 2;
    std::string reason;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const std::optional<std::string_view> column = takeColumn(line, reason);
        if (!reason.empty()) return reason;
        const bool isEnough = i > keyStep && rule.family == KeyFamily::skip;
        if (!column && isEnough) return {};
        if (!column) return "columns are missing: chip, channel, label, key, area and name are needed";
        reason = isEnough && *column == "-" ? "" : steps[i](*column, rule);
        if (!reason.empty()) return reason;
    }
    while (const std::optional<std::string_view> column = takeColumn(line, reason))
        if (std::string problem = parseCondition(*column, rule); !problem.empty()) return problem;
    return reason;
}

}  // namespace

std::vector<NamingRule> parseNamingRules(std::string_view text, const std::string& file,
                                         const ChipFilter& isWanted, std::vector<std::string>& problems) {
    std::vector<NamingRule> rules;
    if (text.starts_with("\xEF\xBB\xBF")) text.remove_prefix(3);
    for (int number = 1; !text.empty(); ++number) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        std::string reason;
        const bool isTooLong = line.size() > longestLine;
        if (isTooLong) line = {};
        const std::optional<std::string_view> chips = takeColumn(line, reason);
        if (isTooLong) reason = "the line is too long";
        if (chips && isWanted(*chips)) {
            NamingRule rule;
            rule.chips = *chips;
            reason = parseRest(line, rule);
            if (reason.empty()) rules.push_back(std::move(rule));
        }
        if (!reason.empty())
            problems.push_back(
                std::string(file).append(":").append(std::to_string(number)).append(": ").append(reason));
    }
    return rules;
}

}  // namespace calorivo
