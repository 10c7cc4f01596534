// MetadataSupport.h - pieces shared by the descriptor families: the read cursor protocol, nil tests, counted-object holding.
#pragma once

#include <string>

#include "kvxml/metadata/ElementInfo.h"
#include "kvxml/values/ItemType.h"

namespace KvXmlLib10 {

class CXmlObjectBase;

namespace detail {

/// Exact ASCII case-insensitive equality (the nil values "true", "1", ...).
bool EqualsNoCase(const std::string& text, const char* literal);

/// The ItemType of a valued (non-nil) variant holding a primitive; `fallback`
/// for anything else.
ItemType VariantItemType(const KvVariant& value, ItemType fallback);

/// How the search of a mandatory sequence member ended.
enum class MandatorySearch {
    Found,       ///< *current is the member's element
    Absent,      ///< missing, but the context ignores missing mandatory elements: group goes on
    NotMatched   ///< missing inside a pseudo element: the member did not match
};

/// The search of a mandatory sequence member: with ignore-unknown-elements
/// foreign elements are skipped; throws CKvValidationException
/// "Failed to find a required element [%s]" for a real element that is missing.
MandatorySearch SearchMandatoryElement(const KvXmlLib10Data::CElementInfo& info,
                                       const CXmlSerializationContext& context, CXmlElement** current,
                                       KvXmlLib10Data::XmlElementType elementType);

/// The xsi:nil test of a child element read by a simple-value descriptor:
/// true when nil; throws for nil on a non-nillable descriptor and for
/// values other than true/false/1/0 (any case).
bool IsElementNil(const KvXmlLib10Data::CElementInfo& info, const CXmlElement& element);

/// Reads the primitive value of the element under the cursor, stores it and
/// advances the cursor. Nothing is stored when it throws.
void ReadPrimitiveElement(const KvXmlLib10Data::CElementInfo& info, CXmlGeneratedClass* object,
                          CXmlElement** current);
/// As ReadPrimitiveElement for an enumeration value.
void ReadEnumElement(const KvXmlLib10Data::CElementInfo& info, CXmlGeneratedClass* object, CXmlElement** current,
                     KvXmlLib10Data::StringToEnumFunc stringToEnum);

/// Owns the one reference that KvVariant::GetXmlObject hands out.
class HeldObject {
public:
    explicit HeldObject(CXmlObjectBase* object) : m_object(object) {}
    ~HeldObject();
    HeldObject(const HeldObject&) = delete;
    HeldObject& operator=(const HeldObject&) = delete;
    CXmlObjectBase* get() const { return m_object; }

private:
    CXmlObjectBase* m_object;
};

}  // namespace detail
}  // namespace KvXmlLib10
