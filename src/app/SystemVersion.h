#pragma once

#include "platform/SystemLog.h"
#include "platform/SystemSelectors.h"

#include <cstdint>

namespace calorivo::SystemVersion {

/// The version of the operating system; 10, 0 and 0, and a line in the log, when the system does not tell. A
/// null pointer is a number that is not wanted.
void getSystemVersionMajorMinorBugFix(std::uint32_t* major, std::uint32_t* minor, std::uint32_t* bugFix,
                                      const SystemSelectors& system, SystemLog& log);

}  // namespace calorivo::SystemVersion
