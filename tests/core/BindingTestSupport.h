// BindingTestSupport.h - helpers shared by the tests that drive the bindings kvxsd generated from tests/bindings
// through the public entry points.
#pragma once

#include "alltypes.h"
#include "support/Fixtures.h"
#include "ticket.h"

namespace kvbindtest {

using kvgen_alltypes::CAllTypes;

/// The ticket type under its global element's name.
struct CTicket : kvgen_ticket::CTicketType {
    CTicket() : CTicketType("Ticket") {}
};

constexpr const char* kXsi = "http://www.w3.org/2001/XMLSchema-instance";

/// The document without declaration or indentation.
inline std::string Compact(
    const KvXmlLib10::CXmlObjectBase& object,
    const KvXmlLib10::CXmlSerializationContext& context = KvXmlLib10::CXmlSerializationContext::m_defaultContext) {
    return object.ToXml(false, false, KvXmlLib10::EOL_LF, context);
}

/// Every member of CAllTypes set, most of them to an extreme of their range: the valid instance beside the schema.
inline std::string AllTypesDocument() { return KvXmlTest::ReadFile(KVXML_BINDINGS_DIR "/alltypes.xml"); }
inline void FillAllTypes(CAllTypes& value) { value.FromXml(AllTypesDocument().c_str()); }

/// The children FillAllTypes gives, as written.
constexpr const char* kAllTypesChildren =
    "<AA:hex>DEADBEEF</AA:hex><AA:b64>aGkh</AA:b64><AA:i1>-128</AA:i1><AA:i2>-32768</AA:i2>"
    "<AA:i4>-1000</AA:i4><AA:i8>-9223372036854775808</AA:i8><AA:ui1>255</AA:ui1><AA:ui2>65535</AA:ui2>"
    "<AA:ui4>4294967295</AA:ui4><AA:ui8>18446744073709551615</AA:ui8><AA:r4>0.1</AA:r4>"
    "<AA:r8>0.3333333333333333</AA:r8><AA:duration>P1Y2M3DT4H5M6S</AA:duration>"
    "<AA:yearMonth>2024-02</AA:yearMonth><AA:monthDay>--02-29</AA:monthDay><AA:year>2024</AA:year>"
    "<AA:month>--12</AA:month><AA:day>---31</AA:day><AA:date>2024-02-29</AA:date>"
    "<AA:dateTime>2024-06-01T12:30:45Z</AA:dateTime><AA:time>23:59:59</AA:time><AA:string>Hello</AA:string>"
    "<AA:boolean>true</AA:boolean><AA:decimal>12345678901234567890.125</AA:decimal>"
    "<AA:integer>-123456789012345678901234</AA:integer>";

/// A ticket with every element and the two foreign-namespace attributes set.
inline void FillTicket(CTicket& ticket) {
    ticket.SetId(42);
    ticket.SetTitle("Printer <on fire> & \"smoking\"");
    ticket.SetStatus(kvgen_ticket::TicketStatus::Pending);
    ticket.SetSeverityNil();
    ticket.SetNote("call Bob");
    ticket.SetDue(KvXmlLib10::CDateTime(2024, 6, 1));
    ticket.SetTag("x");
    ticket.SetLevel(kvgen_ticket::TicketTypeLevel::High);
}

/// A ticket document in the default namespace with the given attributes and children.
inline std::string TicketDocument(const std::string& attributes, const std::string& children) {
    return "<Ticket xmlns='urn:kvxml:test:ticket' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance'" + attributes +
           ">" + children + "</Ticket>";
}

}  // namespace kvbindtest
