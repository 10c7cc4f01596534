// XmlElement.h - one element of the light document tree that readers fill.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "kvxml/dom/XmlAttribute.h"
#include "kvxml/foundation/Export.h"
#include "kvxml/foundation/InstanceMonitor.h"

namespace KvXmlLib10 {

class CXmlDocument;

namespace detail {
class NodePool;
class TreeBuilder;
}

/// An element with its namespace URI, local name, all of its character data
/// merged into one text, its attributes and its child elements (a singly
/// linked list in document order). Elements are created by a CXmlDocument
/// and own their attributes and children; names are kept in the document's
/// name table, so an element must not outlive its document.
class KVXML_API CXmlElement : public CInstanceMonitor {
public:
    /// Deletes the attributes and the whole subtree (without recursion, so
    /// any depth is fine).
    ~CXmlElement() override;
    CXmlElement(const CXmlElement&) = delete;
    CXmlElement& operator=(const CXmlElement&) = delete;

    /// First child element, or null.
    CXmlElement* GetFirstElement() const { return m_firstChild; }
    /// Next element with the same parent, or null.
    CXmlElement* GetNextSiblingElement() const { return m_nextSibling; }
    /// "" for an element without a namespace.
    const std::string& GetNamespaceURI() const { return *m_namespaceURI; }
    const std::string& GetLocalName() const { return *m_localName; }
    /// All character data of the element, text between children included.
    const std::string& GetText() const { return m_text; }
    /// The attributes in document order; the element owns them.
    const std::vector<CXmlAttribute*>& GetAttributes() const;
    /// Value of the first attribute with this local name and namespace URI;
    /// a shared empty string when there is none.
    const std::string& GetAttribute(const std::string& localName, const std::string& uri) const;
    /// The document this element belongs to.
    const CXmlDocument* GetOwnerDocument() const { return m_document; }

    /// Appends a new, unnamed child element and returns it (owned by this one).
    CXmlElement* CreateNewChildElement();
    /// Detaches the last child and hands it (with its subtree) to the caller,
    /// who deletes it; null when there are no children.
    CXmlElement* RemoveLastChildElement();
    void SetNamespace(const char* uri);
    void SetElementName(const char* name);
    /// Appends text up to its terminator.
    void AppendText(const char* text);
    /// Appends `length` bytes; nothing for a length of 0 or less.
    void AppendText(const char* text, int length);
    /// Appends an attribute after the existing ones.
    void AddAttribute(const std::string& localName, const std::string& value, const std::string& uri);

    /// Elements live in their document's node pool; deleting one (a detached
    /// child, see RemoveLastChildElement) returns the memory there.
    static void operator delete(void* node, std::size_t size) noexcept;

private:
    friend class detail::TreeBuilder;
    CXmlElement(const CXmlDocument* document, const std::string* namespaceURI,
                const std::string* localName);
    static void* operator new(std::size_t size, detail::NodePool& pool);
    static void operator delete(void* node, detail::NodePool& pool) noexcept;
    void AppendChild(CXmlElement* child);

    const CXmlDocument* m_document;
    CXmlElement* m_nextSibling = nullptr;
    CXmlElement* m_firstChild = nullptr;
    CXmlElement* m_lastChild = nullptr;
    std::vector<CXmlAttribute*>* m_attributes = nullptr;  // owned; null while there are none
    std::string m_text;
    // Both point into the document's name table.
    const std::string* m_localName;
    const std::string* m_namespaceURI;
};

}  // namespace KvXmlLib10
