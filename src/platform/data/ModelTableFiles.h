#pragma once

#include "platform/ModelTable.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace calorivo {

/// The tables that could be read, in the order of their files' names, and what is wrong with the others, one
/// line each: `FILE: entry 3 (key "TC0"): reason`, `FILE:LINE:COLUMN: reason` or `FILE: reason`.
struct ModelTableFiles {
    std::vector<ModelTable> tables;
    std::vector<std::string> problems;
};

/// Reads every *.json file of the folder. A file that is broken in any way gives no table and one problem,
/// and so does one whose identifier an earlier file has; a folder that is absent gives nothing. With
/// `onlyIdentifier` given, only that machine's table is returned, and files in which the text does not occur
/// are passed over unread: the quick way for a program that needs one machine's table. `areas` are the names
/// that an entry's area may have.
[[nodiscard]] ModelTableFiles readModelTables(const std::string& folder,
                                              std::span<const std::string_view> areas,
                                              std::string_view onlyIdentifier = {});

/// Reads the folder's file of this name; an absent one gives nothing. For a folder whose files are named for
/// their machines, IDENTIFIER.json: all others stay unopened. An identifier with a slash has no such file.
[[nodiscard]] ModelTableFiles readModelTableNamed(const std::string& folder, const std::string& identifier,
                                                  std::span<const std::string_view> areas);

/// One table from the text of a file; a problem, beginning with `fileName`, when it is not valid.
[[nodiscard]] ModelTableFiles parseModelTable(std::string_view text, const std::string& fileName,
                                              std::span<const std::string_view> areas);

}  // namespace calorivo
