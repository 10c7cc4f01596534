// Envelope.h - generated-style binding with extension points: xs:any of each namespace restriction, a wildcard
// collection and xs:anyAttribute.
//
//   <xs:element name="envelope" type="e:Envelope"/>   (targetNamespace urn:kvxml:test:envelope)
//   <xs:complexType name="Envelope">
//     <xs:sequence>
//       <xs:element name="id" type="xs:string"/>
//       <xs:any namespace="##other"/>
//       <xs:element name="note" minOccurs="0"/>                         (xs:anyType)
//       <xs:any namespace="##local" minOccurs="0"/>
//       <xs:any namespace="urn:kvxml:test:x urn:kvxml:test:y" minOccurs="0"/>
//       <xs:any namespace="##any" minOccurs="0" maxOccurs="unbounded"/>
//     </xs:sequence>
//     <xs:anyAttribute namespace="##other"/>
//   </xs:complexType>
#pragma once

#include <cstdint>
#include <string>

#include "kvxml/core/SmartPtr.h"
#include "kvxml/core/XmlGeneratedClass.h"
#include "kvxml/metadata/AnyAttribute.h"
#include "kvxml/metadata/AnyElement.h"

namespace kvbind {

class CEnvelope : public KvXmlLib10::CXmlGeneratedClass {
public:
    CEnvelope();
    enum Property : int32_t {
        Prop_Id = 1,
        Prop_Header,
        Prop_Note,
        Prop_Local,
        Prop_Listed,
        Prop_Rest,
        Prop_Attributes
    };

    std::string id;
    /// The ##other element; always present.
    KvXmlLib10::CElement* GetHeader() const { return m_header.get(); }
    // Optional wildcards: null when absent.
    KvXmlLib10::CElement* GetNote() const { return m_note.get(); }
    void SetNote(KvXmlLib10::CElement* value) { m_note = value; }
    KvXmlLib10::CElement* GetLocal() const { return m_local.get(); }
    void SetLocal(KvXmlLib10::CElement* value) { m_local = value; }
    KvXmlLib10::CElement* GetListed() const { return m_listed.get(); }
    void SetListed(KvXmlLib10::CElement* value) { m_listed = value; }
    /// Whatever follows, in any namespace.
    KvXmlLib10::CElementCol& Rest() { return *m_rest; }
    /// The open attributes (##other).
    KvXmlLib10::CAttributeCol& Attributes() { return *m_attributes; }

    KvXmlLib10::CXmlObjectBase* GetBase() override { return this; }
    std::string GetNamespace() const override;
    std::string GetTargetNamespace() const override;
    KvXmlLib10Data::CParentElementInfo* GetClassInfo() const override;
    KvXmlLib10Data::CElementInfo** GetClassElementInfo() const override;
    KvXmlLib10Data::CAttributeInfo** GetClassAttributeInfo() const override;

protected:
    void AccessProperty(int32_t propertyId, bool read, KvXmlLib10::KvVariant& value) override;
    void ResetProperties() override;

private:
    KvXmlLib10::CSmartPtr<KvXmlLib10::CElement> m_header;
    KvXmlLib10::CSmartPtr<KvXmlLib10::CElement> m_note;
    KvXmlLib10::CSmartPtr<KvXmlLib10::CElement> m_local;
    KvXmlLib10::CSmartPtr<KvXmlLib10::CElement> m_listed;
    KvXmlLib10::CSmartPtr<KvXmlLib10::CElementCol> m_rest;
    KvXmlLib10::CSmartPtr<KvXmlLib10::CAttributeCol> m_attributes;
};

}  // namespace kvbind
