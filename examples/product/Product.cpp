// Product.cpp - descriptors and property access of CProduct, as a code generator emits them.
#include "Product.h"

#include <cstring>

#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/metadata/AttributeInfo.h"
#include "kvxml/metadata/ElementInfoEnumeration.h"
#include "kvxml/metadata/ElementInfoPrimitive.h"
#include "kvxml/metadata/ParentElementInfo.h"
#include "kvxml/values/Variant.h"

namespace kvexample {

using namespace KvXmlLib10;
using namespace KvXmlLib10Data;

namespace {

const char* const kNamespace = "urn:example:kvxml:product";
const char* const kStatusNames[] = {"active", "preorder", "discontinued"};
const char* const kCurrencyNames[] = {"USD", "EUR", "GBP", "JPY"};

int32_t EnumValue(const char* const* names, int32_t count, const char* text, const char* enumName) {
    for (int32_t i = 0; i < count; ++i)
        if (std::strcmp(names[i], text) == 0) return i;
    throw CKvInvalidValueException(
        FormatString("The value [%s] is not a member of the enumeration %s", text, enumName));
}

// Frees the descriptors when the program unloads.
struct MetaDataCleanup {
    ~MetaDataCleanup() { CProduct::ReleaseMetaData(); }
} g_cleanup;

}  // namespace

const char* ProductStatusToString(int32_t value) { return value >= 0 && value < 3 ? kStatusNames[value] : nullptr; }
int32_t ProductStatusFromString(const char* text) { return EnumValue(kStatusNames, 3, text, "Status"); }
const char* ProductCurrencyToString(int32_t value) { return value >= 0 && value < 4 ? kCurrencyNames[value] : nullptr; }
int32_t ProductCurrencyFromString(const char* text) { return EnumValue(kCurrencyNames, 4, text, "Currency"); }

std::atomic<CParentElementInfo*> CProduct::ms_classInfo{nullptr};
CElementInfo** CProduct::ms_elementInfo = nullptr;
CAttributeInfo** CProduct::ms_attributeInfo = nullptr;

CProduct::CProduct() {
    SetElementName("product");
    ResetProperties();
}

CProduct::~CProduct() = default;

std::string CProduct::GetNamespace() const { return kNamespace; }
std::string CProduct::GetTargetNamespace() const { return kNamespace; }

CParentElementInfo* CProduct::GetClassInfo() const {
    InitMetaData();
    return ms_classInfo.load(std::memory_order_acquire);
}

CElementInfo** CProduct::GetClassElementInfo() const {
    InitMetaData();
    return ms_elementInfo;
}

CAttributeInfo** CProduct::GetClassAttributeInfo() const {
    InitMetaData();
    return ms_attributeInfo;
}

void CProduct::InitMetaData() {
    if (ms_classInfo.load(std::memory_order_acquire)) return;
    m_csInit.Enter();
    try {
        if (!ms_classInfo.load(std::memory_order_relaxed)) {
            const CPrimitiveRestrictions none;
            const CPrimitiveRestrictions sku("[A-Z]{3}-[0-9]{4}", -1, -1, nullptr, nullptr, nullptr, nullptr, -1);
            const CPrimitiveRestrictions name(nullptr, 1, 80, nullptr, nullptr, nullptr, nullptr, -1);
            const CPrimitiveRestrictions price(nullptr, -1, -1, "0", nullptr, nullptr, nullptr, -1);
            const auto preserve = CWhitespaceUtils::WhitespaceRule::Preserve;
            const auto collapse = CWhitespaceUtils::WhitespaceRule::Collapse;

            ms_elementInfo = new CElementInfo*[11];
            ms_elementInfo[0] = new CElementInfoSeqPrimMnd("sku", kNamespace, Prop_Sku, false, KvXmlLib10::string,
                                                           nullptr, preserve, sku);
            ms_elementInfo[1] = new CElementInfoSeqPrimMnd("name", kNamespace, Prop_Name, false, KvXmlLib10::string,
                                                           nullptr, preserve, name);
            ms_elementInfo[2] = new CElementInfoSeqPrimOpt("description", kNamespace, Prop_Description, true,
                                                           KvXmlLib10::string, nullptr, preserve, none);
            ms_elementInfo[3] = new CElementInfoSeqPrimMnd("price", kNamespace, Prop_Price, false, KvXmlLib10::decimal,
                                                           nullptr, collapse, price);
            ms_elementInfo[4] = new CElementInfoSeqEnumMnd("status", kNamespace, Prop_Status, false,
                                                           ProductStatusToString, ProductStatusFromString);
            ms_elementInfo[5] = new CElementInfoSeqPrimMnd("released", kNamespace, Prop_Released, false,
                                                           KvXmlLib10::date, nullptr, collapse, none);
            ms_elementInfo[6] = new CElementInfoSeqPrimOpt("lastUpdated", kNamespace, Prop_LastUpdated, false,
                                                           KvXmlLib10::datetime, nullptr, collapse, none);
            ms_elementInfo[7] = new CElementInfoSeqPrimOpt("weight", kNamespace, Prop_Weight, true, KvXmlLib10::r8,
                                                           nullptr, collapse, none);
            ms_elementInfo[8] = new CElementInfoSeqPrimMnd("stock", kNamespace, Prop_Stock, false, KvXmlLib10::ui4,
                                                           nullptr, collapse, none);
            ms_elementInfo[9] = new CElementInfoSeqPrimOpt("warranty", kNamespace, Prop_Warranty, false,
                                                           KvXmlLib10::duration, nullptr, collapse, none);
            ms_elementInfo[10] = nullptr;

            ms_attributeInfo = new CAttributeInfo*[4];
            ms_attributeInfo[0] = new CAttributeInfoPrimitive("id", "", Prop_Id, false, KvXmlLib10::ui8, nullptr,
                                                              collapse, none, nullptr);
            ms_attributeInfo[1] = new CAttributeInfoEnum("currency", "", Prop_Currency, true, ProductCurrencyToString,
                                                         ProductCurrencyFromString, "USD");
            ms_attributeInfo[2] = new CAttributeInfoPrimitive("featured", "", Prop_Featured, true, KvXmlLib10::boolean,
                                                              nullptr, collapse, none, "false");
            ms_attributeInfo[3] = nullptr;

            ms_classInfo.store(new CParentElementInfo(GroupType_Sequence, ElementType_Element, "Product", kNamespace,
                                                      false, false, -1, Invalid, nullptr, false),
                               std::memory_order_release);
        }
    } catch (...) {
        m_csInit.Leave();
        throw;
    }
    m_csInit.Leave();
}

void CProduct::ReleaseMetaData() {
    m_csInit.Enter();
    CParentElementInfo* classInfo = ms_classInfo.exchange(nullptr);
    CleanMetaData(classInfo, ms_elementInfo, ms_attributeInfo);
    m_csInit.Leave();
}

void CProduct::AccessProperty(int32_t propertyId, bool read, KvVariant& value) {
    switch (propertyId) {
        case Prop_Sku:
            if (!read)
                SetSku(value.GetString());
            else if (m_skuSet)
                value.SetString(m_sku);
            break;
        case Prop_Name:
            if (!read)
                SetName(value.GetString());
            else if (m_nameSet)
                value.SetString(m_name);
            break;
        case Prop_Description:
            if (!read) {
                if (value.IsNil())
                    SetDescriptionNil();
                else
                    SetDescription(value.GetString());
            } else if (m_descriptionNil) {
                value.SetNil();
            } else if (m_descriptionSet) {
                value.SetString(m_description);
            }
            break;
        case Prop_Price:
            if (!read)
                SetPrice(value.GetDecimal());
            else if (m_priceSet)
                value.SetDecimal(m_price);
            break;
        case Prop_Status:
            if (!read)
                SetStatus(static_cast<ProductStatus>(value.GetI4()));
            else if (m_statusSet)
                value.SetI4(static_cast<int32_t>(m_status));
            break;
        case Prop_Released:
            if (!read)
                SetReleased(value.GetDate());
            else if (m_releasedSet)
                value.SetDate(m_released);
            break;
        case Prop_LastUpdated:
            if (!read)
                SetLastUpdated(value.GetDateTime());
            else if (m_lastUpdatedSet)
                value.SetDateTime(m_lastUpdated);
            break;
        case Prop_Weight:
            if (!read) {
                if (value.IsNil())
                    SetWeightNil();
                else
                    SetWeight(value.GetR8());
            } else if (m_weightNil) {
                value.SetNil();
            } else if (m_weightSet) {
                value.SetR8(m_weight);
            }
            break;
        case Prop_Stock:
            if (!read)
                SetStock(value.GetUI4());
            else if (m_stockSet)
                value.SetUI4(m_stock);
            break;
        case Prop_Warranty:
            if (!read)
                SetWarranty(value.GetDuration());
            else if (m_warrantySet)
                value.SetDuration(m_warranty);
            break;
        case Prop_Id:
            if (!read)
                SetId(value.GetUI8());
            else if (m_idSet)
                value.SetUI8(m_id);
            break;
        case Prop_Currency:
            if (!read)
                SetCurrency(static_cast<ProductCurrency>(value.GetI4()));
            else
                value.SetI4(static_cast<int32_t>(m_currency));
            break;
        case Prop_Featured:
            if (!read)
                SetFeatured(value.GetBoolean());
            else
                value.SetBoolean(m_featured);
            break;
        default:
            throw CKvInvalidParamException(FormatString("Unknown property id %d", propertyId));
    }
}

void CProduct::ResetProperties() {
    m_sku.clear();
    m_skuSet = false;
    m_name.clear();
    m_nameSet = false;
    m_description.clear();
    m_descriptionSet = false;
    m_descriptionNil = false;
    m_price = CDecimal();
    m_priceSet = false;
    m_status = ProductStatus::Active;
    m_statusSet = false;
    m_released = CDateTime();
    m_releasedSet = false;
    m_lastUpdated = CDateTime();
    m_lastUpdatedSet = false;
    m_weight = 0;
    m_weightSet = false;
    m_weightNil = false;
    m_stock = 0;
    m_stockSet = false;
    m_warranty = CDateTimeSpan();
    m_warrantySet = false;
    m_id = 0;
    m_idSet = false;
    // Optional attributes with a schema default start out holding it.
    m_currency = ProductCurrency::USD;
    m_featured = false;
}

}  // namespace kvexample
