// VariantTest.cpp - KvVariant states, copies, shared objects and text conversion.
#include "support/KvTestSupport.h"

using namespace KvXmlLib10;
using KvXmlTest::RefCount;
using Rule = CWhitespaceUtils::WhitespaceRule;

namespace {

// Counts its deletions so reference counts can be observed.
template <typename Base>
class Counted : public Base {
public:
    explicit Counted(int* deletions) : m_deletions(deletions) {}
    ~Counted() override { ++*m_deletions; }
    CXmlObjectBase* GetBase() override { return this; }
    std::string GetTargetNamespace() const override { return ""; }
    std::string GetNamespace() const override { return ""; }

protected:
    void ToXml_Int(CXmlWriter*, bool, const char*, const CXmlSerializationContext&, bool) const override {}
    CXmlElement* FromXml_Int(CXmlElement*, CXmlElement* c, const CXmlSerializationContext&, bool) override {
        return c;
    }

private:
    int* m_deletions;
};

}  // namespace

TEST(VariantState, EmptyNilAndInvalid) {
    KvVariant v;
    EXPECT_FALSE(v.IsValid());
    EXPECT_FALSE(v.IsNil());
    EXPECT_KV_THROW(v.GetType(), CKvException, "Invalid Type 0");
    EXPECT_KV_THROW(v.ToString(nullptr), CKvException, "Invalid Type 0 to convert to string");
    // A nil without a type is valid but still has no type name.
    v.SetNil();
    EXPECT_TRUE(v.IsValid());
    EXPECT_KV_THROW(v.GetType(), CKvException, "Invalid Type 0");
    // Nil keeps the type and drops the value.
    v.SetI4(5);
    v.SetNil();
    EXPECT_TRUE(v.IsNil());
    EXPECT_TRUE(v.IsValid());
    EXPECT_EQ(v.GetType(), "i4");
    EXPECT_EQ(v.GetI4(), 0);
    v.SetDate(CConversions::dateFromString("2004-02-29", Rule::None));
    EXPECT_FALSE(v.IsNil());
    v.SetNil();
    EXPECT_EQ(v.GetType(), "date");
    EXPECT_EQ(v.GetDate().GetType(), CDateTime::dt_none);
    EXPECT_EQ(v.ToString(nullptr), "");  // a nil object type has no text
    v.SetInvalid();
    EXPECT_FALSE(v.IsValid());
    EXPECT_FALSE(v.IsNil());
}

TEST(VariantCopy, CopiesAreDeepAndSelfAssignmentEmpties) {
    KvVariant a, b;
    a.SetString("first");
    KvVariant copy(a);
    a.SetString("second");
    EXPECT_EQ(copy.GetString(), "first");
    a.SetDecimal(CDecimal("-0.25"));
    b = a;
    a.SetInvalid();
    EXPECT_EQ(b.GetType(), "decimal");
    EXPECT_EQ(b.ToString(nullptr), "-0.25");
    a.SetDateTime(CDateTime());
    a.SetNil();
    b = a;
    EXPECT_TRUE(b.IsNil());
    EXPECT_EQ(b.GetType(), "datetime");
    b = KvVariant();
    EXPECT_FALSE(b.IsValid());

    KvVariant& alias = a;
    a.SetString("lost");
    a = alias;
    EXPECT_FALSE(a.IsValid());
    a.SetBoolean(true);
    a.SetNil();
    a = alias;
    EXPECT_FALSE(a.IsValid());
    EXPECT_FALSE(a.IsNil());
}

TEST(VariantObjects, EachVariantHoldsOneReference) {
    int deletions = 0;
    auto* object = new Counted<CXmlObjectBase>(&deletions);
    {
        KvVariant a, c;
        a.SetXmlObject(object);
        KvVariant b(a);
        c = b;
        EXPECT_EQ(RefCount(object), 3);
        CXmlObjectBase* got = c.GetXmlObject();
        EXPECT_EQ(got, object);
        EXPECT_EQ(RefCount(object), 4);
        got->Release();
        // Setting the object already held must not drop it on the way.
        a.SetXmlObject(object);
        EXPECT_EQ(RefCount(object), 3);
        EXPECT_KV_THROW(a.GetType(), CKvException, "Invalid Type 27");
        EXPECT_KV_THROW(a.ToString(nullptr), CKvException, "Invalid Type 27 to convert to string");
        EXPECT_EQ(a.GetXmlCollection(), nullptr);
        b.SetNil();
        EXPECT_EQ(RefCount(object), 2);
    }
    EXPECT_EQ(deletions, 1);

    KvVariant none;
    none.SetXmlObject(nullptr);
    EXPECT_TRUE(none.IsValid());
    EXPECT_EQ(KvVariant(none).GetXmlObject(), nullptr);
    none.SetXmlCollection(static_cast<CXmlCollectionBase*>(nullptr));
    EXPECT_EQ(none.GetXmlCollection(), nullptr);
}

TEST(VariantObjects, CollectionsShareThroughTheObjectCount) {
    using CountedCollection = Counted<CXmlCollection>;
    int deletions = 0;
    auto* collection = new CountedCollection(&deletions);
    {
        KvVariant a;
        a.SetXmlCollection(collection);
        KvVariant b = a;
        EXPECT_EQ(RefCount(collection), 2);
        CountedCollection* got = b.GetXmlCollection<CountedCollection>();
        EXPECT_EQ(got, collection);
        got->Release();
        CXmlObjectBase* asObject = b.GetXmlObject();
        EXPECT_EQ(asObject, collection);
        asObject->Release();
        EXPECT_KV_THROW(a.GetType(), CKvException, "Invalid Type 28");
        EXPECT_KV_THROW(a.FromString("1", static_cast<ItemType>(0), Rule::None), CKvException,
                        "Invalid Type 28 to convert to string");
        a.SetI4(1);
        EXPECT_EQ(RefCount(collection), 1);
    }
    EXPECT_EQ(deletions, 1);
}

