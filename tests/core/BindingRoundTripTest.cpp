// BindingRoundTripTest.cpp - generated-style bindings written as whole documents and read back through the public entry
// points.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <limits>
#include <string>

#include "BindingTestSupport.h"
#include "bindings/AllTypes.h"
#include "bindings/Measurement.h"
#include "bindings/Settings.h"
#include "bindings/Shape.h"
#include "bindings/Ticket.h"
#include "kvxml/metadata/ElementInfo.h"
#include "support/KvTestSupport.h"

using namespace kvbind;
using namespace kvbindtest;
using namespace KvXmlLib10;

namespace {

void ExpectSameValues(const CAllTypes& a, const CAllTypes& b) {
    EXPECT_TRUE(a.GetHex() == b.GetHex());
    EXPECT_TRUE(a.GetB64() == b.GetB64());
    EXPECT_EQ(a.GetI1(), b.GetI1());
    EXPECT_EQ(a.GetI2(), b.GetI2());
    EXPECT_EQ(a.GetI4(), b.GetI4());
    EXPECT_EQ(a.GetI8(), b.GetI8());
    EXPECT_EQ(a.GetUI1(), b.GetUI1());
    EXPECT_EQ(a.GetUI2(), b.GetUI2());
    EXPECT_EQ(a.GetUI4(), b.GetUI4());
    EXPECT_EQ(a.GetUI8(), b.GetUI8());
    if (std::isnan(a.GetR4()))
        EXPECT_TRUE(std::isnan(b.GetR4()));
    else
        EXPECT_EQ(a.GetR4(), b.GetR4());
    EXPECT_EQ(a.GetR8(), b.GetR8());
    EXPECT_TRUE(a.GetDuration() == b.GetDuration());
    EXPECT_EQ(a.GetYearMonth().ToString(), b.GetYearMonth().ToString());
    EXPECT_EQ(a.GetMonthDay().ToString(), b.GetMonthDay().ToString());
    EXPECT_EQ(a.GetYear(), b.GetYear());
    EXPECT_EQ(a.GetMonth(), b.GetMonth());
    EXPECT_EQ(a.GetDay(), b.GetDay());
    EXPECT_TRUE(a.GetDate() == b.GetDate());
    EXPECT_TRUE(a.GetDateTime() == b.GetDateTime());
    EXPECT_EQ(a.GetTime().ToString(), b.GetTime().ToString());
    EXPECT_EQ(a.GetString(), b.GetString());
    EXPECT_EQ(a.GetBoolean(), b.GetBoolean());
    EXPECT_TRUE(a.GetDecimal() == b.GetDecimal());
    EXPECT_TRUE(a.GetInteger() == b.GetInteger());
}

TEST(BindingAllTypes, DescribesEveryPrimitiveItemTypeButChar) {
    CAllTypes value;
    ASSERT_EQ(value.GetClassElementInfoCount(), 25);
    uint32_t seen = 0;
    for (KvXmlLib10Data::CElementInfo** info = value.GetClassElementInfo(); *info; ++info)
        seen |= 1u << (*info)->GetItemType();
    // Every code 1..26 except 22 (char, which no facet check accepts).
    EXPECT_EQ(seen, ((1u << 27) - 2) & ~(1u << 22));
    EXPECT_EQ(value.GetClassAttributeInfo()[0], nullptr);
}

TEST(BindingAllTypes, WritesGoldenDocument) {
    CAllTypes value;
    FillAllTypes(value);
    EXPECT_EQ(Compact(value),
              std::string("<AA:AllTypes xmlns:AA=\"urn:kvxml:test:types\">") + kAllTypesChildren + "</AA:AllTypes>");

    const std::string formatted = value.ToXml();
    const std::string head =
        "<?xml version=\"1.0\"?>\n<AA:AllTypes xmlns:AA=\"urn:kvxml:test:types\">\n\t<AA:hex>DEADBEEF</AA:hex>\n";
    const std::string tail = "\t<AA:integer>-123456789012345678901234567890</AA:integer>\n</AA:AllTypes>\n";
    EXPECT_EQ(formatted.substr(0, head.size()), head);
    EXPECT_EQ(formatted.substr(formatted.size() - tail.size()), tail);
}

TEST(BindingAllTypes, RoundTripsExtremesThroughTextAndBytes) {
    CAllTypes low;
    FillAllTypes(low);

    CAllTypes high;
    FillAllTypes(high);
    high.SetHex(CBinaryData());
    high.SetB64(CBinaryData());
    high.SetI1(127);
    high.SetI2(32767);
    high.SetI4(1000);
    high.SetI8(INT64_MAX);
    high.SetUI1(0);
    high.SetUI2(0);
    high.SetUI4(0);
    high.SetUI8(0);
    high.SetR4(std::numeric_limits<float>::quiet_NaN());
    high.SetR8(-std::numeric_limits<double>::infinity());
    CDateTime date;
    date.ParseXSDDate("-0044-03-15");
    high.SetDate(date);
    CDateTime time;
    time.ParseXSDTime("08:00:00.5+05:30");
    high.SetTime(time);
    high.SetDateTime(CDateTime("2024-01-01T00:00:00-05:00"));
    high.SetString("A");
    high.SetBoolean(false);
    high.SetDecimal(CDecimal("0.000001"));
    high.SetInteger(CBigInteger("0"));

    for (const CAllTypes* original : {&low, &high}) {
        const std::string text = original->ToXml();
        CAllTypes fromText;
        fromText.FromXml(text.c_str());
        ExpectSameValues(*original, fromText);
        EXPECT_EQ(fromText.ToXml(), text);

        CAllTypes fromBytes;
        fromBytes.FromXmlStream(original->ToXmlStream());
        ExpectSameValues(*original, fromBytes);
    }
    EXPECT_NE(Compact(high).find("<AA:r4>NaN</AA:r4><AA:r8>-INF</AA:r8>"), std::string::npos);
    EXPECT_NE(Compact(high).find("<AA:time>08:00:00.5+05:30</AA:time>"), std::string::npos);
}

TEST(BindingAllTypes, ReadAppliesEachElementsWhitespaceRule) {
    std::string doc = std::string("<AllTypes xmlns='urn:kvxml:test:types'>") + kAllTypesChildren + "</AllTypes>";
    auto replace = [&doc](const std::string& from, const std::string& to) {
        const size_t at = doc.find(from);
        ASSERT_NE(at, std::string::npos) << from;
        doc.replace(at, from.size(), to);
    };
    // The children are written with a prefix; read them in the default namespace.
    for (size_t at = doc.find("AA:"); at != std::string::npos; at = doc.find("AA:")) doc.erase(at, 3);
    replace("<i4>-1000</i4>", "<i4>\n\t -7 \t\n</i4>");
    replace("<date>2024-02-29</date>", "<date>  2024-02-29  </date>");
    replace("<boolean>true</boolean>", "<boolean> FALSE </boolean>");
    replace("<string>Hello</string>", "<string>  Two\t words  </string>");

    CAllTypes value;
    value.FromXml(doc.c_str());
    EXPECT_EQ(value.GetI4(), -7);
    EXPECT_TRUE(value.GetDate() == CDateTime(2024, 2, 29));
    EXPECT_FALSE(value.GetBoolean());
    EXPECT_EQ(value.GetString(), "  Two\t words  ");  // preserve keeps it as it is
    EXPECT_EQ(value.GetUI8(), UINT64_MAX);
}

TEST(BindingTicket, WritesGoldenDocumentFormattedAndCompact) {
    CTicket ticket;
    FillTicket(ticket);
    EXPECT_EQ(ticket.ToXml(),
              "<?xml version=\"1.0\"?>\n"
              "<AA:Ticket xmlns:AA=\"urn:kvxml:test:ticket\" id=\"42\" priority=\"normal\" retries=\"3\" ratio=\"1\" "
              "lang=\"en\" xmlns:AB=\"urn:kvxml:test:ext\" AB:tag=\"x\" AB:level=\"high\">\n"
              "\t<AA:title>Printer &lt;on fire&gt; &amp; \"smoking\"</AA:title>\n"
              "\t<AA:status>pending</AA:status>\n"
              "\t<AA:severity xmlns:AC=\"http://www.w3.org/2001/XMLSchema-instance\" AC:nil=\"true\"/>\n"
              "\t<AA:note>call Bob</AA:note>\n"
              "\t<AA:due>2024-06-01</AA:due>\n"
              "</AA:Ticket>\n");
    EXPECT_EQ(ticket.ToXml(true, true, EOL_CRLF).substr(0, 23), "<?xml version=\"1.0\"?>\r\n");

    CTicket bare;
    bare.SetId(1);
    bare.SetTitle("");
    bare.SetStatus(TicketStatus::Closed);
    EXPECT_EQ(Compact(bare),
              "<AA:Ticket xmlns:AA=\"urn:kvxml:test:ticket\" id=\"1\" priority=\"normal\" retries=\"3\" ratio=\"1\" "
              "lang=\"en\"><AA:title/><AA:status>closed</AA:status></AA:Ticket>");
}

TEST(BindingTicket, RoundTripsThroughTextGzipAndZlibBytes) {
    CTicket original;
    FillTicket(original);
    const std::string golden = Compact(original);

    const CBinaryData plain = original.ToXmlStream();
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(plain.GetData()), 38),
              "<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
    const CBinaryData gzip = original.ToXmlStream(true, true, Encoding_UTF8, EOL_LF,
                                                  CXmlSerializationContext::m_defaultContext, Compression_GZip);
    ASSERT_GT(gzip.GetLength(), 2u);
    EXPECT_EQ(gzip[0], 0x1F);
    EXPECT_EQ(gzip[1], 0x8B);
    const CBinaryData zlib = original.ToXmlStream(false, false, Encoding_UTF8, EOL_LF,
                                                  CXmlSerializationContext::m_defaultContext, Compression_Zlib);
    ASSERT_GT(zlib.GetLength(), 2u);
    EXPECT_EQ(zlib[0], 0x78);

