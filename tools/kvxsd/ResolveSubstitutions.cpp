// ResolveSubstitutions.cpp - a reference to the head of a substitution group becomes a choice among the head
// (unless abstract) and every member, each under its own element name with its own class and descriptor: a
// descriptor matches its own element name only, so one descriptor for the head could never read a member.
#include "Resolver.h"

namespace kvxsd {

// In a choice a single reference adds its alternatives to the owner's choice; elsewhere they make one
// pseudo-element choice class per head, held once or in a collection.
void Resolver::ExpandSubstitution(const MemberFixup& f) {
    std::vector<Member> alternatives;
    if (!m_model.elements[f.element].abstract) alternatives.push_back(Alternative(f.element));
    for (int32_t e : m_substitutes[f.element])
        if (!m_model.elements[e].abstract) alternatives.push_back(Alternative(e));
    {
        std::vector<Member>& members = m_model.classes[f.cls].members;
        if (m_model.classes[f.cls].group == Group::Choice && members[f.member].maxOccurs == 1) {
            const auto at = members.begin() + static_cast<std::ptrdiff_t>(f.member);
            members.insert(members.erase(at), alternatives.begin(), alternatives.end());
            return;
        }
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
        w.wantedName = c.xmlName;
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

// One alternative: the global element as an optional member of a choice.
Member Resolver::Alternative(int32_t element) {
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
    ReadValueConstraint(decl, m);
    if (g.classIndex >= 0 && g.nillable) m_model.classes[g.classIndex].nillable = true;
    return m;
}

}  // namespace kvxsd
