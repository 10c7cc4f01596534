// Product.h - sample binding for the flat product record of product.xsd, shaped like generated code.
//
// The class holds typed members and describes itself to the library through
// static descriptors; the library does all reading and writing.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "kvxml/core/XmlGeneratedClass.h"
#include "kvxml/values/DateTime.h"
#include "kvxml/values/DateTimeSpan.h"
#include "kvxml/values/Decimal.h"

namespace kvexample {

enum class ProductStatus : int32_t { Active = 0, Preorder = 1, Discontinued = 2 };
enum class ProductCurrency : int32_t { USD = 0, EUR = 1, GBP = 2, JPY = 3 };

/// Schema text of each enumeration value and back; an unknown text throws
/// CKvInvalidValueException "The value [%s] is not a member of the enumeration <Name>".
const char* ProductStatusToString(int32_t value);
int32_t ProductStatusFromString(const char* text);
const char* ProductCurrencyToString(int32_t value);
int32_t ProductCurrencyFromString(const char* text);

/// <product> of namespace urn:example:kvxml:product.
class CProduct : public KvXmlLib10::CXmlGeneratedClass {
public:
    CProduct();
    ~CProduct() override;

    enum Property : int32_t {
        Prop_Sku = 1,
        Prop_Name,
        Prop_Description,
        Prop_Price,
        Prop_Status,
        Prop_Released,
        Prop_LastUpdated,
        Prop_Weight,
        Prop_Stock,
        Prop_Warranty,
        Prop_Id,
        Prop_Currency,
        Prop_Featured
    };

    /// Pattern [A-Z]{3}-[0-9]{4}, checked when the product is written.
    const std::string& GetSku() const { return m_sku; }
    void SetSku(const std::string& value) {
        m_sku = value;
        m_skuSet = true;
    }
    /// 1 to 80 bytes.
    const std::string& GetName() const { return m_name; }
    void SetName(const std::string& value) {
        m_name = value;
        m_nameSet = true;
    }

    const std::string& GetDescription() const { return m_description; }
    bool IsDescriptionSet() const { return m_descriptionSet; }
    bool IsDescriptionNil() const { return m_descriptionNil; }
    void SetDescription(const std::string& value) {
        m_description = value;
        m_descriptionSet = true;
        m_descriptionNil = false;
    }
    void SetDescriptionNil() {
        m_descriptionSet = true;
        m_descriptionNil = true;
    }
    void ClearDescription() { m_descriptionSet = m_descriptionNil = false; }

    /// Not negative.
    const KvXmlLib10::CDecimal& GetPrice() const { return m_price; }
    void SetPrice(const KvXmlLib10::CDecimal& value) {
        m_price = value;
        m_priceSet = true;
    }

    ProductStatus GetStatus() const { return m_status; }
    void SetStatus(ProductStatus value) {
        m_status = value;
        m_statusSet = true;
    }

    const KvXmlLib10::CDateTime& GetReleased() const { return m_released; }
    void SetReleased(const KvXmlLib10::CDateTime& value) {
        m_released = value;
        m_releasedSet = true;
    }

    const KvXmlLib10::CDateTime& GetLastUpdated() const { return m_lastUpdated; }
    bool IsLastUpdatedSet() const { return m_lastUpdatedSet; }
    void SetLastUpdated(const KvXmlLib10::CDateTime& value) {
        m_lastUpdated = value;
        m_lastUpdatedSet = true;
    }
    void ClearLastUpdated() { m_lastUpdatedSet = false; }

    /// Kilograms.
    double GetWeight() const { return m_weight; }
    bool IsWeightSet() const { return m_weightSet; }
    bool IsWeightNil() const { return m_weightNil; }
    void SetWeight(double value) {
        m_weight = value;
        m_weightSet = true;
        m_weightNil = false;
    }
    void SetWeightNil() {
        m_weightSet = true;
        m_weightNil = true;
    }
    void ClearWeight() { m_weightSet = m_weightNil = false; }

    uint32_t GetStock() const { return m_stock; }
    void SetStock(uint32_t value) {
        m_stock = value;
        m_stockSet = true;
    }

    const KvXmlLib10::CDateTimeSpan& GetWarranty() const { return m_warranty; }
    bool IsWarrantySet() const { return m_warrantySet; }
    void SetWarranty(const KvXmlLib10::CDateTimeSpan& value) {
        m_warranty = value;
        m_warrantySet = true;
    }
    void ClearWarranty() { m_warrantySet = false; }

    uint64_t GetId() const { return m_id; }
    void SetId(uint64_t value) {
        m_id = value;
        m_idSet = true;
    }
    /// Defaults to USD.
    ProductCurrency GetCurrency() const { return m_currency; }
    void SetCurrency(ProductCurrency value) { m_currency = value; }
    /// Defaults to false.
    bool GetFeatured() const { return m_featured; }
    void SetFeatured(bool value) { m_featured = value; }

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

    static std::atomic<KvXmlLib10Data::CParentElementInfo*> ms_classInfo;
    static KvXmlLib10Data::CElementInfo** ms_elementInfo;
    static KvXmlLib10Data::CAttributeInfo** ms_attributeInfo;

    std::string m_sku;
    bool m_skuSet;
    std::string m_name;
    bool m_nameSet;
    std::string m_description;
    bool m_descriptionSet;
    bool m_descriptionNil;
    KvXmlLib10::CDecimal m_price;
    bool m_priceSet;
    ProductStatus m_status;
    bool m_statusSet;
    KvXmlLib10::CDateTime m_released;
    bool m_releasedSet;
    KvXmlLib10::CDateTime m_lastUpdated;
    bool m_lastUpdatedSet;
    double m_weight;
    bool m_weightSet;
    bool m_weightNil;
    uint32_t m_stock;
    bool m_stockSet;
    KvXmlLib10::CDateTimeSpan m_warranty;
    bool m_warrantySet;
    uint64_t m_id;
    bool m_idSet;
    ProductCurrency m_currency;
    bool m_featured;
};

}  // namespace kvexample