    for (const CBinaryData* bytes : {&plain, &gzip, &zlib}) {
        CTicket copy;
        copy.FromXmlStream(*bytes);
        EXPECT_EQ(Compact(copy), golden);
        EXPECT_EQ(copy.GetTitle(), "Printer <on fire> & \"smoking\"");
        EXPECT_EQ(copy.GetStatus(), TicketStatus::Pending);
        EXPECT_TRUE(copy.IsSeveritySet());
        EXPECT_TRUE(copy.IsSeverityNil());
        EXPECT_EQ(copy.GetNote(), "call Bob");
        EXPECT_TRUE(copy.GetDue() == CDateTime(2024, 6, 1));
        EXPECT_EQ(copy.GetLevel(), TicketPriority::High);
    }
}

TEST(BindingTicket, RoundTripsThroughFilesPlainAndGzip) {
    CTicket original;
    FillTicket(original);
    const std::string path = testing::TempDir() + "kvxml_binding_ticket.xml";
    for (CompressionType compression : {Compression_None, Compression_GZip}) {
        original.ToXmlFile(path.c_str(), true, true, Encoding_UTF8, EOL_LF, CXmlSerializationContext::m_defaultContext,
                           compression);
        CTicket copy;
        copy.FromXmlFile(path.c_str());
        EXPECT_EQ(Compact(copy), Compact(original));
    }
    std::remove(path.c_str());
}

