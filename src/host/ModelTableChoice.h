#pragma once

#include "host/SourceOptions.h"
#include "platform/ModelTable.h"
#include "platform/linux/LinuxPaths.h"

#include <string>
#include <vector>

namespace calorivo {

/// The tables that may serve this run, the first that names the model being the one that does; and what is
/// wrong with their files, one line each.
struct ModelTableChoice {
    std::vector<ModelTable> tables;
    std::vector<std::string> problems;
};

/// Those of the folder that the options name; else the user's own and those that the program came with, as
/// far as they are for `model`.
[[nodiscard]] ModelTableChoice modelTablesFor(const std::string& model, const SourceOptions& options,
                                              const LinuxPaths& paths);

}  // namespace calorivo
