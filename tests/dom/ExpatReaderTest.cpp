// ExpatReaderTest.cpp - XML text reading: namespaces, CDATA, text, local code page and parse errors.
#include "support/Fixtures.h"

using namespace KvXmlTest;
using namespace KvXmlLib10;

TEST(ExpatReaderNamespaces, SplitsNamesAndRecordsPrefixesDocumentWide) {
    CXmlDocument document;
    document.LoadXml("<a xmlns='u'><b/></a>");
    const CXmlElement* a = document.GetDocumentElement();
    EXPECT_EQ(a->GetNamespaceURI() + " " + a->GetLocalName(), "u a");
    EXPECT_EQ(a->GetFirstElement()->GetNamespaceURI() + " " + a->GetFirstElement()->GetLocalName(), "u b");
    EXPECT_EQ(document.LookupNamespaceFromAlias(""), "u");
    EXPECT_TRUE(a->GetAttributes().empty()) << "declarations are not attributes";

    document.LoadXml(
        "<p:a xmlns:p='urn:p' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' p:x='1' y='2'>"
        "<c xsi:nil='true' xsi:type='p:t'/><p:d xmlns:p='urn:p2'/><e xmlns=''/></p:a>");
    a = document.GetDocumentElement();
    EXPECT_EQ(a->GetNamespaceURI() + " " + a->GetLocalName(), "urn:p a");
    EXPECT_EQ(AttributeList(a), "{urn:p}x=1 y=2");
    const CXmlElement* c = a->GetFirstElement();
    EXPECT_EQ(c->GetNamespaceURI(), "");
    EXPECT_EQ(AttributeList(c), "{http://www.w3.org/2001/XMLSchema-instance}nil=true "
                                "{http://www.w3.org/2001/XMLSchema-instance}type=p:t");
    const CXmlElement* d = c->GetNextSiblingElement();
    EXPECT_EQ(d->GetNamespaceURI(), "urn:p2");
    EXPECT_EQ(d->GetNextSiblingElement()->GetNamespaceURI(), "");
    // The last declaration of a prefix wins; an undeclared default namespace is recorded as "".
    EXPECT_EQ(document.LookupNamespaceFromAlias("p"), "urn:p2");
    EXPECT_EQ(document.LookupNamespaceFromAlias("xsi"), "http://www.w3.org/2001/XMLSchema-instance");
    EXPECT_EQ(document.LookupNamespaceFromAlias(""), "");
}

TEST(ExpatReaderNamespaces, SchemaTypeTwoKeepsPrefixesAndDeclarations) {
    CXmlSerializationContext context;
    context.SetSchemaType(SchemaType_NoNamespaces);
    CXmlDocument document(context);
    document.LoadXml("<p:a xmlns:p='u' xmlns='d' p:k='v'><q:b/></p:a>");
    const CXmlElement* a = document.GetDocumentElement();
    EXPECT_EQ(a->GetNamespaceURI(), "");
    EXPECT_EQ(a->GetLocalName(), "p:a");
    EXPECT_EQ(AttributeList(a), "xmlns:p=u xmlns=d p:k=v");
    // Unbound prefixes are no error without namespace processing.
    EXPECT_EQ(a->GetFirstElement()->GetLocalName(), "q:b");
    EXPECT_EQ(document.LookupNamespaceFromAlias("p"), "");
}

TEST(ExpatReaderText, JoinsTextAroundReferencesDropsMarkupAndKeepsOrStripsCDataDelimiters) {
    CXmlDocument stripping;
    stripping.LoadXml("<a><![CDATA[x<y]]></a>");
    EXPECT_EQ(stripping.GetDocumentElement()->GetText(), "x<y");
    CXmlSerializationContext keep;
    keep.SetStripCDATA(false);
    CXmlDocument keeping(keep);
    keeping.LoadXml("<a>1<![CDATA[x<y&z]]>2<![CDATA[]]></a>");
    EXPECT_EQ(keeping.GetDocumentElement()->GetText(), "1<![CDATA[x<y&z]]>2<![CDATA[]]>");
    CXmlDocument document;
    document.LoadXml(
        "<?xml version='1.0'?><!DOCTYPE a [<!ENTITY e 'ent'>]><!--c--><?pi x?>"
        "<a>a&amp;b&lt;&#65;&#x42;&e;<!-- gone --><?pi y?>c</a><!--after-->");
    EXPECT_EQ(document.GetDocumentElement()->GetText(), "a&b<ABentc");
    EXPECT_EQ(document.GetDocumentElement()->GetFirstElement(), nullptr);
}

