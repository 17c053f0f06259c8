#pragma once

#include <string>
#include <vector>

namespace calorivo {

/// One sensor of a model: its four-character key, its readable name, and the name of its area in the source
/// list ("CPU", "Hard Drive" ...).
struct ModelTableEntry {
    std::string key;
    std::string name;
    std::string area;
    friend bool operator==(const ModelTableEntry&, const ModelTableEntry&) = default;
};

/// The curated sensors of one machine model, in the order in which they are listed.
struct ModelTable {
    std::string identifier;
    std::vector<ModelTableEntry> entries;
    friend bool operator==(const ModelTable&, const ModelTable&) = default;
};

}  // namespace calorivo
