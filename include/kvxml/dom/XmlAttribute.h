// XmlAttribute.h - one attribute of a loaded document element.
#pragma once

#include <cstddef>
#include <string>

#include "kvxml/foundation/Export.h"
#include "kvxml/foundation/InstanceMonitor.h"

namespace KvXmlLib10 {

class CXmlElement;

namespace detail {
class NodePool;
class TreeBuilder;
}

/// Namespace URI, local name and value of an attribute, owned by its element.
/// Names live in the owning document's name table: an attribute must not
/// outlive the document it was read into.
class KVXML_API CXmlAttribute : public CInstanceMonitor {
public:
    ~CXmlAttribute() override;
    CXmlAttribute(const CXmlAttribute&) = delete;
    CXmlAttribute& operator=(const CXmlAttribute&) = delete;

    const std::string& GetLocalName() const { return *m_localName; }
    const std::string& GetValue() const { return m_value; }
    /// "" for an attribute without a namespace.
    const std::string& GetNamespaceURI() const { return *m_namespaceURI; }

    /// True for "nil" in the XML Schema instance or xmlns namespace.
    bool IsNilAttribute() const;
    /// True for "xmlns", "type", "nil", "schemaLocation" and
    /// "noNamespaceSchemaLocation" in either of those two namespaces.
    bool IsNamespaceAttribute() const;

    /// Attributes live in their document's node pool; deleting one (only an
    /// element does) returns the memory there.
    static void operator delete(void* node, std::size_t size) noexcept;

private:
    friend class detail::TreeBuilder;
    CXmlAttribute(const std::string* localName, std::string value, const std::string* namespaceURI);
    static void* operator new(std::size_t size, detail::NodePool& pool);
    static void operator delete(void* node, detail::NodePool& pool) noexcept;

    const std::string* m_localName;
    std::string m_value;
    const std::string* m_namespaceURI;
};

}  // namespace KvXmlLib10
