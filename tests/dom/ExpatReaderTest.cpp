// ExpatReaderTest.cpp - XML text reading: namespaces, CDATA, text, local code page and parse errors.
#include <gtest/gtest.h>

#include <string>

#include "dom/DomTestSupport.h"
#include "kvxml/core/SerializationContext.h"
#include "kvxml/dom/XmlDocument.h"
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;
using namespace KvXmlTest;

TEST(ExpatReaderNamespaces, AppliesTheDefaultNamespaceAndRecordsIt) {
    CXmlDocument document;
    document.LoadXml("<a xmlns='u'><b/></a>");
    const CXmlElement* a = document.GetDocumentElement();
    EXPECT_EQ(a->GetNamespaceURI(), "u");
    EXPECT_EQ(a->GetLocalName(), "a");
    EXPECT_EQ(a->GetFirstElement()->GetNamespaceURI(), "u");
    EXPECT_EQ(a->GetFirstElement()->GetLocalName(), "b");
    EXPECT_EQ(document.LookupNamespaceFromAlias(""), "u");
    EXPECT_TRUE(a->GetAttributes().empty()) << "declarations are not attributes";
}

TEST(ExpatReaderNamespaces, SplitsPrefixedNamesAndRecordsPrefixes) {
    CXmlDocument document;
    document.LoadXml(
        "<p:a xmlns:p='urn:p' xmlns:xsi='http://www.w3.org/2001/XMLSchema-instance' p:x='1' y='2'>"
        "<c xsi:nil='true' xsi:type='p:t'/><p:d xmlns:p='urn:p2'/><e xmlns=''/></p:a>");
    const CXmlElement* a = document.GetDocumentElement();
    EXPECT_EQ(a->GetNamespaceURI(), "urn:p");
    EXPECT_EQ(a->GetLocalName(), "a");
    EXPECT_EQ(a->GetAttribute("x", "urn:p"), "1");
    EXPECT_EQ(a->GetAttribute("y", ""), "2");

    const CXmlElement* c = a->GetFirstElement();
    EXPECT_EQ(c->GetNamespaceURI(), "");
    ASSERT_EQ(c->GetAttributes().size(), 2u);
    EXPECT_TRUE(c->GetAttributes()[0]->IsNilAttribute());
    EXPECT_TRUE(c->GetAttributes()[1]->IsNamespaceAttribute());
    EXPECT_EQ(c->GetAttributes()[1]->GetValue(), "p:t");

    const CXmlElement* d = c->GetNextSiblingElement();
    EXPECT_EQ(d->GetNamespaceURI(), "urn:p2");
    EXPECT_EQ(d->GetNextSiblingElement()->GetNamespaceURI(), "");
    // One document-wide map: the last declaration of a prefix wins, and an
    // undeclared default namespace is recorded as "".
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
    const auto& attributes = a->GetAttributes();
    ASSERT_EQ(attributes.size(), 3u);
    EXPECT_EQ(attributes[0]->GetLocalName(), "xmlns:p");
    EXPECT_EQ(attributes[0]->GetValue(), "u");
    EXPECT_EQ(attributes[0]->GetNamespaceURI(), "");
    EXPECT_EQ(attributes[1]->GetLocalName(), "xmlns");
    EXPECT_EQ(attributes[2]->GetLocalName(), "p:k");
    // Unbound prefixes are no error without namespace processing.
    EXPECT_EQ(a->GetFirstElement()->GetLocalName(), "q:b");
    EXPECT_EQ(document.LookupNamespaceFromAlias("p"), "");
}

TEST(ExpatReaderText, KeepsOrStripsCDataDelimitersByContext) {
    CXmlDocument stripping;
    stripping.LoadXml("<a><![CDATA[x<y]]></a>");
    EXPECT_EQ(stripping.GetDocumentElement()->GetText(), "x<y");

    CXmlSerializationContext keep;
    keep.SetStripCDATA(false);
    CXmlDocument keeping(keep);
    keeping.LoadXml("<a>1<![CDATA[x<y&z]]>2<![CDATA[]]></a>");
    EXPECT_EQ(keeping.GetDocumentElement()->GetText(), "1<![CDATA[x<y&z]]>2<![CDATA[]]>");
}

TEST(ExpatReaderText, JoinsTextAroundReferencesAndDropsMarkup) {
    CXmlDocument document;
    document.LoadXml(
        "<?xml version='1.0'?><!DOCTYPE a [<!ENTITY e 'ent'>]><!--c--><?pi x?>"
        "<a>a&amp;b&lt;&#65;&#x42;&e;<!-- gone --><?pi y?>c</a><!--after-->");
    EXPECT_EQ(document.GetDocumentElement()->GetText(), "a&b<ABentc");
    EXPECT_EQ(document.GetDocumentElement()->GetFirstElement(), nullptr);
}

TEST(ExpatReaderText, TurnsNonAsciiIntoQuestionMarksInTheCLocale) {
    ScopedLocale locale("C");
    CXmlDocument document;
    document.LoadXml("<a n='Zo\xC3\xAB'>caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80!<\xC3\xA9/></a>");
    const CXmlElement* a = document.GetDocumentElement();
    EXPECT_EQ(a->GetText(), "caf? ? ?!");
    EXPECT_EQ(a->GetAttribute("n", ""), "Zo?");
    EXPECT_EQ(a->GetFirstElement()->GetLocalName(), "?");
}

