// ElementInfo.h - descriptor of one child element of a generated class, its three group bases and the enumerations that
// steer them.
//
// Generated code builds one descriptor per child element once, on the heap,
// and hands the engine null-terminated arrays of them in document order. A
// descriptor never holds a value: it knows a property id and asks the
// object for the value through a KvVariant.
#pragma once

#include <cstdint>
#include <string>

#include "kvxml/foundation/Export.h"
#include "kvxml/validation/PrimitiveRestrictions.h"
#include "kvxml/values/ItemType.h"
#include "kvxml/values/WhitespaceUtils.h"

namespace KvXmlLib10 {
class CXmlElement;
class CXmlGeneratedClass;
class CXmlObjectBase;
class CXmlSerializationContext;
class CXmlWriter;
class KvVariant;
}  // namespace KvXmlLib10

namespace KvXmlLib10Data {

/// The model group of a class's content.
enum XmlElementGroupType : int32_t { GroupType_Sequence = 0, GroupType_Choice = 1, GroupType_All = 2 };

/// Whether content has an element of its own (0) or is a pseudo element: a
/// model group inlined into its parent's element (1).
enum XmlElementType : int32_t { ElementType_Element = 0, ElementType_PseudoElement = 1 };

/// Generated text of an enumeration value; may return null for an unknown value.
typedef const char* (*EnumToStringFunc)(int32_t value);
/// Generated value of an enumeration text; what it does with an unknown text
/// is the generator's decision.
typedef int32_t (*StringToEnumFunc)(const char* text);

/// Base of every element descriptor. Immutable after construction and shared
/// by all objects of a class and all threads.
class KVXML_API CElementInfo {
public:
    /// Not nillable, no primitive info; the strings are copied.
    CElementInfo(const char* elementName, const char* namespaceUri, int32_t propertyId);
    CElementInfo(const char* elementName, const char* namespaceUri, int32_t propertyId, bool nillable);
    /// The primitive form: item type, number format (null is ""), whitespace
    /// rule and facets; the only form that allows CheckRestriction.
    CElementInfo(const char* elementName, const char* namespaceUri, int32_t propertyId, bool nillable,
                 KvXmlLib10::ItemType itemType, const char* numberFormat,
                 KvXmlLib10::CWhitespaceUtils::WhitespaceRule whitespaceRule,
                 const KvXmlLib10::CPrimitiveRestrictions& restrictions);
    virtual ~CElementInfo();
    CElementInfo(const CElementInfo&) = delete;
    CElementInfo& operator=(const CElementInfo&) = delete;

