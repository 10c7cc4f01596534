// ParentElementInfo.h - the class-level descriptor of a generated class.
#pragma once

#include <cstdint>
#include <string>

#include "kvxml/foundation/Export.h"
#include "kvxml/metadata/ElementInfo.h"
#include "kvxml/values/ItemType.h"

namespace KvXmlLib10Data {

/// How the engine treats a generated class as a whole: its model group,
/// whether it has an element of its own, the name and namespace of its type
/// (written as xsi:type when the object sits under another element name),
/// nil and simple content. One per class, immutable.
class KVXML_API CParentElementInfo {
public:
    /// valuePropertyId is -1 (or valueItemType 0) when the class has no
    /// simple content; valueFormat null is stored as "". rawText stores the
    /// simple content as an unconverted string on reading.
    CParentElementInfo(XmlElementGroupType groupType, XmlElementType elementType, const char* elementName,
                       const char* namespaceUri, bool nillable, bool writeTypeAttribute, int32_t valuePropertyId,
                       KvXmlLib10::ItemType valueItemType, const char* valueFormat, bool rawText);
    virtual ~CParentElementInfo();
    CParentElementInfo(const CParentElementInfo&) = delete;
    CParentElementInfo& operator=(const CParentElementInfo&) = delete;

    XmlElementGroupType GetGroupType() const { return m_groupType; }
    XmlElementType GetElementType() const { return m_elementType; }
    /// The name of the class's type.
    const std::string& GetElementName() const { return m_elementName; }
    /// The namespace of the class's type.
    const std::string& GetNamespaceURI() const { return m_namespaceUri; }
    bool IsNillable() const { return m_nillable; }
    bool GetWriteTypeAttribute() const { return m_writeTypeAttribute; }
    int32_t GetValuePropertyId() const { return m_valuePropertyId; }
    KvXmlLib10::ItemType GetValueItemType() const { return m_valueItemType; }
    const std::string& GetValueFormat() const { return m_valueFormat; }
    bool IsRawText() const { return m_rawText; }
    /// Whether the class carries simple content of its own.
    bool HasSimpleContent() const { return m_valuePropertyId != -1 && m_valueItemType != KvXmlLib10::Invalid; }

private:
    XmlElementGroupType m_groupType;
    XmlElementType m_elementType;
    std::string m_elementName;
    std::string m_namespaceUri;
    bool m_nillable;
    bool m_writeTypeAttribute;
    int32_t m_valuePropertyId;
    KvXmlLib10::ItemType m_valueItemType;
    std::string m_valueFormat;
    bool m_rawText;
};

}  // namespace KvXmlLib10Data
