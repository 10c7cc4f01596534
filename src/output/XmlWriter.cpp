// XmlWriter.cpp - element contexts, namespace scopes and invented prefixes.
#include "kvxml/output/XmlWriter.h"

#include <bitset>
#include <unordered_set>

#include "kvxml/foundation/KvException.h"

namespace KvXmlLib10 {

namespace {

// Two-character invented prefixes are told apart by their bytes; the first
// byte wraps after 256 values, so there are this many distinct ones.
constexpr int32_t kDistinctPrefixes = 256 * 26;

// Small scopes are cheaper to scan directly than to index.
constexpr size_t kScanLimit = 32;

bool IsPrefixUsed(const CXmlWriter::NamespaceMap& map, const std::string& prefix) {
    for (const auto& entry : map) {
        if (entry.second == prefix) return true;
    }
    return false;
}

}  // namespace

// ---------------------------------------------------------------------------
// CXmlWriterContext

CXmlWriter::CXmlWriterContext::CXmlWriterContext(const std::string& localName,
                                                 const std::string& namespaceUri,
                                                 const std::string& defaultNamespace,
                                                 const NamespaceMap* pendingMap,
                                                 CXmlWriterContext* parent)
    : CInstanceMonitor("CXmlWriterContext"),
      m_childCount(0),
      m_startTagOpen(true),
      m_depth(0),
      m_namespaceUri(namespaceUri),
      m_localName(localName),
      m_parent(parent),
      m_flag(false),
      m_defaultNamespace(defaultNamespace),
      m_namespaceMap(pendingMap ? new NamespaceMap(*pendingMap) : new NamespaceMap),
      m_inheritsFromParent(false),
      m_ownsMap(true),
      m_scope(this) {}

CXmlWriter::CXmlWriterContext::CXmlWriterContext(const std::string& localName,
                                                 const std::string& namespaceUri,
                                                 CXmlWriterContext* parent)
    : CInstanceMonitor("CXmlWriterContext"),
      m_childCount(0),
      m_startTagOpen(true),
      m_depth(parent ? parent->m_depth + 1 : 0),
      m_namespaceUri(namespaceUri),
      m_localName(localName),
      m_parent(parent),
      m_flag(false),
      m_inheritsFromParent(parent != nullptr),
      m_ownsMap(parent == nullptr),
      m_scope(parent ? parent->m_scope : this) {
    if (!parent) m_namespaceMap.reset(new NamespaceMap);
}

CXmlWriter::CXmlWriterContext::~CXmlWriterContext() {
    // Unlink before deleting so no destructor recurses up the chain.
    CXmlWriterContext* ancestor = m_parent;
    m_parent = nullptr;
    while (ancestor) {
        CXmlWriterContext* next = ancestor->m_parent;
        ancestor->m_parent = nullptr;
        delete ancestor;
        ancestor = next;
    }
}

CXmlWriter::NamespaceMap& CXmlWriter::CXmlWriterContext::GetNamespaceMap() const {
    return *m_scope->m_namespaceMap;
}

const std::string& CXmlWriter::CXmlWriterContext::GetDefaultNamespace() const {
    return m_scope->m_defaultNamespace;
}

void CXmlWriter::CXmlWriterContext::CopyScopeOnWrite() {
    if (!m_inheritsFromParent) return;
    m_namespaceMap.reset(new NamespaceMap(*m_scope->m_namespaceMap));
    m_defaultNamespace = m_scope->m_defaultNamespace;
    m_scope = this;
    m_ownsMap = true;
    m_inheritsFromParent = false;
}

void CXmlWriter::CXmlWriterContext::SetNamespaceMapValue(const std::string& uri,
                                                         const std::string& prefix) {
    CopyScopeOnWrite();
    (*m_namespaceMap)[uri] = prefix;
}

void CXmlWriter::CXmlWriterContext::SetDefaultNamespace(const std::string& uri) {
    CopyScopeOnWrite();
    m_defaultNamespace = uri;
}

std::string& CXmlWriter::CXmlWriterContext::GetNamespaceMapValue(const std::string& uri) const {
    return GetNamespaceMap()[uri];
}

std::string& CXmlWriter::CXmlWriterContext::GetNamespaceMapValue(const char* uri) const {
    return GetNamespaceMap()[uri ? std::string(uri) : std::string()];
}

// ---------------------------------------------------------------------------
// CXmlWriter

CXmlWriter::CXmlWriter(const char* className)
    : CInstanceMonitor(className), m_currentContext(nullptr) {
    AddNamespace("xml", XML_NAMESPACE);
}

CXmlWriter::~CXmlWriter() { delete m_currentContext; }

void CXmlWriter::Open() {}

void CXmlWriter::Close() {
    if (m_currentContext) throw CKvException("An Element has not been closed.");
}

void CXmlWriter::SetDefaultNamespace(const std::string& uri) {
    if (m_currentContext) {
        m_currentContext->SetDefaultNamespace(uri);
    } else {
        m_defaultNamespace = uri;
    }
}

void CXmlWriter::AddNamespace(const std::string& prefix, const std::string& uri) {
    if (m_currentContext) {
        m_currentContext->SetNamespaceMapValue(uri, prefix);
    } else {
        m_pendingNamespaces[uri] = prefix;
    }
}

std::string CXmlWriter::NsIntToString(int32_t n) {
    // Computed in unsigned arithmetic: past 'Z' the first character simply
    // runs on through the following byte values.
    const auto first = static_cast<unsigned char>(static_cast<unsigned>('A' + n / 26));
    const auto second = static_cast<unsigned char>(static_cast<unsigned>('A' + n % 26));
    std::string prefix(2, '\0');
    prefix[0] = static_cast<char>(first);
    prefix[1] = static_cast<char>(second);
    return prefix;
}

std::string CXmlWriter::GetUniquePrefix(const NamespaceMap& map) {
    if (map.size() < kScanLimit) {
        // Among size + 1 distinct candidates one is free.
        for (int32_t n = 0;; ++n) {
            std::string candidate = NsIntToString(n);
            if (!IsPrefixUsed(map, candidate)) return candidate;
        }
    }
    // Large scopes: index the two-character prefixes once.
    auto used = std::make_unique<std::bitset<65536>>();
    for (const auto& entry : map) {
        const std::string& prefix = entry.second;
        if (prefix.size() == 2) {
            used->set(static_cast<unsigned char>(prefix[0]) * 256u +
                      static_cast<unsigned char>(prefix[1]));
        }
    }
    for (int32_t n = 0; n < kDistinctPrefixes; ++n) {
        std::string candidate = NsIntToString(n);
        if (!used->test(static_cast<unsigned char>(candidate[0]) * 256u +
                        static_cast<unsigned char>(candidate[1]))) {
            return candidate;
        }
    }
    // Every two-character prefix is taken (thousands of namespaces in one
    // scope): go on with a numbered form rather than loop for ever.
    std::unordered_set<std::string> taken;
    for (const auto& entry : map) taken.insert(entry.second);
    for (uint64_t round = 1;; ++round) {
        for (int32_t n = 0; n < kDistinctPrefixes; ++n) {
            std::string candidate = NsIntToString(n) + std::to_string(round);
            if (taken.count(candidate) == 0) return candidate;
        }
    }
}

CXmlWriter::CXmlWriterContext* CXmlWriter::PushContext(const std::string& localName,
                                                       const std::string& namespaceUri) {
    CXmlWriterContext* context;
    if (m_currentContext) {
        context = new CXmlWriterContext(localName, namespaceUri, m_currentContext);
    } else {
        context = new CXmlWriterContext(localName, namespaceUri, m_defaultNamespace,
                                        &m_pendingNamespaces, nullptr);
    }
    m_currentContext = context;
    return context;
}

void CXmlWriter::PopContext() {
    CXmlWriterContext* context = m_currentContext;
    if (!context) return;
    m_currentContext = context->m_parent;
    context->m_parent = nullptr;
    delete context;
}

}  // namespace KvXmlLib10
