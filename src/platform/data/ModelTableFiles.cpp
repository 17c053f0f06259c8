#include "platform/data/ModelTableFiles.h"

#include "platform/Format.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <optional>
#include <system_error>
#include <utility>

namespace calorivo {

namespace {

namespace fs = std::filesystem;

constexpr std::uintmax_t largestFile = std::uintmax_t{1024} * 1024;

/// The text of the file, or why there is none. Only a regular file is opened: opening a pipe would wait for
/// its writer.
std::optional<std::string> readText(const std::string& file, std::string& reason) {
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (!fs::exists(status)) {
        reason = error ? error.message() : "No such file or directory";
        return std::nullopt;
    }
    if (!fs::is_regular_file(status)) {
        reason = "not a regular file";
        return std::nullopt;
    }
    const std::uintmax_t size = fs::file_size(file, error);
    if (!error && size > largestFile) {
        reason = "larger than 1 MiB";
        return std::nullopt;
    }
    // Room for the file as it is, not for the longest there may be: clearing that would cost more than all
    // else.
    std::string text(error ? 0 : static_cast<std::size_t>(size), '\0');
    std::ifstream stream(file, std::ios::binary);
    stream.read(text.data(), static_cast<std::streamsize>(text.size()));
    if (!stream.is_open() || stream.bad()) {
        reason = "cannot be read";
        return std::nullopt;
    }
    text.resize(static_cast<std::size_t>(stream.gcount()));
    return text;
}

std::vector<std::string> jsonFiles(const std::string& folder, std::vector<std::string>& problems) {
    std::vector<std::string> files;
    std::error_code error;
    fs::directory_iterator entries(folder, error);
    for (; !error && entries != fs::directory_iterator(); entries.increment(error))
        if (entries->path().extension() == ".json") files.push_back(entries->path().string());
    if (error && error != std::errc::no_such_file_or_directory)
        problems.push_back(format("%@: %@", folder, error.message()));
    std::ranges::sort(files);
    return files;
}

/// An escape may hide the identifier from a search of the text.
bool mayName(std::string_view text, std::string_view identifier) {
    return text.find(identifier) != std::string_view::npos || text.find('\\') != std::string_view::npos;
}

}  // namespace

ModelTableFiles readModelTables(const std::string& folder, std::span<const std::string_view> areas,
                                std::string_view onlyIdentifier) {
    ModelTableFiles all;
    std::vector<std::string> tableFiles;
    for (const std::string& file : jsonFiles(folder, all.problems)) {
        std::string reason;
        const std::optional<std::string> text = readText(file, reason);
        if (!text) {
            all.problems.push_back(format("%@: %@", file, reason));
            continue;
        }
        if (!onlyIdentifier.empty() && !mayName(*text, onlyIdentifier)) continue;
        ModelTableFiles one = parseModelTable(*text, file, areas);
        all.problems.insert(all.problems.end(), one.problems.begin(), one.problems.end());
        if (one.tables.empty()) continue;
        ModelTable& table = one.tables.front();
        if (!onlyIdentifier.empty() && table.identifier != onlyIdentifier) continue;
        const auto same = std::ranges::find(all.tables, table.identifier, &ModelTable::identifier);
        if (same != all.tables.end()) {
            const auto first = static_cast<std::size_t>(same - all.tables.begin());
            all.problems.push_back(
                format("%@: not used: %@ has the same identifier", file, tableFiles[first]));
            continue;
        }
        all.tables.push_back(std::move(table));
        tableFiles.push_back(file);
    }
    return all;
}

ModelTableFiles readModelTableNamed(const std::string& folder, const std::string& identifier,
                                    std::span<const std::string_view> areas) {
    const std::string file = folder + "/" + identifier + ".json";
    std::error_code error;
    if (identifier.empty() || identifier.find('/') != std::string::npos || !fs::exists(file, error))
        return {};
    std::string reason;
    const std::optional<std::string> text = readText(file, reason);
    if (!text) return {{}, {format("%@: %@", file, reason)}};
    ModelTableFiles one = parseModelTable(*text, file, areas);
    std::erase_if(one.tables, [&](const ModelTable& table) { return table.identifier != identifier; });
    return one;
}

}  // namespace calorivo
