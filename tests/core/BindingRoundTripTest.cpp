// BindingRoundTripTest.cpp - generated bindings written as whole documents and read back through the public entry
// points.

#include "BindingTestSupport.h"
#include "measurement.h"
#include "settings.h"
#include "shape.h"

using namespace kvbindtest;
using namespace KvXmlLib10;
using kvgen_measurement::CMeasurement;
using kvgen_shape::CShape;

namespace {

TEST(BindingAllTypes, WritesGoldenDocument) {
    CAllTypes value;
    EXPECT_EQ(Compact(value), "<AA:AllTypes xmlns:AA=\"urn:kvxml:test:types\"/>");  // unset members write nothing
    FillAllTypes(value);
    EXPECT_EQ(Compact(value),
              std::string("<AA:AllTypes xmlns:AA=\"urn:kvxml:test:types\">") + kAllTypesChildren + "</AA:AllTypes>");
}

TEST(BindingTicket, WritesGoldenDocument) {
    CTicket ticket;
    FillTicket(ticket);
    EXPECT_EQ(ticket.ToXml(),
              "<?xml version=\"1.0\"?>\n"
              "<AA:Ticket xmlns:AA=\"urn:kvxml:test:ticket\" id=\"42\" priority=\"normal\" lang=\"en\" "
              "xmlns:AB=\"urn:kvxml:test:ext\" AB:tag=\"x\" AB:level=\"high\">\n"
              "\t<AA:title>Printer &lt;on fire&gt; &amp; \"smoking\"</AA:title>\n"
              "\t<AA:status>pending</AA:status>\n"
              "\t<AA:severity xmlns:AC=\"http://www.w3.org/2001/XMLSchema-instance\" AC:nil=\"true\"/>\n"
              "\t<AA:note>call Bob</AA:note>\n"
              "\t<AA:due>2024-06-01</AA:due>\n"
              "</AA:Ticket>\n");
    CTicket copy;
    copy.FromXml(ticket.ToXml().c_str());
    EXPECT_EQ(Compact(copy), Compact(ticket));

    CTicket bare;
    bare.SetId(1);
    bare.SetTitle("");
    bare.SetStatus(kvgen_ticket::TicketStatus::Closed);
    bare.SetRetries(3);  // a numeric default is written once set
    EXPECT_EQ(Compact(bare),
              "<AA:Ticket xmlns:AA=\"urn:kvxml:test:ticket\" id=\"1\" priority=\"normal\" retries=\"3\" "
              "lang=\"en\"><AA:title/><AA:status>closed</AA:status></AA:Ticket>");
}

TEST(BindingTicket, TextCannotInjectMarkup) {
    const std::string injected = "<![CDATA[x]]></title><note>0.01</note><![CDATA[";
    CTicket ticket;
    FillTicket(ticket);
    ticket.SetTitle(injected);
    const std::string xml = ticket.ToXml();
    CXmlSerializationContext keepCdata;
    keepCdata.SetStripCDATA(false);
    CTicket copy;
    copy.FromXml(xml.c_str(), keepCdata);
    EXPECT_EQ(copy.GetTitle(), injected);
    EXPECT_EQ(copy.GetNote(), "call Bob");
    CTicket stripped;  // the section's content, then the rest as text
    stripped.FromXml(xml.c_str());
    EXPECT_EQ(stripped.GetTitle(), "x</title><note>0.01</note><![CDATA[");
    EXPECT_EQ(Compact(copy), Compact(ticket));
}

TEST(BindingTicket, KeepsNonAsciiTextUnderUtf8Locale) {
    const KvXmlTest::ScopedLocale utf8("C.UTF-8");
    if (!utf8.Active()) GTEST_SKIP() << "C.UTF-8 locale not available";
    const std::string utf8Title =
        "Gr\xC3\xBC\xC3\x9F"
        "e \xE2\x82\xAC \xE7\x94\xB0";
    CTicket ticket;
    ticket.FromXml(
        L"<Ticket xmlns='urn:kvxml:test:ticket' id='3'><title>Gr\u00fc\u00dfe \u20ac \u7530</title>"
        L"<status>closed</status></Ticket>");
    EXPECT_EQ(ticket.GetTitle(), utf8Title);
    const CBinaryData bytes = ticket.ToXmlStream(false, false);
    const std::string text(reinterpret_cast<const char*>(bytes.GetData()), bytes.GetLength());
    EXPECT_NE(text.find("<AA:title>" + utf8Title + "</AA:title>"), std::string::npos);
    CTicket copy;
    copy.FromXmlStream(bytes);
    EXPECT_EQ(copy.GetTitle(), utf8Title);
}

TEST(BindingShape, WritesAndReadsTheChosenMemberOnly) {
    CShape shape;
    EXPECT_EQ(Compact(shape), "<Shape/>");  // the members' descriptors are optional: an empty choice writes
    shape.SetName("c");
    shape.SetSquare(CDecimal("-0.75"));
    EXPECT_EQ(Compact(shape), "<Shape name=\"c\"><square>-0.75</square></Shape>");

    const struct {
        const char* doc;
        bool label, color;
    } rows[] = {
        {"<Shape><label>hi</label></Shape>", true, false},
        {"<Shape><color>green</color></Shape>", false, true},
        {"<Shape name='empty'/>", false, false},
    };
    for (const auto& row : rows) {
        CShape read;
        read.SetCircle(9);
        read.FromXml(row.doc);  // a read starts from nothing chosen
        EXPECT_FALSE(read.IsCircleSet()) << row.doc;
        EXPECT_EQ(read.IsLabelSet(), row.label) << row.doc;
        EXPECT_EQ(read.IsColorSet(), row.color) << row.doc;
    }
    shape.FromXml("<Shape><circle>1e2</circle></Shape>");
    EXPECT_EQ(Compact(shape), "<Shape><circle>100</circle></Shape>");
}

TEST(BindingSettings, ReadsChildrenInAnyOrderAndWritesSchemaOrder) {
    for (const char* children : {"<host>h</host><port>80</port><mode>active</mode><secure>1</secure>",
                                 "<secure>1</secure><mode>active</mode><port>80</port><host>h</host>"}) {
        kvgen_settings::CSettings settings;
        settings.FromXml(
            (std::string("<Settings xmlns='urn:kvxml:test:settings'>") + children + "</Settings>").c_str());
        EXPECT_EQ(Compact(settings),
                  "<AA:Settings xmlns:AA=\"urn:kvxml:test:settings\"><AA:host>h</AA:host>"
                  "<AA:port>80</AA:port><AA:mode>active</AA:mode><AA:secure>true</AA:secure></AA:Settings>")
            << children;
    }
}

TEST(BindingMeasurement, SimpleContentAttributesAndNil) {
    CMeasurement weight;
    weight.SetValue(CDecimal("12.50"));
    weight.SetUnit(kvgen_measurement::MeasurementUnit::Lb);
    weight.SetSource("scale & \"co\"");
    EXPECT_EQ(Compact(weight),
              "<AA:Measurement xmlns:AA=\"urn:kvxml:test:measure\" unit=\"lb\" "
              "source=\"scale &amp; &quot;co&quot;\">12.5</AA:Measurement>");
    weight.SetNil(true);
    EXPECT_EQ(Compact(weight),
              "<AA:Measurement xmlns:AA=\"urn:kvxml:test:measure\" unit=\"lb\" source=\"scale &amp; "
              "&quot;co&quot;\" xmlns:AB=\"http://www.w3.org/2001/XMLSchema-instance\" AB:nil=\"true\"/>");
    CMeasurement copy;
    copy.FromXml(Compact(weight).c_str());
    EXPECT_TRUE(copy.IsNil());
    EXPECT_FALSE(copy.IsValueSet());
    EXPECT_EQ(copy.GetSource(), "scale & \"co\"");

    copy.FromXml("<Measurement xmlns='urn:kvxml:test:measure' unit='kg'>\n  5.50\n</Measurement>");
    EXPECT_FALSE(copy.IsNil());
    EXPECT_TRUE(copy.GetValue() == CDecimal("5.5"));
}

}  // namespace
