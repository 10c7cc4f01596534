// XmlWriter.h - abstract document sink with namespace scoping and prefix invention.
//
// The serialisation engine only announces namespaces and writes names with
// their namespace URIs; the writer decides the prefixes. One context per
// open element carries the element's namespace scope. The open elements
// share one namespace map: an element that binds a prefix changes the map
// in place and takes the change back when it ends, so declaring a
// namespace costs the same at any depth and with any number in scope.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "kvxml/foundation/Export.h"
#include "kvxml/foundation/InstanceMonitor.h"
#include "kvxml/values/ItemType.h"

namespace KvXmlLib10 {

class KVXML_API CXmlWriter : public CInstanceMonitor {
public:
    /// Namespace URI -> prefix, ordered bytewise by URI.
    using NamespaceMap = std::map<std::string, std::string>;

    /// Always bound to the prefix "xml" and never declared.
    static constexpr const char XML_NAMESPACE[] = "http://www.w3.org/XML/1998/namespace";

    /// State of one open element. Contexts form a chain to the root; the
    /// writer owns the chain through its innermost context.
    class KVXML_API CXmlWriterContext : public CInstanceMonitor {
    public:
        /// Root context: its scope starts as a copy of `pendingMap` (null:
        /// empty) and `defaultNamespace`; it owns the map that the
        /// elements inside it share. Takes ownership of `parent`.
        CXmlWriterContext(const std::string& localName, const std::string& namespaceUri,
                          const std::string& defaultNamespace, const NamespaceMap* pendingMap,
                          CXmlWriterContext* parent);
        /// Child context: in the parent's scope until it changes it.
        /// Takes ownership of `parent` (and so of the chain above it).
        CXmlWriterContext(const std::string& localName, const std::string& namespaceUri,
                          CXmlWriterContext* parent);
        /// Takes back this element's scope changes, then deletes the whole
        /// parent chain too (iteratively, any depth).
        ~CXmlWriterContext() override;
        CXmlWriterContext(const CXmlWriterContext&) = delete;
        CXmlWriterContext& operator=(const CXmlWriterContext&) = delete;

        /// The namespace map in effect at the innermost open element (the
        /// map the open elements share; an enclosing element sees its own
        /// scope again once the elements inside it have ended).
        NamespaceMap& GetNamespaceMap() const;
        const std::string& GetDefaultNamespace() const;
        /// Binds uri -> prefix for this element and the elements inside it.
        void SetNamespaceMapValue(const std::string& uri, const std::string& prefix);
        /// Binds uri to the first invented prefix free in scope (see
        /// GetUniquePrefix) and returns that prefix.
        const std::string& InventPrefix(const std::string& uri);
        /// Sets the default namespace of this element's scope.
        void SetDefaultNamespace(const std::string& uri);
        /// The prefix bound to uri in scope; an unknown uri is inserted with
        /// an empty prefix. The reference is for reading: bind prefixes with
        /// SetNamespaceMapValue.
        std::string& GetNamespaceMapValue(const std::string& uri) const;
        std::string& GetNamespaceMapValue(const char* uri) const;

        uint32_t GetChildCount() const { return m_childCount; }
        void IncrementChildCount() { ++m_childCount; }
        bool IsStartTagOpen() const { return m_startTagOpen; }
        void SetStartTagOpen(bool open) { m_startTagOpen = open; }
        uint32_t GetDepth() const { return m_depth; }
        const std::string& GetNamespaceUri() const { return m_namespaceUri; }
        const std::string& GetLocalName() const { return m_localName; }
        CXmlWriterContext* GetParent() const { return m_parent; }
        /// A free flag for the concrete writer (false at creation).
        bool GetFlag() const { return m_flag; }
        void SetFlag(bool flag) { m_flag = flag; }
        /// The prefix binding the element's start tag used (null: none).
        /// The binding stays in the map while the element is open and
        /// always holds the prefix currently bound to its namespace.
        const std::string* GetStartPrefix() const { return m_startPrefix; }
        void SetStartPrefix(const std::string* prefix) { m_startPrefix = prefix; }
        /// True until the element changes its scope (never for the root).
        bool InheritsFromParent() const { return m_inheritsFromParent; }
        /// The opposite: the root, or an element that changed its scope.
        bool OwnsMap() const { return m_ownsMap; }

    private:
        friend class CXmlWriter;

