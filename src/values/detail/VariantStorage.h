// VariantStorage.h - how KvVariant stores each type code: inline, an owned object of one class, or shared.
#pragma once

#include <cstdint>

namespace KvXmlLib10 {
namespace detail {

enum class Storage { None, Inline, Binary, Span, DateTime, String, Decimal, Integer, Shared };

constexpr Storage StorageOf(int32_t type) {
    switch (type) {
        case 1:
        case 2:
            return Storage::Binary;
        case 13:
            return Storage::Span;
        case 14:
        case 15:
        case 19:
        case 20:
        case 21:
            return Storage::DateTime;
        case 23:
            return Storage::String;
        case 25:
            return Storage::Decimal;
        case 26:
            return Storage::Integer;
        case 27:
        case 28:
            return Storage::Shared;
        default:
            return type >= 3 && type <= 24 ? Storage::Inline : Storage::None;
    }
}

constexpr bool HoldsPointer(int32_t type) {
    return StorageOf(type) != Storage::Inline && StorageOf(type) != Storage::None;
}

}  // namespace detail
}  // namespace KvXmlLib10
