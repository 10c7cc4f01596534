// MemberRead.h - the two axes every element descriptor is built from: what a member does when the element under the
// cursor is not its own (the miss rule), and how one matched element is read and written (the codec of its kind).
//
// A mandated descriptor class is a thin shell: it picks the miss rule of its
// group and cardinality and the codec of its kind and hands both to
// ReadMember. Writing needs no rule: every single-valued member writes the
// same way whatever its group. A kind is one codec: the untyped (wildcard)
// members are to be one more, writing through ElementToXmlCls and reading a
// generic element, under the same miss rules.
#pragma once

#include "kvxml/core/SmartPtr.h"
#include "kvxml/metadata/ElementInfo.h"
#include "kvxml/metadata/ElementInfoClass.h"

namespace KvXmlLib10 {

class CXmlObjectBase;
class CXmlCollectionBase;

namespace detail {

/// What a member does when the element under the cursor is not its own.
enum class MissRule {
    Search,     ///< mandatory sequence member: skip foreign elements as the context allows, else fail
    Accept,     ///< optional sequence member: the group goes on without it
    Decline,    ///< member of an all group or a choice: not matched, the group offers the element elsewhere
    Substitute  ///< mandatory abstract sequence member: a miss, or an element no class fits, is fatal
};

/// Where the cursor left a member.
enum class Lookup {
    Found,   ///< *current is the member's element
    GoOn,    ///< absent, and the group may go on (ElementFromXml answers true)
    NoMatch  ///< absent: the member did not match (ElementFromXml answers false)
};

/// Applies the miss rule at the cursor. Search skips foreign elements when
/// the context ignores unknown ones and throws CKvValidationException
/// "Failed to find a required element [%s]" for a missing element of its own;
/// Substitute throws "Failed to find a suitable substitution element for [%s]".
/// Inside a pseudo element (elementType not 0) a missing mandatory member is
/// a plain NoMatch.
Lookup LocateMember(MissRule rule, const KvXmlLib10Data::CElementInfo& info, const CXmlSerializationContext& context,
                    CXmlElement** current, KvXmlLib10Data::XmlElementType elementType);

/// What a miss means under the rule, the cursor staying where it is: the
/// answer for Accept and Decline, and for the mandatory rules as LocateMember
/// decides at a null cursor (which may throw).
bool AnswerMiss(MissRule rule, const KvXmlLib10Data::CElementInfo& info, const CXmlSerializationContext& context,
                KvXmlLib10Data::XmlElementType elementType);

/// The codec of the primitive kind.
struct PrimCodec {
    bool Write(const KvXmlLib10Data::CElementInfo& info, const CXmlSerializationContext& context,
               const CXmlGeneratedClass* object, CXmlWriter* writer) const;
    /// Converts the matched element (nil aware), stores the value and
    /// advances the cursor; stores nothing and keeps the cursor when it throws.
    void Read(const KvXmlLib10Data::CElementInfo& info, const CXmlSerializationContext& context,
              CXmlGeneratedClass* object, CXmlElement* parent, CXmlElement** current) const;
};

/// The codec of the enumeration kind: the two generated functions.
struct EnumCodec {
    KvXmlLib10Data::EnumToStringFunc toText;
    KvXmlLib10Data::StringToEnumFunc fromText;

    bool Write(const KvXmlLib10Data::CElementInfo& info, const CXmlSerializationContext& context,
               const CXmlGeneratedClass* object, CXmlWriter* writer) const;
    void Read(const KvXmlLib10Data::CElementInfo& info, const CXmlSerializationContext& context,
              CXmlGeneratedClass* object, CXmlElement* parent, CXmlElement** current) const;
};

/// The codec of the class kinds. The child is the one the parent created in
/// advance (mandatory classes, preCreated), else a new one from the
/// generated factory (class number and element name) or from the abstract
/// factory (which picks the class from the DOM element, or returns null).
struct ClassCodec {
    KvXmlLib10Data::XmlElementType childType;
    ClassFactoryFunc factory;
    int32_t classNumber;
    AbstractClassFactoryFunc abstractFactory;
    bool preCreated;

