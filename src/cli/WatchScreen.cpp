#include "cli/WatchScreen.h"

#include "cli/Text.h"
#include "platform/Format.h"

#include <algorithm>

namespace calorivo {

namespace {

struct KeySequence {
    std::string_view sequence;
    WatchKey key;
};
constexpr KeySequence keySequences[] = {
    {"\033[A", WatchKey::up},      {"\033OA", WatchKey::up},        {"k", WatchKey::up},
    {"\033[B", WatchKey::down},    {"\033OB", WatchKey::down},      {"j", WatchKey::down},
    {"\033[5~", WatchKey::pageUp}, {"\033[6~", WatchKey::pageDown}, {" ", WatchKey::pageDown},
    {"b", WatchKey::pageUp},       {"\033[H", WatchKey::home},      {"\033[1~", WatchKey::home},
    {"g", WatchKey::home},         {"\033[F", WatchKey::end},       {"\033[4~", WatchKey::end},
    {"G", WatchKey::end},          {"q", WatchKey::quit},           {"Q", WatchKey::quit},
};

/// Lines around the moving part: the title, an empty one, the table's first line; the status.
constexpr std::size_t linesAbove = 3;
constexpr std::size_t linesBelow = 1;

bool isBeginning(std::string_view input) {
    return std::ranges::any_of(keySequences, [input](const KeySequence& known) {
        return known.sequence.size() > input.size() && known.sequence.starts_with(input);
    });
}

std::string statusLine(std::string_view status, std::size_t first, std::size_t last, std::size_t count,
                       std::size_t columns) {
    std::string text = "q quits";
    if (last - first < count)
        appendFormat(text, "   \u2191\u2193 %llu\u2013%llu of %llu", {first + 1, last, count});
    text.append("   ").append(status);
    std::string line;
    appendFitted(line, text, std::min(columns, displayWidth(text)));
    return line;
}

}  // namespace

std::vector<WatchKey> WatchKeys::parse(std::string_view input) {
    rest_ += input;
    std::vector<WatchKey> keys;
    std::string_view left = rest_;
    while (!left.empty() && !isBeginning(left)) {
        const auto found = std::ranges::find_if(
            keySequences, [left](const KeySequence& known) { return left.starts_with(known.sequence); });
        if (found != std::end(keySequences)) keys.push_back(found->key);
        left.remove_prefix(found != std::end(keySequences) ? found->sequence.size() : 1);
    }
    rest_ = std::string(left);
    return keys;
}

std::vector<std::string> WatchScreen::lines(const ScreenContents& contents, const ScreenSize& size,
                                            const Style& style) {
    const std::size_t count = contents.table.empty() ? 0 : contents.table.size() - 1;
    const std::size_t around = linesAbove + linesBelow;
    page_ = size.rows > around ? size.rows - around : 0;
    lastPlace_ = count > page_ ? count - page_ : 0;
    place_ = std::min(place_, lastPlace_);
    const std::size_t end = std::min(count, place_ + page_);

    std::vector<std::string> lines;
    std::string title;
    appendFitted(title, contents.title, std::min(size.columns, displayWidth(contents.title)));
    style.append(lines.emplace_back(), title, Ink::title);
    lines.emplace_back();
    lines.push_back(contents.table.empty() ? std::string() : contents.table.front());
    for (std::size_t i = place_; i < end; ++i) lines.push_back(contents.table[i + 1]);
    lines.resize(std::max(size.rows, std::size_t{1}) - 1);
    style.append(lines.emplace_back(), statusLine(contents.status, place_, end, count, size.columns),
                 Ink::faint);
    return lines;
}

void WatchScreen::move(WatchKey key) {
    const std::size_t page = std::max<std::size_t>(page_, 1);
    const auto back = [this](std::size_t lines) { place_ -= std::min(lines, place_); };
    switch (key) {
        case WatchKey::up:
            return back(1);
        case WatchKey::pageUp:
            return back(page);
        case WatchKey::home:
            return back(place_);
        case WatchKey::down:
            place_ = std::min(place_ + 1, lastPlace_);
            return;
        case WatchKey::pageDown:
            place_ = std::min(place_ + page, lastPlace_);
            return;
        case WatchKey::end:
            place_ = lastPlace_;
            return;
        case WatchKey::quit:
            return;
    }
}

std::string repaintText(const std::vector<std::string>& before, const std::vector<std::string>& now) {
    std::string text;
    for (std::size_t i = 0; i < now.size(); ++i) {
        if (i < before.size() && before[i] == now[i]) continue;
        appendFormat(text, "\033[%llu;1H%@\033[K", {i + 1, now[i]});
    }
    return text;
}

}  // namespace calorivo
