// Envelope.cpp - metadata and property access of the envelope binding, as a code generator emits them.
#include "Envelope.h"

#include "GeneratedSupport.h"
#include "kvxml/metadata/AttributeInfo.h"
#include "kvxml/metadata/ElementInfoPrimitive.h"
#include "kvxml/metadata/ElementInfoUntyped.h"
#include "kvxml/metadata/ParentElementInfo.h"

namespace kvbind {

using namespace KvXmlLib10;
using namespace KvXmlLib10Data;

namespace {

const char* const kEnvelope = "urn:kvxml:test:envelope";
const char* const kEnvelopeListed = "urn:kvxml:test:x urn:kvxml:test:y";

ClassTables g_envelopeTables;

const ClassTables& EnvelopeTables() {
    return g_envelopeTables.Get([](ClassTables& t) {
        t.elements = new CElementInfo* [7] {
            new CElementInfoSeqPrimMnd("id", kEnvelope, CEnvelope::Prop_Id, false, string, nullptr,
                                       CWhitespaceUtils::WhitespaceRule::Preserve, CPrimitiveRestrictions()),
                new CElementInfoSeqUntpdMnd("AnyElement", "", CEnvelope::Prop_Header, "##other", kEnvelope),
                new CElementInfoSeqUntpdOpt("note", kEnvelope, CEnvelope::Prop_Note, "##targetNamespace", kEnvelope),
                new CElementInfoSeqUntpdOpt("AnyElement", "", CEnvelope::Prop_Local, "##local", kEnvelope),
                new CElementInfoSeqUntpdOpt("AnyElement", "", CEnvelope::Prop_Listed, kEnvelopeListed, kEnvelope),
                new CElementInfoSeqUntpdCol("AnyElement", "", CEnvelope::Prop_Rest), nullptr
        };
        t.attributes = new CAttributeInfo* [2] {
            new CAttributeInfoAny("AnyAttribute", "", CEnvelope::Prop_Attributes, true, nullptr, "##other", kEnvelope),
                nullptr
        };
        return new CParentElementInfo(GroupType_Sequence, ElementType_Element, "Envelope", kEnvelope, false, false,
                                      -1, Invalid, nullptr, false);
    });
}

// Element-valued properties travel as counted objects in the variant.
void AccessElement(CSmartPtr<CElement>& member, bool read, KvVariant& v) {
    if (!read)
        member = AdoptObject<CElement>(v);
    else if (member)
        v.SetXmlObject(member.get());
}

}  // namespace

std::string CEnvelope::GetNamespace() const { return kEnvelope; }
std::string CEnvelope::GetTargetNamespace() const { return kEnvelope; }
KVBIND_CLASS_TABLES(CEnvelope, EnvelopeTables)

CEnvelope::CEnvelope()
    : m_rest(new CElementCol("AnyElement", "##any", kEnvelope, 0, -1)),
      m_attributes(new CAttributeCol("AnyAttribute", "##other", kEnvelope)) {
    SetElementName("envelope");
    ResetProperties();
}

void CEnvelope::ResetProperties() {
    id.clear();
    m_header = new CElement("AnyElement", "", "##other", kEnvelope);
    m_note.reset();
    m_local.reset();
    m_listed.reset();
    m_rest->Clear();
    m_attributes->Clear();
}

void CEnvelope::AccessProperty(int32_t propertyId, bool read, KvVariant& v) {
    switch (propertyId) {
        case Prop_Id: read ? v.SetString(id) : void(id = v.GetString()); break;
        case Prop_Header: AccessElement(m_header, read, v); break;
        case Prop_Note: AccessElement(m_note, read, v); break;
        case Prop_Local: AccessElement(m_local, read, v); break;
        case Prop_Listed: AccessElement(m_listed, read, v); break;
        case Prop_Rest:
            if (read) v.SetXmlCollection(m_rest.get());
            break;
        case Prop_Attributes:
            if (read) v.SetXmlCollection(m_attributes.get());
            break;
        default: UnknownProperty(propertyId);
    }
}

}  // namespace kvbind
