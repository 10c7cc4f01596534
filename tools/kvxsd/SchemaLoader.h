// SchemaLoader.h - reads schema documents with expat and follows their
// xs:include / xs:import, never over the network.
#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Diagnostics.h"
#include "Options.h"
#include "SchemaModel.h"

namespace kvxsd {

extern const char* const kXsNamespace;
extern const char* const kXmlNamespace;  ///< bound to the prefix xml without a declaration

/// One element of the XML Schema namespace. Foreign elements (annotations'
/// content, extension elements) are not kept. QName-valued attributes (type,
/// ref, base, itemType, substitutionGroup) hold their resolved form
/// "{namespace}local" so that later stages need no prefix bindings.
struct Node {
    std::string local;
    SourcePos pos;
    int32_t doc = -1;  ///< index into SchemaSet::docs
    Node* parent = nullptr;
    std::vector<std::pair<std::string, std::string>> attrs;
    std::vector<Node*> children;

    const std::string* Attr(const char* name) const;
    std::string AttrOr(const char* name, const std::string& fallback) const;
};

/// One loaded document; a chameleon include of one file into several target
/// namespaces is loaded once per namespace.
struct SchemaDoc {
    int32_t file = -1;
    std::string targetNamespace;  ///< effective (the includer's for a chameleon include)
    bool elementQualified = false;
    bool attributeQualified = false;
    int32_t mainSchema = -1;  ///< the command-line schema that first reached it
    Node* root = nullptr;
};

struct SchemaSet {
    std::vector<std::string> files;  ///< display paths, in load order
    std::vector<SchemaDoc> docs;     ///< in load order
    std::deque<Node> nodes;          ///< owns every Node
};

/// "{ns}local" for a QName key.
std::string QKey(const std::string& ns, const std::string& local);
/// "local" or "{ns}local" as written in messages.
std::string QDisplay(const std::string& key);
std::string QLocal(const std::string& key);
std::string QNamespace(const std::string& key);

/// Loads the main schemas of options and everything they reach. Errors go to
/// diags; returns normally unless Diagnostics stops the run.
void LoadSchemas(const Options& options, SchemaSet& set, Diagnostics& diags);

}  // namespace kvxsd
