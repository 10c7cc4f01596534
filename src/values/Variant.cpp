// Variant.cpp - KvVariant: storage, copying and freeing of the held value, setters and getters.
//
// The value lives in eight raw bytes read and written with memcpy: inline
// values at the start (the rest kept zero), or one pointer. Which it is
// follows from the type code alone, so no byte is ever read as a pointer
// unless a pointer was stored there.
#include "kvxml/values/Variant.h"

#include <cstring>
#include <memory>

#include "kvxml/core/XmlObjectBase.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/values/BigInteger.h"
#include "kvxml/values/BinaryData.h"
#include "kvxml/values/DateTime.h"
#include "kvxml/values/DateTimeSpan.h"
#include "kvxml/values/Decimal.h"
#include "detail/VariantStorage.h"

namespace KvXmlLib10 {

using detail::Storage;
using detail::StorageOf;

namespace {

const char* const kTypeNames[] = {nullptr,    "hexBinary", "base64Binary", "i1",       "i2",      "i4",
                                  "i8",       "ui1",       "ui2",          "ui4",      "ui8",     "r4",
                                  "r8",       "duration",  "yearMonth",    "monthDay", "year",    "month",
                                  "day",      "date",      "datetime",     "time",     "char",    "string",
                                  "boolean",  "decimal",   "integer"};

// A copy of the object behind p, or null for a null p.
template <typename T>
T* CopyOf(const void* p) {
    return p ? new T(*static_cast<const T*>(p)) : nullptr;
}

}  // namespace

KvVariant::KvVariant() : m_nil(false), m_type(0), m_value{} {}

KvVariant::KvVariant(const KvVariant& other) : KvVariant() { *this = other; }

KvVariant& KvVariant::operator=(const KvVariant& other) {
    // No self-assignment guard: when other is this, Clear() has emptied it by
    // the time it is read, so a = a leaves a empty.
    Clear();
    const int32_t type = other.m_type;
    if (other.m_nil || type == 0) {
        m_type = type;
        m_nil = other.m_nil;
        return *this;
    }
    const void* source = other.Pointer();
    void* copy = nullptr;
    switch (StorageOf(type)) {
        case Storage::Inline:
            std::memcpy(m_value, other.m_value, sizeof m_value);
            m_type = type;
            return *this;
        case Storage::Binary:
            copy = CopyOf<CBinaryData>(source);
            break;
        case Storage::Span:
            copy = CopyOf<CDateTimeSpan>(source);
            break;
        case Storage::DateTime:
            copy = CopyOf<CDateTime>(source);
            break;
        case Storage::String:
            copy = CopyOf<std::string>(source);
            break;
        case Storage::Decimal:
            copy = CopyOf<CDecimal>(source);
            break;
        case Storage::Integer:
            copy = CopyOf<CBigInteger>(source);
            break;
        case Storage::Shared:
            SetShared(type, static_cast<CXmlObjectBase*>(const_cast<void*>(source)));
            return *this;
        case Storage::None:
            throw CKvException("Unknown Type");
    }
    SetOwned(type, copy);
    return *this;
}

KvVariant::~KvVariant() { Clear(); }

void KvVariant::Clear() {
    // nil goes even without a type, so SetInvalid always ends empty.
    m_nil = false;
    if (m_type == 0) return;
    const int32_t type = m_type;
    void* p = Pointer();
    // Empty first: whatever the freed object's destructor does, this
    // variant no longer refers to it.
    m_type = 0;
    std::memset(m_value, 0, sizeof m_value);
    switch (StorageOf(type)) {
        case Storage::Binary:
            delete static_cast<CBinaryData*>(p);
            break;
        case Storage::Span:
            delete static_cast<CDateTimeSpan*>(p);
            break;
        case Storage::DateTime:
            delete static_cast<CDateTime*>(p);
            break;
        case Storage::String:
            delete static_cast<std::string*>(p);
            break;
        case Storage::Decimal:
            delete static_cast<CDecimal*>(p);
            break;
        case Storage::Integer:
            delete static_cast<CBigInteger*>(p);
            break;
        case Storage::Shared:
            if (p) static_cast<CXmlObjectBase*>(p)->Release();
            break;
        case Storage::Inline:
        case Storage::None:
            break;
    }
}

void* KvVariant::Pointer() const {
    if (!detail::HoldsPointer(m_type)) return nullptr;
    void* p;
    std::memcpy(&p, m_value, sizeof p);
    return p;
}

template <typename T>
T KvVariant::ReadInline() const {
    T value;
    std::memcpy(&value, m_value, sizeof value);
    return value;
}

void KvVariant::SetInline(int32_t type, const void* value, unsigned size) {
    Clear();
    std::memcpy(m_value, value, size);
    m_type = type;
}

void KvVariant::SetOwned(int32_t type, void* object) {
    std::memcpy(m_value, &object, sizeof object);
    m_type = type;
    m_nil = false;
}

void KvVariant::SetShared(int32_t type, CXmlObjectBase* object) {
    // The new reference comes first, so setting the object already held
    // cannot drop its count to zero on the way.
    if (object) object->AddRef();
    Clear();
    std::memcpy(m_value, &object, sizeof object);
    m_type = type;
}

CXmlObjectBase* KvVariant::GetShared(bool collectionOnly) const {
    if (m_type != 28 && (collectionOnly || m_type != 27)) return nullptr;
    auto* object = static_cast<CXmlObjectBase*>(Pointer());
    if (object) object->AddRef();
    return object;
}

bool KvVariant::IsValid() const { return m_nil || m_type != 0; }

bool KvVariant::IsNil() const { return m_nil; }

std::string KvVariant::GetType() const {
    if (m_type < 1 || m_type > 26) throw CKvException(FormatString("Invalid Type %d", m_type));
    return kTypeNames[m_type];
}

// Owned setters copy before freeing, so a failed copy leaves the old value.
#define KVXML_OWNED_SETTER(Name, Type, Code)           \
    void KvVariant::Name(const Type& value) {          \
        std::unique_ptr<Type> copy(new Type(value));   \
        Clear();                                       \
        SetOwned(Code, copy.release());                \
    }
KVXML_OWNED_SETTER(SetHexBinary, CBinaryData, 1)
KVXML_OWNED_SETTER(SetBase64Binary, CBinaryData, 2)
KVXML_OWNED_SETTER(SetDuration, CDateTimeSpan, 13)
KVXML_OWNED_SETTER(SetYearMonth, CDateTime, 14)
KVXML_OWNED_SETTER(SetMonthDay, CDateTime, 15)
KVXML_OWNED_SETTER(SetDate, CDateTime, 19)
KVXML_OWNED_SETTER(SetDateTime, CDateTime, 20)
KVXML_OWNED_SETTER(SetTime, CDateTime, 21)
KVXML_OWNED_SETTER(SetDecimal, CDecimal, 25)
KVXML_OWNED_SETTER(SetInteger, CBigInteger, 26)
#undef KVXML_OWNED_SETTER

void KvVariant::SetString(std::string value) {
    std::unique_ptr<std::string> copy(new std::string(std::move(value)));
    Clear();
    SetOwned(23, copy.release());
}

void KvVariant::SetI1(int8_t value) { SetInline(3, &value, sizeof value); }
void KvVariant::SetI2(int16_t value) { SetInline(4, &value, sizeof value); }
void KvVariant::SetI4(int32_t value) { SetInline(5, &value, sizeof value); }
void KvVariant::SetI8(int64_t value) { SetInline(6, &value, sizeof value); }
void KvVariant::SetUI1(uint8_t value) { SetInline(7, &value, sizeof value); }
void KvVariant::SetUI2(uint16_t value) { SetInline(8, &value, sizeof value); }
void KvVariant::SetUI4(uint32_t value) { SetInline(9, &value, sizeof value); }
void KvVariant::SetUI8(uint64_t value) { SetInline(10, &value, sizeof value); }
void KvVariant::SetR4(float value) { SetInline(11, &value, sizeof value); }
void KvVariant::SetR8(double value) { SetInline(12, &value, sizeof value); }
void KvVariant::SetYear(uint16_t value) { SetInline(16, &value, sizeof value); }
void KvVariant::SetMonth(uint8_t value) { SetInline(17, &value, sizeof value); }
void KvVariant::SetDay(uint8_t value) { SetInline(18, &value, sizeof value); }
void KvVariant::SetChar(char value) { SetInline(22, &value, sizeof value); }

void KvVariant::SetBoolean(bool value) {
    const uint8_t byte = value ? 1 : 0;
    SetInline(24, &byte, sizeof byte);
}

void KvVariant::SetXmlObject(CXmlObjectBase* object) { SetShared(27, object); }

void KvVariant::SetNil() {
    const int32_t type = m_type;
    Clear();
    m_type = type;
    m_nil = true;
}

void KvVariant::SetInvalid() { Clear(); }

// Object getters: a copy of what is held, or a default value when the
// variant holds no object of that class (another type, nil, or a null copy).
#define KVXML_OWNED_GETTER(Name, Type, Kind)                                  \
    Type KvVariant::Name() const {                                            \
        const void* p = StorageOf(m_type) == Storage::Kind ? Pointer() : nullptr; \
        return p ? *static_cast<const Type*>(p) : Type();                     \
    }
KVXML_OWNED_GETTER(GetHexBinary, CBinaryData, Binary)
KVXML_OWNED_GETTER(GetBase64Binary, CBinaryData, Binary)
KVXML_OWNED_GETTER(GetDuration, CDateTimeSpan, Span)
KVXML_OWNED_GETTER(GetYearMonth, CDateTime, DateTime)
KVXML_OWNED_GETTER(GetMonthDay, CDateTime, DateTime)
KVXML_OWNED_GETTER(GetDate, CDateTime, DateTime)
KVXML_OWNED_GETTER(GetDateTime, CDateTime, DateTime)
KVXML_OWNED_GETTER(GetTime, CDateTime, DateTime)
KVXML_OWNED_GETTER(GetString, std::string, String)
KVXML_OWNED_GETTER(GetDecimal, CDecimal, Decimal)
KVXML_OWNED_GETTER(GetInteger, CBigInteger, Integer)
#undef KVXML_OWNED_GETTER

int8_t KvVariant::GetI1() const { return ReadInline<int8_t>(); }
int16_t KvVariant::GetI2() const { return ReadInline<int16_t>(); }
int32_t KvVariant::GetI4() const { return ReadInline<int32_t>(); }
int64_t KvVariant::GetI8() const { return ReadInline<int64_t>(); }
uint8_t KvVariant::GetUI1() const { return ReadInline<uint8_t>(); }
uint16_t KvVariant::GetUI2() const { return ReadInline<uint16_t>(); }
uint32_t KvVariant::GetUI4() const { return ReadInline<uint32_t>(); }
uint64_t KvVariant::GetUI8() const { return ReadInline<uint64_t>(); }
float KvVariant::GetR4() const { return ReadInline<float>(); }
double KvVariant::GetR8() const { return ReadInline<double>(); }
uint16_t KvVariant::GetYear() const { return ReadInline<uint16_t>(); }
uint8_t KvVariant::GetMonth() const { return ReadInline<uint8_t>(); }
uint8_t KvVariant::GetDay() const { return ReadInline<uint8_t>(); }
char KvVariant::GetChar() const { return ReadInline<char>(); }
// Read as a byte: the bytes of another type need not be a valid bool.
bool KvVariant::GetBoolean() const { return ReadInline<uint8_t>() != 0; }

CXmlObjectBase* KvVariant::GetXmlObject() const { return GetShared(false); }

}  // namespace KvXmlLib10
