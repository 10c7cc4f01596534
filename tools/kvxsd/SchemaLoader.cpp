// SchemaLoader.cpp - expat-based reading of schema documents and their includes and imports.
#include "SchemaLoader.h"

#include <expat.h>

#include <cctype>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <unordered_map>

namespace kvxsd {

const char* const kXsNamespace = "http://www.w3.org/2001/XMLSchema";
const char* const kXmlNamespace = "http://www.w3.org/XML/1998/namespace";

namespace {

const char kSep = '\x1f';

bool IsQNameAttribute(const std::string& name) {
    return name == "type" || name == "ref" || name == "base" || name == "itemType" || name == "substitutionGroup";
}

std::string Folder(const std::string& path) {
    const size_t slash = path.rfind('/');
    return slash == std::string::npos ? std::string() : path.substr(0, slash + 1);
}

bool IsRemote(const std::string& location) {
    const size_t colon = location.find("://");
    return colon != std::string::npos && colon > 1 && location.find('/') > colon;
}

// A URI with a scheme other than file: (http://..., classpath:/...); one letter is a drive.
bool HasScheme(const std::string& location) {
    const size_t colon = location.find(':');
    if (colon == std::string::npos || colon < 2 || !std::isalpha(static_cast<unsigned char>(location[0])))
        return false;
    for (size_t i = 1; i < colon; ++i)
        if (!std::isalnum(static_cast<unsigned char>(location[i])) && !std::strchr("+-.", location[i])) return false;
    return true;
}

bool FileExists(const std::string& path) {
    std::ifstream in(path);
    return in.good();
}

std::string Canonical(const std::string& path) {
    char buffer[PATH_MAX];
    return realpath(path.c_str(), buffer) ? std::string(buffer) : path;
}

// The parse of one document: builds the Node tree with an explicit stack.
class DocumentParser {
public:
    DocumentParser(SchemaSet& set, Diagnostics& diags, int32_t docIndex, const std::string& chameleonNs)
        : m_set(set), m_diags(diags), m_doc(docIndex), m_chameleonNs(chameleonNs) {}

    void Parse(const std::string& text) {
        XML_Parser parser = XML_ParserCreateNS(nullptr, kSep);
        m_parser = parser;
        XML_SetUserData(parser, this);
        XML_SetElementHandler(parser, &DocumentParser::OnStart, &DocumentParser::OnEnd);
        XML_SetNamespaceDeclHandler(parser, &DocumentParser::OnNsStart, &DocumentParser::OnNsEnd);
        const bool ok = XML_Parse(parser, text.data(), static_cast<int>(text.size()), 1) != XML_STATUS_ERROR;
        const SourcePos pos = Here();
        const std::string message = ok ? std::string() : XML_ErrorString(XML_GetErrorCode(parser));
        XML_ParserFree(parser);
        m_parser = nullptr;
        // Reported only now: Diagnostics may throw, which must not cross expat.
        for (const auto& p : m_pending) m_diags.Error(p.first, p.second);
        if (!m_rootError.empty()) {
            m_diags.Error(m_rootErrorPos, m_rootError);
            return;
        }
        if (!ok) {
            m_diags.Error(pos, "malformed XML: " + message);
            return;
        }
        if (!m_failedRoot && !m_set.docs[m_doc].root)
            m_diags.Error(SourcePos{m_set.docs[m_doc].file, 1, 1}, "not an XML Schema document: no xs:schema root");
    }

private:
    SourcePos Here() const {
        return SourcePos{m_set.docs[m_doc].file, static_cast<uint32_t>(XML_GetCurrentLineNumber(m_parser)),
                         static_cast<uint32_t>(XML_GetCurrentColumnNumber(m_parser)) + 1};
    }

    std::string ResolvePrefix(const std::string& prefix) const {
        if (prefix == "xml") return kXmlNamespace;
        for (auto it = m_prefixes.rbegin(); it != m_prefixes.rend(); ++it)
            if (it->first == prefix) return it->second;
        return std::string();
    }

