// Tests for bindings with nested classes and collections: the purchase-order schema and the drawing schema.
#include <gtest/gtest.h>

#include <clocale>
#include <fstream>
#include <iterator>
#include <regex>
#include <string>

#include "bindings/Drawing.h"
#include "bindings/PurchaseOrder.h"
#include "kvxml/foundation/KvException.h"
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;
using namespace kvbind;

namespace {

std::string ReadFile(const std::string& path) {
    std::ifstream in(path, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
}

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

// Text is held in the local code page: the generator's names need UTF-8.
struct Utf8Locale {
    std::string saved = std::setlocale(LC_ALL, nullptr);
    bool ok = std::setlocale(LC_ALL, "C.UTF-8") != nullptr;
    ~Utf8Locale() { std::setlocale(LC_ALL, saved.c_str()); }
};

// The generator's document as the library writes it: compact, values in
// their canonical forms.
std::string Canonical(std::string doc) {
    const std::pair<const char*, const char*> rules[] = {
        {"([^?]>)\\s+<", "$1<"},
        {"\\s+$", ""},
        {"(T[0-9:]+\\.[0-9]*?)0+([Z+<\"-])", "$1$2"},
        {"(T[0-9:]+)\\.([Z+<\"-])", "$1$2"},
        {"<giftWrap>1</giftWrap>", "<giftWrap>true</giftWrap>"},
        {"<giftWrap>0</giftWrap>", "<giftWrap>false</giftWrap>"},
        {"(<unitPrice>[0-9]+\\.[0-9]*?)0+</", "$1</"},
        {"(<unitPrice>[0-9]+)\\.</", "$1</"},
    };
    for (const auto& rule : rules) doc = std::regex_replace(doc, std::regex(rule.first), rule.second);
    return doc;
}

TEST(PurchaseOrderBinding, AGeneratedDocumentRoundTripsWhole) {
    Utf8Locale utf8;
    if (!utf8.ok) GTEST_SKIP() << "C.UTF-8 locale not available";
    const std::string original = ReadFile(KVXML_TEST_DATA_DIR "/po-seed8.xml");
    CPurchaseOrders batch;
    Load(batch, original);
    ASSERT_EQ(batch.PurchaseOrder().GetCount(), 3);
    CPurchaseOrder* first = batch.GetPurchaseOrder(0);
    EXPECT_EQ(first->ShipTo().Street().Item(0), "471 Birch Lane");
    EXPECT_EQ(first->Items().GetItem(1)->productName, "\xC3\x89tag\xC3\xA8re en ch\xC3\xAAne");
    EXPECT_TRUE(first->Items().GetItem(1)->commentNil);
    EXPECT_NE(batch.GetPurchaseOrder(1)->Payment().GetInvoice(), nullptr);

    const std::string written = Save(batch, "urn:example:bench:po");
    EXPECT_EQ(written, Canonical(original));
    CPurchaseOrders again;
    Load(again, written);
    EXPECT_EQ(Save(again, "urn:example:bench:po"), written);
}

// Written compact, as the library writes it.
const char kDrawingDocument[] =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<drawing xmlns=\"urn:kvxml:test:drawing\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">"
    "<figure xsi:type=\"Circle\" id=\"c1\"><radius>2.5</radius></figure>"
    "<figure xsi:type=\"Square\" id=\"s1\"><side>4.25</side></figure>"
    "<layer><name>root</name><layer><name>a</name><layer><name>a1</name></layer></layer>"
    "<layer><name>b</name></layer></layer></drawing>";

TEST(DrawingBinding, AbstractMembersAndATreeRoundTrip) {
    CDrawing drawing;
    Load(drawing, kDrawingDocument);
    ASSERT_EQ(drawing.Figure().GetCount(), 2);
    auto* circle = dynamic_cast<CCircle*>(drawing.Figure().GetItemAt(0));
    ASSERT_TRUE(circle && dynamic_cast<CSquare*>(drawing.Figure().GetItemAt(1)));
    EXPECT_EQ(circle->radius, 2.5);
    EXPECT_EQ(drawing.GetLayer()->Layer().GetCount(), 2);
    EXPECT_EQ(Save(drawing, "urn:kvxml:test:drawing"), kDrawingDocument);
}

template <typename Binding>
std::string InnermostReadError(const std::string& document, const char* from, const char* to) {
    std::string doc = document;
    doc.replace(doc.find(from), std::string(from).size(), to);
    Binding binding;
    try {
        Load(binding, doc);
    } catch (const CKvException& error) {
        const CKvException* inner = &error;
        while (inner->GetInnerException()) inner = inner->GetInnerException();
        return inner->GetMessage();
    }
    return "no error";
}

TEST(CollectionBindings, ReadingAndWritingEnforceBoundsNamesAndTypes) {
    const std::string po = ReadFile(KVXML_TEST_DATA_DIR "/po-seed8.xml");
    EXPECT_EQ(InnermostReadError<CPurchaseOrders>(po, "<street>", "<street>1</street><street>2</street><street>"),
              "The Maximum number of [street] elements allowed in this collection is 2");
    EXPECT_EQ(InnermostReadError<CPurchaseOrders>(po, "<items>", "<x/><items>"),
              "Failed to find a required element [items]");
    EXPECT_EQ(InnermostReadError<CPurchaseOrders>(po, "<purchaseOrder ", "<x/><purchaseOrder "),
              "The Minimum number of [purchaseOrder] elements allowed in this collection is 1");
    EXPECT_EQ(InnermostReadError<CDrawing>(kDrawingDocument, "Square", "Star"),
              "Failed to find a suitable substitution element for [figure]");
    EXPECT_EQ(InnermostReadError<CDrawing>(kDrawingDocument, "<figure", "<x/><figure"),
              "The Minimum number of [figure] elements allowed in this collection is 1");

    CPurchaseOrders batch;
    Load(batch, po);
    batch.GetPurchaseOrder(1)->Items().GetItem(0)->quantity = 1000;
    EXPECT_THROW(Save(batch, ""), CKvValidationException);
    batch.PurchaseOrder().Clear();
    EXPECT_KV_THROW(Save(batch, ""), CKvValidationException, "Failed to convert the element [purchaseOrders] to XML");
}

}  // namespace
