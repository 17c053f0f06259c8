#pragma once

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace calorivo::test {

/// The expected text in tests/golden under this name.
inline std::string goldenFile(const std::string& name) {
    std::ifstream file(CALORIVO_SOURCE_DIR "/tests/golden/" + name, std::ios::binary);
    if (!file) throw std::runtime_error("no golden file " + name);
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace calorivo::test
