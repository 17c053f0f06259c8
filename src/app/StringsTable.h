#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace calorivo {

/// The texts of one language under their keys, as a file of this form has them:
///
///     /* a comment */
///     "key" = "text";   // another
///
/// In quotes, \" \\ \n \t \r and \Uxxxx (four hexadecimal digits, a UTF-16 unit) stand for a character. The
/// file is UTF-8, or UTF-16 that begins with a byte order mark.
class StringsTable {
  public:
    /// What a file gave. After a mistake the entries before it are there.
    struct Parsed;
    /// `fileName` is for the words about a mistake.
    [[nodiscard]] static Parsed parse(std::string_view bytes, std::string_view fileName);

    /// None when there is no such entry. Valid as long as the table.
    [[nodiscard]] std::optional<std::string_view> find(std::string_view key) const;
    [[nodiscard]] const std::map<std::string, std::string, std::less<>>& entries() const { return entries_; }

  private:
    std::map<std::string, std::string, std::less<>> entries_;
};

struct StringsTable::Parsed {
    StringsTable table;
    /// The first mistake, as "file:line: reason"; empty when there is none.
    std::string problem;
};

}  // namespace calorivo
