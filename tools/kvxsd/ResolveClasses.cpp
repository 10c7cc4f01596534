// ResolveClasses.cpp - classes for complex types and pseudo elements, global elements.
#include "Resolver.h"

namespace kvxsd {

int32_t Resolver::NewClass(const Node* node, const std::string& path, const std::string& wanted, bool named) {
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

int32_t Resolver::ClassForType(const Node* type) {
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

int32_t Resolver::AnonymousClass(const Node* type, const std::string& path, const std::string& elementName,
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

int32_t Resolver::PseudoClass(const Node* compositor, const std::string& path, const std::string& wanted) {
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

int32_t Resolver::GlobalElementIndex(const Node* element) {
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
int32_t Resolver::TypeOfElement(const Node* element, const std::string& path, const std::string& name,
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

void Resolver::FillGlobalElement(const Node* element) {
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

bool Resolver::IsCompositor(const std::string& what) {
    return what == "sequence" || what == "choice" || what == "all";
}

Group Resolver::GroupOf(const std::string& what) {
    return what == "choice" ? Group::Choice : what == "all" ? Group::All : Group::Sequence;
}

bool Resolver::Occurs(const Node* particle, uint32_t& minOccurs, uint32_t& maxOccurs) {
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

Cardinality Resolver::CardinalityOf(uint32_t minOccurs, uint32_t maxOccurs, Group group) {
    if (maxOccurs > 1) return Cardinality::Col;
    if (minOccurs == 0 || group == Group::Choice) return Cardinality::Opt;
    return Cardinality::Mnd;
}

void Resolver::BuildClass(int32_t index) {
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

void Resolver::SetValue(int32_t index, const ValueType& value) {
    Class& c = m_model.classes[index];
    c.value = value;
    c.valuePropertyId = 0;  // numbered later
}

void Resolver::SetBase(int32_t index, const Node* baseType, const Node* at) {
    if (baseType == m_classWork[index].node) {
        m_diags.Error(at->pos, "type '" + baseType->AttrOr("name", "") + "' derives from itself");
        return;
    }
    m_model.classes[index].baseClass = ClassForType(baseType);
}

}  // namespace kvxsd
