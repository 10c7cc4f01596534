// MetadataSupport.cpp - the nil test shared by the simple-value descriptors.
#include "metadata/detail/MetadataSupport.h"

#include <cstring>

#include "kvxml/core/SerializationContext.h"
#include "kvxml/core/XmlObjectBase.h"
#include "kvxml/dom/XmlElement.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/values/Variant.h"
#include "foundation/detail/StandardNamespaces.h"

namespace KvXmlLib10 {
namespace detail {

namespace {


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

bool IsElementNil(const KvXmlLib10Data::CElementInfo& info, const CXmlElement& element) {
    static const std::string nilName("nil");
    static const std::string xsiNamespace(KvXmlLib10::detail::kXsiNamespace);
    const std::string& value = element.GetAttribute(nilName, xsiNamespace);
    if (value.empty() || EqualsNoCase(value, "false") || EqualsNoCase(value, "0")) return false;
    if (!info.IsNillable())
        throw CKvValidationException(FormatString("Invalid use of 'nil' attibute in non-nillable element [%s]",
                                                  info.GetElementName().c_str()));
    if (!EqualsNoCase(value, "true") && !EqualsNoCase(value, "1"))
        throw CKvValidationException(FormatString("Unexpected Value [%s] for 'nil' Attribute found.", value.c_str()));
    return true;
}

HeldObject::~HeldObject() {
    if (m_object) m_object->Release();
}

}  // namespace detail
}  // namespace KvXmlLib10
