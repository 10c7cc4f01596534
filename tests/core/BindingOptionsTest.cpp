// BindingOptionsTest.cpp - the serialization context's options, seen through whole documents of the generated
// bindings.

#include "BindingTestSupport.h"
#include "measurement.h"
#include "settings.h"
#include "shape.h"

using namespace kvbindtest;
using namespace KvXmlLib10;
using kvgen_measurement::CMeasurement;
using kvgen_measurement::MeasurementUnit;
using kvgen_settings::CSettings;
using kvgen_ticket::TicketStatus;

namespace {

constexpr const char* kValid = "<title>t</title><status>open</status>";

TEST(BindingOptions, IgnoreUnknownElementsSkipsForeignChildren) {
    CXmlSerializationContext context;
    context.SetIgnoreUnknownElements(true);
    const char* const children[] = {
        "<x/><title>t</title><y/><status>open</status><note>n</note><z/>",
        "<title>t</title><status>open</status><note>n</note><title>again</title>",
        "<title>t</title><status xmlns='urn:other'>closed</status><status>open</status><note>n</note>",
    };
    for (const char* body : children) {
        CTicket ticket;
        ticket.FromXml(TicketDocument(" id='1'", body).c_str(), context);
        EXPECT_EQ(ticket.GetTitle(), "t") << body;
        EXPECT_EQ(ticket.GetStatus(), TicketStatus::Open) << body;
        EXPECT_EQ(ticket.GetNote(), "n") << body;
    }
    // Skipping never invents a missing mandatory member.
    CTicket ticket;
    EXPECT_KV_CHAIN(ticket.FromXml(TicketDocument(" id='1'", "<title>t</title><x/>").c_str(), context),
                    CKvValidationException,
                    "Failed to process the element [Ticket]\nFailed to find a required element [status]");
    // After a skipped leftover, reading resumes at the last member that consumed
    // something; a mandatory one then searches for a second occurrence and fails.
    EXPECT_KV_CHAIN(
        ticket.FromXml(TicketDocument(" id='1'", "<title>t</title><status>open</status><y/><note>n</note>").c_str(),
                       context),
        CKvValidationException, "Failed to process the element [Ticket]\nFailed to find a required element [status]");

    kvgen_shape::CShape shape;
    shape.FromXml("<Shape><triangle/><square>2</square><circle>1</circle></Shape>", context);
    EXPECT_TRUE(shape.IsSquareSet());
    EXPECT_FALSE(shape.IsCircleSet());

    // An all group skips leftovers after its members, but stops at the first
    // element in between that no member takes.
    CSettings settings;
    settings.FromXml(
        "<Settings xmlns='urn:kvxml:test:settings'><host>h</host><port>1</port><mode>active</mode><x/></Settings>",
        context);
    EXPECT_EQ(settings.GetMode(), kvgen_settings::SettingsMode::Active);
    EXPECT_KV_CHAIN(settings.FromXml("<Settings xmlns='urn:kvxml:test:settings'><host>h</host><x/><port>1</port>"
                                     "<mode>active</mode></Settings>",
                                     context),
                    CKvValidationException,
                    "Failed to process the element [Settings]\nFailed to find the mandatory element [port]");
    EXPECT_EQ(settings.GetHost(), "h");
}

TEST(BindingOptions, IgnoreUnknownAttributesDropsThem) {
    CXmlSerializationContext context;
    context.SetIgnoreUnknownAttributes(true);
    CTicket ticket;
    ticket.FromXml(TicketDocument(" color='red' id='2' o:x='1' xmlns:o='urn:other'", kValid).c_str(), context);
    EXPECT_EQ(ticket.GetId(), 2u);
    // Still required: an ignored attribute does not stand in for a missing one.
    EXPECT_KV_CHAIN(ticket.FromXml(TicketDocument(" color='red'", kValid).c_str(), context),
                    CKvValidationException,
                    "Failed to process the element [Ticket]\nFailed to find the required Attribute [id]");
}

TEST(BindingOptions, IgnoreMissingMandatoryElementsInSequencesOnly) {
    CXmlSerializationContext context;
    context.SetIgnoreMissingMandatoryElements(true);
    CTicket ticket;
    ticket.FromXml(TicketDocument(" id='3'", "<note>only a note</note>").c_str(), context);
    EXPECT_FALSE(ticket.IsTitleSet());
    EXPECT_FALSE(ticket.IsStatusSet());
    EXPECT_EQ(ticket.GetNote(), "only a note");
    // Writing the partial object leaves the unset mandatory members out.
    EXPECT_EQ(Compact(ticket),
              "<AA:Ticket xmlns:AA=\"urn:kvxml:test:ticket\" id=\"3\" priority=\"normal\" lang=\"en\">"
              "<AA:note>only a note</AA:note></AA:Ticket>");
    // An all group checks its mandatory members regardless.
    CSettings settings;
    EXPECT_KV_CHAIN(settings.FromXml("<Settings xmlns='urn:kvxml:test:settings'><port>1</port></Settings>", context),
                    CKvValidationException,
                    "Failed to process the element [Settings]\nFailed to find the mandatory element [host]");
}

TEST(BindingOptions, IgnoreNamespacesMatchesByLocalName) {
    CXmlSerializationContext context;
    context.SetIgnoreNamespaces(true);
    const char* foreign =
        "<Ticket xmlns='urn:other' xmlns:o='urn:elsewhere' id='4' o:level='low'><title>t</title>"
        "<o:status>closed</o:status></Ticket>";
    CTicket ticket;
    ticket.FromXml(foreign, context);
    EXPECT_EQ(ticket.GetStatus(), TicketStatus::Closed);
    EXPECT_EQ(ticket.GetLevel(), kvgen_ticket::TicketTypeLevel::Low);  // enumeration attributes honour the option
    EXPECT_KV_CHAIN(ticket.FromXml(foreign), CKvValidationException,
                    "Failed to process the element [Ticket]\nUnexpected Attribute [level] found.");
}

TEST(BindingOptions, NoOptionalAttributeDefaultOutputComparesText) {
    CXmlSerializationContext context;
    context.SetNoOptionalAttributeDefaultOutput(true);
    CTicket ticket;  // only the required members set
    ticket.FromXml(TicketDocument(" id='5'", kValid).c_str());
    ticket.SetRatio(1.0);  // prints as "1", not as its default text "1.0"
    EXPECT_EQ(Compact(ticket, context),
              "<AA:Ticket xmlns:AA=\"urn:kvxml:test:ticket\" id=\"5\" ratio=\"1\"><AA:title>t</AA:title>"
              "<AA:status>open</AA:status></AA:Ticket>");
}

TEST(BindingOptions, WriteTypeAttributeUnderAnotherElementName) {
    CMeasurement weight;
    weight.SetValue(CDecimal("70"));
    weight.SetUnit(MeasurementUnit::Kg);
    weight.SetElementName("Weight");
    EXPECT_EQ(Compact(weight),
              "<AA:Weight xmlns:AA=\"urn:kvxml:test:measure\" xmlns:AB=\"http://www.w3.org/2001/XMLSchema-instance\" "
              "AB:type=\"AA:Measurement\" unit=\"kg\">70</AA:Weight>");
    CXmlSerializationContext context;
    context.SetWriteTypeAttribute(false);
    EXPECT_EQ(Compact(weight, context),
              "<AA:Weight xmlns:AA=\"urn:kvxml:test:measure\" unit=\"kg\">70</AA:Weight>");

    // The type attribute is skipped on reading; the element name is adopted.
    CMeasurement copy;
    copy.FromXml(Compact(weight).c_str());
    EXPECT_EQ(copy.GetElementName(), "Weight");
    EXPECT_TRUE(copy.GetValue() == CDecimal(70));

    // A class whose type may not be derived from never says its type.
    CTicket ticket;
    FillTicket(ticket);
    ticket.SetElementName("Issue");
    EXPECT_EQ(Compact(ticket).find("type="), std::string::npos);
}

TEST(BindingOptions, AliasesAndProcessingInstructionsOnTheRoot) {
    CXmlSerializationContext context;
    context.GetNamespaceAliases().Add("t", "urn:kvxml:test:ticket");
    context.GetNamespaceAliases().Add("e", "urn:kvxml:test:ext");
    context.GetProcessingInstructions().push_back("<?xml-stylesheet href=\"ticket.xsl\"?>");
    context.GetProcessingInstructions().push_back("<?app go?>");
    CTicket ticket;  // only the required members set
    ticket.FromXml(TicketDocument(" id='42'", kValid).c_str());
    ticket.SetSeverityNil();
    ticket.SetTag("x");
    const std::string text = ticket.ToXml(true, true, EOL_LF, context);
    EXPECT_EQ(text,
              "<?xml version=\"1.0\"?>\n<?xml-stylesheet href=\"ticket.xsl\"?>\n\n<?app go?>\n\n"
              "<t:Ticket xmlns:e=\"urn:kvxml:test:ext\" xmlns:t=\"urn:kvxml:test:ticket\" id=\"42\" "
              "priority=\"normal\" lang=\"en\" e:tag=\"x\">\n"
              "\t<t:title>t</t:title>\n\t<t:status>open</t:status>\n"
              "\t<t:severity xmlns:AA=\"http://www.w3.org/2001/XMLSchema-instance\" AA:nil=\"true\"/>\n</t:Ticket>\n");
    CTicket copy;
    copy.FromXml(text.c_str());
    EXPECT_EQ(Compact(copy), Compact(ticket));

    // An alias for the schema-instance namespace is used for nil as well.
    context.GetNamespaceAliases().Add("xsi", kXsi);
    EXPECT_NE(ticket.ToXml(false, false, EOL_LF, context).find("<t:severity xsi:nil=\"true\"/>"), std::string::npos);
}

TEST(BindingOptions, DefaultNamespaceLeavesElementsUnprefixed) {
    CXmlSerializationContext context;
    context.SetDefaultNamespaceURI("urn:kvxml:test:ticket");
    CTicket ticket;  // only the required members set
    ticket.FromXml(TicketDocument(" id='6'", kValid).c_str());
    ticket.SetTag("x");
    const std::string text = Compact(ticket, context);
    EXPECT_EQ(
        text,
        "<Ticket xmlns=\"urn:kvxml:test:ticket\" id=\"6\" priority=\"normal\" "
        "lang=\"en\" xmlns:AA=\"urn:kvxml:test:ext\" AA:tag=\"x\"><title>t</title><status>open</status></Ticket>");
    CTicket copy;
    copy.FromXml(text.c_str());
    EXPECT_EQ(copy.GetTag(), "x");

    // A default namespace other than the root's: the root gets a prefix.
    context.SetDefaultNamespaceURI("urn:other");
    EXPECT_EQ(Compact(ticket, context).substr(0, 74),
              "<AA:Ticket xmlns:AA=\"urn:kvxml:test:ticket\" xmlns=\"urn:other\" id=\"6\" prior");
}

TEST(BindingOptions, InlineSchemaTextGoesIntoTheRootStartTag) {
    CXmlSerializationContext context;
    context.SetInLineSchema(
        "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
        "xsi:schemaLocation=\"urn:kvxml:test:measure measure.xsd\"");
    CMeasurement weight;
    weight.SetValue(CDecimal("1.5"));
    weight.SetUnit(MeasurementUnit::Kg);
    const std::string text = Compact(weight, context);
    EXPECT_EQ(text,
              "<AA:Measurement xmlns:AA=\"urn:kvxml:test:measure\" unit=\"kg\" \n"
              "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\" "
              "xsi:schemaLocation=\"urn:kvxml:test:measure measure.xsd\"\n>1.5</AA:Measurement>");
    CMeasurement copy;
    copy.FromXml(text.c_str());  // schema-instance attributes are not the class's business
    EXPECT_TRUE(copy.GetValue() == CDecimal("1.5"));
}

}  // namespace
