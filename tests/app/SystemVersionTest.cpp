#include "app/SystemVersion.h"

#include "support/RecordingPlatform.h"

#include <gtest/gtest.h>

#include <map>
#include <vector>

namespace calorivo {
namespace {

/// Answers what it was given; the others fail.
class FixedSelectors final : public SystemSelectors {
  public:
    std::map<OSType, std::int32_t> answers{{gestaltSystemVersion, 0x1234},
                                           {gestaltSystemVersionMajor, 22},
                                           {gestaltSystemVersionMinor, 4},
                                           {gestaltSystemVersionBugFix, 7}};
    OSErr failure = gestaltUndefSelectorErr;
    mutable std::vector<OSType> asked;

    [[nodiscard]] OSErr Gestalt(OSType selector, std::int32_t& response) const override {
        asked.push_back(selector);
        const auto found = answers.find(selector);
        if (found == answers.end()) return failure;
        response = found->second;
        return noErr;
    }
};

struct Version {
    std::uint32_t major = 99;
    std::uint32_t minor = 98;
    std::uint32_t bugFix = 97;
    friend bool operator==(const Version&, const Version&) = default;
};

Version versionOf(const SystemSelectors& system, test::Calls& calls) {
    test::RecordingSystemLog log(calls);
    Version version;
    SystemVersion::getSystemVersionMajorMinorBugFix(&version.major, &version.minor, &version.bugFix, system,
                                                    log);
    return version;
}

TEST(SystemVersion, AsksForEachNumberInOrder) {
    const FixedSelectors system;
    test::Calls calls;
    EXPECT_EQ(versionOf(system, calls), (Version{22, 4, 7}));
    EXPECT_EQ(system.asked,
              (std::vector<OSType>{selector("sysv"), selector("sys1"), selector("sys2"), selector("sys3")}));
    EXPECT_EQ(calls, test::Calls{});
}

TEST(SystemVersion, IsTenWithoutAnswersAndStopsAtTheFirstFailure) {
    for (std::size_t failing = 0; failing < 4; ++failing) {
        SCOPED_TRACE(failing);
        constexpr OSType selectors[] = {gestaltSystemVersion, gestaltSystemVersionMajor,
                                        gestaltSystemVersionMinor, gestaltSystemVersionBugFix};
        FixedSelectors system;
        system.answers.erase(selectors[failing]);
        test::Calls calls;
        EXPECT_EQ(versionOf(system, calls), (Version{10, 0, 0}));
        EXPECT_EQ(system.asked.size(), failing + 1);
        EXPECT_EQ(calls, test::Calls{"log Unable to obtain system version: -5551"});
    }
}

TEST(SystemVersion, LeavesOutWhatIsNotWanted) {
    const FixedSelectors system;
    test::Calls calls;
    test::RecordingSystemLog log(calls);
    std::uint32_t minor = 0;
    SystemVersion::getSystemVersionMajorMinorBugFix(nullptr, &minor, nullptr, system, log);
    EXPECT_EQ(minor, 4U);
    SystemVersion::getSystemVersionMajorMinorBugFix(nullptr, nullptr, nullptr, system, log);
    EXPECT_EQ(calls, test::Calls{});
}

}  // namespace
}  // namespace calorivo