    /// Writes the property as zero or more child elements; false when the
    /// property was unset and nothing was written.
    virtual bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context,
                              const KvXmlLib10::CXmlGeneratedClass* object, KvXmlLib10::CXmlWriter* writer) const = 0;
    /// Reads from the child under *current, stores into object and moves
    /// *current past what it consumed. True when the group may go on
    /// (consumed, or legitimately absent), false when this member did not match.
    virtual bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context,
                                KvXmlLib10::CXmlGeneratedClass* object, KvXmlLib10::CXmlElement* parent,
                                KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                                XmlElementType elementType) = 0;
    /// Called by the all-group reader after every child was offered.
    /// Sequence and choice members throw: they check while reading.
    virtual bool Validate(const KvXmlLib10::CXmlSerializationContext& context,
                          const KvXmlLib10::CXmlGeneratedClass* object, bool found, bool checkMandatory) const = 0;
    /// Writes a pseudo-element child's attributes onto the parent's open
    /// element; nothing here.
    virtual void PseudoChildAttributeToXml(const KvXmlLib10::CXmlSerializationContext& context,
                                           const KvXmlLib10::CXmlGeneratedClass* object,
                                           KvXmlLib10::CXmlWriter* writer) const;

    /// The property through the object's accessor (read).
    void ReadProperty(const KvXmlLib10::CXmlGeneratedClass* object, KvXmlLib10::KvVariant& value) const;
    /// The object's accessor with this descriptor's property id; read false stores.
    void AccessProperty(KvXmlLib10::CXmlGeneratedClass* object, bool read, KvXmlLib10::KvVariant& value) const;
    /// Lets child fill itself from parent, starting at firstChild; returns
    /// the first child of parent it did not consume.
    KvXmlLib10::CXmlElement* FromXml_Int(KvXmlLib10::CXmlObjectBase* child, KvXmlLib10::CXmlElement* firstChild,
                                         KvXmlLib10::CXmlElement* parent,
                                         const KvXmlLib10::CXmlSerializationContext& context, bool flag) const;
    /// Lets child write its attributes onto the open element.
    void AttributesToXml_Int(const KvXmlLib10::CXmlObjectBase* child, KvXmlLib10::CXmlWriter* writer,
                             const KvXmlLib10::CXmlSerializationContext& context) const;

    /// Shared writer of the primitive kinds: facets are checked before the
    /// element starts, so a violation leaves nothing written.
    bool ElementToXmlPrim(const KvXmlLib10::CXmlSerializationContext& context,
                          const KvXmlLib10::CXmlGeneratedClass* object, KvXmlLib10::CXmlWriter* writer) const;
    /// Shared writer of the enumeration kinds (no facet check).
    bool ElementToXmlEnum(const KvXmlLib10::CXmlSerializationContext& context,
                          const KvXmlLib10::CXmlGeneratedClass* object, KvXmlLib10::CXmlWriter* writer,
                          EnumToStringFunc enumToString) const;
    /// Shared writer of the class kinds: the child writes itself.
    bool ElementToXmlCls(const KvXmlLib10::CXmlSerializationContext& context,
                         const KvXmlLib10::CXmlGeneratedClass* object, KvXmlLib10::CXmlWriter* writer, bool flag) const;
    /// Shared writer of the collection kinds: an empty (or absent) collection
    /// writes nothing and answers false; otherwise each item writes itself in
    /// the descriptor's namespace.
    bool ElementToXmlCol(const KvXmlLib10::CXmlSerializationContext& context,
                         const KvXmlLib10::CXmlGeneratedClass* object, KvXmlLib10::CXmlWriter* writer) const;

    /// Facet check of a value about to be written. Throws what the facet
    /// checker throws, or CKvException "Cannot CheckRestriction for type: ..."
    /// on a descriptor built without primitive info.
    void CheckRestriction(const KvXmlLib10::KvVariant& value) const;
    /// Same local name (exact bytes) and, unless the context ignores
    /// namespaces, the same namespace URI. Null never matches.
    bool IsThisElement(const KvXmlLib10::CXmlSerializationContext& context,
                       const KvXmlLib10::CXmlElement* element) const;
    /// Namespace given to a new wildcard element: restriction, the namespace
    /// the engine supplies, the wildcard's own namespace.
    static std::string GetAnyDefaultNamespace(const char* restriction, const char* first, const char* second);

    const std::string& GetElementName() const { return m_elementName; }
    const std::string& GetNamespaceURI() const { return m_namespaceUri; }
    int32_t GetPropertyId() const { return m_propertyId; }
    const KvXmlLib10::CPrimitiveRestrictions& GetRestrictions() const { return m_restrictions; }
    KvXmlLib10::ItemType GetItemType() const { return m_itemType; }
    const std::string& GetNumberFormat() const { return m_numberFormat; }
    KvXmlLib10::CWhitespaceUtils::WhitespaceRule GetWhitespaceRule() const { return m_whitespaceRule; }
    bool IsNillable() const { return m_nillable; }
    bool HasPrimitiveInfo() const { return m_hasPrimitiveInfo; }

private:
    std::string m_elementName;
    std::string m_namespaceUri;
    int32_t m_propertyId;
    KvXmlLib10::CPrimitiveRestrictions m_restrictions;
    KvXmlLib10::ItemType m_itemType;
    std::string m_numberFormat;
    KvXmlLib10::CWhitespaceUtils::WhitespaceRule m_whitespaceRule;
    bool m_nillable;
    bool m_hasPrimitiveInfo;
};

/// Member of an xs:all group: elements may come in any order; a missing
/// mandatory member is reported by Validate.
class KVXML_API CElementInfoAll : public CElementInfo {
public:
    // The three constructors of CElementInfo, forwarded unchanged.
    using CElementInfo::CElementInfo;
    ~CElementInfoAll() override;
};

/// Member of an xs:choice: optional by nature.
class KVXML_API CElementInfoChoice : public CElementInfo {
public:
    // The three constructors of CElementInfo, forwarded unchanged.
    using CElementInfo::CElementInfo;
    ~CElementInfoChoice() override;

    /// Throws CKvException "Not implemented, should never be called".
    bool Validate(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                  bool found, bool checkMandatory) const override;
};

/// Member of an xs:sequence.
class KVXML_API CElementInfoSeq : public CElementInfo {
public:
    // The three constructors of CElementInfo, forwarded unchanged.
    using CElementInfo::CElementInfo;
    ~CElementInfoSeq() override;

    /// Throws CKvException "Not implemented, should never be called".
    bool Validate(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                  bool found, bool checkMandatory) const override;
};

/// Abstract intermediate base of the single-valued all-group members.
class KVXML_API CElementInfoAllNonCol : public CElementInfoAll {
public:
    using CElementInfoAll::CElementInfoAll;
    ~CElementInfoAllNonCol() override;
};

/// Abstract intermediate base of the single-valued sequence members.
class KVXML_API CElementInfoSeqNonCol : public CElementInfoSeq {
public:
    using CElementInfoSeq::CElementInfoSeq;
    ~CElementInfoSeqNonCol() override;
};

}  // namespace KvXmlLib10Data
