// FastInfosetReaderTest.cpp - Fast Infoset bytes in, document tree or message out.
#include "fastinfoset/detail/FIInput.h"
#include "support/Fixtures.h"

using namespace KvXmlTest;
using namespace KvXmlLib10;

namespace {

// "E0 00 00 01 ..." written as hex pairs; other text is taken literally
// when it is quoted with single quotes at the start.
std::string Hex(const std::string& hex) {
    std::string out;
    for (std::size_t i = 0; i < hex.size();) {
        if (hex[i] == ' ') {
            ++i;
            continue;
        }
        out.push_back(static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16)));
        i += 2;
    }
    return out;
}

const std::string kHeader = Hex("E0 00 00 01");

// name{uri}[attributes]"text"(children)
std::string Dump(const CXmlElement* element) {
    std::string out = element->GetLocalName();
    if (!element->GetNamespaceURI().empty()) out += "{" + element->GetNamespaceURI() + "}";
    if (!element->GetAttributes().empty()) out += "[" + KvXmlTest::AttributeList(element) + "]";
    if (!element->GetText().empty()) out += "\"" + element->GetText() + "\"";
    if (element->GetFirstElement()) {
        out += "(";
        for (auto* child = element->GetFirstElement(); child; child = child->GetNextSiblingElement()) {
            out += (child == element->GetFirstElement() ? "" : " ") + Dump(child);
        }
        out += ")";
    }
    return out;
}

std::string Load(CXmlDocument& document, const std::string& bytes) {
    std::string copy = bytes;
    document.LoadXmlStream(reinterpret_cast<unsigned char*>(&copy[0]), static_cast<uint32_t>(copy.size()));
    return document.GetDocumentElement() ? Dump(document.GetDocumentElement()) : "<none>";
}

std::string Load(const std::string& bytes) {
    CXmlDocument document;
    return Load(document, bytes);
}

}  // namespace

TEST(FastInfosetReader, BuildsTheTreeAndDropsEverythingElse) {
    const struct { const char* what; std::string bytes; const char* tree; } cases[] = {
        {"empty root", kHeader + Hex("00 3C 03 72 6F 6F 74 FF"), "root"},
        {"default namespace, attribute, indexed name and chunk",
         kHeader + Hex("00 78 CD 05 75 72 6E 3A 65 78 F0 3D 81 04 6F 72 64 65 72 78 01 69 64 40 37 F0 3D 81 03 69 74"
                         "65 6D 91 6F 6B F0 01 A0 FF F0"),
         "order{urn:ex}[id=7](item{urn:ex}\"ok\" item{urn:ex}\"ok\")"},
        {"int algorithm and numeric alphabet",
         kHeader + Hex("00 3C 00 6D 3C 00 6E 8C 0E 09 00 00 00 01 FF FF FF FE 00 00 01 2C F0 3C 00 76 98 02 00 A1 2C"
                         "5F FF F0"),
         "m(n\"1 -2 300\" v\"-12.5\")"},
        {"prefixed names and a reused value",
         kHeader + Hex("00 78 CF 00 70 04 75 72 6E 3A 70 F0 3F 81 81 00 61 7B 81 81 00 62 40 31 78 00 63 80 FF F0"),
         "a{urn:p}[{urn:p}b=1 c=1]"},
        {"comments and processing instructions",
         kHeader + Hex("00 E2 40 63 E1 00 74 40 64 3C 00 72 3C 00 61 F0 90 78 E1 80 40 65 E2 80 FF"),
         "r\"x\"(a)"},
        {"encoding scheme, standalone, version",
         kHeader + Hex("07 04 55 54 46 2D 38 01 42 31 2E 30 3C 03 72 6F 6F 74 FF"), "root"},
        {"additional data", kHeader + Hex("40 00 04 75 72 6E 3A 78 01 68 69 3C 03 72 6F 6F 74 FF"), "root"},
        {"initial vocabulary", kHeader + Hex("20 00 82 00 03 72 6F 6F 74 00 00 00 00 FF"), "root"},
        {"notation and unparsed entity",
         kHeader + Hex("1A C2 00 6E 04 6E 2E 62 69 6E F0 D0 00 65 04 65 2E 62 69 6E 80 F0 01 3C 00 72 FF"), "r"},
        {"document type declaration", kHeader + Hex("00 C6 04 72 2E 64 74 64 F0 3C 00 72 FF"), "r"},
        {"entity reference, UTF-16, CR, booleans",
         kHeader + Hex("00 3C 00 72 C8 02 65 6E 74 86 01 00 68 00 69 92 00 61 0D 62 8C 14 1A FF"),
         "r\"hiabtrue false true\""},
        {"declaration before the header",
         "<?xml version='1.1' encoding='finf' standalone='no'?>" + kHeader + Hex("00 3C 00 72 FF"), "r"},
        {"element and chunk index forms",
         kHeader + Hex("00 3C 00 72 3C 00 61 90 78 F0 00 F0 01 A0 FF F0"), "r(a\"x\" r a\"x\")"},
    };
    for (const auto& c : cases) {
        try {
            EXPECT_EQ(Load(c.bytes), c.tree) << c.what;
        } catch (const CKvException& error) {
            ADD_FAILURE() << c.what << ": " << error.GetMessage();
        }
    }
}

