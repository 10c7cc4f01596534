// NillableOf.cpp - a small per-thread table of dynamic types known not to be nillable.
#include "core/detail/NillableOf.h"

#include <cstddef>
#include <cstdint>
#include <typeinfo>

#include "kvxml/core/XmlGeneratedClass.h"

namespace KvXmlLib10::detail {

const INillable* NillableOf(const CXmlGeneratedClass& object) {
    struct Entry {
        const std::type_info* type;
        bool nillable;
    };
    // Direct mapped: a clash only costs the cast again. Types are told apart
    // by their type_info's address; one type seen under two addresses (one
    // per shared object) merely takes two entries.
    constexpr std::size_t kSlots = 32;
    thread_local Entry cache[kSlots] = {};
    const std::type_info* type = &typeid(object);
    Entry& entry = cache[(reinterpret_cast<std::uintptr_t>(type) >> 4) % kSlots];
    if (entry.type != type) {
        entry.type = type;
        entry.nillable = dynamic_cast<const INillable*>(&object) != nullptr;
    }
    return entry.nillable ? dynamic_cast<const INillable*>(&object) : nullptr;
}

}  // namespace KvXmlLib10::detail
