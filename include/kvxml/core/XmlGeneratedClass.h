// XmlGeneratedClass.h - base of schema-generated classes and the metadata-driven engine that writes and reads them.
//
// A generated class holds no serialisation code: it publishes a class
// descriptor, null-terminated arrays of element and attribute descriptors and
// one property accessor, and this engine walks them in order.
#pragma once

#include <cstdint>

#include "kvxml/core/XmlObjectBase.h"
#include "kvxml/foundation/CriticalSection.h"
#include "kvxml/foundation/Export.h"
#include "kvxml/metadata/ElementInfo.h"

namespace KvXmlLib10Data {
class CAttributeInfo;
class CParentElementInfo;
}  // namespace KvXmlLib10Data

namespace KvXmlLib10 {

class CXmlElement;
class CXmlWriter;
class KvVariant;

/// Implemented by generated classes whose element may be nil; the engine
/// finds it by a dynamic cast.
class KVXML_API INillable {
public:
    virtual bool IsNil() const = 0;
    virtual void SetNil(bool nil) = 0;

protected:
    ~INillable() = default;
};

class KVXML_API CXmlGeneratedClass : public CXmlObjectBase {
public:
    CXmlGeneratedClass();
    CXmlGeneratedClass(const CXmlGeneratedClass& other);
    CXmlGeneratedClass& operator=(const CXmlGeneratedClass& other);
    ~CXmlGeneratedClass() override;

    using CXmlObjectBase::GetBase;
    /// A generated object stands for itself.
    CXmlObjectBase* GetBase() override;

    /// Held by generated classes while they build their metadata on first use.
    static CKVCriticalSection m_csInit;
    /// Deletes the class descriptor, each element descriptor then its array,
    /// each attribute descriptor then its array (arrays from new[]); sets all
    /// three to null. Null arguments are skipped.
    static void CleanMetaData(KvXmlLib10Data::CParentElementInfo*& classInfo,
                              KvXmlLib10Data::CElementInfo**& elementInfo,
                              KvXmlLib10Data::CAttributeInfo**& attributeInfo);

protected:
    /// Reads (read true) or stores (read false) the property with this id.
    virtual void AccessProperty(int32_t propertyId, bool read, KvVariant& value) = 0;

public:
    /// The class descriptor (static, shared by every instance).
    virtual KvXmlLib10Data::CParentElementInfo* GetClassInfo() const = 0;
    /// Element descriptors in schema order, null-terminated.
    virtual KvXmlLib10Data::CElementInfo** GetClassElementInfo() const = 0;
    /// Attribute descriptors, null-terminated.
    virtual KvXmlLib10Data::CAttributeInfo** GetClassAttributeInfo() const = 0;

protected:
    /// Called at the start of every read; returns every property to its
    /// freshly constructed state.
    virtual void ResetProperties() = 0;

public:
    /// AccessProperty with read true.
    void ReadProperty(int32_t propertyId, KvVariant& value) const;
    /// Entries before the null terminator of GetClassElementInfo().
    int32_t GetClassElementInfoCount() const;
    /// Whether any element descriptor accepts the element.
    bool IsElementInList(const CXmlSerializationContext& context, CXmlElement* element) const;
    /// Whether an empty choice is acceptable because one of its members may
    /// be absent.
    bool DoesElementContainOptionalElements() const;

protected:
    /// Writes this object. Any failure comes out as CKvValidationException
    /// "Failed to convert the element [name] to XML" wrapping the cause.
    void ToXml_Int(CXmlWriter* writer, bool isRoot, const char* targetNamespace,
                   const CXmlSerializationContext& context, bool flag) const override;
    /// xsi:type when needed, then the attribute descriptors, then the
    /// attributes of pseudo-element children. Failures come out as
    /// CKvException "Failed to convert attributes to XML" wrapping the cause.
    void AttributesToXml_Int(CXmlWriter* writer, const CXmlSerializationContext& context) const override;
    /// Fills this object from element, consuming children from firstChild;
    /// returns the first child not consumed. Any failure comes out as
    /// CKvValidationException "Failed to process the element [name]".
    CXmlElement* FromXml_Int(CXmlElement* element, CXmlElement* firstChild, const CXmlSerializationContext& context,
                             bool flag) override;

    void ProcessAttributesToXml(const CXmlSerializationContext& context, KvXmlLib10Data::CElementInfo** elements,
                                KvXmlLib10Data::CAttributeInfo** attributes, CXmlWriter* writer) const;
    void ProcessElementSeqToXml(const CXmlSerializationContext& context, KvXmlLib10Data::CElementInfo** elements,
                                CXmlWriter* writer) const;
    void ProcessElementAllToXml(const CXmlSerializationContext& context, KvXmlLib10Data::CElementInfo** elements,
                                CXmlWriter* writer) const;
    /// Writes the first member that has a value; none is an error unless an
    /// empty choice is acceptable (allowEmpty, an optional member, or the
    /// context's IgnoreMissingChoice).
    void ProcessElementChoiceToXml(const CXmlSerializationContext& context, KvXmlLib10Data::CElementInfo** elements,
                                   CXmlWriter* writer, bool allowEmpty) const;
    void ProcessAttributesFromXml(const CXmlSerializationContext& context, CXmlElement* element, bool nillable);
    /// Each returns the new current child; returning `current` unchanged is
    /// a soft failure (nothing consumed).
    CXmlElement* ProcessElementSeqFromXml(const CXmlSerializationContext& context, CXmlElement* element,
                                          CXmlElement* current, KvXmlLib10Data::XmlElementType elementType);
    CXmlElement* ProcessElementAllFromXml(const CXmlSerializationContext& context, CXmlElement* element,
                                          CXmlElement* current, KvXmlLib10Data::XmlElementType elementType);
    CXmlElement* ProcessElementChoiceFromXml(const CXmlSerializationContext& context, CXmlElement* element,
                                             CXmlElement* current, KvXmlLib10Data::XmlElementType elementType,
                                             bool flag);

private:
    friend class KvXmlLib10Data::CElementInfo;
    friend class KvXmlLib10Data::CAttributeInfo;

    void WriteContent(CXmlWriter* writer, const KvXmlLib10Data::CParentElementInfo& info, bool isRoot,
                      const char* targetNamespace, const CXmlSerializationContext& context, bool flag) const;
    CXmlElement* ReadContent(CXmlElement* element, CXmlElement* firstChild, const CXmlSerializationContext& context,
                             bool flag);
};

}  // namespace KvXmlLib10
