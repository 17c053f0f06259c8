#include "app/ProcessList.h"

#include "app/FakeProcessListing.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <limits>

namespace calorivo {
namespace {

using Records = std::vector<ProcessRecord>;

struct ThreeProcesses {
    ThreeProcesses() {
        listing.processes = {{99, 501}, {1, 0}, {57, 502}};
        listing.names = {{99, "Finder"}, {57, std::nullopt}};
        listing.users = {{501, "u"}, {0, "root"}};
    }
    [[nodiscard]] Records list() { return Utils::getBSDProcessList(listing); }
    test::FakeProcessListing listing;
};

const Records threeRecords{{99, "Finder", 501, "u"}, {1, std::nullopt, 0, "root"}, {57}};

TEST(ProcessList, HasTheProcessesInTheKernelsOrderWithWhatIsKnown) {
    ThreeProcesses processes;
    EXPECT_EQ(processes.list(), threeRecords);
    EXPECT_EQ(processes.listing.sizeCalls, 1);
    EXPECT_EQ(processes.listing.fetchCalls, 1);
}

TEST(ProcessList, AsksForTheSizeAgainWhenTheTableGrew) {
    ThreeProcesses processes;
    processes.listing.fetchErrors = {ENOMEM, ENOMEM};
    EXPECT_EQ(processes.list(), threeRecords);
    EXPECT_EQ(processes.listing.sizeCalls, 3);
    EXPECT_EQ(processes.listing.fetchCalls, 3);
}

TEST(ProcessList, IsEmptyAfterAnyOtherError) {
    ThreeProcesses noSize;
    noSize.listing.sizeErrors = {EPERM};
    EXPECT_EQ(noSize.list(), Records{});
    EXPECT_EQ(noSize.listing.fetchCalls, 0);
    // Only the fetching starts again when memory is short.
    ThreeProcesses noMemoryForSize;
    noMemoryForSize.listing.sizeErrors = {ENOMEM};
    EXPECT_EQ(noMemoryForSize.list(), Records{});
    ThreeProcesses noTable;
    noTable.listing.fetchErrors = {EIO};
    EXPECT_EQ(noTable.list(), Records{});
    EXPECT_EQ(noTable.listing.fetchCalls, 1);
}

TEST(ProcessList, IsEmptyWithoutMemoryForTheTable) {
    ThreeProcesses processes;
    processes.listing.claimedSize = std::numeric_limits<std::size_t>::max();
    EXPECT_EQ(processes.list(), Records{});
    EXPECT_EQ(processes.listing.fetchCalls, 0);
}

}  // namespace
}  // namespace calorivo
