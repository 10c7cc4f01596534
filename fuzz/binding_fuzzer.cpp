// binding_fuzzer.cpp - arbitrary bytes read into the bindings kvxsd generated from tests/bindings under two option
// sets, then rewritten; and into the wildcard element wrapper on its own.
//
// Every binding gets every input (the document element's name is adopted,
// not checked). Reading, writing and reading the written bytes again must
// each either succeed or throw CKvException; the sanitizers judge the rest.
// Round trips are not compared: some values legitimately print as text that
// does not read back (a zero duration prints "P"), and floats print with a
// fixed number of digits.
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "alltypes.h"
#include "envelope.h"
#include "groups.h"
#include "kvxml/core/SerializationContext.h"
#include "kvxml/dom/XmlDocument.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/values/BinaryData.h"
#include "measurement.h"
#include "po.h"
#include "polymorphic.h"
#include "recursive.h"
#include "settings.h"
#include "shape.h"
#include "ticket.h"

using namespace KvXmlLib10;

namespace {

// The tolerant set turns on every leniency; the two that exclude each other
// alternate with the input's length.
CXmlSerializationContext Tolerant(bool ignoreMissing) {
    CXmlSerializationContext context;
    context.SetIgnoreUnknownAttributes(true);
    context.SetIgnoreNamespaces(true);
    context.SetIgnoreMissingChoice(true);
    context.SetNoOptionalAttributeDefaultOutput(true);
    context.SetWriteTypeAttribute(false);
    if (ignoreMissing)
        context.SetIgnoreMissingMandatoryElements(true);
    else
        context.SetIgnoreUnknownElements(true);
    return context;
}

template <typename Binding>
void ReadWriteRead(std::vector<unsigned char>& bytes, const CXmlSerializationContext& context) {
    Binding first;
    try {
        first.FromXmlStream(bytes.data(), static_cast<uint32_t>(bytes.size()), context);
    } catch (const CKvException&) {
        return;
    }
    CBinaryData written;
    try {
        written = first.ToXmlStream(true, false, Encoding_UTF8, EOL_LF, context);
    } catch (const CKvException&) {
        return;  // reading checks no facets, so a value read may not be writable
    }
    Binding second;
    try {
        second.FromXmlStream(written, context);
        (void)second.ToXml(false, true, EOL_CRLF, context);
    } catch (const CKvException&) {
    }
}

// The wildcard wrapper on its own: the whole document copied, cloned and
// written, and read from text.
void WildcardElement(const std::vector<unsigned char>& bytes, const CXmlSerializationContext& context) {
    const std::string text(bytes.begin(), bytes.end());
    try {
        CXmlDocument document(context);
        document.LoadXml(text.c_str());
        CElement copy("AnyElement");
        copy.CopyXmlElement(document.GetDocumentElement());
        CSmartPtr<CElement> clone(copy.Clone());
        (void)clone->ToXml(false, true, EOL_LF, context);
        CElement read("AnyElement");
        read.FromXml(text.c_str(), context);
        (void)read.ToXml(false, false, EOL_LF, context);
    } catch (const CKvException&) {
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size > (1u << 20)) return 0;
    static const CXmlSerializationContext strict;
    static const CXmlSerializationContext tolerantMissing = Tolerant(true);
    static const CXmlSerializationContext tolerantUnknown = Tolerant(false);
    const CXmlSerializationContext* sets[] = {&strict, size % 2 ? &tolerantMissing : &tolerantUnknown};

    // The stream entry point takes a writable buffer.
    std::vector<unsigned char> bytes(data, data + size);
    for (const CXmlSerializationContext* context : sets) {
        ReadWriteRead<kvgen_ticket::CTicketType>(bytes, *context);
        ReadWriteRead<kvgen_alltypes::CAllTypes>(bytes, *context);
        ReadWriteRead<kvgen_settings::CSettings>(bytes, *context);
        ReadWriteRead<kvgen_shape::CShape>(bytes, *context);
        ReadWriteRead<kvgen_measurement::CMeasurement>(bytes, *context);
        ReadWriteRead<kvgen_po::CPurchaseOrderBatch>(bytes, *context);
        ReadWriteRead<kvgen_polymorphic::CDrawing>(bytes, *context);
        ReadWriteRead<kvgen_recursive::CFolder>(bytes, *context);
        ReadWriteRead<kvgen_groups::CTicket>(bytes, *context);
        ReadWriteRead<kvgen_envelope::CEnvelope>(bytes, *context);
    }
    // Without namespace processing "xmlns" arrives as an attribute and gives
    // a wildcard element its own default namespace.
    static const CXmlSerializationContext noNamespaces = [] {
        CXmlSerializationContext context;
        context.SetSchemaType(SchemaType_NoNamespaces);
        return context;
    }();
    ReadWriteRead<kvgen_envelope::CEnvelope>(bytes, noNamespaces);
    WildcardElement(bytes, size % 2 ? noNamespaces : strict);
    return 0;
}