        /// Makes an ended child context a fresh child of `parent` again,
        /// keeping its string capacity.
        void Reuse(std::string_view localName, std::string_view namespaceUri, CXmlWriterContext* parent);
        void MarkScopeChanged();
        /// Counts prefixes in use in the shared map (owner only).
        void CountPrefix(const std::string& prefix);
        void UncountPrefix(const std::string& prefix);
        void UndoScopeChanges();

        uint32_t m_childCount;
        bool m_startTagOpen;
        uint32_t m_depth;
        std::string m_namespaceUri;
        std::string m_localName;
        CXmlWriterContext* m_parent;
        bool m_flag;
        const std::string* m_startPrefix = nullptr;
        std::string m_defaultNamespace;
        std::unique_ptr<NamespaceMap> m_namespaceMap;  // the root's, shared below it
        bool m_inheritsFromParent;
        bool m_ownsMap;
        // The context whose default namespace is in effect here (this one
        // once it set its own), and the one owning the shared map.
        CXmlWriterContext* m_scope;
        CXmlWriterContext* m_mapOwner;
        // Bindings this element replaced (uri, earlier prefix or none),
        // restored in reverse order when it ends.
        std::vector<std::pair<std::string, std::optional<std::string>>> m_shadowed;
        // Owner only: how many URIs each prefix is bound to, and a number
        // below which every invented prefix is taken.
        std::unique_ptr<std::unordered_map<std::string, uint32_t>> m_prefixUse;
        int64_t m_lowestFreePrefix;
    };

    /// `className` is the concrete writer's name for instance counting.
    explicit CXmlWriter(const char* className);
    /// Deletes every context still open.
    ~CXmlWriter() override;
    CXmlWriter(const CXmlWriter&) = delete;
    CXmlWriter& operator=(const CXmlWriter&) = delete;

    virtual void Open();
    /// Throws CKvException "An Element has not been closed." while an
    /// element is open.
    virtual void Close();
    /// Before the root: the document's default namespace. Inside an
    /// element: that element's scope. Writes nothing itself.
    virtual void SetDefaultNamespace(const std::string& uri);
    /// Before the root: declared on the root (a later call for the same URI
    /// replaces the prefix). Inside an element: binds it in that element's
    /// scope for later names. Writes nothing itself.
    virtual void AddNamespace(const std::string& prefix, const std::string& uri);
    virtual void WriteComment(const std::string& text) = 0;
    virtual void WritePI(const std::string& text) = 0;
    virtual void WriteInlineSchema(const std::string& text) = 0;
    virtual void WriteStartElement(const std::string& localName, const std::string& namespaceUri) = 0;
    virtual void WriteString(const std::string& text, ItemType type) = 0;
    virtual void WriteEndElement() = 0;
    virtual void WriteAttributeString(const std::string& localName, const std::string& namespaceUri,
                                      const std::string& value, ItemType type) = 0;
    virtual void WriteAttributeType(const std::string& typeNamespaceUri,
                                    const std::string& typeLocalName, ItemType type) = 0;
    virtual void WriteAttributeNil() = 0;

    /// Off (the default): an element without a namespace inside a
    /// non-empty default namespace is written unprefixed and without
    /// xmlns="", so a reader takes it to be in the default namespace. On:
    /// such an element undeclares the default namespace (xmlns="").
    void SetUndeclareDefaultNamespace(bool undeclare) { m_undeclareDefault = undeclare; }
    bool GetUndeclareDefaultNamespace() const { return m_undeclareDefault; }

    /// The invented prefix number n: two characters, 'A' + n / 26 then
    /// 'A' + n % 26 ("AA", "AB", ... "ZZ", then past 'Z').
    static std::string NsIntToString(int32_t n);
    /// The first invented prefix not used as a prefix in `map`.
    static std::string GetUniquePrefix(const NamespaceMap& map);

protected:
    /// Opens a context for a new element (the root when none is open) and
    /// makes it current.
    CXmlWriterContext* PushContext(std::string_view localName, std::string_view namespaceUri);
    /// Deletes the current context; its parent becomes current.
    void PopContext();
    CXmlWriterContext* GetCurrentContext() const { return m_currentContext; }
    const NamespaceMap& GetPendingNamespaces() const { return m_pendingNamespaces; }
    const std::string& GetDocumentDefaultNamespace() const { return m_defaultNamespace; }

private:
    std::string m_defaultNamespace;
    CXmlWriterContext* m_currentContext;
    NamespaceMap m_pendingNamespaces;
    bool m_undeclareDefault;
    // Ended child contexts kept for the next elements (at most the deepest
    // nesting seen), so writing an element allocates nothing.
    std::vector<CXmlWriterContext*> m_spareContexts;
};

}  // namespace KvXmlLib10
