// CheckRestrictionText.cpp - length and pattern facets of strings and binary data; booleans.
#include <cstdint>
#include <string>

#include "detail/RangeFacets.h"
#include "kvxml/core/XmlObjectHelper.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/output/Encoder.h"
#include "kvxml/validation/PrimitiveRestrictions.h"
#include "kvxml/values/BinaryData.h"
#include "foundation/detail/OrEmpty.h"
#include "output/detail/PlainAscii.h"
#include "validation/detail/TestPattern.h"

namespace KvXmlLib10 {

namespace {

// minLength, maxLength, then length; -1 leaves a facet unset. Compared in
// 64 bits so that any other negative facet value keeps its arithmetic
// meaning instead of wrapping to a huge unsigned length.
bool LengthFacetsHold(uint64_t byteCount, const CPrimitiveRestrictions& r) {
    const int64_t n = static_cast<int64_t>(byteCount);
    if (r.minLength != -1 && n < r.minLength) return false;
    if (r.maxLength != -1 && n > r.maxLength) return false;
    if (r.length != -1 && n != r.length) return false;
    return true;
}

[[noreturn]] void ThrowInvalid(const char* name, const std::string& shown) {
    throw CKvException(FormatString("Invalid Value for %s [%s]", detail::OrEmpty(name), shown.c_str()));
}

// Binary values are quoted as hexadecimal whatever their lexical type.
void CheckBinary(const char* name, const CBinaryData& value, const CPrimitiveRestrictions& r) {
    if (!LengthFacetsHold(value.GetLength(), r)) ThrowInvalid(name, value.GetAsHexString());
}

}  // namespace

void CXmlObjectHelper::CheckRestrictionForstring(const char* name, std::string value, const CPrimitiveRestrictions& r) {
    if (!LengthFacetsHold(value.size(), r)) ThrowInvalid(name, value);
    if (r.pattern.empty()) return;

    // The value goes to TestRegEx already in UTF-8, and TestRegEx converts
    // its argument from the local code page once more: only ASCII survives
    // both unchanged. Kept so that patterns match as they always have.
    std::string converted;
    const bool plain = detail::IsPlainAsciiText(value.data(), value.size());  // its own UTF-8
    if (!plain) {
        const CBinaryData utf8 = CEncoder::LocalCodePageToUtf8Binary(value);
        if (utf8.GetLength() != 0) converted.assign(reinterpret_cast<const char*>(utf8.GetData()), utf8.GetLength());
    }

    bool matches = false;
    try {
        matches = detail::TestPattern(r.pattern, plain ? value : converted);
    } catch (const CKvException& error) {
        throw CKvException(FormatString("%s\nInvalid Value for %s [%s]", error.GetFullMessage().c_str(),
                                        detail::OrEmpty(name), value.c_str()));
    }
    if (!matches) ThrowInvalid(name, value);
}

void CXmlObjectHelper::CheckRestrictionForboolean(const char*, bool, const CPrimitiveRestrictions&) {}

void CXmlObjectHelper::CheckRestrictionForbase64Binary(const char* name, const CBinaryData& value,
                                                       const CPrimitiveRestrictions& r) {
    CheckBinary(name, value, r);
}

void CXmlObjectHelper::CheckRestrictionForhexBinary(const char* name, const CBinaryData& value,
                                                    const CPrimitiveRestrictions& r) {
    CheckBinary(name, value, r);
}

}  // namespace KvXmlLib10
