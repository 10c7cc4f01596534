// ResolveNames.cpp - C++ names and the main schema each component is written to.
#include "Resolver.h"

#include <algorithm>

#include "Naming.h"

namespace kvxsd {

void Resolver::AssignNames() {
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

std::string Resolver::SchemaStem(int32_t schema) const {
    if (schema < 0 || static_cast<size_t>(schema) >= m_options.schemas.size()) return std::string();
    std::string stem = m_options.schemas[schema];
    const size_t slash = stem.rfind('/');
    if (slash != std::string::npos) stem.erase(0, slash + 1);
    const size_t dot = stem.rfind('.');
    if (dot != std::string::npos && dot > 0) stem.resize(dot);
    return stem;
}

// The command-line schema a component's file belongs to.
int32_t Resolver::OwnerSchema(const SourcePos& pos) {
    if (m_fileSchema.empty()) {
        m_fileSchema.assign(m_set.files.size(), -1);
        for (const SchemaDoc& doc : m_set.docs)
            if (m_fileSchema[doc.file] < 0) m_fileSchema[doc.file] = std::max(doc.mainSchema, 0);
    }
    return pos.file >= 0 && static_cast<size_t>(pos.file) < m_fileSchema.size() ? std::max(m_fileSchema[pos.file], 0)
                                                                                 : 0;
}

void Resolver::AssignSchemas() {
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

}  // namespace kvxsd
