// ElementInfoClass.h - descriptors of child elements holding a generated class (Cls) or an abstract class whose
// concrete type the document chooses (AbsCls).
//
// The child is a separate, reference-counted object held by the parent's
// property. With element type 0 it has an element of its own; with 1 it is a
// pseudo element: a model group whose children and attributes live directly
// in the parent's element.
#pragma once

#include <cstdint>

#include "kvxml/core/ClassFactoryBase.h"
#include "kvxml/metadata/ElementInfo.h"

namespace KvXmlLib10Data {

/// Mandatory class member of a sequence: the parent creates the child in
/// advance (failing that, the factory makes one and it is stored); reading
/// searches like every mandatory sequence member and lets the child fill
/// itself. A pseudo child that consumed nothing is a missing element only
/// when its content is mandatory.
class KVXML_API CElementInfoSeqClsMnd : public CElementInfoSeq {
public:
    CElementInfoSeqClsMnd(const char* elementName, const char* namespaceUri, int32_t propertyId,
                          XmlElementType elementType, KvXmlLib10::ClassFactoryFunc factory, int32_t classNumber,
                          bool mandatoryContent);
    ~CElementInfoSeqClsMnd() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;
    /// With element type 1, the child's attributes onto the parent's element.
    void PseudoChildAttributeToXml(const KvXmlLib10::CXmlSerializationContext& context,
                                   const KvXmlLib10::CXmlGeneratedClass* object,
                                   KvXmlLib10::CXmlWriter* writer) const override;

private:
    XmlElementType m_elementType;
    KvXmlLib10::ClassFactoryFunc m_factory;
    int32_t m_classNumber;
    bool m_mandatoryContent;
};

/// Mandatory class member of an all group.
class KVXML_API CElementInfoAllClsMnd : public CElementInfoAll {
public:
    CElementInfoAllClsMnd(const char* elementName, const char* namespaceUri, int32_t propertyId,
                          XmlElementType elementType, KvXmlLib10::ClassFactoryFunc factory, int32_t classNumber,
                          bool mandatoryContent);
    ~CElementInfoAllClsMnd() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;
    /// With element type 1, the child's attributes onto the parent's element.
    void PseudoChildAttributeToXml(const KvXmlLib10::CXmlSerializationContext& context,
                                   const KvXmlLib10::CXmlGeneratedClass* object,
                                   KvXmlLib10::CXmlWriter* writer) const override;
    /// found, or !checkMandatory: found. Otherwise an empty own-element child
    /// without mandatory content is accepted; a pseudo child, or one whose
    /// content is mandatory, throws CKvValidationException
    /// "Failed to find the mandatory element [%s]".
    bool Validate(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                  bool found, bool checkMandatory) const override;

private:
    XmlElementType m_elementType;
    KvXmlLib10::ClassFactoryFunc m_factory;
    int32_t m_classNumber;
    bool m_mandatoryContent;
};

/// Optional class member of a sequence: the child is created on reading by
/// the factory. A pseudo child is stored only when it consumed something;
/// reading answers true in every case.
class KVXML_API CElementInfoSeqClsOpt : public CElementInfoSeq {
public:
    CElementInfoSeqClsOpt(const char* elementName, const char* namespaceUri, int32_t propertyId,
                          XmlElementType elementType, KvXmlLib10::ClassFactoryFunc factory, int32_t classNumber);
    ~CElementInfoSeqClsOpt() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;
    /// With element type 1, the child's attributes onto the parent's element.
    void PseudoChildAttributeToXml(const KvXmlLib10::CXmlSerializationContext& context,
                                   const KvXmlLib10::CXmlGeneratedClass* object,
                                   KvXmlLib10::CXmlWriter* writer) const override;

private:
    XmlElementType m_elementType;
    KvXmlLib10::ClassFactoryFunc m_factory;
    int32_t m_classNumber;
};

/// Optional class member of an all group.
class KVXML_API CElementInfoAllClsOpt : public CElementInfoAll {
public:
    CElementInfoAllClsOpt(const char* elementName, const char* namespaceUri, int32_t propertyId,
                          XmlElementType elementType, KvXmlLib10::ClassFactoryFunc factory, int32_t classNumber);
    ~CElementInfoAllClsOpt() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;
    /// With element type 1, the child's attributes onto the parent's element.
    void PseudoChildAttributeToXml(const KvXmlLib10::CXmlSerializationContext& context,
                                   const KvXmlLib10::CXmlGeneratedClass* object,
                                   KvXmlLib10::CXmlWriter* writer) const override;
    /// Always true.
    bool Validate(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                  bool found, bool checkMandatory) const override;

private:
    XmlElementType m_elementType;
    KvXmlLib10::ClassFactoryFunc m_factory;
    int32_t m_classNumber;
};

/// Class member of a choice: answers true only when it read a child, so the
/// choice can try its next member.
class KVXML_API CElementInfoChoiceClsOpt : public CElementInfoChoice {
public:
    CElementInfoChoiceClsOpt(const char* elementName, const char* namespaceUri, int32_t propertyId,
                             XmlElementType elementType, KvXmlLib10::ClassFactoryFunc factory, int32_t classNumber);
    ~CElementInfoChoiceClsOpt() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;
    /// With element type 1, the child's attributes onto the parent's element.
    void PseudoChildAttributeToXml(const KvXmlLib10::CXmlSerializationContext& context,
                                   const KvXmlLib10::CXmlGeneratedClass* object,
                                   KvXmlLib10::CXmlWriter* writer) const override;

private:
    XmlElementType m_elementType;
    KvXmlLib10::ClassFactoryFunc m_factory;
    int32_t m_classNumber;
};

/// Mandatory abstract member of a sequence: an element that does not match,
/// or that the factory finds no class for, throws CKvValidationException
/// "Failed to find a suitable substitution element for [%s]" (the ignore
/// options do not apply).
class KVXML_API CElementInfoSeqAbsClsMnd : public CElementInfoSeq {
public:
    CElementInfoSeqAbsClsMnd(const char* elementName, const char* namespaceUri, int32_t propertyId,
                             XmlElementType elementType, KvXmlLib10::AbstractClassFactoryFunc factory);
    ~CElementInfoSeqAbsClsMnd() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;
    /// With element type 1, the child's attributes onto the parent's element.
    void PseudoChildAttributeToXml(const KvXmlLib10::CXmlSerializationContext& context,
                                   const KvXmlLib10::CXmlGeneratedClass* object,
                                   KvXmlLib10::CXmlWriter* writer) const override;

private:
    XmlElementType m_elementType;
    KvXmlLib10::AbstractClassFactoryFunc m_factory;
};

/// Optional abstract member of a sequence; an element the factory finds no
/// class for is left to the group, like a foreign one.
class KVXML_API CElementInfoSeqAbsClsOpt : public CElementInfoSeq {
public:
    CElementInfoSeqAbsClsOpt(const char* elementName, const char* namespaceUri, int32_t propertyId,
                             XmlElementType elementType, KvXmlLib10::AbstractClassFactoryFunc factory);
    ~CElementInfoSeqAbsClsOpt() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;
    /// With element type 1, the child's attributes onto the parent's element.
    void PseudoChildAttributeToXml(const KvXmlLib10::CXmlSerializationContext& context,
                                   const KvXmlLib10::CXmlGeneratedClass* object,
                                   KvXmlLib10::CXmlWriter* writer) const override;

private:
    XmlElementType m_elementType;
    KvXmlLib10::AbstractClassFactoryFunc m_factory;
};

/// Abstract member of a choice.
class KVXML_API CElementInfoChoiceAbsClsOpt : public CElementInfoChoice {
public:
    CElementInfoChoiceAbsClsOpt(const char* elementName, const char* namespaceUri, int32_t propertyId,
                                XmlElementType elementType, KvXmlLib10::AbstractClassFactoryFunc factory);
    ~CElementInfoChoiceAbsClsOpt() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;
    /// With element type 1, the child's attributes onto the parent's element.
    void PseudoChildAttributeToXml(const KvXmlLib10::CXmlSerializationContext& context,
                                   const KvXmlLib10::CXmlGeneratedClass* object,
                                   KvXmlLib10::CXmlWriter* writer) const override;

private:
    XmlElementType m_elementType;
    KvXmlLib10::AbstractClassFactoryFunc m_factory;
};

/// Optional abstract member of an all group. Abstract members of an all
/// group cannot be read: reading throws CKvException.
class KVXML_API CElementInfoAllAbsClsOpt : public CElementInfoAll {
public:
    CElementInfoAllAbsClsOpt(const char* elementName, const char* namespaceUri, int32_t propertyId,
                             XmlElementType elementType, KvXmlLib10::AbstractClassFactoryFunc factory);
    ~CElementInfoAllAbsClsOpt() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;
    /// With element type 1, the child's attributes onto the parent's element.
    void PseudoChildAttributeToXml(const KvXmlLib10::CXmlSerializationContext& context,
                                   const KvXmlLib10::CXmlGeneratedClass* object,
                                   KvXmlLib10::CXmlWriter* writer) const override;
    /// Always true.
    bool Validate(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                  bool found, bool checkMandatory) const override;

private:
    XmlElementType m_elementType;
    [[maybe_unused]] KvXmlLib10::AbstractClassFactoryFunc m_factory;
};

/// Mandatory abstract member of an all group; reading throws CKvException
/// (not supported). The int is carried for generated code and not read.
class KVXML_API CElementInfoAllAbsClsMnd : public CElementInfoAll {
public:
    CElementInfoAllAbsClsMnd(const char* elementName, const char* namespaceUri, int32_t propertyId,
                             XmlElementType elementType, KvXmlLib10::AbstractClassFactoryFunc factory, int32_t number);
    ~CElementInfoAllAbsClsMnd() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;
    /// With element type 1, the child's attributes onto the parent's element.
    void PseudoChildAttributeToXml(const KvXmlLib10::CXmlSerializationContext& context,
                                   const KvXmlLib10::CXmlGeneratedClass* object,
                                   KvXmlLib10::CXmlWriter* writer) const override;
    /// Throws CKvValidationException "Failed to find the mandatory element [%s]"
    /// when not found and checkMandatory is set.
    bool Validate(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                  bool found, bool checkMandatory) const override;

private:
    XmlElementType m_elementType;
    [[maybe_unused]] KvXmlLib10::AbstractClassFactoryFunc m_factory;
    [[maybe_unused]] int32_t m_number;
};

}  // namespace KvXmlLib10Data
