// FastInfosetWriterTest.cpp - the exact octets of documents written by CFastInfosetWriter.
#include <gtest/gtest.h>

#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "core/BindingTestSupport.h"
#include "kvxml/dom/XmlDocument.h"
#include "kvxml/fastinfoset/FastInfosetWriter.h"
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

namespace {

using Bytes = std::vector<unsigned char>;

Bytes Write(const std::function<void(CFastInfosetWriter&)>& body, const CFastInfosetContext& context = {},
            FInfoDecl decl = FInfoDecl_None) {
    CBinaryStream stream;
    CFastInfosetWriter writer(context, stream);
    writer.Open();
    writer.WriteStartDocument(decl);
    body(writer);
    writer.WriteEndDocument();
    writer.Close();
    const CBinaryData& data = stream.GetBinaryStream();
    return Bytes(data.GetData(), data.GetData() + data.GetLength());
}

// Failures read as hex dumps.
std::string Hex(const Bytes& bytes) {
    static const char digits[] = "0123456789ABCDEF";
    std::string out;
    for (unsigned char b : bytes) {
        out += digits[b >> 4];
        out += digits[b & 15];
        out += ' ';
    }
    return out;
}

Bytes Octets(std::initializer_list<int> values) { return Bytes(values.begin(), values.end()); }

Bytes Concat(std::initializer_list<Bytes> parts) {
    Bytes out;
    for (const Bytes& part : parts) out.insert(out.end(), part.begin(), part.end());
    return out;
}

Bytes Text(const std::string& text) { return Bytes(text.begin(), text.end()); }

const Bytes kHeader = Octets({0xE0, 0x00, 0x00, 0x01, 0x00});

// One element with text content.
void Leaf(CFastInfosetWriter& w, const std::string& name, const std::string& text, ItemType type = string,
          const std::string& uri = "") {
    w.WriteStartElement(name, uri);
    w.WriteString(text, type);
    w.WriteEndElement();
}

}  // namespace

