// MetadataSupport.h - pieces shared by the descriptor families: nil tests, counted-object holding.
#pragma once

#include <string>

#include "kvxml/metadata/ElementInfo.h"
#include "kvxml/values/ItemType.h"

namespace KvXmlLib10 {

class CXmlObjectBase;

namespace detail {

/// Exact ASCII case-insensitive equality (the nil values "true", "1", ...).
bool EqualsNoCase(const std::string& text, const char* literal);

/// The ItemType of a valued (non-nil) variant holding a primitive; `fallback`
/// for anything else.
ItemType VariantItemType(const KvVariant& value, ItemType fallback);

/// The xsi:nil test of a child element read by a simple-value descriptor:
/// true when nil; throws for nil on a non-nillable descriptor and for
/// values other than true/false/1/0 (any case).
bool IsElementNil(const KvXmlLib10Data::CElementInfo& info, const CXmlElement& element);

/// Owns the one reference that KvVariant::GetXmlObject hands out.
class HeldObject {
public:
    explicit HeldObject(CXmlObjectBase* object) : m_object(object) {}
    ~HeldObject();
    HeldObject(const HeldObject&) = delete;
    HeldObject& operator=(const HeldObject&) = delete;
    CXmlObjectBase* get() const { return m_object; }

private:
    CXmlObjectBase* m_object;
};

}  // namespace detail
}  // namespace KvXmlLib10
