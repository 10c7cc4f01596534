// ConversionsTextTest.cpp - CConversions for boolean, char, string and the binary types, and the whitespace step.
#include <gtest/gtest.h>

#include <string>

#include "kvxml/foundation/KvException.h"
#include "kvxml/values/Conversions.h"
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;
using Rule = CWhitespaceUtils::WhitespaceRule;

TEST(ConversionsBoolean, AcceptsTheFourWordsInAnyCase) {
    for (const char* yes : {"true", "TRUE", "True", "tRuE", "1"})
        EXPECT_TRUE(CConversions::booleanFromString(yes, Rule::None)) << yes;
    for (const char* no : {"false", "FALSE", "False", "0"})
        EXPECT_FALSE(CConversions::booleanFromString(no, Rule::None)) << no;
    EXPECT_TRUE(CConversions::booleanFromString(" True\n", Rule::Collapse));
    // Compared as a C string: a NUL ends the text.
    EXPECT_TRUE(CConversions::booleanFromString(std::string("true\0no", 7), Rule::None));
    EXPECT_EQ(CConversions::booleanToString(true), "true");
    EXPECT_EQ(CConversions::booleanToString(false), "false");
}

TEST(ConversionsBoolean, RejectsEverythingElse) {
    for (const char* bad : {"yes", "", "2", "01", "truee", "tru", "t", " true", "+1"})
        EXPECT_KV_THROW(CConversions::booleanFromString(bad, Rule::None), CKvInvalidValueException,
                        std::string("A Boolean Value read from an XML document was invalid [") + bad +
                            "]. Valid values are 'true', 'false', '1', or '0'");
    EXPECT_KV_THROW(CConversions::booleanFromString("\ttrue \r\n", Rule::Replace), CKvInvalidValueException,
                    "A Boolean Value read from an XML document was invalid [ true  ]. Valid values are 'true', "
                    "'false', '1', or '0'");
}

TEST(ConversionsChar, NeedsExactlyOneByteAfterTheRule) {
    EXPECT_EQ(CConversions::charFromString("a", Rule::None), 'a');
    EXPECT_EQ(CConversions::charFromString(" a\n", Rule::Collapse), 'a');
    EXPECT_EQ(CConversions::charFromString("\t", Rule::Replace), ' ');
    EXPECT_EQ(CConversions::charFromString("\r", Rule::Preserve), '\n');
    EXPECT_EQ(CConversions::charFromString(std::string(1, '\0'), Rule::None), '\0');
    EXPECT_KV_THROW(CConversions::charFromString("", Rule::None), CKvInvalidValueException,
                    "The value [] can not be a char as it is either empty of greater than 1 char long");
    EXPECT_KV_THROW(CConversions::charFromString("ab", Rule::None), CKvInvalidValueException,
                    "The value [ab] can not be a char as it is either empty of greater than 1 char long");
    EXPECT_KV_THROW(CConversions::charFromString(" ", Rule::Collapse), CKvInvalidValueException,
                    "The value [] can not be a char as it is either empty of greater than 1 char long");
    EXPECT_EQ(CConversions::charToString('x'), "x");
    EXPECT_EQ(CConversions::charToString('\0'), std::string(1, '\0'));
}

TEST(ConversionsString, IsTheTextAfterTheRule) {
    EXPECT_EQ(CConversions::stringFromString("\t a \r\n b  ", Rule::Collapse), "a b");
    EXPECT_EQ(CConversions::stringFromString("a\r\nb", Rule::Replace), "a b");
    EXPECT_EQ(CConversions::stringFromString("a\r\nb\rc", Rule::Preserve), "a\nb\nc");
    EXPECT_EQ(CConversions::stringFromString(" \t keep \r\n", Rule::None), " \t keep \r\n");
    EXPECT_EQ(CConversions::stringToString(std::string("a\0b", 3)), std::string("a\0b", 3));
}

// The parsers skip the copy when the rule cannot change the text; the result
// must still be exactly what ApplyRule gives.
TEST(ConversionsString, ShortcutAgreesWithApplyRule) {
    const char* texts[] = {"",     " ",        "a",     "a b",   " a",    "a ",        "a  b",  "a\tb", "a\nb",
                           "a\rb", "a\r\nb",   "\r",    "\n",    "  ",    "plain",     "x y z", "\t",   "a \t b",
                           "ab ",  " \r\n\t ", "a\r\n", "\r\na", "a\r\r", "trailing\n"};
    for (const Rule rule : {Rule::None, Rule::Preserve, Rule::Replace, Rule::Collapse})
        for (const char* text : texts)
            EXPECT_EQ(CConversions::stringFromString(text, rule), CWhitespaceUtils::ApplyRule(rule, text))
                << static_cast<int>(rule) << " [" << text << "]";
}

TEST(ConversionsString, UnknownRuleThrowsEvenForPlainText) {
    const auto rule = static_cast<Rule>(7);
    EXPECT_KV_THROW(CConversions::stringFromString("plain", rule), CKvException, "Unknown WhitespaceRule");
    EXPECT_KV_THROW(CConversions::i4FromString("12", rule), CKvException, "Unknown WhitespaceRule");
    EXPECT_KV_THROW(CConversions::booleanFromString("true", rule), CKvException, "Unknown WhitespaceRule");
    EXPECT_KV_THROW(CConversions::r8FromString("", static_cast<Rule>(-1)), CKvException, "Unknown WhitespaceRule");
}

TEST(ConversionsHexBinary, ParsesEitherCaseAndPrintsUpperCase) {
    const CBinaryData data = CConversions::hexBinaryFromString("0aFf10", Rule::None);
    ASSERT_EQ(data.GetLength(), 3u);
    EXPECT_EQ(data[0], 0x0a);
    EXPECT_EQ(data[1], 0xff);
    EXPECT_EQ(data[2], 0x10);
    EXPECT_EQ(CConversions::hexBinaryToString(data), "0AFF10");
    EXPECT_EQ(CConversions::hexBinaryFromString("\n 0A0B \t", Rule::Collapse).GetLength(), 2u);
    EXPECT_EQ(CConversions::hexBinaryFromString("", Rule::None).GetLength(), 0u);
    EXPECT_KV_THROW(CConversions::hexBinaryFromString("ABC", Rule::None), CKvException, "Invalid length in hex string");
    EXPECT_KV_THROW(CConversions::hexBinaryFromString(" 0A 0 B ", Rule::Collapse), CKvException,
                    "Invalid char in hex string [ ]");
}

TEST(ConversionsBase64Binary, DecodesRfc4648VectorsAndRoundTrips) {
    const struct {
        const char* text;
        const char* bytes;
    } vectors[] = {{"", ""},         {"Zg==", "f"},         {"Zm8=", "fo"},        {"Zm9v", "foo"},
                   {"Zm9vYg==", "foob"}, {"Zm9vYmE=", "fooba"}, {"Zm9vYmFy", "foobar"}};
    for (const auto& v : vectors) {
        const CBinaryData data = CConversions::base64BinaryFromString(v.text, Rule::None);
        EXPECT_EQ(std::string(reinterpret_cast<const char*>(data.GetData()), data.GetLength()), v.bytes) << v.text;
        EXPECT_EQ(CConversions::base64BinaryToString(data), v.text);
    }
    EXPECT_EQ(CConversions::base64BinaryFromString("\tZm9v\n", Rule::Collapse).GetLength(), 3u);
    EXPECT_EQ(CConversions::base64BinaryFromString("!!!!", Rule::None).GetLength(), 0u);
}