TEST(FastInfosetWriter, DocumentsHaveTheExactOctets) {
    struct Case {
        const char* what;
        std::function<void(CFastInfosetWriter&)> body;
        Bytes expected;
    };
    const std::vector<Case> cases = {
        {"empty root, two ends in one FF",
         [](CFastInfosetWriter& w) {
             w.WriteStartElement("root", "");
             w.WriteEndElement();
         },
         Concat({kHeader, Octets({0x3C, 0x03}), Text("root"), Octets({0xFF})})},
        {"default namespace, attribute, indexed second name and chunk",
         [](CFastInfosetWriter& w) {
             w.SetDefaultNamespace("urn:ex");
             w.WriteStartElement("order", "urn:ex");
             w.WriteAttributeString("id", "", "7", string);
             Leaf(w, "item", "ok", string, "urn:ex");
             Leaf(w, "item", "ok", string, "urn:ex");
             w.WriteEndElement();
         },
         Concat({kHeader, Octets({0x78, 0xCD, 0x05}), Text("urn:ex"), Octets({0xF0, 0x3D, 0x81, 0x04}), Text("order"),
                 Octets({0x78, 0x01}), Text("id"), Octets({0x40, 0x37, 0xF0, 0x3D, 0x81, 0x03}), Text("item"),
                 Octets({0x91, 0x6F, 0x6B, 0xF0, 0x01, 0xA0, 0xFF, 0xF0})})},
        {"nested ends pair up",
         [](CFastInfosetWriter& w) {
             w.WriteStartElement("a", "");
             w.WriteStartElement("b", "");
             w.WriteStartElement("c", "");
             w.WriteEndElement();
             w.WriteEndElement();
             w.WriteEndElement();
         },
         Concat({kHeader, Octets({0x3C, 0x00, 'a', 0x3C, 0x00, 'b', 0x3C, 0x00, 'c', 0xFF, 0xFF})})},
        {"attribute list ends with its own F0; a pending end precedes text",
         [](CFastInfosetWriter& w) {
             w.WriteStartElement("e", "");
             w.WriteAttributeString("x", "", "1", string);
             w.WriteAttributeString("y", "", "", string);
             w.WriteStartElement("c", "");
             w.WriteEndElement();
             w.WriteString("z", string);
             w.WriteEndElement();
         },
         Concat({kHeader, Octets({0x7C, 0x00, 'e', 0x78, 0x00, 'x', 0x40, '1', 0x78, 0x00, 'y', 0xFF, 0xF0, 0x3C,
                                  0x00, 'c', 0xF0, 0x90, 'z', 0xFF})})},
        {"announced prefix declared on the root, names use its indexes",
         [](CFastInfosetWriter& w) {
             w.AddNamespace("p", "urn:p");
             w.WriteStartElement("a", "urn:p");
             w.WriteAttributeString("b", "urn:p", "1", string);
             w.WriteAttributeString("c", "", "1", string);
             w.WriteEndElement();
         },
         Concat({kHeader, Octets({0x78, 0xCF, 0x00, 'p', 0x04}), Text("urn:p"),
                 Octets({0xF0, 0x3F, 0x81, 0x81, 0x00, 'a', 0x7B, 0x81, 0x81, 0x00, 'b', 0x40, '1', 0x78, 0x00, 'c',
                         0x80, 0xF0, 0xFF})})},
        {"a namespace first used on a child gets an invented prefix declared there",
         [](CFastInfosetWriter& w) {
             w.WriteStartElement("r", "");
             w.WriteStartElement("c", "urn:x");
             w.WriteAttributeNil();
             w.WriteEndElement();
             w.WriteEndElement();
         },
         Concat({kHeader, Octets({0x3C, 0x00, 'r', 0x78, 0xCF, 0x01, 'A', 'A', 0x04}), Text("urn:x"),
                 Octets({0xCF, 0x01, 'A', 'B', 0x28}), Text("http://www.w3.org/2001/XMLSchema-instance"),
                 Octets({0xF0, 0x3F, 0x81, 0x81, 0x00, 'c', 0x7B, 0x82, 0x82, 0x02, 'n', 'i', 'l', 0x43}),
                 Text("true"), Octets({0xF0, 0xFF, 0xF0})})},
        {"an element without a namespace undeclares the default one when asked",
         [](CFastInfosetWriter& w) {
             w.SetUndeclareDefaultNamespace(true);
             w.SetDefaultNamespace("urn:d");
             w.WriteStartElement("r", "urn:d");
             w.WriteStartElement("c", "");
             w.WriteEndElement();
             w.WriteEndElement();
         },
         Concat({kHeader, Octets({0x38, 0xCD, 0x04}), Text("urn:d"),
                 Octets({0xF0, 0x3D, 0x81, 0x00, 'r', 0x38, 0xCC, 0xF0, 0x3C, 0x00, 'c', 0xFF, 0xF0})})},
        {"five characters are indexed on repetition, six never",
         [](CFastInfosetWriter& w) {
             w.WriteStartElement("r", "");
             for (const char* text : {"abcde", "abcde", "abcdef", "abcdef"}) Leaf(w, "a", text);
             w.WriteEndElement();
         },
         Concat({kHeader, Octets({0x3C, 0x00, 'r', 0x3C, 0x00, 'a', 0x92, 0x02}), Text("abcde"),
                 Octets({0xF0, 0x01, 0xA0, 0xF0, 0x01, 0x82, 0x03}), Text("abcdef"), Octets({0xF0, 0x01, 0x82, 0x03}),
                 Text("abcdef"), Octets({0xFF, 0xF0})})},
        {"comments, processing instructions and inline schemas leave no trace",
         [](CFastInfosetWriter& w) {
             w.WriteComment("c");
             w.WritePI("<?t d?>");
             w.WriteStartElement("root", "");
             w.WriteInlineSchema("<xs:schema/>");
             w.WriteComment("c");
             w.WriteEndElement();
         },
         Concat({kHeader, Octets({0x3C, 0x03}), Text("root"), Octets({0xFF})})},
    };
    for (const Case& c : cases) EXPECT_EQ(Hex(Write(c.body)), Hex(c.expected)) << c.what;
}

