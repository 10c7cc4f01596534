// Measurement.cpp - metadata and property access of CMeasurement, as a code generator emits them.
#include "Measurement.h"

#include <cstring>

#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/metadata/AttributeInfo.h"
#include "kvxml/metadata/ParentElementInfo.h"
#include "kvxml/values/Variant.h"

namespace kvbind {

using namespace KvXmlLib10;
using namespace KvXmlLib10Data;

namespace {

const char* const kMeasureNamespace = "urn:kvxml:test:measure";
const char* const kMeasurementUnitNames[] = {"kg", "g", "lb"};

struct MeasurementCleanup {
    ~MeasurementCleanup() { CMeasurement::ReleaseMetaData(); }
} g_measurementCleanup;

}  // namespace

const char* MeasurementUnitToString(int32_t value) {
    return value >= 0 && value < 3 ? kMeasurementUnitNames[value] : nullptr;
}

int32_t MeasurementUnitFromString(const char* text) {
    for (int32_t i = 0; i < 3; ++i)
        if (std::strcmp(kMeasurementUnitNames[i], text) == 0) return i;
    throw CKvInvalidValueException(FormatString("The value [%s] is not a member of the enumeration Unit", text));
}

std::atomic<CParentElementInfo*> CMeasurement::ms_classInfo{nullptr};
CElementInfo** CMeasurement::ms_elementInfo = nullptr;
CAttributeInfo** CMeasurement::ms_attributeInfo = nullptr;

CMeasurement::CMeasurement() {
    SetElementName("Measurement");
    ResetProperties();
}

CMeasurement::~CMeasurement() = default;

std::string CMeasurement::GetNamespace() const { return kMeasureNamespace; }
std::string CMeasurement::GetTargetNamespace() const { return kMeasureNamespace; }

CParentElementInfo* CMeasurement::GetClassInfo() const {
    InitMetaData();
    return ms_classInfo.load(std::memory_order_acquire);
}

CElementInfo** CMeasurement::GetClassElementInfo() const {
    InitMetaData();
    return ms_elementInfo;
}

CAttributeInfo** CMeasurement::GetClassAttributeInfo() const {
    InitMetaData();
    return ms_attributeInfo;
}

void CMeasurement::InitMetaData() {
    if (ms_classInfo.load(std::memory_order_acquire)) return;
    m_csInit.Enter();
    try {
        if (!ms_classInfo.load(std::memory_order_relaxed)) {
            const CPrimitiveRestrictions none;
            const CPrimitiveRestrictions precisionFacets(nullptr, -1, -1, "0", "6", nullptr, nullptr, -1);
            const auto preserve = CWhitespaceUtils::WhitespaceRule::Preserve;
            const auto collapse = CWhitespaceUtils::WhitespaceRule::Collapse;

            ms_elementInfo = new CElementInfo*[1];
            ms_elementInfo[0] = nullptr;

            ms_attributeInfo = new CAttributeInfo*[5];
            ms_attributeInfo[0] = new CAttributeInfoEnum("unit", "", Prop_Unit, false, MeasurementUnitToString,
                                                         MeasurementUnitFromString, nullptr);
            ms_attributeInfo[1] = new CAttributeInfoPrimitive("precision", "", Prop_Precision, true, i4, nullptr,
                                                              collapse, precisionFacets, "2");
            ms_attributeInfo[2] =
                new CAttributeInfoPrimitive("source", "", Prop_Source, true, string, nullptr, preserve, none, nullptr);
            ms_attributeInfo[3] =
                new CAttributeInfoPrimitive("taken", "", Prop_Taken, true, datetime, nullptr, collapse, none, nullptr);
            ms_attributeInfo[4] = nullptr;

            ms_classInfo.store(
                new CParentElementInfo(GroupType_Sequence, ElementType_Element, "Measurement", kMeasureNamespace, true,
                                       true, Prop_Value, decimal, nullptr, false),
                std::memory_order_release);
        }
    } catch (...) {
        m_csInit.Leave();
        throw;
    }
    m_csInit.Leave();
}

void CMeasurement::ReleaseMetaData() {
    m_csInit.Enter();
    CParentElementInfo* classInfo = ms_classInfo.exchange(nullptr);
    CleanMetaData(classInfo, ms_elementInfo, ms_attributeInfo);
    m_csInit.Leave();
}

void CMeasurement::AccessProperty(int32_t propertyId, bool read, KvVariant& value) {
    switch (propertyId) {
        case Prop_Value:
            if (!read) {
                SetValue(value.GetDecimal());
            } else if (m_valueSet) {
                value.SetDecimal(m_value);
            }
            break;
        case Prop_Unit:
            if (!read) {
                SetUnit(static_cast<MeasurementUnit>(value.GetI4()));
            } else if (m_unitSet) {
                value.SetI4(static_cast<int32_t>(m_unit));
            }
            break;
        case Prop_Precision:
            if (!read)
                SetPrecision(value.GetI4());
            else
                value.SetI4(m_precision);
            break;
        case Prop_Source:
            if (!read) {
                SetSource(value.GetString());
            } else if (m_sourceSet) {
                value.SetString(m_source);
            }
            break;
        case Prop_Taken:
            if (!read) {
                SetTaken(value.GetDateTime());
            } else if (m_takenSet) {
                value.SetDateTime(m_taken);
            }
            break;
        default:
            throw CKvInvalidParamException(FormatString("Unknown property id %d", propertyId));
    }
}

void CMeasurement::ResetProperties() {
    m_nil = false;
    m_value = CDecimal();
    m_valueSet = false;
    m_unit = MeasurementUnit::Kg;
    m_unitSet = false;
    m_precision = 2;  // the schema default
    m_source.clear();
    m_sourceSet = false;
    m_taken = CDateTime();
    m_takenSet = false;
}

}  // namespace kvbind
