// AllTypes.cpp - metadata and property access of CAllTypes, as a code generator emits them.
#include "AllTypes.h"

#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/metadata/ElementInfoPrimitive.h"
#include "kvxml/metadata/ParentElementInfo.h"
#include "kvxml/values/Variant.h"

namespace kvbind {

using namespace KvXmlLib10;
using namespace KvXmlLib10Data;

namespace {

const char* const kAllTypesNamespace = "urn:kvxml:test:types";

struct AllTypesCleanup {
    ~AllTypesCleanup() { CAllTypes::ReleaseMetaData(); }
} g_allTypesCleanup;

}  // namespace

std::atomic<CParentElementInfo*> CAllTypes::ms_classInfo{nullptr};
CElementInfo** CAllTypes::ms_elementInfo = nullptr;
CAttributeInfo** CAllTypes::ms_attributeInfo = nullptr;

CAllTypes::CAllTypes() {
    SetElementName("AllTypes");
    ResetProperties();
}

CAllTypes::~CAllTypes() = default;

std::string CAllTypes::GetNamespace() const { return kAllTypesNamespace; }
std::string CAllTypes::GetTargetNamespace() const { return kAllTypesNamespace; }

CParentElementInfo* CAllTypes::GetClassInfo() const {
    InitMetaData();
    return ms_classInfo.load(std::memory_order_acquire);
}

CElementInfo** CAllTypes::GetClassElementInfo() const {
    InitMetaData();
    return ms_elementInfo;
}

CAttributeInfo** CAllTypes::GetClassAttributeInfo() const {
    InitMetaData();
    return ms_attributeInfo;
}

void CAllTypes::InitMetaData() {
    if (ms_classInfo.load(std::memory_order_acquire)) return;
    m_csInit.Enter();
    try {
        if (!ms_classInfo.load(std::memory_order_relaxed)) {
            const CPrimitiveRestrictions none;
            const CPrimitiveRestrictions b64Facets(nullptr, -1, 16, nullptr, nullptr, nullptr, nullptr, -1);
            const CPrimitiveRestrictions i4Facets(nullptr, -1, -1, "-1000", "1000", nullptr, nullptr, -1);
            const CPrimitiveRestrictions stringFacets("[A-Z][a-z]*", -1, -1, nullptr, nullptr, nullptr, nullptr, -1);
            const CPrimitiveRestrictions decimalFacets(nullptr, -1, -1, nullptr, nullptr, "0", nullptr, -1);
            const auto preserve = CWhitespaceUtils::WhitespaceRule::Preserve;
            const auto collapse = CWhitespaceUtils::WhitespaceRule::Collapse;

            ms_elementInfo = new CElementInfo*[Prop_Count + 1];
            ms_elementInfo[0] = new CElementInfoSeqPrimMnd("hex", kAllTypesNamespace, Prop_Hex, false, hexBinary,
                                                           nullptr, collapse, none);
            ms_elementInfo[1] = new CElementInfoSeqPrimMnd("b64", kAllTypesNamespace, Prop_B64, false, base64Binary,
                                                           nullptr, collapse, b64Facets);
            ms_elementInfo[2] =
                new CElementInfoSeqPrimMnd("i1", kAllTypesNamespace, Prop_I1, false, i1, nullptr, collapse, none);
            ms_elementInfo[3] =
                new CElementInfoSeqPrimMnd("i2", kAllTypesNamespace, Prop_I2, false, i2, nullptr, collapse, none);
            ms_elementInfo[4] =
                new CElementInfoSeqPrimMnd("i4", kAllTypesNamespace, Prop_I4, false, i4, nullptr, collapse, i4Facets);
            ms_elementInfo[5] =
                new CElementInfoSeqPrimMnd("i8", kAllTypesNamespace, Prop_I8, false, i8, nullptr, collapse, none);
            ms_elementInfo[6] =
                new CElementInfoSeqPrimMnd("ui1", kAllTypesNamespace, Prop_UI1, false, ui1, nullptr, collapse, none);
            ms_elementInfo[7] =
                new CElementInfoSeqPrimMnd("ui2", kAllTypesNamespace, Prop_UI2, false, ui2, nullptr, collapse, none);
            ms_elementInfo[8] =
                new CElementInfoSeqPrimMnd("ui4", kAllTypesNamespace, Prop_UI4, false, ui4, nullptr, collapse, none);
            ms_elementInfo[9] =
                new CElementInfoSeqPrimMnd("ui8", kAllTypesNamespace, Prop_UI8, false, ui8, nullptr, collapse, none);
            ms_elementInfo[10] =
                new CElementInfoSeqPrimMnd("r4", kAllTypesNamespace, Prop_R4, false, r4, nullptr, collapse, none);
            ms_elementInfo[11] =
                new CElementInfoSeqPrimMnd("r8", kAllTypesNamespace, Prop_R8, false, r8, nullptr, collapse, none);
            ms_elementInfo[12] = new CElementInfoSeqPrimMnd("duration", kAllTypesNamespace, Prop_Duration, false,
                                                            duration, nullptr, collapse, none);
            ms_elementInfo[13] = new CElementInfoSeqPrimMnd("yearMonth", kAllTypesNamespace, Prop_YearMonth, false,
                                                            yearMonth, nullptr, collapse, none);
            ms_elementInfo[14] = new CElementInfoSeqPrimMnd("monthDay", kAllTypesNamespace, Prop_MonthDay, false,
                                                            monthDay, nullptr, collapse, none);
            ms_elementInfo[15] =
                new CElementInfoSeqPrimMnd("year", kAllTypesNamespace, Prop_Year, false, year, nullptr, collapse, none);
            ms_elementInfo[16] = new CElementInfoSeqPrimMnd("month", kAllTypesNamespace, Prop_Month, false, month,
                                                            nullptr, collapse, none);
            ms_elementInfo[17] =
                new CElementInfoSeqPrimMnd("day", kAllTypesNamespace, Prop_Day, false, day, nullptr, collapse, none);
            ms_elementInfo[18] =
                new CElementInfoSeqPrimMnd("date", kAllTypesNamespace, Prop_Date, false, date, nullptr, collapse, none);
            ms_elementInfo[19] = new CElementInfoSeqPrimMnd("dateTime", kAllTypesNamespace, Prop_DateTime, false,
                                                            datetime, nullptr, collapse, none);
            ms_elementInfo[20] = new CElementInfoSeqPrimMnd("time", kAllTypesNamespace, Prop_Time, false,
                                                            KvXmlLib10::time, nullptr, collapse, none);
            ms_elementInfo[21] = new CElementInfoSeqPrimMnd("string", kAllTypesNamespace, Prop_String, false, string,
                                                            nullptr, preserve, stringFacets);
            ms_elementInfo[22] = new CElementInfoSeqPrimMnd("boolean", kAllTypesNamespace, Prop_Boolean, false, boolean,
                                                            nullptr, collapse, none);
            ms_elementInfo[23] = new CElementInfoSeqPrimMnd("decimal", kAllTypesNamespace, Prop_Decimal, false, decimal,
                                                            nullptr, collapse, decimalFacets);
            ms_elementInfo[24] = new CElementInfoSeqPrimMnd("integer", kAllTypesNamespace, Prop_Integer, false, integer,
                                                            nullptr, collapse, none);
            ms_elementInfo[Prop_Count] = nullptr;

            ms_attributeInfo = new CAttributeInfo*[1];
            ms_attributeInfo[0] = nullptr;

            ms_classInfo.store(new CParentElementInfo(GroupType_Sequence, ElementType_Element, "AllTypes",
                                                      kAllTypesNamespace, false, false, -1, Invalid, nullptr, false),
                               std::memory_order_release);
        }
    } catch (...) {
        m_csInit.Leave();
        throw;
    }
    m_csInit.Leave();
}

void CAllTypes::ReleaseMetaData() {
    m_csInit.Enter();
    CParentElementInfo* classInfo = ms_classInfo.exchange(nullptr);
    CleanMetaData(classInfo, ms_elementInfo, ms_attributeInfo);
    m_csInit.Leave();
}

void CAllTypes::AccessProperty(int32_t propertyId, bool read, KvVariant& value) {
    switch (propertyId) {
        case Prop_Hex:
            if (!read) {
                m_hex = value.GetHexBinary();
                MarkSet(Prop_Hex);
            } else if (IsSet(Prop_Hex)) {
                value.SetHexBinary(m_hex);
            }
            break;
        case Prop_B64:
            if (!read) {
                m_b64 = value.GetBase64Binary();
                MarkSet(Prop_B64);
            } else if (IsSet(Prop_B64)) {
                value.SetBase64Binary(m_b64);
            }
            break;
        case Prop_I1:
            if (!read) {
                m_i1 = value.GetI1();
                MarkSet(Prop_I1);
            } else if (IsSet(Prop_I1)) {
                value.SetI1(m_i1);
            }
            break;
        case Prop_I2:
            if (!read) {
                m_i2 = value.GetI2();
                MarkSet(Prop_I2);
            } else if (IsSet(Prop_I2)) {
                value.SetI2(m_i2);
            }
            break;
        case Prop_I4:
            if (!read) {
                m_i4 = value.GetI4();
                MarkSet(Prop_I4);
            } else if (IsSet(Prop_I4)) {
                value.SetI4(m_i4);
            }
            break;
        case Prop_I8:
            if (!read) {
                m_i8 = value.GetI8();
                MarkSet(Prop_I8);
            } else if (IsSet(Prop_I8)) {
                value.SetI8(m_i8);
            }
            break;
        case Prop_UI1:
            if (!read) {
                m_ui1 = value.GetUI1();
                MarkSet(Prop_UI1);
            } else if (IsSet(Prop_UI1)) {
                value.SetUI1(m_ui1);
            }
            break;
        case Prop_UI2:
            if (!read) {
                m_ui2 = value.GetUI2();
                MarkSet(Prop_UI2);
            } else if (IsSet(Prop_UI2)) {
                value.SetUI2(m_ui2);
            }
            break;
        case Prop_UI4:
            if (!read) {
                m_ui4 = value.GetUI4();
                MarkSet(Prop_UI4);
            } else if (IsSet(Prop_UI4)) {
                value.SetUI4(m_ui4);
            }
            break;
        case Prop_UI8:
            if (!read) {
                m_ui8 = value.GetUI8();
                MarkSet(Prop_UI8);
            } else if (IsSet(Prop_UI8)) {
                value.SetUI8(m_ui8);
            }
            break;
        case Prop_R4:
            if (!read) {
                m_r4 = value.GetR4();
                MarkSet(Prop_R4);
            } else if (IsSet(Prop_R4)) {
                value.SetR4(m_r4);
            }
            break;
        case Prop_R8:
            if (!read) {
                m_r8 = value.GetR8();
                MarkSet(Prop_R8);
            } else if (IsSet(Prop_R8)) {
                value.SetR8(m_r8);
            }
            break;
        case Prop_Duration:
            if (!read) {
                m_duration = value.GetDuration();
                MarkSet(Prop_Duration);
            } else if (IsSet(Prop_Duration)) {
                value.SetDuration(m_duration);
            }
            break;
        case Prop_YearMonth:
            if (!read) {
                m_yearMonth = value.GetYearMonth();
                MarkSet(Prop_YearMonth);
            } else if (IsSet(Prop_YearMonth)) {
                value.SetYearMonth(m_yearMonth);
            }
            break;
        case Prop_MonthDay:
            if (!read) {
                m_monthDay = value.GetMonthDay();
                MarkSet(Prop_MonthDay);
            } else if (IsSet(Prop_MonthDay)) {
                value.SetMonthDay(m_monthDay);
            }
            break;
        case Prop_Year:
            if (!read) {
                m_year = value.GetYear();
                MarkSet(Prop_Year);
            } else if (IsSet(Prop_Year)) {
                value.SetYear(m_year);
            }
            break;
        case Prop_Month:
            if (!read) {
                m_month = value.GetMonth();
                MarkSet(Prop_Month);
            } else if (IsSet(Prop_Month)) {
                value.SetMonth(m_month);
            }
            break;
        case Prop_Day:
            if (!read) {
                m_day = value.GetDay();
                MarkSet(Prop_Day);
            } else if (IsSet(Prop_Day)) {
                value.SetDay(m_day);
            }
            break;
        case Prop_Date:
            if (!read) {
                m_date = value.GetDate();
                MarkSet(Prop_Date);
            } else if (IsSet(Prop_Date)) {
                value.SetDate(m_date);
            }
            break;
        case Prop_DateTime:
            if (!read) {
                m_dateTime = value.GetDateTime();
                MarkSet(Prop_DateTime);
            } else if (IsSet(Prop_DateTime)) {
                value.SetDateTime(m_dateTime);
            }
            break;
        case Prop_Time:
            if (!read) {
                m_time = value.GetTime();
                MarkSet(Prop_Time);
            } else if (IsSet(Prop_Time)) {
                value.SetTime(m_time);
            }
            break;
        case Prop_String:
            if (!read) {
                m_string = value.GetString();
                MarkSet(Prop_String);
            } else if (IsSet(Prop_String)) {
                value.SetString(m_string);
            }
            break;
        case Prop_Boolean:
            if (!read) {
                m_boolean = value.GetBoolean();
                MarkSet(Prop_Boolean);
            } else if (IsSet(Prop_Boolean)) {
                value.SetBoolean(m_boolean);
            }
            break;
        case Prop_Decimal:
            if (!read) {
                m_decimal = value.GetDecimal();
                MarkSet(Prop_Decimal);
            } else if (IsSet(Prop_Decimal)) {
                value.SetDecimal(m_decimal);
            }
            break;
        case Prop_Integer:
            if (!read) {
                m_integer = value.GetInteger();
                MarkSet(Prop_Integer);
            } else if (IsSet(Prop_Integer)) {
                value.SetInteger(m_integer);
            }
            break;
        default:
            throw CKvInvalidParamException(FormatString("Unknown property id %d", propertyId));
    }
}

void CAllTypes::ResetProperties() {
    m_set = 0;
    m_hex = CBinaryData();
    m_b64 = CBinaryData();
    m_i1 = 0;
    m_i2 = 0;
    m_i4 = 0;
    m_i8 = 0;
    m_ui1 = 0;
    m_ui2 = 0;
    m_ui4 = 0;
    m_ui8 = 0;
    m_r4 = 0;
    m_r8 = 0;
    m_duration = CDateTimeSpan();
    m_yearMonth = CDateTime();
    m_monthDay = CDateTime();
    m_year = 0;
    m_month = 0;
    m_day = 0;
    m_date = CDateTime();
    m_dateTime = CDateTime();
    m_time = CDateTime();
    m_string.clear();
    m_boolean = false;
    m_decimal = CDecimal();
    m_integer = CBigInteger();
}

}  // namespace kvbind
