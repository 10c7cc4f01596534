// XmlTypeCollection.h - base of the primitive-value collections: item type, facets, whitespace rule, number format, reading.
#pragma once

#include <cstdint>
#include <string>

#include "kvxml/core/XmlCollectionBase.h"
#include "kvxml/foundation/Export.h"
#include "kvxml/validation/PrimitiveRestrictions.h"
#include "kvxml/values/ItemType.h"
#include "kvxml/values/WhitespaceUtils.h"

namespace KvXmlLib10 {

/// Holds what a schema says about a repeated simple-typed element; the
/// typed members (Ci4Col, CdateCol, ... in metadata/PrimitiveCollections.h)
/// hold the values.
///
/// Reading (FromXml_Int): consumes the consecutive children, from
/// firstChild on, whose name and namespace are the collection's (namespaces
/// are not compared when the context ignores them) and adds the text of
/// each through AddFromString, so every value read is converted with the
/// whitespace rule and facet-checked like an added one. An item marked
/// xsi:nil true is refused: items are never nil. Returns the first child
/// not consumed. The count is not checked here: the descriptor that drives
/// the collection does that.
class KVXML_API CXmlTypeCollection : public CXmlCollectionBase {
public:
    /// The arguments of every typed member, in order:
    /// - itemType: the member's own ItemType code;
    /// - elementName, targetNamespace: name and namespace of each item's element;
    /// - minOccurs, maxOccurs: the occurrence bounds (maxOccurs -1 = unbounded);
    /// - pattern, minLength, maxLength, minInclusive, maxInclusive,
    ///   minExclusive, maxExclusive, length: the facets, in the field order of
    ///   CPrimitiveRestrictions (null strings and -1 lengths mean unset);
    /// - whitespaceRule: applied to text before it is converted (AddFromString);
    /// - numberFormat: the printf format of float and double items or the
    ///   fraction digits of decimal items when written (null or "" = canonical).
    CXmlTypeCollection(ItemType itemType, const char* elementName, const char* targetNamespace, int32_t minOccurs,
                       int32_t maxOccurs, const char* pattern, int32_t minLength, int32_t maxLength,
                       const char* minInclusive, const char* maxInclusive, const char* minExclusive,
                       const char* maxExclusive, int32_t length, CWhitespaceUtils::WhitespaceRule whitespaceRule,
                       const char* numberFormat);
    ~CXmlTypeCollection() override;

    /// Removes Remove(0) until the collection is empty: every item fires its
    /// own remove events, front first.
    void Clear() override;
    /// Converts text with the member's conversion and the whitespace rule, then adds it.
    virtual void AddFromString(const std::string& text) = 0;

    ItemType GetItemType() const { return m_itemType; }
    const CPrimitiveRestrictions& GetRestrictions() const { return m_restrictions; }
    CWhitespaceUtils::WhitespaceRule GetWhitespaceRule() const { return m_whitespaceRule; }
    const std::string& GetNumberFormat() const { return m_numberFormat; }

protected:
    CXmlElement* FromXml_Int(CXmlElement* element, CXmlElement* firstChild, const CXmlSerializationContext& context,
                             bool flag) override;

    // The steps every typed member shares. An add fires event 1 before the
    // index is checked (so a listener sees even a refused add); a removal
    // fires event 3 before its index is checked.

    /// Fires event 1 with item, then throws CKvInvalidParamException
    /// "Index out of range" unless 0 <= index <= GetCount().
    void BeginAdd(int32_t index, void* item);
    /// Fires events 2 and 0.
    void EndAdd(void* item);
    /// Fires event 3, then checks index as CheckItemIndex does.
    void BeginRemove(int32_t index);
    /// Fires events 4 and 0.
    void EndRemove(int32_t index);
    /// Throws CKvInvalidParamException "Index %d is out of range, use 0 - %d"
    /// (index, count) unless 0 <= index < GetCount().
    void CheckItemIndex(int32_t index) const;
    /// Writes one item element: start (elementName is GetElementName(),
    /// taken once per run), text typed as the item type, end.
    void WriteItem(CXmlWriter* writer, const std::string& elementName, const std::string& text) const;

private:
    ItemType m_itemType;
    CPrimitiveRestrictions m_restrictions;
    CWhitespaceUtils::WhitespaceRule m_whitespaceRule;
    std::string m_numberFormat;
};

}  // namespace KvXmlLib10
