// BindingThreadsTest.cpp - bindings used from several threads at once: metadata built on first use, and the
// process-wide switches changed while other threads serialise (run under ThreadSanitizer in CI).

#include <thread>

#include "BindingTestSupport.h"

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

TEST(ProcessSwitches, ChangingThemWhileOtherThreadsSerialiseIsNoDataRace) {
    constexpr int kThreads = 3;
    CTicket ticket;
    FillTicket(ticket);
    const std::string golden = Compact(ticket);
    const CBinaryData packed = ticket.ToXmlStream(true, false, Encoding_UTF8, EOL_LF,
                                                  CXmlSerializationContext::m_defaultContext, Compression_GZip);
    std::atomic<bool> stop{false};
    std::vector<int> mismatches(kThreads, 0);
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([&, t] {
            const std::string path = ::testing::TempDir() + "kvxml_switches_" + std::to_string(::getpid()) + "_" +
                                     std::to_string(t) + ".xml";
            try {
                for (int round = 0; round < 30; ++round) {
                    // Every switch only changes how, never what: ASCII data
                    // and limits far above these documents.
                    ticket.ToXmlFile(path.c_str());
                    CTicket fromFile;
                    fromFile.FromXmlFile(path.c_str());
                    CTicket fromStream;
                    fromStream.FromXmlStream(packed);
                    if (Compact(fromFile) != golden || Compact(fromStream) != golden) ++mismatches[t];
                }
            } catch (const CKvException&) {
                mismatches[t] = -1;
            }
            std::remove(path.c_str());
        });
    }
    std::thread toggler([&] {
        for (unsigned i = 0; !stop.load(); ++i) {
            AsyncToXmlFile(i % 2 == 0);
            AsyncFromXmlFile(i % 3 == 0);
            ASCIIOnly(i % 5 == 0);
            CKvZip::SetMaxDecompressedSize(i % 2 ? 0 : uint64_t{1} << 30);
            CXmlDocument::SetMaxEntityDeclarations(i % 2 ? 0 : 1000);
            std::this_thread::yield();
        }
    });
    for (std::thread& thread : threads) thread.join();
    stop = true;
    toggler.join();
    AsyncToXmlFile(false);
    AsyncFromXmlFile(false);
    ASCIIOnly(false);
    CKvZip::SetMaxDecompressedSize(uint64_t{1} << 30);
    CXmlDocument::SetMaxEntityDeclarations(1000);
    for (int t = 0; t < kThreads; ++t) EXPECT_EQ(mismatches[t], 0) << t;
}

}  // namespace
