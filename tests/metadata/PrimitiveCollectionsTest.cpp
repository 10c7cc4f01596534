// Tests for the typed value collections: one table row per member, one test per behaviour.
#include "metadata/GeneratedTestClasses.h"

using namespace KvXmlLib10;
using Rule = CWhitespaceUtils::WhitespaceRule;

namespace {

// The digits of the event types received ("120" for an add).
struct EventLog : IEventSink {
    std::string types;
    void OnEvent(CXmlObjectBase*, MsgType type, void*) override { types += std::to_string(type); }
};

template <typename Col>
CSmartPtr<Col> Make(int32_t min = 0, int32_t max = -1, const char* maxExclusive = nullptr, int32_t length = -1,
                    Rule rule = Rule::Collapse, const char* format = nullptr) {
    return new Col("v", "urn:v", min, max, nullptr, -1, -1, nullptr, nullptr, nullptr, maxExclusive, length, rule,
                   format);
}

struct Row {
    const char* className;
    ItemType type;
    const char* text;     // added through AddFromString
    const char* written;  // as written, and the bound that text breaks as maxExclusive
    bool lengthFacet;     // binary and string values break length 0 instead
    bool dateKind;        // kind and facets are checked before any event
    std::function<CSmartPtr<CXmlTypeCollection>(const char*, int32_t)> make;  // (maxExclusive, length)
    std::function<void(CXmlTypeCollection&, int32_t)> addTextAt;              // AddAt(index, value of text)
    std::function<void(const CXmlTypeCollection&, int32_t)> item;
};

template <typename Col>
Row R(const char* className, ItemType type, const char* text, const char* written, bool lengthFacet = false,
      bool dateKind = false) {
    return Row{className, type, text, written, lengthFacet, dateKind,
               [](const char* bound, int32_t length) {
                   return CSmartPtr<CXmlTypeCollection>(Make<Col>(0, -1, bound, length));
               },
               [text](CXmlTypeCollection& collection, int32_t index) {
                   CSmartPtr<Col> scratch = Make<Col>();
                   scratch->AddFromString(text);
                   static_cast<Col&>(collection).AddAt(index, scratch->Item(0));
               },
               [](const CXmlTypeCollection& collection, int32_t index) {
                   static_cast<void>(static_cast<const Col&>(collection).Item(index));
               }};
}

const std::vector<Row>& Rows() {
    static const std::vector<Row> rows = {
        R<ChexBinaryCol>("ChexBinaryCol", hexBinary, "0aff", "0AFF", true),
        R<Cbase64BinaryCol>("Cbase64BinaryCol", base64Binary, "AQID", "AQID", true),
        R<Ci1Col>("Ci1Col", i1, " -5 ", "-5"), R<Ci2Col>("Ci2Col", i2, "300", "300"),
        R<Ci4Col>("Ci4Col", i4, "70000", "70000"), R<Ci8Col>("Ci8Col", i8, "5000000000", "5000000000"),
        R<Cui1Col>("Cui1Col", ui1, "200", "200"), R<Cui2Col>("Cui2Col", ui2, "60000", "60000"),
        R<Cui4Col>("Cui4Col", ui4, "4000000000", "4000000000"),
        R<Cui8Col>("Cui8Col", ui8, "18000000000000000000", "18000000000000000000"),
        R<Cr4Col>("Cr4Col", r4, "1.5", "1.5"), R<Cr8Col>("Cr8Col", r8, "2.25", "2.25"),
        R<CdurationCol>("CdurationCol", duration, "P1DT2H", "P1DT2H"),
        R<CyearMonthCol>("CyearMonthCol", yearMonth, "2001-05", "2001-05", false, true),
        R<CmonthDayCol>("CmonthDayCol", monthDay, "--05-06", "--05-06", false, true),
        R<CyearCol>("CyearCol", year, "2001", "2001"), R<CmonthCol>("CmonthCol", month, "--05", "--05"),
        R<CdayCol>("CdayCol", day, "---06", "---06"),
        R<CdateCol>("CdateCol", date, "2001-05-06", "2001-05-06", false, true),
        R<CdatetimeCol>("CdatetimeCol", datetime, "2001-05-06T07:08:09Z", "2001-05-06T07:08:09Z", false, true),
        R<CtimeCol>("CtimeCol", KvXmlLib10::time, "07:08:09", "07:08:09", false, true),
        R<CstringCol>("CstringCol", string, "a  b", "a b", true),
        R<CbooleanCol>("CbooleanCol", boolean, "1", "true"),  // no facet applies to booleans
        R<CdecimalCol>("CdecimalCol", decimal, "1.50", "1.5"),
        R<CintegerCol>("CintegerCol", integer, "123456789012345678901234567890", "123456789012345678901234567890"),
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
    CInstanceMonitor::SetCounting(true);
    for (const Row& row : Rows()) {
        SCOPED_TRACE(row.className);
        const size_t live = CInstanceMonitor::GetLiveCount(row.className);
        CSmartPtr<CXmlTypeCollection> collection = row.make(nullptr, -1);
        EXPECT_EQ(CInstanceMonitor::GetLiveCount(row.className), live + 1);
        EXPECT_EQ(collection->GetItemType(), row.type);
        collection->AddFromString(row.text);
        collection->AddFromString(row.text);
        const std::string one = "<{urn:v}v>text(" + std::string(row.written) + "," + std::to_string(row.type) + ")</>";
        EXPECT_EQ(Write(*collection), one + one);

        const std::string item = std::string("<v>") + row.written + "</v>";
        kvtest::ParsedDocument doc(("<r xmlns='urn:v'>" + item + item + "<w/>" + item + "</r>").c_str());
        CSmartPtr<CXmlTypeCollection> read = row.make(nullptr, -1);
        CXmlElement* rest = CXmlObjectBase::FromXml_Int(read.get(), doc.Root(), doc.First(),
                                                        CXmlSerializationContext::m_defaultContext);
        ASSERT_NE(rest, nullptr);
        EXPECT_EQ(rest->GetLocalName(), "w");
        EXPECT_EQ(Write(*read), one + one);
        read->Clear();  // no listener: in one step
        EXPECT_EQ(read->GetCount(), 0);
    }
    CInstanceMonitor::SetCounting(false);
}

TEST(PrimitiveCollections, AddsFireBeforeIndexChecksAndFacetsGuardEveryAdd) {
    for (const Row& row : Rows()) {
        SCOPED_TRACE(row.className);
        CSmartPtr<CXmlTypeCollection> collection = row.make(nullptr, -1);
        EventLog log;
        collection->AddEventListener(&log);
        EXPECT_KV_THROW(row.addTextAt(*collection, 1), CKvInvalidParamException, "Index out of range");
        EXPECT_KV_THROW(row.addTextAt(*collection, -1), CKvInvalidParamException, "Index out of range");
        EXPECT_EQ(log.types, "11");
        row.addTextAt(*collection, 0);
        row.addTextAt(*collection, 1);  // index == count appends
        EXPECT_KV_THROW(row.item(*collection, 2), CKvInvalidParamException, "Index 2 is out of range, use 0 - 2");
        EXPECT_KV_THROW(row.item(*collection, -1), CKvInvalidParamException, "Index -1 is out of range, use 0 - 2");
        log.types.clear();
        EXPECT_KV_THROW(collection->Remove(5), CKvInvalidParamException, "Index 5 is out of range, use 0 - 2");
        collection->AddFromString(row.text);
        collection->Clear();
        EXPECT_EQ(log.types, "3120340340340");
        EXPECT_EQ(collection->GetCount(), 0);
        collection->RemoveEventListener(&log);

        if (row.type == boolean) continue;
        CSmartPtr<CXmlTypeCollection> bounded = row.make(row.lengthFacet ? nullptr : row.written,
                                                         row.lengthFacet ? 0 : -1);
        bounded->AddEventListener(&log);
        log.types.clear();
        try {
            bounded->AddFromString(row.text);
            ADD_FAILURE() << "no facet violation";
        } catch (const CKvException& e) {
            EXPECT_EQ(typeid(e), typeid(CKvException));
            EXPECT_EQ(e.GetMessage().rfind("Invalid Value for v [", 0), 0u) << e.GetMessage();
        }
        EXPECT_EQ(bounded->GetCount(), 0);
        EXPECT_EQ(log.types, row.dateKind ? "" : "1");
        bounded->RemoveEventListener(&log);
    }
}

template <typename Col>
void ExpectRefused(const CDateTime& value, const char* message) {
    CSmartPtr<Col> collection = Make<Col>();
    EXPECT_KV_THROW(collection->Add(value), CKvInvalidParamException, message);
    EXPECT_EQ(collection->GetCount(), 0);
}

TEST(PrimitiveCollections, DateMembersRefuseValuesOfAnotherKind) {
    const CDateTime date = CConversions::dateFromString("2001-05-06", Rule::Collapse);
    ExpectRefused<CdateCol>(CConversions::datetimeFromString("2001-05-06T00:00:00", Rule::Collapse),
                            "Dates added to this collection must be of type dt_date");
    ExpectRefused<CdatetimeCol>(date, "Dates added to this collection must be of type dt_dateTime");
    ExpectRefused<CtimeCol>(date, "Dates added to this collection must be of type dt_time");
    ExpectRefused<CyearMonthCol>(date, "Dates added to this collection must be of type dt_gYearMonth");
    ExpectRefused<CmonthDayCol>(date, "Dates added to this collection must be of type dt_gMonthDay");
}

TEST(PrimitiveCollections, WritingChecksTheCountAndUsesTheNumberFormat) {
    CSmartPtr<Ci4Col> numbers = Make<Ci4Col>(1, 2);
    EXPECT_KV_THROW(Write(*numbers), CKvValidationException,
                    "The Minimum number of [v] elements allowed in this collection is 1");
    for (int32_t i = 0; i < 3; ++i) numbers->Add(i);
    EXPECT_KV_THROW(Write(*numbers), CKvValidationException,
                    "The Maximum number of [v] elements allowed in this collection is 2");
    CXmlSerializationContext ignoring;
    ignoring.SetIgnoreInvalidCollectionCounts(true);
    EXPECT_EQ(Write(*numbers, ignoring), "<{urn:v}v>text(0,5)</><{urn:v}v>text(1,5)</><{urn:v}v>text(2,5)</>");

    CSmartPtr<Cr8Col> doubles = Make<Cr8Col>(0, -1, nullptr, -1, Rule::Collapse, "%.2f");
    CSmartPtr<CdecimalCol> decimals = Make<CdecimalCol>(0, -1, nullptr, -1, Rule::Collapse, "3");
    doubles->Add(1.5);
    decimals->AddFromString("1.5");
    EXPECT_EQ(Write(*doubles) + Write(*decimals), "<{urn:v}v>text(1.50,12)</><{urn:v}v>text(1.500,25)</>");
}

TEST(PrimitiveCollections, ReadingKeepsTheWhitespaceRuleAndRefusesNil) {
    kvtest::ParsedDocument doc(
        "<r xmlns='urn:v' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'><v> a  b </v>"
        "<v xsi:nil='false'>7</v><v xsi:nil='true'/></r>");
    CSmartPtr<CstringCol> strings = Make<CstringCol>(0, -1, nullptr, -1, Rule::Preserve);
    EXPECT_KV_THROW(CXmlObjectBase::FromXml_Int(strings.get(), doc.Root(), doc.First(),
                                                CXmlSerializationContext::m_defaultContext),
                    CKvValidationException, "Invalid use of 'nil' attibute in non-nillable element [v]");
    ASSERT_EQ(strings->GetCount(), 2);
    EXPECT_EQ(strings->Item(0), " a  b ");
    EXPECT_EQ(strings->Item(1), "7");
}

}  // namespace
