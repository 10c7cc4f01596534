// ConversionsTextTest.cpp - CConversions for boolean, char, string and the binary types, and the whitespace step.
#include <gtest/gtest.h>

#include <string>

#include "kvxml/foundation/KvException.h"
#include "kvxml/values/Conversions.h"
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;
using C = CConversions;
using Rule = CWhitespaceUtils::WhitespaceRule;

TEST(ConversionsBoolean, AcceptsTheFourWordsInAnyCaseOnly) {
    for (const char* yes : {"true", "TRUE", "True", "tRuE", "1"}) EXPECT_TRUE(C::booleanFromString(yes, Rule::None));
    for (const char* no : {"false", "FALSE", "False", "0"}) EXPECT_FALSE(C::booleanFromString(no, Rule::None));
    EXPECT_TRUE(C::booleanFromString(" True\n", Rule::Collapse));
    // Compared as a C string: a NUL ends the text.
    EXPECT_TRUE(C::booleanFromString(std::string("true\0no", 7), Rule::None));
    EXPECT_EQ(C::booleanToString(true), "true");
    EXPECT_EQ(C::booleanToString(false), "false");
    for (const char* bad : {"yes", "", "2", "01", "truee", "tru", "t", " true", "+1"})
        EXPECT_KV_THROW(C::booleanFromString(bad, Rule::None), CKvInvalidValueException,
                        std::string("A Boolean Value read from an XML document was invalid [") + bad +
                            "]. Valid values are 'true', 'false', '1', or '0'");
    EXPECT_KV_THROW(C::booleanFromString("\ttrue \r\n", Rule::Replace), CKvInvalidValueException,
                    "A Boolean Value read from an XML document was invalid [ true  ]. Valid values are 'true', "
                    "'false', '1', or '0'");
}

TEST(ConversionsChar, NeedsExactlyOneByteAfterTheRule) {
    EXPECT_EQ(C::charFromString("a", Rule::None), 'a');
    EXPECT_EQ(C::charFromString(" a\n", Rule::Collapse), 'a');
    EXPECT_EQ(C::charFromString("\t", Rule::Replace), ' ');
    EXPECT_EQ(C::charFromString("\r", Rule::Preserve), '\n');
    EXPECT_EQ(C::charFromString(std::string(1, '\0'), Rule::None), '\0');
    EXPECT_KV_THROW(C::charFromString("ab", Rule::None), CKvInvalidValueException,
                    "The value [ab] can not be a char as it is either empty of greater than 1 char long");
    EXPECT_KV_THROW(C::charFromString(" ", Rule::Collapse), CKvInvalidValueException,
                    "The value [] can not be a char as it is either empty of greater than 1 char long");
    EXPECT_EQ(C::charToString('\0'), std::string(1, '\0'));
}

TEST(ConversionsString, IsTheTextAfterTheRule) {
    EXPECT_EQ(C::stringFromString(" \t keep \r\n", Rule::None), " \t keep \r\n");
    EXPECT_EQ(C::stringToString(std::string("a\0b", 3)), std::string("a\0b", 3));
    // The parsers skip the copy when the rule cannot change the text; the
    // result must still be exactly what ApplyRule gives.
    const char* texts[] = {"",    " ",   "a",  "a b",  " a",    "a ",    "a  b",     "a\tb",   "a\nb",  "a\rb",
                           "\r",  "\n",  "  ", "x y z", "a \t b", "ab ", " \r\n\t ", "a\r\n", "\r\na", "a\r\r"};
    for (const Rule rule : {Rule::None, Rule::Preserve, Rule::Replace, Rule::Collapse})
        for (const char* text : texts)
            EXPECT_EQ(C::stringFromString(text, rule), CWhitespaceUtils::ApplyRule(rule, text))
                << static_cast<int>(rule) << " [" << text << "]";
    // ... and an unknown rule throws even where no copy is needed.
    EXPECT_KV_THROW(C::stringFromString("plain", static_cast<Rule>(7)), CKvException, "Unknown WhitespaceRule");
    EXPECT_KV_THROW(C::i4FromString("12", static_cast<Rule>(-1)), CKvException, "Unknown WhitespaceRule");
}

TEST(ConversionsBinary, ApplyTheRuleBeforeTheHexAndBase64Forms) {
    EXPECT_EQ(C::hexBinaryToString(C::hexBinaryFromString("\n 0aFf10 \t", Rule::Collapse)), "0AFF10");
    EXPECT_EQ(C::hexBinaryFromString("", Rule::None).GetLength(), 0u);
    EXPECT_KV_THROW(C::hexBinaryFromString(" 0A 0 B ", Rule::Collapse), CKvException,
                    "Invalid char in hex string [ ]");
    EXPECT_EQ(C::base64BinaryToString(C::base64BinaryFromString("\tZm9v\n", Rule::Collapse)), "Zm9v");
    EXPECT_EQ(C::base64BinaryFromString("!!!!", Rule::None).GetLength(), 0u);
}
