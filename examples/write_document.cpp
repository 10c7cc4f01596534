// write_document.cpp - drives CXmlTextWriter directly and prints a UTF-8 document.
//
// This is what generated classes do under the hood: announce namespaces,
// then write elements, attributes and text; the writer picks the prefixes.
#include <kvxml/kvxml.h>

#include <clocale>
#include <cstdio>

using namespace KvXmlLib10;

namespace {
const char* const kPurchaseOrders = "urn:example:bench:po";
const char* const kSchemaInstance = "http://www.w3.org/2001/XMLSchema-instance";

void WriteLeaf(CXmlWriter& writer, const char* name, const char* text, ItemType type) {
    writer.WriteStartElement(name, kPurchaseOrders);
    writer.WriteString(text, type);
    writer.WriteEndElement();
}

void WriteItem(CXmlWriter& writer, const char* partNumber, const char* product, const char* quantity,
               const char* price) {
    writer.WriteStartElement("item", kPurchaseOrders);
    writer.WriteAttributeString("partNum", "", partNumber, KvXmlLib10::string);
    WriteLeaf(writer, "productName", product, KvXmlLib10::string);
    WriteLeaf(writer, "quantity", quantity, ui4);
    WriteLeaf(writer, "USPrice", price, decimal);
    writer.WriteEndElement();
}
}  // namespace

int main() {
    // Text inside the library is in the local code page; make that UTF-8.
    std::setlocale(LC_ALL, "C.UTF-8");
    try {
        CTextStream stream(Encoding_UTF8);
        CXmlTextWriter writer(stream);
        writer.Open();
        writer.SetFormat(true);
        writer.SetEOLType(EOL_LF);
        writer.WriteStartDocument();
        writer.WriteComment("A purchase order written through the kvxml writer");
        writer.AddNamespace("po", kPurchaseOrders);
        writer.AddNamespace("xsi", kSchemaInstance);

        writer.WriteStartElement("purchaseOrder", kPurchaseOrders);
        writer.WriteAttributeString("orderId", "", "10045", ui8);
        writer.WriteAttributeString("orderDate", "", "2026-11-21T09:30:00Z", datetime);

        writer.WriteStartElement("shipTo", kPurchaseOrders);
        writer.WriteAttributeString("country", "", "DE", KvXmlLib10::string);
        WriteLeaf(writer, "name", "Søren Müller", KvXmlLib10::string);
        WriteLeaf(writer, "street", "Hauptstraße 7", KvXmlLib10::string);
        WriteLeaf(writer, "city", "München", KvXmlLib10::string);
        writer.WriteEndElement();

        writer.WriteStartElement("comment", kPurchaseOrders);
        writer.WriteAttributeNil();
        writer.WriteEndElement();

        writer.WriteStartElement("items", kPurchaseOrders);
        WriteItem(writer, "872-AA", "Nuts & Bolts (assorted)", "2", "12.50");
        WriteItem(writer, "926-AA", "Size <XL> rain jacket", "1", "89.00");
        writer.WriteEndElement();

        // A namespace nobody announced gets an invented prefix where it is used.
        writer.WriteStartElement("note", "urn:example:notes");
        writer.WriteString("Deliver between 9 < t < 17", KvXmlLib10::string);
        writer.WriteEndElement();

        writer.WriteEndElement();
        writer.Close();

        CBinaryData bytes = stream.GetEncodedStream();
        std::fwrite(bytes.GetData(), 1, bytes.GetLength(), stdout);
        return 0;
    } catch (const CKvException& error) {
        std::fprintf(stderr, "write_document: %s\n", error.GetFullMessage().c_str());
        return 1;
    }
}
