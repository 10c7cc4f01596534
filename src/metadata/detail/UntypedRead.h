// UntypedRead.h - the codec of the untyped kind: wildcard content held in a CElement, or in a CElementCol for the
// collection forms.
#pragma once

#include <string>

#include "metadata/detail/MemberRead.h"

namespace KvXmlLib10 {

class CElement;

namespace detail {

/// Reads and writes one xs:any particle. The descriptor's name is the local
/// name accepted ("AnyElement": any); the restriction, against the wildcard
/// namespace, decides which namespaces are accepted.
struct UntypedCodec {
    const std::string& restriction;
    const std::string& wildcardNamespace;
    /// The mandatory forms read into the element the parent created in
    /// advance; the optional forms create one and store it once it read.
    bool existingChild;

    /// The element writes itself; an unset property writes nothing.
    bool Write(const KvXmlLib10Data::CElementInfo& info, const CXmlSerializationContext& context,
               const CXmlGeneratedClass* object, CXmlWriter* writer) const;
    /// Whether the element under the cursor is for this particle.
    bool Admits(const KvXmlLib10Data::CElementInfo& info, const CXmlElement& element) const;
};

/// The read of an untyped Mnd or Opt member. Accept and Decline leave a
/// non-matching element as any optional member does; Search fails at the end
/// of the parent as every mandatory sequence member does and, in an element
/// of its own, on an element it cannot take, with CKvValidationException
/// "Failed to find the required element from namespace [%s]".
bool ReadUntypedMember(MissRule rule, const UntypedCodec& codec, const KvXmlLib10Data::CElementInfo& info,
                       const CXmlSerializationContext& context, CXmlGeneratedClass* object, CXmlElement* parent,
                       CXmlElement** current, const char* engineNamespace, KvXmlLib10Data::XmlElementType elementType);

/// The read of an untyped collection of a sequence or a choice: the
/// CElementCol in the property takes the consecutive elements named like the
/// descriptor (any name for "AnyElement") in the namespace of the first one,
/// then the count is checked as for every collection.
bool ReadUntypedCollection(MissRule rule, const KvXmlLib10Data::CElementInfo& info,
                           const CXmlSerializationContext& context, CXmlGeneratedClass* object, CXmlElement* parent,
                           CXmlElement** current, KvXmlLib10Data::XmlElementType elementType);

}  // namespace detail
}  // namespace KvXmlLib10