    bool Write(const KvXmlLib10Data::CElementInfo& info, const CXmlSerializationContext& context,
               const CXmlGeneratedClass* object, CXmlWriter* writer) const;
    /// The child for `element` (the element read, or the cursor position of a
    /// pseudo child); null when there is none. isNew tells whether it still
    /// has to be stored in the parent.
    CSmartPtr<CXmlObjectBase> Child(const KvXmlLib10Data::CElementInfo& info, CXmlGeneratedClass* object,
                                    CXmlElement* element, bool& isNew) const;
};

/// The read of every single-valued member: the miss rule, then the codec.
template <typename Codec>
bool ReadMember(MissRule rule, const Codec& codec, const KvXmlLib10Data::CElementInfo& info,
                const CXmlSerializationContext& context, CXmlGeneratedClass* object, CXmlElement* parent,
                CXmlElement** current, KvXmlLib10Data::XmlElementType elementType) {
    const Lookup at = LocateMember(rule, info, context, current, elementType);
    if (at != Lookup::Found) return at == Lookup::GoOn;
    codec.Read(info, context, object, parent, current);
    return true;
}

/// The read of a class member: a pseudo child reads from the cursor inside
/// the parent and counts as found only when it consumed something; a child
/// with an element of its own follows ReadMember.
bool ReadClassMember(MissRule rule, const ClassCodec& codec, const KvXmlLib10Data::CElementInfo& info,
                     const CXmlSerializationContext& context, CXmlGeneratedClass* object, CXmlElement* parent,
                     CXmlElement** current, KvXmlLib10Data::XmlElementType elementType);

/// The read of every collection member: the collection held by the property
/// reads the consecutive elements it accepts from the cursor. Having read
/// nothing, a Decline member answers false. Otherwise, with checkCount, an
/// own element (elementType 0) calls ValidateCount, which throws on a count
/// outside the bounds, and a pseudo element answers IsValidCount.
bool ReadCollectionMember(MissRule rule, bool checkCount, const KvXmlLib10Data::CElementInfo& info,
                          const CXmlSerializationContext& context, CXmlGeneratedClass* object, CXmlElement* parent,
                          CXmlElement** current, KvXmlLib10Data::XmlElementType elementType);

/// The answer of a collection member once its collection has read (having
/// consumed something or not), with the count checks described above.
bool AnswerCollectionRead(MissRule rule, bool checkCount, const CXmlCollectionBase& collection, bool consumed,
                          const CXmlSerializationContext& context, KvXmlLib10Data::XmlElementType elementType);

/// The pseudo-element read: let the child read from the cursor inside the
/// parent; only when it consumed at least one element is it stored (when
/// `store`) and the cursor moved. A null cursor or a null child reads nothing.
/// Returns whether it consumed.
bool ReadPseudoChild(const KvXmlLib10Data::CElementInfo& info, const CXmlSerializationContext& context,
                     CXmlGeneratedClass* object, CXmlElement* parent, CXmlElement** current,
                     const CSmartPtr<CXmlObjectBase>& child, bool store);

/// Writes the attributes of a pseudo child onto the parent's open element;
/// nothing for a child with an element of its own.
void WritePseudoChildAttributes(const KvXmlLib10Data::CElementInfo& info, KvXmlLib10Data::XmlElementType childType,
                                const CXmlSerializationContext& context, const CXmlGeneratedClass* object,
                                CXmlWriter* writer);

/// The all-group check of a mandatory member that was not found: throws
/// CKvValidationException "Failed to find the mandatory element [%s]".
[[noreturn]] void ThrowMandatoryMissing(const KvXmlLib10Data::CElementInfo& info);

/// The all-group Validate of a mandatory simple member.
bool ValidateMandatory(const KvXmlLib10Data::CElementInfo& info, bool found, bool checkMandatory);

}  // namespace detail
}  // namespace KvXmlLib10
