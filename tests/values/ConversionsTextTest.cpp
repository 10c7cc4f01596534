// ConversionsTextTest.cpp - CConversions for boolean, char, string, binary and date types after the whitespace rule.
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

TEST(ConversionsString, StringsAreTheTextAfterTheRuleAndBinaryFormsAreReadAfterIt) {
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
    EXPECT_EQ(C::hexBinaryToString(C::hexBinaryFromString("\n 0aFf10 \t", Rule::Collapse)), "0AFF10");
    EXPECT_EQ(C::hexBinaryFromString("", Rule::None).GetLength(), 0u);
    EXPECT_KV_THROW(C::hexBinaryFromString(" 0A 0 B ", Rule::Collapse), CKvException, "Invalid char in hex string [ ]");
    EXPECT_EQ(C::base64BinaryToString(C::base64BinaryFromString("\tZm9v\n", Rule::Collapse)), "Zm9v");
    EXPECT_EQ(C::base64BinaryFromString("!!!!", Rule::None).GetLength(), 0u);
}

// KvVariant's text table runs every converter on a plain form; here the zones and the rule.
TEST(ConversionsDateTypes, EachTypeRoundTripsItsOwnFormAfterTheRuleAndRefusesTheOthers) {
    EXPECT_EQ(C::dateToString(C::dateFromString("-0044-03-15Z", Rule::None)), "-0044-03-15Z");
    EXPECT_EQ(C::dateToString(C::dateFromString("\r\n 2001-05-17+09:30\t", Rule::Collapse)), "2001-05-17+09:30");
    EXPECT_EQ(C::datetimeToString(C::datetimeFromString("1999-12-31T23:59:59.999-05:00", Rule::None)),
              "1999-12-31T23:59:59.999-05:00");
    EXPECT_EQ(C::timeToString(C::timeFromString("00:00:00-01:30", Rule::None)), "00:00:00-01:30");
    EXPECT_EQ(C::yearMonthToString(C::yearMonthFromString("2001-12+14:00", Rule::None)), "2001-12+14:00");
    EXPECT_EQ(C::monthDayToString(C::monthDayFromString("--12-31Z", Rule::None)), "--12-31Z");
    EXPECT_EQ(C::durationToString(C::durationFromString("\n -P1D \t", Rule::Collapse)), "-P1D");
    EXPECT_KV_THROW(C::durationFromString("  ", Rule::Collapse), CKvInvalidValueException,
                    "Invalid XSD Duration (Empty String)");
    EXPECT_KV_THROW(C::dateFromString("2001-05", Rule::None), CKvInvalidValueException, "Invalid XSD date [2001-05]");
    EXPECT_KV_THROW(C::yearMonthFromString("2001-05-01Z", Rule::None), CKvInvalidValueException,
                    "Invalid XSD gYearMonth [2001-05-01Z]");
    EXPECT_KV_THROW(C::monthDayFromString("--05", Rule::None), CKvInvalidValueException,
                    "Invalid XSD gMonthDay [--05]");
    EXPECT_KV_THROW(C::yearFromString("2004-05", Rule::None), CKvInvalidValueException, "Invalid XSD gYear [2004-05]");
    EXPECT_KV_THROW(C::monthFromString("---03", Rule::None), CKvInvalidValueException, "Invalid XSD gMonth [---03]");
    EXPECT_KV_THROW(C::dayFromString("--03-04", Rule::None), CKvInvalidValueException, "Invalid XSD gDay [--03-04]");
    EXPECT_KV_THROW(C::dateFromString("2003-02-29", Rule::None), CKvInvalidValueException,
                    "Invalid Day [29] (1 <= day <= days in month");
    EXPECT_KV_THROW(C::datetimeFromString("2004-02-29", Rule::None), CKvInvalidValueException,
                    "Invalid XSD DateTime [2004-02-29] expected CCYY-MM-DDThh:mm:ss[.ff]");
    EXPECT_KV_THROW(C::yearFromString("0000", Rule::None), CKvInvalidValueException,
                    "Invalid Year [0] (-9999 <= year <= 9999 && year != 0)");
}

TEST(ConversionsDateParts, ParseTheirGFormsDropTheZoneAndPrintWithPrefixes) {
    EXPECT_EQ(C::yearFromString("2004", Rule::None), 2004);
    EXPECT_EQ(C::yearFromString(" 2004Z ", Rule::Collapse), 2004);
    EXPECT_EQ(C::yearFromString("-0044", Rule::None), 65492);  // the 16 bits of -44
    EXPECT_EQ(C::monthFromString("--03--", Rule::None), 3);
    EXPECT_EQ(C::monthFromString("--12-05:00", Rule::None), 12);
    EXPECT_EQ(C::dayFromString("---31+01:00", Rule::None), 31);
    EXPECT_EQ(C::monthToString(3), "--03");
    EXPECT_EQ(C::dayToString(7), "---07");
    EXPECT_EQ(C::dayToString(0), "---00");
    EXPECT_EQ(C::dayToString(255), "---255");
    EXPECT_EQ(C::yearToString(5), "5");
    EXPECT_EQ(C::yearToString(65535), "65535");
    for (uint8_t m = 1; m <= 12; ++m) EXPECT_EQ(C::monthFromString(C::monthToString(m), Rule::None), m);
    for (uint8_t d = 1; d <= 31; ++d) EXPECT_EQ(C::dayFromString(C::dayToString(d), Rule::None), d);
}