TEST(FastInfosetReader, OtherInputIsReadAsXmlText) {
    EXPECT_EQ(Load("<r a='1'>t</r>"), "r[a=1]\"t\"");
    // The header alone is not a document; a declaration without a header is XML text.
    EXPECT_KV_THROW(Load(kHeader), CKvException, "syntax error at line 1");
    EXPECT_KV_THROW(Load("<?xml encoding='finf'?><r/>"), CKvException, "XML declaration not well-formed at line 1");

    // Compressed Fast Infoset is inflated first.
    const std::string text(300, 'a');  // long enough to shrink when compressed
    const Bytes packed = Compressed(ToBytes("<?xml encoding='finf'?>" + kHeader + Hex("00 3C 00 72 83 00 00 00 29") +
                                            text + Hex("FF")), Compression_GZip);
    EXPECT_EQ(Load(std::string(packed.begin(), packed.end())), "r\"" + text + "\"");

    // Namespace declarations reach the document's prefix map.
    CXmlDocument document;
    Load(document, kHeader + Hex("00 38 CF 00 70 04 75 72 6E 3A 70 CD 81 F0 3F 81 81 00 61 FF"));
    EXPECT_EQ(document.LookupNamespaceFromAlias("p"), "urn:p");
    EXPECT_EQ(document.LookupNamespaceFromAlias(""), "urn:p");
    // The element callback sees Fast Infoset elements too.
    CXmlDocument dropping([](CXmlElement*) { return true; });
    EXPECT_EQ(Load(dropping, kHeader + Hex("00 3C 00 72 3C 00 61 F0 01 FF F0")), "r");
}

