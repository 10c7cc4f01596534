// MemberRead.cpp - the miss rules, the codecs of the primitive, enumeration and class kinds, and the pseudo-element
// read.
#include "metadata/detail/MemberRead.h"

#include "kvxml/core/SerializationContext.h"
#include "kvxml/core/XmlCollectionBase.h"
#include "kvxml/core/XmlGeneratedClass.h"
#include "kvxml/dom/XmlElement.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/metadata/ElementInfoClass.h"
#include "kvxml/values/Variant.h"
#include "metadata/detail/MetadataSupport.h"

namespace KvXmlLib10 {
namespace detail {

using KvXmlLib10Data::CElementInfo;
using KvXmlLib10Data::XmlElementType;

namespace {

[[noreturn]] void ThrowRequiredMissing(const CElementInfo& info) {
    throw CKvValidationException(FormatString("Failed to find a required element [%s]", info.GetElementName().c_str()));
}

[[noreturn]] void ThrowNoSubstitution(const CElementInfo& info) {
    throw CKvValidationException(
        FormatString("Failed to find a suitable substitution element for [%s]", info.GetElementName().c_str()));
}

void Store(const CElementInfo& info, CXmlGeneratedClass* object, CXmlObjectBase* child) {
    KvVariant value;
    value.SetXmlObject(child);
    info.AccessProperty(object, false, value);
}

}  // namespace

bool AnswerMiss(MissRule rule, const CElementInfo& info, const CXmlSerializationContext& context,
                XmlElementType elementType) {
    const bool ownElement = elementType == KvXmlLib10Data::ElementType_Element;
    switch (rule) {
        case MissRule::Accept:
            return true;
        case MissRule::Decline:
            return false;
        case MissRule::Search:
            if (!ownElement) return false;
            if (context.GetIgnoreMissingMandatoryElements()) return true;
            ThrowRequiredMissing(info);
        case MissRule::Substitute:
            if (!ownElement) return false;
            ThrowNoSubstitution(info);
    }
    return false;
}

Lookup LocateMember(MissRule rule, const CElementInfo& info, const CXmlSerializationContext& context,
                    CXmlElement** current, XmlElementType elementType) {
    if (info.IsThisElement(context, *current)) return Lookup::Found;
    if (rule == MissRule::Search && context.GetIgnoreUnknownElements()) {
        // Skip foreign elements until our own; the end is a miss like any other.
        const bool ownElement = elementType == KvXmlLib10Data::ElementType_Element;
        if (ownElement && context.GetIgnoreMissingMandatoryElements()) return Lookup::GoOn;
        while (*current) {
            *current = (*current)->GetNextSiblingElement();
            if (info.IsThisElement(context, *current)) return Lookup::Found;
        }
    }
    return AnswerMiss(rule, info, context, elementType) ? Lookup::GoOn : Lookup::NoMatch;
}

// ---- codecs ----

bool PrimCodec::Write(const CElementInfo& info, const CXmlSerializationContext& context,
                      const CXmlGeneratedClass* object, CXmlWriter* writer) const {
    return info.ElementToXmlPrim(context, object, writer);
}

void PrimCodec::Read(const CElementInfo& info, const CXmlSerializationContext&, CXmlGeneratedClass* object,
                     CXmlElement*, CXmlElement** current) const {
    CXmlElement* element = *current;
    KvVariant value;
    if (IsElementNil(info, *element))
        value.SetNil();
    else
        value.FromString(element->GetText(), info.GetItemType(), info.GetWhitespaceRule());
    info.AccessProperty(object, false, value);
    *current = element->GetNextSiblingElement();
}

bool EnumCodec::Write(const CElementInfo& info, const CXmlSerializationContext& context,
                      const CXmlGeneratedClass* object, CXmlWriter* writer) const {
    return info.ElementToXmlEnum(context, object, writer, toText);
}

void EnumCodec::Read(const CElementInfo& info, const CXmlSerializationContext&, CXmlGeneratedClass* object,
                     CXmlElement*, CXmlElement** current) const {
    CXmlElement* element = *current;
    KvVariant value;
    if (IsElementNil(info, *element))
        value.SetNil();
    else
        value.SetI4(fromText(element->GetText().c_str()));
    info.AccessProperty(object, false, value);
    *current = element->GetNextSiblingElement();
}

bool ClassCodec::Write(const CElementInfo& info, const CXmlSerializationContext& context,
                       const CXmlGeneratedClass* object, CXmlWriter* writer) const {
    return info.ElementToXmlCls(context, object, writer, false);
}

CSmartPtr<CXmlObjectBase> ClassCodec::Child(const CElementInfo& info, CXmlGeneratedClass* object, CXmlElement* element,
                                            bool& isNew) const {
    isNew = false;
    if (preCreated) {
        KvVariant value;
        info.AccessProperty(object, true, value);
        HeldObject held(value.GetXmlObject());
        if (held.get()) return CSmartPtr<CXmlObjectBase>(held.get());
    }
    // A parent that did not create its mandatory child gets one from the factory.
    isNew = true;
    if (abstractFactory) return abstractFactory(element);
    if (factory) return factory(classNumber, info.GetElementName().c_str());
    return nullptr;
}

// ---- class members ----

bool ReadPseudoChild(const CElementInfo& info, const CXmlSerializationContext& context, CXmlGeneratedClass* object,
                     CXmlElement* parent, CXmlElement** current, const CSmartPtr<CXmlObjectBase>& child, bool store) {
    if (!*current || !child) return false;
    CXmlElement* next = info.FromXml_Int(child.get(), *current, parent, context, false);
    if (next == *current) return false;  // consumed nothing: not stored, cursor unchanged
    if (store) Store(info, object, child.get());
    *current = next;
    return true;
}

bool ReadClassMember(MissRule rule, const ClassCodec& codec, const CElementInfo& info,
                     const CXmlSerializationContext& context, CXmlGeneratedClass* object, CXmlElement* parent,
                     CXmlElement** current, XmlElementType elementType) {
    if (codec.childType != KvXmlLib10Data::ElementType_Element) {
        CSmartPtr<CXmlObjectBase> child;
        bool isNew = false;
        if (*current) child = codec.Child(info, object, *current, isNew);
        if (ReadPseudoChild(info, context, object, parent, current, child, isNew)) return true;
        return AnswerMiss(rule, info, context, elementType);
    }

    const Lookup at = LocateMember(rule, info, context, current, elementType);
    if (at != Lookup::Found) return at == Lookup::GoOn;
    CXmlElement* element = *current;
    bool isNew = false;
    CSmartPtr<CXmlObjectBase> child = codec.Child(info, object, element, isNew);
    // No class fits the element: a miss like a foreign element.
    if (!child) return AnswerMiss(rule, info, context, elementType);
    // A mandatory child stays attached even when its read fails; an optional
    // one is stored only once it has read itself.
    const bool storeFirst = isNew && (codec.preCreated || rule == MissRule::Substitute);
    if (storeFirst) Store(info, object, child.get());
    info.FromXml_Int(child.get(), element->GetFirstElement(), element, context, false);
    if (isNew && !storeFirst) Store(info, object, child.get());
    *current = element->GetNextSiblingElement();
    return true;
}

bool ReadCollectionMember(MissRule rule, bool checkCount, const CElementInfo& info,
                          const CXmlSerializationContext& context, CXmlGeneratedClass* object, CXmlElement* parent,
                          CXmlElement** current, XmlElementType elementType) {
    KvVariant value;
    info.ReadProperty(object, value);
    HeldObject held(value.GetXmlCollection());
    auto* collection = static_cast<CXmlCollectionBase*>(held.get());
    if (!collection) return AnswerMiss(rule, info, context, elementType);
    CXmlElement* next = info.FromXml_Int(collection, *current, parent, context, false);
    const bool consumed = next != *current;
    *current = next;
    return AnswerCollectionRead(rule, checkCount, *collection, consumed, context, elementType);
}

bool AnswerCollectionRead(MissRule rule, bool checkCount, const CXmlCollectionBase& collection, bool consumed,
                          const CXmlSerializationContext& context, XmlElementType elementType) {
    if (!consumed && rule == MissRule::Decline) return false;
    if (!checkCount) return true;
    if (elementType == KvXmlLib10Data::ElementType_Element) {
        collection.ValidateCount(context);
        return true;
    }
    return collection.IsValidCount(context);
}

void WritePseudoChildAttributes(const CElementInfo& info, XmlElementType childType,
                                const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                CXmlWriter* writer) {
    if (childType != KvXmlLib10Data::ElementType_PseudoElement) return;
    KvVariant value;
    info.ReadProperty(object, value);
    HeldObject child(value.GetXmlObject());
    if (child.get()) info.AttributesToXml_Int(child.get(), writer, context);
}

// ---- all-group validation ----

void ThrowMandatoryMissing(const CElementInfo& info) {
    throw CKvValidationException(
        FormatString("Failed to find the mandatory element [%s]", info.GetElementName().c_str()));
}

bool ValidateMandatory(const CElementInfo& info, bool found, bool checkMandatory) {
    if (found || !checkMandatory) return true;
    ThrowMandatoryMissing(info);
}

}  // namespace detail
}  // namespace KvXmlLib10
