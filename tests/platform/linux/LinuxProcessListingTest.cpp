#include "platform/linux/LinuxProcessListing.h"

#include "platform/linux/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string>
#include <vector>

namespace calorivo {
namespace {

constexpr uid_t user = 1000;

class LinuxProcessListingTest : public testing::Test {
  protected:
    void process(const std::string& number, const std::string& users, const std::string& name,
                 const std::string& commandLine) {
        std::filesystem::create_directories(folder.path(number));
        folder.write(number + "/status", "Name:\t" + name + "\nUmask:\t0022\nUid:\t" + users + "\n");
        folder.write(number + "/comm", name + "\n");
        folder.write(number + "/cmdline", commandLine);
    }
    std::vector<std::pair<std::int32_t, std::uint32_t>> table() {
        std::size_t size = 0;
        EXPECT_EQ(listing.sysctlKernProcAll(nullptr, size), 0);
        std::vector<KernelProcess> processes(size / sizeof(KernelProcess));
        EXPECT_EQ(listing.sysctlKernProcAll(processes.data(), size), 0);
        std::vector<std::pair<std::int32_t, std::uint32_t>> found;
        for (std::size_t i = 0; i < size / sizeof(KernelProcess); ++i)
            found.emplace_back(processes[i].processIdentifier, processes[i].effectiveUser);
        return found;
    }
    const TemporaryFolder folder;
    LinuxProcessListing listing{folder.path(), user};
};

TEST_F(LinuxProcessListingTest, ListsProcessesByTheirNumbers) {
    process("900", "1000\t1000\t1000\t1000", "Vantix", "vantix");
    process("7", "0\t33\t0\t0", "helper", "helper");
    process("self", "0\t0\t0\t0", "self", "self");
    process("12x", "0\t0\t0\t0", "odd", "odd");
    // It ended after its folder was seen.
    std::filesystem::create_directories(folder.path("800"));
    EXPECT_EQ(table(), (std::vector<std::pair<std::int32_t, std::uint32_t>>{{7, 33}, {900, 1000}}));
}

TEST_F(LinuxProcessListingTest, SaysThatTheTableGrew) {
    process("7", "0\t33\t0\t0", "helper", "helper");
    process("8", "0\t33\t0\t0", "helper", "helper");
    std::vector<KernelProcess> one(1);
    std::size_t size = sizeof(KernelProcess);
    EXPECT_EQ(listing.sysctlKernProcAll(one.data(), size), ENOMEM);
}

TEST_F(LinuxProcessListingTest, FailsWithoutProcesses) {
    LinuxProcessListing missing(folder.path("missing"), user);
    std::size_t size = 0;
    EXPECT_EQ(missing.sysctlKernProcAll(nullptr, size), ENOENT);
}

TEST_F(LinuxProcessListingTest, TakesThisUsersProgramsForApplications) {
    process("10", "1000\t1000\t1000\t1000", "Vantix", std::string("vantix\0-x\0", 10));
    process("11", "1000\t1000\t1000\t1000", "kthread", "");
    process("12", "1000\t0\t0\t0", "Vantix", "vantix");
    process("13", "0\t1000\t0\t0", "odd\nname ", "odd");
    const auto nameOf = [this](std::int32_t number) -> std::optional<std::string> {
        const auto process = listing.GetProcessForPID(number);
        return process ? listing.CopyProcessName(*process) : std::nullopt;
    };
    EXPECT_EQ(nameOf(10), "Vantix");
    EXPECT_EQ(nameOf(11), std::nullopt);
    EXPECT_EQ(nameOf(12), std::nullopt);
    EXPECT_EQ(nameOf(13), "odd\nname ");
    EXPECT_EQ(nameOf(14), std::nullopt);
    EXPECT_EQ(listing.CopyProcessName({14}), std::nullopt);
}

TEST_F(LinuxProcessListingTest, KnowsUsersAndThisVeryProcess) {
    EXPECT_EQ(listing.getpwuid(0), "root");
    EXPECT_EQ(listing.getpwuid(4'000'000'000U), std::nullopt);
    LinuxProcessListing real("/proc", ::geteuid());
    const auto self = real.GetProcessForPID(::getpid());
    ASSERT_TRUE(self);
    EXPECT_EQ(real.CopyProcessName(*self), "calorivo_platfo");
}

}  // namespace
}  // namespace calorivo
