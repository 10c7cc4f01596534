// BindingErrorsTest.cpp - documents that break the binding rules, the message chains they give and what the object
// keeps.
#include <gtest/gtest.h>

#include <string>

#include "BindingTestSupport.h"
#include "bindings/AllTypes.h"
#include "bindings/Measurement.h"
#include "bindings/Settings.h"
#include "bindings/Shape.h"
#include "bindings/Ticket.h"
#include "support/KvTestSupport.h"

using namespace kvbind;
using namespace kvbindtest;
using namespace KvXmlLib10;

namespace {

constexpr const char* kValid = "<title>t</title><status>open</status>";

TEST(BindingTicketRead, BrokenDocumentsGiveTheMessageChain) {
    const struct {
        std::string attributes;
        std::string children;
        const char* chain;
    } rows[] = {
        {" id='1' color='red'", kValid, "Failed to process the element [Ticket]\nUnexpected Attribute [color] found."},
        {" id='1' ext:tag='x' xmlns:ext='urn:kvxml:test:other'", kValid,
         "Failed to process the element [Ticket]\nUnexpected Attribute [tag] found."},
        {" id='1'", "<title>t</title><status>open</status><extra/>",
         "Failed to process the element [Ticket]\nFailed read all the elements held within the element [Ticket]. The "
         "unexpected element [extra] remains un processed"},
        {" id='1'", "<title>t</title><status>open</status><due>2024-01-01</due><note>late</note>",
         "Failed to process the element [Ticket]\nFailed read all the elements held within the element [Ticket]. The "
         "unexpected element [note] remains un processed"},
        {" id='1'", "<title>t</title><extra/><status>open</status>",
         "Failed to process the element [Ticket]\nFailed to find a required element [status]"},
        {" id='1'", "<title>t</title>",
         "Failed to process the element [Ticket]\nFailed to find a required element [status]"},
        {" id='1'", "", "Failed to process the element [Ticket]\nFailed to find a required element [title]"},
        {" id='1'", "<Title>t</Title><status>open</status>",
         "Failed to process the element [Ticket]\nFailed to find a required element [title]"},
        {" id='1'", "<title xmlns='urn:kvxml:test:other'>t</title><status>open</status>",
         "Failed to process the element [Ticket]\nFailed to find a required element [title]"},
        {"", kValid, "Failed to process the element [Ticket]\nFailed to find the required Attribute [id]"},
        {" id='x1'", kValid, "Failed to process the element [Ticket]\nThe value [x1] can not be converted to a ui4"},
        {" id='4294967296'", kValid,
         "Failed to process the element [Ticket]\nThe value [4294967296] is to large to fit in a ui4"},
        {" id='1' ratio='1,5'", kValid,
         "Failed to process the element [Ticket]\nThe value [1,5] can not be converted to a r8"},
        {" id='1' priority='urgent'", kValid,
         "Failed to process the element [Ticket]\nThe value [urgent] is not a member of the enumeration Priority"},
        {" id='1'", "<title>t</title><status>Open</status>",
         "Failed to process the element [Ticket]\nThe value [Open] is not a member of the enumeration Status"},
        {" id='1'", "<title>t</title><status>open</status><due>2024-02-30</due>",
         "Failed to process the element [Ticket]\nInvalid Day [30] (1 <= day <= days in month"},
        {" id='1'", "<title xsi:nil='true'/><status>open</status>",
         "Failed to process the element [Ticket]\nInvalid use of 'nil' attibute in non-nillable element [title]"},
        {" id='1' xsi:nil='true'", kValid,
         "Failed to process the element [Ticket]\nInvalid use of 'nil' attibute in non-nillable element [Ticket]"},
        {" id='1'", "<title>t</title><status>open</status><severity xsi:nil='yes'/>",
         "Failed to process the element [Ticket]\nUnexpected Value [yes] for 'nil' Attribute found."},
        {" id='1'", "<title>t</title><status>open</status><note xsi:nil=''>n</note><due xsi:nil='true'/>",
         "Failed to process the element [Ticket]\nInvalid use of 'nil' attibute in non-nillable element [due]"},
    };
    for (const auto& row : rows) {
        CTicket ticket;
        EXPECT_KV_CHAIN(ticket.FromXml(TicketDocument(row.attributes, row.children).c_str()), CKvValidationException,
                        row.chain);
    }
}

TEST(BindingTicketRead, RootNameIsAdoptedNotChecked) {
    // The engine matches children against their descriptors; the document
    // element's own name is taken over, so a substituted root reads.
    CTicket ticket;
    ticket.FromXml("<Bug xmlns='urn:kvxml:test:ticket' id='1'><title>a</title><status>open</status></Bug>");
    EXPECT_EQ(ticket.GetElementName(), "Bug");
    EXPECT_EQ(Compact(ticket).substr(0, 47), "<AA:Bug xmlns:AA=\"urn:kvxml:test:ticket\" id=\"1\"");

    // A root in a foreign namespace carries its children with it: they fail
    // to match.
    EXPECT_KV_CHAIN(ticket.FromXml("<Ticket xmlns='urn:other' id='1'><title>a</title><status>open</status></Ticket>"),
                    CKvValidationException,
                    "Failed to process the element [Ticket]\nFailed to find a required element [title]");
}

TEST(BindingTicketRead, FailedReadLeavesWhatCameBefore) {
    // Attributes are read first, then the children in order; the failing
    // member stores nothing.
    CTicket ticket;
    EXPECT_KV_CHAIN(
        ticket.FromXml(
            TicketDocument(" id='9' lang='de' retries='x'", "<title>t</title><status>open</status>").c_str()),
        CKvValidationException, "Failed to process the element [Ticket]\nThe value [x] can not be converted to a i4");
    EXPECT_EQ(ticket.GetId(), 9u);
    EXPECT_EQ(ticket.GetLang(), "de");
    EXPECT_EQ(ticket.GetRetries(), 3);
    EXPECT_FALSE(ticket.IsTitleSet());

    EXPECT_KV_CHAIN(
        ticket.FromXml(TicketDocument(" id='8'",
                                      "<title>kept</title><status>closed</status><severity>major</severity>"
                                      "<note>also kept</note><due>tomorrow</due>")
                           .c_str()),
        CKvValidationException,
        "Failed to process the element [Ticket]\nInvalid XSD Date [tomorrow] expected CCYY-MM-DD[Z|[+|-]hh:mm]");
    EXPECT_EQ(ticket.GetId(), 8u);
    EXPECT_EQ(ticket.GetLang(), "en");  // reset before the read
    EXPECT_EQ(ticket.GetTitle(), "kept");
    EXPECT_EQ(ticket.GetStatus(), TicketStatus::Closed);
    EXPECT_EQ(ticket.GetSeverity(), TicketSeverity::Major);
    EXPECT_EQ(ticket.GetNote(), "also kept");
    EXPECT_FALSE(ticket.IsDueSet());
}

TEST(BindingTicketRead, BrokenInputBeforeTheEngineKeepsTheObject) {
    CTicket ticket;
    FillTicket(ticket);
    const std::string before = Compact(ticket);
    EXPECT_KV_THROW(ticket.FromXml(""), CKvException, "XML String is empty!");
    EXPECT_KV_CHAIN(ticket.FromXml("<Ticket"), CKvException, "unclosed token at line 1");
    EXPECT_KV_THROW(ticket.FromXmlFile("/nonexistent/ticket.xml"), CKvException,
                    "Failed to open the file [/nonexistent/ticket.xml]");
    EXPECT_EQ(Compact(ticket), before);
}

TEST(BindingAllTypesRead, TextThatDoesNotConvertNamesItsType) {
    const struct {
        const char* element;
        const char* text;
        const char* inner;
        bool invalidValue;  // CKvInvalidValueException inside, else plain CKvException
    } rows[] = {
        {"hex", "ABC", "Invalid length in hex string", false},
        {"hex", "0G", "Invalid char in hex string [G]", false},
        {"i1", "128", "The value [128] is to large to fit in a i1", true},
        {"i1", "x", "The value [x] can not be converted to a i4", true},
        {"i2", "-32769", "The value [-32769] is to large to fit in a i2", true},
        {"i4", "12a", "The value [12a] can not be converted to a i4", true},
        {"i4", "99999999999", "The value [99999999999] is to large to fit in a i4", true},
        {"i8", "9223372036854775808", "The value [9223372036854775808] is to large to fit in a i8", true},
        {"ui1", "256", "The value [256] is to large to fit in a ui1", true},
        {"ui2", "65536", "The value [65536] is to large to fit in a ui2", true},
        {"ui4", "1.5", "The value [1.5] can not be converted to a ui4", true},
        {"ui8", "18446744073709551616", "The value [18446744073709551616] is to large to fit in a ui8", true},
        {"r4", "1.0f", "The value [1.0f] can not be converted to a r4", true},
        {"r8", "one", "The value [one] can not be converted to a r8", true},
        {"duration", "P1Q", "Invalid XSD Duration [P1Q] expected [-]P[nY][nM][nD][T[nH][nM][nS.ff]]", true},
        {"date", "", "Invalid Date (Empty String)", true},
        {"date", "2024-1-01", "Invalid XSD Date [2024-1-01] expected CCYY-MM-DD[Z|[+|-]hh:mm]", true},
        {"dateTime", "2024-01-01", "Invalid XSD DateTime [2024-01-01] expected CCYY-MM-DDThh:mm:ss[.ff]", true},
        {"time", "25:00", "Invalid XSD Time [25:00] expected hh:mm:ss[.ff]", true},
        {"boolean", "yes",
         "A Boolean Value read from an XML document was invalid [yes]. Valid values are 'true', 'false', '1', or '0'",
         true},
        {"decimal", "1.2.3", "The string representing a Decimal, contained an invalid char at position 3 [1.2.3]",
         true},
    };
    for (const auto& row : rows) {
        std::string doc = std::string("<AllTypes xmlns='urn:kvxml:test:types'>") + kAllTypesChildren + "</AllTypes>";
        for (size_t at = doc.find("AA:"); at != std::string::npos; at = doc.find("AA:")) doc.erase(at, 3);
        const std::string open = std::string("<") + row.element + ">";
        const size_t start = doc.find(open) + open.size();
        doc.replace(start, doc.find('<', start) - start, row.text);

        CAllTypes value;
        try {
            value.FromXml(doc.c_str());
            ADD_FAILURE() << row.element << " [" << row.text << "] did not throw";
        } catch (const CKvException& error) {
            EXPECT_EQ(typeid(error), typeid(CKvValidationException));
            EXPECT_EQ(error.GetFullMessage(), std::string("Failed to process the element [AllTypes]\n") + row.inner);
            const CKvException* inner = error.GetInnerException();
            ASSERT_NE(inner, nullptr);
            if (row.invalidValue)
                EXPECT_EQ(typeid(*inner), typeid(CKvInvalidValueException)) << row.element;
            else
                EXPECT_EQ(typeid(*inner), typeid(CKvException)) << row.element;
        }
    }
}

TEST(BindingAllTypesWrite, FacetsAreCheckedOnWritingOnly) {
    CAllTypes value;
    FillAllTypes(value);
    value.SetString("lower");
    const std::string doc = Compact(CAllTypes());  // unset members write nothing
    EXPECT_EQ(doc, "<AA:AllTypes xmlns:AA=\"urn:kvxml:test:types\"/>");

    std::string text = std::string("<AllTypes xmlns='urn:kvxml:test:types'>") + kAllTypesChildren + "</AllTypes>";
    for (size_t at = text.find("AA:"); at != std::string::npos; at = text.find("AA:")) text.erase(at, 3);
    const size_t at = text.find("Hello");
    text.replace(at, 5, "lower");
    CAllTypes read;
    read.FromXml(text.c_str());  // reading stores the value as converted
    EXPECT_EQ(read.GetString(), "lower");

    for (CAllTypes* object : {&value, &read})
        EXPECT_KV_CHAIN(object->ToXml(), CKvValidationException,
                        "Failed to convert the element [AllTypes] to XML\nInvalid Value for string [lower]");
}

TEST(BindingAllTypesWrite, FacetViolationsNameTheMember) {
    const struct {
        void (*set)(CAllTypes&);
        const char* chain;
    } rows[] = {
        {[](CAllTypes& v) { v.SetI4(1001); },
         "Failed to convert the element [AllTypes] to XML\nInvalid Value for i4 [1001]"},
        {[](CAllTypes& v) { v.SetI4(-1001); },
         "Failed to convert the element [AllTypes] to XML\nInvalid Value for i4 [-1001]"},
        {[](CAllTypes& v) { v.SetDecimal(CDecimal("0")); },
         "Failed to convert the element [AllTypes] to XML\nInvalid Value for decimal [0]"},
        {[](CAllTypes& v) {
             unsigned char bytes[17] = {0x01, 0x02};
             v.SetB64(CBinaryData(bytes, 17, false));
         },
         "Failed to convert the element [AllTypes] to XML\nInvalid Value for b64 [0102000000000000000000000000000000]"},
    };
    for (const auto& row : rows) {
        CAllTypes value;
        FillAllTypes(value);
        row.set(value);
        EXPECT_KV_CHAIN(value.ToXml(), CKvValidationException, row.chain);
    }
}

TEST(BindingWrite, FailuresWrapPerLevel) {
    CTicket ticket;  // the required id is unset: it is converted, not skipped
    ticket.SetTitle("t");
    ticket.SetStatus(TicketStatus::Open);
    EXPECT_KV_CHAIN(
        ticket.ToXml(), CKvValidationException,
        "Failed to convert the element [Ticket] to XML\nFailed to convert attributes to XML\nInvalid Type 0 "
        "to convert to string");
    ticket.SetId(1);
    EXPECT_NO_THROW(ticket.ToXml());

    CMeasurement weight;
    weight.SetUnit(MeasurementUnit::Kg);
    EXPECT_KV_CHAIN(weight.ToXml(), CKvValidationException,
                    "Failed to convert the element [Measurement] to XML\nInvalid Type 0 to convert to string");
    weight.SetValue(CDecimal(1));
    weight.SetPrecision(7);
    EXPECT_KV_CHAIN(weight.ToXml(), CKvValidationException,
                    "Failed to convert the element [Measurement] to XML\nFailed to convert attributes to "
                    "XML\nInvalid Value for precision [7]");
    weight.SetNil(true);  // nil skips the content, not the attributes
    EXPECT_KV_CHAIN(weight.ToXml(), CKvValidationException,
                    "Failed to convert the element [Measurement] to XML\nFailed to convert attributes to "
                    "XML\nInvalid Value for precision [7]");

    CShape shape;
    shape.SetCircle(-1);
    EXPECT_KV_CHAIN(shape.ToXml(), CKvValidationException,
                    "Failed to convert the element [Shape] to XML\nInvalid Value for circle [-1.000000]");
}

TEST(BindingShapeRead, OneMemberOnly) {
    CShape shape;
    EXPECT_KV_CHAIN(shape.FromXml("<Shape><color>blue</color><circle>1</circle></Shape>"), CKvValidationException,
                    "Failed to process the element [Shape]\nFailed read all the elements held within the element "
                    "[Shape]. The unexpected element [circle] remains un processed");
    EXPECT_EQ(shape.GetChoice(), CShape::Choice::Color);  // the member read before the failure stays

    EXPECT_KV_CHAIN(shape.FromXml("<Shape><triangle/></Shape>"), CKvValidationException,
                    "Failed to process the element [Shape]\nFailed read all the elements held within the element "
                    "[Shape]. The unexpected element [triangle] remains un processed");
    EXPECT_KV_CHAIN(
        shape.FromXml("<Shape><color>purple</color></Shape>"), CKvValidationException,
        "Failed to process the element [Shape]\nThe value [purple] is not a member of the enumeration Color");
    EXPECT_EQ(shape.GetChoice(), CShape::Choice::None);
}

TEST(BindingSettingsRead, MissingOrRepeatedMembers) {
    const struct {
        const char* children;
        const char* chain;
    } rows[] = {
        {"<mode>active</mode><port>1</port>",
         "Failed to process the element [Settings]\nFailed to find the mandatory element [host]"},
        {"<host>h</host><mode>active</mode>",
         "Failed to process the element [Settings]\nFailed to find the mandatory element [port]"},
        {"<host>h</host><port>1</port><mode>active</mode><host>again</host>",
         "Failed to process the element [Settings]\nFailed read all the elements held within the element [Settings]. "
         "The unexpected element [host] remains un processed"},
        {"<host>h</host><port>1</port><mode>active</mode><secure>maybe</secure>",
         "Failed to process the element [Settings]\nA Boolean Value read from an XML document was invalid [maybe]. "
         "Valid values are 'true', 'false', '1', or '0'"},
        {"<host>h</host><port>1</port><mode xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' xsi:nil='true'/>",
         "Failed to process the element [Settings]\nInvalid use of 'nil' attibute in non-nillable element [mode]"},
    };
    for (const auto& row : rows) {
        CSettings settings;
        EXPECT_KV_CHAIN(
            settings.FromXml(
                (std::string("<Settings xmlns='urn:kvxml:test:settings'>") + row.children + "</Settings>").c_str()),
            CKvValidationException, row.chain);
    }
    // The members read before the check stay.
    CSettings settings;
    EXPECT_ANY_THROW(
        settings.FromXml("<Settings xmlns='urn:kvxml:test:settings'><port>2</port><mode>active</mode></Settings>"));
    EXPECT_EQ(settings.GetPort(), 2);
    EXPECT_EQ(settings.GetMode(), SettingsMode::Active);
    EXPECT_FALSE(settings.IsHostSet());
}

TEST(BindingMeasurementRead, NilAndContentRules) {
    const struct {
        const char* attributes;
        const char* content;
        const char* chain;
    } rows[] = {
        {" unit='kg' xsi:nil='yes'", "",
         "Failed to process the element [Measurement]\nUnexpected Value [yes] for 'nil' Attribute found."},
        {" unit='kg'", "heavy",
         "Failed to process the element [Measurement]\nThe string representing a Decimal, contained an invalid char at "
         "position 0 [heavy]"},
        {" unit='stone'", "1",
         "Failed to process the element [Measurement]\nThe value [stone] is not a member of the enumeration Unit"},
        {"", "1", "Failed to process the element [Measurement]\nFailed to find the required Attribute [unit]"},
        {" unit='kg'", "1<extra/>",
         "Failed to process the element [Measurement]\nFailed read all the elements held within the element "
         "[Measurement]. The unexpected element [extra] remains un processed"},
    };
    for (const auto& row : rows) {
        CMeasurement measurement;
        const std::string doc = std::string("<Measurement xmlns='urn:kvxml:test:measure' xmlns:xsi='") + kXsi + "'" +
                                row.attributes + ">" + row.content + "</Measurement>";
        EXPECT_KV_CHAIN(measurement.FromXml(doc.c_str()), CKvValidationException, row.chain);
    }
}

}  // namespace