TEST(BindingTicket, EachReadStartsFromFreshProperties) {
    CTicket ticket;
    FillTicket(ticket);
    ticket.SetPriority(TicketPriority::Low);
    ticket.SetLang("fr");
    ticket.FromXml(TicketDocument(" id='5'", "<title>t</title><status>open</status>").c_str());
    EXPECT_EQ(ticket.GetId(), 5u);
    EXPECT_FALSE(ticket.IsSeveritySet());
    EXPECT_FALSE(ticket.IsNoteSet());
    EXPECT_FALSE(ticket.IsDueSet());
    EXPECT_FALSE(ticket.IsTagSet());
    EXPECT_FALSE(ticket.IsLevelSet());
    // Absent optional attributes fall back to their schema defaults.
    EXPECT_EQ(ticket.GetPriority(), TicketPriority::Normal);
    EXPECT_EQ(ticket.GetLang(), "en");
    EXPECT_EQ(ticket.GetRetries(), 3);
}

TEST(BindingTicket, NilIsCaseInsensitiveAndFalseMeansAbsent) {
    CTicket ticket;
    ticket.FromXml(TicketDocument(" id='1'",
                                  "<title xsi:nil='false'>t</title><status xsi:nil='0'>open</status>"
                                  "<severity xsi:nil='TRUE'>major</severity><note xsi:nil='1'>ignored</note>")
                       .c_str());
    EXPECT_EQ(ticket.GetTitle(), "t");
    EXPECT_TRUE(ticket.IsSeverityNil());
    EXPECT_TRUE(ticket.IsNoteNil());
    EXPECT_EQ(ticket.GetNote(), "");
    EXPECT_EQ(Compact(ticket).find("ignored"), std::string::npos);
}

