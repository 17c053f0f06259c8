#pragma once

#include <cstdint>

namespace calorivo::bench {

/// How often memory has been asked for through operator new, by all threads of the program.
[[nodiscard]] std::uint64_t allocationCount();

}  // namespace calorivo::bench
