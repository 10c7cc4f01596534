// ClassFactoryBase.h - base of generated class factories; reads xsi:type.
#pragma once

#include <cstdint>
#include <string>

#include "kvxml/core/SmartPtr.h"
#include "kvxml/foundation/Export.h"

namespace KvXmlLib10 {

class CXmlElement;
class CXmlObjectBase;

/// Generated factory of a class: a new object for the class number, named
/// after the element.
typedef CSmartPtr<CXmlObjectBase> (*ClassFactoryFunc)(int32_t classNumber, const char* elementName);
/// Generated factory of an abstract class: the concrete object for the
/// element (by its name and xsi:type), or null when none fits.
typedef CSmartPtr<CXmlObjectBase> (*AbstractClassFactoryFunc)(CXmlElement* element);

/// Generated code derives one factory per schema that maps a type name and
/// namespace to a new object; the base only extracts the xsi:type parts.
class KVXML_API CClassfactoryBase {
public:
    virtual ~CClassfactoryBase();

    /// The local part of the element's xsi:type value ("" when absent).
    static std::string GetElementType(CXmlElement* element);
    /// The namespace the xsi:type prefix is bound to; the element's own
    /// namespace when the value has no prefix or the prefix is unbound.
    static std::string GetElementTypeNamespaceUri(CXmlElement* element);
};

}  // namespace KvXmlLib10
