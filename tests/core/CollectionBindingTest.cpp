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
class Utf8Locale {
public:
    Utf8Locale() : m_saved(std::setlocale(LC_ALL, nullptr)) { m_ok = std::setlocale(LC_ALL, "C.UTF-8") != nullptr; }
    ~Utf8Locale() { std::setlocale(LC_ALL, m_saved.c_str()); }
    bool ok() const { return m_ok; }

private:
    std::string m_saved;
    bool m_ok;
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
    if (!utf8.ok()) GTEST_SKIP() << "C.UTF-8 locale not available";
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

TEST(PurchaseOrderBinding, BoundsAndFacetsAreEnforced) {
    const std::string original = ReadFile(KVXML_TEST_DATA_DIR "/po-seed8.xml");
    struct Row {
        const char* from;
        const char* to;
        const char* message;  // the innermost message
    } rows[] = {
        {"<street>", "<street>1</street><street>2</street><street>", "The Maximum number of [street] elements allowed in this collection is 2"},
        {"<items>", "<x/><items>", "Failed to find a required element [items]"},
        {"<purchaseOrder ", "<x/><purchaseOrder ", "The Minimum number of [purchaseOrder] elements allowed in this collection is 1"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.message);
        std::string doc = original;
        doc.replace(doc.find(row.from), std::string(row.from).size(), row.to);
        CPurchaseOrders batch;
        try {
            Load(batch, doc);
            ADD_FAILURE() << "no error";
        } catch (const CKvException& error) {
            const CKvException* inner = &error;
            while (inner->GetInnerException()) inner = inner->GetInnerException();
            EXPECT_EQ(inner->GetMessage(), row.message);
        }
    }

    CPurchaseOrders batch;
    Load(batch, original);
    batch.GetPurchaseOrder(1)->Items().GetItem(0)->quantity = 1000;
    EXPECT_THROW(Save(batch, ""), CKvValidationException);
    batch.PurchaseOrder().Clear();
    try {
        Save(batch, "");
        ADD_FAILURE() << "no error";
    } catch (const CKvException& error) {
        EXPECT_EQ(error.GetFullMessage(), "Failed to convert the element [purchaseOrders] to XML\n"
                                          "The Minimum number of [purchaseOrder] elements allowed in this collection is 1");
    }
}

const char kDrawingDocument[] =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<drawing xmlns=\"urn:kvxml:test:drawing\" xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">\n"
    "  <figure xsi:type=\"Circle\" id=\"c1\">\n"
    "    <radius>2.5</radius>\n"
    "  </figure>\n"
    "  <figure xsi:type=\"Square\" id=\"s1\">\n"
    "    <side>4.25</side>\n"
    "  </figure>\n"
    "  <layer>\n"
    "    <name>root</name>\n"
    "    <layer>\n"
    "      <name>a</name>\n"
    "      <layer>\n"
    "        <name>a1</name>\n"
    "      </layer>\n"
    "    </layer>\n"
    "    <layer>\n"
    "      <name>b</name>\n"
    "    </layer>\n"
    "  </layer>\n"
    "</drawing>\n";

TEST(DrawingBinding, AbstractMembersAndATreeRoundTrip) {
    CDrawing drawing;
    Load(drawing, kDrawingDocument);
    ASSERT_EQ(drawing.Figure().GetCount(), 2);
    auto* circle = dynamic_cast<CCircle*>(drawing.Figure().GetItemAt(0));
    auto* square = dynamic_cast<CSquare*>(drawing.Figure().GetItemAt(1));
    ASSERT_TRUE(circle && square);
    EXPECT_EQ(circle->radius, 2.5);
    EXPECT_EQ(square->id, "s1");
    ASSERT_NE(drawing.GetLayer(), nullptr);
    EXPECT_EQ(drawing.GetLayer()->Layer().GetCount(), 2);
    EXPECT_EQ(Save(drawing, "urn:kvxml:test:drawing"), Canonical(kDrawingDocument));
}

TEST(DrawingBinding, UnknownTypesAndMissingFiguresFail) {
    std::string unknown = kDrawingDocument;
    unknown.replace(unknown.find("Square"), 6, "Star");
    CDrawing drawing;
    try {
        Load(drawing, unknown);
        ADD_FAILURE() << "no error";
    } catch (const CKvException& error) {
        EXPECT_EQ(error.GetFullMessage(), "Failed to process the element [drawing]\n"
                                          "Failed to find a suitable substitution element for [figure]");
    }
    EXPECT_KV_THROW(Load(drawing, "<drawing xmlns='urn:kvxml:test:drawing'/>"), CKvValidationException,
                    "Failed to process the element [drawing]");
}

}  // namespace
