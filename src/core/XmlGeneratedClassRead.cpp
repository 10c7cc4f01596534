// XmlGeneratedClassRead.cpp - the reading half of the generated-class engine: attributes, nil, the three group walkers, simple content.
//
// A group that does not match hands back the element it started from
// (a soft failure), so an enclosing choice or optional group can try
// something else; anything the schema forbids is an exception.
#include <memory>

#include "core/detail/NestingGuard.h"
#include "core/detail/NillableOf.h"

#include "kvxml/core/SerializationContext.h"
#include "kvxml/core/XmlGeneratedClass.h"
#include "kvxml/dom/XmlAttribute.h"
#include "kvxml/dom/XmlElement.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/metadata/AttributeInfo.h"
#include "kvxml/metadata/ElementInfo.h"
#include "kvxml/metadata/ParentElementInfo.h"
#include "kvxml/values/Variant.h"
#include "metadata/detail/MetadataSupport.h"

namespace KvXmlLib10 {

using KvXmlLib10Data::CAttributeInfo;
using KvXmlLib10Data::CElementInfo;
using KvXmlLib10Data::CParentElementInfo;
using KvXmlLib10Data::XmlElementType;

namespace {

// One "found" flag per descriptor, kept on the stack for ordinary classes.
class FoundFlags {
public:
    explicit FoundFlags(int32_t count) {
        if (count > kInline) {
            m_heap.reset(new bool[static_cast<size_t>(count)]());
            m_flags = m_heap.get();
        }
    }
    bool& operator[](int32_t index) { return m_flags[index]; }

private:
    static constexpr int32_t kInline = 32;
    bool m_inline[kInline] = {};
    std::unique_ptr<bool[]> m_heap;
    bool* m_flags = m_inline;
};

int32_t CountOf(CAttributeInfo** attributes) {
    int32_t count = 0;
    if (attributes)
        while (attributes[count]) ++count;
    return count;
}

[[noreturn]] void ThrowUnprocessed(const CXmlElement* element, const CXmlElement* leftover) {
    throw CKvValidationException(FormatString(
        "Failed read all the elements held within the element [%s]. The unexpected element [%s] remains un processed",
        element->GetLocalName().c_str(), leftover->GetLocalName().c_str()));
}

}  // namespace

CXmlElement* CXmlGeneratedClass::FromXml_Int(CXmlElement* element, CXmlElement* firstChild,
                                             const CXmlSerializationContext& context, bool flag) {
    try {
        detail::NestingGuard level(context);
        return ReadContent(element, firstChild, context, flag);
    } catch (const CKvException& error) {
        throw CKvValidationException(
            FormatString("Failed to process the element [%s]", element ? element->GetLocalName().c_str() : ""),
            error);
    }
}

CXmlElement* CXmlGeneratedClass::ReadContent(CXmlElement* element, CXmlElement* firstChild,
                                             const CXmlSerializationContext& context, bool flag) {
    ResetProperties();
    const CParentElementInfo* info = GetClassInfo();
    const XmlElementType elementType = info->GetElementType();
    // A substituted element keeps the name it was read under.
    if (elementType == KvXmlLib10Data::ElementType_Element) SetElementName(element->GetLocalName().c_str());

    ProcessAttributesFromXml(context, element, info->IsNillable());
    const INillable* nillable = detail::NillableOf(*this);
    if (nillable && nillable->IsNil()) return firstChild;

    CXmlElement* result = nullptr;
    switch (info->GetGroupType()) {
        case KvXmlLib10Data::GroupType_Sequence:
            result = ProcessElementSeqFromXml(context, element, firstChild, elementType);
            break;
        case KvXmlLib10Data::GroupType_All:
            result = ProcessElementAllFromXml(context, element, firstChild, elementType);
            break;
        case KvXmlLib10Data::GroupType_Choice:
            result = ProcessElementChoiceFromXml(context, element, firstChild, elementType, flag);
            break;
        default:
            throw CKvException("Unknow Group Type");
    }

    if (info->HasSimpleContent()) {
        KvVariant value;
        if (info->IsRawText())
            value.SetString(element->GetText());
        else
            value.FromString(element->GetText(), info->GetValueItemType(), CWhitespaceUtils::WhitespaceRule::None);
        AccessProperty(info->GetValuePropertyId(), false, value);
    }
    return result;
}

void CXmlGeneratedClass::ProcessAttributesFromXml(const CXmlSerializationContext& context, CXmlElement* element,
                                                  bool nillable) {
    CAttributeInfo** attributes = GetClassAttributeInfo();
    const int32_t count = CountOf(attributes);
    FoundFlags found(count);
    // A pseudo element reads from its parent's element: the attributes it
    // does not take, and the nil marker, are the parent's.
    const bool pseudo = GetClassInfo()->GetElementType() != KvXmlLib10Data::ElementType_Element;

    for (CXmlAttribute* attribute : element->GetAttributes()) {
        // xsi:nil is one of the schema-instance attributes skipped below, so
        // it is looked at first.
        if (attribute->IsNilAttribute()) {
            if (pseudo) continue;
            INillable* target = dynamic_cast<INillable*>(this);
            if (!target || !nillable)
                throw CKvValidationException(FormatString(
                    "Invalid use of 'nil' attibute in non-nillable element [%s]", element->GetLocalName().c_str()));
            const std::string& value = attribute->GetValue();
            if (detail::EqualsNoCase(value, "true") || value == "1")
                target->SetNil(true);
            else if (detail::EqualsNoCase(value, "false") || value == "0")
                target->SetNil(false);
            else
                throw CKvValidationException(
                    FormatString("Unexpected Value [%s] for 'nil' Attribute found.", value.c_str()));
            continue;
        }
        if (attribute->IsNamespaceAttribute()) continue;

        bool taken = false;
        for (int32_t i = 0; i < count && !taken; ++i) {
            if (attributes[i]->AttributeFromXml(context, this, attribute)) {
                found[i] = true;
                taken = true;
            }
        }
        if (!taken && !pseudo && !context.GetIgnoreUnknownAttributes())
            throw CKvValidationException(
                FormatString("Unexpected Attribute [%s] found.", attribute->GetLocalName().c_str()));
    }

    for (int32_t i = 0; i < count; ++i) attributes[i]->Validate(context, found[i]);
}

CXmlElement* CXmlGeneratedClass::ProcessElementSeqFromXml(const CXmlSerializationContext& context,
                                                          CXmlElement* element, CXmlElement* current,
                                                          XmlElementType elementType) {
    CElementInfo** elements = GetClassElementInfo();
    const int32_t count = GetClassElementInfoCount();
    const std::string typeNamespace = GetNamespace();
    const bool ignoreUnknown = context.GetIgnoreUnknownElements();

    CXmlElement* const start = current;
    CXmlElement* lastConsumed = current;
    int32_t restartIndex = 0;
    int32_t i = 0;
    for (;;) {
        while (i < count) {
            if (elements[i]->ElementFromXml(context, this, element, &current, typeNamespace.c_str(), elementType)) {
                if (current != lastConsumed) {
                    lastConsumed = current;
                    restartIndex = i;
                }
                ++i;
            } else if (ignoreUnknown && current) {
                current = current->GetNextSiblingElement();  // retry the same member past it
            } else {
                return start;
            }
        }
        if (elementType != KvXmlLib10Data::ElementType_Element) return current;  // the parent reads on
        if (!current) return nullptr;
        if (!ignoreUnknown) ThrowUnprocessed(element, current);
        // Each restart skips one element, so this ends.
        current = current->GetNextSiblingElement();
        if (!current) return nullptr;
        i = restartIndex;
    }
}

CXmlElement* CXmlGeneratedClass::ProcessElementAllFromXml(const CXmlSerializationContext& context,
                                                          CXmlElement* element, CXmlElement* current,
                                                          XmlElementType elementType) {
    CElementInfo** elements = GetClassElementInfo();
    const int32_t count = GetClassElementInfoCount();
    const std::string typeNamespace = GetNamespace();
    FoundFlags found(count);

    CXmlElement* const start = current;
    bool moved = true;
    while (current && moved) {
        CXmlElement* const passStart = current;
        for (int32_t i = 0; i < count; ++i)
            if (!found[i])
                found[i] = elements[i]->ElementFromXml(context, this, element, &current, typeNamespace.c_str(),
                                                       elementType);
        moved = current != passStart;
    }

    const bool checkMandatory = elementType == KvXmlLib10Data::ElementType_Element;
    for (int32_t i = 0; i < count; ++i)
        if (!elements[i]->Validate(context, this, found[i], checkMandatory)) return start;

    if (checkMandatory && current && !context.GetIgnoreUnknownElements()) ThrowUnprocessed(element, current);
    return current;
}

CXmlElement* CXmlGeneratedClass::ProcessElementChoiceFromXml(const CXmlSerializationContext& context,
                                                             CXmlElement* element, CXmlElement* current,
                                                             XmlElementType elementType, bool flag) {
    CElementInfo** elements = GetClassElementInfo();
    const int32_t count = GetClassElementInfoCount();
    const std::string typeNamespace = GetNamespace();
    const bool ignoreUnknown = context.GetIgnoreUnknownElements();
    const bool ownElement = elementType == KvXmlLib10Data::ElementType_Element;

    CXmlElement* const start = current;
    bool found = false;
    for (;;) {
        for (int32_t i = 0; i < count && !found; ++i)
            found = elements[i]->ElementFromXml(context, this, element, &current, typeNamespace.c_str(), elementType);
        if (found || !ignoreUnknown || !current || !ownElement) break;
        current = current->GetNextSiblingElement();
    }

    if (!found && !flag) {
        if (elementType == KvXmlLib10Data::ElementType_PseudoElement) return ignoreUnknown ? start : current;
        if (!ownElement) return current;
        if (!DoesElementContainOptionalElements() && !context.GetIgnoreMissingChoice())
            throw CKvValidationException(FormatString(
                "No child elements within the element [%s] were populated. The element represents a choice, so one "
                "and only one element should be populated. The element contained no sutable child elements",
                element->GetLocalName().c_str()));
    }

    if (!ownElement) return current;
    if (current && !ignoreUnknown) ThrowUnprocessed(element, current);
    return current;
}

}  // namespace KvXmlLib10
