// ElementInfoClass.h - descriptors of child elements holding a generated class (Cls) or an abstract class whose
// concrete type the document chooses (AbsCls).
//
// The child is a separate, reference-counted object held by the parent's
// property. With element type 0 it has an element of its own; with 1 it is a
// pseudo element: a model group whose children and attributes live directly
// in the parent's element.
#pragma once

#include <cstdint>

#include "kvxml/core/SmartPtr.h"
#include "kvxml/metadata/ElementInfo.h"

namespace KvXmlLib10Data {

/// Generated factory of a class member: a new object for a class number and
/// an element name.
typedef KvXmlLib10::CSmartPtr<KvXmlLib10::CXmlObjectBase> (*ClassFactoryFunc)(int32_t classNumber,
                                                                              const char* elementName);
/// Generated factory of an abstract member: a new object of the class that
/// fits the DOM element (its name, its xsi:type), or null when none does.
typedef KvXmlLib10::CSmartPtr<KvXmlLib10::CXmlObjectBase> (*AbstractClassFactoryFunc)(KvXmlLib10::CXmlElement* element);

}  // namespace KvXmlLib10Data
