// ItemType.h - the library-wide code of a primitive XML Schema value type.
//
// The numbering is part of the interface with generated code: descriptor
// tables pass these numbers, so they never change.
#pragma once

#include <cstdint>

namespace KvXmlLib10 {

enum ItemType : int32_t {
    Invalid = 0,
    hexBinary = 1,
    base64Binary = 2,
    i1 = 3,
    i2 = 4,
    i4 = 5,
    i8 = 6,
    ui1 = 7,
    ui2 = 8,
    ui4 = 9,
    ui8 = 10,
    r4 = 11,
    r8 = 12,
    duration = 13,
    yearMonth = 14,
    monthDay = 15,
    year = 16,
    month = 17,
    day = 18,
    date = 19,
    datetime = 20,
    time = 21,
    char_ = 22,  // "char" is a C++ keyword
    string = 23,
    boolean = 24,
    decimal = 25,
    integer = 26
};

}  // namespace KvXmlLib10
