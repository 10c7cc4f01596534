// NillableOf.h - the INillable side of a generated object, found without a cross cast per element.
#pragma once

namespace KvXmlLib10 {

class CXmlGeneratedClass;
class INillable;

namespace detail {

/// dynamic_cast<const INillable*>(&object). Most classes are not nillable,
/// and the cast walks the class's whole base graph to say so; that answer is
/// remembered per dynamic type (per thread), so only nillable ones pay it.
const INillable* NillableOf(const CXmlGeneratedClass& object);

}  // namespace detail
}  // namespace KvXmlLib10
