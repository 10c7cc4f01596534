// PrimitiveCollections.h - the typed collections of primitive values, one per XML Schema type (Ci4Col, CdateCol, CstringCol, ...).
//
// Each holds its values in order, checks the facets of every value as it is
// added, fires the collection events and writes itself as a run of sibling
// elements. The constructor arguments are those of CXmlTypeCollection after
// its item type: element name, namespace, minOccurs, maxOccurs (-1 =
// unbounded), pattern, minLength, maxLength, minInclusive, maxInclusive,
// minExclusive, maxExclusive, length (null / -1 = unset), whitespace rule,
// number format (float, double and decimal items; null = canonical).
//
// Every member is one instance of a shared body: CPrimitiveCol for most
// types, CDateKindCol over CdatetimeBaseCol for the five date-and-time kinds.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "kvxml/core/XmlTypeCollection.h"
#include "kvxml/foundation/Export.h"
#include "kvxml/foundation/InstanceMonitor.h"
#include "kvxml/values/BigInteger.h"
#include "kvxml/values/BinaryData.h"
#include "kvxml/values/DateTime.h"
#include "kvxml/values/DateTimeSpan.h"
#include "kvxml/values/Decimal.h"

namespace KvXmlLib10 {

/// A collection of values of type Value held as ItemType Type.
///
/// AddAt(index, value): fires event 1 (data: the value) before any test,
/// then throws CKvInvalidParamException "Index out of range" unless
/// 0 <= index <= GetCount(), then checks the facets (a violation throws what
/// CXmlObjectHelper::CheckRestrictionFor<type> throws), inserts, and fires
/// events 2 and 0. A failed add leaves the values unchanged.
/// Item and Remove take 0 <= index < GetCount(), else
/// "Index %d is out of range, use 0 - %d" (index, count); Remove fires
/// event 3 before that check, then 4 and 0.
/// ToXml_Int checks the count first (ValidateCount) and then writes each
/// value as an element of its own.
template <ItemType Type, typename Value>
class KVXML_API CPrimitiveCol final : public CXmlTypeCollection {
public:
    typedef Value ValueType;

    CPrimitiveCol(const char* elementName, const char* targetNamespace, int32_t minOccurs, int32_t maxOccurs,
                  const char* pattern, int32_t minLength, int32_t maxLength, const char* minInclusive,
                  const char* maxInclusive, const char* minExclusive, const char* maxExclusive, int32_t length,
                  CWhitespaceUtils::WhitespaceRule whitespaceRule, const char* numberFormat);
    ~CPrimitiveCol() override;

    void Add(const Value& value);
    void AddAt(int32_t index, const Value& value);
    Value Item(int32_t index) const;

    int32_t GetCount() const override;
    /// As CXmlTypeCollection::Clear; with no listener to tell, in one step.
    void Clear() override;
    void Remove(int32_t index) override;
    void AddFromString(const std::string& text) override;

protected:
    void ToXml_Int(CXmlWriter* writer, bool isRoot, const char* targetNamespace,
                   const CXmlSerializationContext& context, bool flag) const override;

private:
    std::vector<Value> m_values;
    CInstanceMonitor m_monitor;
};

/// The date-and-time collections: values are CDateTime of one kind.
/// Insertion (BaseAddAt: events and index check as CPrimitiveCol::AddAt,
/// without the facet check), Item, Remove and writing live here.
class KVXML_API CdatetimeBaseCol : public CXmlTypeCollection {
public:
    ~CdatetimeBaseCol() override;

    CDateTime Item(int32_t index) const;
    int32_t GetCount() const override;
    /// As CXmlTypeCollection::Clear; with no listener to tell, in one step.
    void Clear() override;
    void Remove(int32_t index) override;
    /// The text of the item at index, as written.
    virtual std::string ItemToString(int32_t index) const = 0;

protected:
    using CXmlTypeCollection::CXmlTypeCollection;
    void BaseAddAt(int32_t index, const CDateTime& value);
    void ToXml_Int(CXmlWriter* writer, bool isRoot, const char* targetNamespace,
                   const CXmlSerializationContext& context, bool flag) const override;

private:
    std::vector<CDateTime> m_values;
};

/// A date-and-time collection of the kind of Type. AddAt first refuses a
/// value of another kind with CKvInvalidParamException "Dates added to this
/// collection must be of type dt_<kind>" and checks the facets, both before
/// any event, then inserts through BaseAddAt.
template <ItemType Type>
class KVXML_API CDateKindCol final : public CdatetimeBaseCol {
public:
    typedef CDateTime ValueType;

