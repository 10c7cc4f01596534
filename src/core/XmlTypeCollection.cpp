// XmlTypeCollection.cpp - settings, reading and the shared add/remove steps of the primitive-value collections.
#include "kvxml/core/XmlTypeCollection.h"

#include "kvxml/core/XmlObjectHelper.h"
#include "kvxml/dom/XmlAttribute.h"
#include "kvxml/dom/XmlElement.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/output/XmlWriter.h"
#include "metadata/detail/MetadataSupport.h"

namespace KvXmlLib10 {

namespace {

// Items of a value collection are never nil; "false" and "0" say so too.
bool IsMarkedNil(const CXmlElement& element) {
    for (const CXmlAttribute* attribute : element.GetAttributes()) {
        if (!attribute->IsNilAttribute()) continue;
        const std::string& value = attribute->GetValue();
        return !value.empty() && !detail::EqualsNoCase(value, "false") && !detail::EqualsNoCase(value, "0");
    }
    return false;
}

}  // namespace

CXmlTypeCollection::CXmlTypeCollection(ItemType itemType, const char* elementName, const char* targetNamespace,
                                       int32_t minOccurs, int32_t maxOccurs, const char* pattern, int32_t minLength,
                                       int32_t maxLength, const char* minInclusive, const char* maxInclusive,
                                       const char* minExclusive, const char* maxExclusive, int32_t length,
                                       CWhitespaceUtils::WhitespaceRule whitespaceRule, const char* numberFormat)
    : CXmlCollectionBase(elementName, targetNamespace, minOccurs, maxOccurs),
      m_itemType(itemType),
      m_restrictions(pattern, minLength, maxLength, minInclusive, maxInclusive, minExclusive, maxExclusive, length),
      m_whitespaceRule(whitespaceRule),
      m_numberFormat(numberFormat ? numberFormat : "") {}

CXmlTypeCollection::~CXmlTypeCollection() = default;

void CXmlTypeCollection::Clear() {
    while (GetCount() != 0) Remove(0);
}

CXmlElement* CXmlTypeCollection::FromXml_Int(CXmlElement*, CXmlElement* current,
                                             const CXmlSerializationContext& context, bool) {
    const std::string name = GetElementName();
    while (CXmlObjectHelper::DoesElementNameMatch(context, current, name, GetItemNamespace())) {
        if (IsMarkedNil(*current))
            throw CKvValidationException(
                FormatString("Invalid use of 'nil' attibute in non-nillable element [%s]", name.c_str()));
        AddFromString(current->GetText());
        current = current->GetNextSiblingElement();
    }
    return current;
}

void CXmlTypeCollection::BeginAdd(int32_t index, void* item) {
    FireOnCollectionAdd(item);
    if (index < 0 || index > GetCount()) throw CKvInvalidParamException("Index out of range");
}

void CXmlTypeCollection::EndAdd(void* item) {
    FireOnCollectionAddComplete(item);
    FireOnCollectionChange();
}

void CXmlTypeCollection::BeginRemove(int32_t index) {
    FireOnCollectionRemove(index);
    CheckItemIndex(index);
}

void CXmlTypeCollection::EndRemove(int32_t index) {
    FireOnCollectionRemoveComplete(index);
    FireOnCollectionChange();
}

void CXmlTypeCollection::CheckItemIndex(int32_t index) const {
    if (index < 0 || index >= GetCount())
        throw CKvInvalidParamException(FormatString("Index %d is out of range, use 0 - %d", index, GetCount()));
}

void CXmlTypeCollection::WriteItem(CXmlWriter* writer, const std::string& elementName,
                                   const std::string& text) const {
    writer->WriteStartElement(elementName, GetItemNamespace());
    writer->WriteString(text, m_itemType);
    writer->WriteEndElement();
}

}  // namespace KvXmlLib10
