// Variant.h - KvVariant: one typed value, a nil marker, or nothing, passed between generated classes and the engine.
#pragma once

#include <cstdint>
#include <string>
#include <type_traits>

#include "kvxml/foundation/Export.h"
#include "kvxml/values/ItemType.h"
#include "kvxml/values/WhitespaceUtils.h"

namespace KvXmlLib10 {

class CBinaryData;
class CBigInteger;
class CDateTime;
class CDateTimeSpan;
class CDecimal;
class CXmlObjectBase;
class CXmlCollectionBase;

/// Holds one value of one ItemType (1..26), a shared object (27) or a shared
/// collection (28); or is nil (the type code kept, no value); or is empty.
/// Object values are deep copies owned by the variant; objects and
/// collections are shared and hold one reference per variant.
/// Not for use by two threads at once.
class KVXML_API KvVariant {
public:
    /// Empty: not valid, not nil.
    KvVariant();
    /// Copies as assignment does (objects deep, shared objects AddRef'd).
    KvVariant(const KvVariant& other);
    /// Frees the current value first; assigning a variant to itself
    /// therefore leaves it empty.
    KvVariant& operator=(const KvVariant& other);
    virtual ~KvVariant();

    /// True when nil or holding a type.
    bool IsValid() const;
    bool IsNil() const;
    /// The type's name ("i4", "datetime", ...). Throws CKvException
    /// "Invalid Type %d" for an empty variant and for codes 27 and 28.
    std::string GetType() const;
    /// The code of the value held (0 when empty; 27 and 28 for objects and
    /// collections); a nil variant keeps the code it had.
    ItemType GetItemType() const { return static_cast<ItemType>(m_type); }

    // Each setter frees the current value and leaves the variant valued, not nil.
    void SetHexBinary(const CBinaryData& value);
    void SetBase64Binary(const CBinaryData& value);
    void SetI1(int8_t value);
    void SetI2(int16_t value);
    void SetI4(int32_t value);
    void SetI8(int64_t value);
    void SetUI1(uint8_t value);
    void SetUI2(uint16_t value);
    void SetUI4(uint32_t value);
    void SetUI8(uint64_t value);
    void SetR4(float value);
    void SetR8(double value);
    void SetDuration(const CDateTimeSpan& value);
    void SetYearMonth(const CDateTime& value);
    void SetMonthDay(const CDateTime& value);
    void SetYear(uint16_t value);
    void SetMonth(uint8_t value);
    void SetDay(uint8_t value);
    void SetDate(const CDateTime& value);
    void SetDateTime(const CDateTime& value);
    void SetTime(const CDateTime& value);
    void SetChar(char value);
    void SetString(std::string value);
    void SetBoolean(bool value);
    void SetDecimal(const CDecimal& value);
    void SetInteger(const CBigInteger& value);
    /// Shares object and takes a reference on it (null is allowed).
    void SetXmlObject(CXmlObjectBase* object);
    /// Shares the collection and takes a reference on it through its object
    /// base (null is allowed). T is a collection class: a template only so
    /// that this header needs no definition of the collection base.
    template <typename T>
    void SetXmlCollection(T* collection) {
        static_assert(std::is_base_of<CXmlCollectionBase, T>::value || std::is_same<T, CXmlCollectionBase>::value,
                      "SetXmlCollection takes a collection");
        SetShared(28, static_cast<CXmlObjectBase*>(collection));
    }
    /// Frees the value and marks the variant nil; the type code stays.
    void SetNil();
    /// Frees the value and empties the variant.
    void SetInvalid();

    // Getters return copies and do not check the type: reading another type
    // than the one held is the caller's error. Integers read the raw inline
    // bytes; an object getter on a variant that holds no object of its kind
    // returns a default value instead of touching foreign memory.
    CBinaryData GetHexBinary() const;
    CBinaryData GetBase64Binary() const;
    int8_t GetI1() const;
    int16_t GetI2() const;
    int32_t GetI4() const;
    int64_t GetI8() const;
    uint8_t GetUI1() const;
    uint16_t GetUI2() const;
    uint32_t GetUI4() const;
    uint64_t GetUI8() const;
    float GetR4() const;
    double GetR8() const;
    CDateTimeSpan GetDuration() const;
    CDateTime GetYearMonth() const;
    CDateTime GetMonthDay() const;
    uint16_t GetYear() const;
    uint8_t GetMonth() const;
    uint8_t GetDay() const;
    CDateTime GetDate() const;
    CDateTime GetDateTime() const;
    CDateTime GetTime() const;
    char GetChar() const;
    bool GetBoolean() const;
    std::string GetString() const;
    CDecimal GetDecimal() const;
    CBigInteger GetInteger() const;
    /// The object after an AddRef: the caller owns one reference (null when
    /// the variant holds no object or collection).
    CXmlObjectBase* GetXmlObject() const;
    /// The collection after an AddRef: the caller owns one reference (null
    /// unless the variant holds a collection). Needs the collection class.
    template <typename T = CXmlCollectionBase>
    T* GetXmlCollection() const {
        return static_cast<T*>(GetShared(true));
    }

    /// The lexical form of the value (CConversions). format (null is "") is
    /// used by r4, r8 and decimal only. Throws CKvException
    /// "Invalid Type %d to convert to string" for empty variants and codes
    /// 27 and 28. A nil variant gives the zero of an inline type and ""
    /// for an object type.
    std::string ToString(const char* format) const;
    /// Parses text as type after the whitespace rule and stores it; on
    /// failure the conversion's exception passes out and the variant is
    /// unchanged. A type outside 1..26 throws CKvException
    /// "Invalid Type %d to convert to string" with the variant's OWN type code.
    void FromString(const std::string& text, ItemType type, CWhitespaceUtils::WhitespaceRule rule);

private:
    void Clear();
    void SetInline(int32_t type, const void* value, unsigned size);
    void SetOwned(int32_t type, void* object);
    void SetShared(int32_t type, CXmlObjectBase* object);
    /// The shared pointer after an AddRef, or null when none is held (or,
    /// with collectionOnly, when the variant does not hold a collection).
    CXmlObjectBase* GetShared(bool collectionOnly) const;
    template <typename T>
    T ReadInline() const;
    void* Pointer() const;

    bool m_nil;
    int32_t m_type;
    /// The inline value (first bytes, the rest zero) or one pointer.
    alignas(8) unsigned char m_value[8];
};

}  // namespace KvXmlLib10
