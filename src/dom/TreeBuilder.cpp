// TreeBuilder.cpp - node creation and linking, the open-element stack and the callback.
#include "dom/detail/TreeBuilder.h"

#include <memory>
#include <utility>

#include "dom/detail/LocalText.h"
#include "dom/detail/NameTable.h"
#include "dom/detail/NodePool.h"
#include "kvxml/dom/XmlDocument.h"

namespace KvXmlLib10::detail {

template <class Node, class... Arguments>
Node* TreeBuilder::MakeNode(NodePool& pool, Arguments&&... arguments) {
    // Allocated here rather than through the nodes' own operator new, so
    // that the pool's inline fast path is taken for every node of a load.
    void* memory = pool.Allocate(sizeof(Node));
    try {
        return ::new (memory) Node(std::forward<Arguments>(arguments)...);
    } catch (...) {
        NodePool::Free(memory, sizeof(Node));
        throw;
    }
}

NameTable& TreeBuilder::Names() const { return *m_document.m_names; }

const CXmlSerializationContext& TreeBuilder::Context() const { return *m_document.m_context; }

SchemaType TreeBuilder::GetSchemaType() const { return m_document.m_schemaType; }

const unsigned char* TreeBuilder::Input() const { return m_document.m_input; }

std::size_t TreeBuilder::InputLength() const { return m_document.m_inputLength; }

void TreeBuilder::SetAlias(const char* prefix, std::size_t prefixLength, const char* uri, std::size_t uriLength) {
    const std::string_view key(prefix, prefixLength);
    auto& aliases = m_document.m_aliases;
    auto found = aliases.find(key);
    if (found == aliases.end()) {
        aliases.emplace(std::string(key), std::string(uri, uriLength));
    } else {
        found->second.assign(uri, uriLength);
    }
}

CXmlElement* TreeBuilder::Open(const std::string* uri, const std::string* localName) {
    auto& stack = m_document.m_stack;
    std::unique_ptr<CXmlElement> element(MakeNode<CXmlElement>(*m_document.m_nodes, &m_document, uri, localName));
    // Grow before linking, so that the push below cannot throw.
    if (stack.size() == stack.capacity()) stack.reserve(stack.empty() ? 16 : 2 * stack.size());
    // A second root cannot come from well-formed input; it joins the tree
    // like any other element rather than replacing the first.
    CXmlElement* parent = !stack.empty() ? stack.back().element : m_document.m_documentElement;
    CXmlElement* previous = nullptr;
    if (parent) {
        previous = parent->m_lastChild;
        parent->AppendChild(element.get());
    } else {
        m_document.m_documentElement = element.get();
    }
    stack.push_back(CXmlDocument::OpenElement{element.get(), previous});
    return element.release();
}

std::vector<CXmlAttribute*>& TreeBuilder::AttributesOf(CXmlElement& element) {
    // The list itself is a pool node like the element; the element's
    // destructor gives it back there.
    if (!element.m_attributes) {
        void* node = element.m_document->m_nodes->Allocate(sizeof(std::vector<CXmlAttribute*>));
        element.m_attributes = new (node) std::vector<CXmlAttribute*>;
    }
    return *element.m_attributes;
}

void TreeBuilder::ReserveAttributes(CXmlElement& element, std::size_t count) {
    std::vector<CXmlAttribute*>& attributes = AttributesOf(element);
    attributes.reserve(attributes.size() + count);
}

void TreeBuilder::AddAttribute(CXmlElement& element, const std::string* localName, std::string value,
                               const std::string* uri) {
    std::unique_ptr<CXmlAttribute> attribute(
        MakeNode<CXmlAttribute>(*element.m_document->m_nodes, localName, std::move(value), uri));
    AttributesOf(element).push_back(attribute.get());
    attribute.release();
}

void TreeBuilder::AppendText(CXmlElement& element, const char* text, std::size_t length) {
    AppendExcludingCR(element.m_text, text, length);
}

void TreeBuilder::AppendRawText(CXmlElement& element, const char* text, std::size_t length) {
    // Appending past the inline room of an empty string would round its
    // capacity up.
    if (element.m_text.empty() && length > element.m_text.capacity()) {
        element.m_text = std::string(text, length);
    } else {
        element.m_text.append(text, length);
    }
}

CXmlElement* TreeBuilder::OpenElement(std::size_t depth) const {
    const auto& stack = m_document.m_stack;
    return depth < stack.size() ? stack[stack.size() - 1 - depth].element : nullptr;
}

void TreeBuilder::Close() {
    auto& stack = m_document.m_stack;
    if (stack.empty()) return;
    const CXmlDocument::OpenElement closed = stack.back();
    stack.pop_back();
    if (!m_document.m_callback || !m_document.m_callback(closed.element)) {
        // Text merged from many pieces (indentation between children) ends
        // with up to half its capacity unused; a kept element gives it back.
        std::string& text = closed.element->m_text;
        if (text.capacity() - text.size() >= 16) text.shrink_to_fit();
        return;
    }
    // The document element stays whatever the callback says: it has no parent
    // to be removed from.
    if (stack.empty()) return;
    CXmlElement* parent = stack.back().element;
    CXmlElement* removed = nullptr;
    if (parent->m_lastChild == closed.element &&
        (closed.previous ? closed.previous->m_nextSibling == closed.element
                         : parent->m_firstChild == closed.element)) {
        // Constant time: the sibling before it was noted when it opened.
        if (closed.previous) {
            closed.previous->m_nextSibling = nullptr;
        } else {
            parent->m_firstChild = nullptr;
        }
        parent->m_lastChild = closed.previous;
        removed = closed.element;
    } else {
        // The callback rearranged the parent's children itself.
        removed = parent->RemoveLastChildElement();
    }
    delete removed;
}

CXmlElement* TreeBuilder::NewChild(CXmlElement& parent) {
    const std::string* empty = &EmptyString();
    auto* child = MakeNode<CXmlElement>(*parent.m_document->m_nodes, parent.m_document, empty, empty);
    parent.AppendChild(child);
    return child;
}

NameTable& TreeBuilder::NamesOf(const CXmlElement& element) { return *element.m_document->m_names; }

}  // namespace KvXmlLib10::detail