TEST(ExpatReaderText, ConvertsToTheLocalCodePageUnlessAsciiOnly) {
    const std::string text = "caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80";
    {
        ScopedLocale locale("C.UTF-8");
        ASSERT_TRUE(locale.Active());
        CXmlDocument document;
        document.LoadXml(("<\xC3\xA9 xmlns='urn:\xC3\xBC' n='" + text + "'>" + text + "</\xC3\xA9>").c_str());
        const CXmlElement* root = document.GetDocumentElement();
        EXPECT_EQ(root->GetText(), text);
        EXPECT_EQ(root->GetAttribute("n", ""), text);
        EXPECT_EQ(root->GetLocalName() + " " + root->GetNamespaceURI(), "\xC3\xA9 urn:\xC3\xBC");
        // Input in another encoding reaches the tree as UTF-8 too.
        document.LoadXml("<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE9</a>");
        EXPECT_EQ(document.GetDocumentElement()->GetText(), "\xC3\xA9");
    }
    ScopedLocale locale("C");
    CXmlDocument document;
    document.LoadXml(("<a n='Zo\xC3\xAB'>" + text + "!<\xC3\xA9/></a>").c_str());
    const CXmlElement* a = document.GetDocumentElement();
    EXPECT_EQ(a->GetText(), "caf? ? ?!");
    EXPECT_EQ(a->GetAttribute("n", ""), "Zo?");
    EXPECT_EQ(a->GetFirstElement()->GetLocalName(), "?");

    ScopedAsciiOnly asciiOnly;
    document.LoadXml("<a n='\xC3\xAB'>\xE2\x82\xAC</a>");
    EXPECT_EQ(document.GetDocumentElement()->GetText(), "\xE2\x82\xAC");
    EXPECT_EQ(document.GetDocumentElement()->GetAttribute("n", ""), "\xC3\xAB");
}

TEST(ExpatReaderText, KeepsLongMultibyteTextAcrossInputPieces) {
    ScopedLocale locale("C.UTF-8");
    ASSERT_TRUE(locale.Active());
    // Far longer than the pieces the parser is fed; the odd prefix puts the
    // three-byte characters across every piece boundary.
    std::string text = "xy";
    for (int i = 0; i < 100000; ++i) text += "\xE2\x82\xAC";
    CXmlDocument document;
    document.LoadXml(("<a>" + text + "</a>").c_str());
    EXPECT_EQ(document.GetDocumentElement()->GetText(), text);
    ScopedLocale c("C");
    document.LoadXml(("<a>" + text + "</a>").c_str());
    EXPECT_EQ(document.GetDocumentElement()->GetText(), "xy" + std::string(100000, '?'));
}

TEST(ExpatReaderErrors, ReportsTheParserMessageAndLine) {
    // The texts are the parser's own; the frame and the line number are ours.
    const char* const cases[][2] = {
        {"<a></b>", "mismatched tag at line 1"}, {"<a>\n<b>\n</a>", "mismatched tag at line 3"},
        {"<a>", "no element found at line 1"}, {"<a/><b/>", "junk after document element at line 1"},
        {"<a>\xFF</a>", "not well-formed (invalid token) at line 1"},
        {"<a>\xC3</a>", "not well-formed (invalid token) at line 1"},
        {"<a>\xED\xA0\x80</a>", "not well-formed (invalid token) at line 1"},
        {"<a>&#0;</a>", "reference to invalid character number at line 1"}, {"<p:a/>", "unbound prefix at line 1"},
        {"<a xmlns:p='u' xmlns:q='u' p:x='1' q:x='2'/>", "duplicate attribute at line 1"},
    };
    CXmlDocument document;
    for (const auto& c : cases) EXPECT_KV_THROW(document.LoadXml(c[0]), CKvException, c[1]);
    std::string withNul("<a>x\0y</a>", 10);
    EXPECT_KV_THROW(document.LoadXmlStream(reinterpret_cast<unsigned char*>(withNul.data()), 10), CKvException,
                    "not well-formed (invalid token) at line 1");
}

TEST(ExpatReaderHostile, RefusesAnEntityExpansionBomb) {
    std::string bomb = "<?xml version='1.0'?>\n<!DOCTYPE lolz [\n <!ENTITY lol 'lol'>\n";
    for (int i = 1; i <= 9; ++i) {
        bomb += " <!ENTITY lol" + std::to_string(i) + " '";
        for (int j = 0; j < 10; ++j) bomb += "&lol" + (i > 1 ? std::to_string(i - 1) : std::string()) + ";";
        bomb += "'>\n";
    }
    bomb += "]>\n<lolz>&lol9;</lolz>\n";
    CXmlDocument document;
    EXPECT_KV_THROW(document.LoadXml(bomb.c_str()), CKvException,
                    "limit on input amplification factor (from DTD and entities) breached at line 14");
}

TEST(ExpatReaderHostile, LoadsThousandsOfAttributesAndHugeValues) {
    std::string text = "<a";
    for (int i = 0; i < 5000; ++i) text += " k" + std::to_string(i) + "='" + std::to_string(i * 7) + "'";
    text += "/>";
    CXmlDocument document;
    document.LoadXml(text.c_str());
    const auto& attributes = document.GetDocumentElement()->GetAttributes();
    ASSERT_EQ(attributes.size(), 5000u);
    for (int i = 0; i < 5000; i += 499) {
        EXPECT_EQ(attributes[i]->GetLocalName(), "k" + std::to_string(i));
        EXPECT_EQ(attributes[i]->GetValue(), std::to_string(i * 7));
    }
    EXPECT_EQ(document.GetDocumentElement()->GetAttribute("k4999", ""), "34993");

    constexpr size_t kSize = 10 * 1000 * 1000;
    text = "<a v='" + std::string(kSize, 'v') + "'>" + std::string(kSize, 't') + "</a>";
    document.LoadXml(text.c_str());
    const CXmlElement* a = document.GetDocumentElement();
    EXPECT_EQ(a->GetText(), std::string(kSize, 't'));
    EXPECT_EQ(a->GetAttribute("v", ""), std::string(kSize, 'v'));
}
