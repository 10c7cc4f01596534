// BindingThreadsTest.cpp - metadata of generated-style bindings built on first use from several threads at once.
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "BindingTestSupport.h"
#include "bindings/AllTypes.h"
#include "bindings/Ticket.h"

using namespace kvbind;
using namespace kvbindtest;
using namespace KvXmlLib10;

namespace {

TEST(BindingMetadata, BuiltOnceWhenManyThreadsRaceToFirstUse) {
    constexpr int kThreads = 8;
    CTicket ticket;
    FillTicket(ticket);
    const std::string ticketGolden = Compact(ticket);
    CAllTypes all;
    FillAllTypes(all);
    const std::string allTypesGolden = Compact(all);

    for (int attempt = 0; attempt < 3; ++attempt) {
        // Back to the state before first use, so the threads race to build.
        CTicket::ReleaseMetaData();
        CAllTypes::ReleaseMetaData();
        std::atomic<int> ready{0};
        std::vector<const void*> seen(kThreads, nullptr);
        std::vector<int> mismatches(kThreads, 0);
        std::vector<std::thread> threads;
        for (int t = 0; t < kThreads; ++t) {
            threads.emplace_back([&, t] {
                ready.fetch_add(1);
                while (ready.load() < kThreads) std::this_thread::yield();
                try {
                    seen[t] = CTicket().GetClassInfo();
                    for (int round = 0; round < 20; ++round) {
                        CTicket copy;
                        copy.FromXml(ticketGolden.c_str());
                        CAllTypes values;
                        values.FromXml(allTypesGolden.c_str());
                        if (Compact(copy) != ticketGolden || Compact(values) != allTypesGolden) ++mismatches[t];
                    }
                } catch (const CKvException&) {
                    mismatches[t] = -1;
                }
            });
        }
        for (std::thread& thread : threads) thread.join();
        // One set of descriptors for all (a second build would also show up
        // as a leak under the sanitizers).
        EXPECT_NE(seen[0], nullptr);
        for (int t = 0; t < kThreads; ++t) {
            EXPECT_EQ(mismatches[t], 0);
            EXPECT_EQ(seen[t], seen[0]);
        }
    }
}

}  // namespace
