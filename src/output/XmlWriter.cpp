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

// Invented prefix number n in the order GetUniquePrefix tries them: the
// two-character forms, then the same forms numbered by round.
std::string InventedPrefix(int64_t n) {
    if (n < kDistinctPrefixes) return CXmlWriter::NsIntToString(static_cast<int32_t>(n));
    return CXmlWriter::NsIntToString(static_cast<int32_t>(n % kDistinctPrefixes)) +
           std::to_string(n / kDistinctPrefixes);
}

// The n for which InventedPrefix(n) == prefix, or -1.
int64_t InventedNumber(const std::string& prefix) {
    if (prefix.size() < 2 || prefix[1] < 'A' || prefix[1] > 'Z') return -1;
    const int64_t first = (static_cast<unsigned char>(prefix[0]) - 'A') & 0xFF;  // the byte wraps
    const int64_t n = first * 26 + (prefix[1] - 'A');
    if (prefix.size() == 2) return n;
    if (prefix.size() > 18 || prefix[2] < '1' || prefix[2] > '9') return -1;
    int64_t round = 0;
    for (size_t i = 2; i < prefix.size(); ++i) {
        if (prefix[i] < '0' || prefix[i] > '9') return -1;
        round = round * 10 + (prefix[i] - '0');
    }
    return n + round * kDistinctPrefixes;
}

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
      m_scope(this),
      m_mapOwner(this),
      m_prefixUse(new std::unordered_map<std::string, uint32_t>),
      m_lowestFreePrefix(0) {
    for (const auto& entry : *m_namespaceMap) CountPrefix(entry.second);
}

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
      m_scope(parent ? parent->m_scope : this),
      m_mapOwner(parent ? parent->m_mapOwner : this),
      m_lowestFreePrefix(0) {
    if (!parent) {
        m_namespaceMap.reset(new NamespaceMap);
        m_prefixUse.reset(new std::unordered_map<std::string, uint32_t>);
    }
}

CXmlWriter::CXmlWriterContext::~CXmlWriterContext() {
    UndoScopeChanges();
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

void CXmlWriter::CXmlWriterContext::Reuse(std::string_view localName, std::string_view namespaceUri,
                                          CXmlWriterContext* parent) {
    m_childCount = 0;
    m_startTagOpen = true;
    m_depth = parent->m_depth + 1;
    // Mostly the namespace this context last had: a compare is cheaper.
    if (m_namespaceUri != namespaceUri) m_namespaceUri = namespaceUri;
    m_localName = localName;
    m_parent = parent;
    m_flag = false;
    m_startPrefix = nullptr;
    m_defaultNamespace.clear();
    m_inheritsFromParent = true;
    m_ownsMap = false;
    m_scope = parent->m_scope;
    m_mapOwner = parent->m_mapOwner;
    m_lowestFreePrefix = 0;
}

void CXmlWriter::CXmlWriterContext::UndoScopeChanges() {
    if (m_shadowed.empty()) return;
    NamespaceMap& map = *m_mapOwner->m_namespaceMap;
    for (auto change = m_shadowed.rbegin(); change != m_shadowed.rend(); ++change) {
        auto found = map.find(change->first);
        if (found == map.end()) continue;
        m_mapOwner->UncountPrefix(found->second);
        if (change->second) {
            found->second = std::move(*change->second);
            m_mapOwner->CountPrefix(found->second);
        } else {
            map.erase(found);
        }
    }
    m_shadowed.clear();
}

void CXmlWriter::CXmlWriterContext::CountPrefix(const std::string& prefix) { ++(*m_prefixUse)[prefix]; }

void CXmlWriter::CXmlWriterContext::UncountPrefix(const std::string& prefix) {
    auto found = m_prefixUse->find(prefix);
    if (found == m_prefixUse->end() || --found->second != 0) return;
    m_prefixUse->erase(found);
    const int64_t n = InventedNumber(prefix);
    if (n >= 0 && n < m_lowestFreePrefix) m_lowestFreePrefix = n;
}

CXmlWriter::NamespaceMap& CXmlWriter::CXmlWriterContext::GetNamespaceMap() const {
    return *m_mapOwner->m_namespaceMap;
}

const std::string& CXmlWriter::CXmlWriterContext::GetDefaultNamespace() const {
    return m_scope->m_defaultNamespace;
}

void CXmlWriter::CXmlWriterContext::MarkScopeChanged() {
    m_ownsMap = true;
    m_inheritsFromParent = false;
}

void CXmlWriter::CXmlWriterContext::SetNamespaceMapValue(const std::string& uri,
                                                         const std::string& prefix) {
    MarkScopeChanged();
    NamespaceMap& map = *m_mapOwner->m_namespaceMap;
    auto found = map.find(uri);
    if (m_mapOwner != this) {
        m_shadowed.emplace_back(uri, found == map.end() ? std::nullopt : std::optional<std::string>(found->second));
    }
    if (found == map.end()) {
        map.emplace(uri, prefix);
    } else {
        m_mapOwner->UncountPrefix(found->second);
        found->second = prefix;
    }
    m_mapOwner->CountPrefix(prefix);
}

const std::string& CXmlWriter::CXmlWriterContext::InventPrefix(const std::string& uri) {
    CXmlWriterContext& owner = *m_mapOwner;
    int64_t n = owner.m_lowestFreePrefix;
    std::string candidate = InventedPrefix(n);
    while (owner.m_prefixUse->count(candidate) != 0) candidate = InventedPrefix(++n);
    owner.m_lowestFreePrefix = n;  // every number below is taken
    SetNamespaceMapValue(uri, candidate);
    return owner.m_namespaceMap->find(uri)->second;
}

void CXmlWriter::CXmlWriterContext::SetDefaultNamespace(const std::string& uri) {
    MarkScopeChanged();
    m_defaultNamespace = uri;
    m_scope = this;
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
    : CInstanceMonitor(className), m_currentContext(nullptr), m_undeclareDefault(false) {
    AddNamespace("xml", XML_NAMESPACE);
}

CXmlWriter::~CXmlWriter() {
    delete m_currentContext;
    for (CXmlWriterContext* spare : m_spareContexts) delete spare;
}

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

CXmlWriter::CXmlWriterContext* CXmlWriter::PushContext(std::string_view localName,
                                                       std::string_view namespaceUri) {
    CXmlWriterContext* context;
    // While instances are counted every element gets a context of its own.
    if (m_currentContext && !m_spareContexts.empty() && !CInstanceMonitor::IsCounting()) {
        context = m_spareContexts.back();
        m_spareContexts.pop_back();
        try {
            context->Reuse(localName, namespaceUri, m_currentContext);
        } catch (...) {
            context->m_parent = nullptr;
            delete context;
            throw;
        }
    } else if (m_currentContext) {
        context = new CXmlWriterContext(std::string(localName), std::string(namespaceUri), m_currentContext);
    } else {
        context = new CXmlWriterContext(std::string(localName), std::string(namespaceUri), m_defaultNamespace,
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
    // The root owns the shared map; a counted context must end when its
    // element does.
    if (!m_currentContext || context->m_namespaceMap || context->IsCounted() || CInstanceMonitor::IsCounting()) {
        delete context;
        return;
    }
    context->UndoScopeChanges();
    try {
        m_spareContexts.push_back(context);
    } catch (...) {
        delete context;
    }
}

}  // namespace KvXmlLib10
