// AnyAttribute.cpp - the wildcard attribute and its collection.
#include "kvxml/metadata/AnyAttribute.h"

#include "kvxml/core/SmartPtr.h"
#include "kvxml/core/XmlObjectHelper.h"
#include "kvxml/dom/XmlElement.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/output/XmlWriter.h"
#include "metadata/detail/Wildcard.h"

namespace KvXmlLib10 {

namespace {
const char* OrEmpty(const char* text) { return text ? text : ""; }
}  // namespace

CAttribute::CAttribute(const char* name, const char* value, const char* namespaceUri)
    : CInstanceMonitor("CAttribute"), m_namespace(OrEmpty(namespaceUri)), m_value(OrEmpty(value)) {
    CXmlObjectBase::SetElementName(name);
}

CAttribute::~CAttribute() = default;

CXmlObjectBase* CAttribute::GetBase() { return this; }
std::string CAttribute::GetTargetNamespace() const { return m_namespace; }
std::string CAttribute::GetNamespace() const { return m_namespace; }

void CAttribute::SetValue(const char* value) { m_value = OrEmpty(value); }

void CAttribute::SetName(const char* name) {
    CXmlObjectBase::SetElementName(name);
    FireOnChangeName();
}

void CAttribute::SetNamespace(const char* namespaceUri) {
    m_namespace = OrEmpty(namespaceUri);
    FireOnChangeNamespace();
}

CAttribute* CAttribute::Clone() const {
    return new CAttribute(GetElementName().c_str(), m_value.c_str(), m_namespace.c_str());
}

void CAttribute::FireOnChangeName() {}
void CAttribute::FireOnChangeNamespace() {}

void CAttribute::ToXml_Int(CXmlWriter* writer, bool, const char*, const CXmlSerializationContext&, bool) const {
    writer->WriteAttributeString(GetElementName(), m_namespace, m_value, KvXmlLib10::string);
}

CXmlElement* CAttribute::FromXml_Int(CXmlElement* element, CXmlElement* firstChild, const CXmlSerializationContext&,
                                     bool) {
    if (!element) return firstChild;
    const std::string name = GetElementName();
    for (const CXmlAttribute* attribute : element->GetAttributes())
        if (attribute->GetLocalName() == name && attribute->GetNamespaceURI() == m_namespace) {
            m_value = attribute->GetValue();
            break;
        }
    return firstChild;
}

// ---- collection ----

CAttributeCol::CAttributeCol(const char* name, const char* restriction, const char* targetNamespace)
    : CXmlCollection(name, detail::RequireValue(targetNamespace, "Target Namespace must have a value").c_str(), 0, -1),
      CInstanceMonitor("CAttributeCol"),
      m_restriction(detail::RequireRestriction(restriction)) {}

CAttributeCol::~CAttributeCol() = default;

CAttribute* CAttributeCol::Add(CAttribute* attribute) {
    AppendItem(attribute);
    return attribute;
}

CAttribute* CAttributeCol::Add(const char* name) { return Add(name, "", ""); }

CAttribute* CAttributeCol::Add(const char* name, const char* value) { return Add(name, value, ""); }

CAttribute* CAttributeCol::Add(const char* name, const char* value, const char* namespaceUri) {
    // Held while adding: a listener that vetoes the addition must not leak it.
    CSmartPtr<CAttribute> attribute(new CAttribute(name, value, namespaceUri));
    return Add(attribute.get());
}

CAttribute* CAttributeCol::Item(int32_t index) const { return static_cast<CAttribute*>(GetItemAt(index)); }

CAttributeCol::iterator CAttributeCol::begin() const { return iterator(this, 0); }
CAttributeCol::iterator CAttributeCol::end() const { return iterator(this, GetCount()); }

CAttributeCol* CAttributeCol::Clone() const {
    const std::string name = GetElementName();
    const std::string target = GetItemNamespace();
    CAttributeCol* copy = new CAttributeCol(name.c_str(), m_restriction.c_str(), target.c_str());
    try {
        for (CAttribute* attribute : *this)
            copy->Add(attribute->GetElementName().c_str(), attribute->GetValue().c_str(),
                      attribute->GetNamespace().c_str());
    } catch (...) {
        delete copy;  // still unreferenced
        throw;
    }
    return copy;
}

std::string CAttributeCol::GetTargetNamespace() const { return GetItemNamespace(); }

void CAttributeCol::ToXml_Int(CXmlWriter* writer, bool, const char* targetNamespace,
                              const CXmlSerializationContext& context, bool flag) const {
    for (CAttribute* attribute : *this)
        CXmlObjectBase::ToXml_Int(attribute, writer, false, targetNamespace, context, flag);
}

CXmlElement* CAttributeCol::FromXml_Int(CXmlElement* element, CXmlElement* firstChild, const CXmlSerializationContext&,
                                        bool) {
    if (!element) return firstChild;
    const std::string& target = GetItemNamespace();
    for (const CXmlAttribute* attribute : element->GetAttributes()) {
        if (!CXmlObjectHelper::IsNamespaceValid(attribute->GetNamespaceURI(), m_restriction, target))
            throw CKvInvalidNamespaceException(
                FormatString("Invalid Attribute [%s]. The attributes namespace is Inappropriate.",
                             attribute->GetLocalName().c_str()));
        Add(attribute->GetLocalName().c_str(), attribute->GetValue().c_str(), attribute->GetNamespaceURI().c_str());
    }
    return firstChild;
}

}  // namespace KvXmlLib10
