#include "app/SystemVersion.h"

#include "platform/Format.h"

#include <array>
#include <cstddef>

namespace calorivo::SystemVersion {

void getSystemVersionMajorMinorBugFix(std::uint32_t* major, std::uint32_t* minor, std::uint32_t* bugFix,
                                      const SystemSelectors& system, SystemLog& log) {
    // The first has to succeed only; its value is not used.
    constexpr std::array selectors{gestaltSystemVersion, gestaltSystemVersionMajor, gestaltSystemVersionMinor,
                                   gestaltSystemVersionBugFix};
    std::array<std::int32_t, selectors.size()> answers{};
    OSErr error = noErr;
    for (std::size_t i = 0; i < selectors.size() && error == noErr; ++i)
        error = system.Gestalt(selectors[i], answers[i]);
    if (error != noErr) {
        log.log(format("Unable to obtain system version: %ld", error));
        answers = {0, 10, 0, 0};
    }
    if (major != nullptr) *major = static_cast<std::uint32_t>(answers[1]);
    if (minor != nullptr) *minor = static_cast<std::uint32_t>(answers[2]);
    if (bugFix != nullptr) *bugFix = static_cast<std::uint32_t>(answers[3]);
}

}  // namespace calorivo::SystemVersion