TEST(FastInfosetReader, BadInputGetsOneOfTheMessages) {
    const std::string eof = "Failed to parse FastInfoset. Unexpected End of File.";
    const std::string prefix = "Failed to parse FastInfoset. ";
    const struct { std::string bytes; std::string message; } cases[] = {
        {Hex("00 3C 03 72 6F"), eof}, {Hex("00 3C 00 72"), eof},
        {Hex("00 3C 60 7F FF FF FF 61"), eof},  // a name claiming 2^31 octets
        {Hex("00 3C 00 72 83 7F FF FF FF 61"), eof},
        {Hex("00 3C 00 72 04 FF"), prefix + "Invalid Encoding of integers 1 To 2^20 type  on the third bit of an octet."},
        {Hex("00 31"), prefix + "Invalid Encoding of integers 1 To 2^20 type  on the third bit of an octet."},
        {Hex("00 7C 00 72 70"), prefix + "Invalid Encoding of integers 1 To 2^20 type  on the second bit of an octet."},
        {Hex("00 3D 82 00 72"), prefix + "Invalid Encoding of integers 1 To 2^20 type  on the second bit of an octet."},
        {Hex("00 3C 00 72 A0"), prefix + "Invalid Encoding of integers 1 To 2^20 type  on the fourth bit of an octet."},
        {Hex("00 3C 00 72 B8 10 00 00"), prefix + "Invalid Encoding of integers 1 To 2^20 type  on the fourth bit of an octet."},
        {Hex("00 7C 00 72 78 00 61 80"), prefix + "Invalid Encoding of integers 0 To 2^20 type  on the second bit of an octet."},
        {Hex("00 3C 41"), prefix + "Invalid NonEmptyOctetString type  on the second bit of an octet."},
        {Hex("00 7C 00 72 78 00 61 09"), prefix + "Invalid NonEmptyOctetString type  on the fifth bit of an octet."},
        {Hex("00 3C 00 72 88 08 00 12"), prefix + "Invalid EncodedCharacterString type  on the third bit of an octet."},
        {Hex("00 7C 00 72 78 00 61 20 20 12"), prefix + "Invalid EncodedCharacterString type  on the fifth bit of an octet."},
        {Hex("20 08 00 00 00 61 3C 00 72 FF"),
         prefix + "Invalid Encoding of Restricted Alphabet. Alphabet must contain between 2 and 2^20 characters."},
        {Hex("00 3E 80 00 72"), prefix + "Invalid QName type Prefix without Namespace."},
        {Hex("00 7C 00 72 7A 80 00 61"), prefix + "Invalid QName type Prefix without Namespace."},
        {Hex("00 3C 00 72 C0"), prefix + "Invalid Encoding of Element type."},
        {Hex("00 90"), prefix + "Invalid Encoding of Element type."},
        {Hex("00 3C 00 72 8C 0A 00 01 02 03 FF"), "Invalid value for SHORT byte encoding."},
        {Hex("00 3C 00 72 8C 28 01 FF"), "Unknown byte encoding."},
    };
    for (const auto& c : cases) EXPECT_KV_THROW(Load(kHeader + c.bytes), CKvException, c.message);

    // The messages are fixed texts; the document keeps where the reader stopped.
    CXmlDocument document;
    EXPECT_KV_THROW(Load(document, kHeader + Hex("00 90")), CKvException,
                    "Failed to parse FastInfoset. Invalid Encoding of Element type.");
    EXPECT_EQ(document.GetErrorOffset(), 6);
    EXPECT_KV_THROW(Load(document, kHeader + Hex("00 3C 00 72 83 7F FF FF FF 61")), CKvException,
                    "Failed to parse FastInfoset. Unexpected End of File.");
    EXPECT_EQ(document.GetErrorOffset(), 13);  // the start of the string that runs past the end
    EXPECT_KV_THROW(Load(document, "<r>"), CKvException, "no element found at line 1");
    EXPECT_EQ(document.GetErrorOffset(), -1);
}

TEST(FastInfosetReader, DeepNestingNeedsNoRecursion) {
    constexpr std::size_t kDepth = 200000;
    std::string bytes = kHeader + Hex("00 3C 00 61");
    bytes.append(kDepth - 1, '\0');      // element name index 1
    bytes.append(kDepth / 2, '\xFF');    // two ends per octet
    bytes += Hex("F0");                // the end of the document
    CXmlDocument document;
    document.LoadXmlStream(reinterpret_cast<unsigned char*>(&bytes[0]), static_cast<uint32_t>(bytes.size()));
    std::size_t depth = 0;
    for (const CXmlElement* at = document.GetDocumentElement(); at; at = at->GetFirstElement()) ++depth;
    EXPECT_EQ(depth, kDepth);
}