TEST(FastInfosetWriter, IndexesCrossTheirLengthClassesAtTheFormatsBoundaries) {
    // n distinct items, then the n-th again: its index, then the ends.
    struct Case {
        const char* what;
        int count;
        std::function<void(CFastInfosetWriter&, int)> item;
        Bytes tail;
    };
    const std::vector<Case> cases = {
        {"element name index 32 (the root is 1)", 31, [](CFastInfosetWriter& w, int i) { Leaf(w, "e" + std::to_string(i), ""); },
         Octets({0xF0, 0x1F, 0xFF, 0xF0})},
        {"element name index 33", 32, [](CFastInfosetWriter& w, int i) { Leaf(w, "e" + std::to_string(i), ""); },
         Octets({0xF0, 0x20, 0x00, 0xFF, 0xF0})},
        {"chunk 16", 16, [](CFastInfosetWriter& w, int i) { w.WriteString(std::to_string(i + 1000), string); },
         Octets({0xAF, 0xFF})},
        {"chunk 17", 17, [](CFastInfosetWriter& w, int i) { w.WriteString(std::to_string(i + 1000), string); },
         Octets({0xB0, 0x00, 0xFF})},
        {"chunk 1041", 1041, [](CFastInfosetWriter& w, int i) { w.WriteString(std::to_string(i + 1000), string); },
         Octets({0xB4, 0x00, 0x00, 0xFF})},
        {"attribute value 65", 65,
         [](CFastInfosetWriter& w, int i) {
             w.WriteStartElement("a", "");
             w.WriteAttributeString("v", "", std::to_string(i + 1000), string);
             w.WriteEndElement();
         },
         Octets({0xC0, 0x00, 0xF0, 0xFF, 0xF0})},
    };
    for (const Case& c : cases) {
        const Bytes bytes = Write([&](CFastInfosetWriter& w) {
            w.WriteStartElement("r", "");
            for (int i = 0; i < c.count; ++i) c.item(w, i);
            c.item(w, c.count - 1);
            w.WriteEndElement();
        });
        const Bytes& tail = c.tail;
        ASSERT_GE(bytes.size(), tail.size()) << c.what;
        EXPECT_EQ(Hex(Bytes(bytes.end() - static_cast<long>(tail.size()), bytes.end())), Hex(tail)) << c.what;
    }
}

TEST(FastInfosetWriter, RepeatedNamesReadBackAsTheNamesThatWereWritten) {
    // Names whose parts join into the same text, each written twice (the
    // second time as an index), and enough of them to grow the name index.
    std::vector<std::pair<std::string, std::string>> names = {
        {"urn:ab", "c"}, {"urn:a", "bc"}, {"", "urn:abc"}, {"urn:abcdefgh", "i"}, {"urn:abcdefg", "hi"}};
    for (int i = 0; i < 80; ++i) names.emplace_back("urn:n" + std::to_string(i % 3), "e" + std::to_string(i));
    Bytes bytes = Write([&](CFastInfosetWriter& w) {
        w.WriteStartElement("r", "");
        for (int i = 0; i < 2 * static_cast<int>(names.size()); ++i) {
            const auto& name = names[i % names.size()];
            w.WriteStartElement(name.second, name.first);
            w.WriteAttributeString(name.second, name.first, "v", string);
            w.WriteEndElement();
        }
        w.WriteEndElement();
    });
    CXmlDocument document;
    document.LoadXmlStream(bytes.data(), static_cast<uint32_t>(bytes.size()));
    const CXmlElement* child = document.GetDocumentElement()->GetFirstElement();
    for (std::size_t i = 0; i < 2 * names.size(); ++i, child = child->GetNextSiblingElement()) {
        ASSERT_TRUE(child && child->GetAttributes().size() == 1) << i;
        const CXmlAttribute& attribute = *child->GetAttributes()[0];
        const std::string expected = names[i % names.size()].first + " " + names[i % names.size()].second;
        EXPECT_EQ(child->GetNamespaceURI() + " " + child->GetLocalName(), expected) << i;
        EXPECT_EQ(attribute.GetNamespaceURI() + " " + attribute.GetLocalName(), expected) << i;
    }
    EXPECT_EQ(child, nullptr);
}