TEST(VariantGetters, ReadingAnotherTypeIsHarmless) {
    KvVariant v;
    v.SetI1(5);
    EXPECT_TRUE(v.GetBoolean());
    EXPECT_EQ(v.GetI4(), 5);  // the unused bytes are zero
    EXPECT_EQ(v.GetString(), "");
    EXPECT_EQ(v.GetDate().GetType(), CDateTime::dt_none);
    EXPECT_EQ(v.GetDecimal(), CDecimal());
    EXPECT_EQ(v.GetInteger(), CBigInteger());
    EXPECT_EQ(v.GetHexBinary().GetLength(), 0u);
    EXPECT_EQ(v.GetXmlObject(), nullptr);
    v.SetDate(CConversions::dateFromString("2004-02-29", Rule::None));
    EXPECT_EQ(v.GetDateTime().ToString(), "2004-02-29");  // same storage class
    EXPECT_EQ(v.GetDuration().ToString(), "P");
    v.SetHexBinary(CBinaryData("xy"));
    EXPECT_EQ(v.GetBase64Binary().GetLength(), 2u);
}

TEST(VariantText, FromStringStoresTheTypeAndToStringPrintsIt) {
    const struct { ItemType type; const char *name, *text, *printed; } cases[] = {
        {hexBinary, "hexBinary", " 0aff ", "0AFF"},  {base64Binary, "base64Binary", "Zm9v", "Zm9v"},
        {i1, "i1", " -12 ", "-12"},                   {i2, "i2", "300", "300"},
        {i4, "i4", "  12 ", "12"},                    {i8, "i8", "-9223372036854775808", "-9223372036854775808"},
        {ui1, "ui1", "255", "255"},                   {ui2, "ui2", "+65535", "65535"},
        {ui4, "ui4", "-1", "4294967295"},             {ui8, "ui8", "18446744073709551615", "18446744073709551615"},
        {r4, "r4", "0.1", "0.1"},                     {r8, "r8", "1e400", "INF"},
        {duration, "duration", "\tP1Y2M\n", "P1Y2M"}, {yearMonth, "yearMonth", "2001-05", "2001-05"},
        {monthDay, "monthDay", "--02-29", "--02-29"}, {year, "year", "2004Z", "2004"},
        {month, "month", "--03", "--03"},             {day, "day", "---07", "---07"},
        {date, "date", "2004-02-29", "2004-02-29"},   {KvXmlLib10::time, "time", "12:30:00.5Z", "12:30:00.5Z"},
        {datetime, "datetime", "2004-02-29T12:30:45.5Z", "2004-02-29T12:30:45.5Z"},
        {char_, "char", " x ", "x"},                  {KvXmlLib10::string, "string", " a \n b ", "a b"},
        {boolean, "boolean", "TRUE", "true"},         {decimal, "decimal", "1.50", "1.5"},
        {integer, "integer", "-000123", "-123"},
    };
    // One variant for all: each parse replaces (and frees) the value before.
    KvVariant v;
    for (const auto& c : cases) {
        v.FromString(c.text, c.type, Rule::Collapse);
        EXPECT_FALSE(v.IsNil()) << c.text;
        EXPECT_EQ(v.GetType(), c.name);
        EXPECT_EQ(v.ToString(nullptr), c.printed) << c.text;
        EXPECT_EQ(KvVariant(v).ToString(nullptr), c.printed) << c.text;
        // The format reaches r4, r8 and decimal only (a decimal reads it as a digit count: 0).
        const char* formatted = c.type == r4 ? "0.100" : c.type == decimal ? "2." : c.printed;
        EXPECT_EQ(v.ToString("%.3f"), formatted) << c.text;
    }
    v.SetR8(1.0 / 3.0);
    EXPECT_EQ(v.ToString(nullptr), "0.3333333333333333");
    EXPECT_EQ(v.ToString(""), "0.3333333333333333");
    EXPECT_EQ(v.ToString("%.2f"), "0.33");
    v.SetDecimal(CDecimal("1.005"));
    EXPECT_EQ(v.ToString("2"), "1.01");
}

TEST(VariantText, BadTypeCodesAndFailedParsesLeaveTheValue) {
    KvVariant v;
    v.SetR8(1.0);
    // A bad code is reported with the variant's own type.
    for (int bad : {0, 27})
        EXPECT_KV_THROW(v.FromString("x", static_cast<ItemType>(bad), Rule::None), CKvException,
                        "Invalid Type 12 to convert to string");
    EXPECT_EQ(v.GetR8(), 1.0);
    EXPECT_KV_THROW(KvVariant().FromString("1", static_cast<ItemType>(-3), Rule::None), CKvException,
                    "Invalid Type 0 to convert to string");
    v.SetI4(7);
    EXPECT_KV_THROW(v.FromString("abc", i4, Rule::None), CKvInvalidValueException,
                    "The value [abc] can not be converted to a i4");
    EXPECT_EQ(v.GetType(), "i4");
    EXPECT_EQ(v.GetI4(), 7);
    v.SetString("kept");
    EXPECT_KV_THROW(v.FromString("2003-02-29", date, Rule::None), CKvInvalidValueException,
                    "Invalid Day [29] (1 <= day <= days in month");
    EXPECT_EQ(v.GetString(), "kept");
}
