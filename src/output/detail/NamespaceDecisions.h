// NamespaceDecisions.h - the namespace decisions every writer takes alike.
//
// Which prefix an element or attribute name gets, when a prefix is
// invented (and so must be declared), and which declarations a start tag
// carries in which order. A concrete writer asks here and only encodes the
// answers, so the text and the binary forms of a document always agree.
#pragma once

#include <string>

#include "foundation/detail/StandardNamespaces.h"
#include "kvxml/output/XmlWriter.h"

namespace KvXmlLib10 {
namespace detail {

/// The namespace of the xsi:type and xsi:nil attributes.
inline const std::string& XsiNamespace() {
    static const std::string uri = kXsiNamespace;
    return uri;
}

/// A prefix in scope (null: the name is written without one), and whether
/// it was invented just now and must be declared before it is used.
struct ResolvedPrefix {
    const std::string* prefix;
    bool declare;
};

/// What an element's start tag does with namespaces.
struct ElementStart {
    const std::string* prefix;  // null: unprefixed; valid while the element is open
    bool declarePrefix;         // the prefix was invented for it: declare it
    bool undeclaredDefault;     // the element undeclares the default namespace
};

class NamespaceDecisions {
public:
    using Context = CXmlWriter::CXmlWriterContext;

    /// The element whose context was just pushed: its prefix (null: none),
    /// and the scope changes its start tag makes. `undeclareDefault`: an
    /// element without a namespace inside a non-empty default namespace
    /// undeclares it (xmlns=""), so the document reads back as written;
    /// off, it is written unprefixed and a reader takes it to be in the
    /// default namespace.
    static ElementStart StartElement(Context& element, bool undeclareDefault) {
        const std::string& uri = element.GetNamespaceUri();
        if (uri.empty()) {
            if (!undeclareDefault || element.GetDefaultNamespace().empty()) return {nullptr, false, false};
            element.SetDefaultNamespace(std::string());
            return {nullptr, false, true};
        }
        if (uri == element.GetDefaultNamespace()) return {nullptr, false, false};
        // Inside a parent of the same namespace the parent's binding is
        // the one in scope: no map search.
        const Context* parent = element.GetParent();
        const ResolvedPrefix resolved = parent && parent->GetStartPrefix() && parent->GetNamespaceUri() == uri
                                            ? ResolvedPrefix{parent->GetStartPrefix(), false}
                                            : Resolve(element, uri);
        element.SetStartPrefix(resolved.prefix);
        return {resolved.prefix, resolved.declare, false};
    }

    /// The declarations of that start tag, in the order they are written:
    /// calls `declare(prefix, uri)` for each; prefix "" declares the
    /// default namespace (uri "" undeclares it). `documentDefault` and
    /// `announced` (the pending map) are given for the root element only.
    template <typename Declare>
    static void Declarations(const Context& element, const ElementStart& start, const std::string* documentDefault,
                             const CXmlWriter::NamespaceMap* announced, Declare&& declare) {
        static const std::string none;
        if (start.declarePrefix) declare(*start.prefix, element.GetNamespaceUri());
        if (!announced) {
            if (start.undeclaredDefault) declare(none, none);
            return;
        }
        // The root: its default namespace (when undeclared, nothing is in
        // force at the root to undo), then the announced prefixes in
        // namespace URI order; "xml" is bound without a declaration.
        if (!start.undeclaredDefault && documentDefault && !documentDefault->empty()) declare(none, *documentDefault);
        for (const auto& entry : *announced) {
            if (entry.first != CXmlWriter::XML_NAMESPACE) declare(entry.second, entry.first);
        }
    }

    /// An attribute name: no prefix without a namespace; otherwise always
    /// one, even for the default namespace.
    static ResolvedPrefix Attribute(Context& element, const std::string& uri) {
        if (uri.empty()) return {nullptr, false};
        return Resolve(element, uri);
    }

    /// The prefix of an xsi:type value's QName: none for a type without a
    /// namespace or in the default namespace.
    static ResolvedPrefix TypeValue(Context& element, const std::string& typeUri) {
        if (typeUri.empty() || typeUri == element.GetDefaultNamespace()) return {nullptr, false};
        return Resolve(element, typeUri);
    }

    /// The prefix of the element's end tag (the one its start tag used).
    static const std::string* EndElement(const Context& element) {
        const std::string& uri = element.GetNamespaceUri();
        if (uri.empty() || uri == element.GetDefaultNamespace()) return nullptr;
        if (const std::string* prefix = element.GetStartPrefix()) return prefix;
        return &element.GetNamespaceMapValue(uri);
    }

private:
    /// The prefix bound to uri in scope, inventing and binding one if none.
    static ResolvedPrefix Resolve(Context& element, const std::string& uri) {
        CXmlWriter::NamespaceMap& scope = element.GetNamespaceMap();
        auto found = scope.find(uri);
        if (found != scope.end()) return {&found->second, false};
        return {&element.InventPrefix(uri), true};
    }
};

}  // namespace detail
}  // namespace KvXmlLib10