TEST(BindingTicket, KeepsNonAsciiTextUnderUtf8Locale) {
    LocaleGuard locale("C.UTF-8");
    if (!locale.Active()) GTEST_SKIP() << "C.UTF-8 locale not available";
    CTicket ticket;
    ticket.FromXml(
        L"<Ticket xmlns='urn:kvxml:test:ticket' id='3'><title>Gr\u00fc\u00dfe \u20ac \u7530</title>"
        L"<status>closed</status></Ticket>");
    EXPECT_EQ(ticket.GetTitle(),
              "Gr\xC3\xBC\xC3\x9F"
              "e \xE2\x82\xAC \xE7\x94\xB0");
    const CBinaryData bytes = ticket.ToXmlStream(false, false);
    const std::string utf8(reinterpret_cast<const char*>(bytes.GetData()), bytes.GetLength());
    EXPECT_NE(utf8.find("<AA:title>Gr\xC3\xBC\xC3\x9F"
                        "e \xE2\x82\xAC \xE7\x94\xB0</AA:title>"),
              std::string::npos);
    CTicket copy;
    copy.FromXmlStream(bytes);
    EXPECT_EQ(copy.GetTitle(), ticket.GetTitle());
}

TEST(BindingShape, WritesTheChosenMemberOnly) {
    CShape shape;
    EXPECT_EQ(Compact(shape), "<Shape/>");  // every member optional: an empty choice is fine
    shape.SetName("c");
    shape.SetCircle(2.5);
    EXPECT_EQ(Compact(shape), "<Shape name=\"c\"><circle>2.5</circle></Shape>");
    shape.SetSquare(CDecimal("-0.75"));
    EXPECT_EQ(Compact(shape), "<Shape name=\"c\"><square>-0.75</square></Shape>");
    shape.SetLabelNil();
    EXPECT_EQ(Compact(shape),
              "<Shape name=\"c\"><label xmlns:AA=\"http://www.w3.org/2001/XMLSchema-instance\" "
              "AA:nil=\"true\"/></Shape>");
    shape.SetColor(ShapeColor::Blue);
    EXPECT_EQ(Compact(shape), "<Shape name=\"c\"><color>blue</color></Shape>");
}

TEST(BindingShape, ReadsWhicheverMemberIsPresent) {
    const struct {
        const char* doc;
        CShape::Choice choice;
    } rows[] = {
        {"<Shape><circle>1e2</circle></Shape>", CShape::Choice::Circle},
        {"<Shape><square>3</square></Shape>", CShape::Choice::Square},
        {"<Shape><label>hi</label></Shape>", CShape::Choice::Label},
        {"<Shape><color>green</color></Shape>", CShape::Choice::Color},
        {"<Shape name='empty'/>", CShape::Choice::None},
    };
    for (const auto& row : rows) {
        CShape shape;
        shape.SetCircle(9);
        shape.FromXml(row.doc);
        EXPECT_EQ(shape.GetChoice(), row.choice) << row.doc;
    }
    CShape shape;
    shape.FromXml("<Shape><circle>1e2</circle></Shape>");
    EXPECT_EQ(shape.GetCircle(), 100.0);
    EXPECT_EQ(Compact(shape), "<Shape><circle>100</circle></Shape>");
    shape.FromXml("<Shape><color>green</color></Shape>");
    EXPECT_EQ(shape.GetColor(), ShapeColor::Green);
}

TEST(BindingSettings, ReadsChildrenInAnyOrderAndWritesSchemaOrder) {
    const char* const orders[] = {
        "<host>h</host><port>80</port><mode>active</mode><secure>1</secure>",
        "<secure>1</secure><mode>active</mode><port>80</port><host>h</host>",
        "<mode>active</mode><host>h</host><secure>1</secure><port>80</port>",
    };
    for (const char* children : orders) {
        CSettings settings;
        settings.FromXml(
            (std::string("<Settings xmlns='urn:kvxml:test:settings'>") + children + "</Settings>").c_str());
        EXPECT_EQ(Compact(settings),
                  "<AA:Settings xmlns:AA=\"urn:kvxml:test:settings\" version=\"1\"><AA:host>h</AA:host>"
                  "<AA:port>80</AA:port><AA:mode>active</AA:mode><AA:secure>true</AA:secure></AA:Settings>")
            << children;
        EXPECT_FALSE(settings.IsLogLevelSet());
        EXPECT_FALSE(settings.IsTimeoutSet());
    }
}

