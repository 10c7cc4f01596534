// CollectionBindingTest.cpp - bindings with nested classes and collections: the purchase-order and shapes schemas.

#include <regex>

#include "po.h"
#include "support/Fixtures.h"

using namespace KvXmlLib10;
using kvgen_po::CPurchaseOrderBatch;

namespace {

using KvXmlTest::ReadFile;

template <typename Binding>
void Load(Binding& binding, const std::string& bytes) {
    binding.FromXmlStream(reinterpret_cast<unsigned char*>(const_cast<char*>(bytes.data())),
                          static_cast<uint32_t>(bytes.size()));
}

// Written compact, with the document's own namespace declarations on the root.
template <typename Binding>
std::string Save(const Binding& binding, const char* defaultNamespace) {
    CXmlSerializationContext context;
    context.SetDefaultNamespaceURI(defaultNamespace);
    context.GetNamespaceAliases().Add("xsi", "http://www.w3.org/2001/XMLSchema-instance");
    const CBinaryData bytes = binding.ToXmlStream(true, false, Encoding_UTF8, EOL_LF, context);
    return std::string(reinterpret_cast<const char*>(bytes.GetData()), bytes.GetLength());
}

// The generator's document as the library writes it: compact, values in
// their canonical forms.
std::string Canonical(std::string doc) {
    const std::pair<const char*, const char*> rules[] = {
        {"([^?]>)\\s+<", "$1<"},
        {"\\s+$", ""},
        {"(T[0-9:]+\\.[0-9]*?)0+([Z+<\"-])", "$1$2"},
        {"(T[0-9:]+)\\.([Z+<\"-])", "$1$2"},
        {"(orderDate=\"[^\"]*\")>", "$1 currency=\"USD\">"},  // a held default is written
        {"<giftWrap>1</giftWrap>", "<giftWrap>true</giftWrap>"},
        {"<giftWrap>0</giftWrap>", "<giftWrap>false</giftWrap>"},
        {"(<unitPrice>[0-9]+\\.[0-9]*?)0+</", "$1</"},
        {"(<unitPrice>[0-9]+)\\.</", "$1</"},
    };
    for (const auto& rule : rules) doc = std::regex_replace(doc, std::regex(rule.first), rule.second);
    return doc;
}

TEST(PurchaseOrderBinding, AGeneratedDocumentRoundTripsWhole) {
    const KvXmlTest::ScopedLocale utf8("C.UTF-8");  // the generator's names need UTF-8
    if (!utf8.Active()) GTEST_SKIP() << "C.UTF-8 locale not available";
    const std::string original = ReadFile(KVXML_BINDINGS_DIR "/po.xml");
    CPurchaseOrderBatch batch("purchaseOrders");
    Load(batch, original);
    ASSERT_EQ(batch.PurchaseOrder().GetCount(), 3);
    kvgen_po::CPurchaseOrder* first = batch.GetPurchaseOrder(0);
    EXPECT_EQ(first->GetShipTo()->Street().Item(0), "471 Birch Lane");
    EXPECT_EQ(first->GetItems()->GetItem(1)->GetProductName(), "\xC3\x89tag\xC3\xA8re en ch\xC3\xAAne");
    EXPECT_TRUE(first->GetItems()->GetItem(1)->IsCommentNil());
    EXPECT_TRUE(batch.GetPurchaseOrder(1)->GetChoiceGroup()->IsInvoiceSet());

    EXPECT_EQ(Save(batch, "urn:example:bench:po"), Canonical(original));  // nothing lost, nothing added
}

// Bounds on writing (the instance table holds those on reading).
TEST(CollectionBindings, WritingEnforcesBounds) {
    CPurchaseOrderBatch batch("purchaseOrders");
    Load(batch, ReadFile(KVXML_BINDINGS_DIR "/po.xml"));
    batch.GetPurchaseOrder(1)->GetItems()->GetItem(0)->SetQuantity(1000);
    EXPECT_THROW(Save(batch, ""), CKvValidationException);
    batch.PurchaseOrder().Clear();
    EXPECT_KV_THROW(Save(batch, ""), CKvValidationException, "Failed to convert the element [purchaseOrders] to XML");
}

}  // namespace
