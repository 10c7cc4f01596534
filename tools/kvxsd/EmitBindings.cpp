// EmitBindings.cpp - turns the resolved model into one unit per main schema and writes it.
#include <set>

#include "EmitModel.h"
#include "Emitter.h"

namespace kvxsd {

namespace {

const char* const kItemNames[] = {"Invalid",   "hexBinary", "base64Binary", "i1",      "i2",      "i4",     "i8",
                                  "ui1",       "ui2",       "ui4",          "ui8",     "r4",      "r8",     "duration",
                                  "yearMonth", "monthDay",  "year",         "month",   "day",     "date",   "datetime",
                                  "time",      "string",    "string",       "boolean", "decimal", "integer"};
const char* const kWhitespaceNames[] = {"None", "Preserve", "Replace", "Collapse"};

class UnitBuilder {
public:
    UnitBuilder(const Model& model, const Options& options) : m_model(model), m_options(options) {
        m_classOwner.assign(model.classes.size(), -1);
        m_enumOwner.assign(model.enumerations.size(), -1);
        for (size_t s = 0; s < model.schemas.size(); ++s) {
            for (int32_t c : model.schemas[s].classes)
                m_classOwner.at(static_cast<size_t>(c)) = static_cast<int32_t>(s);
            for (int32_t e : model.schemas[s].enumerations)
                m_enumOwner.at(static_cast<size_t>(e)) = static_cast<int32_t>(s);
        }
    }

    EmitUnit Build(size_t schemaIndex) {
        m_schema = static_cast<int32_t>(schemaIndex);
        const MainSchema& schema = m_model.schemas[schemaIndex];
        EmitUnit unit;
        unit.stem = schema.stem;
        unit.sourceName = BaseName(schema.path);
        unit.cppNamespace = Namespace(schemaIndex);
        AddIncludes(schema, unit);
        for (int32_t e : schema.enumerations) {
            const Enumeration& en = m_model.enumerations.at(static_cast<size_t>(e));
            EmitEnum out;
            out.cppName = en.cppName;
            out.schemaName = en.xmlName;
            for (const EnumValue& v : en.values) {
                out.values.push_back(v.text);
                out.identifiers.push_back(v.cppName);
            }
            unit.enums.push_back(std::move(out));
        }
        for (int32_t c : schema.classes) unit.classes.push_back(ClassOf(static_cast<size_t>(c)));
        for (int32_t e : schema.elements) {
            const GlobalElement& g = m_model.elements.at(static_cast<size_t>(e));
            if (g.classIndex < 0 || g.abstract) continue;
            const Class& cls = m_model.classes.at(static_cast<size_t>(g.classIndex));
            if (cls.abstract) continue;
            unit.globals.push_back({g.xmlName, g.ns, ClassName(g.classIndex)});
        }
        return unit;
    }

private:
    static std::string BaseName(const std::string& path) {
        const size_t slash = path.find_last_of("/\\");
        return slash == std::string::npos ? path : path.substr(slash + 1);
    }

    std::string Namespace(size_t schemaIndex) const {
        for (const auto& [uri, name] : m_options.namespaceMap)
            if (uri == m_model.schemas[schemaIndex].targetNamespace) return name;
        if (!m_options.cppNamespace.empty()) return m_options.cppNamespace;
        return m_model.schemas[schemaIndex].cppNamespace;
    }

    // Names from another unit are written fully qualified.
    std::string Qualify(int32_t owner, const std::string& name) const {
        if (owner < 0 || owner == m_schema) return name;
        return "::" + Namespace(static_cast<size_t>(owner)) + "::" + name;
    }
    std::string ClassName(int32_t index) const {
        return Qualify(m_classOwner.at(static_cast<size_t>(index)),
                       m_model.classes.at(static_cast<size_t>(index)).cppName);
    }
    // Headers of the units holding a base class come first in the header, the
    // other units' after its classes (their names declared ahead), and the units
    // of classes only the source makes (types derived in other schemas) in the source.
    void AddIncludes(const MainSchema& schema, EmitUnit& unit) const {
        std::set<int32_t> bases, sourceOwners;
        for (int32_t c : schema.classes) {
            const Class& cls = m_model.classes.at(static_cast<size_t>(c));
            if (cls.baseClass >= 0) bases.insert(m_classOwner.at(static_cast<size_t>(cls.baseClass)));
            for (const Member& m : cls.members) {
                if (m.classIndex >= 0) DeclareClass(unit, m.classIndex);
                DeclareEnum(unit, m.value.enumeration);
                for (int32_t k : m.typeChoices) {
                    const int32_t owner = k < 0 ? -1 : m_classOwner.at(static_cast<size_t>(k));
                    if (owner >= 0 && owner != m_schema) sourceOwners.insert(owner);
                }
            }
            for (const Attribute& a : cls.attributes) DeclareEnum(unit, a.value.enumeration);
        }
        for (int32_t d : schema.dependsOn) {
            (bases.count(d) ? unit.includes : unit.lateIncludes)
                .push_back(m_model.schemas.at(static_cast<size_t>(d)).stem + ".h");
            sourceOwners.erase(d);
        }
        for (int32_t d : sourceOwners)
            unit.sourceIncludes.push_back(m_model.schemas.at(static_cast<size_t>(d)).stem + ".h");
    }

