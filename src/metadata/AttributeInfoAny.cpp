// AttributeInfoAny.cpp - the any-attribute descriptor: open attributes gathered into and written from a CAttributeCol.
#include "kvxml/core/XmlGeneratedClass.h"
#include "kvxml/dom/XmlAttribute.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/metadata/AnyAttribute.h"
#include "kvxml/metadata/AttributeInfo.h"
#include "kvxml/values/Variant.h"
#include "metadata/detail/MetadataSupport.h"

namespace KvXmlLib10Data {

using KvXmlLib10::CAttributeCol;
using KvXmlLib10::CXmlAttribute;
using KvXmlLib10::CXmlGeneratedClass;
using KvXmlLib10::CXmlSerializationContext;
using KvXmlLib10::CXmlWriter;
using KvXmlLib10::KvVariant;
using KvXmlLib10::detail::HeldObject;

CAttributeInfoAny::CAttributeInfoAny(const char* attributeName, const char* namespaceUri, int32_t propertyId,
                                     bool optional, const char* defaultValue, const char* restriction,
                                     const char* targetNamespace)
    : CAttributeInfo(attributeName, namespaceUri, propertyId, optional, defaultValue),
      m_restriction(restriction ? restriction : ""),
      m_targetNamespace(targetNamespace ? targetNamespace : "") {}

CAttributeInfoAny::~CAttributeInfoAny() = default;

void CAttributeInfoAny::AttributeToXml(const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                       CXmlWriter* writer) const {
    KvVariant value;
    ReadProperty(object, value);
    HeldObject collection(value.GetXmlObject());
    if (!collection.get()) return;
    const std::string targetNamespace = CAttributeInfo::GetTargetNamespace(object);
    ToXml_Int(collection.get(), writer, false, targetNamespace.c_str(), context);
}

bool CAttributeInfoAny::AttributeFromXml(const CXmlSerializationContext&, CXmlGeneratedClass* object,
                                         CXmlAttribute* attribute) {
    if (!attribute ||
        !IsNamespaceValid(attribute->GetNamespaceURI().c_str(), m_restriction.c_str(), m_targetNamespace.c_str()))
        return false;
    KvVariant value;
    AccessProperty(object, true, value);
    HeldObject held(value.GetXmlObject());
    auto* collection = dynamic_cast<CAttributeCol*>(held.get());
    if (!collection)
        throw KvXmlLib10::CKvException(
            "Serialization Data Error : The collection should be a CAttributeCol, it was not!");
    collection->Add(attribute->GetLocalName().c_str(), attribute->GetValue().c_str(),
                    attribute->GetNamespaceURI().c_str());
    return true;
}

bool CAttributeInfoAny::Validate(const CXmlSerializationContext&, bool) const { return true; }

}  // namespace KvXmlLib10Data