TEST(FastInfosetWriter, DeclarationsAndGeneratedVocabularyPrecedeTheBody) {
    const auto root = [](CFastInfosetWriter& w) {
        w.WriteStartElement("r", "");
        w.WriteEndElement();
    };
    const Bytes body = Octets({0x3C, 0x00, 'r', 0xFF});
    EXPECT_EQ(Write(root, {}, FInfoDecl_Finf), Concat({Text("<?xml encoding='finf'?>"), kHeader, body}));
    EXPECT_EQ(Write(root, {}, FInfoDecl_V11_Finf_StandaloneNo),
              Concat({Text("<?xml version='1.1' encoding='finf' standalone='no'?>"), kHeader, body}));

    CFastInfosetContext context;
    context.SetUseGeneratedVocabulary(true);
    context.SetExternalVocabularyURI("urn:v");
    context.GetVocabulary().AddElement("", "", "r");
    EXPECT_EQ(Write(root, context),
              Concat({Octets({0xE0, 0x00, 0x00, 0x01, 0x20, 0x10, 0x00, 0x04}), Text("urn:v"), Octets({0x00, 0xFF})}));
    context.SetExternalVocabularyURI("");
    const Bytes producer = Write(root, context);
    EXPECT_EQ(Bytes(producer.begin(), producer.begin() + 7), Octets({0xE0, 0x00, 0x00, 0x01, 0x20, 0x10, 0x00}));
    EXPECT_GT(producer.size(), 10u) << "a producer URI is named when the context has none";
}

TEST(FastInfosetWriter, TypedValuesTakeTheContextsEncodings) {
    CFastInfosetContext context;
    context.SetSuggestedValues();
    const Bytes bytes = Write(
        [](CFastInfosetWriter& w) {
            w.WriteStartElement("m", "");
            w.WriteAttributeString("n", "", "12", integer);
            Leaf(w, "i", "1000000", i4);
            Leaf(w, "v", "-12.5", decimal);
            Leaf(w, "d", "2024-01-31T12:00Z", datetime);
            Leaf(w, "b", "true", boolean);
            w.WriteEndElement();
        },
        context);
    const Bytes expected =
        Concat({kHeader, Octets({0x7C, 0x00, 'm', 0x78, 0x00, 'n', 0x60, 0x00, 0x12, 0xF0}),
                Octets({0x3C, 0x00, 'i', 0x8C, 0x0E, 0x01, 0x00, 0x0F, 0x42, 0x40, 0xF0}),
                Octets({0x3C, 0x00, 'v', 0x98, 0x02, 0x00, 0xA1, 0x2C, 0x5F, 0xF0}),
                Octets({0x3C, 0x00, 'd', 0x88, 0x06, 0x06, 0x20, 0x24, 0xA0, 0x1A, 0x31, 0xC1, 0x2B, 0x00, 0xDF, 0xF0}),
                Octets({0x3C, 0x00, 'b', 0x9C, 0x14, 0x38, 0xFF, 0xF0})});
    EXPECT_EQ(Hex(bytes), Hex(expected));
}

TEST(FastInfosetWriter, RefusesWhatItCannotWrite) {
    const auto writeAs = [](CFastInfosetContext::EncodedCharacterString encoding, const char* text,
                            uint8_t defaultEncoding = 0, bool asAttribute = false) {
        CFastInfosetContext context;
        context.SetEncoding(string, encoding);
        context.SetDefaultStringEncoding(defaultEncoding);
        Write(
            [&](CFastInfosetWriter& w) {
                w.WriteStartElement("r", "");
                if (asAttribute) w.WriteAttributeString("a", "", text, string);
                w.WriteString(text, string);
                w.WriteEndElement();
            },
            context);
    };
    using E = CFastInfosetContext;
    EXPECT_KV_THROW(writeAs({E::ECS_RestrictedAlphabet, 2}, "2024-01-01T00:00:00+01:00"), CKvException,
                    "Failed to write FastInfoset. Invalid character not found for Restricted Alphabet.");
    EXPECT_KV_THROW(writeAs({E::ECS_RestrictedAlphabet, 0}, "1"), CKvException,
                    "Failed to write FastInfoset. Invalid Restricted Alphabet value [0]");
    EXPECT_KV_THROW(writeAs({E::ECS_RestrictedAlphabet, 3}, "1"), CKvException,
                    "Failed to write FastInfoset. Unsupported Feature in AppendRestrictedAlphabetString.");
    EXPECT_KV_THROW(writeAs({E::ECS_Algorithm, 11}, "1"), CKvException,
                    "Failed to write FastInfoset. Invalid Encoding Algorithm value [11]");
    EXPECT_KV_THROW(writeAs({}, "x", 1), CKvException,
                    "Failed to write FastInfoset. Unsupported Feature UTF16BE in EncodedCharacterStringBit5.");
    EXPECT_KV_THROW(writeAs({}, "x", 2), CKvException,
                    "Failed to write FastInfoset. Unknown encoding in EncodedCharacterStringBit5.");
    EXPECT_KV_THROW(writeAs({}, "x", 1, true), CKvException,
                    "Failed to write FastInfoset. Unknown encoding in EncodedCharacterStringBit7.");
    EXPECT_KV_THROW(Write([](CFastInfosetWriter& w) {
                        w.WriteStartElement("r", "");
                        w.WriteString("t", string);
                        w.WriteAttributeNil();
                    }),
                    CKvException, "Attributes must be added before elements");
    EXPECT_KV_THROW(Write([](CFastInfosetWriter& w) { w.WriteStartElement("r", ""); }), CKvException,
                    "An Element has not been closed.");
    EXPECT_KV_THROW(Write([](CFastInfosetWriter& w) { w.WriteStartElement("", ""); }), CKvException,
                    "The element name [] is not a valid XML name");
    EXPECT_KV_THROW(Write([](CFastInfosetWriter& w) {
                        w.WriteStartElement("r", "");
                        w.WriteAttributeString("a b", "", "v", string);
                    }),
                    CKvException, "The attribute name [a b] is not a valid XML name");
}