    // A name of another unit that this unit's header uses.
    void DeclareClass(EmitUnit& unit, int32_t index) const {
        const int32_t owner = m_classOwner.at(static_cast<size_t>(index));
        if (owner >= 0 && owner != m_schema)
            unit.foreignDeclarations.emplace(Namespace(static_cast<size_t>(owner)),
                                             "class " + m_model.classes.at(static_cast<size_t>(index)).cppName);
    }
    void DeclareEnum(EmitUnit& unit, int32_t index) const {
        const int32_t owner = index < 0 ? -1 : m_enumOwner.at(static_cast<size_t>(index));
        if (owner >= 0 && owner != m_schema)
            unit.foreignDeclarations.emplace(Namespace(static_cast<size_t>(owner)),
                                             "enum class " +
                                                 m_model.enumerations.at(static_cast<size_t>(index)).cppName +
                                                 " : int32_t");
    }
    std::string Factory(int32_t index) const {
        return Qualify(m_classOwner.at(static_cast<size_t>(index)), "CreateClass");
    }

    void SetValue(EmitMember& out, const ValueType& value) const {
        const int32_t item = static_cast<int32_t>(value.item);
        out.itemType = item > 0 && item <= 26 ? kItemNames[item] : "string";
        out.whitespace = kWhitespaceNames[static_cast<int32_t>(value.whitespace) & 3];
        const Facets& f = value.facets;
        out.facets.pattern = f.pattern;
        out.facets.minLength = f.minLength;
        out.facets.maxLength = f.maxLength;
        out.facets.length = f.length;
        out.facets.minInclusive = f.minInclusive;
        out.facets.maxInclusive = f.maxInclusive;
        out.facets.minExclusive = f.minExclusive;
        out.facets.maxExclusive = f.maxExclusive;
        if (value.enumeration >= 0) {
            out.kind = EmitKind::Enum;
            const size_t e = static_cast<size_t>(value.enumeration);
            out.enumName = Qualify(m_enumOwner.at(e), m_model.enumerations.at(e).cppName);
        }
    }

    // Whether class from reaches class to through mandatory class members.
    bool Reaches(int32_t from, size_t to) const {
        std::vector<bool> seen(m_model.classes.size(), false);
        std::vector<int32_t> pending = {from};
        while (!pending.empty()) {
            const size_t at = static_cast<size_t>(pending.back());
            pending.pop_back();
            if (at == to) return true;
            if (seen[at]) continue;
            seen[at] = true;
            for (int32_t k = static_cast<int32_t>(at); k >= 0; k = m_model.classes[static_cast<size_t>(k)].baseClass)
                for (const Member& m : m_model.classes[static_cast<size_t>(k)].members)
                    if (m.kind == MemberKind::Cls && m.cardinality == Cardinality::Mnd && m.classIndex >= 0)
                        pending.push_back(m.classIndex);
        }
        return false;
    }

    EmitMember MemberOf(size_t ownerIndex, const Member& m) const {
        EmitMember out;
        out.xmlName = m.xmlName;
        out.namespaceUri = m.ns;
        out.cppName = m.cppName;
        out.propertyId = m.propertyId;
        out.nillable = m.nillable;
        out.minOccurs = static_cast<int32_t>(m.minOccurs);
        out.maxOccurs = m.maxOccurs == kUnbounded ? -1 : static_cast<int32_t>(m.maxOccurs);
        out.optional = m.cardinality != Cardinality::Mnd;
        out.pseudo = m.elementKind == ElementKind::Pseudo;
        out.hasDefault = m.hasDefault || m.hasFixed;
        out.defaultValue = m.defaultValue;
        const bool col = m.cardinality == Cardinality::Col;
        switch (m.kind) {
            case MemberKind::Prim:
            case MemberKind::Enum:
                SetValue(out, m.value);
                // A repeated enumeration is held as its texts.
                if (col) out.kind = EmitKind::PrimCol;
                break;
            case MemberKind::Cls:
                out.kind = col ? EmitKind::ClsCol : EmitKind::Cls;
                out.className = ClassName(m.classIndex);
                out.factory = Factory(m.classIndex);
                out.classNumber = m_model.classes.at(static_cast<size_t>(m.classIndex)).factoryNumber;
                out.mandatoryContent = out.pseudo && m.minOccurs > 0;
                // The engine reads a mandatory child into the object its parent made; a cycle of
                // mandatory children (no finite instance exists) is left to be set by hand.
                out.eager = m.cardinality == Cardinality::Mnd && !out.pseudo && !Reaches(m.classIndex, ownerIndex);
                break;
            case MemberKind::AbsCls:
                out.kind = col ? EmitKind::AbsClsCol : EmitKind::AbsCls;
                out.className = ClassName(m.classIndex);
                out.chooser = "Choose" + m_model.classes.at(ownerIndex).cppName + m.cppName;
                for (int32_t t : m.typeChoices) {
                    const Class& k = m_model.classes.at(static_cast<size_t>(t));
                    if (!k.abstract) out.choices.push_back({true, k.xmlName, k.ns, ClassName(t)});
                }
                if (!m_model.classes.at(static_cast<size_t>(m.classIndex)).abstract)
                    out.choices.push_back({false, m.xmlName, m.ns, ClassName(m.classIndex)});
                break;
            case MemberKind::Untpd:
                out.kind = col ? EmitKind::UntpdCol : EmitKind::Untpd;
                out.className = "KvXmlLib10::CElement";
                out.restriction = m.wildcard.namespaces;
                out.wildcardNamespace = m.wildcard.targetNamespace;
                // The engine reads a mandatory wildcard into the element its parent made.
                out.eager = m.cardinality == Cardinality::Mnd;
                break;
        }
        return out;
    }

