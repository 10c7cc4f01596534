// CheckRestriction.cpp - CXmlObjectHelper::CheckRestriction: the facet check of a variant by item type.
#include <string>

#include "kvxml/core/XmlObjectHelper.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/validation/PrimitiveRestrictions.h"
#include "kvxml/values/BigInteger.h"
#include "kvxml/values/BinaryData.h"
#include "kvxml/values/DateTime.h"
#include "kvxml/values/DateTimeSpan.h"
#include "kvxml/values/Decimal.h"
#include "kvxml/values/Variant.h"

namespace KvXmlLib10 {

namespace {

// No length, pattern or range facet: no check of any type can fail.
bool NoFacetSet(const CPrimitiveRestrictions& r) {
    return r.minLength == -1 && r.maxLength == -1 && r.length == -1 && r.pattern.empty() && r.minInclusive.empty() &&
           r.maxInclusive.empty() && r.minExclusive.empty() && r.maxExclusive.empty();
}

}  // namespace

void CXmlObjectHelper::CheckRestriction(const char* name, const KvVariant& value, ItemType type,
                                        const CPrimitiveRestrictions& r) {
    // Most values carry no facet: then the copy the getter would make is
    // all a check would cost. Only the type is still checked.
    if (type >= hexBinary && type <= integer && type != char_ && NoFacetSet(r)) return;
    switch (type) {
        case hexBinary: return CheckRestrictionForhexBinary(name, value.GetHexBinary(), r);
        case base64Binary: return CheckRestrictionForbase64Binary(name, value.GetBase64Binary(), r);
        case i1: return CheckRestrictionFori1(name, value.GetI1(), r);
        case i2: return CheckRestrictionFori2(name, value.GetI2(), r);
        case i4: return CheckRestrictionFori4(name, value.GetI4(), r);
        case i8: return CheckRestrictionFori8(name, value.GetI8(), r);
        case ui1: return CheckRestrictionForui1(name, value.GetUI1(), r);
        case ui2: return CheckRestrictionForui2(name, value.GetUI2(), r);
        case ui4: return CheckRestrictionForui4(name, value.GetUI4(), r);
        case ui8: return CheckRestrictionForui8(name, value.GetUI8(), r);
        case r4: return CheckRestrictionForr4(name, value.GetR4(), r);
        case r8: return CheckRestrictionForr8(name, value.GetR8(), r);
        case duration: return CheckRestrictionForduration(name, value.GetDuration(), r);
        case yearMonth: return CheckRestrictionForyearMonth(name, value.GetYearMonth(), r);
        case monthDay: return CheckRestrictionFormonthDay(name, value.GetMonthDay(), r);
        case year: return CheckRestrictionForyear(name, value.GetYear(), r);
        case month: return CheckRestrictionFormonth(name, value.GetMonth(), r);
        case day: return CheckRestrictionForday(name, value.GetDay(), r);
        case date: return CheckRestrictionFordate(name, value.GetDate(), r);
        case datetime: return CheckRestrictionFordatetime(name, value.GetDateTime(), r);
        case time: return CheckRestrictionFortime(name, value.GetTime(), r);
        case string: return CheckRestrictionForstring(name, value.GetString(), r);
        case boolean: return CheckRestrictionForboolean(name, value.GetBoolean(), r);
        case decimal: return CheckRestrictionFordecimal(name, value.GetDecimal(), r);
        case integer: return CheckRestrictionForinteger(name, value.GetInteger(), r);
        case Invalid:
        case char_: break;
    }
    // char has no facet check of its own. The message names the value's
    // type, not the requested one; for an empty variant GetType throws first.
    throw CKvInvalidValueException("unknown type [" + value.GetType() + "]");
}

}  // namespace KvXmlLib10
