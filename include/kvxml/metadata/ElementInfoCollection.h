// ElementInfoCollection.h - descriptors of repeated child elements (maxOccurs above one) held in a collection: the
// three collection bases and the primitive, enumeration, class and abstract-class Col members.
//
// The property holds a collection (CXmlCollection of objects, or one of the
// typed primitive collections) that knows its items' element name, bounds
// and how to read and write them; the descriptor only decides when the
// occurrence bounds are checked. Every Col member of a group shares its
// base's writing and reading.
#pragma once

#include <cstdint>

#include "kvxml/metadata/ElementInfo.h"

namespace KvXmlLib10Data {

/// Collection member of a sequence. Writing checks the count first
/// (ValidateCount, unless the context ignores invalid collection counts);
/// reading checks it after the collection read: ValidateCount (throws) in an
/// element of its own, IsValidCount (answers) inside a pseudo element.
class KVXML_API CElementInfoSeqCol : public CElementInfoSeq {
public:
    CElementInfoSeqCol(const char* elementName, const char* namespaceUri, int32_t propertyId);
    ~CElementInfoSeqCol() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;
};

/// Collection member of a choice: written without a count check; an empty
/// collection counts as not written. Reading that consumed nothing declines,
/// so the choice can try its next member; otherwise the count is checked as
/// in a sequence.
class KVXML_API CElementInfoChoiceCol : public CElementInfoChoice {
public:
    CElementInfoChoiceCol(const char* elementName, const char* namespaceUri, int32_t propertyId);
    ~CElementInfoChoiceCol() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;
};

/// Collection member of an all group: writing checks the count like a
/// sequence; reading makes no count check and counts as found once it
/// consumed something; Validate accepts.
class KVXML_API CElementInfoAllCol : public CElementInfoAll {
public:
    CElementInfoAllCol(const char* elementName, const char* namespaceUri, int32_t propertyId);
    ~CElementInfoAllCol() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;
    bool Validate(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                  bool found, bool checkMandatory) const override;
};

/// Primitive-value and enumeration collections (a typed collection, or a
/// collection of enumeration values, in the property).
class KVXML_API CElementInfoSeqPrimCol : public CElementInfoSeqCol {
public:
    CElementInfoSeqPrimCol(const char* elementName, const char* namespaceUri, int32_t propertyId);
    ~CElementInfoSeqPrimCol() override;
};

class KVXML_API CElementInfoChoicePrimCol : public CElementInfoChoiceCol {
public:
    CElementInfoChoicePrimCol(const char* elementName, const char* namespaceUri, int32_t propertyId);
    ~CElementInfoChoicePrimCol() override;
};

class KVXML_API CElementInfoAllPrimCol : public CElementInfoAllCol {
public:
    CElementInfoAllPrimCol(const char* elementName, const char* namespaceUri, int32_t propertyId);
    ~CElementInfoAllPrimCol() override;
};

class KVXML_API CElementInfoSeqEnumCol : public CElementInfoSeqCol {
public:
    CElementInfoSeqEnumCol(const char* elementName, const char* namespaceUri, int32_t propertyId);
    ~CElementInfoSeqEnumCol() override;
};

class KVXML_API CElementInfoChoiceEnumCol : public CElementInfoChoiceCol {
public:
    CElementInfoChoiceEnumCol(const char* elementName, const char* namespaceUri, int32_t propertyId);
    ~CElementInfoChoiceEnumCol() override;
};

/// Kept for generated code, with no behaviour: it implements none of the
/// three operations, so it cannot be instantiated.
class KVXML_API CElementInfoAllEnumCol : public CElementInfoAll {
public:
    CElementInfoAllEnumCol(const char* elementName, const char* namespaceUri, int32_t propertyId);
    ~CElementInfoAllEnumCol() override;
};

/// Class and abstract-class collections (a CXmlCollection in the property,
/// which creates the items); the element type says whether the items are
/// pseudo elements.
class KVXML_API CElementInfoSeqClsCol : public CElementInfoSeqCol {
public:
    CElementInfoSeqClsCol(const char* elementName, const char* namespaceUri, int32_t propertyId,
                          XmlElementType elementType);
    ~CElementInfoSeqClsCol() override;
    /// With element type 1, the collection's attributes (none) onto the parent's element.
    void PseudoChildAttributeToXml(const KvXmlLib10::CXmlSerializationContext& context,
                                   const KvXmlLib10::CXmlGeneratedClass* object,
                                   KvXmlLib10::CXmlWriter* writer) const override;

private:
    XmlElementType m_elementType;
};

class KVXML_API CElementInfoChoiceClsCol : public CElementInfoChoiceCol {
public:
    CElementInfoChoiceClsCol(const char* elementName, const char* namespaceUri, int32_t propertyId,
                             XmlElementType elementType);
    ~CElementInfoChoiceClsCol() override;
    /// With element type 1, the collection's attributes (none) onto the parent's element.
    void PseudoChildAttributeToXml(const KvXmlLib10::CXmlSerializationContext& context,
                                   const KvXmlLib10::CXmlGeneratedClass* object,
                                   KvXmlLib10::CXmlWriter* writer) const override;

private:
    XmlElementType m_elementType;
};

class KVXML_API CElementInfoAllClsCol : public CElementInfoAllCol {
public:
    CElementInfoAllClsCol(const char* elementName, const char* namespaceUri, int32_t propertyId,
                          XmlElementType elementType);
    ~CElementInfoAllClsCol() override;
    /// With element type 1, the collection's attributes (none) onto the parent's element.
    void PseudoChildAttributeToXml(const KvXmlLib10::CXmlSerializationContext& context,
                                   const KvXmlLib10::CXmlGeneratedClass* object,
                                   KvXmlLib10::CXmlWriter* writer) const override;

private:
    XmlElementType m_elementType;
};

class KVXML_API CElementInfoSeqAbsClsCol : public CElementInfoSeqCol {
public:
    CElementInfoSeqAbsClsCol(const char* elementName, const char* namespaceUri, int32_t propertyId,
                             XmlElementType elementType);
    ~CElementInfoSeqAbsClsCol() override;
    /// With element type 1, the collection's attributes (none) onto the parent's element.
    void PseudoChildAttributeToXml(const KvXmlLib10::CXmlSerializationContext& context,
                                   const KvXmlLib10::CXmlGeneratedClass* object,
                                   KvXmlLib10::CXmlWriter* writer) const override;

private:
    XmlElementType m_elementType;
};

class KVXML_API CElementInfoChoiceAbsClsCol : public CElementInfoChoiceCol {
public:
    CElementInfoChoiceAbsClsCol(const char* elementName, const char* namespaceUri, int32_t propertyId,
                                XmlElementType elementType);
    ~CElementInfoChoiceAbsClsCol() override;
    /// With element type 1, the collection's attributes (none) onto the parent's element.
    void PseudoChildAttributeToXml(const KvXmlLib10::CXmlSerializationContext& context,
                                   const KvXmlLib10::CXmlGeneratedClass* object,
                                   KvXmlLib10::CXmlWriter* writer) const override;

private:
    XmlElementType m_elementType;
};

class KVXML_API CElementInfoAllAbsClsCol : public CElementInfoAllCol {
public:
    CElementInfoAllAbsClsCol(const char* elementName, const char* namespaceUri, int32_t propertyId,
                             XmlElementType elementType);
    ~CElementInfoAllAbsClsCol() override;
    /// With element type 1, the collection's attributes (none) onto the parent's element.
    void PseudoChildAttributeToXml(const KvXmlLib10::CXmlSerializationContext& context,
                                   const KvXmlLib10::CXmlGeneratedClass* object,
                                   KvXmlLib10::CXmlWriter* writer) const override;

private:
    XmlElementType m_elementType;
};

}  // namespace KvXmlLib10Data
