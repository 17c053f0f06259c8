#pragma once

#include "platform/Dispatch.h"

#include <ctime>

namespace calorivo {

/// The moment as date and time of day in the local time zone. Any thread: the calls wait for one another,
/// since the C library answers all of them from one place. Costs a system call; a moment that no calendar
/// holds gives all zeros.
[[nodiscard]] std::tm localTime(WallTime time);

}  // namespace calorivo
