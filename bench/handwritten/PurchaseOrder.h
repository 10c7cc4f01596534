// PurchaseOrder.h - hand-written binding of the purchase-order batch schema (tests/bindings/po.xsd), the baseline of PurchaseOrderBench.
//
//   purchaseOrders: purchaseOrder+ (collection); @created dateTime, @source string?
//   PurchaseOrder:  shipTo Address, billTo Address?, (card | invoice) as a pseudo element,
//                   comment string? nillable, items; @orderId ulong, @orderDate dateTime,
//                   @currency Currency = USD, @priority boolean?
//   Address:        name, street{1,2} (string collection), city, state token?, zip; @country NMTOKEN
//   CardPayment:    holder, token base64Binary, expires gYearMonth
//   InvoicePayment: account positiveInteger, terms duration
//   Items:          item* (collection)
//   Item:           productName, quantity int [1, 1000), unitPrice decimal (14.4), status ItemStatus,
//                   giftWrap boolean, requested dateTime, shipDate date?, digest hexBinary,
//                   comment string? nillable; @partNum SKU ([0-9]{3}-[A-Z]{2}), @line int
#pragma once

#include <cstdint>
#include <string>

#include "kvxml/core/SmartPtr.h"
#include "kvxml/core/XmlCollection.h"
#include "kvxml/core/XmlGeneratedClass.h"
#include "kvxml/metadata/PrimitiveCollections.h"
#include "kvxml/values/BigInteger.h"
#include "kvxml/values/BinaryData.h"
#include "kvxml/values/DateTime.h"
#include "kvxml/values/DateTimeSpan.h"
#include "kvxml/values/Decimal.h"

namespace kvbind {

enum class PoCurrency : int32_t { USD = 0, EUR = 1, GBP = 2, JPY = 3 };
enum class PoItemStatus : int32_t { Ordered = 0, Backordered = 1, Shipped = 2, Cancelled = 3 };

const char* PoCurrencyToString(int32_t value);
int32_t PoCurrencyFromString(const char* text);
const char* PoItemStatusToString(int32_t value);
int32_t PoItemStatusFromString(const char* text);

/// The schema's class factory: a new object of class number classNumber named elementName.
KvXmlLib10::CSmartPtr<KvXmlLib10::CXmlObjectBase> PoCreate(int32_t classNumber, const char* elementName);

// Shared by every class of the schema.
class CPoClass : public KvXmlLib10::CXmlGeneratedClass {
public:
    KvXmlLib10::CXmlObjectBase* GetBase() override { return this; }
    std::string GetNamespace() const override;
    std::string GetTargetNamespace() const override;
    /// Back to the state of a new object.
    void Clear() { ResetProperties(); }
};

class CItem : public CPoClass {
public:
    CItem();
    enum Property : int32_t {
        Prop_ProductName = 1, Prop_Quantity, Prop_UnitPrice, Prop_Status, Prop_GiftWrap, Prop_Requested,
        Prop_ShipDate, Prop_Digest, Prop_Comment, Prop_PartNum, Prop_Line
    };

    std::string productName;
    int32_t quantity = 0;
    KvXmlLib10::CDecimal unitPrice;
    PoItemStatus status = PoItemStatus::Ordered;
    bool giftWrap = false;
    KvXmlLib10::CDateTime requested;
    KvXmlLib10::CDateTime shipDate;  ///< optional: dt_none when absent
    KvXmlLib10::CBinaryData digest;
    std::string comment;
    bool hasComment = false;  ///< optional
    bool commentNil = false;  ///< nillable
    std::string partNum;
    int32_t line = 0;

    KvXmlLib10Data::CParentElementInfo* GetClassInfo() const override;
    KvXmlLib10Data::CElementInfo** GetClassElementInfo() const override;
    KvXmlLib10Data::CAttributeInfo** GetClassAttributeInfo() const override;

protected:
    void AccessProperty(int32_t propertyId, bool read, KvXmlLib10::KvVariant& value) override;
    void ResetProperties() override;
};

class CItems : public CPoClass {
public:
    CItems();
    enum Property : int32_t { Prop_Item = 1 };

    /// Items of class CItem, named "item".
    KvXmlLib10::CXmlCollection& Item() { return *m_item; }
    CItem* GetItem(int32_t index) const { return static_cast<CItem*>(m_item->GetItemAt(index)); }

    KvXmlLib10Data::CParentElementInfo* GetClassInfo() const override;
    KvXmlLib10Data::CElementInfo** GetClassElementInfo() const override;
    KvXmlLib10Data::CAttributeInfo** GetClassAttributeInfo() const override;

protected:
    void AccessProperty(int32_t propertyId, bool read, KvXmlLib10::KvVariant& value) override;
    void ResetProperties() override;

private:
    KvXmlLib10::CSmartPtr<KvXmlLib10::CXmlCollection> m_item;
};

class CAddress : public CPoClass {
public:
    explicit CAddress(const char* elementName = "shipTo");
    enum Property : int32_t { Prop_Name = 1, Prop_Street, Prop_City, Prop_State, Prop_Zip, Prop_Country };

    std::string name;
    std::string city;
    std::string state;
    bool hasState;
    std::string zip;
    std::string country;
    /// One or two street lines.
    KvXmlLib10::CstringCol& Street() { return *m_street; }

