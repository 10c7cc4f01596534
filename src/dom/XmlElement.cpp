// XmlElement.cpp - element and attribute nodes of the document tree.
#include "kvxml/dom/XmlElement.h"

#include <cstring>
#include <memory>
#include <string_view>

#include "dom/detail/NameTable.h"
#include "dom/detail/NodePool.h"
#include "dom/detail/TreeBuilder.h"
#include "foundation/detail/StandardNamespaces.h"
#include "kvxml/dom/XmlDocument.h"

namespace KvXmlLib10 {

namespace {

// Views compare lengths first: the usual attribute has no namespace at all.
bool IsInstanceOrXmlnsNamespace(const std::string& uri) {
    constexpr std::string_view xsi(detail::kXsiNamespace);
    constexpr std::string_view xmlns(detail::kXmlnsNamespace);
    return uri == xsi || uri == xmlns;
}

}  // namespace

// ---- CXmlAttribute ----

CXmlAttribute::CXmlAttribute(const std::string* localName, std::string value, const std::string* namespaceURI)
    : CInstanceMonitor("CXmlAttribute"), m_localName(localName), m_value(std::move(value)),
      m_namespaceURI(namespaceURI) {}

CXmlAttribute::~CXmlAttribute() = default;

void* CXmlAttribute::operator new(std::size_t size, detail::NodePool& pool) { return pool.Allocate(size); }

void CXmlAttribute::operator delete(void* node, detail::NodePool&) noexcept {
    detail::NodePool::Free(node, sizeof(CXmlAttribute));
}

void CXmlAttribute::operator delete(void* node, std::size_t size) noexcept { detail::NodePool::Free(node, size); }

bool CXmlAttribute::IsNilAttribute() const {
    return IsInstanceOrXmlnsNamespace(*m_namespaceURI) && *m_localName == "nil";
}

bool CXmlAttribute::IsNamespaceAttribute() const {
    if (!IsInstanceOrXmlnsNamespace(*m_namespaceURI)) return false;
    const std::string& name = *m_localName;
    return name == "xmlns" || name == "type" || name == "nil" || name == "schemaLocation" ||
           name == "noNamespaceSchemaLocation";
}

// ---- CXmlElement ----

CXmlElement::CXmlElement(const CXmlDocument* document, const std::string* namespaceURI,
                         const std::string* localName)
    : CInstanceMonitor("CXmlElement"), m_document(document), m_localName(localName),
      m_namespaceURI(namespaceURI) {}

void* CXmlElement::operator new(std::size_t size, detail::NodePool& pool) { return pool.Allocate(size); }

void CXmlElement::operator delete(void* node, detail::NodePool&) noexcept {
    detail::NodePool::Free(node, sizeof(CXmlElement));
}

void CXmlElement::operator delete(void* node, std::size_t size) noexcept { detail::NodePool::Free(node, size); }

CXmlElement::~CXmlElement() {
    if (m_attributes) {
        for (CXmlAttribute* attribute : *m_attributes) delete attribute;
        using AttributeList = std::vector<CXmlAttribute*>;
        m_attributes->~AttributeList();
        detail::NodePool::Free(m_attributes, sizeof(AttributeList));
    }

    // Deleting children recursively would need one stack frame per level.
    // Instead each child's own children are spliced into the pending chain
    // before it is deleted, so every delete below meets a childless element.
    CXmlElement* pending = m_firstChild;
    m_firstChild = m_lastChild = nullptr;
    while (pending) {
        CXmlElement* element = pending;
        pending = element->m_nextSibling;
        if (element->m_firstChild) {
            element->m_lastChild->m_nextSibling = pending;
            pending = element->m_firstChild;
            element->m_firstChild = element->m_lastChild = nullptr;
        }
        element->m_nextSibling = nullptr;
        // Every node is exactly a CXmlElement (only the builder makes them),
        // so the destructor is called directly rather than through the vtable.
        element->CXmlElement::~CXmlElement();
        detail::NodePool::Free(element, sizeof(CXmlElement));
    }
}

const std::vector<CXmlAttribute*>& CXmlElement::GetAttributes() const {
    // Most elements have no attributes; they share one empty list instead of
    // each carrying a vector.
    static const std::vector<CXmlAttribute*>* const none = new std::vector<CXmlAttribute*>;
    return m_attributes ? *m_attributes : *none;
}

const std::string& CXmlElement::GetAttribute(const std::string& localName, const std::string& uri) const {
    for (const CXmlAttribute* attribute : GetAttributes()) {
        if (attribute->GetLocalName() == localName && attribute->GetNamespaceURI() == uri) {
            return attribute->GetValue();
        }
    }
    return detail::EmptyString();
}

void CXmlElement::AppendChild(CXmlElement* child) {
    if (m_lastChild) {
        m_lastChild->m_nextSibling = child;
    } else {
        m_firstChild = child;
    }
    m_lastChild = child;
}

CXmlElement* CXmlElement::CreateNewChildElement() { return detail::TreeBuilder::NewChild(*this); }

CXmlElement* CXmlElement::RemoveLastChildElement() {
    CXmlElement* last = m_lastChild;
    if (!last) return nullptr;
    if (m_firstChild == last) {
        m_firstChild = m_lastChild = nullptr;
        return last;
    }
    CXmlElement* previous = m_firstChild;
    while (previous->m_nextSibling != last) previous = previous->m_nextSibling;
    previous->m_nextSibling = nullptr;
    m_lastChild = previous;
    return last;
}

void CXmlElement::SetNamespace(const char* uri) {
    m_namespaceURI = detail::TreeBuilder::NamesOf(*this).Intern(uri ? std::string_view(uri) : std::string_view());
}

void CXmlElement::SetElementName(const char* name) {
    m_localName = detail::TreeBuilder::NamesOf(*this).Intern(name ? std::string_view(name) : std::string_view());
}

void CXmlElement::AppendText(const char* text) {
    if (text) m_text.append(text);
}

void CXmlElement::AppendText(const char* text, int length) {
    // std::string grows to the larger of twice its capacity and the need,
    // so merging many pieces stays linear.
    if (text && length > 0) m_text.append(text, static_cast<std::size_t>(length));
}

void CXmlElement::AddAttribute(const std::string& localName, const std::string& value, const std::string& uri) {
    detail::NameTable& names = detail::TreeBuilder::NamesOf(*this);
    detail::TreeBuilder::AddAttribute(*this, names.Intern(localName), value, names.Intern(uri));
}

}  // namespace KvXmlLib10
