// ResolveMembers.cpp - particles and attributes of a class become its members.
#include "Resolver.h"

#include <algorithm>

namespace kvxsd {

// The compositor of a group reference (null after an error).
const Node* Resolver::GroupCompositor(const Node* ref) {
    const Node* group = Lookup(m_groups, ref->AttrOr("ref", ""), "group", ref);
    if (!group) return nullptr;
    for (const Node* child : group->children)
        if (IsCompositor(child->local)) return child;
    m_diags.Error(group->pos, "xs:group without xs:sequence, xs:choice or xs:all");
    return nullptr;
}

void Resolver::TopParticle(int32_t index, const Node* particle) {
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

void Resolver::AddPseudoMember(int32_t owner, const Node* particle, const Node* compositor, uint32_t minOccurs,
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
void Resolver::ExpandParticles(int32_t owner, const Node* compositor) {
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

void Resolver::AddElementMember(int32_t owner, const Node* particle, uint32_t minOccurs, uint32_t maxOccurs,
                                Group group) {
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
    ReadValueConstraint(decl, m);
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
        // An abstract element never occurs itself: its substitutes stand in for it.
        if (decl->AttrOr("abstract", "false") != "true")
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

Wildcard Resolver::WildcardOf(const Node* node) {
    Wildcard w;
    w.namespaces = node->AttrOr("namespace", "##any");
    w.targetNamespace = DocOf(node).targetNamespace;
    w.processContents = node->AttrOr("processContents", "strict");
    return w;
}

void Resolver::AddWildcardMember(int32_t owner, const Node* particle, uint32_t minOccurs, uint32_t maxOccurs,
                                 Group group) {
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

void Resolver::ExpandAttributes(int32_t owner, const Node* holder) {
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

void Resolver::AddAttribute(int32_t owner, const Node* item, std::unordered_set<std::string>& seen) {
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
    for (const Node* source : {item, decl})
        if (source && ReadValueConstraint(source, a)) break;
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

}  // namespace kvxsd
