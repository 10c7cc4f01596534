// BindingErrorsTest.cpp - documents that break the binding rules, the message chains they give and what the object
// keeps.

#include "BindingTestSupport.h"
#include "measurement.h"
#include "shape.h"

using namespace kvbindtest;
using namespace KvXmlLib10;

namespace {

TEST(BindingTicketRead, RootNameIsAdoptedNotChecked) {
    // The children are matched against their descriptors; the document
    // element's own name is taken over, so a substituted root reads.
    CTicket ticket;
    ticket.FromXml("<Bug xmlns='urn:kvxml:test:ticket' id='1'><title>a</title><status>open</status></Bug>");
    EXPECT_EQ(ticket.GetElementName(), "Bug");
    EXPECT_EQ(Compact(ticket).substr(0, 47), "<AA:Bug xmlns:AA=\"urn:kvxml:test:ticket\" id=\"1\"");

    // A root in a foreign namespace carries its children with it: they fail to match.
    EXPECT_KV_CHAIN(ticket.FromXml("<Ticket xmlns='urn:other' id='1'><title>a</title><status>open</status></Ticket>"),
                    CKvValidationException,
                    "Failed to process the element [Ticket]\nFailed to find a required element [title]");
}

TEST(BindingTicketRead, FailedReadLeavesWhatCameBefore) {
    CTicket ticket;
    ticket.SetLang("fr");
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
    EXPECT_EQ(ticket.GetSeverity(), kvgen_ticket::TicketSeverity::Major);
    EXPECT_EQ(ticket.GetNote(), "also kept");
    EXPECT_FALSE(ticket.IsDueSet());  // the failing member stores nothing
}

TEST(BindingAllTypesRead, TextThatDoesNotConvertKeepsTheInnerException) {
    const struct {
        const char* element;
        const char* text;
        const char* inner;
        bool invalidValue;  // CKvInvalidValueException inside, else plain CKvException
    } rows[] = {
        {"hex", "0G", "Invalid char in hex string [G]", false},
        {"i1", "128", "The value [128] is to large to fit in a i1", true},
        {"date", "", "Invalid Date (Empty String)", true},
    };
    for (const auto& row : rows) {
        std::string doc = AllTypesDocument();
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
            ASSERT_NE(error.GetInnerException(), nullptr);
            const CKvException& innerError = *error.GetInnerException();
            const std::type_info& inner = typeid(innerError);
            EXPECT_TRUE(inner == (row.invalidValue ? typeid(CKvInvalidValueException) : typeid(CKvException)))
                << row.element;
        }
    }
}

// Facets are checked on writing (alltypes.bad-pattern.xml); a binary value is named by its hex digits.
TEST(BindingAllTypesWrite, AFacetFailureNamesABinaryValueByItsHexDigits) {
    CAllTypes value;
    FillAllTypes(value);
    unsigned char bytes[17] = {0x01, 0x02};
    value.SetB64(CBinaryData(bytes, 17, false));
    EXPECT_KV_CHAIN(value.ToXml(), CKvValidationException,
                    "Failed to convert the element [AllTypes] to XML\nInvalid Value for b64 "
                    "[0102000000000000000000000000000000]");
}

TEST(BindingWrite, FailuresWrapPerLevel) {
    kvgen_measurement::CMeasurement weight;  // the simple content is unset
    weight.SetUnit(kvgen_measurement::MeasurementUnit::Kg);
    EXPECT_KV_CHAIN(weight.ToXml(), CKvValidationException,
                    "Failed to convert the element [Measurement] to XML\nInvalid Type 0 to convert to string");
    weight.SetValue(CDecimal(1));
    weight.SetPrecision(7);
    const char* precision =
        "Failed to convert the element [Measurement] to XML\nFailed to convert attributes to XML\nInvalid Value for "
        "precision [7]";
    EXPECT_KV_CHAIN(weight.ToXml(), CKvValidationException, precision);
    weight.SetNil(true);  // nil skips the content, not the attributes
    EXPECT_KV_CHAIN(weight.ToXml(), CKvValidationException, precision);

    kvgen_shape::CShape shape;
    shape.SetCircle(-1);
    EXPECT_KV_CHAIN(shape.ToXml(), CKvValidationException,
                    "Failed to convert the element [Shape] to XML\nInvalid Value for circle [-1.000000]");
}

// The leftover of a choice is among the broken instances of tests/bindings.
TEST(BindingGroupsRead, AFailedChoiceKeepsItsMember) {
    kvgen_shape::CShape shape;
    EXPECT_THROW(shape.FromXml("<Shape><color>blue</color><circle>1</circle></Shape>"), CKvValidationException);
    EXPECT_TRUE(shape.IsColorSet());  // the member read before the failure stays
}

}  // namespace
