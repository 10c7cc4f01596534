// UntypedRead.cpp - reading and writing wildcard (xs:any) members through CElement and CElementCol.
#include "metadata/detail/UntypedRead.h"

#include "kvxml/core/XmlGeneratedClass.h"
#include "kvxml/core/XmlObjectHelper.h"
#include "kvxml/dom/XmlElement.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/metadata/AnyElement.h"
#include "kvxml/values/Variant.h"
#include "metadata/detail/MetadataSupport.h"

namespace KvXmlLib10 {
namespace detail {

using KvXmlLib10Data::CElementInfo;
using KvXmlLib10Data::XmlElementType;

namespace {

const char kAnyName[] = "AnyElement";

bool TakesAnyName(const CElementInfo& info) { return info.GetElementName() == kAnyName; }

}  // namespace

bool UntypedCodec::Write(const CElementInfo& info, const CXmlSerializationContext& context,
                         const CXmlGeneratedClass* object, CXmlWriter* writer) const {
    return info.ElementToXmlCls(context, object, writer, false);
}

bool UntypedCodec::Admits(const CElementInfo& info, const CXmlElement& element) const {
    if (!TakesAnyName(info) && element.GetLocalName() != info.GetElementName()) return false;
    return CXmlObjectHelper::IsNamespaceValid(element.GetNamespaceURI(), restriction, wildcardNamespace);
}

bool ReadUntypedMember(MissRule rule, const UntypedCodec& codec, const CElementInfo& info,
                       const CXmlSerializationContext& context, CXmlGeneratedClass* object, CXmlElement* parent,
                       CXmlElement** current, const char* engineNamespace, XmlElementType elementType) {
    if (!*current) return AnswerMiss(rule, info, context, elementType);
    if (codec.Admits(info, **current)) {
        CSmartPtr<CElement> element;
        if (codec.existingChild) {
            KvVariant value;
            info.AccessProperty(object, true, value);
            HeldObject held(value.GetXmlObject());
            element = dynamic_cast<CElement*>(held.get());
        }
        const bool store = !element;
        if (store) {
            const std::string namespaceUri = CElementInfo::GetAnyDefaultNamespace(
                codec.restriction.c_str(), engineNamespace, codec.wildcardNamespace.c_str());
            element = new CElement(info.GetElementName().c_str(), namespaceUri.c_str());
        }
        CXmlElement* next = info.FromXml_Int(element.get(), *current, parent, context, false);
        if (next != *current) {
            if (store) {
                KvVariant value;
                value.SetXmlObject(element.get());
                info.AccessProperty(object, false, value);
            }
            *current = next;
            return true;
        }
    }
    if (rule == MissRule::Search && elementType == KvXmlLib10Data::ElementType_Element)
        throw CKvValidationException(
            FormatString("Failed to find the required element from namespace [%s]", info.GetNamespaceURI().c_str()));
    return AnswerMiss(rule, info, context, elementType);
}

bool ReadUntypedCollection(MissRule rule, const CElementInfo& info, const CXmlSerializationContext& context,
                           CXmlGeneratedClass* object, CXmlElement* parent, CXmlElement** current,
                           XmlElementType elementType) {
    KvVariant value;
    info.ReadProperty(object, value);
    HeldObject held(value.GetXmlCollection());
    auto* collection = dynamic_cast<CElementCol*>(held.get());
    if (!collection) return AnswerMiss(rule, info, context, elementType);
    CXmlElement* next = *current;
    if (next) {
        const std::string namespaceUri = next->GetNamespaceURI();
        next = collection->FromXmlLockElementName_Int(parent, next, context, info.GetElementName().c_str(),
                                                      namespaceUri.c_str());
    }
    const bool consumed = next != *current;
    *current = next;
    return AnswerCollectionRead(rule, true, *collection, consumed, context, elementType);
}

}  // namespace detail
}  // namespace KvXmlLib10
