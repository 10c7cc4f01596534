// PurchaseOrder.cpp - metadata, factory and property access of the purchase-order binding, as a code generator emits them.
#include "PurchaseOrder.h"

#include "GeneratedSupport.h"
#include "kvxml/metadata/AttributeInfo.h"
#include "kvxml/metadata/ElementInfoClass.h"
#include "kvxml/metadata/ElementInfoCollection.h"
#include "kvxml/metadata/ElementInfoEnumeration.h"
#include "kvxml/metadata/ElementInfoPrimitive.h"
#include "kvxml/metadata/ParentElementInfo.h"

namespace kvbind {

using namespace KvXmlLib10;
using namespace KvXmlLib10Data;

namespace {

const char* const kPo = "urn:example:bench:po";
const auto kPoPreserve = CWhitespaceUtils::WhitespaceRule::Preserve;
const auto kPoCollapse = CWhitespaceUtils::WhitespaceRule::Collapse;

const char* const kCurrencyNames[] = {"USD", "EUR", "GBP", "JPY"};
const char* const kItemStatusNames[] = {"ordered", "backordered", "shipped", "cancelled"};

enum PoClassNumber : int32_t {
    Class_PurchaseOrder = 1, Class_Address, Class_Payment, Class_CardPayment, Class_InvoicePayment, Class_Items,
    Class_Item
};

CParentElementInfo* SequenceClass(const char* typeName, XmlElementGroupType group = GroupType_Sequence,
                                  XmlElementType type = ElementType_Element) {
    return new CParentElementInfo(group, type, typeName, kPo, false, false, -1, Invalid, nullptr, false);
}

CElementInfo* Text(const char* name, int32_t id, bool optional = false, bool nillable = false,
                   const CPrimitiveRestrictions& facets = CPrimitiveRestrictions()) {
    if (optional) return new CElementInfoSeqPrimOpt(name, kPo, id, nillable, string, nullptr, kPoPreserve, facets);
    return new CElementInfoSeqPrimMnd(name, kPo, id, nillable, string, nullptr, kPoPreserve, facets);
}

CElementInfo* Value(const char* name, int32_t id, ItemType type, bool optional = false,
                    const CPrimitiveRestrictions& facets = CPrimitiveRestrictions()) {
    if (optional) return new CElementInfoSeqPrimOpt(name, kPo, id, false, type, nullptr, kPoCollapse, facets);
    return new CElementInfoSeqPrimMnd(name, kPo, id, false, type, nullptr, kPoCollapse, facets);
}

ClassTables g_itemTables, g_itemsTables, g_addressTables, g_cardTables, g_invoiceTables, g_paymentTables,
    g_orderTables, g_batchTables;

const ClassTables& ItemTables() {
    return g_itemTables.Get([](ClassTables& t) {
        const CPrimitiveRestrictions quantity(nullptr, -1, -1, "1", nullptr, nullptr, "1000", -1);
        const CPrimitiveRestrictions sku("[0-9]{3}-[A-Z]{2}", -1, -1, nullptr, nullptr, nullptr, nullptr, -1);
        t.elements = new CElementInfo* [10] {
            Text("productName", CItem::Prop_ProductName), Value("quantity", CItem::Prop_Quantity, i4, false, quantity),
                Value("unitPrice", CItem::Prop_UnitPrice, decimal),
                new CElementInfoSeqEnumMnd("status", kPo, CItem::Prop_Status, false, PoItemStatusToString,
                                           PoItemStatusFromString),
                Value("giftWrap", CItem::Prop_GiftWrap, boolean), Value("requested", CItem::Prop_Requested, datetime),
                Value("shipDate", CItem::Prop_ShipDate, date, true), Value("digest", CItem::Prop_Digest, hexBinary),
                Text("comment", CItem::Prop_Comment, true, true), nullptr
        };
        t.attributes = new CAttributeInfo* [3] {
            new CAttributeInfoPrimitive("partNum", "", CItem::Prop_PartNum, false, string, nullptr, kPoPreserve, sku,
                                        nullptr),
                new CAttributeInfoPrimitive("line", "", CItem::Prop_Line, false, i4, nullptr, kPoCollapse,
                                            CPrimitiveRestrictions(), nullptr),
                nullptr
        };
        return SequenceClass("Item");
    });
}

const ClassTables& ItemsTables() {
    return g_itemsTables.Get([](ClassTables& t) {
        t.elements = new CElementInfo* [2] { new CElementInfoSeqClsCol("item", kPo, CItems::Prop_Item, ElementType_Element), nullptr };
        t.attributes = new CAttributeInfo* [1] { nullptr };
        return SequenceClass("Items");
    });
}

const ClassTables& AddressTables() {
    return g_addressTables.Get([](ClassTables& t) {
        t.elements = new CElementInfo* [6] {
            Text("name", CAddress::Prop_Name), new CElementInfoSeqPrimCol("street", kPo, CAddress::Prop_Street),
                Text("city", CAddress::Prop_City), Value("state", CAddress::Prop_State, string, true),
                Text("zip", CAddress::Prop_Zip), nullptr
        };
        t.attributes = new CAttributeInfo* [2] {
            new CAttributeInfoPrimitive("country", "", CAddress::Prop_Country, false, string, nullptr, kPoCollapse,
                                        CPrimitiveRestrictions(), nullptr),
                nullptr
        };
        return SequenceClass("Address");
    });
}

const ClassTables& CardTables() {
    return g_cardTables.Get([](ClassTables& t) {
        t.elements = new CElementInfo* [4] {
            Text("holder", CCardPayment::Prop_Holder), Value("token", CCardPayment::Prop_Token, base64Binary),
                Value("expires", CCardPayment::Prop_Expires, yearMonth), nullptr
        };
        t.attributes = new CAttributeInfo* [1] { nullptr };
        return SequenceClass("CardPayment");
    });
}

const ClassTables& InvoiceTables() {
    return g_invoiceTables.Get([](ClassTables& t) {
        const CPrimitiveRestrictions positive(nullptr, -1, -1, "1", nullptr, nullptr, nullptr, -1);
        t.elements = new CElementInfo* [3] {
            Value("account", CInvoicePayment::Prop_Account, integer, false, positive),
                Value("terms", CInvoicePayment::Prop_Terms, duration), nullptr
        };
        t.attributes = new CAttributeInfo* [1] { nullptr };
        return SequenceClass("InvoicePayment");
    });
}

const ClassTables& PaymentTables() {
    return g_paymentTables.Get([](ClassTables& t) {
        t.elements = new CElementInfo* [3] {
            new CElementInfoChoiceClsOpt("card", kPo, CPayment::Prop_Card, ElementType_Element, PoCreate,
                                         Class_CardPayment),
                new CElementInfoChoiceClsOpt("invoice", kPo, CPayment::Prop_Invoice, ElementType_Element, PoCreate,
                                             Class_InvoicePayment),
                nullptr
        };
        t.attributes = new CAttributeInfo* [1] { nullptr };
        return SequenceClass("PurchaseOrderPayment", GroupType_Choice, ElementType_PseudoElement);
    });
}

const ClassTables& OrderTables() {
    return g_orderTables.Get([](ClassTables& t) {
        t.elements = new CElementInfo* [6] {
            new CElementInfoSeqClsMnd("shipTo", kPo, CPurchaseOrder::Prop_ShipTo, ElementType_Element, PoCreate,
                                      Class_Address, false),
                new CElementInfoSeqClsOpt("billTo", kPo, CPurchaseOrder::Prop_BillTo, ElementType_Element, PoCreate,
                                          Class_Address),
                new CElementInfoSeqClsMnd("payment", kPo, CPurchaseOrder::Prop_Payment, ElementType_PseudoElement,
                                          PoCreate, Class_Payment, true),
                Text("comment", CPurchaseOrder::Prop_Comment, true, true),
                new CElementInfoSeqClsMnd("items", kPo, CPurchaseOrder::Prop_Items, ElementType_Element, PoCreate,
                                          Class_Items, false),
                nullptr
        };
        t.attributes = new CAttributeInfo* [5] {
            new CAttributeInfoPrimitive("orderId", "", CPurchaseOrder::Prop_OrderId, false, ui8, nullptr, kPoCollapse,
                                        CPrimitiveRestrictions(), nullptr),
                new CAttributeInfoPrimitive("orderDate", "", CPurchaseOrder::Prop_OrderDate, false, datetime, nullptr,
                                            kPoCollapse, CPrimitiveRestrictions(), nullptr),
                new CAttributeInfoEnum("currency", "", CPurchaseOrder::Prop_Currency, true, PoCurrencyToString,
                                       PoCurrencyFromString, "USD"),
                new CAttributeInfoPrimitive("priority", "", CPurchaseOrder::Prop_Priority, true, boolean, nullptr,
                                            kPoCollapse, CPrimitiveRestrictions(), nullptr),
                nullptr
        };
        return SequenceClass("PurchaseOrder");
    });
}

const ClassTables& BatchTables() {
    return g_batchTables.Get([](ClassTables& t) {
        t.elements = new CElementInfo* [2] {
            new CElementInfoSeqClsCol("purchaseOrder", kPo, CPurchaseOrders::Prop_PurchaseOrder, ElementType_Element),
                nullptr
        };
        t.attributes = new CAttributeInfo* [3] {
            new CAttributeInfoPrimitive("created", "", CPurchaseOrders::Prop_Created, false, datetime, nullptr,
                                        kPoCollapse, CPrimitiveRestrictions(), nullptr),
                new CAttributeInfoPrimitive("source", "", CPurchaseOrders::Prop_Source, true, string, nullptr,
                                            kPoPreserve, CPrimitiveRestrictions(), nullptr),
                nullptr
        };
        return SequenceClass("PurchaseOrderBatch");
    });
}

// An optional date is absent while it holds no kind.
bool HasDate(const CDateTime& value) { return value.GetType() != CDateTime::dt_none; }

}  // namespace

const char* PoCurrencyToString(int32_t value) { return EnumText(kCurrencyNames, 4, value); }
int32_t PoCurrencyFromString(const char* text) { return EnumValue(kCurrencyNames, 4, text, "Currency"); }
const char* PoItemStatusToString(int32_t value) { return EnumText(kItemStatusNames, 4, value); }
int32_t PoItemStatusFromString(const char* text) { return EnumValue(kItemStatusNames, 4, text, "ItemStatus"); }

CSmartPtr<CXmlObjectBase> PoCreate(int32_t classNumber, const char* elementName) {
    CSmartPtr<CXmlObjectBase> object;
    switch (classNumber) {
        case Class_PurchaseOrder: object = new CPurchaseOrder; break;
        case Class_Address: object = new CAddress; break;
        case Class_Payment: object = new CPayment; break;
        case Class_CardPayment: object = new CCardPayment; break;
        case Class_InvoicePayment: object = new CInvoicePayment; break;
        case Class_Items: object = new CItems; break;
        case Class_Item: object = new CItem; break;
        default: return nullptr;
    }
    object->SetElementName(elementName);
    return object;
}

std::string CPoClass::GetNamespace() const { return kPo; }
std::string CPoClass::GetTargetNamespace() const { return kPo; }

KVBIND_CLASS_TABLES(CItem, ItemTables)
KVBIND_CLASS_TABLES(CItems, ItemsTables)
KVBIND_CLASS_TABLES(CAddress, AddressTables)
KVBIND_CLASS_TABLES(CCardPayment, CardTables)
KVBIND_CLASS_TABLES(CInvoicePayment, InvoiceTables)
KVBIND_CLASS_TABLES(CPayment, PaymentTables)
KVBIND_CLASS_TABLES(CPurchaseOrder, OrderTables)
KVBIND_CLASS_TABLES(CPurchaseOrders, BatchTables)

// ---- Item ----

// Items are the bulk of a document: the member initialisers already give
// the state ResetProperties makes, so construction skips it.
CItem::CItem() { SetElementName("item"); }

void CItem::ResetProperties() {
    productName.clear();
    quantity = 0;
    unitPrice = CDecimal();
    status = PoItemStatus::Ordered;
    giftWrap = false;
    requested = CDateTime();
    shipDate = CDateTime();
    digest = CBinaryData();
    comment.clear();
    hasComment = commentNil = false;
    partNum.clear();
    line = 0;
}

void CItem::AccessProperty(int32_t id, bool read, KvVariant& v) {
    switch (id) {
        case Prop_ProductName: read ? v.SetString(productName) : void(productName = v.GetString()); break;
        case Prop_Quantity: read ? v.SetI4(quantity) : void(quantity = v.GetI4()); break;
        case Prop_UnitPrice: read ? v.SetDecimal(unitPrice) : void(unitPrice = v.GetDecimal()); break;
        case Prop_Status:
            read ? v.SetI4(static_cast<int32_t>(status)) : void(status = static_cast<PoItemStatus>(v.GetI4()));
            break;
        case Prop_GiftWrap: read ? v.SetBoolean(giftWrap) : void(giftWrap = v.GetBoolean()); break;
        case Prop_Requested: read ? v.SetDateTime(requested) : void(requested = v.GetDateTime()); break;
        case Prop_ShipDate:
            if (!read) shipDate = v.GetDate();
            else if (HasDate(shipDate)) v.SetDate(shipDate);
            break;
        case Prop_Digest: read ? v.SetHexBinary(digest) : void(digest = v.GetHexBinary()); break;
        case Prop_Comment:
            if (read) {
                if (commentNil) v.SetNil();
                else if (hasComment) v.SetString(comment);
            } else {
                commentNil = v.IsNil();
                hasComment = !commentNil;
                if (hasComment) comment = v.GetString();
            }
            break;
        case Prop_PartNum: read ? v.SetString(partNum) : void(partNum = v.GetString()); break;
        case Prop_Line: read ? v.SetI4(line) : void(line = v.GetI4()); break;
        default: UnknownProperty(id);
    }
}

// ---- Items ----

CItems::CItems() : m_item(new CXmlCollection("item", kPo, 0, -1, PoCreate, Class_Item)) {
    SetElementName("items");
}

void CItems::ResetProperties() { m_item->Clear(); }

void CItems::AccessProperty(int32_t id, bool read, KvVariant& v) {
    if (id != Prop_Item) UnknownProperty(id);
    if (read) v.SetXmlCollection(m_item.get());
}

// ---- Address ----

CAddress::CAddress(const char* elementName)
    : m_street(new CstringCol("street", kPo, 1, 2, nullptr, -1, -1, nullptr, nullptr, nullptr, nullptr, -1, kPoPreserve,
                              nullptr)) {
    SetElementName(elementName);
    ResetProperties();
}

void CAddress::ResetProperties() {
    name.clear();
    m_street->Clear();
    city.clear();
    state.clear();
    hasState = false;
    zip.clear();
    country.clear();
}

void CAddress::AccessProperty(int32_t id, bool read, KvVariant& v) {
    switch (id) {
        case Prop_Name: read ? v.SetString(name) : void(name = v.GetString()); break;
        case Prop_Street:
            if (read) v.SetXmlCollection(m_street.get());
            break;
        case Prop_City: read ? v.SetString(city) : void(city = v.GetString()); break;
        case Prop_State:
            if (!read) state = v.GetString(), hasState = true;
            else if (hasState) v.SetString(state);
            break;
        case Prop_Zip: read ? v.SetString(zip) : void(zip = v.GetString()); break;
        case Prop_Country: read ? v.SetString(country) : void(country = v.GetString()); break;
        default: UnknownProperty(id);
    }
}

// ---- payments ----

CCardPayment::CCardPayment() {
    SetElementName("card");
    ResetProperties();
}

void CCardPayment::ResetProperties() {
    holder.clear();
    token = CBinaryData();
    expires = CDateTime();
}

void CCardPayment::AccessProperty(int32_t id, bool read, KvVariant& v) {
    switch (id) {
        case Prop_Holder: read ? v.SetString(holder) : void(holder = v.GetString()); break;
        case Prop_Token: read ? v.SetBase64Binary(token) : void(token = v.GetBase64Binary()); break;
        case Prop_Expires: read ? v.SetYearMonth(expires) : void(expires = v.GetYearMonth()); break;
        default: UnknownProperty(id);
    }
}

CInvoicePayment::CInvoicePayment() {
    SetElementName("invoice");
    ResetProperties();
}

void CInvoicePayment::ResetProperties() {
    account = CBigInteger();
    terms = CDateTimeSpan();
}

void CInvoicePayment::AccessProperty(int32_t id, bool read, KvVariant& v) {
    switch (id) {
        case Prop_Account: read ? v.SetInteger(account) : void(account = v.GetInteger()); break;
        case Prop_Terms: read ? v.SetDuration(terms) : void(terms = v.GetDuration()); break;
        default: UnknownProperty(id);
    }
}

CPayment::CPayment() { SetElementName("payment"); }

void CPayment::SetCard(CCardPayment* card) {
    Choice_SelectElement("card", card, m_selected);
    m_card = card;
}

void CPayment::SetInvoice(CInvoicePayment* invoice) {
    Choice_SelectElement("invoice", invoice, m_selected);
    m_invoice = invoice;
}

void CPayment::ResetProperties() {
    m_card.reset();
    m_invoice.reset();
    m_selected.clear();
}

void CPayment::AccessProperty(int32_t id, bool read, KvVariant& v) {
    switch (id) {
        case Prop_Card:
            if (!read) SetCard(AdoptObject<CCardPayment>(v).get());
            else if (m_card) v.SetXmlObject(m_card.get());
            break;
        case Prop_Invoice:
            if (!read) SetInvoice(AdoptObject<CInvoicePayment>(v).get());
            else if (m_invoice) v.SetXmlObject(m_invoice.get());
            break;
        default: UnknownProperty(id);
    }
}

// ---- PurchaseOrder ----

CPurchaseOrder::CPurchaseOrder()
    : m_shipTo(new CAddress("shipTo")), m_payment(new CPayment), m_items(new CItems) {
    SetElementName("purchaseOrder");
    ResetProperties();
}

void CPurchaseOrder::ResetProperties() {
    // Mandatory children always exist and are emptied in place.
    m_shipTo->Clear();
    m_billTo.reset();
    m_payment->Clear();
    comment.clear();
    hasComment = commentNil = false;
    m_items->Clear();
    orderId = 0;
    orderDate = CDateTime();
    currency = PoCurrency::USD;
    hasCurrency = false;
    priority = hasPriority = false;
}

void CPurchaseOrder::AccessProperty(int32_t id, bool read, KvVariant& v) {
    switch (id) {
        case Prop_ShipTo:
            if (read) v.SetXmlObject(m_shipTo.get());
            else m_shipTo = AdoptObject<CAddress>(v);
            break;
        case Prop_BillTo:
            if (read) {
                if (m_billTo) v.SetXmlObject(m_billTo.get());
            } else {
                m_billTo = AdoptObject<CAddress>(v);
            }
            break;
        case Prop_Payment:
            if (read) v.SetXmlObject(m_payment.get());
            else m_payment = AdoptObject<CPayment>(v);
            break;
        case Prop_Comment:
            if (read) {
                if (commentNil) v.SetNil();
                else if (hasComment) v.SetString(comment);
            } else {
                commentNil = v.IsNil();
                hasComment = !commentNil;
                if (hasComment) comment = v.GetString();
            }
            break;
        case Prop_Items:
            if (read) v.SetXmlObject(m_items.get());
            else m_items = AdoptObject<CItems>(v);
            break;
        case Prop_OrderId: read ? v.SetUI8(orderId) : void(orderId = v.GetUI8()); break;
        case Prop_OrderDate: read ? v.SetDateTime(orderDate) : void(orderDate = v.GetDateTime()); break;
        case Prop_Currency:
            if (!read) currency = static_cast<PoCurrency>(v.GetI4()), hasCurrency = true;
            else if (hasCurrency) v.SetI4(static_cast<int32_t>(currency));
            break;
        case Prop_Priority:
            if (!read) priority = v.GetBoolean(), hasPriority = true;
            else if (hasPriority) v.SetBoolean(priority);
            break;
        default: UnknownProperty(id);
    }
}

// ---- purchaseOrders ----

CPurchaseOrders::CPurchaseOrders()
    : m_purchaseOrder(new CXmlCollection("purchaseOrder", kPo, 1, -1, PoCreate, Class_PurchaseOrder)) {
    SetElementName("purchaseOrders");
    ResetProperties();
}

void CPurchaseOrders::ResetProperties() {
    m_purchaseOrder->Clear();
    created = CDateTime();
    source.clear();
    hasSource = false;
}

void CPurchaseOrders::AccessProperty(int32_t id, bool read, KvVariant& v) {
    switch (id) {
        case Prop_PurchaseOrder:
            if (read) v.SetXmlCollection(m_purchaseOrder.get());
            break;
        case Prop_Created: read ? v.SetDateTime(created) : void(created = v.GetDateTime()); break;
        case Prop_Source:
            if (!read) source = v.GetString(), hasSource = true;
            else if (hasSource) v.SetString(source);
            break;
        default: UnknownProperty(id);
    }
}

}  // namespace kvbind
