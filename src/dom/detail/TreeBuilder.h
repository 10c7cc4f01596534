// TreeBuilder.h - the one way nodes are made and linked: open, attribute, text, close.
//
// Both readers and the public building operations of CXmlDocument and
// CXmlElement go through here, so the node classes have a single friend
// and the tree's invariants (open-element stack, pooled nodes, interned
// names, the element callback) are kept in one place.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "kvxml/core/SerializationContext.h"
#include "kvxml/dom/XmlDocument.h"

namespace KvXmlLib10 {
class CXmlAttribute;
class CXmlDocument;
class CXmlElement;
}  // namespace KvXmlLib10

namespace KvXmlLib10::detail {

class NameTable;
class NodePool;

class TreeBuilder {
public:
    explicit TreeBuilder(CXmlDocument& document) : m_document(document) {}

    // ---- what readers need of the document ----
    NameTable& Names() const;
    const CXmlSerializationContext& Context() const;
    SchemaType GetSchemaType() const;
    const unsigned char* Input() const;
    std::size_t InputLength() const;
    /// Records the URI declared for a prefix ("" = default namespace).
    void SetAlias(const char* prefix, std::size_t prefixLength, const char* uri, std::size_t uriLength);

    // ---- building, in document order ----
    /// Opens an element (the document element first, then children of the
    /// element being filled); names come from Names().
    CXmlElement* Open(const std::string* uri, const std::string* localName);
    /// Room for `count` attributes, so a reader that knows the count
    /// allocates the list exactly once.
    static void ReserveAttributes(CXmlElement& element, std::size_t count);
    static void AddAttribute(CXmlElement& element, const std::string* localName, std::string value,
                             const std::string* uri);
    /// Appends text without its carriage returns.
    static void AppendText(CXmlElement& element, const char* text, std::size_t length);
    /// Appends text as it is; text set in one piece takes no spare room.
    static void AppendRawText(CXmlElement& element, const char* text, std::size_t length);
    /// The element being filled, or null.
    CXmlElement* Top() const {
        return m_document.m_stack.empty() ? nullptr : m_document.m_stack.back().element;
    }
    /// The open element `depth` levels below the top (0: Top()), or null.
    CXmlElement* OpenElement(std::size_t depth) const;
    bool HasCallback() const { return m_document.m_callback != nullptr; }
    /// Closes the element being filled and offers it to the callback.
    void Close();

    /// The element's attribute list, made on first use.
    static std::vector<CXmlAttribute*>& AttributesOf(CXmlElement& element);

    // ---- for the nodes' own public building operations ----
    static CXmlElement* NewChild(CXmlElement& parent);
    static NameTable& NamesOf(const CXmlElement& element);

private:
    /// A node made in pool memory, which goes back if the constructor throws.
    template <class Node, class... Arguments>
    static Node* MakeNode(NodePool& pool, Arguments&&... arguments);

    CXmlDocument& m_document;
};

}  // namespace KvXmlLib10::detail
