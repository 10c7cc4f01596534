// Tests for the typed value collections: one table row per member, one test per behaviour.
#include "kvxml/metadata/PrimitiveCollections.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "kvxml/core/SmartPtr.h"
#include "kvxml/values/Conversions.h"
#include "metadata/GeneratedTestClasses.h"
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;
using Rule = CWhitespaceUtils::WhitespaceRule;

namespace {

// The digits of the event types received, in order ("120" for an add).
struct EventLog : IEventSink {
    std::string types;
    void OnEvent(CXmlObjectBase*, MsgType type, void*) override { types += std::to_string(type); }
};

// Constructor settings a row is built with.
struct Settings {
    int32_t minOccurs = 0;
    int32_t maxOccurs = -1;
    const char* maxExclusive = nullptr;
    int32_t length = -1;
    Rule rule = Rule::Collapse;
    const char* format = nullptr;
};

enum class Facet { Range, Length, None };

struct Row {
    const char* className;
    ItemType type;
    const char* text;     // added through AddFromString
    const char* written;  // as the collection writes it
    Facet facet;          // how to build a facet the text breaks
    bool dateKind;        // checks kind and facets before any event
    std::function<CSmartPtr<CXmlTypeCollection>(const Settings&)> make;
    std::function<void(CXmlTypeCollection&, int32_t)> addTextAt;  // AddAt(index, value of text)
    std::function<void(const CXmlTypeCollection&, int32_t)> item;
};

template <typename Col>
Row MakeRow(const char* className, ItemType type, const char* text, const char* written, Facet facet,
            bool dateKind = false) {
    Row row{className, type, text, written, facet, dateKind, {}, {}, {}};
    row.make = [](const Settings& s) -> CSmartPtr<CXmlTypeCollection> {
        return new Col("v", "urn:v", s.minOccurs, s.maxOccurs, nullptr, -1, -1, nullptr, nullptr, nullptr,
                       s.maxExclusive, s.length, s.rule, s.format);
    };
    row.addTextAt = [text](CXmlTypeCollection& collection, int32_t index) {
        Col scratch("v", "", 0, -1, nullptr, -1, -1, nullptr, nullptr, nullptr, nullptr, -1, Rule::Collapse, nullptr);
        scratch.AddFromString(text);
        static_cast<Col&>(collection).AddAt(index, scratch.Item(0));
    };
    row.item = [](const CXmlTypeCollection& collection, int32_t index) {
        static_cast<void>(static_cast<const Col&>(collection).Item(index));
    };
    return row;
}

const std::vector<Row>& Rows() {
    static const std::vector<Row> rows = {
        MakeRow<ChexBinaryCol>("ChexBinaryCol", hexBinary, "0aff", "0AFF", Facet::Length),
        MakeRow<Cbase64BinaryCol>("Cbase64BinaryCol", base64Binary, "AQID", "AQID", Facet::Length),
        MakeRow<Ci1Col>("Ci1Col", i1, " -5 ", "-5", Facet::Range),
        MakeRow<Ci2Col>("Ci2Col", i2, "300", "300", Facet::Range),
        MakeRow<Ci4Col>("Ci4Col", i4, "70000", "70000", Facet::Range),
        MakeRow<Ci8Col>("Ci8Col", i8, "5000000000", "5000000000", Facet::Range),
        MakeRow<Cui1Col>("Cui1Col", ui1, "200", "200", Facet::Range),
        MakeRow<Cui2Col>("Cui2Col", ui2, "60000", "60000", Facet::Range),
        MakeRow<Cui4Col>("Cui4Col", ui4, "4000000000", "4000000000", Facet::Range),
        MakeRow<Cui8Col>("Cui8Col", ui8, "18000000000000000000", "18000000000000000000", Facet::Range),
        MakeRow<Cr4Col>("Cr4Col", r4, "1.5", "1.5", Facet::Range),
        MakeRow<Cr8Col>("Cr8Col", r8, "2.25", "2.25", Facet::Range),
        MakeRow<CdurationCol>("CdurationCol", duration, "P1DT2H", "P1DT2H", Facet::Range),
        MakeRow<CyearMonthCol>("CyearMonthCol", yearMonth, "2001-05", "2001-05", Facet::Range, true),
        MakeRow<CmonthDayCol>("CmonthDayCol", monthDay, "--05-06", "--05-06", Facet::Range, true),
        MakeRow<CyearCol>("CyearCol", year, "2001", "2001", Facet::Range),
        MakeRow<CmonthCol>("CmonthCol", month, "--05", "--05", Facet::Range),
        MakeRow<CdayCol>("CdayCol", day, "---06", "---06", Facet::Range),
        MakeRow<CdateCol>("CdateCol", date, "2001-05-06", "2001-05-06", Facet::Range, true),
        MakeRow<CdatetimeCol>("CdatetimeCol", datetime, "2001-05-06T07:08:09Z", "2001-05-06T07:08:09Z", Facet::Range,
                              true),
        MakeRow<CtimeCol>("CtimeCol", KvXmlLib10::time, "07:08:09", "07:08:09", Facet::Range, true),
        MakeRow<CstringCol>("CstringCol", string, "a  b", "a b", Facet::Length),
        MakeRow<CbooleanCol>("CbooleanCol", boolean, "1", "true", Facet::None),
        MakeRow<CdecimalCol>("CdecimalCol", decimal, "1.50", "1.5", Facet::Range),
        MakeRow<CintegerCol>("CintegerCol", integer, "123456789012345678901234567890",
                             "123456789012345678901234567890", Facet::Range),
    };
    return rows;
}

std::string Write(const CXmlTypeCollection& collection,
                  const CXmlSerializationContext& context = CXmlSerializationContext::m_defaultContext) {
    kvtest::RecordingWriter writer;
    CXmlObjectBase::ToXml_Int(&collection, &writer, false, "urn:ignored", context, false);
    return writer.log;
}

TEST(PrimitiveCollections, EveryMemberWritesAndReadsBackItsValues) {
    ASSERT_EQ(Rows().size(), 25u);
    CInstanceMonitor::SetCounting(true);
    for (const Row& row : Rows()) {
        SCOPED_TRACE(row.className);
        const size_t live = CInstanceMonitor::GetLiveCount(row.className);
        CSmartPtr<CXmlTypeCollection> collection = row.make(Settings());
        EXPECT_EQ(CInstanceMonitor::GetLiveCount(row.className), live + 1);
        EXPECT_EQ(collection->GetItemType(), row.type);
        collection->AddFromString(row.text);
        collection->AddFromString(row.text);
        const std::string one = "<{urn:v}v>text(" + std::string(row.written) + "," + std::to_string(row.type) + ")</>";
        EXPECT_EQ(Write(*collection), one + one);

        const std::string item = std::string("<v>") + row.written + "</v>";
        kvtest::ParsedDocument doc(("<r xmlns='urn:v'>" + item + item + "<w/>" + item + "</r>").c_str());
        CSmartPtr<CXmlTypeCollection> read = row.make(Settings());
        CXmlElement* rest = CXmlObjectBase::FromXml_Int(read.get(), doc.Root(), doc.First(),
                                                        CXmlSerializationContext::m_defaultContext);
        ASSERT_NE(rest, nullptr);
        EXPECT_EQ(rest->GetLocalName(), "w");
        EXPECT_EQ(Write(*read), one + one);
    }
    CInstanceMonitor::SetCounting(false);
}

TEST(PrimitiveCollections, AddFiresBeforeTheIndexCheckAndIndexesAreChecked) {
    for (const Row& row : Rows()) {
        SCOPED_TRACE(row.className);
        CSmartPtr<CXmlTypeCollection> collection = row.make(Settings());
        EventLog log;
        collection->AddEventListener(&log);
        EXPECT_KV_THROW(row.addTextAt(*collection, 1), CKvInvalidParamException, "Index out of range");
        EXPECT_KV_THROW(row.addTextAt(*collection, -1), CKvInvalidParamException, "Index out of range");
        EXPECT_EQ(log.types, "11");
        row.addTextAt(*collection, 0);
        row.addTextAt(*collection, 1);  // index == count appends
        EXPECT_EQ(collection->GetCount(), 2);
        EXPECT_KV_THROW(row.item(*collection, 2), CKvInvalidParamException, "Index 2 is out of range, use 0 - 2");
        EXPECT_KV_THROW(row.item(*collection, -1), CKvInvalidParamException, "Index -1 is out of range, use 0 - 2");
        log.types.clear();
        EXPECT_KV_THROW(collection->Remove(5), CKvInvalidParamException, "Index 5 is out of range, use 0 - 2");
        EXPECT_EQ(log.types, "3");
        collection->AddFromString(row.text);
        log.types.clear();
        collection->Clear();
        EXPECT_EQ(log.types, "340340340");
        EXPECT_EQ(collection->GetCount(), 0);
        collection->RemoveEventListener(&log);
    }
}

TEST(PrimitiveCollections, FacetsAreCheckedOnEveryAdd) {
    for (const Row& row : Rows()) {
        SCOPED_TRACE(row.className);
        Settings settings;
        if (row.facet == Facet::Range) settings.maxExclusive = row.written;
        if (row.facet == Facet::Length) settings.length = 0;
        CSmartPtr<CXmlTypeCollection> collection = row.make(settings);
        EventLog log;
        collection->AddEventListener(&log);
        if (row.facet == Facet::None) {
            collection->AddFromString(row.text);
            EXPECT_EQ(collection->GetCount(), 1);
            continue;
        }
        try {
            collection->AddFromString(row.text);
            ADD_FAILURE() << "no facet violation";
        } catch (const CKvException& e) {
            EXPECT_EQ(typeid(e), typeid(CKvException));
            EXPECT_EQ(e.GetMessage().rfind("Invalid Value for v [", 0), 0u) << e.GetMessage();
        }
        EXPECT_EQ(collection->GetCount(), 0);
        // The date kinds check before inserting and firing; the others fire first.
        EXPECT_EQ(log.types, row.dateKind ? "" : "1");
        collection->RemoveEventListener(&log);
    }
}

template <typename Col>
void ExpectRefused(const CDateTime& value, const char* message) {
    Col collection("v", "", 0, -1, nullptr, -1, -1, nullptr, nullptr, nullptr, nullptr, -1, Rule::Collapse, nullptr);
    EventLog log;
    collection.AddEventListener(&log);
    EXPECT_KV_THROW(collection.Add(value), CKvInvalidParamException, message);
    EXPECT_EQ(log.types, "");
    EXPECT_EQ(collection.GetCount(), 0);
    collection.RemoveEventListener(&log);
}

TEST(PrimitiveCollections, DateMembersRefuseValuesOfAnotherKind) {
    const CDateTime date = CConversions::dateFromString("2001-05-06", Rule::Collapse);
    const CDateTime dateTime = CConversions::datetimeFromString("2001-05-06T00:00:00", Rule::Collapse);
    ExpectRefused<CdateCol>(dateTime, "Dates added to this collection must be of type dt_date");
    ExpectRefused<CdatetimeCol>(date, "Dates added to this collection must be of type dt_dateTime");
    ExpectRefused<CtimeCol>(date, "Dates added to this collection must be of type dt_time");
    ExpectRefused<CyearMonthCol>(date, "Dates added to this collection must be of type dt_gYearMonth");
    ExpectRefused<CmonthDayCol>(date, "Dates added to this collection must be of type dt_gMonthDay");
}

TEST(PrimitiveCollections, WritingChecksTheCountFirst) {
    const Row& row = Rows()[4];  // Ci4Col
    Settings bounds;
    bounds.minOccurs = 1;
    bounds.maxOccurs = 2;
    CSmartPtr<CXmlTypeCollection> collection = row.make(bounds);
    EXPECT_KV_THROW(Write(*collection), CKvValidationException,
                    "The Minimum number of [v] elements allowed in this collection is 1");
    for (int i = 0; i < 3; ++i) collection->AddFromString("1");
    EXPECT_KV_THROW(Write(*collection), CKvValidationException,
                    "The Maximum number of [v] elements allowed in this collection is 2");
    CXmlSerializationContext ignoring;
    ignoring.SetIgnoreInvalidCollectionCounts(true);
    EXPECT_EQ(Write(*collection, ignoring), "<{urn:v}v>text(1,5)</><{urn:v}v>text(1,5)</><{urn:v}v>text(1,5)</>");
}

TEST(PrimitiveCollections, ReadingAppliesTheRuleAndTheFacetsAndRefusesNil) {
    kvtest::ParsedDocument doc(
        "<r xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'><v> a  b </v><v xsi:nil='false'>7</v>"
        "<v xsi:nil='true'/></r>");
    CstringCol strings("v", "", 0, -1, nullptr, -1, -1, nullptr, nullptr, nullptr, nullptr, -1, Rule::Preserve,
                       nullptr);
    Ci4Col numbers("v", "", 0, -1, nullptr, -1, -1, nullptr, nullptr, nullptr, nullptr, -1, Rule::Collapse, nullptr);
    Ci4Col bounded("v", "", 0, -1, nullptr, -1, -1, nullptr, "5", nullptr, nullptr, -1, Rule::Collapse, nullptr);
    const CXmlSerializationContext& context = CXmlSerializationContext::m_defaultContext;
    EXPECT_KV_THROW(CXmlObjectBase::FromXml_Int(&strings, doc.Root(), doc.First(), context), CKvValidationException,
                    "Invalid use of 'nil' attibute in non-nillable element [v]");
    ASSERT_EQ(strings.GetCount(), 2);
    EXPECT_EQ(strings.Item(0), " a  b ");
    CXmlElement* second = doc.First()->GetNextSiblingElement();
    EXPECT_THROW(CXmlObjectBase::FromXml_Int(&numbers, doc.Root(), second, context), CKvValidationException);
    EXPECT_EQ(numbers.Item(0), 7);
    EXPECT_KV_THROW(CXmlObjectBase::FromXml_Int(&bounded, doc.Root(), second, context), CKvException,
                    "Invalid Value for v [7]");
}

TEST(PrimitiveCollections, FloatsAndDecimalsUseTheNumberFormat) {
    Cr8Col doubles("v", "", 0, -1, nullptr, -1, -1, nullptr, nullptr, nullptr, nullptr, -1, Rule::Collapse, "%.2f");
    CdecimalCol decimals("v", "", 0, -1, nullptr, -1, -1, nullptr, nullptr, nullptr, nullptr, -1, Rule::Collapse, "3");
    Cr4Col floats("v", "", 0, -1, nullptr, -1, -1, nullptr, nullptr, nullptr, nullptr, -1, Rule::Collapse, "%.1e");
    doubles.Add(1.5);
    decimals.AddFromString("1.5");
    floats.Add(250.0f);
    EXPECT_EQ(Write(doubles), "<v>text(1.50,12)</>");
    EXPECT_EQ(Write(decimals), "<v>text(1.500,25)</>");
    EXPECT_EQ(Write(floats), "<v>text(2.5e+02,11)</>");
}

}  // namespace
