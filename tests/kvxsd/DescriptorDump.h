// DescriptorDump.h - one line per descriptor of a generated class, to compare bindings by their metadata.
#pragma once

#include <cxxabi.h>

#include <cstdlib>
#include <sstream>
#include <string>
#include <typeinfo>

#include "kvxml/core/XmlGeneratedClass.h"
#include "kvxml/metadata/AttributeInfo.h"
#include "kvxml/metadata/ElementInfo.h"
#include "kvxml/metadata/ParentElementInfo.h"

namespace kvtest {

inline std::string ClassName(const std::type_info& type) {
    int status = 0;
    char* name = abi::__cxa_demangle(type.name(), nullptr, nullptr, &status);
    std::string out = status == 0 ? name : type.name();
    std::free(name);
    return out;
}

inline void DumpFacets(std::ostream& out, const KvXmlLib10::CPrimitiveRestrictions& r) {
    out << " facets=[" << r.pattern << "|" << r.minLength << "|" << r.maxLength << "|" << r.minInclusive << "|"
        << r.maxInclusive << "|" << r.minExclusive << "|" << r.maxExclusive << "|" << r.length << "]";
}

/// The class descriptor, then every element and attribute descriptor with its fields.
inline std::string DumpDescriptors(const KvXmlLib10::CXmlGeneratedClass& object) {
    std::ostringstream out;
    const KvXmlLib10Data::CParentElementInfo* info = object.GetClassInfo();
    out << "class " << info->GetElementName() << " ns=" << info->GetNamespaceURI() << " group=" << info->GetGroupType()
        << " type=" << info->GetElementType() << " nillable=" << info->IsNillable()
        << " xsitype=" << info->GetWriteTypeAttribute() << " value=" << info->GetValuePropertyId() << "/"
        << info->GetValueItemType() << "\n";
    for (KvXmlLib10Data::CElementInfo** e = object.GetClassElementInfo(); *e; ++e) {
        out << "element " << ClassName(typeid(**e)) << " " << (*e)->GetElementName()
            << " ns=" << (*e)->GetNamespaceURI() << " id=" << (*e)->GetPropertyId()
            << " nillable=" << (*e)->IsNillable() << " item=" << (*e)->GetItemType()
            << " ws=" << static_cast<int>((*e)->GetWhitespaceRule());
        DumpFacets(out, (*e)->GetRestrictions());
        out << "\n";
    }
    for (KvXmlLib10Data::CAttributeInfo** a = object.GetClassAttributeInfo(); *a; ++a) {
        out << "attribute " << ClassName(typeid(**a)) << " " << (*a)->GetAttributeName()
            << " ns=" << (*a)->GetNamespaceURI() << " id=" << (*a)->GetPropertyId()
            << " optional=" << (*a)->IsOptional() << " default=" << (*a)->GetDefaultValue();
        if (auto* p = dynamic_cast<const KvXmlLib10Data::CAttributeInfoPrimitive*>(*a)) {
            out << " item=" << p->GetItemType() << " ws=" << static_cast<int>(p->GetWhitespaceRule());
            DumpFacets(out, p->GetRestrictions());
        }
        out << "\n";
    }
    return out.str();
}

}  // namespace kvtest
