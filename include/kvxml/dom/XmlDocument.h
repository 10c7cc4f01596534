// XmlDocument.h - loads XML text or Fast Infoset (plain or compressed) into a light element tree.
//
// Every read path goes through a document: the bytes are inflated when they
// carry a gzip or zlib header, then parsed, and the tree keeps only what
// binding needs (names, namespaces, merged text, attributes).
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "kvxml/core/SerializationContext.h"
#include "kvxml/dom/XmlAttribute.h"
#include "kvxml/dom/XmlElement.h"
#include "kvxml/foundation/Export.h"
#include "kvxml/foundation/InstanceMonitor.h"

namespace KvXmlLib10 {

namespace detail {
class NameTable;
class NodePool;
class TreeBuilder;
}

/// The tree of one loaded document. Each Load* first calls Cleanup(), so a
/// document can be reused; the prefix map is the exception and accumulates
/// over reuse. Parse errors and I/O failures are thrown as CKvException.
class KVXML_API CXmlDocument : public CInstanceMonitor {
public:
    /// Uses CXmlSerializationContext::m_defaultContext.
    CXmlDocument();
    /// The context must outlive the document.
    explicit CXmlDocument(const CXmlSerializationContext& context);
    /// The callback sees every element once it is complete; returning true
    /// deletes it from the tree (the document element is always kept). It
    /// may read or change the element it is given, not the rest of the tree;
    /// an exception it throws ends the load and reaches the caller as is.
    explicit CXmlDocument(bool (*callback)(CXmlElement*));
    CXmlDocument(bool (*callback)(CXmlElement*), const CXmlSerializationContext& context);
    ~CXmlDocument() override;
    CXmlDocument(const CXmlDocument&) = delete;
    CXmlDocument& operator=(const CXmlDocument&) = delete;

    /// Reads the whole file and parses it (compressed or not). Throws
    /// "Failed to open the file [%s]" and the size and read failures.
    void Load(const char* fileName);
    /// Parses bytes that may be gzip or zlib compressed; the caller keeps
    /// them. Throws "XML Stream is empty!" for no bytes.
    void LoadXmlStream(unsigned char* data, uint32_t length);
    /// Parses XML text; throws "XML String is empty!" for "".
    void LoadXml(const char* text);
    /// Parses wide text as UTF-16 (characters above 0xFFFF are cut to their
    /// low 16 bits); throws "XML String is empty!" for L"".
    void LoadXml(const wchar_t* text);
    /// Parses the loaded bytes: inflates them if compressed, then reads them
    /// as Fast Infoset when they start like it (with or without one of the
    /// nine declarations), otherwise as XML text. XML parse errors are
    /// "<parser message> at line <n>", Fast Infoset ones start "Failed to
    /// parse FastInfoset."; the tree read so far stays. The loaded bytes are
    /// let go of once parsed.
    void Parse();
    /// Parses the loaded bytes as XML text.
    void ParseText();
    /// Where the last Parse() stopped on failing Fast Infoset input: the
    /// octet offset, in the inflated bytes, at which the reader was when it
    /// threw; -1 when the last parse did not fail in the Fast Infoset reader.
    /// Its messages are fixed texts, so a caller that reports a position
    /// takes it from here.
    int64_t GetErrorOffset() const { return m_errorOffset; }

    /// The root of the tree, owned by the document; null before a load.
    CXmlElement* GetDocumentElement() const { return m_documentElement; }
    /// The URI last declared for the prefix anywhere in the documents loaded
    /// so far ("" is the default namespace); "" when never declared.
    std::string LookupNamespaceFromAlias(const char* prefix) const;
    /// Every prefix declared so far ("" the default namespace), with the
    /// URI last declared for it.
    const std::map<std::string, std::string, std::less<>>& GetNamespaceAliases() const { return m_aliases; }

    /// Tree building, used by the readers in document order.
    CXmlElement* AddDocElement(const char* uri, const char* localName);
    CXmlElement* AddChildElement(const char* uri, const char* localName);
    void AddElementAttribute(CXmlElement* element, const std::string& localName, const std::string& value,
                             const std::string& uri);
    /// Appends text with every carriage return removed, up to its terminator.
    void AppendTextExcludingCR(CXmlElement* element, const char* text);
    /// The same, stopping after `length` bytes or at a NUL byte.
    void AppendTextExcludingCR(CXmlElement* element, const char* text, uint32_t length);
    /// Closes the element being filled and offers it to the callback.
    void EndElement();

    /// Deletes the tree and the input; keeps the prefix map.
    virtual void Cleanup();

    /// Process-wide cap on the internal entities one document may declare
    /// (1000 by default, 0 = no cap). A DTD chaining entities into each other
    /// is the cheapest way to make an XML parser recurse deeply; a document
    /// over the cap is refused with CKvException "The document declares more
    /// than N internal entities (the limit set by
    /// CXmlDocument::SetMaxEntityDeclarations)".
    static void SetMaxEntityDeclarations(uint32_t count);
    static uint32_t GetMaxEntityDeclarations();

private:
    friend class detail::TreeBuilder;

    // An open element and the sibling before it, so that the callback can
    // drop a finished element without walking its parent's child list.
    struct OpenElement {
        CXmlElement* element;
        CXmlElement* previous;
    };

    void Init();
    void InflateIfCompressed();
    void SetInput(const unsigned char* data, std::size_t length);
    void ReleaseInput();

    CXmlElement* m_documentElement = nullptr;
    std::vector<OpenElement> m_stack;
    std::map<std::string, std::string, std::less<>> m_aliases;
    // The bytes being parsed: the caller's (during LoadXml/LoadXmlStream) or
    // m_buffer's. Both are dropped once the parse is over.
    std::unique_ptr<unsigned char[]> m_buffer;
    const unsigned char* m_input = nullptr;
    std::size_t m_inputLength = 0;
    int64_t m_errorOffset = -1;
    SchemaType m_schemaType = SchemaType_Default;
    bool (*m_callback)(CXmlElement*) = nullptr;
    const CXmlSerializationContext* m_context;
    std::unique_ptr<detail::NameTable> m_names;
    std::unique_ptr<detail::NodePool> m_nodes;
};

}  // namespace KvXmlLib10