// ---- whole documents through the object entry points and back ----

TEST(FastInfosetDocuments, EveryDeclarationAndCompressionReadsBackIntoTheSameObjects) {
    kvbindtest::CTicket ticket;
    kvbindtest::FillTicket(ticket);
    const std::string expected = kvbindtest::Compact(ticket);
    for (int decl = FInfoDecl_None; decl <= FInfoDecl_V11_Finf_StandaloneNo; ++decl) {
        for (CompressionType compression : {Compression_None, Compression_GZip, Compression_Zlib}) {
            const CBinaryData bytes = ticket.ToFastInfosetStream(static_cast<FInfoDecl>(decl),
                                                                 CXmlSerializationContext::m_defaultContext, compression);
            kvbindtest::CTicket copy;
            copy.FromXmlStream(bytes);
            EXPECT_EQ(kvbindtest::Compact(copy), expected) << "declaration " << decl << " compression " << compression;
        }
    }
}

TEST(FastInfosetDocuments, SuggestedEncodingsKeepEveryTypesValue) {
    kvbindtest::CAllTypes value;
    kvbindtest::FillAllTypes(value);
    value.SetUi8(42);  // the long algorithm the suggestions give ui8 holds no larger value
    CXmlSerializationContext suggested;
    suggested.GetFIContext().SetSuggestedValues();
    const CBinaryData typed = value.ToFastInfosetStream(FInfoDecl_None, suggested);
    const CBinaryData plain = value.ToFastInfosetStream();
    EXPECT_LT(typed.GetLength(), plain.GetLength());
    for (const CBinaryData* bytes : {&typed, &plain}) {
        kvbindtest::CAllTypes copy;
        copy.FromXmlStream(*bytes);
        EXPECT_EQ(kvbindtest::Compact(copy), kvbindtest::Compact(value));
    }
}

TEST(FastInfosetDocuments, FilesRefuseZlibAndWriteGzip) {
    kvbindtest::CTicket ticket;
    kvbindtest::FillTicket(ticket);
    const std::string path = ::testing::TempDir() + "kvxml_fi_ticket.fi";
    std::remove(path.c_str());
    EXPECT_KV_THROW(ticket.ToFastInfosetFile(path.c_str(), FInfoDecl_None, CXmlSerializationContext::m_defaultContext,
                                             Compression_Zlib),
                    CKvException, "ZLIB Compression only available for To Stream methods.");
    EXPECT_EQ(std::fopen(path.c_str(), "rb"), nullptr) << "refused before any file is touched";
    ticket.ToFastInfosetFile(path.c_str(), FInfoDecl_Finf, CXmlSerializationContext::m_defaultContext,
                             Compression_GZip);
    std::FILE* file = std::fopen(path.c_str(), "rb");
    ASSERT_NE(file, nullptr);
    unsigned char magic[2] = {};
    EXPECT_EQ(std::fread(magic, 1, 2, file), 2u);
    std::fclose(file);
    EXPECT_EQ(magic[0], 0x1F);
    EXPECT_EQ(magic[1], 0x8B);
    kvbindtest::CTicket copy;
    copy.FromXmlFile(path.c_str());
    EXPECT_EQ(kvbindtest::Compact(copy), kvbindtest::Compact(ticket));
    std::remove(path.c_str());
}
