// NamespaceScope.h - the prefixes bound around the element being read, for a parser run without namespaces.
//
// Expat's namespace mode builds a "uri<separator>local" string for every
// name it reports, a copy per name. The streamer runs expat without it and
// resolves names here instead, against the few bindings a document makes,
// keeping the namespace errors expat would have reported.
#pragma once

#include <expat.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kvxml_cli {

/// Splits a QName into prefix ("" for none) and local part; false when it
/// is no QName (a colon first, last or twice).
bool SplitQName(const char* name, std::string_view& prefix, std::string_view& local);

class NamespaceScope {
public:
    NamespaceScope();

    /// Before the declarations of a start tag.
    void OpenElement() { m_marks.push_back(m_bindings.size()); }
    /// Drops the bindings the element's start tag made (mostly none).
    void CloseElement() {
        if (m_marks.back() == m_bindings.size()) {
            m_marks.pop_back();
            return;
        }
        DropBindings();
    }
    /// Binds `prefix` ("" the default namespace; uri "" undeclares it) for
    /// the element opened last. XML_ERROR_NONE, or the error expat reports
    /// for the declaration.
    XML_Error Declare(std::string_view prefix, std::string_view uri);

    /// The namespace a prefix stands for (the default one for ""; empty
    /// for none there); null for an unbound prefix. The string stays, same
    /// address and text, while Generation() stays.
    const std::string* Find(std::string_view prefix) {
        if (prefix.empty()) return m_default;
        if (m_cachedUri && prefix == m_cachedPrefix) return m_cachedUri;
        return FindBound(prefix);
    }
    /// Changes whenever a binding is made or dropped.
    uint64_t Generation() const { return m_generation; }

private:
    struct Binding {
        std::string prefix;
        std::string uri;
        const Binding* shadowed;  // the binding of the prefix before, or null
    };

    const std::string* FindBound(std::string_view prefix);
    void DropBindings();
    void Forget();

    // A deque: the uri strings must not move while views of them are out.
    std::deque<Binding> m_bindings;
    std::map<std::string, const Binding*, std::less<>> m_inForce;
    std::vector<std::size_t> m_marks;
    const std::string* m_default;
    // Most prefixed names use the prefix the one before used.
    std::string m_cachedPrefix;
    const std::string* m_cachedUri = nullptr;
    uint64_t m_generation = 0;
};

}  // namespace kvxml_cli
