// Shape.cpp - metadata and property access of CShape, as a code generator emits them.
#include "Shape.h"

#include <cstring>

#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/metadata/AttributeInfo.h"
#include "kvxml/metadata/ElementInfoEnumeration.h"
#include "kvxml/metadata/ElementInfoPrimitive.h"
#include "kvxml/metadata/ParentElementInfo.h"
#include "kvxml/values/Variant.h"

namespace kvbind {

using namespace KvXmlLib10;
using namespace KvXmlLib10Data;

namespace {

const char* const kShapeColorNames[] = {"red", "green", "blue"};

struct ShapeCleanup {
    ~ShapeCleanup() { CShape::ReleaseMetaData(); }
} g_shapeCleanup;

}  // namespace

const char* ShapeColorToString(int32_t value) { return value >= 0 && value < 3 ? kShapeColorNames[value] : nullptr; }

int32_t ShapeColorFromString(const char* text) {
    for (int32_t i = 0; i < 3; ++i)
        if (std::strcmp(kShapeColorNames[i], text) == 0) return i;
    throw CKvInvalidValueException(FormatString("The value [%s] is not a member of the enumeration Color", text));
}

std::atomic<CParentElementInfo*> CShape::ms_classInfo{nullptr};
CElementInfo** CShape::ms_elementInfo = nullptr;
CAttributeInfo** CShape::ms_attributeInfo = nullptr;

CShape::CShape() {
    SetElementName("Shape");
    ResetProperties();
}

CShape::~CShape() = default;

std::string CShape::GetNamespace() const { return ""; }
std::string CShape::GetTargetNamespace() const { return ""; }

CParentElementInfo* CShape::GetClassInfo() const {
    InitMetaData();
    return ms_classInfo.load(std::memory_order_acquire);
}

CElementInfo** CShape::GetClassElementInfo() const {
    InitMetaData();
    return ms_elementInfo;
}

CAttributeInfo** CShape::GetClassAttributeInfo() const {
    InitMetaData();
    return ms_attributeInfo;
}

void CShape::InitMetaData() {
    if (ms_classInfo.load(std::memory_order_acquire)) return;
    m_csInit.Enter();
    try {
        if (!ms_classInfo.load(std::memory_order_relaxed)) {
            const CPrimitiveRestrictions none;
            const CPrimitiveRestrictions radius(nullptr, -1, -1, nullptr, nullptr, "0", nullptr, -1);
            const auto preserve = CWhitespaceUtils::WhitespaceRule::Preserve;
            const auto collapse = CWhitespaceUtils::WhitespaceRule::Collapse;

            ms_elementInfo = new CElementInfo*[5];
            ms_elementInfo[0] =
                new CElementInfoChoicePrimOpt("circle", "", Prop_Circle, false, r8, nullptr, collapse, radius);
            ms_elementInfo[1] =
                new CElementInfoChoicePrimOpt("square", "", Prop_Square, false, decimal, nullptr, collapse, none);
            ms_elementInfo[2] =
                new CElementInfoChoicePrimOpt("label", "", Prop_Label, true, string, nullptr, preserve, none);
            ms_elementInfo[3] =
                new CElementInfoChoiceEnumOpt("color", "", Prop_Color, false, ShapeColorToString, ShapeColorFromString);
            ms_elementInfo[4] = nullptr;

            ms_attributeInfo = new CAttributeInfo*[2];
            ms_attributeInfo[0] =
                new CAttributeInfoPrimitive("name", "", Prop_Name, true, string, nullptr, preserve, none, nullptr);
            ms_attributeInfo[1] = nullptr;

            ms_classInfo.store(new CParentElementInfo(GroupType_Choice, ElementType_Element, "Shape", "", false, false,
                                                      -1, Invalid, nullptr, false),
                               std::memory_order_release);
        }
    } catch (...) {
        m_csInit.Leave();
        throw;
    }
    m_csInit.Leave();
}

void CShape::ReleaseMetaData() {
    m_csInit.Enter();
    CParentElementInfo* classInfo = ms_classInfo.exchange(nullptr);
    CleanMetaData(classInfo, ms_elementInfo, ms_attributeInfo);
    m_csInit.Leave();
}

void CShape::AccessProperty(int32_t propertyId, bool read, KvVariant& value) {
    switch (propertyId) {
        case Prop_Circle:
            if (!read) {
                SetCircle(value.GetR8());
            } else if (m_choice == Choice::Circle) {
                value.SetR8(m_circle);
            }
            break;
        case Prop_Square:
            if (!read) {
                SetSquare(value.GetDecimal());
            } else if (m_choice == Choice::Square) {
                value.SetDecimal(m_square);
            }
            break;
        case Prop_Label:
            if (!read) {
                if (value.IsNil())
                    SetLabelNil();
                else
                    SetLabel(value.GetString());
            } else if (m_choice == Choice::Label) {
                if (m_labelNil)
                    value.SetNil();
                else
                    value.SetString(m_label);
            }
            break;
        case Prop_Color:
            if (!read) {
                SetColor(static_cast<ShapeColor>(value.GetI4()));
            } else if (m_choice == Choice::Color) {
                value.SetI4(static_cast<int32_t>(m_color));
            }
            break;
        case Prop_Name:
            if (!read) {
                SetName(value.GetString());
            } else if (m_nameSet) {
                value.SetString(m_name);
            }
            break;
        default:
            throw CKvInvalidParamException(FormatString("Unknown property id %d", propertyId));
    }
}

void CShape::ResetProperties() {
    m_choice = Choice::None;
    m_circle = 0;
    m_square = CDecimal();
    m_label.clear();
    m_labelNil = false;
    m_color = ShapeColor::Red;
    m_name.clear();
    m_nameSet = false;
}

}  // namespace kvbind
