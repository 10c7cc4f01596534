// xml_document_fuzzer.cpp - arbitrary bytes through CXmlDocument::LoadXmlStream under several option sets.
//
// Loading must either build a tree or throw CKvException; the tree it leaves
// (complete or partial) is walked without recursion and every node touched.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "kvxml/core/SerializationContext.h"
#include "kvxml/dom/XmlDocument.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/output/KvZip.h"

using namespace KvXmlLib10;

namespace {

uint32_t g_closed = 0;

// Drops every third element, exercising removal while the tree grows.
bool DropEveryThird(CXmlElement*) { return ++g_closed % 3 == 0; }

size_t Walk(const CXmlDocument& document) {
    size_t touched = 0;
    std::vector<const CXmlElement*> pending;
    if (document.GetDocumentElement()) pending.push_back(document.GetDocumentElement());
    while (!pending.empty()) {
        const CXmlElement* element = pending.back();
        pending.pop_back();
        touched += element->GetLocalName().size() + element->GetNamespaceURI().size() + element->GetText().size();
        for (const CXmlAttribute* attribute : element->GetAttributes()) {
            touched += attribute->GetValue().size() + attribute->IsNilAttribute() + attribute->IsNamespaceAttribute();
            // The lookup must land on the first attribute of that name (the
            // text parser refuses duplicates; Fast Infoset input may carry them).
            const CXmlAttribute* first = attribute;
            for (const CXmlAttribute* other : element->GetAttributes()) {
                if (other->GetLocalName() == attribute->GetLocalName() &&
                    other->GetNamespaceURI() == attribute->GetNamespaceURI()) {
                    first = other;
                    break;
                }
            }
            if (&element->GetAttribute(attribute->GetLocalName(), attribute->GetNamespaceURI()) != &first->GetValue())
                std::abort();
        }
        const std::string prefix = element->GetLocalName().substr(0, element->GetLocalName().find(':'));
        touched += document.LookupNamespaceFromAlias(prefix.c_str()).size();
        for (CXmlElement* child = element->GetFirstElement(); child; child = child->GetNextSiblingElement())
            pending.push_back(child);
    }
    return touched;
}

void Load(const uint8_t* data, size_t size, CXmlDocument& document) {
    std::vector<unsigned char> bytes(data, data + size);
    try {
        document.LoadXmlStream(bytes.data(), static_cast<uint32_t>(bytes.size()));
    } catch (const CKvException&) {
        // Malformed input: the partial tree is walked all the same.
    }
    volatile size_t sink = Walk(document);
    (void)sink;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size > (1u << 20)) return 0;
    CKvZip::SetMaxDecompressedSize(16u << 20);  // keeps inflation bombs out of the fuzzer's memory

    {
        CXmlDocument document;
        Load(data, size, document);
    }
    {
        CXmlSerializationContext context;
        context.SetSchemaType(SchemaType_NoNamespaces);
        CXmlDocument document(context);
        Load(data, size, document);
    }
    {
        CXmlSerializationContext context;
        context.SetStripCDATA(false);
        g_closed = 0;
        CXmlDocument document(DropEveryThird, context);
        Load(data, size, document);
        Load(data, size, document);  // reuse: Cleanup before the second load
    }
    return 0;
}
