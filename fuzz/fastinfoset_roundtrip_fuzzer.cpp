// fastinfoset_roundtrip_fuzzer.cpp - trees built from fuzz bytes, written as Fast Infoset and read back.
//
// The bytes drive a small program of writer calls (open, attribute, text,
// close) over a few names, namespaces and add lengths; the document read
// back must hold exactly the tree that was written. Nesting is unbounded
// by design and checked without recursion.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

#include "kvxml/dom/XmlDocument.h"
#include "kvxml/fastinfoset/FastInfosetWriter.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/output/Encoder.h"

using namespace KvXmlLib10;

namespace {

struct Node {
    std::string uri;
    std::string name;
    std::vector<std::string> attributes;  // uri, name, value triples flattened
    std::string text;
    std::vector<std::unique_ptr<Node>> children;
    bool hasContent = false;  // even empty text ends the start tag
};

class Bytes {
public:
    Bytes(const uint8_t* data, size_t size) : m_at(data), m_end(data + size) {}
    bool Empty() const { return m_at == m_end; }
    uint8_t Next() { return m_at == m_end ? 0 : *m_at++; }
    // A run of text without NUL or CR (the reader drops those) and of at most 80 bytes.
    std::string Text() {
        std::string text;
        const size_t length = Next() % 80;
        for (size_t i = 0; i < length && !Empty(); ++i) {
            const char c = static_cast<char>(Next());
            text += c == '\0' || c == '\r' ? 'x' : c;
        }
        return text;
    }

private:
    const uint8_t* m_at;
    const uint8_t* m_end;
};

const char* const kUris[] = {"", "urn:a", "urn:b", "http://www.w3.org/2001/XMLSchema-instance"};
const char* const kNames[] = {"a", "b", "item", "value", "x1", "longer-name.with_parts"};

void Fail() { std::abort(); }

// Compares without recursion.
void Expect(const Node& expected, const CXmlElement* actual) {
    std::vector<std::pair<const Node*, const CXmlElement*>> pending{{&expected, actual}};
    while (!pending.empty()) {
        const auto [node, element] = pending.back();
        pending.pop_back();
        if (!element || element->GetLocalName() != node->name || element->GetNamespaceURI() != node->uri ||
            element->GetText() != node->text)
            Fail();
        std::vector<std::string> attributes;
        for (const CXmlAttribute* attribute : element->GetAttributes()) {
            if (attribute->IsNamespaceAttribute()) continue;
            attributes.push_back(attribute->GetNamespaceURI());
            attributes.push_back(attribute->GetLocalName());
            attributes.push_back(attribute->GetValue());
        }
        if (attributes != node->attributes) Fail();
        const CXmlElement* child = element->GetFirstElement();
        for (const auto& expectedChild : node->children) {
            if (!child) Fail();
            pending.emplace_back(expectedChild.get(), child);
            child = child->GetNextSiblingElement();
        }
        if (child) Fail();
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    ASCIIOnly(true);  // text bytes pass both ways unchanged
    Bytes bytes(data, size);
    CFastInfosetContext context;
    context.SetElementMaxAddLength(bytes.Next() % 40);
    context.SetAttributeMaxAddLength(bytes.Next() % 40);
    const FInfoDecl decl = static_cast<FInfoDecl>(bytes.Next() % 10);

    CBinaryStream stream;
    Node root;
    {
        CFastInfosetWriter writer(context, stream);
        writer.Open();
        writer.WriteStartDocument(decl);
        if (bytes.Next() & 1) writer.AddNamespace("p", "urn:a");
        if (bytes.Next() & 1) writer.SetDefaultNamespace("urn:b");
        std::vector<Node*> open;
        const auto start = [&](Node& node) {
            node.uri = kUris[bytes.Next() % 3];
            node.name = kNames[bytes.Next() % 6];
            writer.WriteStartElement(node.name, node.uri);
            open.push_back(&node);
        };
        start(root);
        int attributeIndex = 0;
        while (!bytes.Empty() && !open.empty()) {
            Node& current = *open.back();
            switch (bytes.Next() % 5) {
                case 0: {
                    current.hasContent = true;
                    auto child = std::make_unique<Node>();
                    Node& added = *child;
                    current.children.push_back(std::move(child));
                    start(added);
                    attributeIndex = 0;
                    break;
                }
                case 1:
                    if (!current.hasContent) {
                        // Unique names: the reader keeps duplicates, the comparison would not.
                        const std::string uri = kUris[bytes.Next() % 4];
                        const std::string name = "at" + std::to_string(attributeIndex++);
                        const std::string value = bytes.Text();
                        writer.WriteAttributeString(name, uri, value, string);
                        current.attributes.insert(current.attributes.end(), {uri, name, value});
                    }
                    break;
                case 2:
                case 3: {
                    const std::string text = bytes.Text();
                    writer.WriteString(text, string);
                    current.text += text;
                    current.hasContent = true;
                    break;
                }
                default:
                    writer.WriteEndElement();
                    open.pop_back();
                    break;
            }
        }
        while (!open.empty()) {
            writer.WriteEndElement();
            open.pop_back();
        }
        writer.WriteEndDocument();
        writer.Close();
    }
    CBinaryData& written = stream.GetBinaryStream();
    CXmlDocument document;
    try {
        document.LoadXmlStream(const_cast<unsigned char*>(written.GetData()), written.GetLength());
    } catch (const CKvException&) {
        Fail();  // whatever the writer writes, the reader reads
    }
    Expect(root, document.GetDocumentElement());
    return 0;
}
