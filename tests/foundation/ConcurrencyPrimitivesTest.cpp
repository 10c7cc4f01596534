// Tests for the lock wrapper and the instance counter.
#include <thread>

#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

TEST(CriticalSection, SerialisesConcurrentIncrements) {
    CKVCriticalSection lock;
    long counter = 0;
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([&] {
            for (int i = 0; i < 20000; ++i) {
                lock.Enter();
                ++counter;
                lock.Leave();
            }
        });
    }
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(counter, 80000);
}

namespace {
struct Monitored : CInstanceMonitor {
    Monitored() : CInstanceMonitor("MonitoredForTest") {}
};
}  // namespace

TEST(InstanceMonitor, CountsOnlyInstancesCreatedWhileCountingIsOn) {
    ASSERT_FALSE(CInstanceMonitor::IsCounting());
    Monitored before;
    EXPECT_EQ(CInstanceMonitor::GetLiveCount("MonitoredForTest"), 0u);

    CInstanceMonitor::SetCounting(true);
    {
        Monitored a;
        Monitored b(a);
        EXPECT_EQ(CInstanceMonitor::GetLiveCount("MonitoredForTest"), 2u);
    }
    EXPECT_EQ(CInstanceMonitor::GetLiveCount("MonitoredForTest"), 0u);
    auto* kept = new Monitored;
    CInstanceMonitor::SetCounting(false);
    // Switching off does not forget what was counted.
    EXPECT_EQ(CInstanceMonitor::GetLiveCount("MonitoredForTest"), 1u);
    delete kept;
    EXPECT_EQ(CInstanceMonitor::GetLiveCount("MonitoredForTest"), 0u);
    EXPECT_EQ(CInstanceMonitor::GetLiveCount(nullptr), 0u);
}
