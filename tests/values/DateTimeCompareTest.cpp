// DateTimeCompareTest.cpp - CDateTime ordering: the field walk, zones and the relational operators.
#include <string>
#include <utility>
#include <vector>

#include "kvxml/values/DateTime.h"
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;

namespace {

// A date, time or dateTime text, parsed by its form.
CDateTime V(const std::string& text) {
    CDateTime value;
    if (text.find('T') != std::string::npos)
        value.ParseXSDDateTime(text.c_str());
    else if (text.size() > 2 && text[2] == ':')
        value.ParseXSDTime(text.c_str());
    else
        value.ParseXSDDate(text.c_str());
    return value;
}

}  // namespace

// Codes: 0 equal, 1 less, 2 greater, 3 incomparable.
TEST(DateTimeCompare, WalksTheFieldsInOrderIgnoringZones) {
    const struct {
        const char *a, *b;
        int code;
    } cases[] = {
        {"2004-01-01T12:00:00", "2004-01-01T12:00:00", 0}, {"2003-12-31T12:00:00", "2004-01-01T12:00:00", 1},
        {"2004-01-02T00:00:00", "2004-01-01T23:59:59", 2}, {"2004-01-01T12:00:00.000000001", "2004-01-01T12:00:00", 2},
        {"2004-01-01T12:00:59.999999999", "2004-01-01T12:01:00", 1}, {"10:00:00", "09:59:59.5", 2},
        {"---05", "---06", 1}, {"--02-29", "--02-28", 2},
        {"2004-01-01T12:00:00Z", "2004-01-01T12:00:00+05:00", 0},
        // The first value's month is read on both sides: the day decides.
        {"2004-01-15", "2004-03-15", 0}, {"2004-01-15", "2004-03-10", 2}, {"--01", "--12", 0},
        // Missing fields and mixed-sign years are incomparable.
        {"2004", "--05", 3}, {"---05", "2004-01", 3}, {"-0044-03-15", "2004-03-15", 3},
        {"-0044-03-15", "-0043-03-15", 1}, {"10:00:00", "2004-01-01", 3},
    };
    for (const auto& c : cases) EXPECT_EQ(Compare(V(c.a), V(c.b)), c.code) << c.a << " vs " << c.b;
}

TEST(DateTimeCompare, CompareToNormalisesZonesAndAnswersOneZonedSideForEveryOffset) {
    const struct {
        const char *a, *b;
        int code;
    } cases[] = {
        {"2004-01-01T12:00:00+05:00", "2004-01-01T07:00:00Z", 0},
        {"2004-01-01T00:30:00+01:00", "2003-12-31T23:00:00-00:00", 2},
        {"2004-01-01T00:30:00+01:00", "2003-12-31T23:45:00+00:00", 1},
        {"2004-01-01T12:00:00-05:00", "2004-01-01T12:00:00Z", 2}, {"23:30:00-01:00", "00:30:00Z", 0},
        {"2004-01-15", "2004-03-15", 0},
        {"2004-01-01T12:00:00Z", "2004-01-01T12:00:00", 3}, {"2004-01-01T12:00:00Z", "2004-01-02T12:00:00", 1},
        {"2004-01-01T12:00:00Z", "2003-12-31T20:00:00", 2},
        {"2004-01-01T12:00:00Z", "2004-01-01T00:00:00", 3},  // within 14 hours
        {"2004-01-02T12:00:00", "2004-01-01T12:00:00Z", 2}, {"2004-01-01T12:00:00", "2004-01-01T12:00:00Z", 3},
        {"2004Z", "2005", 1},
    };
    for (const auto& c : cases) EXPECT_EQ(V(c.a).CompareTo(V(c.b)), c.code) << c.a << " vs " << c.b;
}

TEST(DateTimeCompare, RelationalOperatorsFollowTheCodes) {
    const auto Relations = [](const CDateTime& a, const CDateTime& b) {
        return std::vector<bool>{a == b, a != b, a < b, a <= b, a > b, a >= b};
    };
    const CDateTime early = V("2004-01-01T00:00:00"), late = V("2004-06-01T00:00:01");
    EXPECT_EQ(Relations(early, late), (std::vector<bool>{false, true, true, true, false, false}));
    EXPECT_EQ(Relations(late, early), (std::vector<bool>{false, true, false, false, true, true}));
    EXPECT_EQ(Relations(early, early), (std::vector<bool>{true, false, false, true, false, true}));
    EXPECT_EQ(Relations(V("2004-01-01T12:00:00+05:00"), V("2004-01-01T07:00:00Z")),
              (std::vector<bool>{true, false, false, true, false, true}));
    // Incomparable: everything false but !=.
    EXPECT_EQ(Relations(V("2004-01-01T12:00:00Z"), V("2004-01-01T12:00:00")),
              (std::vector<bool>{false, true, false, false, false, false}));
}

TEST(DateTimeNormalize, MovesDateTimesAcrossDayMonthAndYearEnds) {
    const std::pair<const char*, const char*> cases[] = {
        {"2004-12-31T23:00:00-05:00", "2005-01-01T04:00:00Z"},
        {"2004-03-01T01:00:00+02:00", "2004-02-29T23:00:00Z"},
        {"2003-03-01T01:00:00+02:00", "2003-02-28T23:00:00Z"},
        {"2004-01-31T20:15:00.25-04:30", "2004-02-01T00:45:00.25Z"},
        {"0001-01-01T01:00:00+02:00", "-0001-12-31T23:00:00Z"},
        {"-0001-12-31T23:00:00-01:00", "0001-01-01T00:00:00Z"},
        {"2004-06-15T12:00:00Z", "2004-06-15T12:00:00Z"}, {"2004-06-15T12:00:00", "2004-06-15T12:00:00"},
        {"9999-12-31T23:00:00-05:00", "10000-01-01T04:00:00Z"}, {"23:30:00-01:00", "00:30:00Z"},
        {"00:10:00+00:20", "23:50:00Z"}, {"2004-01-01+05:00", "2004-01-01Z"},
    };
    for (const auto& [text, normalized] : cases) EXPECT_EQ(V(text).GetNormalized().ToString(), normalized) << text;
}
