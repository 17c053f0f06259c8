#include "output/LogFileFailures.h"

#include "platform/Format.h"

#include <chrono>

namespace calorivo {

bool LogFileFailures::tell(const std::string& cause, const std::string& description) {
    if (!isTimeToTell(cause)) return false;
    systemLog_.log(format("Unable to log because of error %@", description));
    return true;
}

bool LogFileFailures::isTimeToTell(const std::string& cause) {
    constexpr std::chrono::minutes pause(1);
    const Moment now = dispatch_.now();
    const std::lock_guard lock(mutex_);
    std::erase_if(told_, [&](const auto& entry) { return now - entry.second >= pause; });
    return told_.emplace(cause, now).second;
}

}  // namespace calorivo
