// ModelDump.cpp - the text form of a Model.
#include "ModelDump.h"

namespace kvxsd {

namespace {

const char* const kGroups[] = {"seq", "choice", "all"};
const char* const kKinds[] = {"Prim", "Enum", "Cls", "AbsCls", "Untpd"};
const char* const kCards[] = {"Mnd", "Opt", "Col"};

std::string Occurs(uint32_t min, uint32_t max) {
    return std::to_string(min) + ".." + (max == kUnbounded ? std::string("*") : std::to_string(max));
}

std::string Value(const Model& model, const ValueType& v) {
    std::string out = "item=" + std::to_string(static_cast<int>(v.item)) + " ws=" +
                      std::to_string(static_cast<int>(v.whitespace));
    const Facets& f = v.facets;
    if (!f.pattern.empty()) out += " pattern=" + f.pattern;
    if (f.length >= 0) out += " length=" + std::to_string(f.length);
    if (f.minLength >= 0) out += " minLength=" + std::to_string(f.minLength);
    if (f.maxLength >= 0) out += " maxLength=" + std::to_string(f.maxLength);
    if (!f.minInclusive.empty()) out += " minInclusive=" + f.minInclusive;
    if (!f.maxInclusive.empty()) out += " maxInclusive=" + f.maxInclusive;
    if (!f.minExclusive.empty()) out += " minExclusive=" + f.minExclusive;
    if (!f.maxExclusive.empty()) out += " maxExclusive=" + f.maxExclusive;
    if (v.enumeration >= 0) out += " enum=" + model.enumerations[v.enumeration].cppName;
    return out;
}

std::string ClassName(const Model& model, int32_t index) {
    return index >= 0 ? model.classes[index].cppName : std::string("-");
}

}  // namespace

std::string DumpModel(const Model& model) {
    std::string out;
    for (const MainSchema& s : model.schemas)
        out += "schema " + s.stem + " ns=" + s.cppNamespace + " tns={" + s.targetNamespace + "}\n";
    for (const Class& c : model.classes) {
        out += "class " + c.cppName + " " + c.xmlName + " {" + c.ns + "} element=" + c.elementName + " " +
               kGroups[static_cast<int>(c.group)] + (c.elementKind == ElementKind::Pseudo ? " pseudo" : "") +
               (c.abstract ? " abstract" : "") + (c.nillable ? " nillable" : "") + (c.writeType ? " xsitype" : "") +
               (c.mixed ? " mixed" : "") + " base=" + ClassName(model, c.baseClass) + "\n";
        for (const Member& m : c.members) {
            out += "  " + std::to_string(m.propertyId) + " " + m.cppName + " " + m.xmlName + " {" + m.ns + "} " +
                   kKinds[static_cast<int>(m.kind)] + kCards[static_cast<int>(m.cardinality)] + " " +
                   Occurs(m.minOccurs, m.maxOccurs) + (m.nillable ? " nillable" : "");
            if (m.kind == MemberKind::Prim || m.kind == MemberKind::Enum) out += " " + Value(model, m.value);
            if (m.kind == MemberKind::Cls || m.kind == MemberKind::AbsCls) out += " class=" + ClassName(model, m.classIndex);
            for (int32_t t : m.typeChoices) out += " |" + ClassName(model, t);
            if (m.kind == MemberKind::Untpd) out += " ns=" + m.wildcard.namespaces;
            if (m.hasDefault || m.hasFixed) out += (m.hasFixed ? " fixed=" : " default=") + m.defaultValue;
            out += "\n";
        }
        for (const Attribute& a : c.attributes) {
            static const char* const kAttr[] = {"Primitive", "Enum", "Any"};
            out += "  " + std::to_string(a.propertyId) + " @" + a.cppName + " " + a.xmlName + " {" + a.ns + "} " +
                   kAttr[static_cast<int>(a.kind)] + (a.optional ? " optional" : " required");
            if (a.kind == Attribute::Kind::Any) out += " ns=" + a.wildcard.namespaces;
            else out += " " + Value(model, a.value);
            if (a.hasDefault || a.hasFixed) out += (a.hasFixed ? " fixed=" : " default=") + a.defaultValue;
            out += "\n";
        }
        if (c.valuePropertyId >= 0)
            out += "  " + std::to_string(c.valuePropertyId) + " #" + c.valueCppName + " " + Value(model, c.value) + "\n";
    }
    for (const Enumeration& e : model.enumerations) {
        out += "enum " + e.cppName + ":";
        for (const EnumValue& v : e.values) out += " " + v.cppName + "=" + v.text;
        out += "\n";
    }
    for (const GlobalElement& g : model.elements) {
        out += "element " + g.xmlName + " {" + g.ns + "} class=" + ClassName(model, g.classIndex);
        if (g.substitutionHead >= 0) out += " head=" + model.elements[g.substitutionHead].xmlName;
        out += "\n";
    }
    return out;
}

}  // namespace kvxsd
