// GeneratedSupport.h - the small helpers a code generator emits once per schema and its classes share.
#pragma once

#include <atomic>
#include <cstdint>
#include <cstring>

#include "kvxml/core/SmartPtr.h"
#include "kvxml/core/XmlGeneratedClass.h"
#include "kvxml/foundation/FormatString.h"
#include "kvxml/foundation/KvException.h"
#include "kvxml/metadata/ParentElementInfo.h"
#include "kvxml/values/Variant.h"

namespace kvbind {

/// The descriptors of one class: built on first use under the process
/// lock, shared by all instances and threads, freed at unload.
struct ClassTables {
    std::atomic<KvXmlLib10Data::CParentElementInfo*> classInfo{nullptr};
    KvXmlLib10Data::CElementInfo** elements = nullptr;
    KvXmlLib10Data::CAttributeInfo** attributes = nullptr;

    /// Runs build once; build fills elements and attributes and returns the class descriptor.
    template <typename Build>
    const ClassTables& Get(Build build) {
        if (classInfo.load(std::memory_order_acquire)) return *this;
        KvXmlLib10::CXmlGeneratedClass::m_csInit.Enter();
        try {
            if (!classInfo.load(std::memory_order_relaxed)) classInfo.store(build(*this), std::memory_order_release);
        } catch (...) {
            KvXmlLib10::CXmlGeneratedClass::m_csInit.Leave();
            throw;
        }
        KvXmlLib10::CXmlGeneratedClass::m_csInit.Leave();
        return *this;
    }
    ~ClassTables() {
        KvXmlLib10Data::CParentElementInfo* info = classInfo.exchange(nullptr);
        KvXmlLib10::CXmlGeneratedClass::CleanMetaData(info, elements, attributes);
    }
};

/// Takes over the reference that KvVariant::GetXmlObject hands out.
template <typename T>
KvXmlLib10::CSmartPtr<T> AdoptObject(const KvXmlLib10::KvVariant& value) {
    KvXmlLib10::CXmlObjectBase* object = value.GetXmlObject();
    KvXmlLib10::CSmartPtr<T> held(static_cast<T*>(object));
    if (object) object->Release();
    return held;
}

/// Enumeration text by value (null when unknown) and value by text.
inline const char* EnumText(const char* const* names, int32_t count, int32_t value) {
    return value >= 0 && value < count ? names[value] : nullptr;
}

/// An unknown text throws CKvInvalidValueException "The value [%s] is not a member of the enumeration <Name>".
inline int32_t EnumValue(const char* const* names, int32_t count, const char* text, const char* enumName) {
    for (int32_t i = 0; i < count; ++i)
        if (std::strcmp(names[i], text) == 0) return i;
    throw KvXmlLib10::CKvInvalidValueException(
        KvXmlLib10::FormatString("The value [%s] is not a member of the enumeration %s", text, enumName));
}

[[noreturn]] inline void UnknownProperty(int32_t propertyId) {
    throw KvXmlLib10::CKvInvalidParamException(KvXmlLib10::FormatString("Unknown property id %d", propertyId));
}

}  // namespace kvbind

/// The three metadata accessors of Class over the tables that Tables() builds.
#define KVBIND_CLASS_TABLES(Class, Tables)                                                    \
    KvXmlLib10Data::CParentElementInfo* Class::GetClassInfo() const {                        \
        return Tables().classInfo.load(std::memory_order_relaxed);                           \
    }                                                                                        \
    KvXmlLib10Data::CElementInfo** Class::GetClassElementInfo() const { return Tables().elements; } \
    KvXmlLib10Data::CAttributeInfo** Class::GetClassAttributeInfo() const { return Tables().attributes; }
