#include "host/ModelTableChoice.h"

#include "platform/data/ModelTableFiles.h"
#include "sensors/Areas.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>
#include <utility>

namespace calorivo {

namespace {

/// The names that an area of a model table may have: every area but "All".
constexpr auto tableAreas = [] {
    std::array<std::string_view, areas.size() - 1> names{};
    std::transform(areas.begin() + 1, areas.end(), names.begin(), [](const Area& area) { return area.name; });
    return names;
}();

}  // namespace

ModelTableChoice modelTablesFor(const std::string& model, const SourceOptions& options,
                                const LinuxPaths& paths) {
    ModelTableChoice choice;
    const auto take = [&choice](ModelTableFiles files) {
        std::move(files.tables.begin(), files.tables.end(), std::back_inserter(choice.tables));
        std::move(files.problems.begin(), files.problems.end(), std::back_inserter(choice.problems));
    };
    if (options.modelTables) {
        // Named by the user: every file is looked at, so that each mistake is told.
        if (const std::string wrong = folderProblem(*options.modelTables); !wrong.empty())
            choice.problems.push_back(*options.modelTables + ": " + wrong);
        take(readModelTables(*options.modelTables, tableAreas));
        return choice;
    }
    if (!paths.userFolder.empty())
        take(readModelTables(paths.userFolder + "/model-tables", tableAreas, model));
    // The program's own files are named for their machines.
    if (!paths.dataFolder.empty())
        take(readModelTableNamed(paths.dataFolder + "/model-tables", model, tableAreas));
    return choice;
}

}  // namespace calorivo
