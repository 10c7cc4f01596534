// VariantText.cpp - KvVariant to and from text through the CConversions form of its type.
#include <memory>
#include <type_traits>

#include "detail/VariantStorage.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/values/Conversions.h"
#include "kvxml/values/Variant.h"

namespace KvXmlLib10 {

namespace {

// Prints the owned object behind p, or "" when there is none (a nil copy).
template <typename T, typename Printer>
std::string PrintOwned(const void* p, Printer print) {
    return p ? print(*static_cast<const T*>(p)) : std::string();
}

}  // namespace

std::string KvVariant::ToString(const char* format) const {
    const void* p = Pointer();
    switch (m_type) {
        case hexBinary:
            return PrintOwned<CBinaryData>(p, CConversions::hexBinaryToString);
        case base64Binary:
            return PrintOwned<CBinaryData>(p, CConversions::base64BinaryToString);
        case i1:
            return CConversions::i1ToString(GetI1());
        case i2:
            return CConversions::i2ToString(GetI2());
        case i4:
            return CConversions::i4ToString(GetI4());
        case i8:
            return CConversions::i8ToString(GetI8());
        case ui1:
            return CConversions::ui1ToString(GetUI1());
        case ui2:
            return CConversions::ui2ToString(GetUI2());
        case ui4:
            return CConversions::ui4ToString(GetUI4());
        case ui8:
            return CConversions::ui8ToString(GetUI8());
        case r4:
            return format ? CConversions::r4ToString(GetR4(), format) : CConversions::r4ToString(GetR4());
        case r8:
            return format ? CConversions::r8ToString(GetR8(), format) : CConversions::r8ToString(GetR8());
        case duration:
            return PrintOwned<CDateTimeSpan>(p, CConversions::durationToString);
        case yearMonth:
            return PrintOwned<CDateTime>(p, CConversions::yearMonthToString);
        case monthDay:
            return PrintOwned<CDateTime>(p, CConversions::monthDayToString);
        case year:
            return CConversions::yearToString(GetYear());
        case month:
            return CConversions::monthToString(GetMonth());
        case day:
            return CConversions::dayToString(GetDay());
        case date:
            return PrintOwned<CDateTime>(p, CConversions::dateToString);
        case datetime:
            return PrintOwned<CDateTime>(p, CConversions::datetimeToString);
        case time:
            return PrintOwned<CDateTime>(p, CConversions::timeToString);
        case char_:
            return CConversions::charToString(GetChar());
        case string:
            return PrintOwned<std::string>(p, CConversions::stringToString);
        case boolean:
            return CConversions::booleanToString(GetBoolean());
        case decimal:
            return PrintOwned<CDecimal>(p, [format](const CDecimal& value) {
                return format ? CConversions::decimalToString(value, format) : CConversions::decimalToString(value);
            });
        case integer:
            return PrintOwned<CBigInteger>(p, CConversions::integerToString);
        default:
            throw CKvException(FormatString("Invalid Type %d to convert to string", m_type));
    }
}

void KvVariant::FromString(const std::string& text, ItemType type, CWhitespaceUtils::WhitespaceRule rule) {
    // Each conversion throws before the setter runs, so a failure leaves
    // the variant as it was. Values held by pointer are converted straight
    // into their heap object rather than copied there by the setter.
    auto own = [this](int32_t code, auto* object) {
        std::unique_ptr<std::remove_pointer_t<decltype(object)>> held(object);
        Clear();
        SetOwned(code, held.release());
    };
    switch (static_cast<int32_t>(type)) {
        case hexBinary:
            return own(hexBinary, new CBinaryData(CConversions::hexBinaryFromString(text, rule)));
        case base64Binary:
            return own(base64Binary, new CBinaryData(CConversions::base64BinaryFromString(text, rule)));
        case i1:
            return SetI1(CConversions::i1FromString(text, rule));
        case i2:
            return SetI2(CConversions::i2FromString(text, rule));
        case i4:
            return SetI4(CConversions::i4FromString(text, rule));
        case i8:
            return SetI8(CConversions::i8FromString(text, rule));
        case ui1:
            return SetUI1(CConversions::ui1FromString(text, rule));
        case ui2:
            return SetUI2(CConversions::ui2FromString(text, rule));
        case ui4:
            return SetUI4(CConversions::ui4FromString(text, rule));
        case ui8:
            return SetUI8(CConversions::ui8FromString(text, rule));
        case r4:
            return SetR4(CConversions::r4FromString(text, rule));
        case r8:
            return SetR8(CConversions::r8FromString(text, rule));
        case duration:
            return own(duration, new CDateTimeSpan(CConversions::durationFromString(text, rule)));
        case yearMonth:
            return own(yearMonth, new CDateTime(CConversions::yearMonthFromString(text, rule)));
        case monthDay:
            return own(monthDay, new CDateTime(CConversions::monthDayFromString(text, rule)));
        case year:
            return SetYear(CConversions::yearFromString(text, rule));
        case month:
            return SetMonth(CConversions::monthFromString(text, rule));
        case day:
            return SetDay(CConversions::dayFromString(text, rule));
        case date:
            return own(date, new CDateTime(CConversions::dateFromString(text, rule)));
        case datetime:
            return own(datetime, new CDateTime(CConversions::datetimeFromString(text, rule)));
        case time:
            return own(time, new CDateTime(CConversions::timeFromString(text, rule)));
        case char_:
            return SetChar(CConversions::charFromString(text, rule));
        case string:
            return SetString(CConversions::stringFromString(text, rule));
        case boolean:
            return SetBoolean(CConversions::booleanFromString(text, rule));
        case decimal:
            return own(decimal, new CDecimal(CConversions::decimalFromString(text, rule)));
        case integer:
            return own(integer, new CBigInteger(CConversions::integerFromString(text, rule)));
        default:
            // The variant's own code, not the requested one, is reported.
            throw CKvException(FormatString("Invalid Type %d to convert to string", m_type));
    }
}

}  // namespace KvXmlLib10
