// fast_infoset_fuzzer.cpp - arbitrary Fast Infoset bodies through CXmlDocument::LoadXmlStream.
//
// The first input byte picks one of the declarations (or none) put before
// the header; the rest follows the header, so mutations explore the
// document's structure instead of its fixed first octets. Loading must build
// a tree or throw CKvException; the tree it leaves is walked without
// recursion. A second load runs with a generated vocabulary in use, a third
// with an element callback that drops elements.
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "fastinfoset/detail/FIDeclarations.h"
#include "kvxml/core/SerializationContext.h"
#include "kvxml/dom/XmlDocument.h"
#include "kvxml/foundation/KvException.h"

using namespace KvXmlLib10;

namespace {

uint32_t g_closed = 0;

bool DropEveryOther(CXmlElement*) { return ++g_closed % 2 == 0; }

size_t Walk(const CXmlDocument& document) {
    size_t touched = 0;
    std::vector<const CXmlElement*> pending;
    if (document.GetDocumentElement()) pending.push_back(document.GetDocumentElement());
    while (!pending.empty()) {
        const CXmlElement* element = pending.back();
        pending.pop_back();
        touched += element->GetLocalName().size() + element->GetNamespaceURI().size() + element->GetText().size();
        for (const CXmlAttribute* attribute : element->GetAttributes())
            touched += attribute->GetLocalName().size() + attribute->GetValue().size() + attribute->GetNamespaceURI().size();
        for (CXmlElement* child = element->GetFirstElement(); child; child = child->GetNextSiblingElement())
            pending.push_back(child);
    }
    return touched;
}

void Load(std::vector<unsigned char>& bytes, CXmlDocument& document) {
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
    if (size == 0 || size > (1u << 20)) return 0;
    const char* declaration = detail::kFInfoDeclTexts[data[0] % 10];
    std::vector<unsigned char> bytes(declaration, declaration + std::strlen(declaration));
    bytes.insert(bytes.end(), detail::kFIHeader, detail::kFIHeader + sizeof detail::kFIHeader);
    bytes.insert(bytes.end(), data + 1, data + size);

    {
        CXmlDocument document;
        Load(bytes, document);
    }
    {
        CXmlSerializationContext context;
        CFastInfosetContext& fi = context.GetFIContext();
        fi.SetUseGeneratedVocabulary(true);
        fi.GetVocabulary().AddElement("p", "urn:p", "e");
        fi.GetVocabulary().AddAttribute("", "", "a");
        fi.GetVocabulary().AddAttributeValue("v");
        fi.GetVocabulary().AddElementValue("t");
        CXmlDocument document(context);
        Load(bytes, document);
    }
    {
        g_closed = 0;
        CXmlDocument document(DropEveryOther);
        Load(bytes, document);
        Load(bytes, document);  // reuse: Cleanup before the second load
    }
    return 0;
}
