// AllTypes.h - generated-style binding: a sequence holding one mandatory element of every primitive item type.
//
//   <xs:element name="AllTypes">   (targetNamespace urn:kvxml:test:types, elementFormDefault qualified)
//     <xs:complexType><xs:sequence>
//       hex: hexBinary  b64: base64Binary (maxLength 16)  i1: byte  i2: short  i4: int (-1000..1000)
//       i8: long  ui1: unsignedByte  ui2: unsignedShort  ui4: unsignedInt  ui8: unsignedLong
//       r4: float  r8: double  duration  yearMonth: gYearMonth  monthDay: gMonthDay  year: gYear
//       month: gMonth  day: gDay  date  dateTime  time  string (pattern [A-Z][a-z]*)  boolean
//       decimal (minExclusive 0)  integer
//     </xs:sequence></xs:complexType>
//   </xs:element>
// xs:gYear, xs:gMonth and xs:gDay travel as bare numbers (the library's year, month and day item types).
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "kvxml/core/XmlGeneratedClass.h"
#include "kvxml/values/BigInteger.h"
#include "kvxml/values/BinaryData.h"
#include "kvxml/values/DateTime.h"
#include "kvxml/values/DateTimeSpan.h"
#include "kvxml/values/Decimal.h"

namespace kvbind {

class CAllTypes : public KvXmlLib10::CXmlGeneratedClass {
public:
    CAllTypes();
    ~CAllTypes() override;

    enum Property : int32_t {
        Prop_Hex = 1,
        Prop_B64,
        Prop_I1,
        Prop_I2,
        Prop_I4,
        Prop_I8,
        Prop_UI1,
        Prop_UI2,
        Prop_UI4,
        Prop_UI8,
        Prop_R4,
        Prop_R8,
        Prop_Duration,
        Prop_YearMonth,
        Prop_MonthDay,
        Prop_Year,
        Prop_Month,
        Prop_Day,
        Prop_Date,
        Prop_DateTime,
        Prop_Time,
        Prop_String,
        Prop_Boolean,
        Prop_Decimal,
        Prop_Integer,
        Prop_Count = Prop_Integer
    };

    // Values as plain members; a member counts as set once assigned through
    // its setter or read from a document.
    const KvXmlLib10::CBinaryData& GetHex() const { return m_hex; }
    void SetHex(const KvXmlLib10::CBinaryData& v) {
        m_hex = v;
        MarkSet(Prop_Hex);
    }
    const KvXmlLib10::CBinaryData& GetB64() const { return m_b64; }
    void SetB64(const KvXmlLib10::CBinaryData& v) {
        m_b64 = v;
        MarkSet(Prop_B64);
    }
    int8_t GetI1() const { return m_i1; }
    void SetI1(int8_t v) {
        m_i1 = v;
        MarkSet(Prop_I1);
    }
    int16_t GetI2() const { return m_i2; }
    void SetI2(int16_t v) {
        m_i2 = v;
        MarkSet(Prop_I2);
    }
    int32_t GetI4() const { return m_i4; }
    void SetI4(int32_t v) {
        m_i4 = v;
        MarkSet(Prop_I4);
    }
    int64_t GetI8() const { return m_i8; }
    void SetI8(int64_t v) {
        m_i8 = v;
        MarkSet(Prop_I8);
    }
    uint8_t GetUI1() const { return m_ui1; }
    void SetUI1(uint8_t v) {
        m_ui1 = v;
        MarkSet(Prop_UI1);
    }
    uint16_t GetUI2() const { return m_ui2; }
    void SetUI2(uint16_t v) {
        m_ui2 = v;
        MarkSet(Prop_UI2);
    }
    uint32_t GetUI4() const { return m_ui4; }
    void SetUI4(uint32_t v) {
        m_ui4 = v;
        MarkSet(Prop_UI4);
    }
    uint64_t GetUI8() const { return m_ui8; }
    void SetUI8(uint64_t v) {
        m_ui8 = v;
        MarkSet(Prop_UI8);
    }
    float GetR4() const { return m_r4; }
    void SetR4(float v) {
        m_r4 = v;
        MarkSet(Prop_R4);
    }
    double GetR8() const { return m_r8; }
    void SetR8(double v) {
        m_r8 = v;
        MarkSet(Prop_R8);
    }
    const KvXmlLib10::CDateTimeSpan& GetDuration() const { return m_duration; }
    void SetDuration(const KvXmlLib10::CDateTimeSpan& v) {
        m_duration = v;
        MarkSet(Prop_Duration);
    }
    const KvXmlLib10::CDateTime& GetYearMonth() const { return m_yearMonth; }
    void SetYearMonth(const KvXmlLib10::CDateTime& v) {
        m_yearMonth = v;
        MarkSet(Prop_YearMonth);
    }
    const KvXmlLib10::CDateTime& GetMonthDay() const { return m_monthDay; }
    void SetMonthDay(const KvXmlLib10::CDateTime& v) {
        m_monthDay = v;
        MarkSet(Prop_MonthDay);
    }
    uint16_t GetYear() const { return m_year; }
    void SetYear(uint16_t v) {
        m_year = v;
        MarkSet(Prop_Year);
    }
    uint8_t GetMonth() const { return m_month; }
    void SetMonth(uint8_t v) {
        m_month = v;
        MarkSet(Prop_Month);
    }
    uint8_t GetDay() const { return m_day; }
    void SetDay(uint8_t v) {
        m_day = v;
        MarkSet(Prop_Day);
    }
    const KvXmlLib10::CDateTime& GetDate() const { return m_date; }
    void SetDate(const KvXmlLib10::CDateTime& v) {
        m_date = v;
        MarkSet(Prop_Date);
    }
    const KvXmlLib10::CDateTime& GetDateTime() const { return m_dateTime; }
    void SetDateTime(const KvXmlLib10::CDateTime& v) {
        m_dateTime = v;
        MarkSet(Prop_DateTime);
    }
    const KvXmlLib10::CDateTime& GetTime() const { return m_time; }
    void SetTime(const KvXmlLib10::CDateTime& v) {
        m_time = v;
        MarkSet(Prop_Time);
    }
    const std::string& GetString() const { return m_string; }
    void SetString(const std::string& v) {
        m_string = v;
        MarkSet(Prop_String);
    }
    bool GetBoolean() const { return m_boolean; }
    void SetBoolean(bool v) {
        m_boolean = v;
        MarkSet(Prop_Boolean);
    }
    const KvXmlLib10::CDecimal& GetDecimal() const { return m_decimal; }
    void SetDecimal(const KvXmlLib10::CDecimal& v) {
        m_decimal = v;
        MarkSet(Prop_Decimal);
    }
    const KvXmlLib10::CBigInteger& GetInteger() const { return m_integer; }
    void SetInteger(const KvXmlLib10::CBigInteger& v) {
        m_integer = v;
        MarkSet(Prop_Integer);
    }

