#include "platform/linux/NvmeLog.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace calorivo {
namespace {

TEST(NvmeLog, TellsTheTemperatureInKelvin) {
    NvmeSmartLog log{};
    log[1] = 0x37;
    log[2] = 0x01;
    EXPECT_EQ(temperatureInNvmeLog(log), 38);
    log[1] = 0x11;
    EXPECT_EQ(temperatureInNvmeLog(log), 0);
    log = {};
    EXPECT_EQ(temperatureInNvmeLog(log), 0);
}

TEST(NvmeLog, CannotBeReadFromWhatIsNoDrive) {
    NvmeSmartLog log{};
    EXPECT_EQ(readNvmeLog("/nowhere/nvme0", log), ENOENT);
    EXPECT_EQ(readNvmeLog("/dev/null", log), ENOTTY);
}

}  // namespace
}  // namespace calorivo