TEST(ExpatReaderText, PassesUtf8ThroughInAUtf8Locale) {
    ScopedLocale locale("C.UTF-8");
    ASSERT_TRUE(locale.Active());
    const std::string text = "caf\xC3\xA9 \xE2\x82\xAC \xF0\x9F\x98\x80";
    CXmlDocument document;
    document.LoadXml(("<\xC3\xA9 xmlns='urn:\xC3\xBC' n='" + text + "'>" + text + "</\xC3\xA9>").c_str());
    const CXmlElement* root = document.GetDocumentElement();
    EXPECT_EQ(root->GetText(), text);
    EXPECT_EQ(root->GetAttribute("n", ""), text);
    EXPECT_EQ(root->GetLocalName(), "\xC3\xA9");
    EXPECT_EQ(root->GetNamespaceURI(), "urn:\xC3\xBC");

    // Input in another encoding reaches the tree as UTF-8 too.
    CXmlDocument latin;
    latin.LoadXml("<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE9</a>");
    EXPECT_EQ(latin.GetDocumentElement()->GetText(), "\xC3\xA9");
}

TEST(ExpatReaderText, PassesBytesThroughWithAsciiOnly) {
    ScopedLocale locale("C");
    ScopedAsciiOnly asciiOnly;
    CXmlDocument document;
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
    struct Case {
        const char* xml;
        const char* message;
    };
    const Case cases[] = {
        {"<a></b>", "mismatched tag at line 1"},
        {"<a>\n<b>\n</a>", "mismatched tag at line 3"},
        {"<a>", "no element found at line 1"},
        {"<a", "unclosed token at line 1"},
        {"<a/><b/>", "junk after document element at line 1"},
        {"not xml", "syntax error at line 1"},
        {" ", "no element found at line 1"},
        {"<a>\xFF</a>", "not well-formed (invalid token) at line 1"},
        {"<a>\xC3</a>", "not well-formed (invalid token) at line 1"},
        {"<a>\xED\xA0\x80</a>", "not well-formed (invalid token) at line 1"},
        {"<a>&unknown;</a>", "undefined entity at line 1"},
        {"<a>&#0;</a>", "reference to invalid character number at line 1"},
        {"<p:a/>", "unbound prefix at line 1"},
        {"<a x='1' x='2'/>", "duplicate attribute at line 1"},
        {"<a xmlns:p='u' xmlns:q='u' p:x='1' q:x='2'/>", "duplicate attribute at line 1"},
        {"<a\n\n>\n\n</c>", "mismatched tag at line 5"},
    };
    for (const Case& c : cases) {
        CXmlDocument document;
        EXPECT_KV_THROW(document.LoadXml(c.xml), CKvException, c.message);
    }
    std::string withNul = "<a>x\0y</a>";
    withNul.assign("<a>x\0y</a>", 10);
    CXmlDocument document;
    EXPECT_KV_THROW(document.LoadXmlStream(reinterpret_cast<unsigned char*>(withNul.data()), 10), CKvException,
                    "not well-formed (invalid token) at line 1");
}

TEST(ExpatReaderHostile, RefusesAnEntityExpansionBomb) {
    std::string bomb = "<?xml version='1.0'?>\n<!DOCTYPE lolz [\n <!ENTITY lol 'lol'>\n";
    bomb += " <!ENTITY lol1 '&lol;&lol;&lol;&lol;&lol;&lol;&lol;&lol;&lol;&lol;'>\n";
    for (int i = 2; i <= 9; ++i) {
        bomb += " <!ENTITY lol" + std::to_string(i) + " '";
        for (int j = 0; j < 10; ++j) bomb += "&lol" + std::to_string(i - 1) + ";";
        bomb += "'>\n";
    }
    bomb += "]>\n<lolz>&lol9;</lolz>\n";
    CXmlDocument document;
    EXPECT_KV_THROW(document.LoadXml(bomb.c_str()), CKvException,
                    "limit on input amplification factor (from DTD and entities) breached at line 14");
}

TEST(ExpatReaderHostile, LoadsThousandsOfAttributesInOrder) {
    constexpr int kCount = 5000;
    std::string text = "<a";
    for (int i = 0; i < kCount; ++i) text += " k" + std::to_string(i) + "='" + std::to_string(i * 7) + "'";
    text += "/>";
    CXmlDocument document;
    document.LoadXml(text.c_str());
    const auto& attributes = document.GetDocumentElement()->GetAttributes();
    ASSERT_EQ(attributes.size(), static_cast<size_t>(kCount));
    for (int i = 0; i < kCount; i += 499) {
        EXPECT_EQ(attributes[i]->GetLocalName(), "k" + std::to_string(i));
        EXPECT_EQ(attributes[i]->GetValue(), std::to_string(i * 7));
    }
    EXPECT_EQ(document.GetDocumentElement()->GetAttribute("k4999", ""), "34993");
}

TEST(ExpatReaderHostile, LoadsHugeTextAndAttributeValues) {
    constexpr size_t kSize = 10 * 1000 * 1000;
    std::string text = "<a v='";
    text.append(kSize, 'v');
    text += "'>";
    text.append(kSize, 't');
    text += "</a>";
    CXmlDocument document;
    document.LoadXml(text.c_str());
    const CXmlElement* a = document.GetDocumentElement();
    EXPECT_EQ(a->GetText().size(), kSize);
    EXPECT_EQ(a->GetText().find_first_not_of('t'), std::string::npos);
    EXPECT_EQ(a->GetAttribute("v", "").size(), kSize);
}