    KvXmlLib10Data::CParentElementInfo* GetClassInfo() const override;
    KvXmlLib10Data::CElementInfo** GetClassElementInfo() const override;
    KvXmlLib10Data::CAttributeInfo** GetClassAttributeInfo() const override;

protected:
    void AccessProperty(int32_t propertyId, bool read, KvXmlLib10::KvVariant& value) override;
    void ResetProperties() override;

private:
    KvXmlLib10::CSmartPtr<KvXmlLib10::CstringCol> m_street;
};

class CCardPayment : public CPoClass {
public:
    CCardPayment();
    enum Property : int32_t { Prop_Holder = 1, Prop_Token, Prop_Expires };

    std::string holder;
    KvXmlLib10::CBinaryData token;
    KvXmlLib10::CDateTime expires;

    KvXmlLib10Data::CParentElementInfo* GetClassInfo() const override;
    KvXmlLib10Data::CElementInfo** GetClassElementInfo() const override;
    KvXmlLib10Data::CAttributeInfo** GetClassAttributeInfo() const override;

protected:
    void AccessProperty(int32_t propertyId, bool read, KvXmlLib10::KvVariant& value) override;
    void ResetProperties() override;
};

class CInvoicePayment : public CPoClass {
public:
    CInvoicePayment();
    enum Property : int32_t { Prop_Account = 1, Prop_Terms };

    KvXmlLib10::CBigInteger account;
    KvXmlLib10::CDateTimeSpan terms;

    KvXmlLib10Data::CParentElementInfo* GetClassInfo() const override;
    KvXmlLib10Data::CElementInfo** GetClassElementInfo() const override;
    KvXmlLib10Data::CAttributeInfo** GetClassAttributeInfo() const override;

protected:
    void AccessProperty(int32_t propertyId, bool read, KvXmlLib10::KvVariant& value) override;
    void ResetProperties() override;
};

/// The anonymous (card | invoice) choice: a pseudo element, its member
/// written straight into the purchase order's element.
class CPayment : public CPoClass {
public:
    CPayment();
    enum Property : int32_t { Prop_Card = 1, Prop_Invoice };

    CCardPayment* GetCard() const { return m_card.get(); }
    CInvoicePayment* GetInvoice() const { return m_invoice.get(); }
    /// Setting one member while the other is set throws CKvInvalidStateException.
    void SetCard(CCardPayment* card);
    void SetInvoice(CInvoicePayment* invoice);

    KvXmlLib10Data::CParentElementInfo* GetClassInfo() const override;
    KvXmlLib10Data::CElementInfo** GetClassElementInfo() const override;
    KvXmlLib10Data::CAttributeInfo** GetClassAttributeInfo() const override;

protected:
    void AccessProperty(int32_t propertyId, bool read, KvXmlLib10::KvVariant& value) override;
    void ResetProperties() override;

private:
    KvXmlLib10::CSmartPtr<CCardPayment> m_card;
    KvXmlLib10::CSmartPtr<CInvoicePayment> m_invoice;
    std::string m_selected;
};

class CPurchaseOrder : public CPoClass {
public:
    CPurchaseOrder();
    enum Property : int32_t {
        Prop_ShipTo = 1, Prop_BillTo, Prop_Payment, Prop_Comment, Prop_Items, Prop_OrderId, Prop_OrderDate,
        Prop_Currency, Prop_Priority
    };

    CAddress& ShipTo() { return *m_shipTo; }
    CAddress* GetBillTo() const { return m_billTo.get(); }
    void SetBillTo(CAddress* address) { m_billTo = address; }
    CPayment& Payment() { return *m_payment; }
    CItems& Items() { return *m_items; }

    std::string comment;
    bool hasComment;
    bool commentNil;
    uint64_t orderId;
    KvXmlLib10::CDateTime orderDate;
    PoCurrency currency;  ///< USD unless given
    bool hasCurrency;     ///< written only when set
    bool priority;
    bool hasPriority;

    KvXmlLib10Data::CParentElementInfo* GetClassInfo() const override;
    KvXmlLib10Data::CElementInfo** GetClassElementInfo() const override;
    KvXmlLib10Data::CAttributeInfo** GetClassAttributeInfo() const override;

protected:
    void AccessProperty(int32_t propertyId, bool read, KvXmlLib10::KvVariant& value) override;
    void ResetProperties() override;

private:
    KvXmlLib10::CSmartPtr<CAddress> m_shipTo;
    KvXmlLib10::CSmartPtr<CAddress> m_billTo;
    KvXmlLib10::CSmartPtr<CPayment> m_payment;
    KvXmlLib10::CSmartPtr<CItems> m_items;
};

/// The document element, <purchaseOrders>.
class CPurchaseOrders : public CPoClass {
public:
    CPurchaseOrders();
    enum Property : int32_t { Prop_PurchaseOrder = 1, Prop_Created, Prop_Source };

    /// At least one, of class CPurchaseOrder named "purchaseOrder".
    KvXmlLib10::CXmlCollection& PurchaseOrder() { return *m_purchaseOrder; }
    CPurchaseOrder* GetPurchaseOrder(int32_t index) const {
        return static_cast<CPurchaseOrder*>(m_purchaseOrder->GetItemAt(index));
    }

    KvXmlLib10::CDateTime created;
    std::string source;
    bool hasSource;

    KvXmlLib10Data::CParentElementInfo* GetClassInfo() const override;
    KvXmlLib10Data::CElementInfo** GetClassElementInfo() const override;
    KvXmlLib10Data::CAttributeInfo** GetClassAttributeInfo() const override;

protected:
    void AccessProperty(int32_t propertyId, bool read, KvXmlLib10::KvVariant& value) override;
    void ResetProperties() override;

private:
    KvXmlLib10::CSmartPtr<KvXmlLib10::CXmlCollection> m_purchaseOrder;
};

}  // namespace kvbind
