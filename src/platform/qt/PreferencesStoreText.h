#pragma once

#include "platform/KeyValueCoding.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The text of a preferences file.
//
//     [General]
//     tempUnit=1                         a whole number of 32 bits
//     threshold=2.5                      a fraction: it has a point, an exponent, or is inf, -inf or nan
//     showAlerts=true                    a flag
//     name="50 \"\\\n\x1B"               a text; \xHH is one byte
//     logFileBookmarkData=@Data(AAEC)    bytes, in base 64
//
// Lines that begin with # or ; are comments. In keys, a byte other than A-Z a-z 0-9 _ . - is %HH. Values that
// begin with another @ are those of other versions of the program: they stay, and read as nil. Sections
// other than [General], and their keys, belong to others and stay as well.

namespace calorivo {

/// The value as it stands in the file; empty for nil.
[[nodiscard]] std::string preferenceText(const Value& value);
/// The value of a text; nil for one of another version, none for a text that is no value at all.
[[nodiscard]] std::optional<Value> preferenceValue(std::string_view text);

/// A preferences file in memory: its lines, and what they say. What is not changed stays as it was written.
class PreferencesStoreText {
  public:
    /// A line that cannot be used, counted from 1.
    struct Problem {
        std::size_t line;
        std::string reason;
        friend bool operator==(const Problem&, const Problem&) = default;
    };

    PreferencesStoreText() = default;
    /// Takes every text: lines that cannot be used are left out and told in problems().
    explicit PreferencesStoreText(std::string_view text);

    [[nodiscard]] const std::vector<Problem>& problems() const { return problems_; }

    /// Nil when there is no such key. Of several lines with the key the last one counts.
    [[nodiscard]] Value value(std::string_view key) const;
    /// The value as it is written; empty when there is no such key.
    [[nodiscard]] std::string writtenValue(std::string_view key) const;
    /// Nil removes the key.
    void set(std::string_view key, const Value& value);
    /// Sets every key that this text does not have and the other one has.
    void addMissingFrom(const PreferencesStoreText& other);

    [[nodiscard]] std::string text() const;

  private:
    struct Line {
        std::string text;
        /// Empty for a comment, a section and what belongs to others.
        std::string key;
        std::string writtenValue;
        Value value;
    };

    void takeLine(std::string_view line, std::size_t number, bool isWhole);
    [[nodiscard]] std::string takeContent(std::string_view content, Line line);
    [[nodiscard]] std::string takeKey(std::string_view content, Line line);
    [[nodiscard]] const Line* find(std::string_view key) const;
    void append(Line line);

    std::vector<Line> lines_;
    std::vector<Problem> problems_;
    /// While reading: whether the lines are the program's own.
    bool isOwnSection_ = true;
    /// Where the next key is inserted: behind the last line of the program's own section.
    std::size_t endOfOwnSection_ = 0;
};

}  // namespace calorivo
