// MetadataSupport.cpp - the read cursor protocol and nil tests shared by the simple-value descriptors.
#include "metadata/detail/MetadataSupport.h"

#include <cstring>

#include "kvxml/core/SerializationContext.h"
#include "kvxml/core/XmlObjectBase.h"
#include "kvxml/dom/XmlElement.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/values/Variant.h"

namespace KvXmlLib10 {
namespace detail {

namespace {

const char kXsiNamespace[] = "http://www.w3.org/2001/XMLSchema-instance";

char LowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

bool EqualsNoCase(const std::string& text, const char* literal) {
    const size_t length = std::strlen(literal);
    if (text.size() != length) return false;
    for (size_t i = 0; i < length; ++i)
        if (LowerAscii(text[i]) != LowerAscii(literal[i])) return false;
    return true;
}

ItemType VariantItemType(const KvVariant& value, ItemType fallback) {
    // Objects and collections have no primitive code: keep the descriptor's.
    const ItemType held = value.GetItemType();
    return held >= KvXmlLib10::hexBinary && held <= KvXmlLib10::integer ? held : fallback;
}

MandatorySearch SearchMandatoryElement(const KvXmlLib10Data::CElementInfo& info,
                                       const CXmlSerializationContext& context, CXmlElement** current,
                                       KvXmlLib10Data::XmlElementType elementType) {
    const bool ignoreUnknown = context.GetIgnoreUnknownElements();
    while (!info.IsThisElement(context, *current)) {
        if (elementType == KvXmlLib10Data::ElementType_Element) {
            if (context.GetIgnoreMissingMandatoryElements()) return MandatorySearch::Absent;
            if (!ignoreUnknown || *current == nullptr)
                throw CKvValidationException(
                    FormatString("Failed to find a required element [%s]", info.GetElementName().c_str()));
        } else if (!ignoreUnknown || *current == nullptr) {
            return MandatorySearch::NotMatched;
        }
        *current = (*current)->GetNextSiblingElement();
    }
    return MandatorySearch::Found;
}

bool IsElementNil(const KvXmlLib10Data::CElementInfo& info, const CXmlElement& element) {
    static const std::string nilName("nil");
    static const std::string xsiNamespace(kXsiNamespace);
    const std::string& value = element.GetAttribute(nilName, xsiNamespace);
    if (value.empty() || EqualsNoCase(value, "false") || EqualsNoCase(value, "0")) return false;
    if (!info.IsNillable())
        throw CKvValidationException(FormatString("Invalid use of 'nil' attibute in non-nillable element [%s]",
                                                  info.GetElementName().c_str()));
    if (!EqualsNoCase(value, "true") && !EqualsNoCase(value, "1"))
        throw CKvValidationException(FormatString("Unexpected Value [%s] for 'nil' Attribute found.", value.c_str()));
    return true;
}

void ReadPrimitiveElement(const KvXmlLib10Data::CElementInfo& info, CXmlGeneratedClass* object,
                          CXmlElement** current) {
    CXmlElement* element = *current;
    KvVariant value;
    if (IsElementNil(info, *element))
        value.SetNil();
    else
        value.FromString(element->GetText(), info.GetItemType(), info.GetWhitespaceRule());
    info.AccessProperty(object, false, value);
    *current = element->GetNextSiblingElement();
}

void ReadEnumElement(const KvXmlLib10Data::CElementInfo& info, CXmlGeneratedClass* object, CXmlElement** current,
                     KvXmlLib10Data::StringToEnumFunc stringToEnum) {
    CXmlElement* element = *current;
    KvVariant value;
    if (IsElementNil(info, *element))
        value.SetNil();
    else
        value.SetI4(stringToEnum(element->GetText().c_str()));
    info.AccessProperty(object, false, value);
    *current = element->GetNextSiblingElement();
}

HeldObject::~HeldObject() {
    if (m_object) m_object->Release();
}

}  // namespace detail
}  // namespace KvXmlLib10
