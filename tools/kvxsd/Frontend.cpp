// Frontend.cpp - resolution of a loaded schema set into kvxsd's Model: the
// order of the steps and the symbol tables.
#include "Frontend.h"

#include <algorithm>

#include "Resolver.h"

namespace kvxsd {

void Resolver::Run() {
    m_model.files = m_set.files;
    Collect();
    for (const SchemaDoc& doc : m_set.docs) {
        if (!doc.root) continue;
        for (const Node* child : doc.root->children) {
            if (child->local == "simpleType") ValueOfNode(child, child->AttrOr("name", ""));
            if (child->local == "complexType") ClassForType(child);
            if (child->local == "element") GlobalElementIndex(child);
        }
    }
    for (size_t i = 0; i < m_set.docs.size(); ++i) {
        if (!m_set.docs[i].root) continue;
        for (const Node* child : m_set.docs[i].root->children)
            if (child->local == "element") FillGlobalElement(child);
    }
    while (!m_work.empty()) {
        const int32_t next = m_work.front();
        m_work.pop_front();
        BuildClass(next);
    }
    ResolveSubstitutions();
    OrderClasses();
    InheritGroups();
    InheritValues();
    MarkPolymorphism();
    AssignPropertyIds();
    AssignNames();
    AssignSchemas();
}

void Resolver::Collect() {
    for (const SchemaDoc& doc : m_set.docs) {
        if (!doc.root) continue;
        ScanUnsupported(doc.root);
        for (const Node* child : doc.root->children) {
            const std::string& what = child->local;
            std::unordered_map<std::string, const Node*>* table = nullptr;
            if (what == "simpleType" || what == "complexType") table = &m_types;
            else if (what == "element") table = &m_elements;
            else if (what == "attribute") table = &m_attributes;
            else if (what == "group") table = &m_groups;
            else if (what == "attributeGroup") table = &m_attributeGroups;
            if (!table) continue;
            const std::string* name = child->Attr("name");
            if (!name || name->empty()) {
                m_diags.Error(child->pos, "a global xs:" + what + " needs a name");
                continue;
            }
            const std::string key = QKey(doc.targetNamespace, *name);
            auto inserted = table->emplace(key, child);
            if (!inserted.second) {
                const char* kind = table == &m_types ? "type" : what.c_str();
                m_diags.Error(child->pos, std::string("duplicate ") + kind + " '" + *name + "' (first defined at " +
                                              m_diags.Where(inserted.first->second->pos) + ")");
            }
        }
    }
}

// XML Schema 1.1 constructs and what binds to nothing, anywhere in a document.
void Resolver::ScanUnsupported(const Node* root) {
    static const std::unordered_set<std::string> v11 = {
        "assert", "assertion", "alternative", "openContent", "defaultOpenContent", "explicitTimezone"};
    std::vector<const Node*> stack{root};
    while (!stack.empty()) {
        const Node* node = stack.back();
        stack.pop_back();
        const std::string& what = node->local;
        if (v11.count(what)) m_diags.Error(node->pos, "xs:" + what + " is not supported (XML Schema 1.1)");
        else if (what == "key" || what == "keyref" || what == "unique")
            m_diags.Note(node->pos, "xs:" + what + " skipped: identity constraints bind to nothing");
        else if (what == "notation")
            m_diags.Note(node->pos, "xs:notation skipped: notations bind to nothing");
        for (auto it = node->children.rbegin(); it != node->children.rend(); ++it) stack.push_back(*it);
    }
}

const Node* Resolver::Lookup(const std::unordered_map<std::string, const Node*>& table, const std::string& key,
                             const char* kind, const Node* from) {
    auto it = table.find(key);
    if (it != table.end()) return it->second;
    m_diags.Error(from->pos, std::string("unknown ") + kind + " '" + QDisplay(key) + "'");
    return nullptr;
}

void ResolveModel(const SchemaSet& set, const Options& options, Model& model, Diagnostics& diags) {
    Resolver(set, options, model, diags).Run();
}

bool BuildModel(const Options& options, Model& model, std::vector<std::string>& messages) {
    SchemaSet set;
    Diagnostics diags(set.files, options.keepGoing);
    try {
        LoadSchemas(options, set, diags);
        if (!diags.HasErrors() || options.keepGoing) ResolveModel(set, options, model, diags);
    } catch (const StopRun&) {
    }
    // Messages in file and line order, whatever the order of discovery.
    std::vector<Diagnostic> sorted = diags.All();
    std::stable_sort(sorted.begin(), sorted.end(), [](const Diagnostic& a, const Diagnostic& b) {
        if (a.pos.file != b.pos.file) return a.pos.file < b.pos.file;
        if (a.pos.line != b.pos.line) return a.pos.line < b.pos.line;
        return a.pos.column < b.pos.column;
    });
    for (const Diagnostic& d : sorted) messages.push_back(diags.Format(d));
    model.files = set.files;
    return !diags.HasErrors();
}

}  // namespace kvxsd