    std::string ResolveQName(const std::string& text) {
        const size_t colon = text.find(':');
        if (colon == std::string::npos) {
            std::string ns = ResolvePrefix("");
            if (ns.empty()) ns = m_chameleonNs;
            return QKey(ns, text);
        }
        const std::string prefix = text.substr(0, colon);
        const std::string ns = ResolvePrefix(prefix);
        if (ns.empty()) m_pending.emplace_back(Here(), "the prefix '" + prefix + "' is not bound to a namespace");
        return QKey(ns, text.substr(colon + 1));
    }

    static void XMLCALL OnNsStart(void* data, const XML_Char* prefix, const XML_Char* uri) {
        auto* self = static_cast<DocumentParser*>(data);
        self->m_prefixes.emplace_back(prefix ? prefix : "", uri ? uri : "");
    }
    static void XMLCALL OnNsEnd(void* data, const XML_Char* prefix) {
        auto* self = static_cast<DocumentParser*>(data);
        const std::string p = prefix ? prefix : "";
        for (auto it = self->m_prefixes.rbegin(); it != self->m_prefixes.rend(); ++it)
            if (it->first == p) {
                self->m_prefixes.erase(std::next(it).base());
                break;
            }
    }

    static void XMLCALL OnStart(void* data, const XML_Char* name, const XML_Char** atts) {
        static_cast<DocumentParser*>(data)->Start(name, atts);
    }
    static void XMLCALL OnEnd(void* data, const XML_Char*) {
        auto* self = static_cast<DocumentParser*>(data);
        if (self->m_skipDepth > 0) {
            --self->m_skipDepth;
            return;
        }
        if (!self->m_stack.empty()) self->m_stack.pop_back();
    }

    void Start(const char* name, const char** atts) {
        if (m_skipDepth > 0 || m_failedRoot) {
            ++m_skipDepth;
            return;
        }
        const std::string qualified(name);
        const size_t sep = qualified.find(kSep);
        const bool inXs = sep != std::string::npos && qualified.compare(0, sep, kXsNamespace) == 0;
        SchemaDoc& doc = m_set.docs[m_doc];
        if (m_stack.empty() && !doc.root) {
            if (!inXs || qualified.substr(sep + 1) != "schema") {
                m_failedRoot = true;
                ++m_skipDepth;
                m_rootErrorPos = Here();
                m_rootError = "not an XML Schema document: the root element is <" +
                              qualified.substr(sep == std::string::npos ? 0 : sep + 1) + ">, not xs:schema";
                XML_StopParser(m_parser, XML_FALSE);
                return;
            }
        }
        // Foreign elements and the content of annotations bind to nothing.
        if (!inXs || (!m_stack.empty() && (m_stack.back()->local == "annotation"))) {
            ++m_skipDepth;
            return;
        }
        m_set.nodes.emplace_back();
        Node* node = &m_set.nodes.back();
        node->local = qualified.substr(sep + 1);
        node->pos = Here();
        node->doc = m_doc;
        for (const char** a = atts; *a; a += 2) {
            const std::string attName(a[0]);
            if (attName.find(kSep) != std::string::npos) continue;  // foreign attributes
            std::string value(a[1]);
            if (IsQNameAttribute(attName)) value = ResolveQName(value);
            node->attrs.emplace_back(attName, std::move(value));
        }
        if (m_stack.empty()) {
            doc.root = node;
            if (const std::string* tns = node->Attr("targetNamespace")) doc.targetNamespace = *tns;
            else doc.targetNamespace = m_chameleonNs;
            doc.elementQualified = node->AttrOr("elementFormDefault", "") == "qualified";
            doc.attributeQualified = node->AttrOr("attributeFormDefault", "") == "qualified";
        } else {
            node->parent = m_stack.back();
            m_stack.back()->children.push_back(node);
        }
        m_stack.push_back(node);
    }

