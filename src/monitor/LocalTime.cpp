#include "monitor/LocalTime.h"

#include <chrono>
#include <mutex>

namespace calorivo {

std::tm localTime(WallTime time) {
    static std::mutex mutex;
    // Whole seconds downward, so that a moment before 1970 does not slip into the next second.
    const std::time_t seconds =
        std::chrono::system_clock::to_time_t(std::chrono::floor<std::chrono::seconds>(time));
    const std::lock_guard lock(mutex);
    const std::tm* const parts = std::localtime(&seconds);
    return parts != nullptr ? *parts : std::tm{};
}

}  // namespace calorivo
