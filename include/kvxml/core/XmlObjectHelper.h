// XmlObjectHelper.h - namespace restrictions of wildcards, element-name matching and facet checks.
#pragma once

#include <cstdint>
#include <string>

#include "kvxml/core/SerializationContext.h"
#include "kvxml/foundation/Export.h"
#include "kvxml/values/ItemType.h"

namespace KvXmlLib10 {

class CXmlElement;
class KvVariant;
class CPrimitiveRestrictions;
class CBigInteger;
class CDecimal;
class CDateTimeSpan;
class CDateTime;
class CBinaryData;

/// Static checks shared by the engine and the wildcard wrappers.
class KVXML_API CXmlObjectHelper {
public:
    /// Whether `namespaceUri` satisfies a wildcard restriction: space-separated
    /// tokens "##any", "##other", "##local", "##targetNamespace" or literal URIs,
    /// tried left to right.
    static bool IsNamespaceValid(const std::string& namespaceUri, const std::string& restriction,
                                 const std::string& targetNamespace);
    /// As IsNamespaceValid, but throws CKvInvalidNamespaceException instead of
    /// returning false.
    static bool TestNamespace(const std::string& namespaceUri, const std::string& restriction,
                              const std::string& targetNamespace);
    /// Whether the element has this local name and, unless the context ignores
    /// namespaces, this namespace. Exact byte comparisons.
    static bool DoesElementNameMatch(const CXmlSerializationContext& context, const CXmlElement* element,
                                     const std::string& name, const std::string& namespaceUri);

    // Facet checks. `name` (the element or attribute, null reads as "") is
    // quoted in messages. A broken facet throws CKvException
    // "Invalid Value for <name> [<value>]"; a bound that does not parse as
    // the type throws that conversion's own exception. Bounds are parsed
    // again on every call and patterns compiled again: nothing is cached.
    // Ordered types check only minInclusive, maxInclusive, minExclusive and
    // maxExclusive, in that order; a value the bound cannot be compared with
    // (NaN, an incomparable date or duration) fails the facet.

    /// Checks value as type with the matching variant getter. Codes 0, 22
    /// (char) and outside 1..26 throw CKvInvalidValueException
    /// "unknown type [<value.GetType()>]" (GetType itself throws for an
    /// empty variant).
    static void CheckRestriction(const char* name, const KvVariant& value, ItemType type,
                                 const CPrimitiveRestrictions& r);

    /// Integers, year, month and day print the value as "%d" (a ui4 above
    /// 2^31-1 reads negative, as a 32-bit int); i8 and ui8 in full.
    static void CheckRestrictionFori1(const char* name, int8_t value, const CPrimitiveRestrictions& r);
    static void CheckRestrictionFori2(const char* name, int16_t value, const CPrimitiveRestrictions& r);
    static void CheckRestrictionFori4(const char* name, int32_t value, const CPrimitiveRestrictions& r);
    static void CheckRestrictionFori8(const char* name, int64_t value, const CPrimitiveRestrictions& r);
    static void CheckRestrictionForui1(const char* name, uint8_t value, const CPrimitiveRestrictions& r);
    static void CheckRestrictionForui2(const char* name, uint16_t value, const CPrimitiveRestrictions& r);
    static void CheckRestrictionForui4(const char* name, uint32_t value, const CPrimitiveRestrictions& r);
    static void CheckRestrictionForui8(const char* name, uint64_t value, const CPrimitiveRestrictions& r);
    /// Floating values print as "%f".
    static void CheckRestrictionForr4(const char* name, float value, const CPrimitiveRestrictions& r);
    static void CheckRestrictionForr8(const char* name, double value, const CPrimitiveRestrictions& r);
    static void CheckRestrictionForinteger(const char* name, const CBigInteger& value,
                                           const CPrimitiveRestrictions& r);
    static void CheckRestrictionFordecimal(const char* name, const CDecimal& value, const CPrimitiveRestrictions& r);
    static void CheckRestrictionForduration(const char* name, const CDateTimeSpan& value,
                                            const CPrimitiveRestrictions& r);
    /// Date types compare time-zone aware; bounds parse as the function's own form.
    static void CheckRestrictionFordate(const char* name, const CDateTime& value, const CPrimitiveRestrictions& r);
    static void CheckRestrictionFordatetime(const char* name, const CDateTime& value,
                                            const CPrimitiveRestrictions& r);
    static void CheckRestrictionFortime(const char* name, const CDateTime& value, const CPrimitiveRestrictions& r);
    static void CheckRestrictionForyearMonth(const char* name, const CDateTime& value,
                                             const CPrimitiveRestrictions& r);
    static void CheckRestrictionFormonthDay(const char* name, const CDateTime& value,
                                            const CPrimitiveRestrictions& r);
    /// Another name for the gYearMonth check; its bounds are gYearMonth texts.
    static void CheckRestrictionFormonthYear(const char* name, const CDateTime& value,
                                             const CPrimitiveRestrictions& r);
    static void CheckRestrictionForyear(const char* name, uint16_t value, const CPrimitiveRestrictions& r);
    static void CheckRestrictionFormonth(const char* name, uint8_t value, const CPrimitiveRestrictions& r);
    static void CheckRestrictionForday(const char* name, uint8_t value, const CPrimitiveRestrictions& r);
    /// minLength, maxLength, length (in bytes), then pattern. A pattern that
    /// does not compile throws CKvException
    /// "<regex error's full message>\nInvalid Value for <name> [<value>]".
    static void CheckRestrictionForstring(const char* name, std::string value, const CPrimitiveRestrictions& r);
    /// Accepts every value.
    static void CheckRestrictionForboolean(const char* name, bool value, const CPrimitiveRestrictions& r);
    /// minLength, maxLength and length in bytes; the message shows the bytes
    /// as hexadecimal for both binary types.
    static void CheckRestrictionForbase64Binary(const char* name, const CBinaryData& value,
                                                const CPrimitiveRestrictions& r);
    static void CheckRestrictionForhexBinary(const char* name, const CBinaryData& value,
                                             const CPrimitiveRestrictions& r);
};

}  // namespace KvXmlLib10
