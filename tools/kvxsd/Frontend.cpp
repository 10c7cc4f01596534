// Frontend.cpp - resolution of a loaded schema set into kvxsd's Model.
//
// Everything runs on explicit work lists and memo tables: recursive types and
// groups terminate, and no C++ recursion follows the depth of the input.
#include "Frontend.h"

#include <algorithm>
#include <cstdlib>
#include <unordered_map>
#include <unordered_set>

#include "BuiltInTypes.h"
#include "Naming.h"

namespace kvxsd {

namespace {

bool IsXsKey(const std::string& key) { return QNamespace(key) == kXsNamespace; }

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

    void Run() {
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

private:
    const SchemaDoc& DocOf(const Node* node) const { return m_set.docs[node->doc]; }

    // ---- symbol tables -------------------------------------------------

    void Collect() {
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
    void ScanUnsupported(const Node* root) {
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

    const Node* Lookup(const std::unordered_map<std::string, const Node*>& table, const std::string& key,
                       const char* kind, const Node* from) {
        auto it = table.find(key);
        if (it != table.end()) return it->second;
        m_diags.Error(from->pos, std::string("unknown ") + kind + " '" + QDisplay(key) + "'");
        return nullptr;
    }

    // ---- simple types --------------------------------------------------

    // A non-negative count; values beyond 32 bits are clamped (they mean "many").
    static int32_t ParseCount(const std::string& raw, bool& ok) {
        const size_t first = raw.find_first_not_of(" \t\r\n");
        const size_t last = raw.find_last_not_of(" \t\r\n");
        const std::string text = first == std::string::npos ? std::string() : raw.substr(first, last - first + 1);
        ok = !text.empty() && text.find_first_not_of("0123456789") == std::string::npos;
        if (!ok) return -1;
        const unsigned long long v = std::strtoull(text.c_str(), nullptr, 10);
        return v > INT32_MAX ? INT32_MAX : static_cast<int32_t>(v);
    }

    ValueType FromBuiltIn(const std::string& key) {
        ValueType value;
        const BuiltIn& b = BuiltIns().at(QLocal(key));
        value.item = b.item;
        value.whitespace = b.whitespace;
        value.builtin = QLocal(key);
        if (b.minInclusive) value.facets.minInclusive = b.minInclusive;
        if (b.maxInclusive) value.facets.maxInclusive = b.maxInclusive;
        return value;
    }

    static bool IsListType(const ValueType& value) {
        return value.builtin == "list" || value.builtin == "NMTOKENS" || value.builtin == "IDREFS" ||
               value.builtin == "ENTITIES";
    }

    bool IsBuiltInSimple(const std::string& key) const { return IsXsKey(key) && BuiltIns().count(QLocal(key)); }

    // The value of a simple type given by name; from is where it was referenced.
    ValueType ValueOfKey(const std::string& key, const Node* from) {
        if (IsBuiltInSimple(key)) return FromBuiltIn(key);
        const Node* type = Lookup(m_types, key, "type", from);
        if (!type) return ValueType{};
        if (type->local != "simpleType") {
            m_diags.Error(from->pos, "'" + QDisplay(key) + "' is a complex type where a simple type is expected");
            return ValueType{};
        }
        return ValueOfNode(type, QLocal(key));
    }

    // Walks the derivation chain down to a built-in or a resolved type, then
    // applies the steps from the base up, memoizing each.
    ValueType ValueOfNode(const Node* start, const std::string& ownerPath) {
        auto memo = m_values.find(start);
        if (memo != m_values.end()) return memo->second;
        std::vector<const Node*> steps;  // simpleType nodes, derived first
        std::unordered_set<const Node*> seen;
        ValueType value;
        const Node* node = start;
        while (true) {
            if (!seen.insert(node).second) {
                m_diags.Error(node->pos, "type '" + node->AttrOr("name", ownerPath) + "' derives from itself");
                for (const Node* step : steps) m_values.emplace(step, ValueType{});  // reported once
                return ValueType{};
            }
            auto known = m_values.find(node);
            if (known != m_values.end()) {
                value = known->second;
                break;
            }
            steps.push_back(node);
            const Node* derivation = nullptr;
            for (const Node* child : node->children)
                if (child->local == "restriction" || child->local == "list" || child->local == "union")
                    derivation = child;
            if (!derivation) {
                m_diags.Error(node->pos, "xs:simpleType without xs:restriction, xs:list or xs:union");
                return ValueType{};
            }
            if (derivation->local != "restriction") {
                m_diags.Warning(derivation->pos, "xs:" + derivation->local + " is held as a string");
                value = ValueType{};
                value.whitespace = derivation->local == "list" ? Whitespace::Collapse : Whitespace::Preserve;
                value.builtin = derivation->local;
                value.degraded = true;
                steps.back() = nullptr;  // nothing of its own to apply
                break;
            }
            const std::string* base = derivation->Attr("base");
            const Node* next = nullptr;
            if (base) {
                if (IsBuiltInSimple(*base)) {
                    value = FromBuiltIn(*base);
                    break;
                }
                next = Lookup(m_types, *base, "type", derivation);
                if (!next) return ValueType{};
                if (next->local != "simpleType") {
                    m_diags.Error(derivation->pos, "simple type restricts the complex type '" + QDisplay(*base) + "'");
                    return ValueType{};
                }
            } else {
                for (const Node* child : derivation->children)
                    if (child->local == "simpleType") next = child;
                if (!next) {
                    m_diags.Error(derivation->pos, "xs:restriction needs a base or an xs:simpleType");
                    return ValueType{};
                }
            }
            node = next;
        }
        for (auto it = steps.rbegin(); it != steps.rend(); ++it) {
            if (*it) ApplyFacets(**it, value, ownerPath);
            if (*it) m_values.emplace(*it, value);
        }
        if (!steps.empty() && !steps.front()) m_values.emplace(start, value);
        return value;
    }

    void ApplyFacets(const Node& simpleType, ValueType& value, const std::string& ownerPath) {
        const Node* restriction = nullptr;
        for (const Node* child : simpleType.children)
            if (child->local == "restriction") restriction = child;
        if (restriction) ApplyRestriction(*restriction, value, simpleType.AttrOr("name", ownerPath), simpleType);
    }

    void ApplyRestriction(const Node& restriction, ValueType& value, const std::string& typeName, const Node& owner) {
        std::string pattern;
        std::vector<const Node*> enumValues;
        for (const Node* facet : restriction.children) {
            const std::string& what = facet->local;
            const std::string text = facet->AttrOr("value", "");
            bool ok = true;
            if (what == "pattern") pattern = pattern.empty() ? text : "(" + pattern + ")|(" + text + ")";
            else if (what == "enumeration") enumValues.push_back(facet);
            else if (what == "length" || what == "minLength" || what == "maxLength") {
                int32_t& facet = what == "length"      ? value.facets.length
                                 : what == "minLength" ? value.facets.minLength
                                                       : value.facets.maxLength;
                facet = ParseCount(text, ok);
                // On a list the lengths count items, which a string check cannot do.
                if (IsListType(value)) facet = -1;
            }
            else if (what == "minInclusive") value.facets.minInclusive = text;
            else if (what == "maxInclusive") value.facets.maxInclusive = text;
            else if (what == "minExclusive") value.facets.minExclusive = text;
            else if (what == "maxExclusive") value.facets.maxExclusive = text;
            else if (what == "whiteSpace") {
                if (text == "preserve") value.whitespace = Whitespace::Preserve;
                else if (text == "replace") value.whitespace = Whitespace::Replace;
                else if (text == "collapse") value.whitespace = Whitespace::Collapse;
                else ok = false;
            } else if (what == "totalDigits" || what == "fractionDigits") {
                (what == "totalDigits" ? value.facets.totalDigits : value.facets.fractionDigits) =
                    ParseCount(text, ok);
                m_diags.Warning(facet->pos, "xs:" + what + " is not checked at run time");
            }
            if (!ok) m_diags.Error(facet->pos, "invalid value '" + text + "' for xs:" + what);
        }
        if (!pattern.empty()) {
            if (!value.facets.pattern.empty())
                m_diags.Warning(restriction.pos, "several pattern steps: only the most derived pattern is checked");
            value.facets.pattern = pattern;
        }
        if (!enumValues.empty()) {
            Enumeration e;
            e.xmlName = typeName;
            e.ns = m_set.docs[owner.doc].targetNamespace;
            e.pos = owner.pos;
            std::unordered_set<std::string> seen;
            for (const Node* v : enumValues) {
                const std::string text = v->AttrOr("value", "");
                if (seen.insert(text).second) e.values.push_back(EnumValue{text, std::string()});
            }
            value.enumeration = static_cast<int32_t>(m_model.enumerations.size());
            m_model.enumerations.push_back(std::move(e));
        }
    }

    // ---- classes -------------------------------------------------------

    int32_t NewClass(const Node* node, const std::string& path, const std::string& wanted, bool named) {
        const int32_t index = static_cast<int32_t>(m_model.classes.size());
        m_model.classes.emplace_back();
        ClassWork w;
        w.node = node;
        w.path = path;
        w.wantedName = wanted;
        w.named = named;
        m_classWork.push_back(w);
        m_classOf.emplace(node, index);
        m_model.classes[index].pos = node->pos;
        m_work.push_back(index);
        return index;
    }

    int32_t ClassForType(const Node* type) {
        auto known = m_classOf.find(type);
        if (known != m_classOf.end()) return known->second;
        const std::string name = type->AttrOr("name", "");
        const int32_t index = NewClass(type, name, name, true);
        Class& c = m_model.classes[index];
        c.xmlName = name;
        c.ns = DocOf(type).targetNamespace;
        c.elementName = name;
        c.elementNs = c.ns;
        c.abstract = type->AttrOr("abstract", "false") == "true";
        return index;
    }

    int32_t AnonymousClass(const Node* type, const std::string& path, const std::string& elementName,
                           const std::string& elementNs) {
        auto known = m_classOf.find(type);
        if (known != m_classOf.end()) return known->second;
        const int32_t index = NewClass(type, path, elementName, false);
        Class& c = m_model.classes[index];
        c.xmlName = elementName;
        c.ns = elementNs;
        c.elementName = elementName;
        c.elementNs = elementNs;
        c.anonymous = true;
        return index;
    }

    int32_t PseudoClass(const Node* compositor, const std::string& path, const std::string& wanted) {
        auto known = m_classOf.find(compositor);
        if (known != m_classOf.end()) return known->second;
        const int32_t index = NewClass(compositor, path, wanted, false);
        Class& c = m_model.classes[index];
        c.xmlName = wanted;
        c.ns = DocOf(compositor).targetNamespace;
        c.elementName = wanted;
        c.elementNs = c.ns;
        c.anonymous = true;
        c.elementKind = ElementKind::Pseudo;
        return index;
    }

    int32_t GlobalElementIndex(const Node* element) {
        auto known = m_elementIndex.find(element);
        if (known != m_elementIndex.end()) return known->second;
        const int32_t index = static_cast<int32_t>(m_model.elements.size());
        m_elementIndex.emplace(element, index);
        GlobalElement g;
        g.xmlName = element->AttrOr("name", "");
        g.ns = DocOf(element).targetNamespace;
        g.pos = element->pos;
        g.abstract = element->AttrOr("abstract", "false") == "true";
        g.nillable = element->AttrOr("nillable", "false") == "true";
        m_model.elements.push_back(g);
        m_elementNodes.push_back(element);
        return index;
    }

    // Type of an element declaration: class index, or -1 with value filled.
    int32_t TypeOfElement(const Node* element, const std::string& path, const std::string& name,
                          const std::string& ns, ValueType& value, bool& anyType) {
        anyType = false;
        if (const std::string* type = element->Attr("type")) {
            if (IsBuiltInSimple(*type)) {
                value = FromBuiltIn(*type);
                return -1;
            }
            if (IsXsKey(*type) && QLocal(*type) == "anyType") {
                anyType = true;
                return -1;
            }
            const Node* node = Lookup(m_types, *type, "type", element);
            if (!node) return -1;
            if (node->local == "complexType") return ClassForType(node);
            value = ValueOfNode(node, QLocal(*type));
            return -1;
        }
        for (const Node* child : element->children) {
            if (child->local == "complexType") return AnonymousClass(child, path, name, ns);
            if (child->local == "simpleType") {
                value = ValueOfNode(child, path);
                return -1;
            }
        }
        anyType = !element->Attr("substitutionGroup");
        return -1;
    }

    void FillGlobalElement(const Node* element) {
        const int32_t index = GlobalElementIndex(element);
        GlobalElement& g = m_model.elements[index];
        ValueType value;
        bool anyType = false;
        const int32_t cls = TypeOfElement(element, g.xmlName, g.xmlName, g.ns, value, anyType);
        GlobalElement& after = m_model.elements[index];
        after.classIndex = cls;
        after.value = value;
        if (const std::string* head = element->Attr("substitutionGroup")) {
            // XSD 1.1 allows a list; the first head is the one bound.
            std::string first = *head;
            const size_t space = first.find(' ');
            if (space != std::string::npos) first.resize(space);
            if (const Node* h = Lookup(m_elements, first, "element", element))
                m_model.elements[index].substitutionHead = GlobalElementIndex(h);
        }
        if (cls >= 0 && m_model.elements[index].nillable) m_model.classes[cls].nillable = true;
    }

    static bool IsCompositor(const std::string& what) {
        return what == "sequence" || what == "choice" || what == "all";
    }

    static Group GroupOf(const std::string& what) {
        return what == "choice" ? Group::Choice : what == "all" ? Group::All : Group::Sequence;
    }

    bool Occurs(const Node* particle, uint32_t& minOccurs, uint32_t& maxOccurs) {
        bool ok = true;
        minOccurs = 1;
        maxOccurs = 1;
        if (const std::string* min = particle->Attr("minOccurs")) {
            const int32_t v = ParseCount(*min, ok);
            if (ok) minOccurs = static_cast<uint32_t>(v);
            else m_diags.Error(particle->pos, "invalid minOccurs '" + *min + "'");
        }
        if (const std::string* max = particle->Attr("maxOccurs")) {
            if (*max == "unbounded") {
                maxOccurs = kUnbounded;
            } else {
                const int32_t v = ParseCount(*max, ok);
                if (ok) maxOccurs = static_cast<uint32_t>(v);
                else m_diags.Error(particle->pos, "invalid maxOccurs '" + *max + "'");
            }
        }
        if (ok && maxOccurs < minOccurs) {
            m_diags.Error(particle->pos, "maxOccurs is less than minOccurs");
            ok = false;
        }
        return ok;
    }

    static Cardinality CardinalityOf(uint32_t minOccurs, uint32_t maxOccurs, Group group) {
        if (maxOccurs > 1) return Cardinality::Col;
        if (minOccurs == 0 || group == Group::Choice) return Cardinality::Opt;
        return Cardinality::Mnd;
    }

    void BuildClass(int32_t index) {
        const Node* node = m_classWork[index].node;
        if (node->local != "complexType") {
            // A pseudo element: the compositor's particles are the members.
            m_model.classes[index].group = GroupOf(node->local);
            ExpandParticles(index, node);
            return;
        }
        const Node* contentHolder = node;
        bool mixed = node->AttrOr("mixed", "false") == "true";
        for (const Node* child : node->children) {
            if (child->local != "simpleContent" && child->local != "complexContent") continue;
            if (child->AttrOr("mixed", mixed ? "true" : "false") == "true") mixed = true;
            else if (child->Attr("mixed")) mixed = false;
            const Node* derivation = nullptr;
            for (const Node* d : child->children)
                if (d->local == "extension" || d->local == "restriction") derivation = d;
            if (!derivation) {
                m_diags.Error(child->pos, "xs:" + child->local + " without xs:extension or xs:restriction");
                return;
            }
            const std::string base = derivation->AttrOr("base", "");
            if (child->local == "simpleContent") {
                if (IsBuiltInSimple(base) || (m_types.count(base) && m_types.at(base)->local == "simpleType")) {
                    ValueType value = ValueOfKey(base, derivation);
                    if (derivation->local == "restriction")
                        ApplyRestriction(*derivation, value, m_classWork[index].path, *node);
                    SetValue(index, value);
                } else if (const Node* baseType = Lookup(m_types, base, "type", derivation)) {
                    SetBase(index, baseType, derivation);
                    m_classWork[index].inheritsValue = true;
                    if (derivation->local == "restriction") m_classWork[index].valueFacets = derivation;
                }
                ExpandAttributes(index, derivation);
                return;
            }
            // complex content
            if (IsXsKey(base) && QLocal(base) == "anyType") {
                contentHolder = derivation;
            } else if (const Node* baseType = Lookup(m_types, base, "type", derivation)) {
                if (baseType->local != "complexType") {
                    m_diags.Error(derivation->pos, "complex content derives from the simple type '" +
                                                       QDisplay(base) + "'");
                    return;
                }
                SetBase(index, baseType, derivation);
                if (derivation->local == "restriction") {
                    m_diags.Warning(derivation->pos,
                                    "complex content restriction is bound as its base type");
                    return;
                }
                contentHolder = derivation;
            } else {
                return;
            }
        }
        if (mixed) {
            m_diags.Warning(node->pos,
                            "mixed content: the text is held in one member; the order of text and children is not kept");
            m_model.classes[index].mixed = true;
            ValueType text;
            SetValue(index, text);
        }
        const Node* particle = nullptr;
        for (const Node* child : contentHolder->children)
            if (IsCompositor(child->local) || child->local == "group") particle = child;
        if (particle) TopParticle(index, particle);
        ExpandAttributes(index, contentHolder);
    }

    void SetValue(int32_t index, const ValueType& value) {
        Class& c = m_model.classes[index];
        c.value = value;
        c.valuePropertyId = 0;  // numbered later
    }

    void SetBase(int32_t index, const Node* baseType, const Node* at) {
        if (baseType == m_classWork[index].node) {
            m_diags.Error(at->pos, "type '" + baseType->AttrOr("name", "") + "' derives from itself");
            return;
        }
        m_model.classes[index].baseClass = ClassForType(baseType);
    }

    // The compositor of a group reference (null after an error).
    const Node* GroupCompositor(const Node* ref) {
        const Node* group = Lookup(m_groups, ref->AttrOr("ref", ""), "group", ref);
        if (!group) return nullptr;
        for (const Node* child : group->children)
            if (IsCompositor(child->local)) return child;
        m_diags.Error(group->pos, "xs:group without xs:sequence, xs:choice or xs:all");
        return nullptr;
    }

    void TopParticle(int32_t index, const Node* particle) {
        const Node* compositor = particle;
        uint32_t minOccurs = 1, maxOccurs = 1;
        if (!Occurs(particle, minOccurs, maxOccurs)) return;
        if (particle->local == "group") {
            if (!particle->Attr("ref")) {
                m_diags.Error(particle->pos, "a local xs:group needs a ref");
                return;
            }
            compositor = GroupCompositor(particle);
            if (!compositor) return;
        }
        const bool derived = m_model.classes[index].baseClass >= 0;
        if (minOccurs == 1 && maxOccurs == 1 && (!derived || compositor->local == "sequence")) {
            m_model.classes[index].group = GroupOf(compositor->local);
            ExpandParticles(index, compositor);
            return;
        }
        m_model.classes[index].group = Group::Sequence;
        AddPseudoMember(index, particle, compositor, minOccurs, maxOccurs, Group::Sequence);
    }

    void AddPseudoMember(int32_t owner, const Node* particle, const Node* compositor, uint32_t minOccurs,
                         uint32_t maxOccurs, Group ownerGroup) {
        // A named group's class is shared by its users; an inline compositor is
        // named after its owner ("OrderChoice").
        const bool named = particle->local == "group";
        const std::string wanted = named ? QLocal(particle->AttrOr("ref", "")) : compositor->local;
        const std::string path = m_classWork[owner].wantedName + "/" + wanted;
        const int32_t cls =
            PseudoClass(compositor, path, named ? wanted : m_classWork[owner].wantedName + "-" + wanted);
        Member m;
        m.xmlName = named ? wanted : wanted + "-group";
        m.ns = DocOf(compositor).targetNamespace;
        m.kind = MemberKind::Cls;
        m.elementKind = ElementKind::Pseudo;
        m.classIndex = cls;
        m.minOccurs = minOccurs;
        m.maxOccurs = maxOccurs;
        m.cardinality = CardinalityOf(minOccurs, maxOccurs, ownerGroup);
        m.pos = particle->pos;
        m_model.classes[owner].members.push_back(std::move(m));
    }

    // The particles of a compositor become members; a sequence inside a
    // sequence through a group reference of one occurrence is inlined.
    void ExpandParticles(int32_t owner, const Node* compositor) {
        const Group group = GroupOf(compositor->local);
        struct Frame {
            const Node* node;
            size_t next;
        };
        std::vector<Frame> stack{{compositor, 0}};
        std::vector<const Node*> active{compositor};
        while (!stack.empty()) {
            Frame& frame = stack.back();
            if (frame.next >= frame.node->children.size()) {
                stack.pop_back();
                active.pop_back();
                continue;
            }
            const Node* particle = frame.node->children[frame.next++];
            const std::string& what = particle->local;
            uint32_t minOccurs = 1, maxOccurs = 1;
            if (what == "element") {
                if (Occurs(particle, minOccurs, maxOccurs)) AddElementMember(owner, particle, minOccurs, maxOccurs, group);
            } else if (what == "any") {
                if (Occurs(particle, minOccurs, maxOccurs)) AddWildcardMember(owner, particle, minOccurs, maxOccurs, group);
            } else if (IsCompositor(what)) {
                if (Occurs(particle, minOccurs, maxOccurs))
                    AddPseudoMember(owner, particle, particle, minOccurs, maxOccurs, group);
            } else if (what == "group") {
                if (!Occurs(particle, minOccurs, maxOccurs)) continue;
                const Node* target = GroupCompositor(particle);
                if (!target) continue;
                if (std::find(active.begin(), active.end(), target) != active.end()) {
                    m_diags.Error(particle->pos, "group '" + QDisplay(particle->AttrOr("ref", "")) + "' contains itself");
                    continue;
                }
                if (minOccurs == 1 && maxOccurs == 1 && group == Group::Sequence && target->local == "sequence") {
                    stack.push_back(Frame{target, 0});
                    active.push_back(target);
                } else {
                    AddPseudoMember(owner, particle, target, minOccurs, maxOccurs, group);
                }
            }
        }
    }

    void AddElementMember(int32_t owner, const Node* particle, uint32_t minOccurs, uint32_t maxOccurs, Group group) {
        Member m;
        m.minOccurs = minOccurs;
        m.maxOccurs = maxOccurs;
        m.cardinality = CardinalityOf(minOccurs, maxOccurs, group);
        m.pos = particle->pos;
        const Node* decl = particle;
        int32_t global = -1;
        if (const std::string* ref = particle->Attr("ref")) {
            decl = Lookup(m_elements, *ref, "element", particle);
            if (!decl) return;
            global = GlobalElementIndex(decl);
            m.xmlName = QLocal(*ref);
            m.ns = QNamespace(*ref);
        } else {
            m.xmlName = particle->AttrOr("name", "");
            const SchemaDoc& doc = DocOf(particle);
            const std::string form = particle->AttrOr("form", doc.elementQualified ? "qualified" : "unqualified");
            m.ns = form == "qualified" ? doc.targetNamespace : std::string();
        }
        m.nillable = decl->AttrOr("nillable", "false") == "true";
        if (const std::string* fixed = decl->Attr("fixed")) {
            m.hasFixed = true;
            m.defaultValue = *fixed;
        } else if (const std::string* def = decl->Attr("default")) {
            m.hasDefault = true;
            m.defaultValue = *def;
        }
        const std::string path = m_classWork[owner].wantedName + "/" + m.xmlName;
        bool anyType = false;
        if (global >= 0) {
            // A referenced global element's type is resolved with the element.
            const Node* g = decl;
            m.classIndex = TypeOfElement(g, m.xmlName, m.xmlName, m.ns, m.value, anyType);
        } else {
            m.classIndex = TypeOfElement(decl, path, m.xmlName, m.ns, m.value, anyType);
        }
        if (anyType) {
            m_diags.Warning(particle->pos, "element '" + m.xmlName + "' of xs:anyType is held as its text");
            m.value = ValueType{};
        }
        if (m.classIndex >= 0) {
            m.kind = MemberKind::Cls;
            if (m.nillable) m_model.classes[m.classIndex].nillable = true;
        } else {
            m.kind = m.value.enumeration >= 0 ? MemberKind::Enum : MemberKind::Prim;
        }
        Class& c = m_model.classes[owner];
        if (global >= 0) m_fixups.push_back(MemberFixup{owner, c.members.size(), global});
        c.members.push_back(std::move(m));
    }

    Wildcard WildcardOf(const Node* node) {
        Wildcard w;
        w.namespaces = node->AttrOr("namespace", "##any");
        w.targetNamespace = DocOf(node).targetNamespace;
        w.processContents = node->AttrOr("processContents", "strict");
        return w;
    }

    void AddWildcardMember(int32_t owner, const Node* particle, uint32_t minOccurs, uint32_t maxOccurs, Group group) {
        Member m;
        m.kind = MemberKind::Untpd;
        m.minOccurs = minOccurs;
        m.maxOccurs = maxOccurs;
        m.cardinality = CardinalityOf(minOccurs, maxOccurs, group);
        m.wildcard = WildcardOf(particle);
        m.xmlName = "any";
        m.pos = particle->pos;
        m_model.classes[owner].members.push_back(std::move(m));
    }

    void ExpandAttributes(int32_t owner, const Node* holder) {
        struct Frame {
            const Node* node;
            size_t next;
        };
        std::vector<Frame> stack{{holder, 0}};
        std::vector<const Node*> active{holder};
        std::unordered_set<std::string> seen;
        bool haveAny = false;
        while (!stack.empty()) {
            Frame& frame = stack.back();
            if (frame.next >= frame.node->children.size()) {
                stack.pop_back();
                active.pop_back();
                continue;
            }
            const Node* item = frame.node->children[frame.next++];
            if (item->local == "attributeGroup") {
                const std::string ref = item->AttrOr("ref", "");
                const Node* group = Lookup(m_attributeGroups, ref, "attribute group", item);
                if (!group) continue;
                if (std::find(active.begin(), active.end(), group) != active.end()) {
                    m_diags.Error(item->pos, "attribute group '" + QDisplay(ref) + "' contains itself");
                    continue;
                }
                stack.push_back(Frame{group, 0});
                active.push_back(group);
            } else if (item->local == "anyAttribute") {
                if (haveAny) continue;  // several wildcards intersect; the first one is kept
                haveAny = true;
                Attribute a;
                a.kind = Attribute::Kind::Any;
                a.xmlName = "anyAttribute";
                a.wildcard = WildcardOf(item);
                a.pos = item->pos;
                m_model.classes[owner].attributes.push_back(std::move(a));
            } else if (item->local == "attribute") {
                AddAttribute(owner, item, seen);
            }
        }
    }

    void AddAttribute(int32_t owner, const Node* item, std::unordered_set<std::string>& seen) {
        const std::string use = item->AttrOr("use", "optional");
        if (use == "prohibited") return;
        Attribute a;
        a.pos = item->pos;
        a.optional = use != "required";
        const Node* decl = item;
        if (const std::string* ref = item->Attr("ref")) {
            a.xmlName = QLocal(*ref);
            a.ns = QNamespace(*ref);
            auto it = m_attributes.find(*ref);
            if (it != m_attributes.end()) {
                decl = it->second;
            } else if (a.ns == kXmlNamespace) {
                decl = nullptr;  // xml:lang, xml:space... without the xml.xsd document
            } else {
                Lookup(m_attributes, *ref, "attribute", item);
                return;
            }
        } else {
            a.xmlName = item->AttrOr("name", "");
            const SchemaDoc& doc = DocOf(item);
            const bool globalDecl = item->parent && item->parent->local == "schema";
            const std::string form =
                item->AttrOr("form", doc.attributeQualified || globalDecl ? "qualified" : "unqualified");
            a.ns = form == "qualified" ? doc.targetNamespace : std::string();
        }
        if (!seen.insert(QKey(a.ns, a.xmlName)).second) {
            m_diags.Error(item->pos, "duplicate attribute '" + a.xmlName + "'");
            return;
        }
        for (const Node* source : {item, decl}) {
            if (!source) continue;
            if (const std::string* fixed = source->Attr("fixed")) {
                a.hasFixed = true;
                a.defaultValue = *fixed;
                break;
            }
            if (const std::string* def = source->Attr("default")) {
                a.hasDefault = true;
                a.defaultValue = *def;
                break;
            }
        }
        if (decl) {
            if (const std::string* type = decl->Attr("type")) {
                a.value = ValueOfKey(*type, decl);
            } else {
                for (const Node* child : decl->children)
                    if (child->local == "simpleType")
                        a.value = ValueOfNode(child, m_classWork[owner].wantedName + "/@" + a.xmlName);
            }
        }
        a.kind = a.value.enumeration >= 0 ? Attribute::Kind::Enum : Attribute::Kind::Primitive;
        m_model.classes[owner].attributes.push_back(std::move(a));
    }

    // ---- after every class is built ------------------------------------

    void ResolveSubstitutions() {
        const size_t n = m_model.elements.size();
        // Elements without a type of their own take their head's.
        for (size_t i = 0; i < n; ++i) {
            GlobalElement& g = m_model.elements[i];
            if (g.classIndex >= 0 || g.substitutionHead < 0 || m_elementNodes[i]->Attr("type")) continue;
            bool hasInline = false;
            for (const Node* child : m_elementNodes[i]->children)
                hasInline = hasInline || child->local == "complexType" || child->local == "simpleType";
            if (hasInline) continue;
            std::unordered_set<size_t> seen{i};
            int32_t head = g.substitutionHead;
            while (head >= 0 && seen.insert(static_cast<size_t>(head)).second) {
                const GlobalElement& h = m_model.elements[head];
                if (h.classIndex >= 0 || h.substitutionHead < 0) {
                    g.classIndex = h.classIndex;
                    g.value = h.value;
                    break;
                }
                head = h.substitutionHead;
            }
        }
        // Transitive members of every head, in element order.
        std::vector<std::vector<int32_t>> direct(n);
        for (size_t i = 0; i < n; ++i)
            if (m_model.elements[i].substitutionHead >= 0)
                direct[m_model.elements[i].substitutionHead].push_back(static_cast<int32_t>(i));
        m_substitutes.assign(n, {});
        for (size_t head = 0; head < n; ++head) {
            if (direct[head].empty()) continue;
            std::vector<char> seen(n, 0);
            seen[head] = 1;
            std::vector<int32_t> queue = direct[head];
            for (size_t q = 0; q < queue.size(); ++q) {
                const int32_t e = queue[q];
                if (seen[e]) {
                    if (static_cast<size_t>(e) == head)
                        m_diags.Error(m_model.elements[head].pos, "substitution group of '" +
                                                                      m_model.elements[head].xmlName + "' contains itself");
                    continue;
                }
                seen[e] = 1;
                m_substitutes[head].push_back(e);
                for (int32_t next : direct[e]) queue.push_back(next);
            }
            std::sort(m_substitutes[head].begin(), m_substitutes[head].end());
        }
        // Later members first: inlining alternatives into a choice shifts the members after them.
        for (auto f = m_fixups.rbegin(); f != m_fixups.rend(); ++f)
            if (!m_substitutes[f->element].empty()) ExpandSubstitution(*f);
    }

    // A reference to the head of a substitution group becomes a choice among the
    // head (unless abstract) and every member, each under its own element name
    // with its own class: the descriptors match their own element name, so one
    // descriptor for the head could never read a member. In a choice a single
    // reference adds its alternatives to the owner's choice; elsewhere they make
    // one pseudo-element choice class per head, held once or in a collection.
    void ExpandSubstitution(const MemberFixup& f) {
        std::vector<Member> alternatives;
        if (!m_model.elements[f.element].abstract) alternatives.push_back(Alternative(f.element));
        for (int32_t e : m_substitutes[f.element])
            if (!m_model.elements[e].abstract) alternatives.push_back(Alternative(e));
        std::vector<Member>& members = m_model.classes[f.cls].members;
        Member& ref = members[f.member];
        if (m_model.classes[f.cls].group == Group::Choice && ref.maxOccurs == 1) {
            const auto at = members.begin() + static_cast<std::ptrdiff_t>(f.member);
            members.insert(members.erase(at), alternatives.begin(), alternatives.end());
            return;
        }
        auto known = m_headChoice.find(f.element);
        if (known == m_headChoice.end()) {
            const GlobalElement& head = m_model.elements[f.element];
            const int32_t index = static_cast<int32_t>(m_model.classes.size());
            Class c;
            c.xmlName = head.xmlName + "-substitution";
            c.ns = head.ns;
            c.elementName = c.xmlName;
            c.elementNs = c.ns;
            c.pos = head.pos;
            c.group = Group::Choice;
            c.elementKind = ElementKind::Pseudo;
            c.anonymous = true;
            c.members = std::move(alternatives);
            ClassWork w;
            w.node = m_elementNodes[f.element];
            w.path = head.xmlName + "/substitution";
            w.wantedName = head.xmlName + "-substitution";
            m_model.classes.push_back(std::move(c));
            m_classWork.push_back(std::move(w));
            known = m_headChoice.emplace(f.element, index).first;
        }
        Member& held = m_model.classes[f.cls].members[f.member];
        held.kind = MemberKind::Cls;
        held.elementKind = ElementKind::Pseudo;
        held.classIndex = known->second;
        held.value = ValueType{};
        held.nillable = false;
        held.hasDefault = held.hasFixed = false;
        held.defaultValue.clear();
    }

    // One alternative of a substitution group: the global element as a choice member.
    Member Alternative(int32_t element) {
        const GlobalElement& g = m_model.elements[element];
        const Node* decl = m_elementNodes[element];
        Member m;
        m.xmlName = g.xmlName;
        m.ns = g.ns;
        m.cardinality = Cardinality::Opt;
        m.nillable = g.nillable;
        m.pos = g.pos;
        m.classIndex = g.classIndex;
        m.value = g.value;
        m.kind = g.classIndex >= 0 ? MemberKind::Cls : g.value.enumeration >= 0 ? MemberKind::Enum : MemberKind::Prim;
        if (const std::string* fixed = decl->Attr("fixed")) {
            m.hasFixed = true;
            m.defaultValue = *fixed;
        } else if (const std::string* def = decl->Attr("default")) {
            m.hasDefault = true;
            m.defaultValue = *def;
        }
        if (g.classIndex >= 0 && g.nillable) m_model.classes[g.classIndex].nillable = true;
        return m;
    }

    // Bases before derived classes, otherwise creation order; all indexes remapped.
    void OrderClasses() {
        const size_t n = m_model.classes.size();
        std::vector<int32_t> order;
        std::vector<char> state(n, 0);  // 0 new, 1 on the current chain, 2 placed
        for (size_t i = 0; i < n; ++i) {
            std::vector<int32_t> chain;
            int32_t c = static_cast<int32_t>(i);
            while (c >= 0 && state[c] == 0) {
                state[c] = 1;
                chain.push_back(c);
                c = m_model.classes[c].baseClass;
            }
            if (c >= 0 && state[c] == 1) {
                m_diags.Error(m_model.classes[c].pos, "type '" + m_model.classes[c].xmlName + "' derives from itself");
                m_model.classes[c].baseClass = -1;
            }
            for (auto it = chain.rbegin(); it != chain.rend(); ++it) {
                state[*it] = 2;
                order.push_back(*it);
            }
        }
        std::vector<int32_t> newIndex(n);
        for (size_t i = 0; i < n; ++i) newIndex[order[i]] = static_cast<int32_t>(i);
        auto remap = [&](int32_t& idx) {
            if (idx >= 0) idx = newIndex[idx];
        };
        std::vector<Class> classes(n);
        std::vector<ClassWork> work(n);
        for (size_t i = 0; i < n; ++i) {
            classes[i] = std::move(m_model.classes[order[i]]);
            work[i] = std::move(m_classWork[order[i]]);
        }
        m_model.classes = std::move(classes);
        m_classWork = std::move(work);
        for (Class& c : m_model.classes) {
            remap(c.baseClass);
            for (Member& m : c.members) remap(m.classIndex);
        }
        for (GlobalElement& g : m_model.elements) remap(g.classIndex);
        for (size_t i = 0; i < n; ++i)
            if (m_model.classes[i].baseClass >= 0)
                m_model.classes[m_model.classes[i].baseClass].derived.push_back(static_cast<int32_t>(i));
    }

    // A derived class publishes its base's descriptors and its own in one
    // array under one group type.
    void InheritGroups() {
        for (Class& c : m_model.classes) {
            if (c.baseClass < 0) continue;
            const Class& base = m_model.classes[c.baseClass];
            if (c.members.empty()) {
                c.group = base.group;
            } else if (base.group != Group::Sequence && !base.members.empty()) {
                m_diags.Warning(c.pos, "'" + c.xmlName + "' extends the xs:" +
                                           (base.group == Group::Choice ? "choice" : "all") + " of '" + base.xmlName +
                                           "': bound as one sequence");
            }
        }
    }

    void InheritValues() {
        for (size_t i = 0; i < m_model.classes.size(); ++i) {
            Class& c = m_model.classes[i];
            if (!m_classWork[i].inheritsValue || c.baseClass < 0) continue;
            const Class& base = m_model.classes[c.baseClass];
            if (base.valuePropertyId < 0) {
                m_diags.Error(c.pos, "simple content derives from '" + base.xmlName + "', which has no simple content");
                continue;
            }
            ValueType value = base.value;
            if (m_classWork[i].valueFacets) ApplyRestriction(*m_classWork[i].valueFacets, value, m_classWork[i].path, *m_classWork[i].node);
            c.value = value;
            c.valuePropertyId = 0;
        }
    }

    void MarkPolymorphism() {
        const size_t n = m_model.classes.size();
        for (Class& c : m_model.classes) c.writeType = c.baseClass >= 0 || !c.derived.empty();
        // Transitive derived classes, bases first (classes are ordered so).
        std::vector<std::vector<int32_t>> all(n);
        for (size_t i = n; i-- > 0;) {
            for (int32_t d : m_model.classes[i].derived) {
                all[i].push_back(d);
                all[i].insert(all[i].end(), all[d].begin(), all[d].end());
            }
            std::sort(all[i].begin(), all[i].end());
        }
        for (Class& c : m_model.classes) {
            for (Member& m : c.members) {
                if (m.kind != MemberKind::Cls || m.elementKind == ElementKind::Pseudo) continue;
                const Class& type = m_model.classes[m.classIndex];
                if (!type.abstract && all[m.classIndex].empty()) continue;
                m.kind = MemberKind::AbsCls;
                if (!type.abstract) m.typeChoices.push_back(m.classIndex);
                m.typeChoices.insert(m.typeChoices.end(), all[m.classIndex].begin(), all[m.classIndex].end());
            }
        }
        for (Class& c : m_model.classes)
            for (const Member& m : c.members)
                if (m.kind == MemberKind::AbsCls && m.nillable)
                    for (int32_t t : m.typeChoices) m_model.classes[t].nillable = true;
    }

    void AssignPropertyIds() {
        for (size_t i = 0; i < m_model.classes.size(); ++i) {
            Class& c = m_model.classes[i];
            int32_t id = c.baseClass >= 0 ? m_classWork[c.baseClass].lastPropertyId : 0;
            for (Member& m : c.members) m.propertyId = ++id;
            for (Attribute& a : c.attributes) a.propertyId = ++id;
            if (c.valuePropertyId >= 0 && (c.baseClass < 0 || m_model.classes[c.baseClass].valuePropertyId < 0))
                c.valuePropertyId = ++id;
            else if (c.valuePropertyId >= 0)
                c.valuePropertyId = m_model.classes[c.baseClass].valuePropertyId;
            m_classWork[i].lastPropertyId = id;
        }
    }

    // ---- names ---------------------------------------------------------

    void AssignNames() {
        NameScope types;  // classes and enumerations share the output namespace
        auto nameClass = [&](size_t i) {
            Class& c = m_model.classes[i];
            const ClassWork& w = m_classWork[i];
            std::string wanted = "C" + PascalCase(w.wantedName);
            const size_t cut = w.path.size() - std::min(w.path.size(), w.wantedName.size() + 1);
            if (!w.named && types.Contains(wanted) && cut > 0 && w.path[cut] == '/' &&
                w.path.compare(cut + 1, std::string::npos, w.wantedName) == 0) {
                // An anonymous type first tries its owner's name as a prefix.
                const std::string parent = w.path.substr(0, w.path.size() - w.wantedName.size() - 1);
                const std::string owner = parent.substr(parent.rfind('/') + 1);
                wanted = "C" + PascalCase(owner) + PascalCase(w.wantedName);
            }
            c.cppName = types.Assign(w.path, wanted, m_overrides, m_model.renames);
        };
        for (size_t i = 0; i < m_model.classes.size(); ++i)
            if (m_classWork[i].named) nameClass(i);
        for (size_t i = 0; i < m_model.classes.size(); ++i)
            if (!m_classWork[i].named) nameClass(i);
        for (Enumeration& e : m_model.enumerations) {
            // Enumerations live beside the classes without their "C": the schema's
            // name in front keeps them apart from other schemas' ("ProductStatus").
            const std::string prefix = PascalCase(SchemaStem(OwnerSchema(e.pos)));
            // An anonymous type is named after its owner and element ("ItemStatus").
            const size_t slash = e.xmlName.rfind('/');
            const size_t owner = slash == std::string::npos || slash == 0 ? std::string::npos
                                                                          : e.xmlName.rfind('/', slash - 1);
            std::string wanted =
                PascalCase(owner == std::string::npos ? e.xmlName : e.xmlName.substr(owner + 1));
            if (wanted.compare(0, prefix.size(), prefix) != 0) wanted = prefix + wanted;
            e.cppName = types.Assign(e.xmlName, wanted, m_overrides, m_model.renames);
            NameScope values;
            for (EnumValue& v : e.values) {
                std::string wanted = PascalCase(v.text);
                if (wanted.empty()) wanted = v.text.empty() ? "Empty" : "Value";
                v.cppName = values.Assign(e.xmlName + "/" + v.text, wanted, m_overrides, m_model.renames);
            }
        }
        // Member stems, unique with the base's and with the accessors every class has.
        static const char* const kApi[] = {"Namespace", "TargetNamespace", "ClassInfo", "ClassElementInfo",
                                           "ClassAttributeInfo", "Base", "ElementName", "Choice", "Nil",
                                           "ClassElementInfoCount", "Type", "Value"};
        std::vector<std::vector<std::string>> used(m_model.classes.size());
        for (size_t i = 0; i < m_model.classes.size(); ++i) {
            Class& c = m_model.classes[i];
            NameScope scope;
            for (const char* api : kApi) scope.Reserve(api);
            if (c.baseClass >= 0)
                for (const std::string& name : used[c.baseClass]) scope.Reserve(name);
            const std::string& path = m_classWork[i].path;
            for (Member& m : c.members) {
                m.cppName = scope.Assign(path + "/" + m.xmlName, PascalCase(m.xmlName), m_overrides, m_model.renames);
                used[i].push_back(m.cppName);
            }
            for (Attribute& a : c.attributes) {
                a.cppName =
                    scope.Assign(path + "/@" + a.xmlName, PascalCase(a.xmlName), m_overrides, m_model.renames);
                used[i].push_back(a.cppName);
            }
            if (c.valuePropertyId >= 0 && c.baseClass >= 0 && m_model.classes[c.baseClass].valuePropertyId >= 0) {
                c.valueCppName = m_model.classes[c.baseClass].valueCppName;  // the inherited property
            } else if (c.valuePropertyId >= 0) {
                NameScope valueScope;
                for (const std::string& name : used[i]) valueScope.Reserve(name);
                if (c.baseClass >= 0)
                    for (const std::string& name : used[c.baseClass]) valueScope.Reserve(name);
                c.valueCppName = valueScope.Assign(path + "/#value", "Value", m_overrides, m_model.renames);
                used[i].push_back(c.valueCppName);
            }
            if (c.baseClass >= 0) used[i].insert(used[i].end(), used[c.baseClass].begin(), used[c.baseClass].end());
        }
    }

    // ---- main schemas --------------------------------------------------

    std::string SchemaStem(int32_t schema) const {
        if (schema < 0 || static_cast<size_t>(schema) >= m_options.schemas.size()) return std::string();
        std::string stem = m_options.schemas[schema];
        const size_t slash = stem.rfind('/');
        if (slash != std::string::npos) stem.erase(0, slash + 1);
        const size_t dot = stem.rfind('.');
        if (dot != std::string::npos && dot > 0) stem.resize(dot);
        return stem;
    }

    // The command-line schema a component's file belongs to.
    int32_t OwnerSchema(const SourcePos& pos) {
        if (m_fileSchema.empty()) {
            m_fileSchema.assign(m_set.files.size(), -1);
            for (const SchemaDoc& doc : m_set.docs)
                if (m_fileSchema[doc.file] < 0) m_fileSchema[doc.file] = std::max(doc.mainSchema, 0);
        }
        return pos.file >= 0 && static_cast<size_t>(pos.file) < m_fileSchema.size() ? std::max(m_fileSchema[pos.file], 0)
                                                                                     : 0;
    }

    void AssignSchemas() {
        NameScope namespaces;
        for (size_t i = 0; i < m_options.schemas.size(); ++i) {
            MainSchema s;
            s.path = m_options.schemas[i];
            s.stem = SchemaStem(static_cast<int32_t>(i));
            const std::string wanted = m_options.cppNamespace.empty() ? SnakeCase(s.stem) : m_options.cppNamespace;
            s.cppNamespace = m_options.cppNamespace.empty()
                                 ? namespaces.Assign(s.path, wanted.empty() ? "schema" : wanted, m_overrides,
                                                     m_model.renames)
                                 : m_options.cppNamespace;
            for (const SchemaDoc& doc : m_set.docs)
                if (doc.mainSchema == static_cast<int32_t>(i) && doc.root && s.targetNamespace.empty())
                    s.targetNamespace = doc.targetNamespace;
            m_model.schemas.push_back(std::move(s));
        }
        auto owner = [&](const SourcePos& pos) { return OwnerSchema(pos); };
        if (m_model.schemas.empty()) return;
        std::vector<int32_t> perSchema(m_model.schemas.size(), 0);
        for (size_t i = 0; i < m_model.classes.size(); ++i) {
            const int32_t s = owner(m_model.classes[i].pos);
            m_model.schemas[s].classes.push_back(static_cast<int32_t>(i));
            m_model.classes[i].factoryNumber = ++perSchema[s];
        }
        for (size_t i = 0; i < m_model.enumerations.size(); ++i)
            m_model.schemas[owner(m_model.enumerations[i].pos)].enumerations.push_back(static_cast<int32_t>(i));
        for (size_t i = 0; i < m_model.elements.size(); ++i)
            m_model.schemas[owner(m_model.elements[i].pos)].elements.push_back(static_cast<int32_t>(i));
        for (size_t s = 0; s < m_model.schemas.size(); ++s) {
            std::vector<char> needs(m_model.schemas.size(), 0);
            for (int32_t ci : m_model.schemas[s].classes) {
                const Class& c = m_model.classes[ci];
                if (c.baseClass >= 0) needs[owner(m_model.classes[c.baseClass].pos)] = 1;
                for (const Member& m : c.members) {
                    if (m.classIndex >= 0) needs[owner(m_model.classes[m.classIndex].pos)] = 1;
                    if (m.value.enumeration >= 0) needs[owner(m_model.enumerations[m.value.enumeration].pos)] = 1;
                }
                for (const Attribute& a : c.attributes)
                    if (a.value.enumeration >= 0) needs[owner(m_model.enumerations[a.value.enumeration].pos)] = 1;
            }
            for (size_t t = 0; t < needs.size(); ++t)
                if (needs[t] && t != s) m_model.schemas[s].dependsOn.push_back(static_cast<int32_t>(t));
        }
    }

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

}  // namespace

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
