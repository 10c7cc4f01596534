// ResolveHierarchy.cpp - steps after every class is built: substitutions, order, inheritance, ids.
#include "Resolver.h"

#include <algorithm>

namespace kvxsd {

void Resolver::ResolveSubstitutions() {
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

// Bases before derived classes, otherwise creation order; all indexes remapped.
void Resolver::OrderClasses() {
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
void Resolver::InheritGroups() {
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

void Resolver::InheritValues() {
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

void Resolver::MarkPolymorphism() {
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

void Resolver::AssignPropertyIds() {
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

}  // namespace kvxsd
