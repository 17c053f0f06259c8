#include "platform/TryLock.h"

#include <gtest/gtest.h>

namespace calorivo {
namespace {

TEST(TryLock, IsTakenByOneAtATime) {
    TryLock lock;
    EXPECT_TRUE(lock.tryLock());
    EXPECT_FALSE(lock.tryLock());
    lock.unlock();
    EXPECT_TRUE(lock.tryLock());
}

}  // namespace
}  // namespace calorivo
