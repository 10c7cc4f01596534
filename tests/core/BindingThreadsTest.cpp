// BindingThreadsTest.cpp - metadata of generated-style bindings built on first use from several threads at once.
#include <gtest/gtest.h>

#include <atomic>
#include <string>
#include <thread>
#include <vector>

#include "BindingTestSupport.h"
#include "bindings/AllTypes.h"
#include "bindings/Measurement.h"
#include "bindings/Settings.h"
#include "bindings/Shape.h"
#include "bindings/Ticket.h"

using namespace kvbind;
using namespace kvbindtest;
using namespace KvXmlLib10;

namespace {

constexpr int kThreads = 8;
constexpr int kRounds = 40;

struct Seen {
    const void* classInfo = nullptr;
    const void* elements = nullptr;
    const void* attributes = nullptr;
    int mismatches = 0;
    int failures = 0;
};

// Each thread waits for the others, then makes first use of the classes and
// round-trips documents with objects of its own.
void Work(std::atomic<int>& ready, const std::string& ticketGolden, const std::string& allTypesGolden, Seen& seen) {
    ready.fetch_add(1);
    while (ready.load() < kThreads) std::this_thread::yield();
    try {
        CTicket probe;
        seen.classInfo = probe.GetClassInfo();
        seen.elements = probe.GetClassElementInfo();
        seen.attributes = probe.GetClassAttributeInfo();
        for (int round = 0; round < kRounds; ++round) {
            CTicket ticket;
            ticket.FromXml(ticketGolden.c_str());
            if (Compact(ticket) != ticketGolden) ++seen.mismatches;
            CAllTypes all;
            all.FromXml(allTypesGolden.c_str());
            if (Compact(all) != allTypesGolden) ++seen.mismatches;
            CShape shape;
            shape.FromXml("<Shape><color>red</color></Shape>");
            if (shape.GetChoice() != CShape::Choice::Color) ++seen.mismatches;
            CSettings settings;
            settings.FromXml(
                "<Settings xmlns='urn:kvxml:test:settings'><port>1</port><host>h</host><mode>active</mode></Settings>");
            if (settings.GetPort() != 1) ++seen.mismatches;
            CMeasurement measurement;
            measurement.FromXml("<Measurement xmlns='urn:kvxml:test:measure' unit='lb'>2</Measurement>");
            if (measurement.GetUnit() != MeasurementUnit::Lb) ++seen.mismatches;
        }
    } catch (const CKvException&) {
        ++seen.failures;
    }
}

TEST(BindingMetadata, BuiltOnceWhenManyThreadsRaceToFirstUse) {
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
        CShape::ReleaseMetaData();
        CSettings::ReleaseMetaData();
        CMeasurement::ReleaseMetaData();

        std::atomic<int> ready{0};
        std::vector<Seen> seen(kThreads);
        std::vector<std::thread> threads;
        for (int i = 0; i < kThreads; ++i)
            threads.emplace_back(Work, std::ref(ready), std::cref(ticketGolden), std::cref(allTypesGolden),
                                 std::ref(seen[i]));
        for (std::thread& thread : threads) thread.join();

        // Every thread saw the one set of descriptors (a second build would
        // also show up as a leak under the sanitizers).
        for (const Seen& each : seen) {
            EXPECT_EQ(each.failures, 0);
            EXPECT_EQ(each.mismatches, 0);
            EXPECT_EQ(each.classInfo, seen[0].classInfo);
            EXPECT_EQ(each.elements, seen[0].elements);
            EXPECT_EQ(each.attributes, seen[0].attributes);
        }
        EXPECT_NE(seen[0].classInfo, nullptr);
        EXPECT_EQ(static_cast<const void*>(CTicket().GetClassInfo()), seen[0].classInfo);
    }
}

TEST(BindingMetadata, ReleasedMetadataIsBuiltAgainOnNextUse) {
    CTicket ticket;
    FillTicket(ticket);
    const std::string before = Compact(ticket);
    CTicket::ReleaseMetaData();
    CTicket::ReleaseMetaData();  // releasing twice is harmless
    EXPECT_NE(ticket.GetClassInfo(), nullptr);
    EXPECT_EQ(ticket.GetClassElementInfoCount(), 5);
    EXPECT_EQ(Compact(ticket), before);
}

}  // namespace