TEST(FastInfosetReader, FullTablesTakeNoMoreEntries) {
    // "z" is chunk 1, then "a" until the table holds 2^20 chunks; "b" is not added.
    std::string bytes = kHeader + Hex("00 3C 00 72 90 7A");
    for (uint32_t i = 1; i < (1u << 20); ++i) bytes += Hex("90 61");
    bytes += Hex("90 62 A0 B8 0B FB EF FF");
    CXmlDocument document;
    document.LoadXmlStream(reinterpret_cast<unsigned char*>(&bytes[0]), static_cast<uint32_t>(bytes.size()));
    const std::string& text = document.GetDocumentElement()->GetText();
    EXPECT_EQ(text.size(), (1u << 20) + 3);
    EXPECT_EQ(text.substr(text.size() - 4), "abza");
}

TEST(FastInfosetInput, IntegersAndLengthsAtEveryBoundary) {
    const struct {
        int production;  // 2, 3, 4: 1 to 2^20 on that bit; 0: 0 to 2^20; 5, 7, 8: lengths on that bit (8 = 2nd)
        std::string bytes;
        uint64_t value;
    } cases[] = {
        {2, Hex("80"), 1}, {2, Hex("BF"), 64}, {2, Hex("C0 00"), 65}, {2, Hex("DF FF"), 8256},
        {2, Hex("E0 00 00"), 8257}, {2, Hex("EF DF BF"), 1048576}, {0, Hex("FF"), 0}, {0, Hex("C0 01"), 66},
        {3, Hex("00"), 1}, {3, Hex("1F"), 32}, {3, Hex("20 00"), 33}, {3, Hex("27 FF"), 2080},
        {3, Hex("28 00 00"), 2081}, {3, Hex("2F FF FF"), 526368}, {3, Hex("30 00 00 00"), 526369},
        {3, Hex("30 07 F7 DF"), 1048576}, {4, Hex("A0"), 1}, {4, Hex("AF"), 16}, {4, Hex("B0 00"), 17},
        {4, Hex("B3 FF"), 1040}, {4, Hex("B4 00 00"), 1041}, {4, Hex("B7 FF FF"), 263184},
        {4, Hex("B8 00 00 00"), 263185}, {4, Hex("B8 0B FB EF"), 1048576},
        {8, Hex("00"), 1}, {8, Hex("3F"), 64}, {8, Hex("40 00"), 65}, {8, Hex("40 FF"), 320},
        {8, Hex("60 00 00 00 00"), 321}, {8, Hex("60 FF FF FF FF"), 4294967616ULL},
        {5, Hex("40"), 1}, {5, Hex("47"), 8}, {5, Hex("48 00"), 9}, {5, Hex("48 FF"), 264},
        {5, Hex("4C 00 00 00 00"), 265}, {7, Hex("90"), 1}, {7, Hex("91"), 2}, {7, Hex("92 00"), 3},
        {7, Hex("92 FF"), 258}, {7, Hex("93 00 00 00 00"), 259},
    };
    for (const auto& c : cases) {
        const auto* data = reinterpret_cast<const unsigned char*>(c.bytes.data());
        detail::FIInput input(data, data + c.bytes.size());
        const uint8_t first = input.Next();
        uint64_t value = 0;
        switch (c.production) {
        case 0: value = input.Integer0To2pw20Bit2(first); break;
        case 2: value = input.Integer1To2pw20Bit2(first); break;
        case 3: value = input.Integer1To2pw20Bit3(first); break;
        case 4: value = input.Integer1To2pw20Bit4(first); break;
        case 5: value = input.NonEmptyOctetStringBit5Length(first); break;
        case 7: value = input.NonEmptyOctetStringBit7Length(first); break;
        default: value = input.NonEmptyOctetStringBit2Length(first); break;
        }
        EXPECT_EQ(value, c.value) << c.production << " " << c.bytes.size();
        EXPECT_EQ(input.Remaining(), 0u) << c.production << " " << c.value;
    }
}
