#include "platform/linux/LinuxProcessManager.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

TEST(LinuxProcessManager, BeginsAsAnAgentAndKeepsWhatItBecame) {
    LinuxProcessManager manager;
    EXPECT_FALSE(manager.isForegroundApplication());
    EXPECT_FALSE(manager.isFrontProcess());
    manager.transformProcessTypeToForegroundApplication();
    EXPECT_TRUE(manager.isForegroundApplication());
    EXPECT_FALSE(manager.isFrontProcess());
    manager.SetFrontProcess();
    EXPECT_TRUE(manager.isFrontProcess());
}

}  // namespace
}  // namespace calorivo
