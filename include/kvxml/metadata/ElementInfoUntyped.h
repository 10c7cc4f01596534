// ElementInfoUntyped.h - descriptors of wildcard (xs:any) particles: the property holds a CElement, or a CElementCol
// for the collection forms.
//
// The element name is the local name accepted, or "AnyElement" for any. The
// namespace restriction ("##any", "##other", "##local", "##targetNamespace"
// or URIs) against the wildcard namespace decides which namespaces are.
#pragma once

#include <cstdint>
#include <string>

#include "kvxml/metadata/ElementInfo.h"
#include "kvxml/metadata/ElementInfoCollection.h"

namespace KvXmlLib10Data {

/// Mandatory wildcard of a sequence: reads into the CElement the parent
/// created. The end of the parent throws CKvValidationException "Failed to
/// find a required element [%s]"; an element it cannot take, "Failed to find
/// the required element from namespace [%s]" (the descriptor's namespace).
/// Inside a pseudo element both answer false instead.
class KVXML_API CElementInfoSeqUntpdMnd : public CElementInfoSeq {
public:
    CElementInfoSeqUntpdMnd(const char* elementName, const char* namespaceUri, int32_t propertyId,
                            const char* restriction, const char* wildcardNamespace);
    ~CElementInfoSeqUntpdMnd() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;

private:
    std::string m_restriction;
    std::string m_wildcardNamespace;
};

/// Optional wildcard of a sequence: a new CElement, in the namespace
/// GetAnyDefaultNamespace gives, is stored when it read an element.
class KVXML_API CElementInfoSeqUntpdOpt : public CElementInfoSeq {
public:
    CElementInfoSeqUntpdOpt(const char* elementName, const char* namespaceUri, int32_t propertyId,
                            const char* restriction, const char* wildcardNamespace);
    ~CElementInfoSeqUntpdOpt() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;

private:
    std::string m_restriction;
    std::string m_wildcardNamespace;
};

/// Mandatory wildcard of an all group; Validate throws CKvValidationException
/// "Failed to find the mandatory element [%s]" when it was not found.
class KVXML_API CElementInfoAllUntpdMnd : public CElementInfoAll {
public:
    CElementInfoAllUntpdMnd(const char* elementName, const char* namespaceUri, int32_t propertyId,
                            const char* restriction, const char* wildcardNamespace);
    ~CElementInfoAllUntpdMnd() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;
    bool Validate(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                  bool found, bool checkMandatory) const override;

private:
    std::string m_restriction;
    std::string m_wildcardNamespace;
};

/// Optional wildcard of an all group; Validate accepts.
class KVXML_API CElementInfoAllUntpdOpt : public CElementInfoAll {
public:
    CElementInfoAllUntpdOpt(const char* elementName, const char* namespaceUri, int32_t propertyId,
                            const char* restriction, const char* wildcardNamespace);
    ~CElementInfoAllUntpdOpt() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;
    bool Validate(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                  bool found, bool checkMandatory) const override;

private:
    std::string m_restriction;
    std::string m_wildcardNamespace;
};

/// Wildcard member of a choice: answers true only when it read an element.
class KVXML_API CElementInfoChoiceUntpdOpt : public CElementInfoChoice {
public:
    CElementInfoChoiceUntpdOpt(const char* elementName, const char* namespaceUri, int32_t propertyId,
                               const char* restriction, const char* wildcardNamespace);
    ~CElementInfoChoiceUntpdOpt() override;
    bool ElementToXml(const KvXmlLib10::CXmlSerializationContext& context, const KvXmlLib10::CXmlGeneratedClass* object,
                      KvXmlLib10::CXmlWriter* writer) const override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;

private:
    std::string m_restriction;
    std::string m_wildcardNamespace;
};

/// Wildcard collection of a sequence: the CElementCol in the property takes
/// the run of elements named like the descriptor ("AnyElement": any name) in
/// the namespace of the first, as far as its restriction admits them; then
/// the count is checked as for every sequence collection.
class KVXML_API CElementInfoSeqUntpdCol : public CElementInfoSeqCol {
public:
    CElementInfoSeqUntpdCol(const char* elementName, const char* namespaceUri, int32_t propertyId);
    ~CElementInfoSeqUntpdCol() override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;
};

/// Wildcard collection of a choice: read as in a sequence, declining when it
/// took nothing.
class KVXML_API CElementInfoChoiceUntpdCol : public CElementInfoChoiceCol {
public:
    CElementInfoChoiceUntpdCol(const char* elementName, const char* namespaceUri, int32_t propertyId);
    ~CElementInfoChoiceUntpdCol() override;
    bool ElementFromXml(const KvXmlLib10::CXmlSerializationContext& context, KvXmlLib10::CXmlGeneratedClass* object,
                        KvXmlLib10::CXmlElement* parent, KvXmlLib10::CXmlElement** current, const char* namespaceUri,
                        XmlElementType elementType) override;
};

/// Wildcard collection of an all group: the all-group collection reader.
class KVXML_API CElementInfoAllUntpdCol : public CElementInfoAllCol {
public:
    CElementInfoAllUntpdCol(const char* elementName, const char* namespaceUri, int32_t propertyId);
    ~CElementInfoAllUntpdCol() override;
};

}  // namespace KvXmlLib10Data