    bool IsSet(Property id) const { return (m_set >> id) & 1u; }
    void Clear(Property id) { m_set &= ~(1u << id); }

    KvXmlLib10::CXmlObjectBase* GetBase() override { return this; }
    std::string GetNamespace() const override;
    std::string GetTargetNamespace() const override;
    KvXmlLib10Data::CParentElementInfo* GetClassInfo() const override;
    KvXmlLib10Data::CElementInfo** GetClassElementInfo() const override;
    KvXmlLib10Data::CAttributeInfo** GetClassAttributeInfo() const override;

    /// Frees the shared descriptors; not while another thread uses the class.
    static void ReleaseMetaData();

protected:
    void AccessProperty(int32_t propertyId, bool read, KvXmlLib10::KvVariant& value) override;
    void ResetProperties() override;

private:
    static void InitMetaData();
    void MarkSet(Property id) { m_set |= 1u << id; }

    static std::atomic<KvXmlLib10Data::CParentElementInfo*> ms_classInfo;
    static KvXmlLib10Data::CElementInfo** ms_elementInfo;
    static KvXmlLib10Data::CAttributeInfo** ms_attributeInfo;

    uint32_t m_set;  // one bit per property id
    KvXmlLib10::CBinaryData m_hex;
    KvXmlLib10::CBinaryData m_b64;
    int8_t m_i1;
    int16_t m_i2;
    int32_t m_i4;
    int64_t m_i8;
    uint8_t m_ui1;
    uint16_t m_ui2;
    uint32_t m_ui4;
    uint64_t m_ui8;
    float m_r4;
    double m_r8;
    KvXmlLib10::CDateTimeSpan m_duration;
    KvXmlLib10::CDateTime m_yearMonth;
    KvXmlLib10::CDateTime m_monthDay;
    uint16_t m_year;
    uint8_t m_month;
    uint8_t m_day;
    KvXmlLib10::CDateTime m_date;
    KvXmlLib10::CDateTime m_dateTime;
    KvXmlLib10::CDateTime m_time;
    std::string m_string;
    bool m_boolean;
    KvXmlLib10::CDecimal m_decimal;
    KvXmlLib10::CBigInteger m_integer;
};

}  // namespace kvbind