    SchemaSet& m_set;
    Diagnostics& m_diags;
    int32_t m_doc;
    std::string m_chameleonNs;
    XML_Parser m_parser = nullptr;
    std::vector<std::pair<std::string, std::string>> m_prefixes;
    std::vector<Node*> m_stack;
    int m_skipDepth = 0;
    bool m_failedRoot = false;
    std::string m_rootError;
    std::vector<std::pair<SourcePos, std::string>> m_pending;
    SourcePos m_rootErrorPos;
};

// namespace-or-location -> local file, one mapping per line: "KEY PATH".
std::unordered_map<std::string, std::string> ReadCatalog(const std::string& path, Diagnostics& diags) {
    std::unordered_map<std::string, std::string> catalog;
    std::ifstream in(path);
    if (!in) {
        diags.Error(SourcePos{}, "cannot read the catalog " + path);
        return catalog;
    }
    std::string line;
    while (std::getline(in, line)) {
        std::istringstream fields(line);
        std::string key, file;
        if (!(fields >> key) || key[0] == '#' || !(fields >> file)) continue;
        if (file[0] != '/') file = Folder(path) + file;
        catalog.emplace(key, file);
    }
    return catalog;
}

struct Pending {
    std::string path;
    std::string chameleonNs;  // the includer's namespace for an include
    bool chameleon = false;
    int32_t mainSchema = -1;
    bool imported = false;
    std::string importNs;  // the namespace the import names ("" for none)
    SourcePos importPos;
};

std::string NamespaceText(const std::string& ns) { return ns.empty() ? "no namespace" : "namespace " + ns; }

}  // namespace

const std::string* Node::Attr(const char* name) const {
    for (const auto& a : attrs)
        if (a.first == name) return &a.second;
    return nullptr;
}

std::string Node::AttrOr(const char* name, const std::string& fallback) const {
    const std::string* value = Attr(name);
    return value ? *value : fallback;
}

std::string QKey(const std::string& ns, const std::string& local) { return '{' + ns + '}' + local; }

std::string QLocal(const std::string& key) {
    const size_t close = key.find('}');
    return close == std::string::npos ? key : key.substr(close + 1);
}

std::string QNamespace(const std::string& key) {
    const size_t close = key.find('}');
    return close == std::string::npos ? std::string() : key.substr(1, close - 1);
}

std::string QDisplay(const std::string& key) {
    const std::string ns = QNamespace(key);
    return ns.empty() ? QLocal(key) : key;
}

void LoadSchemas(const Options& options, SchemaSet& set, Diagnostics& diags) {
    std::unordered_map<std::string, std::string> catalog;
    if (!options.catalog.empty()) catalog = ReadCatalog(options.catalog, diags);
    std::unordered_map<std::string, int32_t> loaded;  // canonical path + '\n' + namespace -> doc
    std::unordered_map<std::string, int32_t> fileIndex;
    std::unordered_map<std::string, std::string> namespaceFile;  // target namespace -> first file holding it

    auto locate = [&](const std::string& written, const std::string& ns, const std::string& from,
                      const SourcePos& pos) -> std::string {
        const std::string location = written.compare(0, 7, "file://") == 0 ? written.substr(7) : written;
        auto hit = catalog.find(location);
        if (!location.empty() && hit != catalog.end()) return hit->second;
        if (!location.empty() && !HasScheme(location)) {
            const std::string local = location[0] == '/' ? location : Folder(from) + location;
            if (FileExists(local)) return local;
            for (const std::string& dir : options.includeDirs)
                if (FileExists(dir + '/' + location)) return dir + '/' + location;
        }
        if (!location.empty() && HasScheme(location)) {
            const std::string base = location.substr(location.rfind('/') + 1);
            for (const std::string& dir : options.includeDirs)
                if (!base.empty() && FileExists(dir + '/' + base)) return dir + '/' + base;
        }
        hit = catalog.find(ns);
        if (!ns.empty() && hit != catalog.end()) return hit->second;
        if (location.empty()) return std::string();  // an import by namespace only
        if (ns == kXmlNamespace) {
            diags.Note(pos, "xml.xsd not loaded: xml:lang, xml:space, xml:base and xml:id are built in");
            return std::string();
        }
        if (IsRemote(location))
            diags.Error(pos, "remote schema locations are not supported: " + location);
        else
            diags.Error(pos, "cannot find the schema " + location);
        return std::string();
    };

    // An import must load a schema of the namespace it names.
    std::unordered_map<std::string, std::string> targetOf;  // canonical path -> its own target namespace
    auto checkImport = [&](const Pending& import, const std::string& targetNamespace) {
        if (import.imported && targetNamespace != import.importNs)
            diags.Error(import.importPos, "xs:import of " + NamespaceText(import.importNs) + " loads " + import.path +
                                              ", a schema of " + NamespaceText(targetNamespace));
    };

    std::deque<Pending> queue;
    for (size_t i = 0; i < options.schemas.size(); ++i)
        queue.push_back(Pending{options.schemas[i], std::string(), false, static_cast<int32_t>(i), false, {}, {}});
    std::vector<int32_t> mainDocs;
    while (!queue.empty()) {
        Pending next = std::move(queue.front());
        queue.pop_front();
        const std::string canonical = Canonical(next.path);
        const std::string key = canonical + (next.chameleon ? '\n' + next.chameleonNs : std::string("\n\x01"));
        if (loaded.count(key)) {  // include cycles and diamonds load once
            auto target = targetOf.find(canonical);
            if (target != targetOf.end()) checkImport(next, target->second);
            continue;
        }
        // Standard schemas travel in copies (xmldsig, xml.xsd beside each user): a
        // namespace already loaded from another file is not imported again.
        auto holder = namespaceFile.find(next.importNs);
        if (next.imported && !next.importNs.empty() && holder != namespaceFile.end() && holder->second != canonical) {
            diags.Note(next.importPos, "xs:import of " + next.path + " skipped: the namespace " + next.importNs +
                                           " is already loaded from " + holder->second);
            continue;
        }
        std::ifstream in(next.path, std::ios::binary);
        if (!in) {
            diags.Error(SourcePos{}, "cannot read " + next.path);
            continue;
        }
        std::ostringstream text;
        text << in.rdbuf();
        auto known = fileIndex.find(canonical);
        int32_t file;
        if (known != fileIndex.end()) {
            file = known->second;
        } else {
            file = static_cast<int32_t>(set.files.size());
            set.files.push_back(next.path);
            fileIndex.emplace(canonical, file);
        }
        const int32_t docIndex = static_cast<int32_t>(set.docs.size());
        set.docs.push_back(SchemaDoc{});
        set.docs.back().file = file;
        set.docs.back().mainSchema = next.mainSchema;
        DocumentParser(set, diags, docIndex, next.chameleonNs).Parse(text.str());
        const SchemaDoc& doc = set.docs[docIndex];
        if (doc.root && !next.chameleon) {
            targetOf.emplace(canonical, doc.targetNamespace);
            checkImport(next, doc.targetNamespace);
        }
        // Reached once as an import and once as an include of its own namespace: one document.
        const std::string effective = canonical + '\n' + doc.targetNamespace;
        if (doc.root && loaded.count(effective)) {
            set.docs.pop_back();
            loaded.emplace(key, loaded[effective]);
            continue;
        }
        loaded.emplace(key, docIndex);
        loaded.emplace(effective, docIndex);
        if (doc.root) namespaceFile.emplace(doc.targetNamespace, canonical);
        if (!doc.root) continue;
        if (next.chameleon) {
            const std::string* own = doc.root->Attr("targetNamespace");
            if (own && *own != next.chameleonNs)
                diags.Error(doc.root->pos, "the included schema's target namespace " + *own +
                                               " differs from the including schema's " + next.chameleonNs);
        }
        for (Node* child : doc.root->children) {
            const std::string& what = child->local;
            if (what == "redefine" || what == "override") {
                diags.Error(child->pos, "xs:" + what + " is not supported");
                continue;
            }
            if (what != "include" && what != "import") continue;
            const std::string location = child->AttrOr("schemaLocation", "");
            const std::string ns = what == "import" ? child->AttrOr("namespace", "") : std::string();
            if (what == "include" && location.empty()) {
                diags.Error(child->pos, "xs:include without a schemaLocation");
                continue;
            }
            const std::string path = locate(location, ns, set.files[file], child->pos);
            if (path.empty()) continue;
            if (!FileExists(path)) {
                diags.Error(child->pos, "cannot find the schema " + path);
                continue;
            }
            if (what == "include")
                queue.push_back(Pending{path, doc.targetNamespace, true, doc.mainSchema, false, {}, {}});
            else
                queue.push_back(Pending{path, std::string(), false, doc.mainSchema, true, ns, child->pos});
        }
    }
}

}  // namespace kvxsd
