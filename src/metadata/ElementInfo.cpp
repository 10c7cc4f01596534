// ElementInfo.cpp - the element descriptor base: matching, property access, the shared writing bodies; the group bases and the class descriptor.
#include "kvxml/metadata/ElementInfo.h"

#include <cstring>

#include "kvxml/core/SerializationContext.h"
#include "kvxml/core/XmlCollectionBase.h"
#include "kvxml/core/XmlGeneratedClass.h"
#include "kvxml/core/XmlObjectHelper.h"
#include "kvxml/dom/XmlElement.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/metadata/ParentElementInfo.h"
#include "kvxml/output/XmlWriter.h"
#include "kvxml/values/Variant.h"
#include "metadata/detail/MetadataSupport.h"

namespace KvXmlLib10Data {

using KvXmlLib10::CPrimitiveRestrictions;
using KvXmlLib10::CWhitespaceUtils;
using KvXmlLib10::CXmlAttribute;
using KvXmlLib10::CXmlElement;
using KvXmlLib10::CXmlGeneratedClass;
using KvXmlLib10::CXmlObjectBase;
using KvXmlLib10::CXmlSerializationContext;
using KvXmlLib10::CXmlWriter;
using KvXmlLib10::ItemType;
using KvXmlLib10::KvVariant;

using KvXmlLib10::CKvException;

namespace {

std::string Copy(const char* text) { return text ? std::string(text) : std::string(); }

}  // namespace

CElementInfo::CElementInfo(const char* elementName, const char* namespaceUri, int32_t propertyId)
    : CElementInfo(elementName, namespaceUri, propertyId, false) {}

CElementInfo::CElementInfo(const char* elementName, const char* namespaceUri, int32_t propertyId, bool nillable)
    : m_elementName(Copy(elementName)),
      m_namespaceUri(Copy(namespaceUri)),
      m_propertyId(propertyId),
      m_itemType(KvXmlLib10::Invalid),
      m_whitespaceRule(CWhitespaceUtils::WhitespaceRule::None),
      m_nillable(nillable),
      m_hasPrimitiveInfo(false) {}

CElementInfo::CElementInfo(const char* elementName, const char* namespaceUri, int32_t propertyId, bool nillable,
                           ItemType itemType, const char* numberFormat,
                           CWhitespaceUtils::WhitespaceRule whitespaceRule, const CPrimitiveRestrictions& restrictions)
    : m_elementName(Copy(elementName)),
      m_namespaceUri(Copy(namespaceUri)),
      m_propertyId(propertyId),
      m_restrictions(restrictions),
      m_itemType(itemType),
      m_numberFormat(Copy(numberFormat)),
      m_whitespaceRule(whitespaceRule),
      m_nillable(nillable),
      m_hasPrimitiveInfo(true) {}

CElementInfo::~CElementInfo() = default;

void CElementInfo::PseudoChildAttributeToXml(const CXmlSerializationContext&, const CXmlGeneratedClass*,
                                             CXmlWriter*) const {}

void CElementInfo::ReadProperty(const CXmlGeneratedClass* object, KvVariant& value) const {
    object->ReadProperty(m_propertyId, value);
}

void CElementInfo::AccessProperty(CXmlGeneratedClass* object, bool read, KvVariant& value) const {
    object->AccessProperty(m_propertyId, read, value);
}

CXmlElement* CElementInfo::FromXml_Int(CXmlObjectBase* child, CXmlElement* firstChild, CXmlElement* parent,
                                       const CXmlSerializationContext& context, bool flag) const {
    return child->FromXml_Int(parent, firstChild, context, flag);
}

void CElementInfo::AttributesToXml_Int(const CXmlObjectBase* child, CXmlWriter* writer,
                                       const CXmlSerializationContext& context) const {
    CXmlObjectBase::AttributesToXml_Int(child, writer, context);
}

bool CElementInfo::ElementToXmlPrim(const CXmlSerializationContext&, const CXmlGeneratedClass* object,
                                    CXmlWriter* writer) const {
    KvVariant value;
    ReadProperty(object, value);
    if (!value.IsValid()) return false;
    if (value.IsNil()) {
        writer->WriteStartElement(m_elementName, m_namespaceUri);
        writer->WriteAttributeNil();
        writer->WriteEndElement();
        return true;
    }
    CheckRestriction(value);
    std::string text = value.ToString(m_numberFormat.c_str());
    writer->WriteStartElement(m_elementName, m_namespaceUri);
    writer->WriteString(text, KvXmlLib10::detail::VariantItemType(value, m_itemType));
    writer->WriteEndElement();
    return true;
}

bool CElementInfo::ElementToXmlEnum(const CXmlSerializationContext&, const CXmlGeneratedClass* object,
                                    CXmlWriter* writer, EnumToStringFunc enumToString) const {
    KvVariant value;
    ReadProperty(object, value);
    if (!value.IsValid()) return false;
    if (value.IsNil()) {
        writer->WriteStartElement(m_elementName, m_namespaceUri);
        writer->WriteAttributeNil();
        writer->WriteEndElement();
        return true;
    }
    // The text comes first so that a failing generated function leaves no
    // partial element behind.
    const char* text = enumToString(value.GetI4());
    std::string textCopy = text ? text : "";
    writer->WriteStartElement(m_elementName, m_namespaceUri);
    writer->WriteString(textCopy, KvXmlLib10::string);
    writer->WriteEndElement();
    return true;
}

bool CElementInfo::ElementToXmlCls(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                   CXmlWriter* writer, bool flag) const {
    KvVariant value;
    ReadProperty(object, value);
    KvXmlLib10::detail::HeldObject child(value.GetXmlObject());
    if (!child.get()) return false;
    CXmlObjectBase::ToXml_Int(child.get(), writer, false, m_namespaceUri.c_str(), context, flag);
    return true;
}

bool CElementInfo::ElementToXmlCol(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                   CXmlWriter* writer) const {
    KvVariant value;
    ReadProperty(object, value);
    KvXmlLib10::detail::HeldObject collection(value.GetXmlCollection());
    auto* items = static_cast<KvXmlLib10::CXmlCollectionBase*>(collection.get());
    if (!items || items->GetCount() < 1) return false;
    CXmlObjectBase::ToXml_Int(items, writer, false, m_namespaceUri.c_str(), context, false);
    return true;
}

void CElementInfo::CheckRestriction(const KvVariant& value) const {
    if (!m_hasPrimitiveInfo) throw CKvException("Cannot CheckRestriction for type: " + value.GetType());
    KvXmlLib10::CXmlObjectHelper::CheckRestriction(m_elementName.c_str(), value, m_itemType, m_restrictions);
}

bool CElementInfo::IsThisElement(const CXmlSerializationContext& context, const CXmlElement* element) const {
    if (!element) return false;
    if (element->GetLocalName() != m_elementName) return false;
    if (context.GetIgnoreNamespaces()) return true;
    return element->GetNamespaceURI() == m_namespaceUri;
}

std::string CElementInfo::GetAnyDefaultNamespace(const char* restriction, const char* first, const char* second) {
    std::string rule = Copy(restriction);
    // A list that starts with a keyword behaves as that keyword alone; one
    // pass strips the tail, so this loop runs at most twice.
    for (;;) {
        if (rule == "##any") return Copy(first);
        if (rule == "##other") return first == nullptr || *first == '\0' ? "DefaultNamespace" : "";
        if (rule == "##local") return "";
        if (rule == "##targetNamespace") return Copy(second);
        const std::string::size_type blank = rule.find(' ');
        if (blank == std::string::npos || rule.size() <= 2 || rule.compare(0, 2, "##") != 0) return "";
        rule.erase(blank);
    }
}

// ---- group bases ----

CElementInfoAll::~CElementInfoAll() = default;

CElementInfoChoice::~CElementInfoChoice() = default;

bool CElementInfoChoice::Validate(const CXmlSerializationContext&, const CXmlGeneratedClass*, bool, bool) const {
    throw CKvException("Not implemented, should never be called");
}

CElementInfoSeq::~CElementInfoSeq() = default;

bool CElementInfoSeq::Validate(const CXmlSerializationContext&, const CXmlGeneratedClass*, bool, bool) const {
    throw CKvException("Not implemented, should never be called");
}

CElementInfoAllNonCol::~CElementInfoAllNonCol() = default;
CElementInfoSeqNonCol::~CElementInfoSeqNonCol() = default;

// ---- class descriptor ----

CParentElementInfo::CParentElementInfo(XmlElementGroupType groupType, XmlElementType elementType,
                                       const char* elementName, const char* namespaceUri, bool nillable,
                                       bool writeTypeAttribute, int32_t valuePropertyId, ItemType valueItemType,
                                       const char* valueFormat, bool rawText)
    : m_groupType(groupType),
      m_elementType(elementType),
      m_elementName(Copy(elementName)),
      m_namespaceUri(Copy(namespaceUri)),
      m_nillable(nillable),
      m_writeTypeAttribute(writeTypeAttribute),
      m_valuePropertyId(valuePropertyId),
      m_valueItemType(valueItemType),
      m_valueFormat(Copy(valueFormat)),
      m_rawText(rawText) {}

CParentElementInfo::~CParentElementInfo() = default;

}  // namespace KvXmlLib10Data
