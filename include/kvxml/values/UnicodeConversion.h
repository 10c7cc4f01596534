// UnicodeConversion.h - strict conversions between UTF-8, UTF-16, UTF-32 and wchar_t.
//
// Every converter takes a source range and a target range and returns the
// number of target units written; a null target counts the units needed
// instead. Any error returns 0: ill-formed or truncated input, surrogate
// code points, values above 0x10FFFF, a target too small. There is no
// lenient mode: text converts whole or not at all.
#pragma once

#include <cstdint>

#include "kvxml/foundation/Export.h"

namespace KvXmlLib10 {

KVXML_API int ConvertUTF8toUTF16(const unsigned char* sourceStart, const unsigned char* sourceEnd,
                                 unsigned short* targetStart, unsigned short* targetEnd);
KVXML_API int ConvertUTF8toUTF32(const unsigned char* sourceStart, const unsigned char* sourceEnd,
                                 unsigned int* targetStart, unsigned int* targetEnd);
KVXML_API int ConvertUTF16toUTF8(const unsigned short* sourceStart, const unsigned short* sourceEnd,
                                 unsigned char* targetStart, unsigned char* targetEnd);
KVXML_API int ConvertUTF16toUTF32(const unsigned short* sourceStart, const unsigned short* sourceEnd,
                                  unsigned int* targetStart, unsigned int* targetEnd);
KVXML_API int ConvertUTF32toUTF8(const unsigned int* sourceStart, const unsigned int* sourceEnd,
                                 unsigned char* targetStart, unsigned char* targetEnd);
KVXML_API int ConvertUTF32toUTF16(const unsigned int* sourceStart, const unsigned int* sourceEnd,
                                  unsigned short* targetStart, unsigned short* targetEnd);

/// One UTF-8 sequence of exactly `length` bytes (1 to 4) is well formed.
KVXML_API bool IsLegalUTF8(const unsigned char* source, int length);
/// The sequence starting at `source` fits before `sourceEnd` and is well formed.
KVXML_API bool IsLegalUTF8Sequence(const unsigned char* source, const unsigned char* sourceEnd);

// Wrappers; lengths and results are in units of their own type. The UTF-16
// side is a byte array in machine byte order, so its sizes and
// UnicodeToUTF16's result count bytes; an odd UTF-16 byte count gives 0.
KVXML_API int UnicodeToUTF8(const wchar_t* source, uint32_t length, unsigned char* target,
                            uint32_t targetSize);
KVXML_API int UTF8ToUnicode(const unsigned char* source, uint32_t length, wchar_t* target,
                            uint32_t targetSize);
KVXML_API int UnicodeToUTF16(const wchar_t* source, uint32_t length, unsigned char* target,
                             uint32_t targetSize);
KVXML_API int UTF16ToUnicode(const unsigned char* source, uint32_t length, wchar_t* target,
                             uint32_t targetSize);

/// True when any of the `length` wide characters is above 127.
KVXML_API bool DoesUnicodeStrContainAnyUTF8CharsLargerThanOneByte(const wchar_t* text, int length);
/// True when any of the `length` bytes is 128 or more.
KVXML_API bool DoesUTF8StrContainAnyCharsLargerThanOneByte(const unsigned char* text, uint32_t length);

}  // namespace KvXmlLib10