    EmitMember AttributeOf(const Attribute& a) const {
        EmitMember out;
        out.attribute = true;
        out.xmlName = a.xmlName;
        out.namespaceUri = a.ns;
        out.cppName = a.cppName;
        out.propertyId = a.propertyId;
        out.optional = a.optional;
        out.hasDefault = a.hasDefault || a.hasFixed;
        out.defaultValue = a.defaultValue;
        if (a.kind == Attribute::Kind::Any) {
            out.kind = EmitKind::AnyAttr;
            out.restriction = a.wildcard.namespaces;
            out.wildcardNamespace = a.wildcard.targetNamespace;
            out.minOccurs = 0;
            return out;
        }
        SetValue(out, a.value);
        return out;
    }

    // Every descriptor of a class, its bases' first (a loop: derivation chains can be long).
    void AddMembers(size_t index, std::vector<EmitMember>& elements, std::vector<EmitMember>& attributes) const {
        std::vector<size_t> chain;
        for (int32_t k = static_cast<int32_t>(index); k >= 0; k = m_model.classes.at(static_cast<size_t>(k)).baseClass)
            chain.push_back(static_cast<size_t>(k));
        for (auto at = chain.rbegin(); at != chain.rend(); ++at) {
            const Class& c = m_model.classes[*at];
            for (const Member& m : c.members) elements.push_back(MemberOf(*at, m));
            for (const Attribute& a : c.attributes) attributes.push_back(AttributeOf(a));
        }
    }

    EmitClass ClassOf(size_t index) const {
        const Class& c = m_model.classes[index];
        EmitClass out;
        out.cppName = c.cppName;
        out.classNumber = c.factoryNumber;
        out.typeName = c.xmlName;
        out.elementName = c.elementName;
        out.namespaceUri = c.ns;
        out.group = static_cast<EmitGroup>(static_cast<int32_t>(c.group));
        out.pseudo = c.elementKind == ElementKind::Pseudo;
        out.abstract = c.abstract;
        out.writeType = c.writeType;
        out.nillable = c.nillable;
        out.ownNil = c.nillable && (c.baseClass < 0 || !m_model.classes[static_cast<size_t>(c.baseClass)].nillable);
        std::vector<EmitMember> elements, attributes, own;
        if (c.baseClass >= 0) {
            out.baseClass = ClassName(c.baseClass);
            AddMembers(static_cast<size_t>(c.baseClass), elements, attributes);
        }
        const size_t inherited = elements.size() + attributes.size();
        out.members = elements;
        out.members.insert(out.members.end(), attributes.begin(), attributes.end());
        out.ownFrom = inherited;
        for (const Member& m : c.members) out.members.push_back(MemberOf(index, m));
        for (const Attribute& a : c.attributes) out.members.push_back(AttributeOf(a));
        if (c.valuePropertyId >= 0) {
            EmitMember value;
            value.cppName = c.valueCppName;
            value.propertyId = c.valuePropertyId;
            value.simpleContent = true;
            value.optional = true;
            SetValue(value, c.value);
            value.kind = EmitKind::Prim;  // the class descriptor carries an item type, not an enumeration
            value.itemType = kItemNames[static_cast<int32_t>(c.value.item)];
            out.valuePropertyId = c.valuePropertyId;
            out.valueItemType = value.itemType;
            out.members.push_back(value);
        }
        return out;
    }

    const Model& m_model;
    const Options& m_options;
    std::vector<int32_t> m_classOwner, m_enumOwner;
    int32_t m_schema = -1;
};

}  // namespace

std::vector<OutputFile> EmitBindings(const Model& model, const Options& options) {
    UnitBuilder builder(model, options);
    std::vector<OutputFile> files;
    for (size_t s = 0; s < model.schemas.size(); ++s) {
        const EmitUnit unit = builder.Build(s);
        EmitText text = EmitUnitText(unit);
        files.push_back({unit.stem + ".h", std::move(text.header)});
        files.push_back({unit.stem + ".cpp", std::move(text.source)});
    }
    return files;
}

}  // namespace kvxsd
