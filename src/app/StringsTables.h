#pragma once

#include "app/StringsTable.h"
#include "platform/FileManager.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace calorivo {

/// What the environment says about languages; empty for what is not set.
struct LanguageVariables {
    std::string_view language = {};
    std::string_view lcAll = {};
    std::string_view lcMessages = {};
    std::string_view lang = {};
};

/// The user's languages, best first: each with its country ("de_AT"), then alone ("de"). The list ends with
/// "en", in which the texts are written: what comes after it is never needed.
[[nodiscard]] std::vector<std::string> preferredLanguages(const LanguageVariables& variables);

/// The program's texts in the user's language: tables in "FOLDER/LANGUAGE.lproj/TABLE.strings", each read
/// when it is first needed. A table or an entry that is missing is no error: the next language is tried, and
/// in the end the text is its key. Main thread.
class StringsTables {
  public:
    /// `files` must outlive this object. An empty folder or no language: every text is its key.
    StringsTables(FileManager& files, std::string folder, std::vector<std::string> languages)
        : files_(files), folder_(std::move(folder)), languages_(std::move(languages)) {}

    [[nodiscard]] std::string localizedString(std::string_view key, std::string_view table) const;
    /// None when no language has it.
    [[nodiscard]] std::optional<std::string> find(std::string_view key, std::string_view table) const;
    /// The mistakes in the files that were read so far, as "file:line: reason".
    [[nodiscard]] const std::vector<std::string>& problems() const { return problems_; }

  private:
    [[nodiscard]] const StringsTable& read(const std::string& path) const;

    FileManager& files_;
    const std::string folder_;
    const std::vector<std::string> languages_;
    mutable std::map<std::string, StringsTable> tables_;
    mutable std::vector<std::string> problems_;
};

}  // namespace calorivo
