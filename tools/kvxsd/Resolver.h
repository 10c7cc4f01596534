// Resolver.h - the state of one resolution of a schema set into a Model.
//
// Private to the front end; its steps are spread over the Resolve*.cpp files
// by topic. Everything runs on explicit work lists and memo tables: recursive
// types and groups terminate, and no C++ recursion follows the depth of the input.
#pragma once

#include <cstdint>
#include <deque>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "BuiltInTypes.h"
#include "Diagnostics.h"
#include "Options.h"
#include "SchemaLoader.h"
#include "SchemaModel.h"

namespace kvxsd {

inline bool IsXsKey(const std::string& key) { return QNamespace(key) == kXsNamespace; }

// Per-class facts needed while resolving, beside the Model's Class.
struct ClassWork {
    const Node* node = nullptr;  // complexType, or the compositor of a pseudo element
    std::string path;            // naming path: "Type", "element" or "owner/element" (bounded length)
    std::string wantedName;      // preferred C++ stem before "C"
    bool named = false;          // a global complex type: named first
    bool inheritsValue = false;  // simple content taken from the base class
    const Node* valueFacets = nullptr;  // simple content restriction of a complex base
    int32_t lastPropertyId = 0;
    int32_t order = -1;          // final position
};

struct MemberFixup {
    int32_t cls;
    size_t member;
    int32_t element;  // referenced global element
};

class Resolver {
public:
    Resolver(const SchemaSet& set, const Options& options, Model& model, Diagnostics& diags)
        : m_set(set), m_options(options), m_model(model), m_diags(diags) {
        for (const auto& r : options.renames) m_overrides[r.first] = r.second;
    }

    void Run();

private:
    const SchemaDoc& DocOf(const Node* node) const { return m_set.docs[node->doc]; }

    // Frontend: symbol tables
    void Collect();
    void ScanUnsupported(const Node* root);
    const Node* Lookup(const std::unordered_map<std::string, const Node*>& table, const std::string& key,
                       const char* kind, const Node* from);

    // ResolveValues: simple types
    static int32_t ParseCount(const std::string& raw, bool& ok);
    ValueType FromBuiltIn(const std::string& key);
    static bool IsListType(const ValueType& value);
    bool IsBuiltInSimple(const std::string& key) const { return IsXsKey(key) && BuiltIns().count(QLocal(key)); }
    ValueType ValueOfKey(const std::string& key, const Node* from);
    ValueType ValueOfNode(const Node* start, const std::string& ownerPath);
    void ApplyFacets(const Node& simpleType, ValueType& value, const std::string& ownerPath);
    void ApplyRestriction(const Node& restriction, ValueType& value, const std::string& typeName, const Node& owner);

    // ResolveClasses: classes and elements
    int32_t NewClass(const Node* node, const std::string& path, const std::string& wanted, bool named);
    int32_t ClassForType(const Node* type);
    int32_t AnonymousClass(const Node* type, const std::string& path, const std::string& elementName,
                           const std::string& elementNs);
    int32_t PseudoClass(const Node* compositor, const std::string& path, const std::string& wanted);
    int32_t GlobalElementIndex(const Node* element);
    int32_t TypeOfElement(const Node* element, const std::string& path, const std::string& name, const std::string& ns,
                          ValueType& value, bool& anyType);
    void FillGlobalElement(const Node* element);
    static bool IsCompositor(const std::string& what);
    static Group GroupOf(const std::string& what);
    bool Occurs(const Node* particle, uint32_t& minOccurs, uint32_t& maxOccurs);
    static Cardinality CardinalityOf(uint32_t minOccurs, uint32_t maxOccurs, Group group);
    /// The declaration's fixed value, else its default, into a member or an
    /// attribute; false when it has neither.
    template <typename Target>
    static bool ReadValueConstraint(const Node* decl, Target& target) {
        if (const std::string* fixed = decl->Attr("fixed")) {
            target.hasFixed = true;
            target.defaultValue = *fixed;
        } else if (const std::string* def = decl->Attr("default")) {
            target.hasDefault = true;
            target.defaultValue = *def;
        } else {
            return false;
        }
        return true;
    }
    void BuildClass(int32_t index);
    void SetValue(int32_t index, const ValueType& value);
    void SetBase(int32_t index, const Node* baseType, const Node* at);

    // ResolveMembers: particles and attributes
    const Node* GroupCompositor(const Node* ref);
    void TopParticle(int32_t index, const Node* particle);
    void AddPseudoMember(int32_t owner, const Node* particle, const Node* compositor, uint32_t minOccurs,
                         uint32_t maxOccurs, Group ownerGroup);
    void ExpandParticles(int32_t owner, const Node* compositor);
    void AddElementMember(int32_t owner, const Node* particle, uint32_t minOccurs, uint32_t maxOccurs, Group group);
    Wildcard WildcardOf(const Node* node);
    void AddWildcardMember(int32_t owner, const Node* particle, uint32_t minOccurs, uint32_t maxOccurs, Group group);
    void ExpandAttributes(int32_t owner, const Node* holder);
    void AddAttribute(int32_t owner, const Node* item, std::unordered_set<std::string>& seen);

    // ResolveHierarchy: after every class is built
    void ResolveSubstitutions();
    // ResolveSubstitutions: references to heads become choices
    void ExpandSubstitution(const MemberFixup& f);
    Member Alternative(int32_t element);
    void OrderClasses();
    void InheritGroups();
    void InheritValues();
    void MarkPolymorphism();
    void AssignPropertyIds();

    // ResolveNames: names and main schemas
    void AssignNames();
    std::string SchemaStem(int32_t schema) const;
    int32_t OwnerSchema(const SourcePos& pos);
    void AssignSchemas();

    const SchemaSet& m_set;
    const Options& m_options;
    Model& m_model;
    Diagnostics& m_diags;
    std::unordered_map<std::string, std::string> m_overrides;
    std::unordered_map<std::string, const Node*> m_types, m_elements, m_attributes, m_groups, m_attributeGroups;
    std::unordered_map<const Node*, ValueType> m_values;
    std::unordered_map<const Node*, int32_t> m_classOf;
    std::unordered_map<const Node*, int32_t> m_elementIndex;
    std::vector<const Node*> m_elementNodes;
    std::vector<ClassWork> m_classWork;
    std::deque<int32_t> m_work;
    std::vector<MemberFixup> m_fixups;
    std::vector<std::vector<int32_t>> m_substitutes;
    std::unordered_map<int32_t, int32_t> m_headChoice;  // head element -> its pseudo choice class
    std::vector<int32_t> m_fileSchema;
};

}  // namespace kvxsd
