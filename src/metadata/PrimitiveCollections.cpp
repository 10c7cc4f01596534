// PrimitiveCollections.cpp - the one body of the typed value collections and the per-type codecs it is compiled with.
#include "kvxml/metadata/PrimitiveCollections.h"

#include "kvxml/core/XmlObjectHelper.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/values/Conversions.h"

namespace KvXmlLib10 {

namespace {

using Rule = CWhitespaceUtils::WhitespaceRule;

// What differs between the members: text conversion both ways, the facet
// check and the class name the instance monitor counts under.
template <ItemType Type>
struct Codec;

#define KVXML_VALUE_CODEC(NAME, VALUE)                                                               \
    template <>                                                                                      \
    struct Codec<NAME> {                                                                             \
        static constexpr const char* kClassName = "C" #NAME "Col";                                   \
        static VALUE Parse(const std::string& text, Rule rule) {                                     \
            return CConversions::NAME##FromString(text, rule);                                       \
        }                                                                                            \
        static std::string Print(const VALUE& value, const std::string&) {                           \
            return CConversions::NAME##ToString(value);                                              \
        }                                                                                            \
        static void Check(const char* name, const VALUE& value, const CPrimitiveRestrictions& r) {   \
            CXmlObjectHelper::CheckRestrictionFor##NAME(name, value, r);                             \
        }                                                                                            \
    };

// Floats and decimals print with the collection's number format when it has one.
#define KVXML_FORMATTED_CODEC(NAME, VALUE)                                                           \
    template <>                                                                                      \
    struct Codec<NAME> {                                                                             \
        static constexpr const char* kClassName = "C" #NAME "Col";                                   \
        static VALUE Parse(const std::string& text, Rule rule) {                                     \
            return CConversions::NAME##FromString(text, rule);                                       \
        }                                                                                            \
        static std::string Print(const VALUE& value, const std::string& format) {                    \
            return format.empty() ? CConversions::NAME##ToString(value)                              \
                                  : CConversions::NAME##ToString(value, format);                     \
        }                                                                                            \
        static void Check(const char* name, const VALUE& value, const CPrimitiveRestrictions& r) {   \
            CXmlObjectHelper::CheckRestrictionFor##NAME(name, value, r);                             \
        }                                                                                            \
    };

KVXML_VALUE_CODEC(hexBinary, CBinaryData)
KVXML_VALUE_CODEC(base64Binary, CBinaryData)
KVXML_VALUE_CODEC(i1, int8_t)
KVXML_VALUE_CODEC(i2, int16_t)
KVXML_VALUE_CODEC(i4, int32_t)
KVXML_VALUE_CODEC(i8, int64_t)
KVXML_VALUE_CODEC(ui1, uint8_t)
KVXML_VALUE_CODEC(ui2, uint16_t)
KVXML_VALUE_CODEC(ui4, uint32_t)
KVXML_VALUE_CODEC(ui8, uint64_t)
KVXML_FORMATTED_CODEC(r4, float)
KVXML_FORMATTED_CODEC(r8, double)
KVXML_VALUE_CODEC(duration, CDateTimeSpan)
KVXML_VALUE_CODEC(yearMonth, CDateTime)
KVXML_VALUE_CODEC(monthDay, CDateTime)
KVXML_VALUE_CODEC(year, uint16_t)
KVXML_VALUE_CODEC(month, uint8_t)
KVXML_VALUE_CODEC(day, uint8_t)
KVXML_VALUE_CODEC(date, CDateTime)
KVXML_VALUE_CODEC(datetime, CDateTime)
KVXML_VALUE_CODEC(time, CDateTime)
KVXML_VALUE_CODEC(string, std::string)
KVXML_VALUE_CODEC(boolean, bool)
KVXML_FORMATTED_CODEC(decimal, CDecimal)
KVXML_VALUE_CODEC(integer, CBigInteger)

#undef KVXML_VALUE_CODEC
#undef KVXML_FORMATTED_CODEC

// The CDateTime kind each date-and-time collection accepts, and its name in the refusal.
template <ItemType Type>
struct DateKind;
#define KVXML_DATE_KIND(TYPE, KIND)                                          \
    template <>                                                              \
    struct DateKind<TYPE> {                                                  \
        static constexpr CDateTime::DTType kKind = CDateTime::KIND;          \
        static constexpr const char* kMessage =                              \
            "Dates added to this collection must be of type " #KIND;         \
    };
KVXML_DATE_KIND(date, dt_date)
KVXML_DATE_KIND(datetime, dt_dateTime)
KVXML_DATE_KIND(time, dt_time)
KVXML_DATE_KIND(yearMonth, dt_gYearMonth)
KVXML_DATE_KIND(monthDay, dt_gMonthDay)
#undef KVXML_DATE_KIND

}  // namespace

// ---- the shared body ----

template <ItemType Type, typename Value>
CPrimitiveCol<Type, Value>::CPrimitiveCol(const char* elementName, const char* targetNamespace, int32_t minOccurs,
                                          int32_t maxOccurs, const char* pattern, int32_t minLength,
                                          int32_t maxLength, const char* minInclusive, const char* maxInclusive,
                                          const char* minExclusive, const char* maxExclusive, int32_t length,
                                          CWhitespaceUtils::WhitespaceRule whitespaceRule, const char* numberFormat)
    : CXmlTypeCollection(Type, elementName, targetNamespace, minOccurs, maxOccurs, pattern, minLength, maxLength,
                         minInclusive, maxInclusive, minExclusive, maxExclusive, length, whitespaceRule,
                         numberFormat),
      m_monitor(Codec<Type>::kClassName) {}

template <ItemType Type, typename Value>
CPrimitiveCol<Type, Value>::~CPrimitiveCol() = default;

template <ItemType Type, typename Value>
void CPrimitiveCol<Type, Value>::Add(const Value& value) {
    AddAt(GetCount(), value);
}

template <ItemType Type, typename Value>
void CPrimitiveCol<Type, Value>::AddAt(int32_t index, const Value& value) {
    // Listeners get the caller's value: it outlives the add and is the
    // value the caller knows.
    void* item = const_cast<Value*>(&value);
    BeginAdd(index, item);
    Codec<Type>::Check(GetElementName().c_str(), value, GetRestrictions());
    m_values.insert(m_values.begin() + index, value);
    EndAdd(item);
}

template <ItemType Type, typename Value>
Value CPrimitiveCol<Type, Value>::Item(int32_t index) const {
    CheckItemIndex(index);
    return m_values[static_cast<size_t>(index)];
}

template <ItemType Type, typename Value>
int32_t CPrimitiveCol<Type, Value>::GetCount() const {
    return static_cast<int32_t>(m_values.size());
}

template <ItemType Type, typename Value>
void CPrimitiveCol<Type, Value>::Clear() {
    // Removing from the front one at a time is quadratic in a vector.
    if (HasEventListeners())
        CXmlTypeCollection::Clear();
    else
        m_values.clear();
}

template <ItemType Type, typename Value>
void CPrimitiveCol<Type, Value>::Remove(int32_t index) {
    BeginRemove(index);
    m_values.erase(m_values.begin() + index);
    EndRemove(index);
}

template <ItemType Type, typename Value>
void CPrimitiveCol<Type, Value>::AddFromString(const std::string& text) {
    Add(Codec<Type>::Parse(text, GetWhitespaceRule()));
}

template <ItemType Type, typename Value>
void CPrimitiveCol<Type, Value>::ToXml_Int(CXmlWriter* writer, bool, const char*,
                                           const CXmlSerializationContext& context, bool) const {
    ValidateCount(context);
    const std::string name = GetElementName();
    for (const Value& value : m_values) WriteItem(writer, name, Codec<Type>::Print(value, GetNumberFormat()));
}

// ---- date and time ----

CdatetimeBaseCol::~CdatetimeBaseCol() = default;

CDateTime CdatetimeBaseCol::Item(int32_t index) const {
    CheckItemIndex(index);
    return m_values[static_cast<size_t>(index)];
}

int32_t CdatetimeBaseCol::GetCount() const { return static_cast<int32_t>(m_values.size()); }

void CdatetimeBaseCol::Clear() {
    if (HasEventListeners())
        CXmlTypeCollection::Clear();
    else
        m_values.clear();
}

void CdatetimeBaseCol::Remove(int32_t index) {
    BeginRemove(index);
    m_values.erase(m_values.begin() + index);
    EndRemove(index);
}

void CdatetimeBaseCol::BaseAddAt(int32_t index, const CDateTime& value) {
    void* item = const_cast<CDateTime*>(&value);
    BeginAdd(index, item);
    m_values.insert(m_values.begin() + index, value);
    EndAdd(item);
}

void CdatetimeBaseCol::ToXml_Int(CXmlWriter* writer, bool, const char*, const CXmlSerializationContext& context,
                                 bool) const {
    ValidateCount(context);
    const std::string name = GetElementName();
    for (int32_t i = 0; i < GetCount(); ++i) WriteItem(writer, name, ItemToString(i));
}

template <ItemType Type>
CDateKindCol<Type>::CDateKindCol(const char* elementName, const char* targetNamespace, int32_t minOccurs,
                                 int32_t maxOccurs, const char* pattern, int32_t minLength, int32_t maxLength,
                                 const char* minInclusive, const char* maxInclusive, const char* minExclusive,
                                 const char* maxExclusive, int32_t length,
                                 CWhitespaceUtils::WhitespaceRule whitespaceRule, const char* numberFormat)
    : CdatetimeBaseCol(Type, elementName, targetNamespace, minOccurs, maxOccurs, pattern, minLength, maxLength,
                       minInclusive, maxInclusive, minExclusive, maxExclusive, length, whitespaceRule, numberFormat),
      m_monitor(Codec<Type>::kClassName) {}

template <ItemType Type>
CDateKindCol<Type>::~CDateKindCol() = default;

template <ItemType Type>
void CDateKindCol<Type>::Add(const CDateTime& value) {
    AddAt(GetCount(), value);
}

template <ItemType Type>
void CDateKindCol<Type>::AddAt(int32_t index, const CDateTime& value) {
    if (value.GetType() != DateKind<Type>::kKind) throw CKvInvalidParamException(DateKind<Type>::kMessage);
    Codec<Type>::Check(GetElementName().c_str(), value, GetRestrictions());
    BaseAddAt(index, value);
}

template <ItemType Type>
void CDateKindCol<Type>::AddFromString(const std::string& text) {
    Add(Codec<Type>::Parse(text, GetWhitespaceRule()));
}

template <ItemType Type>
std::string CDateKindCol<Type>::ItemToString(int32_t index) const {
    return Codec<Type>::Print(Item(index), GetNumberFormat());
}

template class CPrimitiveCol<hexBinary, CBinaryData>;
template class CPrimitiveCol<base64Binary, CBinaryData>;
template class CPrimitiveCol<i1, int8_t>;
template class CPrimitiveCol<i2, int16_t>;
template class CPrimitiveCol<i4, int32_t>;
template class CPrimitiveCol<i8, int64_t>;
template class CPrimitiveCol<ui1, uint8_t>;
template class CPrimitiveCol<ui2, uint16_t>;
template class CPrimitiveCol<ui4, uint32_t>;
template class CPrimitiveCol<ui8, uint64_t>;
template class CPrimitiveCol<r4, float>;
template class CPrimitiveCol<r8, double>;
template class CPrimitiveCol<duration, CDateTimeSpan>;
template class CPrimitiveCol<year, uint16_t>;
template class CPrimitiveCol<month, uint8_t>;
template class CPrimitiveCol<day, uint8_t>;
template class CPrimitiveCol<string, std::string>;
template class CPrimitiveCol<boolean, bool>;
template class CPrimitiveCol<decimal, CDecimal>;
template class CPrimitiveCol<integer, CBigInteger>;
template class CDateKindCol<yearMonth>;
template class CDateKindCol<monthDay>;
template class CDateKindCol<date>;
template class CDateKindCol<datetime>;
template class CDateKindCol<time>;

}  // namespace KvXmlLib10