TEST(BindingSettings, RoundTripsOptionalAndNilMembers) {
    CSettings settings;
    settings.SetHost("example.org");
    settings.SetPort(8443);
    settings.SetMode(SettingsMode::Passive);
    settings.SetLogLevel(SettingsLogLevel::Debug);
    settings.SetTimeoutNil();
    settings.SetVersion(7);
    const std::string text = settings.ToXml();
    EXPECT_EQ(text,
              "<?xml version=\"1.0\"?>\n"
              "<AA:Settings xmlns:AA=\"urn:kvxml:test:settings\" version=\"7\">\n"
              "\t<AA:host>example.org</AA:host>\n"
              "\t<AA:port>8443</AA:port>\n"
              "\t<AA:mode>passive</AA:mode>\n"
              "\t<AA:logLevel>debug</AA:logLevel>\n"
              "\t<AA:timeout xmlns:AB=\"http://www.w3.org/2001/XMLSchema-instance\" AB:nil=\"true\"/>\n"
              "</AA:Settings>\n");
    CSettings copy;
    copy.FromXml(text.c_str());
    EXPECT_EQ(copy.ToXml(), text);
    EXPECT_TRUE(copy.IsTimeoutNil());
    EXPECT_EQ(copy.GetVersion(), 7);
    EXPECT_FALSE(copy.IsSecureSet());

    copy.SetTimeout(CDateTimeSpan(0, 0, 0, 0, 1, 30));
    CSettings again;
    again.FromXml(copy.ToXml().c_str());
    EXPECT_TRUE(again.GetTimeout() == CDateTimeSpan(0, 0, 0, 0, 1, 30));
    EXPECT_NE(Compact(again).find("<AA:timeout>PT1M30S</AA:timeout>"), std::string::npos);
}

TEST(BindingMeasurement, WritesSimpleContentAttributesAndNil) {
    CMeasurement weight;
    weight.SetValue(CDecimal("12.50"));
    weight.SetUnit(MeasurementUnit::Lb);
    weight.SetSource("scale & \"co\"");
    EXPECT_EQ(
        weight.ToXml(),
        "<?xml version=\"1.0\"?>\n<AA:Measurement xmlns:AA=\"urn:kvxml:test:measure\" unit=\"lb\" precision=\"2\" "
        "source=\"scale &amp; &quot;co&quot;\">12.5</AA:Measurement>\n");
    weight.SetNil(true);
    EXPECT_EQ(Compact(weight),
              "<AA:Measurement xmlns:AA=\"urn:kvxml:test:measure\" unit=\"lb\" precision=\"2\" source=\"scale &amp; "
              "&quot;co&quot;\" xmlns:AB=\"http://www.w3.org/2001/XMLSchema-instance\" AB:nil=\"true\"/>");
}

TEST(BindingMeasurement, RoundTripsValueAndNil) {
    CMeasurement original;
    original.SetValue(CDecimal("-0.125"));
    original.SetUnit(MeasurementUnit::G);
    original.SetPrecision(3);
    original.SetTaken(CDateTime("2024-06-01T08:15:00+02:00"));
    CMeasurement copy;
    copy.FromXml(original.ToXml().c_str());
    EXPECT_FALSE(copy.IsNil());
    EXPECT_TRUE(copy.GetValue() == CDecimal("-0.125"));
    EXPECT_EQ(copy.GetUnit(), MeasurementUnit::G);
    EXPECT_EQ(copy.GetPrecision(), 3);
    EXPECT_TRUE(copy.GetTaken() == CDateTime("2024-06-01T08:15:00+02:00"));
    EXPECT_FALSE(copy.IsSourceSet());

    original.SetNil(true);
    copy.FromXml(original.ToXml().c_str());
    EXPECT_TRUE(copy.IsNil());
    EXPECT_FALSE(copy.IsValueSet());  // content of a nil element is not read
    EXPECT_EQ(copy.GetUnit(), MeasurementUnit::G);

    copy.FromXml(
        "<Measurement xmlns='urn:kvxml:test:measure' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' "
        "unit='kg' xsi:nil='True'>5</Measurement>");
    EXPECT_TRUE(copy.IsNil());
    EXPECT_FALSE(copy.IsValueSet());
    copy.FromXml("<Measurement xmlns='urn:kvxml:test:measure' unit='kg'>\n  5.50\n</Measurement>");
    EXPECT_FALSE(copy.IsNil());
    EXPECT_TRUE(copy.GetValue() == CDecimal("5.5"));
}

}  // namespace