    CDateKindCol(const char* elementName, const char* targetNamespace, int32_t minOccurs, int32_t maxOccurs,
                 const char* pattern, int32_t minLength, int32_t maxLength, const char* minInclusive,
                 const char* maxInclusive, const char* minExclusive, const char* maxExclusive, int32_t length,
                 CWhitespaceUtils::WhitespaceRule whitespaceRule, const char* numberFormat);
    ~CDateKindCol() override;

    void Add(const CDateTime& value);
    void AddAt(int32_t index, const CDateTime& value);
    void AddFromString(const std::string& text) override;
    std::string ItemToString(int32_t index) const override;

private:
    CInstanceMonitor m_monitor;
};

// The bodies are compiled once, in the library.
extern template class KVXML_API CPrimitiveCol<hexBinary, CBinaryData>;
extern template class KVXML_API CPrimitiveCol<base64Binary, CBinaryData>;
extern template class KVXML_API CPrimitiveCol<i1, int8_t>;
extern template class KVXML_API CPrimitiveCol<i2, int16_t>;
extern template class KVXML_API CPrimitiveCol<i4, int32_t>;
extern template class KVXML_API CPrimitiveCol<i8, int64_t>;
extern template class KVXML_API CPrimitiveCol<ui1, uint8_t>;
extern template class KVXML_API CPrimitiveCol<ui2, uint16_t>;
extern template class KVXML_API CPrimitiveCol<ui4, uint32_t>;
extern template class KVXML_API CPrimitiveCol<ui8, uint64_t>;
extern template class KVXML_API CPrimitiveCol<r4, float>;
extern template class KVXML_API CPrimitiveCol<r8, double>;
extern template class KVXML_API CPrimitiveCol<duration, CDateTimeSpan>;
extern template class KVXML_API CPrimitiveCol<year, uint16_t>;
extern template class KVXML_API CPrimitiveCol<month, uint8_t>;
extern template class KVXML_API CPrimitiveCol<day, uint8_t>;
extern template class KVXML_API CPrimitiveCol<string, std::string>;
extern template class KVXML_API CPrimitiveCol<boolean, bool>;
extern template class KVXML_API CPrimitiveCol<decimal, CDecimal>;
extern template class KVXML_API CPrimitiveCol<integer, CBigInteger>;
extern template class KVXML_API CDateKindCol<yearMonth>;
extern template class KVXML_API CDateKindCol<monthDay>;
extern template class KVXML_API CDateKindCol<date>;
extern template class KVXML_API CDateKindCol<datetime>;
extern template class KVXML_API CDateKindCol<time>;

typedef CPrimitiveCol<hexBinary, CBinaryData> ChexBinaryCol;
typedef CPrimitiveCol<base64Binary, CBinaryData> Cbase64BinaryCol;
typedef CPrimitiveCol<i1, int8_t> Ci1Col;
typedef CPrimitiveCol<i2, int16_t> Ci2Col;
typedef CPrimitiveCol<i4, int32_t> Ci4Col;
typedef CPrimitiveCol<i8, int64_t> Ci8Col;
typedef CPrimitiveCol<ui1, uint8_t> Cui1Col;
typedef CPrimitiveCol<ui2, uint16_t> Cui2Col;
typedef CPrimitiveCol<ui4, uint32_t> Cui4Col;
typedef CPrimitiveCol<ui8, uint64_t> Cui8Col;
typedef CPrimitiveCol<r4, float> Cr4Col;
typedef CPrimitiveCol<r8, double> Cr8Col;
typedef CPrimitiveCol<duration, CDateTimeSpan> CdurationCol;
typedef CDateKindCol<yearMonth> CyearMonthCol;
typedef CDateKindCol<monthDay> CmonthDayCol;
typedef CPrimitiveCol<year, uint16_t> CyearCol;
typedef CPrimitiveCol<month, uint8_t> CmonthCol;
typedef CPrimitiveCol<day, uint8_t> CdayCol;
typedef CDateKindCol<date> CdateCol;
typedef CDateKindCol<datetime> CdatetimeCol;
typedef CDateKindCol<time> CtimeCol;
typedef CPrimitiveCol<string, std::string> CstringCol;
typedef CPrimitiveCol<boolean, bool> CbooleanCol;
typedef CPrimitiveCol<decimal, CDecimal> CdecimalCol;
typedef CPrimitiveCol<integer, CBigInteger> CintegerCol;

}  // namespace KvXmlLib10
